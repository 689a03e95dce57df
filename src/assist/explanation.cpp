#include "assist/answer.h"
#include "assist/walk.h"
#include "platform/join.h"
#include "recognizers/dashes.h"
#include "varo/assist.h"
#include "varo/printable.h"

namespace varo_3_3 {
namespace {

using internal::append;
using internal::Walk;
using internal::WalkedWord;

/// Appends a word between quotes, cut when it is long.
void appendQuoted(std::string& line, std::string_view word) {
    constexpr std::size_t kMostBytes = 100;
    bool const isLong = word.size() > kMostBytes;
    append(line, {"'", word.substr(0, kMostBytes), isLong ? "...'" : "'"});
}

bool looksLikeOption(std::string_view word) {
    return word.size() > 1 && getDashLength(word, 0) != 0;
}

/// Tells which option a dashed word is, by which name, and where its value is.
void appendOption(std::string& line, Walk& walk, WalkedWord const& word, bool isValueNext) {
    std::string_view name;
    std::string_view value;
    walk.split(word.text, name, value);
    OptionDescription const& option = *word.option;
    std::string_view const positive = word.isNegated && name.size() > 3 ? name.substr(3) : name;
    bool const isWhole = isNamed(option, name) || isNamed(option, positive);
    append(line, {option.isAction() ? "is the action '" : "is the option '", option.firstName(),
                  "'", isWhole ? "" : ", abbreviated", word.isNegated ? ", switched off" : ""});
    if (isValueNext) {
        line += ", whose value follows";
    } else if (!value.empty()) {
        line += ", with the value ";
        appendQuoted(line, value);
    }
}

/// Tells what a word is that is neither wrong nor an option.
void appendMeaning(std::string& line, WalkedWord const& word) {
    std::string_view name = word.option != nullptr ? word.option->firstName() : "";
    char const* before = "is unknown and dropped";
    char const* after = name.empty() ? "" : "'";
    switch (word.kind) {
        case WalkedWord::kValue:
            before = "is the value of '";
            break;
        case WalkedWord::kPositional:
            before = "is a positional value of '";
            after = looksLikeOption(word.text) ? "', although it looks like an option" : "'";
            break;
        case WalkedWord::kPlain:
            before = name.empty() ? "is a plain argument" : "is a plain argument and a value of '";
            break;
        case WalkedWord::kEndMarker:
            before = "ends the options";
            break;
        case WalkedWord::kTraceSwitch:
            before = "switches the trace on";
            break;
        default:
            break;
    }
    append(line, {before, name, after});
}

/// Writes the line about a word. A message has lines of its own where a value has line feeds.
void writeLine(std::string& line, Walk& walk, std::size_t at) {
    WalkedWord const& word = walk.words()[at];
    OptionFiles const& files = walk.files();
    line.clear();
    if (word.kind == WalkedWord::kUnreadableFile) {
        files.whereNamed(word.file).appendTo(line);
        return append(line, {": ", word.message});
    }
    bool const isValueNext =
        at + 1 < walk.words().size() && walk.words()[at + 1].kind == WalkedWord::kValue;
    files.placeOf(word.file, word.number).appendTo(line);
    line += ": ";
    appendQuoted(line, word.text);
    line += word.isWrong ? " is wrong" : " ";
    if (word.isWrong) {
        // The message says why.
    } else if (word.kind == WalkedWord::kOption) {
        appendOption(line, walk, word, isValueNext);
    } else {
        appendMeaning(line, word);
    }
    if (!word.message.empty()) {
        append(line, {word.isWrong ? ": " : ". ", word.message.substr(0, 1000)});
    }
}

/// Writes the last line, nothing where words are wrong or all fits together.
void writeVerdict(std::string& line, Walk const& walk, bool isWrong) {
    ActionVerdict const verdict = walk.judge();
    line.clear();
    if (!isWrong && verdict.kind > ActionVerdict::kUndeclared) {
        append(line, {"all together: ", textOf(verdict)});
    }
}

void explain(BasicParser& parser, int argc, char const* const* argv, std::string& text) {
    Walk walk(parser);
    if (!walk.takeCommandLine(argc, argv)) {
        return;
    }
    walk.takeOptionFiles();
    std::size_t const count = walk.words().size();
    std::string line;
    bool isWrong = false;
    for (std::size_t at = 0; at <= count; ++at) {
        if (at < count) {
            writeLine(line, walk, at);
            isWrong = isWrong || walk.words()[at].isWrong;
        } else {
            writeVerdict(line, walk, isWrong);
        }
        text += printable(line);
        text += line.empty() ? "" : "\n";
    }
}

}  // namespace

char const* explanation(IParser* parser, int argc, char const* const* argv) {
    return internal::answer(
        parser, [&](BasicParser& ours, std::string& text) { explain(ours, argc, argv, text); });
}

}  // namespace varo_3_3
