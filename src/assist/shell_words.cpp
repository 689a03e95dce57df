#include "assist/shell_words.h"

#include <algorithm>
#include <cstring>

namespace varo_3_3::internal {
namespace {

constexpr char kDollarQuote = '$';  // the quote of $'...', with C's escapes in it

bool isIn(std::string_view set, char c) {
    return !set.empty() && std::memchr(set.data(), c, set.size()) != nullptr;
}

/// ASCII letters, digits and "-", which most words consist of, mean nothing to a shell. Inline
/// where size counts as well: a call for each of them is 2 % of a completion.
[[gnu::always_inline]] inline bool isWordCharacter(char c) {
    char const lower = static_cast<char>(c | 0x20);
    return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9') || c == '-';
}

/// Reads a line from left to right, character by character, as a shell does before it expands
/// anything. A substitution is one piece of its word, whatever is in it.
class LineReader {
public:
    /// `words`, where the words are written, has wordBytes() for the size of the line.
    LineReader(Shell shell, std::string_view line, char* words, ShellLine& read)
        : m_isFish(shell == Shell::kFish),
          m_line(line),
          m_read(read),
          m_word(words),
          m_wordEnd(words) {}

    /// A word is no longer than what it is read from. Zeros end them: in the place of what
    /// separates words, and of the last and of the one at the cursor.
    static std::size_t wordBytes(std::size_t lineSize) { return lineSize + 2; }

    void read(std::size_t cursor, std::string_view wordBreaks) {
        m_cursor = cursor;
        m_breaks = wordBreaks;
        for (char const each : wordBreaks) {
            m_breaksInWords = m_breaksInWords || isWordCharacter(each);
        }
        while (!m_isDone && m_at < m_line.size()) {
            meetCursor();
            step();
        }
        meetCursor();
        endWord();
    }

    /// Where in the line its first word has got `length` bytes.
    std::size_t reach(std::size_t length) {
        while (m_at < m_line.size() && word().size() < length) {
            step();
        }
        return m_at;
    }

private:
    char peek(std::size_t ahead) const {
        return m_at + ahead < m_line.size() ? m_line[m_at + ahead] : '\0';
    }

    /// What was read of the present word.
    std::string_view word() const { return {m_word, static_cast<std::size_t>(m_wordEnd - m_word)}; }

    /// Takes the next `length` characters as they are.
    void take(std::size_t length) {
        begin();
        for (; length != 0; --length) {
            *m_wordEnd++ = m_line[m_at++];
        }
    }

    /// How many word characters are next, up to the cursor.
    std::size_t wordRun() const {
        std::size_t const end = m_isPastCursor ? m_line.size() : std::min(m_cursor, m_line.size());
        std::size_t at = m_at + 1;
        while (at < end && isWordCharacter(m_line[at])) {
            ++at;
        }
        return at - m_at;
    }

    void begin() {
        if (!m_isInWord) {
            m_isInWord = true;
            m_start = m_at;
            m_breakRaw = m_at;
            m_breakTyped = 0;
        }
    }

    /// Notes the word at the cursor as it is there, be it only a place where one may begin.
    void meetCursor() {
        if (m_at < m_cursor || m_isPastCursor) {
            return;
        }
        m_isPastCursor = true;
        begin();
        m_isCursorWord = true;
        m_read.typed = word();
        m_read.raw = m_line.substr(m_start, m_cursor - m_start);
        m_read.quote = m_quote;
        m_read.isRedirection = m_isTarget;
        if (m_quote != 0) {
            m_breakRaw = m_quoteRaw;
            m_breakTyped = m_quoteTyped;
        }
        m_read.keptRaw = std::min(m_breakRaw, m_cursor) - m_start;
        m_read.keptTyped = m_breakTyped;
        finishWord();  // what follows belongs to no word that anybody asks for
    }

    void step() {
        char const c = m_line[m_at];
        if (m_depth > 0 || m_isBackquoted) {
            stepInSubstitution(c);
        } else if (m_quote != 0) {
            stepInQuote(c);
        } else {
            stepOutside(c);
        }
    }

