#include <chrono>

#include "support.h"
#include "varo/assist.h"

using namespace mosaic2;
using namespace varo_test;

namespace {

varo::Parser makeTool(varo::Flags flags = varo::kUnknownIsError | varo::kDashGuard) {
    varo::Parser parser(flags);
    parser->action("scan", "", vtNull, "");
    parser->action("report", "", vtNull, "");
    parser->action("help,h", "", vtNull, "");
    parser->action("expert", "", vtNull, "varo_hidden");
    parser->allowSimultaneousActions({"help", "scan"});
    parser->modifier("path", "scan,report", "", vtString, "")->positional();
    parser->modifier("depth", "scan", "", vtU32, "");
    parser->modifier("by", "scan,report", "", vtString, "")
        ->allowValue("extension")
        ->allowValue("directory");
    parser->modifier("format,f", "scan,report", "", vtString, "")
        ->allowValue("table")
        ->allowValue("csv")
        ->allowValue("json");
    parser->option("color", "", vtBool, "");
    parser->option("count", "", vtS32, "");
    parser->option("secret", "", vtBool, "varo_hidden");
    return parser;
}

/// What is suggested after `arguments`, on which the parse fails.
std::string suggest(varo::Parser const& parser, Arguments const& arguments) {
    varo::Result result = parser.createResult();
    parse(parser, result, arguments);
    std::string const error = parser.error();
    std::string suggestion = varo::suggestion(parser.interface());
    EXPECT_EQ(parser.error(), error);
    return suggestion;
}

}  // namespace

TEST(Suggestion, TellsWhatWasMeant) {
    varo::Parser const parser = makeTool();
    struct Row {
        Arguments arguments;
        char const* suggestion;
    };
    for (auto const& [arguments, suggestion] : std::vector<Row>{
             // An unknown name: dashes, "no-", value and all
             {{"--scan", "--fromat=json"}, "Did you mean '--format=json'?"},
             {{"--scan", "-fromat"}, "Did you mean '-format'?"},
             {{"--scan", "-—no-colro"}, "Did you mean '-—no-color'?"},
             {{"--scan", "---color"}, "Did you mean '--color'?"},
             {{"--scan", "--FORMAT=csv"}, "Did you mean '--format=csv'?"},
             {{"--scan", "--cuont"}, "Did you mean '--count'?"},
             {{"--scan", "--coulo"}, "Did you mean '--color'?"},
             {{"--scan", "--coort"}, "Did you mean '--color' or '--count'?"},
             {{"--scan", "--paht=a\nb"}, "Did you mean '--path=a\\nb'?"},
             {{"--scan", "--formt=" + std::string(200, 'x')}, "Did you mean '--format'?"},
             // ... but no value that is wrong as well
             {{"--scan", "--fromat=jsn"}, "Did you mean '--format'?"},
             {{"--scna=3"}, "Did you mean '--scan'?"},
             {{"--scan", "--coulor=off"}, "Did you mean '--no-color'?"},
             {{"--scan", "--no-coulor=off"}, "Did you mean '--color'?"},
             {{"--scan", "--coulor=red"}, "Did you mean '--color'?"},
             {{"--scan", "--quite"}, ""},
             {{"--scan", "-x"}, ""},
             {{"--scan", "--secrte"}, ""},
             {{"--exprt"}, ""},
             // Of another action
             {{"--report", "--dpeth=2"}, "'--depth' belongs to '--scan', not to '--report'."},
             {{"--dpeth=2", "--report"}, "'--depth' belongs to '--scan', not to '--report'."},
             {{"--report", "--depth=2"}, "'--depth' belongs to '--scan', not to '--report'."},
             {{"--depth=2", "--help"}, "'--depth' belongs to '--scan', not to '--help'."},
             {{"--by=dir", "--help"}, "'--by' belongs to '--scan' or '--report', not to '--help'."},
             {{"--sacn"}, "Did you mean '--scan'?"},
             {{"--scan", "--reprot"}, ""},
             {{"--scan", "--hepl"}, "Did you mean '--help'?"},
             {{"--scan", "--report"}, ""},
             // Values
             {{"--scan", "--format=jsno"}, "Did you mean 'json'?"},
             {{"--scan", "--format", "CSB"}, "Did you mean 'csv'?"},
             {{"--scan", "--format=csv,tabel,x"}, "Did you mean 'table'?"},
             {{"--scan", "--by=x"}, ""},
             {{"--scan", "--count=x"}, ""},
             {{"--scan", "--count", "-5"}, "Write '--count=-5'."},
             {{"--scan", "--cou", "-5"}, "Write '--cou=-5'."},
             {{"--scan", "--count=", "-5"}, "Write '--count=-5'."},
             {{"--scan", "--path", "-" + std::string(5000, 'x')}, ""},
             {{"--scan", "--count", "-x"}, ""},
             {{"--scan", "--count", "--color"}, ""},
             {{"--scan", "--count", "--"}, ""},
             {{"--scan", "--count"}, ""},
             {{"--scan", "--color=yes"}, "Write '--color'."},
             {{"--scan", "-col=off"}, "Write '-no-color'."},
             {{"--scan", "--no-col=false"}, "Write '--color'."},
             {{"--scan", "--color=auto"}, ""},
             {{"--scan", "--co"}, ""},
             // Actions
             {{"--depth=1"}, "Add '--scan'."},
             {{"a"}, "Add '--scan' or '--report'."},
             {{"--color"}, "Add '--scan' or '--report'."},
             {{"scna", "src"}, "Did you mean '--scan'?"},
             {{"scan", "src"}, "Did you mean '--scan'?"},
             // Nothing is wrong, or not by the arguments
             {{"--scan"}, ""},
         }) {
        SCOPED_TRACE(arguments.back());
        EXPECT_EQ(suggest(parser, arguments), suggestion);
    }
    EXPECT_STREQ(varo::suggestion(nullptr), "");
    RecordingHandler handler;
    handler.m_reaction = [](std::string const&) { return false; };
    parser->addHandler(&handler);
    EXPECT_EQ(suggest(parser, {"--scan", "--count=1"}), "");
}

