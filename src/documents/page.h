#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "varo/documents.h"

namespace varo_3_3::internal {

/// A manual while it is written, for man(7) or in Markdown. Texts come as printable() gives them.
class Page {
public:
    explicit Page(ManualForm form) : m_isMan(form == kManualPage) {}

    /// The first lines. Only one-line texts.
    void begin(std::string_view program, int section, char const* date, std::string_view source);

    void heading(char const* text);
    void subheading(std::string_view text);

    /// Paragraphs; lines that begin with a blank stand as they are, if `keepsIndented`.
    void text(std::string_view text, bool keepsIndented);

    /// Command lines, which follow a heading: what stands after the program, one a line.
    void usage(std::string_view program, std::string_view lines);

    /// A declaration and what is told of it. Its forms stand one a line, what follows a name after
    /// a tab.
    void entry(std::string_view forms, std::string_view text);

    std::string take() { return std::move(m_text); }

private:
    void beginParagraph();
    void breakLine();
    void code(std::string_view& text);
    void form(std::string_view name, std::string_view value);
    void words(std::string_view line);

    /// Appends what is written in the one form or the other.
    void add(char const* man, char const* markdown) { m_text += m_isMan ? man : markdown; }

    bool const m_isMan;
    bool m_isFresh = true;      // nothing stands below the last heading yet
    char const* m_indent = "";  // of Markdown's lines inside an entry
    std::string m_text;
};

}  // namespace varo_3_3::internal
