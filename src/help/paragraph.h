#pragma once

#include <string>
#include <string_view>

namespace varo_3_3 {

/// Appends what paragraphString(text, caption, indent, width) returns to `block`.
void appendParagraph(std::string& block, std::string_view text, std::string_view caption,
                     unsigned long indent, unsigned long width);

}  // namespace varo_3_3
