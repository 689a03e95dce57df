#include "recognizers/abbreviation_parser.h"

#include "platform/join.h"

namespace varo_3_3 {

using internal::join;

AbbreviationParser::AbbreviationParser(EventHandler* handler, Garbage* garbage, int flags,
                                       internal::WhiteSpace& whiteSpace, SharedState shared)
    : IArgumentParser(handler, garbage, flags, shared), m_whiteSpace(whiteSpace) {
    m_name = "AbbreviationParser";
}

result_t AbbreviationParser::recognize(ArgumentList& args, RegisteredOptionStorage& options,
                                       std::string& /*message*/) {
    m_candidates.clear();
    trace(": recognizing argument '", args[0], "'");
    m_optionIndex = kNoOption;
    if (args[0].size() < 2 || getDashLength(args[0], 0) == 0) {
        return kNotTaken;
    }
    std::string_view const typedName = split(args[0]).name;
    NameIndex& names = options.names();
    std::uint32_t key = names.findExact(typedName);
    if (key == NameIndex::kNone || !names.isAlone(key)) {
        key = findBest(args, names, typedName, key);
        if (key == NameIndex::kNone) {
            return m_candidates.empty() ? kNotTaken : kTaken;  // parse reports several
        }
    }
    trace(": best match option for '", typedName, "' in argument '", args[0], "' is '",
          names.textOf(key), "'");
    m_optionIndex = names.recordOf(key);
    m_isNegated =
        options.records()[m_optionIndex]->m_type == mosaic2::vtBool && names.beginsWithNo(key);
    return kTaken;
}

/// The key that a name stands for which is not just one option's own, after findExact() gave
/// `exact`; NameIndex::kNone for none, and for several, which are then listed in m_candidates.
std::uint32_t AbbreviationParser::findBest(ArgumentList const& args, NameIndex& names,
                                           std::string_view typedName, std::uint32_t exact) {
    NameIndex::BestMatch const match = names.find_best_match(typedName, exact);
    if (match.first == NameIndex::kNone || match.isUnique || names.isOneOption(match)) {
        return match.first;
    }
    m_candidates = names.listCandidates(match);
    trace(": failed to get best match for '", typedName, "' in argument '", args[0],
          "':Ambiguous option, possible options are: ", m_candidates);
    return NameIndex::kNone;
}

result_t AbbreviationParser::parse(ArgumentList& args, IResultCollector* collector,
                                   RegisteredOptionStorage& options, unsigned long& optionIndex,
                                   std::string& message) {
    optionIndex = m_optionIndex;
    m_next = Next::kNotNeeded;
    trace(": parsing argument '", args[0], "'");
    auto const& [argument, typedName, value, hasSeparator] = split(args[0]);
    bool const isName = !typedName.empty() && typedName.front() != '-';
    if (!m_candidates.empty() || !isName || m_optionIndex >= options.records().size()) {
        return refuseName(args, typedName, message);
    }
    OptionDescription const& option = *options.records()[m_optionIndex];
    trace(": detected option: '", option.firstName(), "'");
    if (hasSeparator) {
        trace(": value from the same argument taken: '", value, "'");
    }
    return takeOption(args, collector, option, value, message);
}

AbbreviationParser::Split const& AbbreviationParser::split(std::string_view argument) {
    if (argument.data() != m_split.argument.data() || argument.size() != m_split.argument.size()) {
        m_split = {argument, {}, {}, false};
        m_split.hasSeparator =
            splitOptionValue(argument, m_whiteSpace, &m_split.name, &m_split.value);
    }
    return m_split;
}

/// Completes the value that was in the option's own argument, and stores the occurrence.
result_t AbbreviationParser::takeOption(ArgumentList& args, IResultCollector* collector,
                                        OptionDescription const& option, std::string_view value,
                                        std::string& message) {
    bool const isBool = option.m_type == mosaic2::vtBool;
    bool const takesNoValue = option.m_type == mosaic2::vtNull;
    if ((takesNoValue || isBool) && !value.empty()) {
        return refuseValue(args, option, message);
    }
    if (isBool) {
        value = m_isNegated ? "0" : "1";
    } else if (value.empty() && !takesNoValue) {
        result_t const result = takeNextAsValue(args, option, value, message);
        if (result != kTaken) {
            return result;
        }
    }
    if (m_handler != nullptr) {
        m_handler->onOptionParse(option.firstName().data());
    }
    trace(": sent event on option parsed");
    result_t const result = parseValueAndAddOption(value, message, option, args, collector);
    if (result != kTaken) {
        return result;
    }
    removeFront(args);
    if (m_next == Next::kTaken) {
        removeFront(args);
    }
    return kTaken;
}

result_t AbbreviationParser::takeNextAsValue(ArgumentList const& args,
                                             OptionDescription const& option,
                                             std::string_view& value, std::string& message) {
    trace(": no value in the same argument, looking next");
    m_next = Next::kMissing;
    if (!args.hasSecond() || args[1].starts_with('-')) {
        return refuseNext(args, option, message);
    }
    value = args[1];
    m_next = Next::kTaken;
    trace(": got value from the next argument: '", value, "'");
    return kTaken;
}

result_t AbbreviationParser::refuseName(ArgumentList const& args, std::string_view typedName,
                                        std::string& message) {
    if (m_candidates.empty()) {
        return fail(message, join({"Unknown option '", typedName, "'"}));
    }
    return fail(message, join({"Ambiguous option '", typedName, "'", formatTokenMessage(args[0]),
                               ", could be: ", m_candidates}));
}

result_t AbbreviationParser::refuseValue(ArgumentList const& args, OptionDescription const& option,
                                         std::string& message) {
    char const* const reason =
        option.m_type == mosaic2::vtBool
            ? "' is boolean and should be declared in form '--option' or '--no-option'"
            : "'does not requires a value";
    return fail(message,
                join({"Option '", option.firstName(), reason, formatTokenMessage(args[0])}));
}

result_t AbbreviationParser::refuseNext(ArgumentList const& args, OptionDescription const& option,
                                        std::string& message) {
    if (!args.hasSecond()) {
        return fail(message, join({"Option '", option.firstName(), "' requires a value",
                                   formatTokenMessage(args[0])}));
    }
    return fail(message,
                join({"Option '", option.firstName(), "' received value from the next argument: '",
                      args[1], "', but it seems to be an option. Use '-option=value' ",
                      "declaration form or make sure that value is not missed"}));
}

}  // namespace varo_3_3
