#include "documents/markdown.h"

#include <algorithm>

#include "documents/printable.h"

namespace varo_3_3::internal {
namespace {

/// What has a meaning anywhere, and what has one where a line begins.
constexpr std::string_view kSpecial = "\\`*_[]<>|~&#";
constexpr std::string_view kSpecialInFront = "+-=";

void addWord(std::string& page, std::string_view word, bool isInFront) {
    // A number in front, as in "12.", would begin a list.
    std::size_t const number = isInFront ? word.find_first_not_of("0123456789") : 0;
    for (std::size_t at = 0; at < word.size(); ++at) {
        char const byte = word[at];
        bool const isSpecial =
            kSpecial.find(byte) != std::string_view::npos ||
            (isInFront && at == 0 && kSpecialInFront.find(byte) != std::string_view::npos) ||
            (number != 0 && at == number && (byte == '.' || byte == ')'));
        page += isSpecial ? "\\" : "";
        page += byte;
    }
}

}  // namespace

void addMarkdownWords(std::string& page, std::string_view line) {
    bool isInFront = true;
    for (std::string_view word = takeWord(line); !word.empty(); isInFront = false) {
        addWord(page, word, isInFront);
        word = takeWord(line);
        page += word.empty() ? "" : " ";
    }
}

void addMarkdownCode(std::string& page, std::string_view first, std::string_view second) {
    std::string text(first);
    text += second;
    std::size_t longest = 0;
    std::size_t run = 0;
    for (char const byte : text) {
        run = byte == '`' ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    // A reader drops one blank at both ends, if there is one.
    std::string_view const blank =
        text.front() == ' ' || text.front() == '`' || text.back() == ' ' || text.back() == '`' ? " "
                                                                                               : "";
    page.append(longest + 1, '`');
    page += blank;
    page += text;
    page += blank;
    page.append(longest + 1, '`');
}

}  // namespace varo_3_3::internal
