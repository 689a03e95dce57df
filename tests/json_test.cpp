#include <set>

#include "json_tree.h"
#include "read_json.h"
#include "support.h"
#include "varo/documents.h"

using namespace varo_test;
using namespace mosaic2;
using clidiff::Node;

namespace {

Node describe(varo::Parser const& parser) {
    return clidiff::readTree(varo::describeJson(parser.interface()));
}

TEST(Json, TellsEverythingInTheOrderOfTheDeclarations) {
    varo::Parser const parser(varo::kUnknownIsError | varo::kDoubleDashHelp);
    parser->action("scan,s", "Sums up", vtNull, "main:Main \"part\"\n");
    parser->modifier("by", "scan,report", "", vtString, "varo_hidden")
        ->allowValue("a,b")
        ->allowValue(1.5)
        ->allowDeprecatedValue("old", 7)
        ->defaultValue("a,b")
        ->tokenize('\xE9')
        ->positional();
    parser->option("color", "", vtBool, "main")->defaultValue(false);
    parser->addOptionFileOption("", "");
    parser->allowSimultaneousActions({"scan", "help"});
    EXPECT_EQ(std::string(varo::describeJson(parser.interface())),
              varo_test::expected("command_line.json"));
}

TEST(Json, KeepsEveryByteOfANameAndIsValidForAnyText) {
    std::vector<std::string> const names = {
        "\xC3\xA9t\xC3\xA9",              // two accents
        "caf\xE9",                        // not UTF-8
        "\xED\xA0\x80",      "\xC0\x80",  // a surrogate, a form that is too long
        "\xF4\x90\x80\x80",  "\xE2\x82",  // too large, cut
        "\xF0\x9F\x98\x80",  "\x01\x1F\x7F\"\\/"};
    varo::Parser const parser;
    for (std::string const& name : names) {
        parser->option(name.c_str(), (name + "\xFF").c_str(), vtString, name.c_str())
            ->allowValue(name.c_str())
            ->defaultValue(name.c_str());
    }
    clidiff::CommandLine const line = clidiff::readJson(varo::describeJson(parser.interface()));
    ASSERT_EQ(line.declarations.size(), names.size());
    for (std::size_t number = 0; number < names.size(); ++number) {
        EXPECT_EQ(line.declarations[number].names.front(), names[number]);
        EXPECT_EQ(line.declarations[number].defaultValue->text, names[number]);
    }
    Node const root = describe(parser);
    Node const& broken = root.find("declarations")->members[1].second;
    EXPECT_EQ(broken.find("section")->find("text")->text, "caf\xEF\xBF\xBD");
}

TEST(Json, ShortestBeginningMeansItsNameAndAShorterOneDoesNot) {
    varo::Parser const parser(varo::kUnknownIsError);
    for (char const* const names :
         {"verbose,v", "version", "ver", "node", "\xC3\xA9", "\xC3\xA8"}) {
        parser->option(names, "", vtNull, "");
    }
    parser->option("level,lev", "", vtBool, "");
    parser->option("colour", "", vtBool, "")->synonym("color");
    Node const root = describe(parser);
    varo::Result none;
    for (auto const& [unnamed, declaration] : root.find("declarations")->members) {
        for (auto const& [alsoUnnamed, name] : declaration.find("names")->members) {
            for (auto const& [member, beginning] : name.members) {
                SCOPED_TRACE(beginning.text);
                if (member == "name") {
                    continue;
                }
                EXPECT_EQ(parse(parser, none, {"--" + beginning.text}), varo::kSuccess);
                std::string shorter = beginning.text;
                shorter.pop_back();
                bool const isName = parser->isOptionDeclared(shorter.c_str(), false, nullptr);
                if (!shorter.empty() && !isName && shorter != "no-lev") {
                    EXPECT_EQ(parse(parser, none, {"--" + shorter}), varo::kParseError);
                }
            }
        }
    }
    EXPECT_STREQ(varo::describeJson(nullptr), "");
}

}  // namespace
