#include <algorithm>
#include <exception>
#include <optional>

#include "options/tag_sets.h"
#include "parser/basic_parser.h"
#include "platform/join.h"
#include "recognizers/abbreviation_parser.h"
#include "recognizers/positional_parser.h"
#include "trace/diagnostic_log.h"

namespace varo_3_3 {

using internal::varoLog;

namespace {

constexpr std::string_view kLogSwitch = "varooption=varologenable=1";

/// The result that one parse call fills: the host's, or, when there is none, one that is thrown
/// away. While it lives, replaced records stay alive, since the call may still hold them, and
/// before and after that the result forgets records that may not be.
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

/// The recognizer with the highest priority among those that take args[0]; null if none does. All
/// are asked, in this order. Their classes are known here, which spares virtual calls.
template <class... Recognizers>
IArgumentParser* chooseRecognizer(ArgumentList& args, RegisteredOptionStorage& options,
                                  std::string& message, Recognizers&... recognizers) {
    IArgumentParser* best = nullptr;
    int bestPriority = -99999999;
    auto const ask = [&](auto& recognizer) {
        if (recognizer.recognize(args, options, message) == kTaken &&
            recognizer.getPriority() > bestPriority) {
            best = &recognizer;
            bestPriority = recognizer.getPriority();
        }
    };
    (ask(recognizers), ...);
    return best;
}

}  // namespace

int BasicParser::parseArgsVector(int argc, char const* const* argv, IParseResult* result) {
    Target const target(result, m_registry);
    (*target).applyDefault(m_registry);
    if (argc < 2) {
        m_lastError.clear();
        return kSuccess;
    }
    if (argv == nullptr || std::find(argv + 1, argv + argc, nullptr) != argv + argc) {
        return kUnusableArguments;
    }
    internal::WhiteSpace whiteSpace;
    ArgumentVector source(argv + 1, static_cast<std::size_t>(argc) - 1);
    return parseVector(source, whiteSpace, *target);
}

int BasicParser::parseStream(char const* text, IParseResult* result) {
    Target const target(result, m_registry);
    internal::WhiteSpace whiteSpace;
    OptionLines lines(text != nullptr ? text : "", whiteSpace);
    return parseVector(lines, whiteSpace, *target);
}

int BasicParser::parseVector(ArgumentSource& source, internal::WhiteSpace& whiteSpace,
                             ParseResult& result) {
    m_lastError.clear();
    try {
        ParseSession session(result, whiteSpace);
        int const code = runPhases(source, session);
        setLastError(code == kSuccess ? session.warnings : session.error);
        return code;
    } catch (std::exception const&) {
        m_lastError = kUnidentifiedProblemText;
        return kUnidentifiedProblem;
    }
}

int BasicParser::runPhases(ArgumentSource& source, ParseSession& session) {
    if (!m_handlers.empty()) {
        session.whiteSpace.capture();  // a handler may set another locale
    }
    int code = parseList(source, session);
    if (code == kSuccess && m_optionFileEnabled) {
        code = expandOptionFiles(session);
    }
    return code == kSuccess ? parse_phase_two(session) : code;
}

/// What takes the next occurrence. Option files can be enabled by a handler, in the middle of a
/// parse.
IResultCollector* BasicParser::collectorOf(ParseSession& session) const {
    if (m_optionFileEnabled) {
        return &session.files;
    }
    return &session.result;
}

int BasicParser::parseList(ArgumentSource& source, ParseSession& session) {
    ArgumentList args(source);
    int const code = parse_phase_one(args, session);
    return code == kSuccess ? collectNonparsingArguments(args, session) : code;
}

int BasicParser::parse_phase_one(ArgumentList& args, ParseSession& session) {
    internal::varoLogEnabled = false;
    if (!args.empty() && args[0] == kLogSwitch) {
        internal::varoLogEnabled = true;
        args.eraseFront();
    }
    PositionalOptionsParser positional(listener(), &m_garbage, m_flags);
    AbbreviationParser abbreviation(listener(), &m_garbage, m_flags, session.whiteSpace);
    std::string reason;  // why a recognizer does not take an argument interests nobody
    std::string warning;
    while (!args.empty() && args[0] != kEndMarker) {
        IArgumentParser* const recognizer =
            chooseRecognizer(args, m_registry, reason, positional, abbreviation);
        if (recognizer == nullptr) {
            if (takeUnclaimed(args, session.error) != kSuccess) {
                return kParseError;
            }
            continue;
        }
        unsigned long optionIndex = 0;
        warning.clear();
        int const code =
            recognizer->parse(args, collectorOf(session), m_registry, optionIndex, warning);
        if (code != kSuccess) {
            session.error = warning;
            return code;
        }
        session.addWarning(warning);
    }
    return kSuccess;
}

/// Drops an argument that no recognizer takes, or makes it an error.
int BasicParser::takeUnclaimed(ArgumentList& args, std::string& error) {
    bool const isVetoed = !m_handlers.empty() && !onUknownArgument(std::string(args[0]).c_str());
    if ((m_flags & kUnknownIsError) != 0 && !isVetoed) {
        error = internal::join({"Unknown option: ", args[0]});
        return kParseError;
    }
    varoLog("ignoring ", args[0]);
    args.eraseFront();
    return kSuccess;
}

int BasicParser::parse_phase_two(ParseSession& session) {
    std::vector<std::string_view> given = session.result.givenOptions();
    if (m_registry.actionCount() != 0) {
        std::sort(given.begin(), given.end());  // without actions no order shows
    }
    OptionDescription const* action = nullptr;
    int const code = findGivenAction(given, session, action);
    return code == kSuccess && action != nullptr ? checkModifiers(given, session, *action) : code;
}

/// Finds the action, of several that are allowed together the last by name.
int BasicParser::findGivenAction(std::vector<std::string_view> const& given, ParseSession& session,
                                 OptionDescription const*& action) const {
    std::set<std::string> met;
    bool hasOption = false;
    for (std::string_view const key : given) {
        unsigned long index = 0;
        if (findOption(key, index, m_registry.names(), {})) {
            return kRefused;
        }
        OptionDescription const& record = *m_registry.records()[index];
        if (!record.isAction()) {
            hasOption = true;
            continue;
        }
        met.emplace(record.firstName());
        if (action != nullptr && action != &record && !assertActionsCanBeUsedSimultaneously(met)) {
            session.error = internal::join({"Action '-", record.firstName(), "' and action '-",
                                            action->firstName(),
                                            "' were defined, but only one action possible."});
            return kParseError;
        }
        action = &record;
    }
    if (action == nullptr && hasOption && m_registry.actionCount() != 0) {
        session.error = "No action defined.";
        return kParseError;
    }
    return kSuccess;
}

/// Checks that the options given, all of which are declared, belong to the action, or to every
/// action.
int BasicParser::checkModifiers(std::vector<std::string_view> const& given, ParseSession& session,
                                OptionDescription const& action) const {
    for (std::string_view const key : given) {
        unsigned long index = 0;
        if (findOption(key, index, m_registry.names(), action.m_tags)) {
            findOption(key, index, m_registry.names(), {});
        }
        OptionDescription const& record = *m_registry.records()[index];
        if (!record.isAction() && !record.m_tags.empty() &&
            !isIntersected(record.m_tags, action.m_tags)) {
            session.error = internal::join({"Action '-", action.firstName(),
                                            "' doesn't accept option '-", record.firstName(), "'"});
            return kParseError;
        }
    }
    return kSuccess;
}

}  // namespace varo_3_3
