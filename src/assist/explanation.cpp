#include <algorithm>
#include <vector>

#include "assist/answer.h"
#include "assist/walk.h"
#include "platform/join.h"
#include "recognizers/dashes.h"
#include "varo/assist.h"
#include "varo/printable.h"

namespace varo_3_3 {
namespace {

using internal::join;
using internal::Walk;
using internal::WalkedWord;

/// A word between quotes, cut when it is long.
std::string quoted(std::string_view word) {
    constexpr std::size_t kMostBytes = 100;
    bool const isLong = word.size() > kMostBytes;
    return join({"'", word.substr(0, kMostBytes), isLong ? "...'" : "'"});
}

bool looksLikeOption(std::string_view word) {
    return word.size() > 1 && getDashLength(word, 0) != 0;
}

/// Which option a dashed word is, by which name, and where its value is.
std::string aboutOption(WalkedWord const& word, bool isValueNext) {
    std::string_view name;
    std::string_view value;
    internal::WhiteSpace whiteSpace;
    splitOptionValue(word.text, whiteSpace, &name, &value);
    OptionDescription const& option = *word.option;
    std::string_view const positive = word.isNegated && name.size() > 3 ? name.substr(3) : name;
    auto const& names = option.m_names;
    bool const isWhole = std::find(names.begin(), names.end(), name) != names.end() ||
                         std::find(names.begin(), names.end(), positive) != names.end();
    std::string text = join({option.isAction() ? "is the action '" : "is the option '",
                             option.firstName(), "'", isWhole ? "" : ", abbreviated"});
    text += word.isNegated ? ", switched off" : "";
    if (isValueNext) {
        text += ", whose value follows";
    } else if (!value.empty()) {
        text += join({", with the value ", quoted(value)});
    }
    return text;
}

/// What a word that is not wrong is.
std::string aboutWord(WalkedWord const& word, bool isValueNext) {
    std::string_view const name =
        word.option != nullptr ? word.option->firstName() : std::string_view();
    switch (word.kind) {
        case WalkedWord::kOption:
            return aboutOption(word, isValueNext);
        case WalkedWord::kValue:
            return join({"is the value of '", name, "'"});
        case WalkedWord::kPositional:
            return join({"is a positional value of '", name, "'",
                         looksLikeOption(word.text) ? ", although it looks like an option" : ""});
        case WalkedWord::kEndMarker:
            return "ends the options";
        case WalkedWord::kPlain:
            return join({"is a plain argument", name.empty() ? "" : " and a value of '", name,
                         name.empty() ? "" : "'"});
        case WalkedWord::kTraceSwitch:
            return "switches the trace on";
        default:
            return "is unknown and dropped";
    }
}

/// The line about a word. A message has lines of its own where a value has line feeds.
std::string lineOf(Walk const& walk, std::size_t at) {
    WalkedWord const& word = walk.words()[at];
    OptionFiles const& files = walk.files();
    if (word.kind == WalkedWord::kUnreadableFile) {
        return join({files.whereNamed(word.file).text(), ": ", word.message});
    }
    bool const isValueNext =
        at + 1 < walk.words().size() && walk.words()[at + 1].kind == WalkedWord::kValue;
    std::string line = join({files.placeOf(word.file, word.number).text(), ": ", quoted(word.text),
                             word.isWrong ? " is wrong" : " "});
    line += word.isWrong ? "" : aboutWord(word, isValueNext);
    if (!word.message.empty()) {
        line += word.isWrong ? ": " : ". ";
        line += std::string_view(word.message).substr(0, 1000);
    }
    return line;
}

std::string explain(BasicParser& parser, int argc, char const* const* argv) {
    if (argc < 2 || argv == nullptr || std::find(argv + 1, argv + argc, nullptr) != argv + argc) {
        return {};
    }
    ArgumentVector source(argv + 1, static_cast<std::size_t>(argc) - 1);
    Walk walk(parser);
    walk.take(source);
    walk.takeOptionFiles();
    std::string text;
    bool isWrong = false;
    for (std::size_t at = 0; at < walk.words().size(); ++at) {
        text += printable(lineOf(walk, at));
        text += '\n';
        isWrong = isWrong || walk.words()[at].isWrong;
    }
    std::string const verdict = textOf(walk.judge());
    if (!isWrong && !verdict.empty()) {
        text += join({"all together: ", printable(verdict), "\n"});
    }
    return text;
}

}  // namespace

char const* explanation(IParser* parser, int argc, char const* const* argv) {
    return internal::answer(parser, [&](BasicParser& ours) { return explain(ours, argc, argv); });
}

}  // namespace varo_3_3
