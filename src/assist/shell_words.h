#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace varo_3_3::internal {

enum class Shell { kBash, kZsh, kFish };

/// A command line that is being typed, as its shell will read it: words without their quotes,
/// redirections left out. Nothing in it is expanded or run; what a shell would expand stands in the
/// words as it was typed.
struct ShellLine {
    std::unique_ptr<char[]> texts;    ///< what the others point into: the line, and its words
    std::vector<char const*> before;  ///< the words that end before the cursor, the command first
    std::vector<char const*> after;   ///< the words that begin after it
    std::string_view typed;           ///< of the word at the cursor, what is before the cursor
    std::string_view raw;             ///< the same with its quotes
    char quote = 0;                   ///< the quote open at the cursor: ' or ", $ for $', or 0
    bool isRedirection = false;       ///< whether the word at the cursor names a redirection's file

    // The part of the word that the shell will keep: bash replaces only what follows the last of
    // its unquoted word breaks.
    std::size_t keptRaw = 0;
    std::size_t keptTyped = 0;
};

/// Reads the line of which `left` is before the cursor and `right` after it. `wordBreaks` are the
/// characters at which bash begins a word to be completed, "" where the shell has none.
ShellLine readShellLine(Shell shell, std::string_view left, std::string_view right,
                        std::string_view wordBreaks);

/// How much of the raw text of a word stands for the first `length` bytes that were typed.
std::size_t rawLength(Shell shell, std::string_view raw, std::size_t length);

/// Appends `text` as bash must read it inside the open quote `quote`, or outside of quotes.
void appendQuoted(std::string& line, std::string_view text, char quote);

}  // namespace varo_3_3::internal
