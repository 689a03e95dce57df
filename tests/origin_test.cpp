#include "support.h"
#include "varo/assist.h"

using namespace mosaic2;
using namespace varo_test;

namespace {

varo::Parser makeTool(varo::Flags flags = varo::kUnknownIsError | varo::kDashGuard) {
    varo::Parser parser(flags);
    parser->action("scan", "", vtNull, "");
    parser->action("report", "", vtNull, "");
    parser->modifier("depth", "scan", "", vtU32, "");
    parser->option("path", "", vtString, "")->positional();
    parser->addOptionFileOption("", "");
    return parser;
}

/// Where a parse of `arguments` fails.
std::string origin(varo::Parser const& parser, Arguments const& arguments) {
    varo::Result result = parser.createResult();
    EXPECT_NE(parse(parser, result, arguments), varo::kSuccess);
    std::string const error = parser.error();
    std::string origin = varo::errorOrigin(parser.interface());
    EXPECT_EQ(parser.error(), error);
    return origin;
}

}  // namespace

TEST(ErrorOrigin, TellsTheArgument) {
    varo::Parser const parser = makeTool();
    EXPECT_EQ(origin(parser, {"--scan", "--none"}), "argument 2");
    EXPECT_EQ(origin(parser, {"--depth", "x"}), "argument 1");
    EXPECT_EQ(origin(parser, {"a", "--report", "b", "--depth=1"}), "argument 4");
    EXPECT_EQ(origin(parser, {"--report", "a", "--scan"}), "argument 3");
    EXPECT_EQ(origin(parser, {"--scan", "a", "--report"}), "argument 3");
    EXPECT_EQ(origin(parser, {"a"}), "");  // no action: no argument is to blame
    EXPECT_EQ(origin(parser, {"a", "--option-file", "missing"}), "argument 2");
    for (Arguments const& fitting : {Arguments{}, Arguments{"--scan"}}) {
        EXPECT_EQ(origin(parser, {"--none"}), "argument 1");
        varo::Result result = parser.createResult();
        EXPECT_EQ(parse(parser, result, fitting), varo::kSuccess);
        EXPECT_STREQ(varo::errorOrigin(parser.interface()), "");
    }
    EXPECT_STREQ(varo::errorOrigin(nullptr), "");

    varo::Parser const strict = makeTool(varo::kPositionalAfterMarker | varo::kTakeTheRest);
    strict->option("number", "", vtU32, "")->positional();  // only the first one takes anything
    RecordingHandler handler;
    handler.m_reaction = [](std::string const& event) { return event != "value path=c"; };
    strict->addHandler(&handler);
    EXPECT_EQ(origin(strict, {"--scan", "--", "a", "b", "c"}), "argument 5");
    EXPECT_EQ(origin(strict, {"--scan", "a", "--", "c"}), "argument 4");
    handler.m_reaction = [](std::string const&) -> bool { throw std::bad_alloc(); };
    EXPECT_EQ(strict->parseStream("--scan", nullptr), varo::kUnidentifiedProblem);
    EXPECT_STREQ(varo::errorOrigin(strict.interface()), "");
}

TEST(ErrorOrigin, TellsTheLineOfAText) {
    varo::Parser const parser = makeTool();
    varo::Result result = parser.createResult();
    for (char const* text : {"--scan\r\n\r\n# --none\r\n  --none\r\n--scan", "\n\n\n--none",
                             "--scan\n\n\n--report", "--depth=1\n--scan\n;\n--report"}) {
        EXPECT_NE(parser->parseStream(text, result.interface()), varo::kSuccess);
        EXPECT_STREQ(varo::errorOrigin(parser.interface()), "text:4") << text;
        result = parser.createResult();
    }
}

TEST(ErrorOrigin, TellsTheChainOfFiles) {
    Directory const directory;
    std::string const inner = directory.write("inner\x1b", "\xEF\xBB\xBF\n\n--none\n");
    std::string const deep = directory.write("deep", "# comment\n--depth=1\n");
    std::string const outer = directory.write(
        "out\ner", "--scan\r\n\r\n--option-file=" + deep + "\r\n--option-file=" + inner + "\r\n");
    varo::Parser const parser = makeTool();
    EXPECT_EQ(origin(parser, {"a", "--option-file", outer}),
              inner + ":3, from " + outer + ":4, from argument 2");
    EXPECT_EQ(origin(parser, {"--report", "--option-file=" + deep, "--option-file=" + deep}),
              deep + ":2, from argument 2");
    EXPECT_EQ(origin(parser, {"--option-file=" + directory.write("bad", "\n--option-file=none")}),
              directory.path("bad") + ":2, from argument 1");
    varo::Parser const withDefault(varo::kUnknownIsError);
    withDefault->option("option-file", "", vtString, "")->defaultValue(inner.c_str());
    withDefault->addOptionFileOption("", "");
    EXPECT_EQ(origin(withDefault, {"--"}), inner + ":3, from a default");
    // In a file that was read before others.
    std::string const last = directory.write("last", "--report\n");
    EXPECT_EQ(origin(parser, {"--report", "--option-file=" + deep, "--option-file=" + last}),
              deep + ":2, from argument 2");
    EXPECT_EQ(origin(parser, {"--report", "--option-file=" + last, "--option-file=" + deep}),
              deep + ":2, from argument 3");
}

TEST(ErrorOrigin, FollowsAThousandFiles) {
    Directory const directory;
    std::string expected;
    for (int file = 0; file < 1000; ++file) {
        std::string const path = directory.path(std::to_string(file));
        expected.insert(0, path + ":2, from ");
        directory.write(std::to_string(file),
                        file < 999 ? "\n--option-file=" + directory.path(std::to_string(file + 1))
                                   : "\n--none");
    }
    EXPECT_EQ(origin(makeTool(), {"--option-file=" + directory.path("0")}),
              expected + "argument 1");
}
