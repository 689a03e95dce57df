#include <stdexcept>

#include "support.h"

namespace {

using namespace mosaic2;
using namespace varo_test;

void declareOptions(varo::Parser const& parser) {
    char const* const general =
        "general:Options that every run of the tool understands, whatever it is asked to do with "
        "the files.";
    parser->option("level,l", "Verbosity", vtS32, "general:to be replaced")->defaultValue(3);
    parser->option("color,c", "Coloured output", vtBool, general)->synonym("C")->defaultValue(true);
    parser->option("quiet", "Says less", vtBool, general)->defaultValue(false);
    parser->option("b", "Without a default", vtBool, general);
    parser->option("version,V", "Prints the version", vtNull, general);
    parser->option("silent", "", vtNull, general);
    parser->option("a-name-that-fills-the-column", "Stands below its name", vtU32, general);
    parser
        ->option("speed",
                 "How fast it goes; the text is long enough for a second line, and for a third one "
                 "that ends with an-unbreakable-word-that-is-longer-than-any-line-has-room",
                 vtString, "output:to be cleared")
        ->allowValue("fast")
        ->allowValue("slow")
        ->defaultValue("slow");
    parser->option("ratio,r", "Kept\nin lines\n", vtDouble, "output")->defaultValue(0.5);
    parser->option("mask", "A number", vtU64, "output");
    parser->option("size", "A number", vtS64, ":Without a heading")->defaultValue(variant_t());
    parser->option("file", "Not shown", vtString, general)->positional();
    parser->option("trace", "Shows the inside", vtString, "varo_hidden:For developers");
}

void declareActions(varo::Parser const& parser) {
    parser->action("collect,c",
                   "Collect data, described in a line that is never broken, however "
                   "long it turns out to be",
                   vtNull, "actions:What to do");
    parser->action("report", "", vtNull, "actions:What to do");
    parser->action("an-internal-action", "For developers", vtNull, "varo_hidden");
    parser->modifier("duration", "collect", "How long", vtU32, "modifiers");
    parser->modifier("format", "report", "How it looks", vtString, "modifiers");
    parser->modifier("limit", "c,report", "How much", vtS32, "modifiers");
    parser->modifier("probe", "collect", "Checks itself", vtBool, "varo_hidden");
}

TEST(Help, ShowsOptionsBySectionWithDoubleDashes) {
    varo::Parser const parser(varo::kDoubleDashHelp);
    EXPECT_STREQ(parser->getDescription(false), "");
    EXPECT_STREQ(parser->getDescription(true), "");
    declareOptions(parser);
    char const* const hidden = parser->getDescription(true);
    EXPECT_STREQ(parser->getDescription(false), R"(general
 Options that every run of the tool understands, whatever it is asked to do with
 the files.

--a-name-that-fills-the-column=<unsigned integer>
                              Stands below its name
-b | --no-b                   Without a default
-C, -c, --color (default) | --no-color
                              Coloured output
-l, --level=<integer> (3)     Verbosity
--quiet | --no-quiet (default)
                              Says less
-V, --version                 Prints the version

output
--mask=<unsigned 64 bit or hex>
                              A number
-r, --ratio=<double> (0.5)    Kept
                              in lines
                              
--speed=fast | slow (slow)    How fast it goes; the text is long enough for a
                              second line, and for a third one that ends with
                              an-unbreakable-word-that-is-longer-than-any-line-
                              has-room

 Without a heading

--size=<64 bit integer>       A number

)");
    EXPECT_STREQ(parser->getDescription(nullptr, false), parser->getDescription(false));
    EXPECT_STREQ(parser->getGlobalModifiersDescription(false), parser->getDescription(false));
    EXPECT_STREQ(hidden, R"(varo_hidden
 For developers

--trace=<string>              Shows the inside

)");
}

TEST(Help, ShowsSingleDashesUnlessToldOtherwise) {
    varo::Parser const parser;
    parser->option("level,l", "Verbosity", vtS32, "general")->defaultValue(3);
    parser->option("quiet,q", "Says less", vtBool, "general")->defaultValue(false);
    parser->option("quiet-modes", "Second", vtNull, "general");
    parser->option("quiet-mode", "First", vtNull, "general");
    EXPECT_STREQ(parser->getDescription(false), R"(general
-l, -level=<integer> (3)      Verbosity
-q, -quiet | -no-quiet (default)
                              Says less
-quiet-mode                   First
-quiet-modes                  Second

)");
}

TEST(Help, ReadsTheDefaultOfASwitchAsABoolean) {
    variant_t const borrowed("x", true);
    std::pair<variant_t, char const*> const rows[] = {{1.0, "-a (default) | -no-a\n"},
                                                      {0.0, "-a | -no-a (default)\n"},
                                                      {variant_t(), "-a | -no-a (default)\n"},
                                                      {-1, "-a (default) | -no-a\n"},
                                                      {borrowed, "-a | -no-a\n"}};
    for (auto const& [value, shown] : rows) {
        varo::Parser const parser;
        parser->option("a", std::string(60, 'x').c_str(), vtBool, "")->defaultValue(value);
        std::string const help = parser->getDescription(false);
        std::string const names = help.substr(0, help.find("  ")) + "\n";
        EXPECT_EQ(names, shown);
    }
}

TEST(Help, ListsActionsAsTopics) {
    varo::Parser const parser(varo::kDoubleDashHelp);
    declareActions(parser);
    EXPECT_STREQ(
        parser->getDescription(false),
        R"(    collect   Collect data, described in a line that is never broken, however long it turns out to be
    report
)");
    EXPECT_STREQ(parser->getDescription(true), "    an-internal-action   For developers\n");
    EXPECT_STREQ(parser->getDescription(nullptr, true), parser->getDescription(true));
}

TEST(Help, ShowsOneTopicUnderAllHeadings) {
    varo::Parser const parser(varo::kDoubleDashHelp);
    declareActions(parser);
    EXPECT_STREQ(parser->getDescription("c", false), R"(actions
 What to do

-c, --collect                 Collect data, described in a line that is never
                              broken, however long it turns out to be

modifiers

)");
    EXPECT_STREQ(parser->getDescription("probe", false), "actions\n What to do\n\n\nmodifiers\n\n");
    EXPECT_STREQ(parser->getDescription("no-probe", true), R"(varo_hidden
--probe | --no-probe          Checks itself

)");
}

TEST(Help, AnswersUnknownTopicsWithTheTopics) {
    varo::Parser const parser;
    declareActions(parser);
    varo::Result result = parser.createResult();
    parse(parser, result, {"--limit=x"});
    std::string const error = parser.error();
    std::string const sorry =
        "Help for dur not available.Please use one of the following topics:\n";
    EXPECT_EQ(parser->getDescription("dur", false), sorry + parser->getDescription(false));
    EXPECT_EQ(parser->getDescription("dur", true), sorry + parser->getDescription(true));
    EXPECT_EQ(parser->getActionModifiersDescription("dur", true),
              sorry + parser->getDescription(true));
    EXPECT_EQ(parser.error(), error);
    try {
        parser->getActionModifiersDescription(nullptr, false);
        ADD_FAILURE();
    } catch (std::logic_error const& problem) {
        EXPECT_STREQ(problem.what(), "basic_string::_M_construct null not valid");
    }
}

TEST(Help, ShowsModifiersWithTheirAction) {
    varo::Parser const parser;
    declareActions(parser);
    EXPECT_STREQ(parser->getGlobalModifiersDescription(false), "");
    parser->option("verbose", "Says more", vtBool, "modifiers:Details");
    parser->option("late", "Says why", vtBool, "")->tag("report,collect");
    EXPECT_STREQ(parser->getActionModifiersDescription("collect", false), R"(actions
 What to do


modifiers
 Details

-duration=<unsigned integer>  How long
-limit=<integer>              How much

-late | -no-late              Says why

)");
    EXPECT_STREQ(parser->getActionModifiersDescription("c", true), R"(varo_hidden
-probe | -no-probe            Checks itself

)");
    EXPECT_STREQ(parser->getGlobalModifiersDescription(false), R"(actions
 What to do


modifiers
 Details

-verbose | -no-verbose        Says more


)");
    EXPECT_STREQ(parser->getGlobalModifiersDescription(true), "varo_hidden\n\n");
}

TEST(Help, KeepsTheSectionsOfRefusedDeclarations) {
    varo::Parser const parser;
    parser->option("first", "One", vtNull, "a:text: with colon");
    parser->option("first", "Two", vtNull, "b");
    EXPECT_STREQ(parser->getDescription(false),
                 "a\n text: with colon\n\n-first                        One\n\nb\n\n");
}

}  // namespace
