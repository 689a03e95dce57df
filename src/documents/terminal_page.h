#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace varo_3_3::internal {

/// A text for a terminal while it is written, wrapped at its columns. What it takes comes as
/// printable() gives it, and may have kBold and kPlain in it.
class TerminalPage {
public:
    // Control characters, which no printable text has.
    static constexpr char kBold = '\1';
    static constexpr char kPlain = '\2';

    /// Lines have fewer than `columns` columns, which are at least 20.
    TerminalPage(int columns, bool isEmphasised)
        : m_columns(columns), m_isEmphasised(isEmphasised) {}

    /// Moves on to a column, at least by a blank, or on a new line if the column is passed.
    void moveTo(int column);

    /// Adds the words of a line; those that do not fit begin lines at column `indent`.
    void words(std::string_view line, int indent);

    /// Adds the lines of a text, each at column `indent`.
    void text(std::string_view text, int indent);

    void endLine();

    bool isEmpty() const { return m_text.empty(); }
    std::string take() { return std::move(m_text); }

private:
    void word(std::string_view word, int indent);

    int const m_columns;
    bool const m_isEmphasised;
    int m_column = 0;
    bool m_needsBlank = false;  // a word stands in front
    std::string m_text;
};

}  // namespace varo_3_3::internal
