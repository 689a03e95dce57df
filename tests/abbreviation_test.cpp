#include <algorithm>

#include "support.h"

namespace {

using namespace mosaic2;
using namespace varo_test;

void declare(varo::Parser const& parser) {
    parser->option("verbose", "", vtBool, "");
    parser->option("version", "", vtNull, "");
    parser->option("output,o", "", vtString, "");
    parser->option("num,n", "", vtS32, "");
    parser->option("debug", "", vtBool, "");
    parser->option("numbers", "", vtS32, "");
}

std::string unknown(std::string const& argument) {
    return "Unknown option: " + argument;
}

TEST(Abbreviation, TakesValuesFromTheSameOrTheNextArgument) {
    varo::Parser const parser(varo::kUnknownIsError);
    declare(parser);
    auto const seemsAnOption = [](std::string const& name, std::string const& next) {
        return "Option '" + name + "' received value from the next argument: '" + next +
               "', but it seems to be an option. Use '-option=value' declaration form or make sure "
               "that value is not missed";
    };
    check(parser,
          {{{"--outp", "x"}, kSuccess, "", "output", "'x'"},
           {{"--output \t x y"}, kSuccess, "", "output", "'x y'"},
           {{"--output a=b"}, kSuccess, "", "output", "'a=b'"},
           {{"--output=a b"}, kSuccess, "", "output", "'a b'"},
           {{"--output==", "-o=y"}, kSuccess, "", "output", "'=' 'y'"},
           {{"--output=", "x"}, kSuccess, "", "output", "'x'"},
           {{"--output", "\xE2\x80\x93x"}, kSuccess, "", "output", "'\xE2\x80\x93x'"},
           // An empty text is an occurrence without a value, and is consumed.
           {{"--output", ""}, kSuccess, "", "output", "null"},
           {{"--num=-5"}, kSuccess, "", "num", "s32 -5"},
           {{"--num", "-5"}, kParseError, seemsAnOption("num", "-5"), "num", "absent"},
           {{"-o", "-"}, kParseError, seemsAnOption("output", "-")},
           {{"-o", "--"}, kParseError, seemsAnOption("output", "--")},
           {{"--output"}, kParseError, "Option 'output' requires a value in argument: '--output'"},
           {{"-o="}, kParseError, "Option 'output' requires a value in argument: '-o='"},
           {{"--version"}, kSuccess, "", "version", "null"},
           {{"--version="}, kSuccess, "", "version", "null"},
           {{"--version=x"},
            kParseError,
            "Option 'version'does not requires a value in argument: '--version=x'"},
           // Not the value of an option that takes none.
           {{"--version", "x"}, kParseError, unknown("x"), "version", "null"},
           {{"--debug", "x"}, kParseError, unknown("x"), "debug", "true"}});
}

TEST(Abbreviation, ReadsBooleansFromTheirNames) {
    varo::Parser const parser(varo::kUnknownIsError);
    declare(parser);
    parser->option("no-x", "", vtBool, "");
    auto const isBoolean = [](std::string const& argument) {
        return "Option 'debug' is boolean and should be declared in form '--option' or "
               "'--no-option' in argument: '" +
               argument + "'";
    };
    check(parser, {{{"--deb="}, kSuccess, "", "debug", "true"},
                   {{"-no-d", "-d"}, kSuccess, "", "debug", "false true"},
                   {{"--debug=1"}, kParseError, isBoolean("--debug=1"), "debug", "absent"},
                   {{"--no-debug 0"}, kParseError, isBoolean("--no-debug 0")},
                   {{"--no-version"}, kParseError, unknown("--no-version")},
                   // The spelling decides, also for a name that is declared like that.
                   {{"--no-x"}, kSuccess, "", "no-x", "false"},
                   {{"--no-no-x"}, kSuccess, "", "no-x", "false"}});

    varo::Result result = parser.createResult();
    parse(parser, result, {"--debug", "--no-verbose"});
    EXPECT_STREQ(result.interface()->get("debug", 0, varo::kNoPosition).text(), "1");
    EXPECT_STREQ(result.interface()->get("verbose", 0, varo::kNoPosition).text(), "0");
}

TEST(Abbreviation, AcceptsOneOrTwoOfSixDashes) {
    std::vector<std::string> const dashes{"-", "\u2012", "\u2013", "\u2014", "\u2015", "\u2053"};
    varo::Parser const parser(varo::kUnknownIsError);
    declare(parser);
    for (std::string const& first : dashes) {
        check(parser, {{{first + "output=x"}, kSuccess, "", "output", "'x'"},
                       {{first + "\u2014" + "output=x"}, kSuccess, "", "output", "'x'"},
                       {{first + "-o=x"}, kSuccess, "", "output", "'x'"},
                       {{first + "--o=x"}, kParseError, unknown(first + "--o=x")},
                       {{first}, kParseError, unknown(first)}});
    }
}

TEST(Abbreviation, LeavesWhatNamesNoOption) {
    varo::Parser const parser(varo::kUnknownIsError);
    declare(parser);
    parser->option("-dashed", "", vtBool, "");
    std::vector<Case> cases{{{"---dashed"}, kParseError, "Unknown option '-dashed'"}};
    // The last ones look like dashes or white space but are ordinary characters, or are cut off.
    for (std::string const argument :
         {"", "-", "output", "o-x", "--=x", "-=x", "-- x", "--Output=x", "--outputs=x",
          "\u2013\u2013", "\u2212o=x", "\u2010o=x", "\u00ADo=x", "\uFF0Do=x", "\xE2\x80",
          "\xE2\x80o", "-\xE2", "-o\xA0x", "-o\xC2\xA0x"}) {
        cases.push_back({{argument, "--debug"}, kParseError, unknown(argument), "debug", "absent"});
    }
    check(parser, cases);
}

TEST(Abbreviation, WhiteSpaceFollowsTheGlobalLocale) {
    static std::ctype_base::mask table[std::ctype<char>::table_size];
    std::copy_n(std::ctype<char>::classic_table(), std::ctype<char>::table_size, table);
    table[static_cast<unsigned char>('_')] |= std::ctype_base::space;
    varo::Parser const parser(varo::kUnknownIsError);
    declare(parser);
    {
        GlobalFacet const facet(new std::ctype<char>(table));
        check(parser, {{{"--output_x"}, kSuccess, "", "output", "'x'"}});
    }
    check(parser, {{{"--output_x"}, kParseError, unknown("--output_x")}});
}

TEST(Abbreviation, AnyDeclaredNameIsHarmless) {
    varo::Parser const parser;
    std::string const huge(1000000, 'h');
    for (std::string const& name : {std::string("a=b"), std::string("c d"), std::string("--e"),
                                    std::string(), huge, std::string("\xff\x01")}) {
        EXPECT_TRUE(parser->option(name.c_str(), "text", vtBool, "s"));
        EXPECT_TRUE(parser->isOptionDeclared(name.c_str(), false, nullptr));
        EXPECT_NE(std::string(parser->getDescription(name.c_str(), false)).find("text"),
                  std::string::npos);
    }
    check(parser, {{{"--a"}, kSuccess, "", "a=b", "true"},
                   {{"--c"}, kSuccess, "", "c d", "true"},
                   {{"--no-"}, kSuccess, "", "", "false"},
                   {{"--" + huge}, kSuccess, "", huge.c_str(), "true"},
                   {{"--h" + huge}, kSuccess, "", huge.c_str(), "absent"},
                   {{"-\xff"}, kSuccess, "", "\xff\x01", "true"}});
}

}  // namespace
