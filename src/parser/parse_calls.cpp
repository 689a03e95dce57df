#include <algorithm>
#include <exception>
#include <optional>

#include "parser/basic_parser.h"
#include "parser/parse_session.h"
#include "recognizers/argument_parser.h"
#include "recognizers/positions.h"

namespace varo_3_3 {
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

// Once in a parse or a file, so built for size; each argument's way is in parse_driver.cpp.

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

}  // namespace varo_3_3
