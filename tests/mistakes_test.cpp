#include <functional>
#include <string>

#include "support.h"
#include "varo/mistakes.h"

namespace {

using namespace mosaic2;
using namespace varo_test;

/// Declarations with a mistake, and what is said about it.
struct Row {
    std::function<void(varo::Parser&)> declare;
    std::string lines;
};

void declareGroundwork(varo::Parser& parser) {
    parser->action("add,a", "", vtString, "")->tag("put");
    parser->action("list", "", vtNull, "");
    parser->option("color", "", vtBool, "")->defaultValue(true);
    parser->option("level,l", "", vtS32, "")->allowValue(1)->allowValue(3L)->defaultValue(3U);
    parser->option("ratio", "", vtDouble, "")->defaultValue(1);
    parser->option("", "", vtString, "")->positional();
    parser->modifier("by", "a,put", "", vtString, "")
        ->allowValue("x")
        ->allowDeprecatedValue("y", "x");
    parser->modifier("by", "list", "", vtString, "");
    parser->allowSimultaneousActions({"add", "list"});
}

TEST(Mistakes, AreTold) {
    Row const rows[] = {
        {[](auto&) {}, ""},
        // Refused declarations
        {[](auto& p) { p->option(nullptr, "", vtS32, ""); }, "Refused was '': the names are null."},
        {[](auto& p) { p->option("w,x,y,z", "", vtS32, ""); },
         "Refused was 'w,x,y,z': three names are the most."},
        {[](auto& p) { p->option("x,y,long", "", vtS32, ""); },
         "Refused was 'x,y,long': a third name has two characters at most."},
        {[](auto& p) { p->option("x,no-color", "", vtS32, "")->defaultValue("text"); },
         "Refused was 'x,no-color': the option 'color' has one of these names."},
        {[](auto& p) { p->modifier("by", "put", "", vtString, ""); },
         "Refused was 'by': the modifier 'by' has one of these names."},
        // Names
        {[](auto& p) { p->option("--x,-y", "", vtS32, ""); },
         "The option '--x': names are written without dashes, not '--x'.\n"
         "The option '--x': names are written without dashes, not '-y'."},
        {[](auto& p) { p->option("x,\xE2\x80\x94y", "", vtS32, ""); },
         "The option 'x': names are written without dashes, not '\xE2\x80\x94y'."},
        {[](auto& p) { p->option("x=,,y z", "", vtS32, ""); },
         "Refused was 'x=,,y z': a third name has two characters at most."},
        {[](auto& p) { p->option("x=,y z", "", vtS32, ""); },
         "The option 'x=': nobody can type the name 'x='.\n"
         "The option 'x=': nobody can type the name 'y z'."},
        {[](auto& p) { p->option("x", "", vtS32, "")->synonym(""); },
         "The option 'x': nobody can type the name ''.\n"
         "The option 'x': its name '' leads to the option ''."},
        {[](auto& p) { p->option("x", "", vtS32, "")->synonym("level"); },
         "The option 'x': its name 'level' leads to the option 'level'."},
        {[](auto& p) {
             p->option("x", "", vtS32, "")->synonym("no-wrap");
             p->option("wrap", "", vtBool, "");
         },
         "The option 'wrap': its name 'no-wrap' leads to the option 'x'."},
        {[](auto& p) { p->option("wrap", "", vtBool, "")->synonym("no-color"); },
         "The option 'wrap': its name 'no-color' leads to the option 'color'."},
        {[](auto& p) { p->modifier("level", "list", "", vtS32, ""); },
         "The modifier 'level': its name 'level' leads to the option 'level'."},
        {[](auto& p) { p->modifier("x", "list", "", vtString, "")->synonym("by"); },
         "The modifier 'x': its name 'by' leads to the modifier 'by'."},
        {[](auto& p) {
             p->modifier("x", "add", "", vtString, "");
             p->modifier("x", "list", "", vtS32, "");
         },
         "The modifier 'x': the values of 'x' become those of the modifier 'x' declared earlier, "
         "which has the type 'string'."},
        // Actions
        {[](auto& p) { p->modifier("x", "add,ad", "", vtS32, "")->tag("lst"); },
         "The modifier 'x': there is no action 'ad'.\n"
         "The modifier 'x': there is no action 'lst'."},
        {[](auto& p) { p->modifier("x", "color", "", vtS32, ""); },
         "The modifier 'x': there is no action 'color'."},
        {[](auto& p) {
             p->allowSimultaneousActions({"a", "list"});
         },
         "Simultaneous actions: none has the primary name 'a'."},
        // Positional declarations
        {[](auto& p) { p->option("x", "", vtString, "")->positional(); },
         "The option 'x': positional arguments go to the option '' alone."},
        // Values
        {[](auto& p) { p->option("x", "", vtS32, "")->defaultValue("3"); },
         "The option 'x': the default string '3' is no value of type 'integer'."},
        {[](auto& p) { p->option("x", "", vtU32, "")->defaultValue(-1); },
         "The option 'x': the default integer '-1' is no value of type 'unsigned integer'."},
        {[](auto& p) { p->option("x", "", vtS32, "")->defaultValue(2147483648L); },
         "The option 'x': the default 64 bit integer '2147483648' is no value of type 'integer'."},
        {[](auto& p) { p->option("x", "", vtS64, "")->defaultValue(~0UL); },
         "The option 'x': the default unsigned 64 bit or hex '18446744073709551615' is no value of "
         "type '64 bit integer'."},
        {[](auto& p) { p->option("x", "", vtU64, "")->defaultValue(2.5); },
         "The option 'x': the default double '2.5' is no value of type 'unsigned 64 bit or hex'."},
        {[](auto& p) { p->option("x", "", vtBool, "")->defaultValue(1); },
         "The option 'x': the default integer '1' is no value of type 'boolean'."},
        {[](auto& p) { p->option("x", "", vtDouble, "")->defaultValue(true); },
         "The option 'x': the default boolean '1' is no value of type 'double'."},
        {[](auto& p) { p->option("x", "", vtNull, "")->defaultValue(variant_t("y", true)); },
         "The option 'x': the default string 'y' is no value of type 'null'."},
        {[](auto& p) { p->option("x", "", vtString, "")->defaultValue(variant_t()); },
         "The option 'x': the default null '' is no value of type 'string'."},
        {[](auto& p) {
             p->option("x", "", vtString, "")->allowValue("directory")->defaultValue("dir");
         },
         "The option 'x': the default 'dir' is not among the allowed values."},
        {[](auto& p) { p->option("x", "", vtString, "")->allowValue("a,b")->allowValue("c"); },
         "The option 'x': the allowed value 'a,b' holds the separator ','."},
        {[](auto& p) { p->option("x", "", vtS32, "")->allowValue("1")->allowValue(1); },
         "The option 'x': the allowed string '1' is no value of type 'integer'."},
        {[](auto& p) { p->option("x", "", vtS32, "")->allowDeprecatedValue("1", 2.5); },
         "The option 'x': the deprecated string '1' is no value of type 'integer'.\n"
         "The option 'x': the replacing double '2.5' is no value of type 'integer'."},
        // Declared with handles
        {[](auto& p) { (void)p.template option<unsigned>("x", "").defaultValue(-1); },
         "The option 'x': the default integer '-1' is no value of type 'unsigned integer'."},
    };
    for (Row const& row : rows) {
        varo::Parser parser;
        declareGroundwork(parser);
        row.declare(parser);
        EXPECT_EQ(varo::describeMistakes(parser.interface()), row.lines);
    }
}

TEST(Mistakes, AreNoRemarks) {
    varo::Parser parser;
    parser->option("color,c", "", vtBool, "");
    parser->option("colorful,co", "", vtBool, "");
    parser->option("col", "", vtS32, "");
    parser->option("d,depth", "", vtS32, "");
    parser->option("deep", "", vtS32, "")->synonym("\xC3\xA9");
    parser->option("\xC3\xA9tat", "", vtS32, "");
    parser->option("wrap", "", vtBool, "");
    parser->option("no-wr", "", vtS32, "");
    EXPECT_STREQ(varo::describeMistakes(parser.interface()), "");
    EXPECT_STREQ(
        varo::describeRemarks(parser.interface()),
        "The option 'color': its name 'color' begins with 'co' of the option 'colorful'.\n"
        "The option 'color': its name 'color' begins with 'col' of the option 'col'.\n"
        "The option 'colorful': its name 'colorful' begins with 'col' of the option 'col'."
        "\n"
        "The option 'colorful': its name 'colorful' begins with 'color' of the option "
        "'color'.\n"
        "The option 'col': its name 'col' begins with 'co' of the option 'colorful'.\n"
        "The option 'wrap': its name 'no-wrap' begins with 'no-wr' of the option 'no-wr'.");
}

TEST(Mistakes, AreBoundedAndKept) {
    varo::Parser parser;
    varo::IOption* const option = parser->option("x", "", vtS32, "");
    EXPECT_FALSE(varo::isRefused(parser.interface(), option));
    for (int count = 0; count < 250; ++count) {
        EXPECT_TRUE(varo::isRefused(parser.interface(), parser->option("x", "", vtS32, "")));
    }
    char const* const lines = varo::describeMistakes(parser.interface());
    EXPECT_NE(std::string(lines).find("\n150 more declarations were refused."), std::string::npos);
    EXPECT_LT(std::string(lines).size(), 10000U);
    EXPECT_EQ(varo::describeMistakes(parser.interface()), lines);  // the same text, held once
    EXPECT_STREQ(varo::describeMistakes(nullptr), "");
    EXPECT_FALSE(varo::isRefused(nullptr, option));
}

}  // namespace
