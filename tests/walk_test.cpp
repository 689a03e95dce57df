#include "assist/walk.h"

#include "support.h"

using namespace mosaic2;
using namespace varo_test;
using varo_3_3::internal::Walk;
using varo_3_3::internal::WalkedWord;

namespace {

/// A parser with an action, options of each kind, and option files.
varo::Parser makeTool(varo::Flags flags) {
    varo::Parser parser(flags);
    parser->action("scan", "", vtNull, "");
    parser->action("report", "", vtNull, "");
    parser->modifier("by", "scan", "", vtString, "")->allowValue("extension")->allowValue("dir");
    parser->option("color", "", vtBool, "");
    parser->option("count,n", "", vtU32, "")->defaultValue(3U);
    parser->option("path", "", vtString, "")->positional();
    parser->addOptionFileOption("", "");
    return parser;
}

/// How a word reads in the tables: what it is, the option, and what is wrong with it.
std::string show(WalkedWord const& word, varo_3_3::OptionFiles const& files) {
    static char const* const kKinds[] = {"option", "value", "positional", "marker",
                                         "plain",  "trace", "unknown",    "unreadable"};
    std::string shown = kKinds[word.kind];
    shown += word.isNegated ? " not" : "";
    shown += word.option != nullptr ? " " + std::string(word.option->firstName()) : "";
    shown += word.lacksValue ? " lacks value" : word.isWrong ? " wrong" : "";
    shown += " @";
    files.originOf(word.file, word.number).appendTo(shown);
    return shown;
}

std::string walk(varo::Parser const& parser, Arguments const& arguments) {
    std::vector<char const*> argv;
    for (std::string const& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    varo_3_3::ArgumentVector source(argv.data(), argv.size());
    Walk walked(*varo_3_3::basicParserOf(parser.interface()));
    walked.take(source);
    walked.takeOptionFiles();
    std::string shown;
    for (WalkedWord const& word : walked.words()) {
        shown += show(word, walked.files()) + "\n";
    }
    return shown;
}

}  // namespace

TEST(Walk, GoesOnAfterWrongWords) {
    varo::Parser const parser = makeTool(varo::kUnknownIsError | varo::kDashGuard);
    EXPECT_EQ(walk(parser, {"--sc", "--none", "src", "--count", "x", "--n=2", "--no-color", "--co",
                            "--by", "--color=1", "--count"}),
              "option scan @argument 1\n"
              "unknown wrong @argument 2\n"
              "positional path @argument 3\n"
              "option count @argument 4\n"
              "value count wrong @argument 5\n"
              "option count @argument 6\n"
              "option not color @argument 7\n"
              "option wrong @argument 8\n"
              "option by lacks value @argument 9\n"
              "option color wrong @argument 10\n"
              "option count lacks value @argument 11\n");
    EXPECT_EQ(walk(parser, {"varooption=varologenable=1", "--", "--scan", "--"}),
              "trace @argument 1\nmarker @argument 2\nplain @argument 3\nplain @argument 4\n");
    EXPECT_EQ(walk(makeTool(varo::kTakeTheRest), {"a", "--scan", "--"}),
              "positional path @argument 1\npositional path @argument 2\n"
              "positional path @argument 3\n");
    EXPECT_EQ(walk(makeTool(varo::kPositionalAfterMarker | varo::kDashGuard), {"--", "-x"}),
              "marker @argument 1\nplain path @argument 2\n");
}

TEST(Walk, ReadsOptionFiles) {
    Directory const directory;
    std::string const inner = directory.write("inner", "# comment\r\n\r\n--count=x\r\n--scan\n");
    std::string const outer =
        directory.write("outer", "\xEF\xBB\xBF--color\n\n--option-file\n" + inner + "\nsrc");
    EXPECT_EQ(walk(makeTool({}), {"a", "--option=" + outer, "--option-file", "none", "b"}),
              "positional path @argument 1\n"
              "option option-file @argument 2\n"
              "option option-file @argument 3\n"
              "value option-file @argument 4\n"
              "positional path @argument 5\n"
              "option color @" +
                  outer +
                  ":1, from argument 2\n"
                  "option option-file @" +
                  outer +
                  ":3, from argument 2\n"
                  "value option-file @" +
                  outer +
                  ":4, from argument 2\n"
                  "positional path @" +
                  outer +
                  ":5, from argument 2\n"
                  "unreadable wrong @none, from argument 3\n"
                  "option count wrong @" +
                  inner + ":3, from " + outer +
                  ":3, from argument 2\n"
                  "option scan @" +
                  inner + ":4, from " + outer + ":3, from argument 2\n");
}

TEST(Walk, LeavesNoTrace) {
    varo::Parser const parser = makeTool(varo::kUnknownIsError | varo::kDashGuard);
    RecordingHandler handler;
    Console const console;
    parser->addHandler(&handler);
    varo::Result result = parser.createResult();
    EXPECT_EQ(parse(parser, result, {"varooption=varologenable=1", "--none"}), varo::kParseError);
    std::string const events = handler.m_events;
    std::string const traced = console.text();
    int const position = varo_3_3::IArgumentParser::m_idx;
    walk(parser, {"--scan", "--none", "--count=x", "a", "--", "b"});
    EXPECT_EQ(console.text(), traced);
    EXPECT_TRUE(varo::internal::varoLogEnabled);
    EXPECT_EQ(varo_3_3::IArgumentParser::m_idx, position);
    EXPECT_EQ(handler.m_events, events);
    EXPECT_STREQ(parser.error(), "Unknown option: --none");
    varo::internal::varoLogEnabled = false;
}
