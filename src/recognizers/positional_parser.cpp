#include "recognizers/positional_parser.h"

#include "platform/join.h"
#include "trace/diagnostic_log.h"
#include "varo/parser.h"

namespace varo_3_3 {

using internal::varoLog;

PositionalOptionsParser::PositionalOptionsParser(EventHandler* handler, Garbage* garbage, int flags)
    : IArgumentParser(handler, garbage, flags) {
    m_name = "PositionalOptionsParser";
}

result_t PositionalOptionsParser::recognize(ArgumentList& args, RegisteredOptionStorage& options,
                                            std::string& message) {
    varoLog(m_name, ": recognizing argument '", args[0], "'");
    if ((m_flags & kDashGuard) != 0 && args[0].starts_with('-')) {
        message =
            "The positional option cannot start from a '-' symbol. Use '--' argument in "
            "command line to declare positional option started with '-'";
        return kNotTaken;
    }
    return options.firstPositional() != NameIndex::kNone ? kTaken : kNotTaken;
}

result_t PositionalOptionsParser::parse(ArgumentList& args, IResultCollector* collector,
                                        RegisteredOptionStorage& options,
                                        unsigned long& optionIndex, std::string& message) {
    varoLog(m_name, ": parsing argument '", args[0], "'");
    optionIndex = options.firstPositional();
    if (optionIndex >= options.records().size()) {
        return fail(message, internal::join({"Unknown option '", args[0], "'"}));
    }
    OptionDescription const& option = *options.records()[optionIndex];
    varoLog(m_name, ": option is '", option.firstName(), "'");
    do {
        result_t const result = parseValueAndAddOption(args[0], message, option, args, collector);
        if (result != kTaken) {
            return result;
        }
        removeFront(args);
    } while (!args.empty() && (m_flags & kTakeTheRest) != 0);
    return kTaken;
}

}  // namespace varo_3_3
