#pragma once

#include <initializer_list>
#include <string_view>

namespace varo_3_3::internal {

/// Writes the parts to the console stream as one line, immediately. Never fails: what the console
/// refuses is lost, even when the host made the stream throw.
void writeLine(std::initializer_list<std::string_view> parts) noexcept;

}  // namespace varo_3_3::internal
