#include "documents/roff.h"

#include <algorithm>

#include "documents/printable.h"

namespace varo_3_3::internal {
namespace {

constexpr std::size_t kLineLength = 60;
constexpr std::size_t kLongWord = 40;    // characters of words that may be broken,
constexpr std::size_t kBreakEvery = 20;  // and of their pieces

std::size_t lengthOfLastLine(std::string const& page) {
    return page.size() - (page.rfind('\n') + 1);  // npos + 1 is 0
}

void addCharacter(std::string& page, char32_t character) {
    struct Escape {
        char character;
        char text[5];
    };
    static constexpr Escape kEscapes[] = {{'\\', "\\e"},  {'-', "\\-"},   {'\'', "\\(aq"},
                                          {'`', "\\(ga"}, {'^', "\\(ha"}, {'~', "\\(ti"},
                                          {'"', "\\(dq"}};
    if (character >= 0x80) {
        constexpr char kDigits[] = "0123456789ABCDEF";
        page += "\\[u";
        for (int shift = character > 0xFFFF ? (character > 0xFFFFF ? 20 : 16) : 12; shift >= 0;
             shift -= 4) {
            page += kDigits[(character >> static_cast<unsigned>(shift)) & 0xF];
        }
        page += ']';
        return;
    }
    for (Escape const& escape : kEscapes) {
        if (static_cast<char32_t>(escape.character) == character) {
            page += escape.text;
            return;
        }
    }
    page += static_cast<char>(character);
}

bool isLong(std::string_view word) {
    return word.size() > kLongWord && std::count_if(word.begin(), word.end(), [](char byte) {
                                          return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
                                      }) > static_cast<std::ptrdiff_t>(kLongWord);
}

/// Appends a word; `canEndLine` is whether its line may end within it.
void addWord(std::string& page, std::string_view word, bool mayBreak, bool canEndLine) {
    bool const isBreakable = mayBreak && isLong(word);
    std::size_t length = canEndLine ? lengthOfLastLine(page) : 1;
    for (std::size_t count = 1; !word.empty(); ++count) {
        std::size_t const before = page.size();
        if (word.front() == '.' && length == 0) {
            page += "\\&";
        }
        addCharacter(page, takeCharacter(word));
        if (isBreakable && count % kBreakEvery == 0 && !word.empty()) {
            page += "\\:";
        }
        length += page.size() - before;
        if (canEndLine && length >= kLineLength && !word.empty()) {
            page += "\\c\n";
            page += word.front() == ' ' ? "\\&" : "";
            length = 0;
        }
    }
}

}  // namespace

void addRoffWords(std::string& page, std::string_view line) {
    std::string_view word = takeWord(line);
    while (!word.empty()) {
        addWord(page, word, true, true);
        word = takeWord(line);
        if (!word.empty()) {
            page += lengthOfLastLine(page) + 1 + word.size() > kLineLength ? '\n' : ' ';
        }
    }
}

void addRoffCode(std::string& page, std::string_view line) {
    addWord(page, line.substr(0, line.find_last_not_of(' ') + 1), false, true);
}

void addRoffArgument(std::string& page, std::string_view text) {
    page += '"';
    for (std::string_view word = takeWord(text); !word.empty();) {
        addWord(page, word, true, false);
        word = takeWord(text);
        page += word.empty() ? "" : " ";
    }
    page += '"';
}

}  // namespace varo_3_3::internal
