#pragma once

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "varo/assist.h"
#include "varo/completion.h"
#include "varo/documents.h"
#include "varo/varo.h"

namespace varo_3_3 {

// The whole front of a program, from argv to a result. A host that wants other words takes the
// pieces: they are in this header and in varo/assist.h. Since 3.3.1.

/// Why the last parse failed, as a program called `name` tells its user on standard error:
///
///     tool: Unknown option: --limits=5 (weekly.options:3, from argument 2)
///     Did you mean '--limit=5'?
///     Try 'tool --help'.
///
/// Each line is fit for a terminal. The last one is there when "help" is declared.
inline std::string failureText(Parser const& parser, char const* name) {
    std::string text = printable(name) + ": " + printable(parser.error());
    std::string const origin = printable(errorOrigin(parser.interface()));
    text += origin.empty() ? "\n" : " (" + origin + ")\n";
    std::string const meant = suggestion(parser.interface());
    text += meant.empty() ? "" : meant + "\n";
    bool const hasHelp = parser && (parser->isOptionDeclared("help", false, nullptr) ||
                                    parser->isOptionDeclared("help", true, nullptr));
    text += hasHelp ? "Try '" + printable(name) + " --help'.\n" : "";
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

namespace internal {

/// Whether standard output is a terminal whose user wants text in bold.
inline bool isEmphasisWanted() {
    char const* const terminal = std::getenv("TERM");
    char const* const noColor = std::getenv("NO_COLOR");
    return ::isatty(STDOUT_FILENO) != 0 && terminal != nullptr && *terminal != '\0' &&
           std::strcmp(terminal, "dumb") != 0 && (noColor == nullptr || *noColor == '\0');
}

/// Whether every declaration of this name is there or not, or a switch: what has values is the
/// program's own.
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

}  // namespace internal

/// Writes helpText() to standard output. On a terminal headings and names are in bold, unless the
/// environment has NO_COLOR, no TERM, or TERM=dumb; in a file or a pipe all is plain, whatever
/// `layout` says, and in 80 columns unless it says otherwise.
inline void printHelp(Parser const& parser, HelpLayout layout) {
    layout.emphasis = internal::isEmphasisWanted() ? 1 : 0;
    std::fputs(helpText(parser.interface(), &layout), stdout);
}

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
/// - who asks for completions or for the program's documents is answered, as answerShell does with
///   `about` and `values`;
/// - "help", where an option or action of this name is declared and asked for, ends the program
///   with the status that `showHelp(result)` returns, and "version" prints the name and version;
///   status 0. Both also beside any mistake, as isAskedFor has it; the result then holds what came
///   before. Neither where the declaration takes a value;
/// - a parse that fails prints failureText() on standard error; status 2. Without memory: status 1.
///
/// Warnings go to standard error. Nothing else is printed.
template <class ShowHelp>
Result parseOrExit(Parser const& parser, Manual const& about, int argc, char const* const* argv,
                   ShowHelp showHelp, ValueSource* values = nullptr) {
    char const* const name = about.name != nullptr ? about.name : "";
    if (auto const status = answerShell(parser, about, argc, argv, values)) {
        std::exit(*status);
    }
    Result result = parser.createResult();
    if (!parser || !result) {
        std::fprintf(stderr, "%s: Out of memory.\n", name);
        std::exit(1);
    }
    int const code = parser.parse(argc, argv, result);
    auto const isAsked = [&](char const* option) {
        return isAskedFor(parser.interface(), argc, argv, option) &&
               internal::isSwitch(parser, option);
    };
    if (isAsked("help")) {
        std::exit(showHelp(result));
    }
    if (isAsked("version")) {
        std::string const version = about.version != nullptr ? about.version : "";
        std::puts((printable(name) + " " + printable(version)).c_str());
        std::exit(0);
    }
    std::fputs((code == kSuccess ? warningText(parser, name) : failureText(parser, name)).c_str(),
               stderr);
    if (code != kSuccess) {
        std::exit(2);
    }
    return result;
}

/// The same with the help of printHelp().
inline Result parseOrExit(Parser const& parser, Manual const& about, int argc,
                          char const* const* argv) {
    return parseOrExit(parser, about, argc, argv, [&](Result const& /*result*/) {
        HelpLayout layout;
        layout.program = about.name;
        printHelp(parser, layout);
        return 0;
    });
}

}  // namespace varo_3_3
