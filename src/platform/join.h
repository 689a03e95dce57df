#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace varo_3_3::internal {

/// The parts joined, in one allocation.
std::string join(std::initializer_list<std::string_view> parts);

/// Appends the parts to `text`. Where speed does not count this is smaller than several +=.
void append(std::string& text, std::initializer_list<std::string_view> parts);

}  // namespace varo_3_3::internal
