#include <stdexcept>

#include "support.h"
#include "varo/text.h"

namespace {

using varo_3_3::paragraphString;
using varo_3_3::WordWrappedText;

TEST(Paragraph, BreaksLinesAtBlanks) {
    struct Row {
        std::string text, caption;
        unsigned long indent, width;
        std::string lines;
    };
    for (Row const& row : std::vector<Row>{
             {"hello world", "", 2, 8, "  hello\n  world\n"},
             {"hello world", "", 0, 12, "hello world\n"},
             {"hello world", "", 0, 7, "hello \nworld\n"},  // a blank that just fits stays
             {"hello world", "", 0, 6, "hello\nworld\n"},
             {"a bc def", "", 0, 7, "a bc\ndef\n"},
             {"a  b", "", 1, 3, " a \n b\n"},
             // Words without room are cut.
             {"abcdefghij", "", 0, 5, "abcd\nefgh\nij\n"},
             {"abcdefgh ij", "", 0, 5, "abcd\nefgh\nij\n"},
             {"a bcdef", "", 0, 4, "a\nbcd\nef\n"},
             {"ab cdefghij", "", 3, 5, "   ab\n   cdef\n   ghij\n"},
             {"ab", "", 2, 2, "  a\n  b\n"},
             {"abc\nd", "", 0, 3, "ab\nc\nd\n"},
             // Newlines end lines, and make empty ones only at the end.
             {"a\n\n\nb", "", 1, 9, " a\n b\n"},
             {" \n a", "", 1, 9, " a\n"},
             {"abc\n", "", 2, 9, "  abc\n  \n"},
             {"abc ", "", 2, 9, "  abc \n"},
             {"abc \n ", "", 0, 9, "abc \n\n"},
             {"  ", "-x", 4, 9, "-x  \n"},
             {"\n", "", 0, 1, "\n"},
             // Other bytes are ordinary.
             {std::string("a\tb\0c d", 7), "", 0, 6, std::string("a\tb\0c\nd\n", 8)},
             {"\xC3\xA4\xC3\xA4", "", 0, 4, "\xC3\xA4\xC3\n\xA4\n"},
             // The caption.
             {"", "-x", 4, 9, ""},
             {"text", "-x", 10, 9, "-x        text\n"},
             {"text", "-xyz", 5, 9, "-xyz text\n"},
             {"text", "-xyzt", 5, 9, "-xyzt text\n"},
             {"abc def", "123456789012345678", 4, 20, "123456789012345678 abc \n    def\n"},
             {"abc", "12345678901", 4, 10, "12345678901 a\n    bc\n"},
             {"abc", "123456789012", 4, 10, "123456789012\n    abc\n"},
             {"abc", "a caption that no line can hold", 4, 10,
              "a caption that no line can hold\n    abc\n"},
             {"abc", "-x", 0, 2, "-x\na\nb\nc\n"},
             // Without a width only newlines end lines.
             {"a b\nc", "", 0, 0, "a b\nc\n"},
             {"a b\nc", "-caption", 3, 0, "-caption a b\n   c\n"},
         }) {
        SCOPED_TRACE(row.text + " " + std::to_string(row.indent) + " " + std::to_string(row.width));
        EXPECT_EQ(paragraphString(row.text, row.caption, row.indent, row.width), row.lines);
    }
}

TEST(Paragraph, NeedsRoomForSomething) {
    for (char const* const caption : {"", "-x"}) {
        try {
            paragraphString("text", caption, 4, 1);
            ADD_FAILURE();
        } catch (std::out_of_range const& problem) {
            EXPECT_STREQ(problem.what(),
                         "basic_string::at: __n (which is 18446744073709551615) >= this->size() "
                         "(which is 0)");
        }
    }
    EXPECT_THROW(paragraphString("text", "", 1UL << 63, 10), std::exception);
}

TEST(Paragraph, TakesLongTexts) {
    std::size_t const count = 300000;
    std::string words, lines;
    for (std::size_t index = 0; index < count; ++index) {
        words += index % 2 == 0 ? "ab " : "c\n\n";
        lines += index % 2 == 0 ? "  ab" : " c\n";
    }
    EXPECT_EQ(paragraphString(words + "d", "", 2, 9), lines + "  d\n");
    EXPECT_EQ(paragraphString(std::string(count, '\n'), "", 2, 9), "  \n");
    std::string const cut = paragraphString(std::string(count, 'x'), "", 0, 4);
    EXPECT_EQ(cut.size(), count / 3 * 4);
}

TEST(WordWrappedText, TakesTheCaptionFirstAndARightMargin) {
    EXPECT_STREQ(WordWrappedText("-x", "one two", 4, 8).getText(), "-x  one\n    two\n");
    EXPECT_STREQ(WordWrappedText("-x", "one two", 4, 4).getText(), "-x  one two\n");
    EXPECT_STREQ(WordWrappedText("", "one two", 4, 3).getText(), "    one two\n");
    EXPECT_STREQ(WordWrappedText("-x", "", 4, 8).getText(), "");
    auto const message = [](char const* caption, char const* text) -> std::string {
        try {
            WordWrappedText(caption, text, 4, 4);
        } catch (std::logic_error const& problem) {
            return problem.what();
        }
        return "";
    };
    EXPECT_EQ(message(nullptr, "text"), "basic_string::_M_construct null not valid");
    EXPECT_EQ(message("-x", nullptr), "basic_string::_M_construct null not valid");
}

}  // namespace
