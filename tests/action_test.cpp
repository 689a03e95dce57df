#include "support.h"

namespace {

using namespace mosaic2;
using namespace varo_test;

void declareActions(varo::Parser const& parser) {
    parser->action("scan,s", "", vtNull, "");
    parser->action("report", "", vtNull, "")->defaultValue("not given");
    parser->action("clean", "", vtBool, "");
    parser->option("verbose", "", vtBool, "")->defaultValue(false);
    parser->modifier("depth", "s", "", vtS32, "");
    parser->modifier("format", "report,clean", "", vtString, "")->defaultValue("table");
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
    check(parser, {{{}, 0, ""},
                   {{"--", "word"}, 0, ""},
                   {{"--verbose"}, 2, "No action defined.", "verbose", "true"},
                   {{"--depth=1"}, 2, "No action defined."},
                   {{"--scan", "--verbose", "--scan"}, 0, ""},
                   {{"--limit=1", "-s", "--depth=2"}, 0, "", "depth", "s32 2"},
                   {{"--report", "--limit=1", "--format=x", "--sort=y"}, 0, "", "sort", "'y'"},
                   {{"--no-clean", "--format=x"}, 0, ""},
                   {{"--scan", "--format=x"}, 2, refused("scan", "format"), "format", "'x'"},
                   {{"--clean", "--sort=x"}, 2, refused("clean", "sort")},
                   // The order of names counts, not that of the arguments.
                   {{"--scan", "--report"}, 2, onlyOne("scan", "report")},
                   {{"--report", "--scan", "--clean"}, 2, onlyOne("report", "clean")}});
    // Under two names it is still one action.
    varo::Parser const other;
    other->option("s", "", vtNull, "");
    varo::Result result = parser.createResult();
    EXPECT_EQ(parser->parseStream("--scan", result.interface()), 0);
    EXPECT_EQ(other->parseStream("-s", result.interface()), varo::kRefused);
    EXPECT_EQ(parser->parseStream("--verbose", result.interface()), 0);
}

TEST(Actions, GroupsMayBeGivenTogether) {
    varo::Parser const parser(varo::kUnknownIsError);
    declareActions(parser);
    EXPECT_EQ(parser->allowSimultaneousActions({}), 1);
    EXPECT_EQ(parser->allowSimultaneousActions({"Scan", "report", "s"}), 1);
    check(parser, {{{"--scan", "--report"}, 2, onlyOne("scan", "report")}});
    EXPECT_EQ(parser->allowSimultaneousActions({"clean", "unheard of"}), 1);
    EXPECT_EQ(parser->allowSimultaneousActions({"zoo", "scan", "report", "a"}), 1);
    EXPECT_EQ(parser->allowSimultaneousActions({"zoo", "scan", "report", "a"}), 1);
    check(parser, {{{"--scan", "--report"}, 0, ""},
                   {{"--scan", "--clean"}, 2, onlyOne("scan", "clean")},
                   {{"--scan", "--report", "--clean"}, 2, onlyOne("report", "clean")},
                   // The action that is last by name decides about modifiers.
                   {{"--scan", "--report", "--depth=1"}, 0, ""},
                   {{"--scan", "--report", "--format=x"}, 2, refused("scan", "format")}});
    parser->allowSimultaneousActions({"clean", "report"});
    check(parser, {{{"--clean", "--report", "--scan"}, 2, onlyOne("scan", "report")}});
}

}  // namespace
