#include <climits>

#include "support.h"
#include "trace/diagnostic_log.h"

namespace {

using namespace mosaic2;
using namespace varo;
using namespace varo_test;

TEST(Driver, EmptyCommandLineAppliesDefaultsOnly) {
    varo::Parser const parser(varo::kUnknownIsError);
    parser->option("level", "", vtS32, "")->defaultValue(3);
    for (int const count : {1, 0, -1, INT_MIN}) {
        varo::Result result = parser.createResult();
        EXPECT_EQ(parse(parser, result, {"--typo"}), kParseError);
        EXPECT_STREQ(parser.error(), "Unknown option: --typo");
        result = parser.createResult();
        EXPECT_EQ(parser.parse(count, nullptr, result), kSuccess);
        EXPECT_EQ(contents(result, "level"), "default s32 3");
        EXPECT_STREQ(parser.error(), "");
    }
}

TEST(Driver, NullPointersAreRefused) {
    EXPECT_EQ(varo::createParser(nullptr, 0), kUnusableArguments);
    varo::Parser const parser;
    parser->option("level", "", vtS32, "")->defaultValue(3);
    EXPECT_EQ(parser->createResult(nullptr), kUnusableArguments);
    char const* const argv[] = {"tool", "--level=1", nullptr};
    varo::Result result = parser.createResult();
    EXPECT_EQ(parser.parse(3, argv, result), kUnusableArguments);
    EXPECT_EQ(contents(result, "level"), "default s32 3");
    EXPECT_EQ(parser.parse(2, argv + 1, result), kUnusableArguments);
    EXPECT_EQ(parser.parse(2, argv, result), kSuccess);
    EXPECT_EQ(contents(result, "level"), "s32 1");
    char const* const nameless[] = {nullptr, "--level=2"};
    EXPECT_EQ(parser.parse(2, nameless, result), kSuccess);
    EXPECT_EQ(contents(result, "level"), "s32 1 s32 2");
}

TEST(Driver, UnknownArgumentsAreDroppedOrAnError) {
    varo::Parser const strict(varo::kUnknownIsError);
    varo::Parser const lenient;
    for (varo::Parser const* parser : {&strict, &lenient}) {
        (*parser)->option("level", "", vtS32, "");
    }
    check(strict, {{{"--level=1", "--typo=x", "--level=2"},
                    kParseError,
                    "Unknown option: --typo=x",
                    "level",
                    "s32 1"},
                   {{"varooption=varologenable=0"},
                    kParseError,
                    "Unknown option: varooption=varologenable=0"},
                   {{"--level=1"}, kSuccess, "", "level", "s32 1"}});
    check(lenient, {{{"--typo=x", "", "word", "--level=2"}, kSuccess, "", "level", "s32 2"}});
}

TEST(Driver, FlagsThatItDoesNotKnowAreIgnored) {
    int const known = kUnknownIsError | kPositionalAfterMarker | kDashGuard | kTakeTheRest |
                      kKeepCommas | kDoubleDashHelp;
    auto const check = [](int flags, char const* list) {
        varo::Parser const parser{varo::Flags(static_cast<varo::CreationFlag>(flags))};
        parser->option("list", "", vtString, "")->positional();
        varo_test::check(parser, {{{"a,b", "--list=c"}, kSuccess, "", "list", list}});
    };
    check(~known, "'a' 'b' 'c'");
    check(~known | kTakeTheRest | kKeepCommas, "'a,b' '--list=c'");
}

TEST(Driver, MarkerStartsPlainArguments) {
    varo::Parser const parser(varo::kUnknownIsError);
    parser->option("level", "", vtS32, "");
    check(parser, {{{"--"}, kSuccess, "", "--", ""},
                   {{"--", "--level=1"}, kSuccess, "", "level", "absent"},
                   {{"--level=1", "--", "a", "", "--", "-x"}, kSuccess, "", "--", "a||--|-x|"}});
}

TEST(Trace, TellsWhatHappensToEachArgument) {
    varo::Parser const parser;
    parser->option("list,l", "", vtString, "")->allowValue("a")->allowValue("b");
    parser->option("level", "", vtS32, "")->tokenize('\0');
    Console const console;
    varo::Result none;
    EXPECT_EQ(parse(parser, none, {"varooption=varologenable=1", "typo", "--le", "5", "-l=a,x"}),
              2);
    EXPECT_EQ(console.text(), R"(PositionalOptionsParser: recognizing argument 'typo'
AbbreviationParser: recognizing argument 'typo'
ignoring typo
PositionalOptionsParser: recognizing argument '--le'
AbbreviationParser: recognizing argument '--le'
AbbreviationParser: best match option for 'le' in argument '--le' is 'level'
AbbreviationParser: parsing argument '--le'
AbbreviationParser: detected option: 'level'
AbbreviationParser: no value in the same argument, looking next
AbbreviationParser: got value from the next argument: '5'
AbbreviationParser: sent event on option parsed
AbbreviationParser: adding values to result container:
AbbreviationParser: not using tokenizer
AbbreviationParser: sent event on value parsed, option: 'level', value: '5'
AbbreviationParser: stored option to result container.
AbbreviationParser: removing argument: '--le'
AbbreviationParser: removing argument: '5'
PositionalOptionsParser: recognizing argument '-l=a,x'
AbbreviationParser: recognizing argument '-l=a,x'
AbbreviationParser: best match option for 'l' in argument '-l=a,x' is 'l'
AbbreviationParser: parsing argument '-l=a,x'
AbbreviationParser: detected option: 'list'
AbbreviationParser: value from the same argument taken: 'a,x'
AbbreviationParser: sent event on option parsed
AbbreviationParser: adding values to result container:
AbbreviationParser: using tokenizer on char: ','
AbbreviationParser: value is: 'a'
AbbreviationParser: sent event on value parsed, option: 'list', value: 'a'
AbbreviationParser: value is: 'x'
AbbreviationParser: Value validation problem in argument '-l=a,x': Option 'list' does not allow value 'x'. Possible values follows: 'a', 'b'
)");
}

TEST(Trace, ShowsAmbiguityAndPlainArguments) {
    varo::Parser const parser(varo::kPositionalAfterMarker);
    parser->option("file", "", vtString, "")->positional();
    parser->option("fill", "", vtString, "");
    Console const console;
    varo::Result result = parser.createResult();
    EXPECT_EQ(parse(parser, result, {"varooption=varologenable=1", "--", "p"}), kSuccess);
    EXPECT_EQ(parse(parser, result, {"varooption=varologenable=1", "--fi", "p"}), kParseError);
    EXPECT_EQ(console.text(), R"(collectNonparsingArguments: stored argument: 'p'
PositionalOptionsParser: recognizing argument 'p'
collectNonparsingArguments: recognize result: 0, message: 
PositionalOptionsParser: parsing argument 'p'
PositionalOptionsParser: option is 'file'
PositionalOptionsParser: adding values to result container:
PositionalOptionsParser: using tokenizer on char: ','
PositionalOptionsParser: value is: 'p'
PositionalOptionsParser: sent event on value parsed, option: 'file', value: 'p'
PositionalOptionsParser: stored option to result container.
PositionalOptionsParser: removing argument: 'p'
collectNonparsingArguments: parse result: 0, message: 
PositionalOptionsParser: recognizing argument '--fi'
AbbreviationParser: recognizing argument '--fi'
AbbreviationParser: failed to get best match for 'fi' in argument '--fi':Ambiguous option, possible options are: 'file', 'fill'
AbbreviationParser: parsing argument '--fi'
AbbreviationParser: Ambiguous option 'fi' in argument: '--fi', could be: 'file', 'fill'
)");
    Console const second;
    varo::Result plain = parser.createResult();
    EXPECT_EQ(parse(varo::Parser(), plain, {"varooption=varologenable=1", "--", "p", "q"}),
              kSuccess);
    EXPECT_EQ(parse(varo::Parser(varo::kPositionalAfterMarker), plain,
                    {"varooption=varologenable=1", "--", "r"}),
              kSuccess);
    EXPECT_EQ(second.text(), R"(collectNonparsingArguments: stored argument: 'p'
collectNonparsingArguments: stored argument: 'q'
collectNonparsingArguments: stored argument: 'r'
PositionalOptionsParser: recognizing argument 'r'
collectNonparsingArguments: recognize result: 1, message: 
)");
}

TEST(Trace, NeedsNoConsole) {
    struct Full final : std::streambuf {
    } full;
    std::streambuf* const old = BRIX::ucout.rdbuf(&full);
    varo::Parser const parser;
    parser->option("level", "", vtS32, "");
    for (auto const exceptions : {std::ios::goodbit, std::ios::badbit}) {
        BRIX::ucout.clear();
        BRIX::ucout.exceptions(exceptions);
        check(parser,
              {{{"varooption=varologenable=1", "--level=1"}, kSuccess, "", "level", "s32 1"}});
        BRIX::ucout.exceptions(std::ios::goodbit);
    }
    BRIX::ucout.rdbuf(old);
}

TEST(Trace, IsDiscardedWhileItIsOff) {
    Console const console;
    varo_3_3::internal::varoLogEnabled = false;
    std::ostream& discarding = varo_3_3::internal::varoLog();
    discarding << "nobody reads this" << std::endl;
    EXPECT_EQ(&discarding, &varo_3_3::internal::varoLog());
    varo_3_3::internal::varoLogEnabled = true;
    EXPECT_EQ(&varo_3_3::internal::varoLog(), &BRIX::ucout);
    varo_3_3::internal::varoLogEnabled = false;
    EXPECT_EQ(console.text(), "");
}

TEST(Trace, LastsForOneParseAndStartsWithTheFirstArgumentOnly) {
    varo::Parser const parser(varo::kUnknownIsError);
    parser->option("level", "", vtS32, "");
    std::string const magic = "varooption=varologenable=1";
    Console const console;
    check(parser, {{{"--level=1", magic}, kParseError, "Unknown option: " + magic},
                   {{magic + "1"}, kParseError, "Unknown option: " + magic + "1"},
                   {{"--level=1"}, kSuccess, ""}});
    EXPECT_EQ(console.text(), "");
    check(parser,
          {{{magic}, kSuccess, ""}, {{magic, magic}, kParseError, "Unknown option: " + magic}});
    std::string const traced = console.text();
    EXPECT_NE(traced, "");
    varo_3_3::internal::varoLogEnabled = true;
    check(parser, {{{"--level=1"}, kSuccess, "", "level", "s32 1"}});
    EXPECT_EQ(console.text(), traced);
}

}  // namespace
