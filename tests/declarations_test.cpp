#include "varo/documents.h"

#include "support.h"

namespace {

using namespace varo_test;
using namespace mosaic2;

std::string list(char const* const* texts, int count) {
    std::string shown;
    for (int number = 0; number < count; ++number) {
        shown += std::string(texts[number]) + "|";
    }
    return shown;
}

/// A line for each declaration: everything that differs from a plain string option.
std::string walk(varo::Parser const& parser) {
    std::string shown;
    varo::Declaration const* declaration = nullptr;
    while ((declaration = varo::nextDeclaration(parser.interface(), declaration)) != nullptr) {
        varo::Declaration const& it = *declaration;
        EXPECT_EQ(it.size, static_cast<int>(sizeof(it)));
        shown += std::to_string(it.index) + " " + "oam"[it.kind] + std::to_string(it.type) + " ";
        shown += list(it.names, it.nameCount) + " {" + list(it.actions, it.actionCount) + "} ";
        shown += std::string(it.description) + " <" + it.typeName + "> ";
        shown += std::to_string(it.sectionNumber) + it.section + ":" + it.sectionText;
        for (int number = 0; number < it.allowedCount; ++number) {
            shown += std::string(" =") + it.allowed[number].text;
            EXPECT_TRUE(it.allowed[number].value != nullptr);
        }
        for (int number = 0; number < it.deprecatedCount; ++number) {
            shown += std::string(" ") + it.deprecated[number].deprecated.text + "->" +
                     show(*it.deprecated[number].replacement.value);
        }
        if (it.defaultValue.value != nullptr) {
            shown += std::string(" (") + it.defaultValue.text + ")";
        }
        shown += it.separator != ',' ? " separator " + std::to_string(it.separator) : "";
        shown += it.isPositional != 0 ? " positional" : "";
        shown += it.isHidden != 0 ? " hidden" : "";
        shown += it.readsFiles != 0 ? " files" : "";
        shown += "\n";
    }
    return shown;
}

TEST(Declarations, AreWalkedWithAllThatWasDeclared) {
    varo::Parser const parser;
    EXPECT_EQ(walk(parser), "");
    parser->option("a,b,c,d", "Refused", vtString, "first:Of a refused one");
    parser->option("level,l", "Depth", vtS32, "main:Text")->defaultValue(3)->tokenize('\xff');
    parser->action("run,r", "Runs", vtNull, "varo_hidden")->tag("also");
    parser->modifier("mode", "run,also", nullptr, vtString, "main:Other")
        ->allowValue("x")
        ->allowValue(1.5)
        ->allowDeprecatedValue("old", "new")
        ->positional();
    parser->option("option-file", "Mine", vtString, "first");
    std::string const expected =
        "0 o6 level|l| {} Depth <integer> 1main:Other (3) separator 255\n"
        "1 a17 run|r| {also|r|run|} Runs <> 2varo_hidden: hidden\n"
        "2 m12 mode| {also|run|}  <string> 1main:Other =x =1.5 old->'new' positional\n"
        "3 o12 option-file| {} Mine <string> 0first:";
    EXPECT_EQ(walk(parser), expected + "\n");
    parser->addOptionFileOption("", "");
    EXPECT_EQ(walk(parser), expected + " files\n");
}

// A host may declare, refine and replace during a walk, and walk within a walk.
TEST(Declarations, ChangesShowInTheNextWalk) {
    varo::Parser const parser(varo::kKeepCommas);
    varo::IOption* const first = parser->option("first", "", vtBool, "");
    parser->option("second", "", vtBool, "");
    varo::Declaration const* const walked = varo::nextDeclaration(parser.interface(), nullptr);
    first->synonym("a-name-that-does-not-fit-into-a-string-object")->defaultValue(true);
    parser->option("third", "", vtBool, "");
    parser->setReplace(true);
    parser->option("second", "New", vtU64, "");
    varo::Declaration const* const last = varo::nextDeclaration(parser.interface(), walked);
    EXPECT_EQ(varo::nextDeclaration(parser.interface(), last), nullptr);
    EXPECT_EQ(
        walk(parser),
        "0 o0 first|a-name-that-does-not-fit-into-a-string-object| {}  <> 0: (1) separator 0\n"
        "1 o9 second| {} New <unsigned 64 bit or hex> 0: separator 0\n"
        "2 o0 third| {}  <> 0: separator 0\n");
    EXPECT_EQ(varo::nextDeclaration(parser.interface(), nullptr), walked);
    EXPECT_STREQ(last->description, "New");
}

TEST(Declarations, ActionsThatGoTogetherAndFlags) {
    varo::Parser const parser(varo::kTakeTheRest | varo::kDashGuard);
    EXPECT_EQ(varo::nextActionGroup(parser.interface(), nullptr), nullptr);
    parser->allowSimultaneousActions({"run", "a-name-that-does-not-fit-into-a-string-object"});
    varo::ActionGroup const* const first = varo::nextActionGroup(parser.interface(), nullptr);
    parser->allowSimultaneousActions({});
    EXPECT_EQ(first, varo::nextActionGroup(parser.interface(), nullptr));
    varo::ActionGroup const* const second = varo::nextActionGroup(parser.interface(), first);
    EXPECT_EQ(list(first->actions, first->actionCount),
              "a-name-that-does-not-fit-into-a-string-object|run|");
    EXPECT_EQ(second->actionCount, 0);
    EXPECT_EQ(varo::nextActionGroup(parser.interface(), second), nullptr);
    EXPECT_EQ(varo::creationFlags(parser.interface()), varo::kTakeTheRest | varo::kDashGuard);
}

TEST(Declarations, OtherParsersAndWalksOfOthersHaveNone) {
    varo::Parser const parser;
    varo::Parser const other;
    parser->option("a", "", vtBool, "");
    parser->option("b", "", vtBool, "");
    varo::Declaration const* const first = varo::nextDeclaration(parser.interface(), nullptr);
    EXPECT_EQ(varo::nextDeclaration(other.interface(), first), nullptr);
    EXPECT_EQ(varo::nextDeclaration(nullptr, first), nullptr);
}

/// Another implementation of the interface, which nothing is asked of.
class OtherParser final : public varo::IParser {
    void destroy() override {}
    int createResult(varo::IParseResult**) override { return 1; }
    varo::IOption* option(char const*, char const*, das_variant_type_t, char const*) override {
        return nullptr;
    }
    varo::IOption* action(char const*, char const*, das_variant_type_t, char const*) override {
        return nullptr;
    }
    varo::IOption* modifier(char const*, char const*, char const*, das_variant_type_t,
                            char const*) override {
        return nullptr;
    }
    bool isOptionDeclared(char const*, bool, char const*) override { return true; }
    int parseArgsVector(int, char const* const*, varo::IParseResult*) override { return 0; }
    int parseStream(char const*, varo::IParseResult*) override { return 0; }
    char const* getErrorDesc() override { return "other"; }
    char const* getDescription(bool) override { return "other"; }
    char const* getDescription(char const*, bool) override { return "other"; }
    char const* getActionModifiersDescription(char const*, bool) override { return "other"; }
    char const* getGlobalModifiersDescription(bool) override { return "other"; }
    bool addHandler(varo::EventHandler*) override { return true; }
    bool removeHandler(varo::EventHandler*) override { return true; }
    bool addOptionFileOption(char const*, char const*) override { return true; }
    int allowSimultaneousActions(std::set<std::string> const&) override { return 0; }
    void setReplace(bool) override {}
};

/// All that is written of a parser.
std::vector<std::string> documents(varo::IParser* parser, varo::IParseResult* result) {
    varo::Manual about;
    about.name = "tool";
    about.summary = "summary";
    about.date = "2026-11-21";
    return {varo::toOptionFile(parser, result), varo::describeJson(parser),
            varo::helpText(parser, nullptr), varo::manual(parser, &about, varo::kManualPage),
            varo::manual(parser, &about, varo::kManualMarkdown)};
}

TEST(Documents, AreWholeHoweverMuchIsDeclared) {
#ifdef _GLIBCXX_DEBUG  // whose searches look at every element
    constexpr int kMany = 1000;
#else
    constexpr int kMany = 100'000;
#endif
    for (auto const& [declarations, words] : {std::pair(kMany, 1), std::pair(1, 2'000'000)}) {
        varo::Parser const parser;
        std::string description = "begin";
        for (int word = 0; word < words; ++word) {
            description += " word";
        }
        description += " end";
        for (int number = 0; number < declarations; ++number) {
            std::string const name = "name" + std::to_string(number);
            parser->option(name.c_str(), description.c_str(), vtS32, "")->defaultValue(number);
        }
        varo::Result result = parser.createResult();
        ASSERT_EQ(parse(parser, result, {}), varo::kSuccess);
        std::string const last = "name" + std::to_string(declarations - 1);
        for (std::string const& text : documents(parser.interface(), result.interface())) {
            SCOPED_TRACE(text.substr(0, 100));
            bool const isOptionFile = text.find("# What was given") == 0;
            EXPECT_NE(text.find(last), text.npos);
            EXPECT_EQ(text.back(), '\n');
            for (char const* const piece : {"begin", "end"}) {
                std::size_t count = 0;
                for (auto at = text.find(piece); at != text.npos; at = text.find(piece, at + 1)) {
                    ++count;
                }
                EXPECT_EQ(count, isOptionFile ? 0 : declarations) << piece;
            }
        }
    }
}

TEST(Documents, OfOtherParsersAreEmpty) {
    OtherParser other;
    varo::Result const none;
    for (varo::IParser* const parser : {static_cast<varo::IParser*>(&other), {}}) {
        EXPECT_EQ(documents(parser, none.interface()), std::vector<std::string>(5));
        EXPECT_EQ(varo::nextDeclaration(parser, nullptr), nullptr);
        EXPECT_EQ(varo::nextActionGroup(parser, nullptr), nullptr);
        EXPECT_EQ(varo::creationFlags(parser), -1);
    }
}

}  // namespace