    void stepInSubstitution(char c) {
        take(1);
        m_depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        m_isBackquoted = m_isBackquoted && c != '`';
        m_depth = std::max(m_depth, 0);
    }

    /// Enters a substitution if one begins here.
    bool beginsSubstitution(char c) {
        char const next = peek(1);
        bool const isOpening =
            (c == '$' || (!m_isFish && m_quote == 0 && isIn("<>", c))) && next == '(';
        bool const isFishOpening = m_isFish && c == '(' && m_quote == 0;
        if (!m_isFish && c == '`') {
            m_isBackquoted = true;
        } else if (isOpening || isFishOpening) {
            m_depth = 1;
        } else {
            return false;
        }
        take(isOpening ? 2 : 1);
        return true;
    }

    void stepInQuote(char c) {
        bool const isDollar = m_quote == kDollarQuote;
        if (c == (isDollar ? '\'' : m_quote)) {
            m_quote = 0;
            ++m_at;
        } else if (c == '\\' && m_at + 1 < m_line.size() && isEscapeInQuote(peek(1))) {
            takeEscape(isDollar);
        } else if (m_quote != '"' || !beginsSubstitution(c)) {
            take(1);
        }
    }

    bool isEscapeInQuote(char next) const {
        return m_quote == kDollarQuote || isIn(m_quote == '"' ? m_isFish ? "\"$\\\n" : "\"$`\\\n"
                                               : m_isFish     ? "'\\"
                                                              : "",
                                               next);
    }

    /// Takes a backslash and what it stands in front of; where the escapes of C count, with those.
    void takeEscape(bool hasControls) {
        begin();
        constexpr std::string_view kLetters = "abefnrtv";
        constexpr std::string_view kControls = "\a\b\x1b\f\n\r\t\v";
        char c = peek(1);
        m_at += 2;
        std::size_t const letter = kLetters.find(c);
        if (hasControls && letter != std::string_view::npos) {
            c = kControls[letter];
        } else if (hasControls && c == 'x') {
            c = takeHexadecimal();
        } else if (c == '\n') {
            return;  // the line goes on
        }
        *m_wordEnd++ = c;
    }

    char takeHexadecimal() {
        constexpr std::string_view kDigits = "0123456789abcdef";
        std::size_t value = 0;
        for (int count = 0; count < 2 && m_at < m_line.size(); ++count, ++m_at) {
            std::size_t const digit = kDigits.find(static_cast<char>(m_line[m_at] | 0x20));
            if (digit == std::string_view::npos) {
                break;
            }
            value = value * 16 + digit;
        }
        return static_cast<char>(value);
    }

    void stepOutside(char c) {
        if (isWordCharacter(c) && !m_breaksInWords) {
            return take(wordRun());
        }
        bool const isDollarQuote = !m_isFish && c == '$' && peek(1) == '\'';
        if (c == '\\' && m_at + 1 < m_line.size()) {
            takeEscape(m_isFish);
        } else if (c == '\'' || c == '"' || isDollarQuote) {
            openQuote(isDollarQuote ? kDollarQuote : c, isDollarQuote ? 2 : 1);
        } else if (beginsSubstitution(c)) {
            return;
        } else if (c == ' ' || c == '\t') {
            endWord();
            ++m_at;
        } else if (isIn("<>", c) || (c == '&' && peek(1) == '>')) {
            beginRedirection();
        } else if (isIn(m_isFish ? ";|&\n" : ";|&\n()", c)) {
            beginCommand();
        } else {
            take(1);
            noteBreak(c);
        }
    }

    void openQuote(char quote, std::size_t length) {
        begin();
        m_quote = quote;
        m_at += length;
        bool const isBreak = isIn(m_breaks, m_line[m_at - 1]);
        m_quoteRaw = isBreak ? m_at : m_at - length;
        m_quoteTyped = word().size();
    }

