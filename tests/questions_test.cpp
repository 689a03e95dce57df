#include "support.h"
#include "varo/assist.h"

namespace {

using namespace mosaic2;
using namespace varo_test;

/// Calls `ask(argc, argv)` with the arguments after a program name.
template <class Ask>
auto askWith(Arguments const& arguments, Ask ask) {
    std::vector<char const*> argv{"tool"};
    for (std::string const& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    return ask(static_cast<int>(argv.size()), argv.data());
}

varo::Parser makeParser(varo::Flags flags) {
    varo::Parser parser(flags);
    parser->option("help,h", "", vtNull, "");
    parser->option("verbose", "", vtBool, "");
    parser->option("title", "", vtString, "");
    parser->option("level", "", vtS32, "");
    parser->option("file", "", vtString, "")->positional();
    return parser;
}

TEST(Questions, HelpIsAskedForBesideMistakes) {
    struct Row {
        Arguments arguments;
        bool isAsked;
        bool isAskedWithTheRest;  // under kTakeTheRest
    };
    Row const rows[] = {
        {{}, false, false},
        {{"--help"}, true, true},
        {{"-h"}, true, true},
        {{"--he"}, true, true},
        {{"--unheard", "--help"}, true, true},
        {{"--level=x", "--help"}, true, true},
        {{"--help", "--level"}, true, true},
        {{"--level", "--help"}, true, true},  // not a value: it looks like an option, and is one
        {{"file", "--help"}, true, false},
        {{"--", "--help"}, false, false},
        {{"--title=--help"}, false, false},
        {{"--title", "help"}, false, false},
        {{"--help=now"}, false, false},
        {{"--helper"}, false, false},
        {{"help"}, false, false},
    };
    varo::Flags const flags = varo::kUnknownIsError | varo::kDashGuard;
    varo::Parser const plain = makeParser(flags);
    varo::Parser const rest = makeParser(flags | varo::kTakeTheRest);
    RecordingHandler handler;
    plain->addHandler(&handler);
    for (Row const& row : rows) {
        SCOPED_TRACE(row.arguments.empty() ? "" : row.arguments.front());
        auto const isAsked = [&](varo::Parser const& parser, char const* name) {
            return askWith(row.arguments, [&](int argc, char const* const* argv) {
                return varo::isAskedFor(parser.interface(), argc, argv, name);
            });
        };
        EXPECT_EQ(isAsked(plain, "help"), row.isAsked);
        EXPECT_EQ(isAsked(plain, "h"), row.isAsked);
        EXPECT_EQ(isAsked(rest, "help"), row.isAskedWithTheRest);
        EXPECT_FALSE(isAsked(plain, "unheard") || isAsked(plain, nullptr));
    }
    EXPECT_EQ(handler.m_events, "");
    auto const isVerbose = [&](int argc, char const* const* argv) {
        return varo::isAskedFor(plain.interface(), argc, argv, "verbose");
    };
    EXPECT_TRUE(askWith({"--verb"}, isVerbose));
    EXPECT_FALSE(askWith({"--no-verbose"}, isVerbose));
    char const* const argv[] = {"tool", nullptr, "--help"};
    EXPECT_FALSE(varo::isAskedFor(plain.interface(), 3, argv, "help") ||
                 varo::isAskedFor(plain.interface(), 3, nullptr, "help") ||
                 varo::isAskedFor(nullptr, 3, argv, "help"));
}

TEST(Questions, AnOptionIsGivenAnEmptyText) {
    struct Row {
        Arguments arguments;
        std::string name;
    };
    Row const rows[] = {
        {{}, "none"},
        {{"--title", "x", "--help", "y"}, "none"},
        {{"--title=x", "--tit", "", "--level", ""}, "title"},
        {{"--title", "--level", ""}, "level"},
        {{"--title=", ""}, "title"},
        {{"x", ""}, "file"},
        {{"--", ""}, "none"},
    };
    varo::Parser const parser = makeParser(varo::kUnknownIsError);
    for (Row const& row : rows) {
        char const* const name = askWith(row.arguments, [&](int argc, char const* const* argv) {
            return varo::firstEmptyOption(parser.interface(), argc, argv);
        });
        EXPECT_EQ(name != nullptr ? name : "none", row.name);
    }
}

TEST(Questions, PrintableTextsStayAsTheyAre) {
    struct Row {
        std::string text;
        std::string shown;
    };
    Row const rows[] = {
        {"plain \\x41 'text'", "plain \\x41 'text'"},
        {"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x99\x82", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x99\x82"},
        {"a\n\tb\r\x1B[0m\x7F", "a\\n\\tb\\x0d\\x1b[0m\\x7f"},
        {std::string("\0", 1), "\\x00"},
        {"\xC2\x85 \xE2\x80\xAE \xE2\x80\xA8", "\\xc2\\x85 \\xe2\\x80\\xae \\xe2\\x80\\xa8"},
        // Broken UTF-8: alone, cut off, too long, a surrogate, too high, a wrong tail.
        {"\x80\xFF", "\\x80\\xff"},
        {"\xE2\x82", "\\xe2\\x82"},
        {"\xC0\xAF\xE0\x80\xAF", "\\xc0\\xaf\\xe0\\x80\\xaf"},
        {"\xED\xA0\x80", "\\xed\\xa0\\x80"},
        {"\xF4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"},
        {"\xE2(\xA1", "\\xe2(\\xa1"},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(varo::printable(row.text), row.shown);
        EXPECT_EQ(varo::printable(row.shown), row.shown);
    }
}

}  // namespace
