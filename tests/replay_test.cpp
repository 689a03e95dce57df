#include <sys/wait.h>
#include <unistd.h>

#include "support.h"
#include "varo/documents.h"

using namespace varo_test;
using namespace mosaic2;

namespace {

constexpr char kHeader[] = "# What was given, with full names; the comments are defaults.\n";

void declare(varo::Parser const& parser) {
    parser->option("level,l", "", vtS32, "")->defaultValue(3);
    parser->option("color,c", "", vtBool, "")->defaultValue(true);
    parser->option("name,n", "", vtString, "");
    parser->option("match,m", "", vtString, "")->tokenize(';');
    parser->option("help,h", "", vtNull, "");
    parser->option("by", "", vtString, "")
        ->allowValue("directory")
        ->allowDeprecatedValue("folder", "directory");
    parser->option("file", "", vtString, "")->positional()->tokenize(0);
    parser->addOptionFileOption("", "");
}

std::string replay(varo::Parser const& parser, Arguments const& line, int form) {
    varo::Result result = parser.createResult();
    parse(parser, result, line);
    return varo::toOptionFile(parser.interface(), result.interface(), form);
}

/// What the option file holds besides its first line and the defaults; or "refused".
std::string linesOf(varo::Parser const& parser, Arguments const& line) {
    std::string text = replay(parser, line, varo::kOptionLines);
    if (text.rfind(kHeader, 0) != 0) {
        EXPECT_EQ(text, "");
        return "refused";
    }
    text.erase(0, sizeof(kHeader) - 1);
    while (text.rfind("# ", 0) == 0) {
        text.erase(0, text.find('\n') + 1);
    }
    return text;
}

TEST(Replay, WritesFullNamesInOrderAndDefaultsAsComments) {
    varo::Parser const parser(varo::kUnknownIsError);
    declare(parser);
    EXPECT_EQ(replay(parser, {"-l", "4", "x y", "--na=a,b", "--", "-p"}, varo::kOptionLines),
              std::string(kHeader) + "# --color\n--level=4\n--file=x y\n--name=a,b\n--\n-p\n");
    EXPECT_EQ(replay(parser, {}, varo::kOptionLines),
              std::string(kHeader) + "# --level=3\n# --color\n");

    varo::Parser const odd;
    odd->option("text", "", vtString, "")->defaultValue("one\ntwo\x1B");
    odd->option("flag", "", vtNull, "")->defaultValue(true);
    odd->option("a=b", "", vtS32, "")->defaultValue(1);
    EXPECT_EQ(replay(odd, {}, varo::kOptionLines),
              std::string(kHeader) + "# --text=one\\ntwo\\x1b\n# --flag=1\n# --a=b=1\n");
}

TEST(Replay, HoldsWhatLooksLikeSomethingElse) {
    varo::Parser const parser(varo::kUnknownIsError);
    declare(parser);
    struct Case {
        Arguments line;
        std::string lines;
        std::string words;
    };
    Case const cases[] = {
        {{"--no-col", "--h", "-c"}, "--no-color\n--help\n--color\n", "--no-color --help --color"},
        {{"--level=-5", "--n", " a "}, "--level=-5\n--name= a \n", "--level=-5 '--name= a '"},
        {{"# x", "; y", "-"},
         "--file=# x\n--file=; y\n--file=-\n",
         "'--file=# x' '--file=; y' --file=-"},
        {{"--m=;a;;b"}, "--match=a;b\n", "'--match=a;b'"},
        {{"--by=fold", "--by=dir"}, "refused", "--"},  // a parse ends at a wrong value
        {{"--by=folder", "--by=dir"}, "--by=folder\n--by=dir\n", "--by=folder --by=dir"},
        {{"--n=it's", "--n=$(x) `y`"},
         "--name=it's\n--name=$(x) `y`\n",
         "'--name=it'\\''s' '--name=$(x) `y`'"},
        // what a line cannot hold
        {{"--name", ""}, "refused", "--name ''"},
        {{""}, "refused", "--file ''"},
        {{"--name=a\nb"}, "refused", "'--name=a\nb'"},
        {{"--name=a\r"}, "refused", "'--name=a\r'"},
        {{"--", "# x"}, "refused", "-- '# x'"},
        {{"--", ""}, "refused", "-- ''"},
        {{"--", " x", "=y"}, "refused", "-- ' x' '=y'"},
    };
    for (Case const& row : cases) {
        SCOPED_TRACE(row.words);
        if (row.words != "--") {
            EXPECT_EQ(linesOf(parser, row.line), row.lines);
            EXPECT_EQ(replay(parser, row.line, varo::kShellWords), row.words);
        }
    }
    EXPECT_EQ(replay(parser, {}, varo::kShellWords), "--");
    EXPECT_EQ(replay(parser, {}, 2), "");
}

TEST(Replay, GivesAPositionalValueWithoutANameThatWouldDo) {
    varo::Parser const parser(varo::kPositionalAfterMarker | varo::kDashGuard);
    parser->option("a=b", "", vtString, "")->positional();
    parser->option("x", "", vtString, "");
    EXPECT_EQ(linesOf(parser, {"one", "--x=1", "two"}), "one\n--x=1\ntwo\n");
    // Plain arguments are values of the positional option too, and are written once.
    EXPECT_EQ(linesOf(parser, {"one", "--", "-2", "--"}), "one\n--\n-2\n--\n");
    EXPECT_EQ(linesOf(parser, {"#"}), "refused");
    EXPECT_EQ(replay(parser, {"#", "--", "b"}, varo::kShellWords), "'#' -- b");
}

TEST(Replay, PutsTheContentsOfOptionFilesInPlaceOfTheirNames) {
    Directory const directory;
    std::string const inner = directory.write("inner", "--level=5\n");
    std::string const outer =
        directory.write("outer", "--no-color\n--option-file=" + inner + "\nx\n");
    varo::Parser const parser;
    declare(parser);
    EXPECT_EQ(linesOf(parser, {"--opt=" + outer, "--n=1"}),
              "--name=1\n--no-color\n--file=x\n--level=5\n");
    varo::Parser const byDefault;
    byDefault->option("option-file", "", vtString, "")->defaultValue(inner.c_str());
    byDefault->addOptionFileOption("", "");
    EXPECT_EQ(linesOf(byDefault, {}), "refused");
}

TEST(Replay, RefusesWhatTheParserDoesNotDeclareOrReadsOtherwise) {
    varo::Parser const parser;
    declare(parser);
    varo::Parser const other;
    other->option("other", "", vtNull, "");
    other->option("level", "", vtString, "");
    for (char const* const argument : {"--other", "--level=4"}) {
        varo::Result result = other.createResult();
        parse(other, result, {argument});
        EXPECT_STREQ(varo::toOptionFile(parser.interface(), result.interface()), "");
    }
    varo::Parser const nameless;
    nameless->modifier(",first", "a", "", vtString, "");
    nameless->modifier(",second", "b", "", vtString, "");
    EXPECT_EQ(linesOf(nameless, {"--first=x"}), "--first=x\n");
    EXPECT_EQ(replay(nameless, {"--second=x"}, varo::kOptionLines), "");
    varo::Result const empty = parser.createResult();
    EXPECT_STREQ(varo::toOptionFile(parser.interface(), nullptr), "");
    EXPECT_STREQ(varo::toOptionFile(nullptr, empty.interface()), "");

    // No handler is told of the trial.
    RecordingHandler handler;
    parser->addHandler(&handler);
    varo::Result result = parser.createResult();
    parse(parser, result, {"--level=x"});
    std::string const error = parser.error();
    handler.m_events.clear();
    varo::toOptionFile(parser.interface(), result.interface());
    EXPECT_EQ(handler.m_events, "");
    EXPECT_EQ(parser.error(), error);
    parser->removeHandler(&handler);
}

TEST(Replay, WordsComeThroughAShell) {
    varo::Parser const parser;
    declare(parser);
    std::string every;
    for (int byte = 1; byte < 256; ++byte) {
        every += static_cast<char>(byte);
    }
    Arguments const line = {
        "--name=" + every, "--name=~/x", "--n=''", "*", "$HOME", "--", "~", "", "!x", "a\\"};
    Directory const directory;
    std::string const script =
        "printf '%s\\0' " + replay(parser, line, varo::kShellWords) + " > " + directory.path("out");
    ASSERT_EQ(std::system(("sh " + directory.write("script", script)).c_str()), 0);
    std::ifstream file(directory.path("out"), std::ios::binary);
    Arguments words;
    for (std::string word; std::getline(file, word, '\0');) {
        words.push_back(word);
    }
    varo::Result first = parser.createResult();
    varo::Result second = parser.createResult();
    parse(parser, first, line);
    parse(parser, second, words);
    for (char const* const name : {"name", "file"}) {
        EXPECT_EQ(contents(first, name), contents(second, name));
    }
    EXPECT_EQ(plainArguments(first), plainArguments(second));
    EXPECT_EQ(words.size(), line.size());
}

}  // namespace
