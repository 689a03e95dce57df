#pragma once

#include <cstdio>
#include <optional>

#include "varo/export.h"
#include "varo/varo.h"

namespace varo_3_3 {

/// Takes what a ValueSource offers. Made by the library, for one call; programs only call it, so
/// operations may be added at its end. Texts are copied. Since 3.3.1.
class VARO_EXPORT ValueOffers {
public:
    /// Offers a value with its description, which may be null. Left out are null, "", what does not
    /// begin with the typed text, what a parse would refuse or call deprecated, and what has
    /// control characters. May throw std::bad_alloc, which the source lets pass.
    virtual void value(char const* text, char const* description) = 0;

    /// Has the shell offer files, or directories alone. Files win when both are called.
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
    /// values. Allowed values are offered as well; files, which otherwise are offered for option
    /// files and positional strings, only if nothing is called here. A source that throws has
    /// nothing offered.
    virtual void offer(char const* name, char const* typed, ValueOffers& offers) = 0;

protected:
    ~ValueSource() = default;
};

/// What to write to standard output for a shell that asks what may be typed next, with argv[1]
/// "varooption=complete", or for who asks for the script that makes a shell ask,
/// "varooption=script SHELL NAME". Shells are bash, zsh and fish; docs/completion.md describes the
/// protocol. No file is read and nothing but the declarations and `source`, which may be null, is
/// asked. The text lives as long as the parser; nothing is thrown, no event sent, no position
/// taken.
///
/// Null, and not "", when argv[1] is neither, so that the program goes on as ever. "" when the
/// parser is null or not of this library, memory is short, the question is cut short, the shell
/// unknown, or NAME has other characters than letters of ASCII, digits and "-_.+" or begins with
/// "-". Since 3.3.1.
VARO_EXPORT char const* completion(IParser* parser, int argc, char const* const* argv,
                                   ValueSource* source);

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
    char const* const answer = completion(parser.interface(), argc, argv, source);
    if (answer == nullptr) {
        return std::nullopt;
    }
    bool const isWritten = std::fputs(answer, stdout) >= 0 && std::fflush(stdout) == 0;
    return isWritten && *answer != '\0' ? 0 : 2;
}

}  // namespace varo_3_3
