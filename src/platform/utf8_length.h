#pragma once

#include <cstddef>
#include <string_view>

namespace varo_3_3::internal {

/// The length, 1 to 4 bytes, of the UTF-8 character that `text` begins with; 0 if that is invalid:
/// a stray byte, one cut off, an overlong form, a surrogate, or above U+10FFFF. Requires: `text` is
/// not empty.
std::size_t utf8Length(std::string_view text) noexcept;

}  // namespace varo_3_3::internal
