#pragma once

#include <string>
#include <string_view>

namespace varo_3_3::internal {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

/// Takes the first character off `text`, which is not empty; for a byte that is not UTF-8 it is the
/// replacement character.
char32_t takeCharacter(std::string_view& text) noexcept;

/// Appends `raw` to `text` as a document shows it, which is called printable here: UTF-8 in which
/// line feeds are the only control characters. Tabs and the like become blanks; other control
/// characters, and those that turn the direction of writing, replacement characters.
void addPrintable(std::string& text, std::string_view raw);

/// The same on one line, with line feeds as blanks.
void addPrintableLine(std::string& text, std::string_view raw);

// The same for texts that end by a zero, which are the most of them: a call that is short.
void addPrintable(std::string& text, char const* raw);
void addPrintableLine(std::string& text, char const* raw);

/// Whether nothing of a text of a host would show; null is such a text.
bool isBlank(char const* text) noexcept;

/// Takes the first word off a line, "" when only blanks are left.
std::string_view takeWord(std::string_view& line) noexcept;

/// Takes the first line off a text.
std::string_view takeLine(std::string_view& text) noexcept;

}  // namespace varo_3_3::internal
