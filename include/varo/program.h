#pragma once

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>

#include "varo/assist.h"
#include "varo/completion.h"
#include "varo/documents.h"
#include "varo/varo.h"

namespace varo_3_3 {

// All that comes before a program's own work, from argv to a result. A host that wants other words
// calls the functions below and those of varo/assist.h. Since 3.3.1.

namespace internal {

/// Whether standard output is a terminal whose user wants text in bold.
inline bool isEmphasisWanted() {
    char const* const terminal = std::getenv("TERM");
    char const* const noColor = std::getenv("NO_COLOR");
    return ::isatty(STDOUT_FILENO) != 0 && terminal != nullptr && *terminal != '\0' &&
           std::strcmp(terminal, "dumb") != 0 && (noColor == nullptr || *noColor == '\0');
}

/// Whether every declaration of this name is void or bool; one with values is left to the program.
inline bool isSwitch(Parser const& parser, std::string_view name) {
    Declaration const* each = nullptr;
    while ((each = nextDeclaration(parser.interface(), each)) != nullptr) {
        bool const hasValues = each->type != mosaic2::vtNull && each->type != mosaic2::vtBool;
        for (int at = 0; at < each->nameCount; ++at) {
            if (hasValues && each->names[at] == name) {
                return false;
            }
        }
    }
    return true;
}

/// Whether an option or action of this name is declared, and takes no value.
inline bool isSwitchDeclared(Parser const& parser, char const* name) {
    bool const isDeclared = parser && (parser->isOptionDeclared(name, false, nullptr) ||
                                       parser->isOptionDeclared(name, true, nullptr));
    return isDeclared && isSwitch(parser, name);
}

}  // namespace internal

/// Why the last parse failed, as a program called `name` tells its user on standard error:
///
///     tool: Unknown option: --limits=5 (weekly.options:3, from argument 2)
///     Did you mean '--limit=5'?
///     Try 'tool --help'.
///
/// Each line is fit for a terminal. The last one is there when "help" is declared
/// and takes no value.
inline std::string failureText(Parser const& parser, char const* name) {
    std::string text = printable(name) + ": " + printable(parser.error());
    std::string const origin = printable(errorOrigin(parser.interface()));
    text += origin.empty() ? "\n" : " (" + origin + ")\n";
    std::string const meant = suggestion(parser.interface());
    text += meant.empty() ? "" : meant + "\n";
    text +=
        internal::isSwitchDeclared(parser, "help") ? "Try '" + printable(name) + " --help'.\n" : "";
    return text;
}

/// The warnings of the last parse, a line each.
inline std::string warningText(Parser const& parser, char const* name) {
    std::string text;
    std::string_view rest = parser.error();
    while (!rest.empty()) {
        std::string_view const line = rest.substr(0, rest.find('\n'));
        text += printable(name) + ": " + printable(line) + "\n";
        rest.remove_prefix(line.size() < rest.size() ? line.size() + 1 : line.size());
    }
    return text;
}

/// Writes helpText() to standard output. On a terminal headings and names are in bold, unless the
/// environment has NO_COLOR, no TERM, or TERM=dumb; in a file or a pipe all is plain, whatever
/// `layout` says, and in 80 columns unless it says otherwise. False when there is no text, since
/// there is nothing to show or memory ran out.
inline bool printHelp(Parser const& parser, HelpLayout layout) {
    layout.emphasis = internal::isEmphasisWanted() ? 1 : 0;
    char const* const text = helpText(parser.interface(), &layout);
    std::fputs(text, stdout);
    return *text != '\0';
}

namespace internal {

/// What messages call the program.
inline char const* programName(Manual const& about, int argc, char const* const* argv) {
    if (about.name != nullptr && *about.name != '\0') {
        return about.name;
    }
    char const* const path = argc > 0 && argv != nullptr ? argv[0] : nullptr;
    char const* const slash = path != nullptr ? std::strrchr(path, '/') : nullptr;
    char const* const name = slash != nullptr ? slash + 1 : path;
    return name != nullptr && *name != '\0' ? name : "program";
}

/// Ends the program when there is no memory; takes none. What is not ASCII becomes "?".
[[noreturn]] inline void endWithoutMemory(char const* name) {
    for (; *name != '\0'; ++name) {
        std::fputc(*name >= ' ' && *name <= '~' ? *name : '?', stderr);
    }
    std::fputs(": Out of memory.\n", stderr);
    std::exit(1);
}

/// Ends the program after it wrote what was asked for: with `status`, or 2 instead of 0 when
/// standard output did not take it.
[[noreturn]] inline void endAfterOutput(int status) {
    bool const isWritten = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    std::exit(status == 0 && !isWritten ? 2 : status);
}

inline void printVersion(Manual const& about, char const* name) {
    std::string const version = printable(about.version);
    std::puts((printable(name) + (version.empty() ? "" : " ") + version).c_str());
}

/// Whether a parse stored an option or action that takes no value, and did not turn it off.
inline bool isGiven(Result const& result, char const* name) {
    for (Value const& each : result.values(name)) {
        if (each.value().m_type != mosaic2::vtBool || each.as<bool>()) {
            return true;
        }
    }
    return false;
}

/// Why a parse failed, on standard error; then ends the program.
[[noreturn]] inline void endAfterFailure(Parser const& parser, char const* name, int code) {
    if (std::strcmp(parser.error(), "Out of memory.") == 0) {
        endWithoutMemory(name);
    }
    std::fputs(failureText(parser, name).c_str(), stderr);
    std::exit(code == kUnidentifiedProblem ? 1 : 2);
}

/// parseOrExit while there is memory.
template <class ShowHelp>
Result parseOrEnd(Parser const& parser, Manual const& about, char const* name, int argc,
                  char const* const* argv, ShowHelp& showHelp) {
    Result result = parser.createResult();
    if (!parser || !result) {
        endWithoutMemory(name);
    }
    int const code = parser.parse(argc, argv, result);
    auto const isAsked = [&](char const* option) {
        return (isAskedFor(parser.interface(), argc, argv, option) ||
                (code == kSuccess && isGiven(result, option))) &&
               isSwitch(parser, option);
    };
    if (isAsked("help")) {
        endAfterOutput(showHelp(result));
    }
    if (isAsked("version")) {
        printVersion(about, name);
        endAfterOutput(0);
    }
    if (code != kSuccess) {
        endAfterFailure(parser, name, code);
    }
    std::fputs(warningText(parser, name).c_str(), stderr);
    return result;
}

/// A host that is compiled without exceptions cannot catch std::bad_alloc.
#ifdef __cpp_exceptions
template <class Work>
Result withMemory(char const* name, Work work) {
    try {
        return work();
    } catch (std::bad_alloc const&) {
        endWithoutMemory(name);
    }
}
#else
template <class Work>
Result withMemory(char const* /*name*/, Work work) {
    return work();
}
#endif

}  // namespace internal

/// Parses the arguments after argv[0] into a new result, or ends the program with std::exit:
///
///     int main(int argc, char** argv) {
///         varo::Manual about;
///         about.name = "tool";
///         about.version = "1.0";
///         varo::Parser parser(varo::kUnknownIsError | varo::kDashGuard);
///         auto const level = parser.option<int>("level,l", "How warmly").defaultValue(1);
///         parser.option<void>("help,h", "Show this help");
///         varo::Result const result = varo::parseOrExit(parser, about, argc, argv);
///         ...
///
/// - a request for completions or for the program's documents is answered, as answerShell does with
///   `about` and `values`;
/// - "help", where an option or action of this name is declared and asked for, ends the program
///   with the status that `showHelp(result)` returns, and "version" prints the name and version;
///   status 0, or 2 when standard output cannot be written. Both work even if the line is wrong
///   (see isAskedFor); the result then holds what came before. In an option file, they count when
///   the parse succeeds. A declaration that takes a value is left to the program;
/// - a parse that fails prints failureText() on standard error; status 2, or 1 after
///   kUnidentifiedProblem, which is no mistake of the user's;
/// - without memory, also in `showHelp`, "tool: Out of memory." goes to standard error; status 1.
///   (A host without exceptions is aborted where the headers name std::bad_alloc.)
///
/// Warnings go to standard error. Nothing else is printed. A null or empty about.name stands for
/// the last component of argv[0].
template <class ShowHelp,
          std::enable_if_t<std::is_invocable_r_v<int, ShowHelp&, Result const&>, int> = 0>
Result parseOrExit(Parser const& parser, Manual const& about, int argc, char const* const* argv,
                   ShowHelp showHelp, ValueSource* values = nullptr) {
    if (auto const status = answerShell(parser, about, argc, argv, values)) {
        std::exit(*status);
    }
    char const* const name = internal::programName(about, argc, argv);
    return internal::withMemory(
        name, [&] { return internal::parseOrEnd(parser, about, name, argc, argv, showHelp); });
}

namespace internal {

inline Result parseWithHelp(Parser const& parser, Manual const& about, int argc,
                            char const* const* argv, ValueSource* values) {
    auto const showHelp = [&](Result const& /*result*/) {
        HelpLayout layout;
        layout.program = programName(about, argc, argv);
        if (!printHelp(parser, layout)) {
            endWithoutMemory(layout.program);
        }
        return 0;
    };
    return parseOrExit(parser, about, argc, argv, showHelp, values);
}

}  // namespace internal

/// The same with the help of printHelp().
inline Result parseOrExit(Parser const& parser, Manual const& about, int argc,
                          char const* const* argv) {
    return internal::parseWithHelp(parser, about, argc, argv, nullptr);
}

/// The same with values that only the program knows.
inline Result parseOrExit(Parser const& parser, Manual const& about, int argc,
                          char const* const* argv, ValueSource& values) {
    return internal::parseWithHelp(parser, about, argc, argv, &values);
}

}  // namespace varo_3_3
