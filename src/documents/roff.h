#pragma once

#include <string>
#include <string_view>

namespace varo_3_3::internal {

// Text for man(7), in ASCII, so that it comes out as it is: a hyphen as the one that is typed, and
// nothing at the beginning of a line as a request. Lines end at about 60 bytes, and words that
// might fit no line may be broken, since linters report both.

/// Appends the words of a line, after a blank or a new line if `page` is in the middle of one.
void addRoffWords(std::string& page, std::string_view line);

/// Appends text as it stands, but for trailing blanks.
void addRoffCode(std::string& page, std::string_view line);

/// Appends an argument of a macro, between quotes.
void addRoffArgument(std::string& page, std::string_view text);

}  // namespace varo_3_3::internal
