#include "documents/printable.h"

#include <algorithm>

#include "varo/printable.h"

namespace varo_3_3::internal {
namespace {

void addCleaned(std::string& text, std::string_view raw, std::string_view lineFeed) {
    while (!raw.empty()) {
        std::string_view shown = raw;
        char32_t const character = takeCharacter(raw);
        if (character == '\n') {
            shown = lineFeed;
        } else if (character >= '\t' && character <= '\r') {
            shown = " ";
        } else if (character == kReplacementCharacter || isControl(character)) {
            shown = "\xEF\xBF\xBD";
        } else {
            shown.remove_suffix(raw.size());
        }
        text += shown;
    }
}

}  // namespace

char32_t takeCharacter(std::string_view& text) noexcept {
    char32_t character = kReplacementCharacter;
    std::size_t const length = readCharacter(text, character);
    text.remove_prefix(length != 0 ? length : 1);
    return length != 0 ? character : kReplacementCharacter;
}

void addPrintable(std::string& text, std::string_view raw) {
    addCleaned(text, raw, "\n");
}

void addPrintableLine(std::string& text, std::string_view raw) {
    addCleaned(text, raw, " ");
}

void addPrintable(std::string& text, char const* raw) {
    addCleaned(text, raw, "\n");
}

void addPrintableLine(std::string& text, char const* raw) {
    addCleaned(text, raw, " ");
}

bool isBlank(char const* text) noexcept {
    return text == nullptr ||
           std::string_view(text).find_first_not_of(" \t\n\v\f\r") == std::string_view::npos;
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
