#pragma once

#include <cstdio>
#include <cstring>
#include <optional>

#include "varo/documents.h"
#include "varo/export.h"
#include "varo/varo.h"

namespace varo_3_3 {

/// Takes what a ValueSource offers. Created by the library, for one call; programs only call it, so
/// operations may be added at its end. Texts are copied. Since 3.3.1.
class VARO_EXPORT ValueOffers {
public:
    /// Offers a value with its description, which may be null. A value is left out when it is null
    /// or "", does not begin with the typed text, would be refused by the parser itself (handlers
    /// and Conversions are not asked), is deprecated, or has control characters. May throw
    /// std::bad_alloc, which the source must let through.
    virtual void value(char const* text, char const* description) = 0;

    /// Has the shell offer files, or only directories. Files win when both are called.
    virtual void files() = 0;
    virtual void directories() = 0;

protected:
    ~ValueOffers() = default;
};

/// What a program derives from to offer values that only it knows. Not owned. Since 3.3.1.
///
/// The order of the operations is the binary contract; there is no virtual destructor.
class VARO_EXPORT ValueSource {
public:
    /// Offers values of the option with the primary name `name`; `typed` is what was typed so far
    /// of the value, or of its last piece where values are split. Called for every option with
    /// values. Allowed values are offered as well; for option files and positional strings, files
    /// are too if nothing is called here. When a source throws, nothing is offered.
    virtual void offer(char const* name, char const* typed, ValueOffers& offers) = 0;

protected:
    ~ValueSource() = default;
};

/// What to write to standard output for a shell that asks what may be typed next, with argv[1]
/// "varooption=complete", or for a user who wants the script that makes a shell ask,
/// "varooption=script SHELL NAME". Shells are bash, zsh and fish; docs/completion.md describes the
/// protocol. No file is read, and only the declarations and `source`, which may be null, are
/// consulted. The text lives as long as the parser; nothing is thrown, no event sent, no position
/// taken.
///
/// Null, and not "", when argv[1] is neither, so that the program goes on as usual. "" when the
/// parser is null or not of this library, memory runs out, the question is incomplete, the shell is
/// unknown, or NAME begins with "-" or has characters other than ASCII letters, digits and "-_.+".
/// Since 3.3.1.
VARO_EXPORT char const* completion(IParser* parser, int argc, char const* const* argv,
                                   ValueSource* source);

namespace internal {

/// The document that the command line asks for: "" when there is none to give, null when it asks
/// for none.
inline char const* askedDocument(IParser* parser, Manual const& about, int argc,
                                 char const* const* argv) {
    if (argc < 2) {
        return nullptr;
    }
    if (std::strcmp(argv[1], "varooption=json") == 0) {
        return argc == 2 ? describeJson(parser) : "";
    }
    if (std::strcmp(argv[1], "varooption=manual") != 0) {
        return nullptr;
    }
    char const* const form = argc == 3 ? argv[2] : "";
    return std::strcmp(form, "man") == 0        ? manual(parser, &about, kManualPage)
           : std::strcmp(form, "markdown") == 0 ? manual(parser, &about, kManualMarkdown)
                                                : "";
}

inline std::optional<int> printAnswer(char const* answer) {
    if (answer == nullptr) {
        return std::nullopt;
    }
    bool const isWritten = std::fputs(answer, stdout) >= 0 && std::fflush(stdout) == 0;
    return isWritten && *answer != '\0' ? 0 : 2;
}

}  // namespace internal

/// Answers a shell that completes a command line of this program (see completion), in one line
/// after the declarations and before anything else:
///
///     if (auto status = varo::answerShell(parser, argc, argv)) {
///         return *status;
///     }
///
/// Nothing when no shell asks. Else the exit status: 0 after the answer was written to standard
/// output, 2 when there is none to give or it could not be written. Since 3.3.1.
inline std::optional<int> answerShell(Parser const& parser, int argc, char const* const* argv,
                                      ValueSource* source = nullptr) {
    return internal::printAnswer(completion(parser.interface(), argc, argv, source));
}

/// The same for a program that gives its documents as well, to whoever packages or builds it:
///
///     TOOL varooption=manual man          manual(parser, &about, kManualPage)
///     TOOL varooption=manual markdown     manual(parser, &about, kManualMarkdown)
///     TOOL varooption=json                describeJson(parser)
inline std::optional<int> answerShell(Parser const& parser, Manual const& about, int argc,
                                      char const* const* argv, ValueSource* source = nullptr) {
    char const* const document = internal::askedDocument(parser.interface(), about, argc, argv);
    return document != nullptr ? internal::printAnswer(document)
                               : answerShell(parser, argc, argv, source);
}

}  // namespace varo_3_3
