#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace varo_3_3 {
namespace internal {

/// The length in bytes of the well-formed UTF-8 character at the front of `text`, and its code; 0
/// when there is none. (The table of well-formed sequences of the Unicode standard, chapter 3.)
inline std::size_t readCharacter(std::string_view text, char32_t& code) {
    auto const byteAt = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    if (text.empty()) {
        return 0;
    }
    unsigned char const lead = byteAt(0);
    std::size_t const length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length == 0 || length > text.size()) {
        return 0;
    }
    code = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t at = 1; at < length; ++at) {
        if ((byteAt(at) & 0xC0) != 0x80) {
            return 0;
        }
        code = code << 6 | (byteAt(at) & 0x3FU);
    }
    bool const isTooLong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    bool const isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    return isTooLong || isSurrogate || code > 0x10FFFF ? 0 : length;
}

/// Whether a character moves the cursor or changes the order or colour of what is shown: control
/// characters, line separators, and those that turn the direction of writing.
inline bool isControl(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x61C ||
           (code >= 0x200E && code <= 0x200F) || (code >= 0x2028 && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069);
}

}  // namespace internal

/// `text` made safe for a terminal or a log: each byte of a control character, and each byte that
/// is not UTF-8, becomes "\xNN", a newline and a tab "\n" and "\t". Everything else, backslashes
/// too, stays as it is, so a printable text does not change.
///
///     std::fprintf(stderr, "tool: %s\n", varo::printable(parser.error()).c_str());
inline std::string printable(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        char32_t code = 0;
        std::size_t const length = internal::readCharacter(text, code);
        if (length != 0 && !internal::isControl(code)) {
            shown.append(text.substr(0, length));
            text.remove_prefix(length);
            continue;
        }
        for (std::size_t left = length != 0 ? length : 1; left != 0; --left) {
            constexpr char kDigits[] = "0123456789abcdef";
            unsigned const byte = static_cast<unsigned char>(text[0]);
            if (byte == '\n' || byte == '\t') {
                shown += byte == '\n' ? "\\n" : "\\t";
            } else {
                shown += "\\x";
                shown += kDigits[byte >> 4];
                shown += kDigits[byte & 15];
            }
            text.remove_prefix(1);
        }
    }
    return shown;
}

/// Likewise; "" for null.
inline std::string printable(char const* text) {
    return printable(std::string_view(text != nullptr ? text : ""));
}

}  // namespace varo_3_3

/// Programs that do not pin the version of the interface may write varo::.
namespace varo = varo_3_3;
