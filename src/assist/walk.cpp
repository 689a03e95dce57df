#include "assist/walk.h"

#include <utility>

#include "recognizers/positions.h"

namespace varo_3_3::internal {

Walk::Walk(BasicParser& parser) : m_parser(parser), m_files(m_result) {
    m_result.applyDefault(parser.registry(), [this] { return takePosition(m_nextPosition); });
}

void Walk::take(ArgumentSource& source) {
    ArgumentList args(source);
    m_files.readFrom(args, source, m_nextPosition);
    // This takes one word at a time, so m_mode remembers when a positional value takes the rest.
    Recognizers recognizers(nullptr, nullptr, m_parser.flags() & ~kTakeTheRest, m_whiteSpace,
                            ownState());
    while (!args.empty()) {
        takeWord(args, recognizers);
    }
}

bool Walk::takeCommandLine(int argc, char const* const* argv) {
    if (argc < 2 || argv == nullptr) {
        return false;
    }
    for (int at = 1; at < argc; ++at) {
        if (argv[at] == nullptr) {
            return false;
        }
    }
    ArgumentVector source(argv + 1, static_cast<std::size_t>(argc) - 1);
    take(source);
    return true;
}

void Walk::takeAgain(Failure& failure) {
    if (failure.stage != Failure::kActions) {
        goOn(failure.stage == Failure::kPlain        ? Mode::kPlain
             : failure.stage == Failure::kPositional ? Mode::kPositional
                                                     : Mode::kAnything);
    }
    failure.words.rewind();
    take(failure.words);
}

void Walk::takeOptionFiles() {
    if (!m_parser.readsOptionFiles()) {
        return;
    }
    m_files.noteDefault();
    while (m_files.hasNext()) {
        std::string_view content;
        if (!m_files.loadNext(content, m_message)) {
            WalkedWord& unreadable = m_words.emplace_back();
            unreadable.kind = WalkedWord::kUnreadableFile;
            unreadable.isWrong = true;
            unreadable.file = m_files.current();
            keepMessage(unreadable);
            continue;
        }
        m_mode = Mode::kAnything;
        m_isListBegun = false;
        OptionLines lines(content, m_whiteSpace);
        take(lines);
    }
}

ActionVerdict Walk::judge() const {
    std::vector<GivenOption> given = m_result.givenOptions();
    return judgeActions(given, m_parser.registry(), m_parser.simultaneousActions());
}

void Walk::takeWord(ArgumentList& args, Recognizers& recognizers) {
    bool const isFirst = !std::exchange(m_isListBegun, true);
    if (m_mode == Mode::kPlain) {
        takePlain(args);
    } else if (m_mode == Mode::kPositional) {
        takePositional(args, recognizers.positional);
    } else if (isFirst && args[0] == kLogSwitch) {
        note(WalkedWord::kTraceSwitch, args);
        args.eraseFront();
    } else if (args[0] == kEndMarker) {
        note(WalkedWord::kEndMarker, args);
        args.eraseFront();
        m_mode = Mode::kPlain;
    } else {
        IArgumentParser* const recognizer =
            recognizers.choose(args, m_parser.registry(), m_message);
        if (recognizer == nullptr) {
            takeUnclaimed(args);
        } else if (recognizer == &recognizers.positional) {
            takePositional(args, recognizers.positional);
        } else {
            takeOption(args, recognizers.abbreviation);
        }
    }
}

void Walk::takePlain(ArgumentList& args) {
    m_result.storeArgument(args[0], takePosition(m_nextPosition));
    WalkedWord& word = note(WalkedWord::kPlain, args);
    if ((m_parser.flags() & kPositionalAfterMarker) != 0) {
        ArgumentList single(args[0]);
        PositionalOptionsParser positional(nullptr, nullptr, m_parser.flags() & ~kDashGuard,
                                           ownState());
        if (positional.recognize(single, m_parser.registry(), m_message) == kTaken) {
            unsigned long index = 0;
            m_message.clear();
            word.isWrong = positional.parse(single, collector(), m_parser.registry(), index,
                                            m_message) != kTaken;
            word.option = optionAt(index);
            keepMessage(word);
        }
    }
    args.eraseFront();
}

void Walk::takeUnclaimed(ArgumentList& args) {
    WalkedWord& word = note(WalkedWord::kUnknown, args);
    if ((m_parser.flags() & kUnknownIsError) != 0) {
        word.isWrong = true;
        m_message = BasicParser::unknownText(args[0]);
        keepMessage(word);
    }
    args.eraseFront();
}

void Walk::takePositional(ArgumentList& args, PositionalOptionsParser& positional) {
    WalkedWord& word = note(WalkedWord::kPositional, args);
    unsigned long index = 0;
    m_message.clear();
    word.isWrong =
        positional.parse(args, collector(), m_parser.registry(), index, m_message) != kTaken;
    word.option = optionAt(index);
    keepMessage(word);
    if (word.isWrong) {
        args.eraseFront();
    }
    if ((m_parser.flags() & kTakeTheRest) != 0) {
        m_mode = Mode::kPositional;
    }
}

void Walk::takeOption(ArgumentList& args, AbbreviationParser& abbreviation) {
    std::size_t const nameAt = m_words.size();
    note(WalkedWord::kOption, args);
    if (args.hasSecond()) {
        note(WalkedWord::kValue, args, 1);
    }
    unsigned long index = 0;
    m_message.clear();
    bool const isWrong =
        abbreviation.parse(args, collector(), m_parser.registry(), index, m_message) != kTaken;
    AbbreviationParser::Next const next = abbreviation.next();
    bool const tookNext = next == AbbreviationParser::Next::kTaken;
    while (m_words.size() > nameAt + (tookNext ? 2 : 1)) {
        m_words.pop_back();
    }
    WalkedWord& name = m_words[nameAt];
    name.lacksValue = next == AbbreviationParser::Next::kMissing;
    name.option = optionAt(index);
    name.isNegated = name.option != nullptr && abbreviation.isNegated();
    WalkedWord& judged = m_words.back();
    judged.option = name.option;
    judged.isWrong = isWrong;
    keepMessage(judged);
    for (std::size_t left = isWrong ? m_words.size() - nameAt : 0; left != 0; --left) {
        args.eraseFront();
    }
}

WalkedWord& Walk::note(WalkedWord::Kind kind, ArgumentList const& args, std::size_t at) {
    WalkedWord& word = m_words.emplace_back();
    word.kind = kind;
    word.text = args[at];
    word.file = m_files.current();
    word.number = args.numberOf(at);
    return word;
}

void Walk::keepMessage(WalkedWord& word) {
    if (!m_message.empty()) {
        word.message = {m_texts.keep(m_message), m_message.size()};
    }
}

/// The record of this number; null when a recognizer found none.
OptionDescription const* Walk::optionAt(unsigned long index) const {
    OptionRecords const& records = m_parser.registry().records();
    return index < records.size() ? records[index] : nullptr;
}

IResultCollector* Walk::collector() {
    if (m_parser.readsOptionFiles()) {
        return &m_files;
    }
    return &m_result;
}

}  // namespace varo_3_3::internal
