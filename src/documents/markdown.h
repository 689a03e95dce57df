#pragma once

#include <string>
#include <string_view>

namespace varo_3_3::internal {

/// Appends the words of a line so that a reader of Markdown shows them as they are.
void addMarkdownWords(std::string& page, std::string_view line);

/// Appends one-line text, in two parts, as a code span.
void addMarkdownCode(std::string& page, std::string_view first, std::string_view second);

}  // namespace varo_3_3::internal
