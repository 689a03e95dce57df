#include "recognizers/positional_parser.h"

#include "platform/join.h"
#include "varo/parser.h"

namespace varo_3_3 {

PositionalOptionsParser::PositionalOptionsParser(EventHandler* handler, Garbage* garbage, int flags,
                                                 SharedState shared)
    : IArgumentParser(handler, garbage, flags, shared) {
    m_name = "PositionalOptionsParser";
}

result_t PositionalOptionsParser::recognize(ArgumentList& args, RegisteredOptionStorage& options,
                                            std::string& message) {
    trace(": recognizing argument '", args[0], "'");
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
    trace(": parsing argument '", args[0], "'");
    optionIndex = options.firstPositional();
    if (optionIndex >= options.records().size()) {
        return fail(message, internal::join({"Unknown option '", args[0], "'"}));
    }
    OptionDescription const& option = *options.records()[optionIndex];
    trace(": option is '", option.firstName(), "'");
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
