#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "parser/action_rules.h"
#include "parser/basic_parser.h"
#include "parser/option_files.h"
#include "platform/white_space.h"
#include "recognizers/dashes.h"
#include "recognizers/recognizers.h"
#include "results/parse_result.h"

namespace varo_3_3::internal {

/// What one word of a command line, or one line of an option file, turned out to be.
struct WalkedWord {
    enum Kind {
        kOption,       ///< a dashed option or action, with a value after "=" perhaps
        kValue,        ///< the value of the option in the word before
        kPositional,   ///< a value of the positional option
        kEndMarker,    ///< "--"
        kPlain,        ///< a plain argument; a value of the positional option too, if that is set
        kTraceSwitch,  ///< what switches the trace on
        kUnknown,      ///< no recognizer takes it: wrong, or dropped
        kUnreadableFile,  ///< no word: `message` says why `file` cannot be read
    };

    Kind kind = kUnknown;
    bool isWrong = false;     ///< a parse would end here; `message` says why
    bool isNegated = false;   ///< a boolean that is switched off
    bool lacksValue = false;  ///< an option whose value does not follow
    std::string_view text;    ///< lives as long as what was walked over and the walk
    std::size_t file = 0;     ///< the option file it is in, or OptionFiles::kCommandLine
    std::size_t number = 0;   ///< of the argument or line, from 1 on
    /// Whose name or value it is; null when that is unknown or ambiguous.
    OptionDescription const* option = nullptr;
    std::string_view message;  ///< why it is wrong; else warnings, one a line; held by the walk
};

/// A parse that leaves no trace: the recognizers of a parse run over words and store what they find
/// in a result of this walk's own. No handler hears of it, the trace stays silent, and positions
/// come from a sequence of this walk. A wrong word does not end it.
///
/// For the time of one call into the library; the parser outlives it.
class Walk {
public:
    /// What the next word can be.
    enum class Mode {
        kAnything,
        kPositional,  ///< a positional value takes along what follows it
        kPlain        ///< after the end marker
    };

    /// Begins as a parse does, with the defaults.
    explicit Walk(BasicParser& parser);
    Walk(Walk const&) = delete;
    Walk& operator=(Walk const&) = delete;

    /// Walks over the words of `source`, which continue those before.
    void take(ArgumentSource& source);

    /// Walks over the arguments after argv[0]. False when there are none, or a pointer is null.
    bool takeCommandLine(int argc, char const* const* argv);

    /// Walks over the words that were kept of a failure, from the state in which it failed.
    void takeAgain(Failure& failure);

    /// Walks over the option files that were named, and those that are named in them.
    void takeOptionFiles();

    /// What the second phase of a parse would say of all that was walked over.
    ActionVerdict judge() const;

    /// As splitOptionValue().
    bool split(std::string_view word, std::string_view& name, std::string_view& value) {
        return splitOptionValue(word, m_whiteSpace, &name, &value);
    }

    std::vector<WalkedWord> const& words() const { return m_words; }
    Mode mode() const { return m_mode; }

    /// Lets the next words be those in the middle of a list.
    void goOn(Mode mode) {
        m_mode = mode;
        m_isListBegun = true;
    }
    OptionFiles const& files() const { return m_files; }
    ParseResult& result() { return m_result; }
    ParseResult const& result() const { return m_result; }

private:
    void takeWord(ArgumentList& args, Recognizers& recognizers);
    void takePlain(ArgumentList& args);
    void takeUnclaimed(ArgumentList& args);
    void takePositional(ArgumentList& args, PositionalOptionsParser& positional);
    void takeOption(ArgumentList& args, AbbreviationParser& abbreviation);
    WalkedWord& note(WalkedWord::Kind kind, ArgumentList const& args, std::size_t at = 0);
    void keepMessage(WalkedWord& word);
    OptionDescription const* optionAt(unsigned long index) const;
    IResultCollector* collector();
    SharedState ownState() { return {m_nextPosition, kIsTraced}; }

    static constexpr bool kIsTraced = false;

    BasicParser& m_parser;
    int m_nextPosition = 0;
    WhiteSpace m_whiteSpace;
    ParseResult m_result;
    OptionFiles m_files;
    std::vector<WalkedWord> m_words;
    Garbage m_texts;
    std::string m_message;  // of the present word
    Mode m_mode = Mode::kAnything;
    bool m_isListBegun = false;
};

}  // namespace varo_3_3::internal
