#include "documents/page.h"

#include "documents/markdown.h"
#include "documents/printable.h"
#include "documents/roff.h"

namespace varo_3_3::internal {
namespace {

char upperCase(char byte) {
    return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte;
}

/// A title has capitals only, so it can have no escapes.
char titleCharacter(char byte) {
    char const upper = upperCase(byte);
    bool const isPlain = (upper >= 'A' && upper <= 'Z') || (upper >= '0' && upper <= '9') ||
                         upper == '-' || upper == '.' || upper == '+';
    return isPlain ? upper : '_';
}

bool isBlank(std::string_view text) {
    return text.find_first_not_of(" \n") == std::string_view::npos;
}

}  // namespace

void Page::begin(std::string_view program, int section, char const* date, std::string_view source) {
    add(".TH ", "# ");
    if (!m_isMan) {
        addMarkdownWords(m_text, program);
        m_text += '\n';
        return;
    }
    for (char const byte : program) {
        m_text += titleCharacter(byte);
    }
    m_text += ' ';
    m_text += static_cast<char>('0' + section);
    m_text += ' ';
    m_text += date;
    m_text += ' ';
    addRoffArgument(m_text, source);
    // Words are neither hyphenated nor spread over the line: people paste them.
    m_text += "\n.ad l\n.nh\n";
}

void Page::heading(char const* text) {
    add(".SH ", "\n## ");
    for (; *text != '\0'; ++text) {
        m_text += m_isMan ? upperCase(*text) : *text;
    }
    m_text += '\n';
    m_isFresh = true;
}

void Page::subheading(std::string_view text) {
    add(".SS ", "\n### ");
    m_isMan ? addRoffArgument(m_text, text) : addMarkdownWords(m_text, text);
    m_text += '\n';
    m_isFresh = true;
}

void Page::text(std::string_view text, bool keepsIndented) {
    bool isInParagraph = false;
    while (!text.empty()) {
        std::string_view rest = text;
        std::string_view const line = takeLine(rest);
        bool const isEmpty = isBlank(line);
        bool const isCode = !isEmpty && keepsIndented && line.front() == ' ';
        if (isInParagraph && (isEmpty || isCode)) {
            m_text += '\n';
            isInParagraph = false;
        }
        if (isCode) {
            code(text);
            continue;
        }
        if (!isEmpty) {
            isInParagraph ? breakLine() : beginParagraph();
            words(line);
            isInParagraph = true;
        }
        text = rest;
    }
    m_text += isInParagraph ? "\n" : "";
}

void Page::usage(std::string_view program, std::string_view lines) {
    beginParagraph();
    for (bool isFirst = true; !lines.empty(); isFirst = false) {
        if (m_isMan && !isFirst) {
            m_text += ".br\n";
        }
        std::string_view const line = takeLine(lines);
        add("\\fB", "    ");
        m_isMan ? addRoffWords(m_text, program) : static_cast<void>(m_text += program);
        add(line.empty() ? "\\fR" : "\\fR ", " ");
        m_isMan ? addRoffWords(m_text, line) : static_cast<void>(m_text += line);
        m_text += '\n';
    }
}

void Page::entry(std::string_view forms, std::string_view text) {
    m_isMan ? beginParagraph() : static_cast<void>(m_text += "\n- ");
    for (bool isFirst = true; !forms.empty(); isFirst = false) {
        add(isFirst ? "" : ",\n", isFirst ? "" : ", ");
        std::string_view const line = takeLine(forms);
        std::string_view const name = line.substr(0, line.find('\t'));
        form(name, line.substr(name.size() + 1));
    }
    m_text += '\n';
    if (!isBlank(text)) {
        add(".RS 4\n", "");
        m_isFresh = true;
        m_indent = "  ";
        this->text(text, false);
        m_indent = "";
        add(".RE\n", "");
    }
}

void Page::form(std::string_view name, std::string_view value) {
    if (m_isMan) {
        m_text += "\\fB";
        addRoffWords(m_text, name);
        m_text += "\\fR";
        addRoffWords(m_text, value);
    } else {
        addMarkdownCode(m_text, name, value);
    }
}

void Page::words(std::string_view line) {
    m_isMan ? addRoffWords(m_text, line) : addMarkdownWords(m_text, line);
}

void Page::beginParagraph() {
    if (!m_isMan || !m_isFresh) {
        add(".PP\n", "\n");
    }
    add("", m_indent);
    m_isFresh = false;
}

void Page::breakLine() {
    add("\n.br\n", "\\\n");
    add("", m_indent);
}

/// Takes lines off `text` as long as they begin with a blank or are empty.
void Page::code(std::string_view& text) {
    beginParagraph();
    add(".nf\n", "");
    std::size_t emptyLines = 0;
    while (!text.empty() && (text.front() == ' ' || text.front() == '\n')) {
        std::string_view const line = takeLine(text);
        if (isBlank(line)) {
            ++emptyLines;  // not written before more follows
            continue;
        }
        for (; emptyLines != 0; --emptyLines) {
            add("\\&\n", "\n");
        }
        if (m_isMan) {
            addRoffCode(m_text, line);
        } else {
            m_text += "    ";
            m_text += line;
        }
        m_text += '\n';
    }
    add(".fi\n", "");
}

}  // namespace varo_3_3::internal
