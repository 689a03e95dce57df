#pragma once

#include <string>

#include "varo/export.h"
#include "varo/standard_library.h"

namespace varo_3_3 {

/// Lays `text` out in lines that start at column `indent` (columns and widths count bytes, from 0)
/// and are at most indent + width - 1 bytes long, each ended by "\n". The first line begins with
/// `caption`, padded to the indentation or, when it is already that long, followed by one blank; a
/// caption that leaves no room gets a line of its own, however long it is.
///
/// Lines break at blanks, and at every newline of the text; blanks and newlines at the start of a
/// line are dropped, so the text produces no empty lines between its words. A word longer than a
/// line is cut where the line ends. An empty text produces an empty result, without the caption. A
/// width of 0 means lines of any length.
///
/// Throws std::out_of_range for a width of 1, which has no room for a word; std::length_error or
/// std::bad_alloc when the result does not fit in memory. Time is linear in the result.
VARO_EXPORT std::string paragraphString(std::string text, std::string caption, unsigned long indent,
                                        unsigned long width);

/// A text laid out once, at construction, for hosts that print help of their own.
class VARO_EXPORT WordWrappedText {
public:
    /// Lays `text` out after `caption` with paragraphString, from column `indent` on; no line but
    /// the caption's is longer than rightMargin - 1 bytes. A `rightMargin` up to `indent` means
    /// lines of any length. Throws std::logic_error when a pointer is null, and what
    /// paragraphString throws.
    WordWrappedText(char const* caption, char const* text, unsigned long indent,
                    unsigned long rightMargin);
    ~WordWrappedText();

    WordWrappedText(WordWrappedText const&) = delete;
    WordWrappedText& operator=(WordWrappedText const&) = delete;

    /// The lines; never null, valid as long as this object lives.
    char const* getText() const;

private:
    std::string m_text;
};

}  // namespace varo_3_3
