#pragma once

#include <string>

#include "recognizers/argument_parser.h"
#include "recognizers/dashes.h"

namespace varo_3_3 {

/// The recognizer of dashed options: one or two dashes, a name or an unambiguous abbreviation of
/// it, and a value after "=" or white space or in the next argument.
class AbbreviationParser final : public IArgumentParser {
public:
    /// `whiteSpace` outlives this recognizer.
    AbbreviationParser(EventHandler* handler, Garbage* garbage, int flags,
                       internal::WhiteSpace& whiteSpace, SharedState shared = process());

    result_t recognize(ArgumentList& args, RegisteredOptionStorage& options,
                       std::string& message) override;
    result_t parse(ArgumentList& args, IResultCollector* collector,
                   RegisteredOptionStorage& options, unsigned long& optionIndex,
                   std::string& message) override;
    int getPriority() override { return -10; }

    /// What the last parse() needed of the argument after args[0].
    enum class Next {
        kNotNeeded,
        kMissing,  ///< a value, but there is none or it looks like an option
        kTaken     ///< a value, right or wrong
    };
    Next next() const { return m_next; }

    /// Whether the name that the last recognize() matched is a boolean's that begins with "no-".
    bool isNegated() const { return m_isNegated; }

    /// Before an argument in a place where another one was.
    void forgetArgument() { m_split = {}; }

private:
    static constexpr unsigned long kNoOption = ~0UL;

    [[gnu::noinline]] std::uint32_t findBest(ArgumentList const& args, NameIndex& names,
                                             std::string_view typedName, std::uint32_t exact);
    result_t takeOption(ArgumentList& args, IResultCollector* collector,
                        OptionDescription const& option, std::string_view value,
                        std::string& message);
    result_t takeNextAsValue(ArgumentList const& args, OptionDescription const& option,
                             std::string_view& value, std::string& message);

    // Errors: a name of no option or of several, a value that the option does not take, and what
    // follows instead of one.
    [[gnu::cold, gnu::noinline]] result_t refuseName(ArgumentList const& args,
                                                     std::string_view typedName,
                                                     std::string& message);
    [[gnu::cold, gnu::noinline]] result_t refuseValue(ArgumentList const& args,
                                                      OptionDescription const& option,
                                                      std::string& message);
    [[gnu::cold, gnu::noinline]] result_t refuseNext(ArgumentList const& args,
                                                     OptionDescription const& option,
                                                     std::string& message);

    /// An argument and what splitOptionValue makes of it.
    struct Split {
        std::string_view argument;
        std::string_view name;
        std::string_view value;
        bool hasSeparator;
    };

    Split const& split(std::string_view argument);

    internal::WhiteSpace& m_whiteSpace;
    // The last one, since recognize and parse need the same, which saves 4 % of an argument. It is
    // identified by its address: a source that reused the place for the next argument would break
    // it.
    Split m_split{};
    unsigned long m_optionIndex = kNoOption;  // of the option that the last recognize found
    std::string m_candidates;                 // of an ambiguous name: 'a', 'b'
    bool m_isNegated = false;                 // the matched name of a boolean begins with "no-"
    Next m_next = Next::kNotNeeded;
};

}  // namespace varo_3_3
