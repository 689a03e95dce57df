#include "varo/completion.h"

#include <chrono>

#include "recognizers/argument_parser.h"
#include "support.h"

using namespace mosaic2;
using namespace varo_test;

namespace {

/// The library's answer to the words after the program's name; "null" for none.
std::string ask(varo::IParser* parser, Arguments const& words,
                varo::ValueSource* source = nullptr) {
    std::vector<char const*> argv{"tool"};
    for (std::string const& word : words) {
        argv.push_back(word.c_str());
    }
    char const* const answer =
        varo::completion(parser, static_cast<int>(argv.size()), argv.data(), source);
    return answer != nullptr ? answer : "null";
}

/// What fish is offered for a line; "^" is the cursor.
std::string offers(varo::Parser const& parser, std::string const& line,
                   varo::ValueSource* source = nullptr) {
    std::size_t const cursor = line.find('^');
    return ask(parser.interface(),
               {"varooption=complete", "fish", "tool", "tool " + line.substr(0, cursor),
                line.substr(cursor + 1)},
               source);
}

varo::Parser makeTool(varo::Flags flags) {
    varo::Parser parser(flags);
    parser->action("scan", "Scan  it\tall\n", vtNull, "");
    parser->action("report", "", vtNull, "");
    parser->modifier("format,f", "report", "", vtString, "")
        ->synonym("form")
        ->allowValue("json")
        ->allowValue("java")
        ->allowValue("old")
        ->allowDeprecatedValue("old", "json");
    parser->modifier("depth", "scan", "", vtU32, "");
    parser->modifier("file", "scan", "", vtString, "")->positional();
    parser->option("color", "", vtBool, "");
    parser->option("secret", "", vtString, "varo_hidden")->allowValue("x");
    parser->addOptionFileOption("", "");
    return parser;
}

class Source final : public varo::ValueSource {
public:
    explicit Source(std::function<void(varo::ValueOffers&)> offer) : m_offer(std::move(offer)) {}
    void offer(char const* name, char const* typed, varo::ValueOffers& offers) override {
        m_asked += std::string(name) + ":" + typed + " ";
        m_offer(offers);
    }
    std::string m_asked;

private:
    std::function<void(varo::ValueOffers&)> m_offer;
};

}  // namespace

TEST(Completion, OffersWhatFitsTheLine) {
    varo::Parser const parser =
        makeTool(varo::kUnknownIsError | varo::kDashGuard | varo::kDoubleDashHelp);
    struct Row {
        char const* line;
        char const* offers;
    };
    Row const rows[] = {
        {"--s^", "word\t--scan\tScan it all\tactions\n"},
        {"-sc^", "word\t--scan\tScan it all\tactions\n"},
        {"\xE2\x80\x93sc^", "word\t--scan\tScan it all\tactions\n"},
        {"--s^ --report", ""},
        {"--report --f^",
         "part\t--format=\t\toptions\npart\t--f=\t\toptions\n"
         "part\t--form=\t\toptions\n"},
        {"--report -f^",
         "part\t--format=\t\toptions\npart\t-f=\t\toptions\n"
         "part\t--form=\t\toptions\n"},
        {"--report --de^", ""},
        {"--color --scan --no^", ""},
        {"--scan --no^", "word\t--no-color\t\toptions\n"},
        // Values, after abbreviated names too; in lists; never deprecated ones
        {"--report --form=^", "word\t--form=json\t\tvalues\nword\t--form=java\t\tvalues\n"},
        {"--report --f java,js^", "word\tjava,json\t\tvalues\n"},
        {"--report --format=o^", ""},
        {"--report --color=^", ""},
        {"--scan --format=j^", ""},
        {"--secret=^", ""},
        {"--secret ^", ""},
        // Files
        {"--option-file=a,^", "files\t--option-file=a,\t\n"},
        {"--scan a^", "files\t\ta\n"},
        {"--report a^", ""},
        {"--scan -- -^", "files\t\t-\n"},
        {"--scan >^", "files\t\t\n"},
        // What is wrong already is offered everything.
        {"--scan --report --de^", "part\t--depth=\t\toptions\n"},
        {"--scan --none --fo^", "part\t--format=\t\toptions\npart\t--form=\t\toptions\n"},
        {"--scan --format j^", "word\tjson\t\tvalues\nword\tjava\t\tvalues\n"},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(offers(parser, row.line), std::string(row.offers) + "end\n") << row.line;
    }
    varo::Parser const single = makeTool(varo::kUnknownIsError);
    EXPECT_EQ(offers(single, "-s^"), "word\t-scan\tScan it all\tactions\nend\n");
    EXPECT_EQ(offers(single, "--s^"), "word\t--scan\tScan it all\tactions\nend\n");

    varo::Parser const nameless(varo::kUnknownIsError);
    nameless->action("run", "", vtNull, "");
    nameless->option(",size", "", vtU32, "");
    nameless->modifier(",rate", "run", "", vtU32, "");
    EXPECT_EQ(offers(nameless, "--run --^"),
              "part\t--size=\t\toptions\npart\t--rate=\t\toptions\nend\n");
}

