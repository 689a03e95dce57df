#include "assist/shell_words.h"

#include <gtest/gtest.h>

namespace {

using namespace varo_3_3::internal;

constexpr char kBashBreaks[] = " \t\n\"'@><=;|&(:";

/// What was read: words before the cursor, each followed by "|", the cursor's word with the quote
/// that is open in it, what bash keeps of it, and the words after it.
std::string show(Shell shell, std::string_view lineWithCursor, char const* breaks) {
    std::size_t const cursor = lineWithCursor.find('^');
    ShellLine const line = readShellLine(shell, lineWithCursor.substr(0, cursor),
                                         lineWithCursor.substr(cursor + 1), breaks);
    std::string const typed(line.typed);
    std::string shown;
    for (std::string const word : line.before) {
        shown += word + "|";
    }
    shown += (line.isRedirection ? ">[" : "[") + typed + "]";
    shown += line.quote != 0 ? std::string(1, line.quote) : "";
    if (line.keptRaw != 0) {
        shown += " kept " + std::string(line.raw.substr(0, line.keptRaw)) + " as " +
                 typed.substr(0, line.keptTyped);
    }
    for (std::string const word : line.after) {
        shown += "|" + word;
    }
    return shown;
}

TEST(ShellWords, AreReadAsTheShellReadsThem) {
    struct Row {
        Shell shell;
        char const* line;
        char const* read;
    };
    Row const rows[] = {
        {Shell::kBash, "tool --a b^", "tool|--a|[b]"},
        {Shell::kBash, "tool --a ^ --c d", "tool|--a|[]|--c|d"},
        {Shell::kBash, "tool --a^b c", "tool|[--a]|c"},
        // Quotes
        {Shell::kBash, R"(tool 'a b' "c\"\d" e\ f^)", R"(tool|a b|c"\d|[e f])"},
        {Shell::kBash, R"(tool $'a\'\n\x41b' 'it'\''s^)",
         "tool|a'\nAb|[it's]' kept 'it'\\'' as it'"},
        {Shell::kBash, "tool 'open^ word' x", "tool|[open]' kept ' as |x"},
        {Shell::kFish, R"(tool 'it\'s \n' a\nb\x41 "\$x"^)", "tool|it's \\n|a\nbA|[$x]"},
        {Shell::kZsh, R"(tool a\$b '^)", "tool|a$b|[]'"},
        // Word breaks of bash
        {Shell::kBash, "tool --name=a:b^", "tool|[--name=a:b] kept --name=a: as --name=a:"},
        {Shell::kBash, R"(tool a\:b^)", "tool|[a:b]"},
        {Shell::kBash, R"(tool --n="a:b^)", R"(tool|[--n=a:b]" kept --n=" as --n=)"},
        {Shell::kBash, R"(tool "a b"/x^)", "tool|[a b/x]"},
        {Shell::kZsh, "tool --name=a:b^", "tool|[--name=a:b]"},
        // Substitutions are never looked into
        {Shell::kBash, "tool $(touch x; y) `a b` \"$(c \"d\")\" <(e f) ${g}^",
         "tool|$(touch x; y)|`a b`|$(c \"d\")|<(e f)|[${g}]"},
        {Shell::kFish, "tool (touch x; y) $(a b) ^", "tool|(touch x; y)|$(a b)|[]"},
        // Redirections
        {Shell::kBash, "tool >a b 2>>c d &>e <<<f g 2>&1 12 >^", "tool|b|d|g|12|>[]"},
        {Shell::kBash, "tool > a^ b >| c d", "tool|>[a]|b|d"},
        {Shell::kFish, "tool >? a 2> b ^", "tool|[]"},
        // Other commands
        {Shell::kBash, "other x; tool a^ b | more c", "tool|[a]|b"},
        {Shell::kBash, "^", "[]"},
        // Cut short
        {Shell::kBash, "tool a\\^", "tool|[a\\]"},
        {Shell::kBash, "tool $(a^", "tool|[$(a]"},
        {Shell::kBash, "tool >^>a", "tool|>[]"},
        {Shell::kBash, "tool ^>a", "tool|[]"},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.line);
        EXPECT_EQ(show(row.shell, row.line, row.shell == Shell::kBash ? kBashBreaks : ""),
                  row.read);
    }
}

TEST(ShellWords, QuotedTextReadsAsItWas) {
    std::string const texts[] = {"plain",
                                 "it's",
                                 "q\"uote",
                                 "a b$c",
                                 "x::Y",
                                 "`a` \\ !$(b) {c,d}",
                                 "~/a;b|c&d<e>f(g)*?[h]#",
                                 "\xC3\xBC"};
    for (std::string const& text : texts) {
        for (char const* quote : {"", "'", "\"", "$'"}) {
            std::string line = std::string("tool ") + quote;
            appendQuoted(line, text, *quote);
            SCOPED_TRACE(line);
            EXPECT_EQ(readShellLine(Shell::kBash, line, "", "").typed, text);
        }
    }
}

}  // namespace
