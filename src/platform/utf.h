#pragma once

#include <cstddef>
#include <string_view>

namespace BRIX {

/// The UTF-8 encoding of one character, at most four bytes.
struct utf8_t {
    char m_bytes[4];
    std::size_t m_length;

    constexpr std::string_view view() const { return {m_bytes, m_length}; }
};

/// Encodes a code point; an invalid one (a surrogate, or above U+10FFFF) becomes "?".
constexpr utf8_t utf32_to_utf8(char32_t character) {
    auto const tail = [](char32_t bits) { return static_cast<char>(0x80 | (bits & 0x3F)); };
    if (character < 0x80) {
        return {{static_cast<char>(character)}, 1};
    }
    if (character < 0x800) {
        return {{static_cast<char>(0xC0 | (character >> 6)), tail(character)}, 2};
    }
    if (character > 0x10FFFF || (character >= 0xD800 && character <= 0xDFFF)) {
        return {{'?'}, 1};
    }
    if (character < 0x10000) {
        return {
            {static_cast<char>(0xE0 | (character >> 12)), tail(character >> 6), tail(character)},
            3};
    }
    return {{static_cast<char>(0xF0 | (character >> 18)), tail(character >> 12),
             tail(character >> 6), tail(character)},
            4};
}

}  // namespace BRIX
