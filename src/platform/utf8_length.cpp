#include "platform/utf8_length.h"

namespace varo_3_3::internal {

std::size_t utf8Length(std::string_view text) noexcept {
    auto const byteAt = [text](std::size_t index) {
        return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
    };
    unsigned const lead = byteAt(0);
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC2 || lead > 0xF4) {
        return 0;
    }
    // The range of the second byte keeps out overlong forms, surrogates and what is too large.
    unsigned const least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    unsigned const most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (byteAt(1) < least || byteAt(1) > most) {
        return 0;
    }
    std::size_t const length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    for (std::size_t index = 2; index < length; ++index) {
        if ((byteAt(index) & 0xC0) != 0x80) {
            return 0;
        }
    }
    return length;
}

}  // namespace varo_3_3::internal
