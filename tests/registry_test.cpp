#include "support.h"

namespace {

using namespace mosaic2;
using namespace varo_test;

TEST(Registry, CountsAndMeasuresNames) {
    struct Row {
        char const* names;
        char const* last;
        bool accepted;
    };
    for (Row const& row :
         {Row{"verbose", "verbose", true}, Row{"a,long-synonym", "long-synonym", true},
          Row{"a,b,cd", "cd", true}, Row{"a,b,cde", "cde", false}, Row{"a,b,c,d", "d", false},
          Row{"a,b,c,", "c", false}, Row{"a,,c", "", true}, Row{"", "", true}, Row{"a,", "", true},
          Row{"a, b", " b", true}, Row{nullptr, "", false}}) {
        SCOPED_TRACE(row.names != nullptr ? row.names : "null");
        varo::Parser const parser;
        EXPECT_TRUE(parser->option(row.names, nullptr, vtBool, nullptr));
        EXPECT_EQ(parser->isOptionDeclared(row.last, false, nullptr), row.accepted);
    }
}

TEST(Registry, RefusesNamesThatAreTaken) {
    varo::Parser const parser(varo::kUnknownIsError);
    varo::IOption* const placeholder = parser->option("a,b,c,d", "", vtBool, "");
    parser->option("verbose,v", "", vtBool, "");
    EXPECT_EQ(parser->action("verbose", "", vtNull, ""), placeholder);
    EXPECT_EQ(parser->option("no-v", "", vtS32, ""), placeholder);
    EXPECT_NE(parser->modifier("verbose", "run", "", vtS32, ""), placeholder);
    EXPECT_NE(parser->option("other", "", vtS32, "")->synonym(nullptr), placeholder);

    // The placeholder takes everything and means nothing.
    placeholder->synonym("ghost")->positional()->tokenize(':')->allowValue(1)->defaultValue(1);
    placeholder->allowDeprecatedValue(1, 2)->tag("run");
    EXPECT_FALSE(parser->isOptionDeclared("ghost", false, nullptr));
    check(parser, {{{"word"}, kParseError, "Unknown option: word"},
                   {{"--ghost"}, kParseError, "Unknown option: --ghost"}});
}

TEST(Registry, TracesDuplicatesAndNothingElse) {
    varo::Parser const parser;
    Console const console;
    varo_3_3::internal::varoLogEnabled = true;
    parser->option("verbose,v", "", vtBool, "");
    parser->option("verbose,v", "", vtBool, "");
    parser->option("a,b,c,d", "", vtBool, "");
    parser->setReplace(true);
    parser->option("verbose", "", vtBool, "");
    varo_3_3::internal::varoLogEnabled = false;
    parser->setReplace(false);
    parser->option("verbose", "", vtBool, "");
    EXPECT_EQ(console.text(),
              "Tried to register an option with a name, which is alread registered: verbose,v\n");
}

class DeclaringBuffer final : public std::streambuf {
public:
    explicit DeclaringBuffer(varo::Parser const& parser) : m_parser(parser) {}

private:
    std::streamsize xsputn(char const*, std::streamsize count) override {
        if (!std::exchange(m_isAsked, true)) {
            m_parser->option("nested", "", vtBool, "section 8");
        }
        return count;
    }

    varo::Parser const& m_parser;
    bool m_isAsked = false;
};

TEST(Registry, MayBeDeclaredIntoWhereItsTraceIsWritten) {
    varo::Parser const parser;
    for (int number = 0; number < 7; ++number) {
        std::string const name = "option" + std::to_string(number);
        std::string const section = "section " + std::to_string(number);
        parser->option(name.c_str(), "", vtBool, section.c_str());
    }
    DeclaringBuffer buffer(parser);
    std::streambuf* const old = BRIX::ucout.rdbuf(&buffer);
    varo_3_3::internal::varoLogEnabled = true;
    parser->option("option0", "", vtBool, "section 9");
    varo_3_3::internal::varoLogEnabled = false;
    BRIX::ucout.rdbuf(old);
    EXPECT_TRUE(parser->isOptionDeclared("nested", false, "section 8"));
    std::string const help = parser->getDescription(false);
    EXPECT_TRUE(help.ends_with("section 6\n\nsection 9\n\nsection 8\n\n")) << help;
}

TEST(Registry, ReplacesInPlace) {
    varo::Parser const parser(varo::kUnknownIsError);
    parser->option("first,f", "", vtString, "")->positional()->synonym("old")->defaultValue("x");
    parser->option("second", "", vtString, "")->positional();
    parser->setReplace(true);
    parser->option("new,f", "", vtS32, "")->positional();
    check(parser, {{{"7"}, kSuccess, "", "new", "s32 7"},
                   {{"-f=8"}, kSuccess, "", "new", "s32 8"},
                   {{}, kSuccess, "", "first", "absent"}});
    EXPECT_FALSE(parser->isOptionDeclared("first", false, nullptr));
    EXPECT_FALSE(parser->isOptionDeclared("old", false, nullptr));
    parser->setReplace(false);
    parser->option("new", "", vtString, "");
    EXPECT_NE(parser->option("first", "", vtString, ""), nullptr);
    check(parser, {{{"--new=9", "--first=a"}, kSuccess, "", "new", "s32 9"}});
}

TEST(Registry, AnswersWhatIsDeclared) {
    varo::Parser const parser;
    parser->action("scan,s", "", vtNull, "actions:What to do");
    parser->option("verbose,v", "", vtBool, "general")->synonym("loud");
    parser->modifier("depth", "scan", "", vtS32, "scanning:");
    struct Row {
        char const* name;
        bool action;
        char const* section;
        bool declared;
    };
    for (Row const& row :
         {Row{"scan", true, nullptr, true}, Row{"s", true, "actions", true},
          Row{"scan", false, nullptr, false}, Row{"scan", true, "general", false},
          Row{"verbose", true, nullptr, false}, Row{"loud", false, nullptr, true},
          Row{"v", false, "general", true}, Row{"v", false, "General", false},
          Row{"depth", false, "scanning", true}, Row{"depth", false, "scan", false},
          Row{"no-verbose", false, nullptr, false}, Row{"Verbose", false, nullptr, false},
          Row{"verb", false, nullptr, false}, Row{nullptr, false, nullptr, false}}) {
        SCOPED_TRACE(row.name != nullptr ? row.name : "null");
        EXPECT_EQ(parser->isOptionDeclared(row.name, row.action, row.section), row.declared);
    }
}

}  // namespace