TEST(Suggestion, KnowsWhereItIsOnTheLine) {
    varo::Parser parser(varo::kUnknownIsError | varo::kTakeTheRest | varo::kPositionalAfterMarker);
    parser->option("mode", "", vtString, "")->positional()->allowValue("fast")->allowValue("safe");
    parser->option("count", "", vtS32, "");
    EXPECT_EQ(suggest(parser, {"fast", "-fats"}), "Did you mean 'fast'?");
    EXPECT_EQ(suggest(parser, {"fast", "fats"}), "Did you mean 'fast'?");
    EXPECT_EQ(suggest(parser, {"--count=1", "--", "fast", "saef"}), "Did you mean 'safe'?");
    EXPECT_EQ(suggest(parser, {"fast", "--count", "-1"}), "");
}

TEST(Suggestion, ProposesOnlyWhatIsTaken) {
    varo::Parser parser(varo::kUnknownIsError | varo::kDashGuard);
    parser->option("no-cache", "", vtBool, "");
    parser->option("out put", "", vtBool, "");
    parser->option("-x", "", vtU32, "");
    parser->action("report", "", vtNull, "");
    parser->action("scan", "", vtString, "")->defaultValue("all");
    EXPECT_EQ(suggest(parser, {"--no-cache=yes"}), "");
    EXPECT_EQ(suggest(parser, {"--out put=yes"}), "");
    EXPECT_EQ(suggest(parser, {"--out"}), "");
    EXPECT_EQ(suggest(parser, {"-j-x"}), "");
    EXPECT_EQ(suggest(parser, {"--reprt"}), "");
}

TEST(Suggestion, OffersMissingActionsInTheirPlaces) {
    varo::Parser parser(varo::kUnknownIsError | varo::kTakeTheRest);
    parser->option("path", "", vtString, "")->positional();
    parser->action("scan", "", vtNull, "");
    parser->action("depth", "", vtU32, "");
    EXPECT_EQ(suggest(parser, {"x", "--scan"}), "Add '--scan' or '--depth='.");
    EXPECT_EQ(suggest(parser, {"x", "--sacn"}), "Did you mean '--scan'?");
}

TEST(Suggestion, TakesTimeInWhatIsDeclared) {
    varo::Parser parser(varo::kUnknownIsError);
    Arguments arguments;
    for (int number = 0; number < 8000; ++number) {
        std::string const text = std::to_string(number);
        parser->action(("act" + text).c_str(), "", vtNull, "");
        parser->option(("opt" + text).c_str(), "", vtNull, "");
        arguments.push_back("--opt" + text);
    }
    auto const start = std::chrono::steady_clock::now();
    EXPECT_EQ(suggest(parser, arguments), "Add an action, such as '--act0', '--act1' or '--act2'.");
    arguments.push_back("--atc8");
    EXPECT_NE(suggest(parser, arguments), "");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}
