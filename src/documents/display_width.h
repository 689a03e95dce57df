#pragma once

#include <string_view>

namespace varo_3_3::internal {

/// The columns that a terminal gives a character: 2 for a wide one, 0 for a combining one.
int displayWidth(char32_t character) noexcept;

/// The same for a text, as printable() gives it.
int displayWidth(std::string_view text) noexcept;

}  // namespace varo_3_3::internal
