#include "support.h"

namespace {

using namespace mosaic2;
using namespace varo_test;

std::string noInteger(std::string const& text) {
    return cannotParse(text, "number", text, "integer");
}

TEST(Positional, FirstDeclarationTakesWhatNoOptionClaims) {
    varo::Parser const parser(varo::kUnknownIsError);
    parser->option("name", "", vtString, "");
    check(parser, {{{"word"}, kParseError, "Unknown option: word"},
                   {{""}, kParseError, "Unknown option: "}});
    parser->option("file", "", vtString, "")->positional()->positional();
    parser->option("other", "", vtString, "")->positional();
    check(parser,
          {{{"a", "--name=x", "b,c"}, kSuccess, "", "file", "'a' 'b' 'c'"},
           {{"a", "--other=b"}, kSuccess, "", "other", "'b'"},
           {{"", "a"}, kSuccess, "", "file", "'a'"},
           {{""}, kSuccess, "", "file", "null"},
           // Without the guard a mistyped option becomes a value.
           {{"-5", "--nam", "x", "-", "--typo=1"}, kSuccess, "", "file", "'-5' '-' '--typo=1'"},
           {{"a", "--"}, kSuccess, "", "file", "'a'"},
           {{","}, kParseError, "No value parsed in argument ',' for option 'file'"}});
}

TEST(Positional, DashGuardRefusesWhatLooksLikeAnOption) {
    varo::Parser const strict(varo::kUnknownIsError | varo::kDashGuard);
    varo::Parser const lenient(varo::kDashGuard);
    varo::Parser const after(varo::kUnknownIsError | varo::kDashGuard |
                             varo::kPositionalAfterMarker);
    for (varo::Parser const* parser : {&strict, &lenient, &after}) {
        (*parser)->option("number", "", vtS32, "")->positional();
    }
    check(strict, {{{"-5"}, kParseError, "Unknown option: -5", "number", "absent"},
                   {{"1", "\u20135"}, kParseError, noInteger("\u20135"), "number", "s32 1"},
                   {{"1", "--", "-5"}, kSuccess, "", "number", "s32 1"}});
    check(lenient, {{{"-5", "1"}, kSuccess, "", "number", "s32 1"}});
    check(after, {{{"1", "--", "-5", "6"}, kSuccess, "", "number", "s32 1 s32 -5 s32 6"},
                  {{"--", "-5", "--", "7"}, kParseError, noInteger("--"), "number", "s32 -5"}});
}

TEST(Positional, MarkerHidesOptionsButNotPositionalValues) {
    varo::Parser const parser(varo::kPositionalAfterMarker | varo::kUnknownIsError);
    parser->option("name", "", vtString, "");
    check(parser, {{{"--", "--name=x"}, kSuccess, "", "name", "absent"}});
    parser->option("file", "", vtString, "")->positional();
    check(parser, {{{"a", "--", "--name=x", ""}, kSuccess, "", "file", "'a' '--name=x'"},
                   {{"a", "--", "--name=x"}, kSuccess, "", "name", "absent"},
                   {{"a", "--", "b", "-c"}, kSuccess, "", "--", "b|-c|"}});
}

TEST(Positional, TakesTheRestAsOccurrencesOfTheirOwn) {
    varo::Parser const parser(varo::kTakeTheRest | varo::kDashGuard | varo::kUnknownIsError);
    parser->option("name", "", vtString, "");
    parser->option("number", "", vtS32, "")->positional();
    check(parser,
          {{{"--name=x", "1", "-2", "3"}, kSuccess, "", "number", "s32 1 s32 -2 s32 3"},
           {{"-2", "1"}, kParseError, "Unknown option: -2"},
           {{"1", "--name=x", "3"}, kParseError, noInteger("--name=x"), "number", "s32 1"}});
    varo::Parser const words(varo::kTakeTheRest | varo::kPositionalAfterMarker);
    words->option("word", "", vtString, "")->positional();
    varo::Result result = words.createResult();
    EXPECT_EQ(parse(words, result, {"a", "--word=b", "--", "c"}), kSuccess);
    EXPECT_EQ(contents(result, "word"), "'a' '--word=b' '--' 'c'");
    EXPECT_EQ(plainArguments(result), "");
    EXPECT_EQ(parse(words, result, {"--", "d", "e"}), kSuccess);
    EXPECT_EQ(contents(result, "word"), "'a' '--word=b' '--' 'c' 'd' 'e'");
    int const first = result.interface()->get("word", 0, varo::kNoPosition).position();
    EXPECT_TRUE(result.interface()->present("word", first + 1, first + 3));
}

}  // namespace
