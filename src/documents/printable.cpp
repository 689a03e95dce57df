#include "documents/printable.h"

#include <algorithm>

#include "platform/utf.h"
#include "varo/printable.h"

namespace varo_3_3::internal {
namespace {

std::string cleaned(std::string_view text, char lineFeed) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        char32_t const character = takeCharacter(text);
        if (character == '\n') {
            result += lineFeed;
        } else if (character >= '\t' && character <= '\r') {
            result += ' ';
        } else {
            result += BRIX::utf32_to_utf8(isControl(character) ? kReplacementCharacter : character)
                          .view();
        }
    }
    return result;
}

}  // namespace

char32_t takeCharacter(std::string_view& text) noexcept {
    char32_t character = kReplacementCharacter;
    std::size_t const length = readCharacter(text, character);
    text.remove_prefix(length != 0 ? length : 1);
    return length != 0 ? character : kReplacementCharacter;
}

std::string printable(std::string_view text) {
    return cleaned(text, '\n');
}

std::string printableLine(std::string_view text) {
    return cleaned(text, ' ');
}

std::string_view takeWord(std::string_view& line) noexcept {
    line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
    std::string_view const word = line.substr(0, line.find(' '));
    line.remove_prefix(word.size());
    return word;
}

std::string_view takeLine(std::string_view& text) noexcept {
    std::string_view const line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return line;
}

}  // namespace varo_3_3::internal
