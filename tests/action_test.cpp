#include "parser/basic_parser.h"
#include "support.h"

namespace {

using namespace mosaic2;
using namespace varo_test;

void declareActions(varo::Parser const& parser) {
    parser->action("scan,s", "", vtNull, "");
    parser->action("report", "", vtNull, "");
    parser->action("report-by-name", "", vtNull, "");
    parser->action("report-by-size", "", vtNull, "");
    parser->action("clean", "", vtBool, "");
    parser->option("verbose", "", vtBool, "");
    parser->modifier("depth", "s", "", vtS32, "");
    parser->modifier("format", "report,clean", "", vtString, "");
    parser->modifier("limit", "scan", "", vtS32, "")->tag("report");
    parser->modifier("sort", "scan", "", vtString, "");
    parser->modifier("sort", "report", "", vtString, "");
}

std::string refused(std::string const& action, std::string const& option) {
    return "Action '-" + action + "' doesn't accept option '-" + option + "'";
}

std::string onlyOne(std::string const& later, std::string const& earlier) {
    return "Action '-" + later + "' and action '-" + earlier +
           "' were defined, but only one action possible.";
}

TEST(Actions, OneAtATimeWithItsModifiers) {
    varo::Parser const parser(varo::kUnknownIsError);
    declareActions(parser);
    check(parser,
          {{{}, kSuccess, ""},
           {{"--", "word"}, kSuccess, ""},
           {{"--verbose"}, kParseError, "No action defined.", "verbose", "true"},
           {{"--depth=1"}, kParseError, "No action defined."},
           {{"--scan", "--verbose", "--scan"}, kSuccess, ""},
           {{"--limit=1", "-s", "--depth=2"}, kSuccess, "", "depth", "s32 2"},
           {{"--report", "--limit=1", "--format=x", "--sort=y"}, kSuccess, "", "sort", "'y'"},
           {{"--no-clean", "--format=x"}, kSuccess, ""},
           {{"--scan", "--format=x"}, kParseError, refused("scan", "format"), "format", "'x'"},
           {{"--clean", "--sort=x"}, kParseError, refused("clean", "sort")},
           // The order of names matters, not that of the arguments.
           {{"--scan", "--report"}, kParseError, onlyOne("scan", "report")},
           {{"--report-by-s", "--report-by-n"},
            kParseError,
            onlyOne("report-by-size", "report-by-name")},
           {{"--report", "--scan", "--clean"}, kParseError, onlyOne("report", "clean")}});
    // Given by two names, it is still one action.
    varo::Parser const other;
    other->option("s", "", vtNull, "");
    varo::Result result = parser.createResult();
    EXPECT_EQ(parser->parseStream("--scan", result.interface()), kSuccess);
    EXPECT_EQ(other->parseStream("-s", result.interface()), kRefused);
    EXPECT_EQ(parser->parseStream("--verbose", result.interface()), kSuccess);
}

TEST(Actions, DefaultsCountAsGiven) {
    varo::Parser const plain(varo::kUnknownIsError);
    plain->action("scan", "", vtNull, "");
    plain->option("level", "", vtS32, "")->defaultValue(3);
    check(plain, {{{}, varo::kSuccess, ""},
                  {{"--", "x"}, varo::kParseError, "No action defined.", "level", "default s32 3"},
                  {{"--scan"}, varo::kSuccess, ""}});

    // The default action yields to no other; a modifier's default belongs to no action.
    varo::Parser const parser(varo::kUnknownIsError);
    parser->action("list", "", vtString, "")->defaultValue("all");
    parser->action("scan", "", vtNull, "");
    parser->modifier("long", "list", "", vtBool, "");
    parser->modifier("depth", "scan", "", vtS32, "")->defaultValue(1);
    check(parser, {{{"--long"}, varo::kSuccess, "", "list", "default 'all'"},
                   {{"--depth=2"}, varo::kParseError, refused("list", "depth")},
                   {{"--scan"}, varo::kParseError, onlyOne("scan", "list")}});
    parser->allowSimultaneousActions({"list", "scan"});
    check(parser, {{{"--scan", "--depth=2"}, varo::kSuccess, "", "list", "default 'all'"},
                   {{"--scan", "--long"}, varo::kParseError, refused("scan", "long")}});

    // Defaults of another parser in the same result are options that this one does not know.
    varo::Result result = plain.createResult();
    EXPECT_EQ(plain.parse(1, nullptr, result), varo::kSuccess);
    EXPECT_EQ(parse(parser, result, {"--list=a"}), varo::kRefused);
}

TEST(Actions, GroupsMayBeGivenTogether) {
    varo::Parser const parser(varo::kUnknownIsError);
    declareActions(parser);
    EXPECT_EQ(parser->allowSimultaneousActions({}), 1);
    EXPECT_EQ(parser->allowSimultaneousActions({"Scan", "report", "s"}), 1);
    check(parser, {{{"--scan", "--report"}, kParseError, onlyOne("scan", "report")}});
    EXPECT_EQ(parser->allowSimultaneousActions({"clean", "unheard of"}), 1);
    EXPECT_EQ(parser->allowSimultaneousActions({"zoo", "scan", "report", "a"}), 1);
    EXPECT_EQ(parser->allowSimultaneousActions({"zoo", "scan", "report", "a"}), 1);
    check(parser, {{{"--scan", "--report"}, kSuccess, ""},
                   {{"--scan", "--clean"}, kParseError, onlyOne("scan", "clean")},
                   {{"--scan", "--report", "--clean"}, kParseError, onlyOne("report", "clean")},
                   // The action that is last by name decides about modifiers.
                   {{"--scan", "--report", "--depth=1"}, kSuccess, ""},
                   {{"--scan", "--report", "--format=x"}, kParseError, refused("scan", "format")}});
    auto const& own = static_cast<varo_3_3::BasicParser const&>(*parser.interface());
    EXPECT_TRUE(own.assertActionsCanBeUsedSimultaneously({"scan", "zoo"}));
    EXPECT_FALSE(own.assertActionsCanBeUsedSimultaneously({"scan", "clean"}));
    parser->allowSimultaneousActions({"clean", "report"});
    check(parser, {{{"--clean", "--report", "--scan"}, kParseError, onlyOne("scan", "report")}});
}

}  // namespace
