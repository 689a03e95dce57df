#include "documents/display_width.h"

#include <algorithm>
#include <iterator>

#include "documents/printable.h"
#include "documents/width_table.h"

namespace varo_3_3::internal {

int displayWidth(char32_t character) noexcept {
    if (character < kWidthBlocks[0]) {
        return character < 0x20 ? 0 : 1;
    }
    auto const block = std::upper_bound(std::begin(kWidthBlocks), std::end(kWidthBlocks),
                                        static_cast<std::uint32_t>(character)) -
                       1;
    std::uint16_t const* run = kWidthRuns + (block - std::begin(kWidthBlocks)) * 64;
    for (std::uint32_t left = character - *block; *run >> 2 != 0 && left >= *run >> 2U; ++run) {
        left -= *run >> 2U;
    }
    return *run & 3;
}

int displayWidth(std::string_view text) noexcept {
    int width = 0;
    while (!text.empty()) {
        width += displayWidth(takeCharacter(text));
    }
    return width;
}

}  // namespace varo_3_3::internal
