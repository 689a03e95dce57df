#include "documents/display_width.h"
#include "support.h"
#include "varo/documents.h"

namespace {

using namespace varo_test;
using namespace mosaic2;

std::string help(varo::Parser const& parser, int columns, char const* topic = nullptr,
                 bool hidden = false, bool emphasis = false) {
    varo::HelpLayout layout;
    layout.columns = columns;
    layout.topic = topic;
    layout.hidden = hidden ? 1 : 0;
    layout.emphasis = emphasis ? 1 : 0;
    layout.program = "tool";
    return varo::helpText(parser.interface(), &layout);
}

varo::Parser declareTool() {
    varo::Parser parser(varo::kDoubleDashHelp);
    parser->action("run,r", "Runs it.\nTwice.", vtNull, "");
    parser->action("list", "", vtU32, "");
    parser->allowSimultaneousActions({"run", "list"});
    parser->modifier("depth", "run,list", "How deep", vtS32, "General")->defaultValue(3);
    parser->modifier("input", "run", "What to read", vtString, "")->positional();
    parser->modifier("secret", "run", "Hidden", vtNull, "varo_hidden");
    parser
        ->option("color,c", "Paints the text in all the colours that a terminal has, and more",
                 vtBool, "General:About it")
        ->defaultValue(false);
    parser->option("format", "How to show", vtString, "Empty")
        ->allowValue("csv")
        ->allowValue("json");
    return parser;
}

TEST(TerminalHelp, TellsOfEverythingThatIsShown) {
    EXPECT_EQ(help(declareTool(), 80), R"(Usage: tool --list=<unsigned integer> [OPTION]...
       tool --run [OPTION]... [<input>]...

Actions
  --list=<unsigned integer>
  -r, --run                   Runs it.
                              Twice.
  These may be given together: --list, --run

Modifiers of --list, --run
  --depth=<integer> (3)       How deep

Modifiers of --run
  --input=<string>            What to read

General
  About it
  -c, --color | --no-color (default)
                              Paints the text in all the colours that a
                              terminal has, and more

Empty
  --format=csv | json         How to show
)");
}

TEST(TerminalHelp, IsAsWideAsTheTerminal) {
    varo::Parser const parser = declareTool();
    EXPECT_EQ(help(parser, 40, "color"), R"(General
  About it
  -c, --color | --no-color (default)
               Paints the text in all
               the colours that a
               terminal has, and more
)");
    EXPECT_EQ(help(parser, -5, "depth"), R"(Modifiers of
--list, --run
  --depth=<integer>
      (3)
       How deep
)");
    EXPECT_NE(help(parser, 1 << 30, "color").find("that a terminal has, and"), std::string::npos);
}

TEST(TerminalHelp, OfOneTopic) {
    varo::Parser const parser = declareTool();
    EXPECT_EQ(help(parser, 80, "list").substr(0, 94),
              "Usage: tool --list=<unsigned integer> [OPTION]...\n\nActions\n  --list=<unsigned "
              "integer>\n  These");
    EXPECT_EQ(help(parser, 80, "list").find("input"), std::string::npos);
    EXPECT_EQ(help(parser, 80, "no-color"), help(parser, 80, "c"));
    EXPECT_EQ(help(parser, 80, "secret"), "");
    EXPECT_EQ(help(parser, 80, "unknown"), "");
    EXPECT_EQ(help(parser, 80, nullptr, true),
              "Modifiers of --run\n  --secret                    Hidden\n");
    EXPECT_STREQ(varo::helpText(nullptr, nullptr), "");
    varo::HelpLayout older;
    older.size = sizeof(int);
    EXPECT_STREQ(varo::helpText(parser.interface(), &older),
                 varo::helpText(parser.interface(), nullptr));
}

TEST(TerminalHelp, HeadingsAndNamesAreEmphasised) {
    EXPECT_EQ(help(declareTool(), 80, "format", false, true),
              "\033[1mEmpty\033[0m\n  \033[1m--format\033[0m=csv | json         How to show\n");
}

// Wide characters count twice, combining ones not at all; long words are cut between characters.
TEST(TerminalHelp, CountsColumns) {
    varo::Parser const parser;
    parser->option("x",
                   "\xE4\xB8\x80\xE4\xBA\x8C\xE4\xB8\x89\xE5\x9B\x9B\xE4\xBA\x94\xE5\x85\xAD "
                   "e\xCC\x81"
                   "a\xCC\x88o\xCC\x82u uu\x1B[1m\xFF\xE2\x80\xAE",
                   vtNull,
                   "\xC3\x9C"
                   "berschrift");
    EXPECT_EQ(help(parser, 20).substr(help(parser, 20).find("\n\n") + 2),
              "\xC3\x9C"
              "berschrift\n  -x   \xE4\xB8\x80\xE4\xBA\x8C\xE4\xB8\x89\xE5\x9B\x9B"
              "\xE4\xBA\x94\xE5\x85\xAD\n       e\xCC\x81"
              "a\xCC\x88o\xCC\x82u\n"
              "       uu\xEF\xBF\xBD[1m\xEF\xBF\xBD\xEF\xBF\xBD\n");
    using varo::internal::displayWidth;
    EXPECT_EQ(displayWidth(U'\u4E00') + displayWidth(U'\u0301') + displayWidth(U'\u00A0'), 3);
    EXPECT_EQ(displayWidth(U'\U0010FFFF'), 1);
}

}  // namespace