TEST(Completion, AsksTheProgramForValues) {
    varo::Parser const parser = makeTool(varo::kUnknownIsError);
    Source values([](varo::ValueOffers& offers) {
        for (char const* text : {"12", "1x", "2", "1\t", "", "12"}) {
            offers.value(text, "an\nexample");
        }
        offers.value(nullptr, nullptr);
    });
    EXPECT_EQ(offers(parser, "--scan --depth=1^", &values),
              "word\t--depth=12\tan example\tvalues\nend\n");
    EXPECT_EQ(values.m_asked, "depth:1 ");
    Source directories([](varo::ValueOffers& offers) { offers.directories(); });
    EXPECT_EQ(offers(parser, "--scan a^", &directories), "directories\t\ta\nend\n");
    Source nothing([](varo::ValueOffers&) {});
    EXPECT_EQ(offers(parser, "--scan a^", &nothing), "files\t\ta\nend\n");
    Source throwing([](varo::ValueOffers&) { throw 1; });
    EXPECT_EQ(offers(parser, "--scan a^", &throwing), "");
}

TEST(Completion, AnswersWholeQuestionsOnly) {
    varo::Parser const parser = makeTool(varo::kUnknownIsError);
    varo::IParser* const asked = parser.interface();
    std::string const complete = "varooption=complete";
    std::string const script = "varooption=script";
    for (Arguments const& words :
         std::vector<Arguments>{{}, {"--scan"}, {"--scan", complete, "fish"}, {complete + "="}}) {
        EXPECT_EQ(ask(asked, words), "null");
    }
    for (Arguments const& words : std::vector<Arguments>{{complete},
                                                         {complete, "sh", "tool", "tool ", "", ""},
                                                         {complete, "fish", "tool", "tool "},
                                                         {complete, "bash", "tool", "tool ", ""},
                                                         {script, "bash"},
                                                         {script, "ksh", "tool"},
                                                         {script, "bash", ""},
                                                         {script, "bash", "-tool"},
                                                         {script, "bash", "tool; touch x"},
                                                         {script, "bash", "$(touch x)"},
                                                         {script, "bash", "\xC3\xBC"}}) {
        EXPECT_EQ(ask(asked, words), "");
    }
    EXPECT_EQ(ask(nullptr, {script, "bash", "tool"}), "");
    EXPECT_EQ(ask(asked, {complete, "zsh", "tool", "tool --rep", "", "", "of a later release"}),
              "word\t--report\t\tactions\nend\n");
    for (char const* shell : {"bash", "zsh", "fish"}) {
        std::string const stub = ask(asked, {script, shell, "a-b.c+d"});
        EXPECT_NE(stub.find("varooption=complete " + std::string(shell) + " a-b.c+d"),
                  std::string::npos);
        EXPECT_EQ(stub.find("@NAME@"), std::string::npos);
    }
    char const* const withNull[] = {"tool", complete.c_str(), "fish", "tool", nullptr, ""};
    EXPECT_STREQ(varo::completion(asked, 6, withNull, nullptr), "");
}

TEST(Completion, LeavesNoTrace) {
    varo::Parser const parser = makeTool(varo::kUnknownIsError);
    RecordingHandler handler;
    parser->addHandler(&handler);
    varo::Result none;
    EXPECT_EQ(parse(parser, none, {"--wrong"}), varo::kParseError);
    handler.m_events.clear();
    std::string const error = parser.error();
    int const position = varo_3_3::IArgumentParser::m_idx;
    Console const console;
    offers(parser, "--scan --wrong a ^ --color");
    EXPECT_EQ(handler.m_events, "");
    EXPECT_EQ(parser.error(), error);
    EXPECT_EQ(varo_3_3::IArgumentParser::m_idx, position);
    EXPECT_EQ(console.text(), "");
}

TEST(Completion, GivesBashFinishedWords) {
    varo::Parser parser(varo::kUnknownIsError);
    parser->option("name", "", vtString, "")->allowValue("a:b c")->allowValue("a:d'e");
    parser->option("plain", "", vtNull, "");
    auto const answer = [&](std::string const& line) {
        return ask(parser.interface(),
                   {"varooption=complete", "bash", "tool", "tool " + line, "", " \t\n\"'><=;|&(:"});
    };
    EXPECT_EQ(answer("-"), "nospace\npart\t-name=\nword\t-plain \nend\n");
    EXPECT_EQ(answer("-name=a:b"), "word\tb\\ c\nend\n");
    EXPECT_EQ(answer("-name=\"a:d"), "word\ta:d'e\nend\n");
    EXPECT_EQ(answer("-name='a:d"), "word\ta:d'\\''e\nend\n");
    EXPECT_EQ(answer("\"-name=a:b"), "word\t-name=a:b c\nend\n");
    EXPECT_EQ(answer("> $'\\x01"), "end\n");
    EXPECT_EQ(answer("> 'a b"), "files\ta b\ta b\t'\t''a b\nend\n");
}

TEST(Completion, TakesTimeInWhatIsDeclared) {
    varo::Parser parser(varo::kUnknownIsError);
    std::string line;
    for (int number = 0; number < 8000; ++number) {
        std::string const text = std::to_string(number);
        parser->action(("act" + text).c_str(), "", vtNull, "");
        parser->option(("opt" + text).c_str(), "", vtNull, "");
        line += "--opt" + text + " ";
    }
    auto const start = std::chrono::steady_clock::now();
    EXPECT_NE(offers(parser, line + "--^"), "null");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}
