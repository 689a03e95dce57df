#include <stdexcept>

#include "parser/basic_parser.h"
#include "platform/utf.h"
#include "recognizers/abbreviation_parser.h"
#include "recognizers/positional_parser.h"
#include "results/parse_result.h"
#include "support.h"

namespace {

using namespace mosaic2;
using namespace varo_3_3;
using namespace varo_test;

TEST(Dashes, AreMeasuredInBytes) {
    std::string const text = "-\u2012a\u2010\xE2\x80";
    std::string lengths;
    for (unsigned long at = 0; at < text.size(); ++at) {
        lengths += std::to_string(getDashLength(text, at));
    }
    EXPECT_EQ(lengths, "1300000000");
    EXPECT_THROW(getDashLength(text, text.size() + 1), std::out_of_range);
    EXPECT_THROW(getDashLength("", 1), std::out_of_range);
}

TEST(Dashes, AreEncodedLikeAllCharacters) {
    std::string text;
    for (char32_t const character : {0x2DU, 0x7FU, 0x80U, 0x7FFU, 0x800U, 0xD7FFU, 0xD800U, 0xDFFFU,
                                     0xE000U, 0xFFFFU, 0x10000U, 0x10FFFFU, 0x110000U}) {
        text += BRIX::utf32_to_utf8(character).view();
    }
    EXPECT_EQ(text, "-\x7F\u0080\u07FF\u0800\uD7FF??\uE000\uFFFF\U00010000\U0010FFFF?");
}

TEST(Recognizers, LeaveAnArgumentThatFailsWhereItIs) {
    Garbage garbage;
    RegisteredOptionStorage options(&garbage);
    options.option("verbose", nullptr, "", false, vtBool, "");
    options.option("version", nullptr, "", false, vtNull, "");
    options.option("n", nullptr, "", false, vtS32, "")->positional();
    varo_3_3::internal::WhiteSpace whiteSpace;
    AbbreviationParser dashed(nullptr, &garbage, 0, whiteSpace);
    PositionalOptionsParser positional(nullptr, &garbage, 0);
    EXPECT_EQ(dashed.getPriority(), -10);
    EXPECT_EQ(positional.getPriority(), -100);
    struct Row {
        IArgumentParser& recognizer;
        std::string_view argument;
        std::string message;
    };
    for (auto const& [recognizer, argument, message] : {
             Row{dashed, "--ver",
                 "Ambiguous option 'ver' in argument: '--ver', could be: 'verbose', 'version'"},
             Row{dashed, "--version=1",
                 "Option 'version'does not requires a value in argument: '--version=1'"},
             Row{dashed, "-n=1,x", cannotParse("-n=1,x", "n", "x", "integer")},
             Row{positional, "1,x", cannotParse("1,x", "n", "x", "integer")},
         }) {
        SCOPED_TRACE(argument);
        ArgumentList list(argument);
        ParseResult result;
        std::string text;
        unsigned long index = 0;
        EXPECT_EQ(recognizer.recognize(list, options, text), kTaken);
        EXPECT_EQ(recognizer.parse(list, &result, options, index, text), kArgumentError);
        EXPECT_EQ(text, message);
        ASSERT_FALSE(list.empty());
        EXPECT_EQ(list[0], argument);
        EXPECT_TRUE(result.givenOptions().empty());
    }
    ArgumentList list("word");
    RegisteredOptionStorage none(&garbage);
    std::string text;
    unsigned long index = 0;
    EXPECT_EQ(positional.parse(list, nullptr, none, index, text), kArgumentError);
    EXPECT_EQ(text, "Unknown option 'word'");
}

int const kStart = IArgumentParser::m_idx;  // before any test has run

TEST(Recognizers, PositionsStartAtZeroAndStopBeforeTheHighest) {
    EXPECT_EQ(kStart, 0);
    int const saved = IArgumentParser::m_idx;
    IArgumentParser::m_idx = varo::kNoPosition - 3;
    varo::Parser const parser(varo::kPositionalAfterMarker);
    parser->option("n", "", vtS32, "")->positional();
    parser->option("level", "", vtS32, "")->defaultValue(1);
    varo::Result result = parser.createResult();
    EXPECT_EQ(parse(parser, result, {"--n=1", "2", "--n=3", "--", "4"}), kSuccess);
    EXPECT_EQ(parse(parser, result, {"--n=5"}), kSuccess);
    EXPECT_EQ(contents(result, "n"), "s32 1 s32 2 s32 3 s32 4 s32 5");
    EXPECT_EQ(varo::getLastValue(result.interface(), "n", 0, varo::kNoPosition).position(),
              varo::kNoPosition - 1);
    std::string met;  // a walk within a walk, over values that share one position
    for (varo::Value const& outer : result.values("n")) {
        met += result.has("level") ? std::string(" ") + outer.text() : "?";
        met += std::to_string(result.values("n").size());
    }
    EXPECT_EQ(met, " 15 25 35 45 55");
    IArgumentParser::m_idx = saved;
}

}  // namespace
