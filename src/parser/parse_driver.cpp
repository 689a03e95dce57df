#include "parser/basic_parser.h"
#include "platform/join.h"
#include "recognizers/positions.h"
#include "recognizers/recognizers.h"
#include "trace/diagnostic_log.h"

namespace varo_3_3 {

using internal::varoLog;

namespace {

int takePosition() {
    return internal::takePosition(IArgumentParser::m_idx);
}

}  // namespace

/// What takes the next occurrence. A handler can enable option files even while it is told of the
/// file that is to be read.
IResultCollector* BasicParser::collectorOf(ParseSession& session) const {
    if (m_optionFileEnabled || session.handler != nullptr) {
        return &session.files;
    }
    return &session.result;
}

int BasicParser::parse_phase_one(ArgumentList& args, ParseSession& session) {
    internal::switchTrace(false);
    if (!args.empty() && args[0] == kLogSwitch) {
        internal::switchTrace(true);
        args.eraseFront();
    }
    Recognizers recognizers(session.handler, &m_garbage, m_flags, session.whiteSpace);
    std::string message;
    std::string reason;  // why a recognizer does not take an argument; nothing reads it
    while (!args.empty() && args[0] != kEndMarker) {
        IArgumentParser* const recognizer = recognizers.choose(args, m_registry, reason);
        if (recognizer == nullptr) {
            if (takeUnclaimed(args, session) != kSuccess) {
                keepFailedArgument(session, args, Failure::kArgument);
                return kParseError;
            }
            continue;
        }
        unsigned long optionIndex = 0;
        message.clear();
        int const code =
            recognizer->parse(args, collectorOf(session), m_registry, optionIndex, message);
        if (code != kSuccess) {
            session.error = message;
            bool const isPositional = recognizer == &recognizers.positional;
            keepFailedArgument(session, args,
                               isPositional ? Failure::kPositional : Failure::kArgument);
            return code;
        }
        session.addWarning(message);
    }
    return kSuccess;
}

/// Drops an argument that no recognizer takes, or makes it an error.
int BasicParser::takeUnclaimed(ArgumentList& args, ParseSession& session) const {
    bool const isVetoed = session.handler != nullptr &&
                          !session.handler->onUknownArgument(std::string(args[0]).c_str());
    if ((m_flags & kUnknownIsError) != 0 && !isVetoed) {
        session.error = unknownText(args[0]);
        return kParseError;
    }
    varoLog("ignoring ", args[0]);
    args.eraseFront();
    return kSuccess;
}

std::string BasicParser::unknownText(std::string_view argument) {
    return internal::join({"Unknown option: ", argument});
}

/// Stores what follows the end marker as plain arguments.
int BasicParser::collectNonparsingArguments(ArgumentList& args, ParseSession& session) {
    if (args.empty()) {
        return kSuccess;
    }
    for (args.eraseFront(); !args.empty(); args.eraseFront()) {
        session.result.storeArgument(args[0], takePosition());
        varoLog("collectNonparsingArguments: ", "stored argument: '", args[0], "'");
        if ((m_flags & kPositionalAfterMarker) != 0) {
            int const code = offerToPositional(args[0], session);
            if (code != kSuccess) {
                return code;
            }
        }
    }
    return kSuccess;
}

/// Gives a plain argument to the positional option as well, whatever it begins with.
int BasicParser::offerToPositional(std::string_view argument, ParseSession& session) {
    ArgumentList args(argument);
    PositionalOptionsParser positional(session.handler, &m_garbage, m_flags & ~kDashGuard);
    auto const logResult = [](std::string_view step, int code, std::string_view message) {
        char const digit = static_cast<char>('0' + code);
        varoLog("collectNonparsingArguments: ", step, std::string_view(&digit, 1),
                ", message: ", message);
    };
    std::string message;
    int code = positional.recognize(args, m_registry, message);
    logResult("recognize result: ", code, message);
    if (code != kTaken) {
        return kSuccess;
    }
    unsigned long optionIndex = 0;
    code = positional.parse(args, collectorOf(session), m_registry, optionIndex, message);
    logResult("parse result: ", code, message);
    if (code == kTaken) {
        session.addWarning(message);
    } else {
        session.error = message;
    }
    return code;
}

}  // namespace varo_3_3
