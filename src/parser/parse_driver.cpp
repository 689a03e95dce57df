#include <algorithm>
#include <exception>
#include <optional>

#include "parser/basic_parser.h"
#include "platform/join.h"
#include "recognizers/positions.h"
#include "recognizers/recognizers.h"
#include "trace/diagnostic_log.h"

namespace varo_3_3 {

using internal::varoLog;

namespace {

/// The result that one parse call fills: the host's or, without one, a temporary one. While this
/// lives, replaced records stay alive, since the call may still hold them; before and after, the
/// result forgets its records, which may be gone.
class Target {
public:
    Target(IParseResult* result, RegisteredOptionStorage& registry)
        : m_result(result != nullptr ? static_cast<ParseResult&>(*result) : m_own.emplace()),
          m_registry(registry) {
        m_registry.beginUse();
        m_result.forgetRecords();
    }
    ~Target() {
        m_result.forgetRecords();
        m_registry.endUse();
    }
    Target(Target const&) = delete;
    Target& operator=(Target const&) = delete;

    ParseResult& operator*() const { return m_result; }

private:
    std::optional<ParseResult> m_own;
    ParseResult& m_result;
    RegisteredOptionStorage& m_registry;
};

int takePosition() {
    return internal::takePosition(IArgumentParser::m_idx);
}

int nextPosition() {
    return internal::nextPosition(IArgumentParser::m_idx);
}

}  // namespace

int BasicParser::parseArgsVector(int argc, char const* const* argv, IParseResult* result) {
    Target const target(result, m_registry);
    m_failure = nullptr;
    (*target).applyDefault(m_registry, takePosition);
    if (argc < 2) {
        m_lastError.clear();
        return kSuccess;
    }
    if (argv == nullptr || std::find(argv + 1, argv + argc, nullptr) != argv + argc) {
        return kUnusableArguments;
    }
    internal::WhiteSpace whiteSpace;
    std::size_t const count = static_cast<std::size_t>(argc) - 1;
    if (m_handlers.empty()) {
        ArgumentVector source(argv + 1, count);
        return parseVector(source, whiteSpace, *target);
    }
    std::optional<CopiedArguments> copied;
    try {
        copied.emplace(argv + 1, count);
    } catch (std::exception const&) {
        return kUnusableArguments;
    }
    return parseVector(*copied, whiteSpace, *target);
}

int BasicParser::parseStream(char const* text, IParseResult* result) {
    Target const target(result, m_registry);
    internal::WhiteSpace whiteSpace;
    std::string_view lines = text != nullptr ? text : "";
    std::string copied;  // for handlers, as in parseArgsVector
    if (!m_handlers.empty()) {
        try {
            copied = lines;
        } catch (std::exception const&) {
            return kUnusableArguments;
        }
        lines = copied;
    }
    OptionLines source(lines, whiteSpace);
    return parseVector(source, whiteSpace, *target);
}

int BasicParser::parseVector(ArgumentSource& source, internal::WhiteSpace& whiteSpace,
                             ParseResult& result) {
    m_lastError.clear();
    m_failure = nullptr;
    try {
        ParseSession session(result, whiteSpace, m_handlers.empty() ? nullptr : this,
                             nextPosition());
        int const code = runPhases(source, session);
        m_failure = std::move(session.failure);
        setLastError(code == kSuccess ? session.warnings : session.error);
        return code;
    } catch (std::exception const&) {
        m_lastError = kUnidentifiedProblemText;
        return kUnidentifiedProblem;
    }
}

int BasicParser::runPhases(ArgumentSource& source, ParseSession& session) {
    if (session.handler != nullptr) {
        session.whiteSpace.capture();  // a handler may set another locale
    }
    int code = parseList(source, session);
    if (code == kSuccess && m_optionFileEnabled) {
        code = expandOptionFiles(session);
    }
    if (code == kSuccess) {
        session.source = &source;
        code = parse_phase_two(session);
    }
    return code;
}

/// What takes the next occurrence. A handler can enable option files even while it is told of the
/// file that is to be read.
IResultCollector* BasicParser::collectorOf(ParseSession& session) const {
    if (m_optionFileEnabled || session.handler != nullptr) {
        return &session.files;
    }
    return &session.result;
}

int BasicParser::parseList(ArgumentSource& source, ParseSession& session) {
    ArgumentList args(source);
    session.files.readFrom(args, source, nextPosition());
    int code = parse_phase_one(args, session);
    if (code == kSuccess) {
        code = collectNonparsingArguments(args, session);
        if (code != kSuccess) {
            keepFailedArgument(session, args, Failure::kPlain);
        }
    }
    return code;
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
