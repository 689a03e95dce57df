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
    check(parser, {{{"--outp", "x"}, 0, "", "output", "'x'"},
                   {{"--output \t x y"}, 0, "", "output", "'x y'"},
                   {{"--output a=b"}, 0, "", "output", "'a=b'"},
                   {{"--output=a b"}, 0, "", "output", "'a b'"},
                   {{"--output==", "-o=y"}, 0, "", "output", "'=' 'y'"},
                   {{"--output=", "x"}, 0, "", "output", "'x'"},
                   {{"--output", "\xE2\x80\x93x"}, 0, "", "output", "'\xE2\x80\x93x'"},
                   // An empty text is an occurrence without a value, and is used up.
                   {{"--output", ""}, 0, "", "output", "null"},
                   {{"--num=-5"}, 0, "", "num", "s32 -5"},
                   {{"--num", "-5"}, 2, seemsAnOption("num", "-5"), "num", "absent"},
                   {{"-o", "-"}, 2, seemsAnOption("output", "-")},
                   {{"-o", "--"}, 2, seemsAnOption("output", "--")},
                   {{"--output"}, 2, "Option 'output' requires a value in argument: '--output'"},
                   {{"-o="}, 2, "Option 'output' requires a value in argument: '-o='"},
                   {{"--version"}, 0, "", "version", "null"},
                   {{"--version="}, 0, "", "version", "null"},
                   {{"--version=x"},
                    2,
                    "Option 'version'does not requires a value in argument: '--version=x'"},
                   // Not the value of an option that takes none.
                   {{"--version", "x"}, 2, unknown("x"), "version", "null"},
                   {{"--debug", "x"}, 2, unknown("x"), "debug", "true"}});
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
    check(parser, {{{"--deb="}, 0, "", "debug", "true"},
                   {{"-no-d", "-d"}, 0, "", "debug", "false true"},
                   {{"--debug=1"}, 2, isBoolean("--debug=1"), "debug", "absent"},
                   {{"--no-debug 0"}, 2, isBoolean("--no-debug 0")},
                   {{"--no-version"}, 2, unknown("--no-version")},
                   // The spelling decides, also for a name that is declared like that.
                   {{"--no-x"}, 0, "", "no-x", "false"},
                   {{"--no-no-x"}, 0, "", "no-x", "false"}});

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
        check(parser, {{{first + "output=x"}, 0, "", "output", "'x'"},
                       {{first + "\u2014" + "output=x"}, 0, "", "output", "'x'"},
                       {{first + "-o=x"}, 0, "", "output", "'x'"},
                       {{first + "--o=x"}, 2, unknown(first + "--o=x")},
                       {{first}, 2, unknown(first)}});
    }
}

TEST(Abbreviation, LeavesWhatNamesNoOption) {
    varo::Parser const parser(varo::kUnknownIsError);
    declare(parser);
    parser->option("-dashed", "", vtBool, "");
    std::vector<Case> cases{{{"---dashed"}, 2, "Unknown option '-dashed'"}};
    // The last ones look like dashes or white space but are ordinary characters, or cut off.
    for (std::string const argument :
         {"", "-", "output", "o-x", "--=x", "-=x", "-- x", "--Output=x", "--outputs=x",
          "\u2013\u2013", "\u2212o=x", "\u2010o=x", "\u00ADo=x", "\uFF0Do=x", "\xE2\x80",
          "\xE2\x80o", "-\xE2", "-o\xA0x", "-o\xC2\xA0x"}) {
        cases.push_back({{argument, "--debug"}, 2, unknown(argument), "debug", "absent"});
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
        check(parser, {{{"--output_x"}, 0, "", "output", "'x'"}});
    }
    check(parser, {{{"--output_x"}, 2, unknown("--output_x")}});
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
    check(parser, {{{"--a"}, 0, "", "a=b", "true"},
                   {{"--c"}, 0, "", "c d", "true"},
                   {{"--no-"}, 0, "", "", "false"},
                   {{"--" + huge}, 0, "", huge.c_str(), "true"},
                   {{"--h" + huge}, 0, "", huge.c_str(), "absent"},
                   {{"-\xff"}, 0, "", "\xff\x01", "true"}});
}

}  // namespace