    /// Notes that bash will begin the word anew after the character just read.
    void noteBreak(char c) {
        if (isIn(m_breaks, c)) {
            m_breakRaw = m_at;
            m_breakTyped = word().size();
        }
    }

    /// Reads ">", "2>>", "&>", "<<<" and the like; the word that follows belongs to it.
    void beginRedirection() {
        bool const isDescriptor = m_isInWord && !m_isCursorWord &&
                                  word().find_first_not_of("0123456789") == std::string_view::npos;
        if (isDescriptor) {
            m_isInWord = false;
        }
        endWord();
        m_isTarget = true;
        do {
            ++m_at;
            meetCursor();
        } while (m_at < m_line.size() && isIn("<>&|?", m_line[m_at]));
    }

    /// Another command begins: what came before it is not ours, and what comes after the cursor's
    /// is not either.
    void beginCommand() {
        endWord();
        m_isTarget = false;
        if (m_isPastCursor) {
            m_isDone = true;
            return;
        }
        m_read.before.clear();
        ++m_at;
    }

    void endWord() {
        if (m_isInWord && !m_isCursorWord && !m_isTarget) {
            (m_isPastCursor ? m_read.after : m_read.before).push_back(m_word);
            finishWord();
        }
        m_isTarget = m_isTarget && !m_isInWord;
        m_isInWord = m_isCursorWord = false;
        m_wordEnd = m_word;
    }

    /// Ends what was read by a zero and lets the next word begin after it.
    void finishWord() {
        *m_wordEnd++ = '\0';
        m_word = m_wordEnd;
    }

    bool m_isFish;
    std::string_view m_line;
    ShellLine& m_read;
    std::size_t m_cursor = 0;
    std::string_view m_breaks;
    bool m_breaksInWords = false;

    std::size_t m_at = 0;
    bool m_isDone = false;
    bool m_isPastCursor = false;

    // The word being read.
    bool m_isInWord = false;
    bool m_isCursorWord = false;
    bool m_isTarget = false;  // of a redirection
    char* m_word;
    char* m_wordEnd;
    std::size_t m_start = 0;
    char m_quote = 0;
    int m_depth = 0;
    bool m_isBackquoted = false;
    std::size_t m_breakRaw = 0;
    std::size_t m_breakTyped = 0;
    std::size_t m_quoteRaw = 0;
    std::size_t m_quoteTyped = 0;
};

}  // namespace

ShellLine readShellLine(Shell shell, std::string_view left, std::string_view right,
                        std::string_view wordBreaks) {
    std::size_t const size = left.size() + right.size();
    ShellLine read;
    read.texts.reset(new char[size + LineReader::wordBytes(size)]);
    char* const line = read.texts.get();
    left.copy(line, left.size());
    right.copy(line + left.size(), right.size());
    LineReader(shell, {line, size}, line + size, read).read(left.size(), wordBreaks);
    return read;
}

std::size_t rawLength(Shell shell, std::string_view raw, std::size_t length) {
    std::unique_ptr<char[]> const words(new char[LineReader::wordBytes(raw.size())]);
    ShellLine unread;
    return LineReader(shell, raw, words.get(), unread).reach(length);
}

void appendQuoted(std::string& line, std::string_view text, char quote) {
    std::string_view const escaped = quote == 0              ? " \t!\"#$&'()*;<>?[\\]^`{|}~"
                                     : quote == '"'          ? "\"$`\\"
                                     : quote == kDollarQuote ? "'\\"
                                                             : "";
    std::size_t done = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        char const c = text[at];
        if (isWordCharacter(c)) {
            continue;
        }
        line += text.substr(done, at - done);
        done = at;
        if (quote == '\'' && c == '\'') {
            line += "'\\'";  // and a quote
        } else if (quote == '"' && c == '!') {
            line += "\"\\!\"";  // no backslash inside the quotes would go away
            ++done;
        } else if (isIn(escaped, c)) {
            line += '\\';
        }
    }
    line += text.substr(done);
}

}  // namespace varo_3_3::internal
