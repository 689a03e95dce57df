#include "documents/terminal_page.h"

#include "documents/display_width.h"
#include "documents/printable.h"

namespace varo_3_3::internal {

void TerminalPage::moveTo(int column) {
    if (m_column >= column && m_column != 0) {
        endLine();
    }
    m_text.append(static_cast<std::size_t>(column - m_column), ' ');
    m_column = column;
    m_needsBlank = false;
}

void TerminalPage::words(std::string_view line, int indent) {
    for (std::string_view next = takeWord(line); !next.empty(); next = takeWord(line)) {
        int const width = displayWidth(next);
        if (m_needsBlank && m_column + 1 + width >= m_columns) {
            endLine();
            moveTo(indent);
        } else if (m_needsBlank) {
            m_text += ' ';
            ++m_column;
        }
        word(next, indent);
        m_needsBlank = true;
    }
}

void TerminalPage::text(std::string_view text, int indent) {
    while (!text.empty()) {
        std::string_view const line = takeLine(text);
        if (line.find_first_not_of(' ') != std::string_view::npos) {
            moveTo(indent);
            words(line, indent);
            endLine();
        }
    }
}

void TerminalPage::endLine() {
    m_text += '\n';
    m_column = 0;
    m_needsBlank = false;
}

/// A word that is longer than a line is cut, but not in front of a combining character.
void TerminalPage::word(std::string_view word, int indent) {
    while (!word.empty()) {
        std::string_view shown = word;
        char32_t const next = takeCharacter(word);
        shown.remove_suffix(word.size());
        int const width = displayWidth(next);
        if (width != 0 && m_column + width >= m_columns) {
            endLine();
            moveTo(indent);
        }
        if (next == kBold || next == kPlain) {
            shown = next == kBold ? "\033[1m" : "\033[0m";
            shown = m_isEmphasised ? shown : "";
        }
        m_text += shown;
        m_column += width;
    }
}

}  // namespace varo_3_3::internal
