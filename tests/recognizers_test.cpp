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

TEST(Recognizers, ParseWithoutRecognizeFindsNoOption) {
    BasicParser parser(0);
    Garbage garbage;
    ParseResult result;
    RegisteredOptionStorage options(&garbage);
    options.option("verbose", nullptr, "", false, vtBool, "");
    options.option("version", nullptr, "", false, vtBool, "");
    varo_3_3::internal::WhiteSpace whiteSpace;
    AbbreviationParser abbreviations(&parser, &garbage, 0, whiteSpace);
    auto const parse = [&](IArgumentParser& recognizer, std::string_view argument, bool recognize) {
        SingleArgument source(argument);
        ArgumentList list(source);
        std::string message;
        unsigned long index = 0;
        if (recognize) {
            recognizer.recognize(list, options, message);
        }
        result_t const code = recognizer.parse(list, &result, options, index, message);
        EXPECT_FALSE(code != kTaken && list.empty());
        return std::to_string(code) + message;
    };
    EXPECT_EQ(parse(abbreviations, "--verbose", false), "2Unknown option 'verbose'");
    EXPECT_EQ(parse(abbreviations, "--", false), "2Unknown option ''");
    EXPECT_EQ(parse(abbreviations, "--verbose", true), "0");
    EXPECT_EQ(parse(abbreviations, "--typo", true), "2Unknown option 'typo'");
    std::string const ambiguous =
        "2Ambiguous option 'ver' in argument: '--ver', could be: 'verbose', 'version'";
    EXPECT_EQ(parse(abbreviations, "--ver", true), ambiguous);
    EXPECT_EQ(parse(abbreviations, "--ver", false), ambiguous);
    PositionalOptionsParser positionals(&parser, &garbage, 0);
    EXPECT_NE(parse(positionals, "word", false), "0");
}

TEST(Recognizers, PositionsStopBeforeTheHighest) {
    int const saved = IArgumentParser::m_idx;
    IArgumentParser::m_idx = varo::kNoPosition - 3;
    varo::Parser const parser(varo::kPositionalAfterMarker);
    parser->option("n", "", vtS32, "")->positional();
    parser->option("level", "", vtS32, "")->defaultValue(1);
    varo::Result result = parser.createResult();
    EXPECT_EQ(parse(parser, result, {"--n=1", "2", "--n=3", "--", "4"}), 0);
    EXPECT_EQ(parse(parser, result, {"--n=5"}), 0);
    EXPECT_EQ(contents(result, "n"), "s32 1 s32 2 s32 3 s32 4 s32 5");
    EXPECT_EQ(varo::getLastValue(result.interface(), "n", 0, varo::kNoPosition).position(),
              varo::kNoPosition - 1);
    IArgumentParser::m_idx = saved;
}

}  // namespace
