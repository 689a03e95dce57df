// Every allocation of a scenario fails in turn, once or together with all that follow. A call that
// reports success must have done its whole work; any other must leave parser and result usable.

#include <algorithm>

#include "failing_memory.h"
#include "support.h"
#include "varo/documents.h"
#include "varo/mistakes.h"
#include "varo/text.h"

namespace {

using namespace varo_test;

/// One trial of a scenario, with memory failing during the calls that it puts to the test.
class Trial {
public:
    Trial(long allocations, unsigned sources, bool onlyOnce) : m_sources(sources) {
        memory::failAfter(allocations, 0, onlyOnce);
    }

    /// Makes a call to be tested. False if it threw std::bad_alloc.
    template <class Call>
    bool attempt(Call call) {
        bool isDone = true;
        memory::sources = m_sources;
        try {
            call();
        } catch (std::bad_alloc const&) {
            isDone = false;
        }
        m_sources = std::exchange(memory::sources, 0);
        return isDone;
    }

    void endFailures() { m_sources = 0; }

    std::string m_notes;  ///< What the successful calls did.

private:
    unsigned m_sources;
};

/// Makes the calls to be tested and returns whether all were done. `expected` are the notes of the
/// run without failures, "" in that run itself.
using Scenario = std::function<bool(Trial& trial, std::string const& expected)>;

void exhaust(Scenario const& scenario) {
    Trial undisturbed(0, 0, true);
    ASSERT_TRUE(scenario(undisturbed, ""));
    for (unsigned const kind : {0, 1, 2, 3, 4, 5}) {
        unsigned const sources = 1 + kind / 2;  // operator new, variants, both
        for (long allocations = 0;; ++allocations) {
            SCOPED_TRACE(testing::Message() << "kind " << kind << ", allocation " << allocations);
            long const outstanding = memory::outstanding;
            {
                Trial trial(allocations, sources, kind % 2 == 0);
                bool const isDone = scenario(trial, undisturbed.m_notes);
                if (isDone) {
                    EXPECT_EQ(trial.m_notes, undisturbed.m_notes);
                } else {
                    EXPECT_TRUE(memory::failed);
                }
            }
            if (testing::Test::HasFailure()) {  // whose report holds memory
                return;
            }
            EXPECT_EQ(memory::outstanding, outstanding);
            if (!memory::failed) {
                break;
            }
        }
    }
}

constexpr char kLong[] = "a text that does not fit into a string object itself";

/// A parser with declarations of every kind.
class Host {
public:
    Host(varo::Flags flags, bool isHeard) : m_parser(flags) {
        using namespace mosaic2;
        m_parser->option("verbose,v", "Says more", vtBool, "general:General options");
        m_parser->option("level,l", "Depth", vtS32, "general")->defaultValue(3);
        m_parser->option("list", "Words", vtString, "")->defaultValue(kLong);
        m_parser->modifier("mode", "run", "How to run it", vtString, "general")
            ->allowValue("quickly and without any care")
            ->allowValue("slowly")
            ->allowDeprecatedValue("fast", "quickly and without any care");
        m_parser->option("input", "Files", vtString, "")->positional();
        m_parser->action("run,r", "Runs", vtNull, "actions");
        m_parser->action("report", "Reports", vtNull, "actions");
        m_parser->addOptionFileOption("Reads arguments", "general");
        if (isHeard) {
            m_parser->addHandler(&m_handler);
        }
    }

    varo::Parser m_parser;
    RecordingHandler m_handler;
};

/// All that a result holds, one line for each option: values of one occurrence are joined by ",",
/// and each occurrence and each plain argument ends with ";".
std::vector<std::string> linesOf(varo::Result& result) {
    std::vector<std::string> lines;
    for (char const* const name :
         {"verbose", "level", "list", "mode", "input", "run", "option-file"}) {
        std::string line;
        int last = varo::kNoPosition;
        for (varo::Value const& value : result.values(name)) {
            line += line.empty() ? "" : value.position() == last + 1 ? "," : ";";
            line += std::string(value.text()) + "=" + show(value.value());
            last = value.position();
        }
        std::string const held = contents(result, name);
        lines.push_back(!line.empty() ? line + ";" : held != "absent" ? held : "");
    }
    lines.push_back("");
    for (char const* const argument : result.arguments()) {
        lines.back() += std::string(argument) + ";";
    }
    return lines;
}

std::string join(int code, std::string const& error, std::vector<std::string> const& lines) {
    std::string joined = std::to_string(code) + " " + error;
    for (std::string const& line : lines) {
        joined += "\n" + line;
    }
    return joined;
}

/// What a parse stored before memory ran out is the beginning of what a whole one stores.
void expectBeginnings(std::vector<std::string> const& lines,
                      std::vector<std::string> const& whole) {
    ASSERT_EQ(lines.size(), whole.size());
    for (std::size_t at = 0; at < lines.size(); ++at) {
        if (!lines[at].starts_with("default")) {
            EXPECT_EQ(lines[at], whole[at].substr(0, lines[at].size()));
        }
    }
}

/// Parses the arguments, or the text if there is one, with and without a handler.
void exhaustParse(varo::Flags flags, Arguments const& arguments, char const* text = nullptr) {
    std::vector<char const*> argv{"tool"};
    for (std::string const& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    for (bool const isHeard : {false, true}) {
        exhaust([&](Trial& trial, std::string const& expected) {
            Host const host(flags, isHeard);
            varo::Parser const& parser = host.m_parser;
            auto const parseInto = [&](varo::Result& result) {
                return text != nullptr ? parser->parseStream(text, result.interface())
                                       : parser.parse(int(argv.size()), argv.data(), result);
            };
            varo::Result result = parser.createResult();
            int code = -1;
            trial.attempt([&] { code = parseInto(result); });
            bool const isDone =
                code != -1 && code != kUnusableArguments && code != kUnidentifiedProblem;
            char const* error = nullptr;
            EXPECT_TRUE(trial.attempt([&] { error = parser.error(); }));
            if (code == kUnidentifiedProblem) {
                EXPECT_STRNE(error, "");
            }
            std::vector<std::string> const lines = linesOf(result);
            trial.m_notes = join(code, parser.error(), lines);

            varo::Result again = parser.createResult();
            code = parseInto(again);
            std::vector<std::string> const whole = linesOf(again);
            if (!expected.empty()) {
                EXPECT_EQ(join(code, parser.error(), whole), expected);
            }
            expectBeginnings(lines, whole);
            return isDone;
        });
    }
}

TEST(FailingMemory, CreationReportsIt) {
    exhaust([](Trial& trial, std::string const&) {
        varo::IParser* parser = nullptr;
        varo::IParseResult* result = nullptr;
        int code = 0;
        EXPECT_TRUE(trial.attempt([&] {
            code = varo::createParser(&parser, 0);
            code = code == kSuccess ? parser->createResult(&result) : code;
            result != nullptr ? result->destroy() : void();
            parser != nullptr ? parser->destroy() : void();
        }));
        EXPECT_EQ(code, result != nullptr ? kSuccess : kUnusableArguments);
        return code == kSuccess;
    });
}

/// A declaration or refinement; `last` is the declaration made last. Returns whether it took
/// effect.
using Step = bool (*)(varo::IParser* parser, varo::IOption*& last);

constexpr Step kSteps[] = {
    [](varo::IParser* parser, varo::IOption*& last) {
        last = parser->option("first-option,f", "A description of it", mosaic2::vtString,
                              "general:The text of a section");
        return parser->isOptionDeclared("f", false, "general");
    },
    [](auto, auto& last) { return last->synonym("another-name-of-the-first") == last; },
    [](auto, auto& last) { return last->allowValue("short") == last; },
    [](auto, auto& last) { return last->allowValue(kLong) == last; },
    [](auto, auto& last) { return last->allowDeprecatedValue("old value", kLong) == last; },
    [](auto, auto& last) { return last->defaultValue("a default value") == last; },
    [](varo::IParser* parser, varo::IOption*& last) {
        last = parser->action("run,r", "Runs something", mosaic2::vtNull, "actions:Section text");
        return parser->isOptionDeclared("run", true, nullptr);
    },
    [](varo::IParser* parser, varo::IOption*& last) {
        last = parser->modifier("modifier-of-run", "run,an-action-of-a-long-name",
                                "Says how to run", mosaic2::vtBool, "general");
        return parser->isOptionDeclared("modifier-of-run", false, nullptr);
    },
    [](auto, auto& last) { return last->tag("report,another-action-of-a-long-name") == last; },
    [](auto* parser, auto&) { return parser->addOptionFileOption("Reads a file", "general:New"); },
    [](auto* parser, auto&) {
        return parser->allowSimultaneousActions({"run", kLong}) == 1;
    },
    [](auto* parser, auto&) {
        static RecordingHandler handler;
        return parser->addHandler(&handler);
    },
    [](varo::IParser* parser, varo::IOption*& last) {
        parser->setReplace(true);
        last = parser->action("run,r", "Runs something else", mosaic2::vtNull, "other:Text");
        return parser->isOptionDeclared("run", true, "other");
    }};

TEST(FailingMemory, DeclarationsAreMadeWholeOrNotAtAll) {
    auto const helpOf = [](varo::Parser const& parser) {
        return std::string(parser->getGlobalModifiersDescription(false)) +
               parser->getActionModifiersDescription("run", false) + parser->getDescription(false);
    };
    exhaust([&](Trial& trial, std::string const&) {
        varo::Parser const parser;
        varo::IOption* last = nullptr;
        for (Step const step : kSteps) {
            std::string const before = helpOf(parser);
            bool isDone = false;
            trial.attempt([&] { isDone = step(parser.interface(), last); });
            if (!isDone) {
                EXPECT_TRUE(memory::failed);
                EXPECT_EQ(helpOf(parser), before);
                trial.endFailures();
                EXPECT_TRUE(step(parser.interface(), last));
            }
            trial.m_notes += helpOf(parser);
        }
        varo::Result result = parser.createResult();
        int const code = parser->parseStream("--run\n--modifier\n--another=old value\n--first=sh",
                                             result.interface());
        trial.m_notes += join(code, parser.error(), {contents(result, "f")});
        return true;
    });
}

TEST(FailingMemory, AWalkGoesOnWhereAnotherFails) {
    exhaust([](Trial& trial, std::string const&) {
        varo::Parser const parser;
        parser->option("a", "", mosaic2::vtS32, "")->allowValue(1);
        varo::Declaration const* walked = varo::nextDeclaration(parser.interface(), nullptr);
        parser->option("b", kLong, mosaic2::vtS32, "")->allowValue(2);
        parser->option("c", "", mosaic2::vtS32, "");
        bool isWalked = false;
        trial.attempt(
            [&] { isWalked = varo::nextDeclaration(parser.interface(), nullptr) != nullptr; });
        for (; walked != nullptr; walked = varo::nextDeclaration(parser.interface(), walked)) {
            EXPECT_EQ(walked->size, static_cast<int>(sizeof *walked));
            trial.m_notes += join(walked->allowedCount, walked->names[0], {walked->description});
        }
        return isWalked;
    });
}

TEST(FailingMemory, SynonymsAreAddedOrNot) {
    exhaust([](Trial& trial, std::string const&) {
        varo::Parser const parser;
        varo::IOption* const option = parser->option("first", "Text", mosaic2::vtBool, "");
        for (std::string name = "a"; name != "r"; ++name[0]) {
            if (!trial.attempt([&] { option->synonym(name.c_str()); })) {
                EXPECT_FALSE(parser->isOptionDeclared(name.c_str(), false, nullptr));
                trial.endFailures();
                option->synonym(name.c_str());
            }
            EXPECT_TRUE(parser->isOptionDeclared(name.c_str(), false, nullptr));
        }
        varo::Result result = parser.createResult();
        int code = 0;
        trial.attempt([&] { code = parser->parseStream("--first", result.interface()); });
        EXPECT_EQ(result.has("a"), code == kSuccess);
        trial.m_notes = parser->getDescription(false);
        return code == kSuccess;
    });
}

TEST(FailingMemory, ParsesFailOrDoAll) {
    Arguments const everything{"--verb", "--no-v",   "--level=1,2", "-l",    "7",    "--list",
                               kLong,    "--mode=q", "--mode=fast", "--run", "file", "other,file"};
    exhaustParse({}, everything);
    exhaustParse(varo::kKeepCommas | varo::kDashGuard, everything);
    exhaustParse(varo::kTakeTheRest, {"--run", "one", "two", "--", "-three", kLong});
    exhaustParse(varo::kPositionalAfterMarker, {"--run", "--", "-one", kLong, "--level=1"});
    exhaustParse({}, {"--run", "--list=a,b", "--list=c", "--", kLong, "-plain"});
    exhaustParse({}, {});
    Console const console;
    exhaustParse({}, {"varooption=varologenable=1", "--run", "--list=a", "b", "--", "c"});
}

TEST(FailingMemory, FailingParsesKeepTheirTexts) {
    for (char const* const text : {"--unknown-option-of-a-long-name", "--l=3", "--level=1,2,three",
                                   "--level", "--level\n--run", "--verbose=yes-or-no-or-something",
                                   "--mode=a value that is not allowed", "--list=,,,,", "--list=a",
                                   "--run\n--report", "--report\n--mode=slowly"}) {
        exhaustParse(varo::kUnknownIsError | varo::kDashGuard, {}, text);
    }
}

TEST(FailingMemory, RefusedValuesAreReleased) {
    exhaust([](Trial& trial, std::string const&) {
        Host host({}, true);
        host.m_handler.m_reaction = [](std::string const& event) {
            return event != "value list=b";
        };
        char const* const argv[] = {"tool", "--list=a", "--level=1", "--list", kLong, "--list=a,b"};
        varo::Result result = host.m_parser.createResult();
        int code = 0;
        trial.attempt([&] { code = host.m_parser.parse(6, argv, result); });
        trial.m_notes = join(code, host.m_parser.error(), linesOf(result));
        return code == kRefused;
    });
}

TEST(FailingMemory, OptionFilesAndTextsAreReadWhole) {
    Directory const directory;
    std::string const inner =
        directory.write("inner", "--list=" + std::string(kLong) + "\n--run\n");
    std::string const outer =
        directory.write("outer", "# comment\n--option-file=" + inner + "\nplain\n--\nrest\n");
    std::string const circle = directory.path("circle");
    directory.write("circle", "--level=1\n--option-file=" + circle + "\n");
    exhaustParse({}, {"--option-file=" + outer, "--level=2"});
    exhaustParse({}, {"--run", "--option-file=" + circle});
    exhaustParse({}, {"--run", "--option-file=" + directory.path("missing")});
    std::string const text = "--run\n--level 4\n--list=" + std::string(kLong) + "\n--\nplain\n";
    exhaustParse({}, {}, text.c_str());
    exhaustParse({}, {}, ("--option-file=" + outer).c_str());
}

TEST(FailingMemory, HelpIsWholeOrSaysSo) {
    using Help = char const* (*)(varo::IParser*);
    for (Help const help :
         {Help([](auto parser) { return parser->getDescription(false); }),
          Help([](auto parser) { return parser->getDescription("mode", false); }),
          Help([](auto parser) { return parser->getDescription("unknown", false); }),
          Help([](auto parser) { return parser->getActionModifiersDescription("run", false); }),
          Help([](auto parser) { return parser->getActionModifiersDescription("no", false); }),
          Help([](auto parser) { return parser->getGlobalModifiersDescription(false); }),
          Help([](auto parser) { return parser->getErrorDesc(); })}) {
        exhaust([help](Trial& trial, std::string const& expected) {
            Host const host({}, false);
            varo::IParser* const parser = host.m_parser.interface();
            parser->parseStream("--level=none of the numbers that there are", nullptr);
            char const* text = "Unknown error handled.";
            trial.attempt([&] { text = help(parser); });
            trial.m_notes = text;
            bool const isDone =
                trial.m_notes != "Unknown error handled." && trial.m_notes != "Out of memory.";
            if (!expected.empty()) {
                EXPECT_EQ(help(parser), expected);
            }
            return isDone;
        });
    }
}

TEST(FailingMemory, MistakesAreToldWhole) {
    exhaust([](Trial& trial, std::string const& expected) {
        varo::Parser parser;
        parser->option("level", "", mosaic2::vtS32, "")->defaultValue(kLong);
        char const* text = "Out of memory.";
        EXPECT_TRUE(trial.attempt([&] {
            parser->option((std::string("level,") + "v").c_str(), "", mosaic2::vtS32, "");
            text = varo::describeMistakes(parser.interface());
        }));
        trial.m_notes = text;
        // A refusal that could not be kept by name is counted at least.
        std::string const all = varo::describeMistakes(parser.interface());
        EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 1);
        EXPECT_TRUE(trial.m_notes == "Out of memory." || trial.m_notes == all);
        return expected.empty() || trial.m_notes == expected;
    });
}

TEST(FailingMemory, TypedDeclarationsAreMadeOrThrow) {
    exhaust([](Trial& trial, std::string const&) {
        varo::Parser parser(varo::kUnknownIsError);
        varo::Result result = parser.createResult();
        char const* const argv[] = {"tool", "--port=70000"};
        bool const isDone = trial.attempt([&] {
            auto const title = parser.option<std::string>("title,t", "").defaultValue(kLong);
            auto const port = parser.option<unsigned short>("port", "");
            if (!varo::isRefused(parser.interface(), port.interface()) &&
                !varo::isRefused(parser.interface(), title.interface())) {
                int const code = parser.parse(2, argv, result);
                EXPECT_NE(code, kSuccess);
                trial.m_notes = std::to_string(code) + parser.error() + result[title];
            }
        });
        return isDone && trial.m_notes.find("65535") != std::string::npos;
    });
}

char const* writeManual(varo::IParser* parser, varo::ManualForm form) {
    varo::Manual about;
    about.name = "tool";
    about.summary = kLong;
    about.date = "2026-11-21";
    return varo::manual(parser, &about, form);
}

TEST(FailingMemory, DocumentsAreWholeOrEmpty) {
    using Write = char const* (*)(varo::IParser*, varo::IParseResult*);
    for (Write const write :
         {Write([](auto parser, auto) { return varo::describeJson(parser); }),
          Write([](auto parser, auto result) { return varo::toOptionFile(parser, result); }),
          Write([](auto parser, auto result) {
              return varo::toOptionFile(parser, result, varo::kShellWords);
          }),
          Write([](auto parser, auto) { return varo::helpText(parser, nullptr); }),
          Write([](auto parser, auto) { return writeManual(parser, varo::kManualPage); }),
          Write([](auto parser, auto) { return writeManual(parser, varo::kManualMarkdown); })}) {
        exhaust([write](Trial& trial, std::string const& expected) {
            Host const host({}, false);
            varo::Result const result = host.m_parser.createResult();
            varo::IParser* const parser = host.m_parser.interface();
            parser->parseStream("--level=1\nplain text that is long\n--\nend", result.interface());
            char const* text = "";
            trial.attempt([&] { text = write(parser, result.interface()); });
            trial.m_notes = text;
            if (!expected.empty()) {
                EXPECT_EQ(write(parser, result.interface()), expected);
            }
            return !trial.m_notes.empty();
        });
    }
}

TEST(FailingMemory, QueriesNeedNoMemory) {
    constexpr int kEnd = varo::kNoPosition;
    exhaust([](Trial& trial, std::string const&) {
        Host const host({}, false);
        varo::Result result = host.m_parser.createResult();
        varo::IParseResult* const held = result.interface();
        host.m_parser->parseStream("--run\n-l=1,2\n-v\n--list=a\n--\nplain\nmore", held);
        varo::Value values[4];
        char const* texts[2] = {};
        EXPECT_TRUE(trial.attempt([&] {
            values[0] = held->get("v", 0, kEnd);
            values[1] = varo::getLastValue(held, "l", 0, kEnd);
            values[2] = held->get("level", held->present("no", 0, kEnd), kEnd);
            values[3] = held->next("level");
            held->getFirstArgument(&texts[0]);
            held->getNextArgument(&texts[1]);
        }));
        for (varo::Value const& value : values) {
            trial.m_notes += std::string(value.text()) + " " + show(value.value()) + "\n";
        }
        EXPECT_STREQ(texts[1], "more");
        return true;
    });
}

TEST(FailingMemory, IsReportedByWhatAnswersItself) {
    varo::Parser const parser;
    RecordingHandler handler;
    memory::failAfter(0, memory::kOperatorNew, false);
    bool const isAdded = parser->addHandler(&handler);
    int const isAllowed = parser->allowSimultaneousActions({});
    memory::sources = 0;
    EXPECT_EQ(isAdded, !memory::failed);  // valgrind has an operator new of its own
    EXPECT_EQ(isAllowed, memory::failed ? 0 : 1);
    EXPECT_EQ(parser->addHandler(&handler), !isAdded);
}

TEST(Memory, DoesNotGrowWithRepeatedInput) {
    Host host(varo::kUnknownIsError, true);
    auto const use = [&] {
        varo::Result result = host.m_parser.createResult();
        parse(host.m_parser, result, {"--list=a,b", "--level=4", kLong, "--unknown"});
        EXPECT_STRNE(host.m_parser.error(), "");
        parse(host.m_parser, result, {"--mode=x"});
        EXPECT_STRNE(host.m_parser.error(), "");
        host.m_parser->getDescription(false);
        host.m_parser->getDescription("mode", false);
        host.m_parser->getGlobalModifiersDescription(false);
    };
    auto const outstanding = [&] {
        use();
        host.m_handler.m_events = {};
        host.m_handler.m_texts = {};
        return memory::outstanding;
    };
    long const first = outstanding();
    EXPECT_EQ(outstanding(), first);
}

#ifndef VARO_GLIBCXX_DEBUG  // there every container allocates
TEST(Memory, OrdinaryToolsNeedFewAllocations) {
    varo::Parser const parser;
    long start = memory::made;
    for (char const* const names : {"verbose,v", "dry-run,n", "force,f", "quiet,q", "color"}) {
        parser->option(names, "Whether it does something", mosaic2::vtBool, "");
    }
    for (char const* const names : {"level,l", "jobs,j", "depth,d", "limit", "scale,s"}) {
        parser->option(names, "A number", mosaic2::vtS32, "numbers:Numbers");
    }
    for (char const* const names : {"output,o", "include,I", "exclude,X", "format,F", "sort"}) {
        parser->option(names, "Some text", mosaic2::vtString, "texts:Texts");
    }
    parser->option("file", "What to work on", mosaic2::vtString, "")->positional();
    parser->addOptionFileOption("Reads arguments", "");
    EXPECT_LE(memory::made - start, 8);

    varo::Result result = parser.createResult();
    start = memory::made;
    long const texts = memory::outstandingVariants;
    char const* const argv[] = {"tool",          "--verbose", "--dry-run", "--force",
                                "--color",       "--level=3", "--jobs=8",  "--depth=12",
                                "--output=a",    "--scale=2", "--sort=b",  "--format=c",
                                "docs/guide.txt"};
    EXPECT_EQ(parser->parseArgsVector(13, argv, result.interface()), 0);
    EXPECT_LE(memory::made - start - (memory::outstandingVariants - texts), 2);
}
#endif

TEST(Memory, UsesThePlacesOfReplacedDeclarationsAgain) {
    Host host({}, true);
    host.m_parser->setReplace(true);
    host.m_handler.m_reaction = [&](std::string const&) {
        return host.m_parser->option("list", "", mosaic2::vtString, "") != nullptr;
    };
    varo::Result result = host.m_parser.createResult();
    long const start = memory::outstanding;
    for (int times = 0; times < 5000; ++times) {
        host.m_handler.m_texts.clear();
        host.m_handler.m_events.clear();
        host.m_parser->parseStream("--run", result.interface());
    }
    EXPECT_LT(memory::outstanding - start, 15);  // their texts are kept
}

TEST(FailingMemory, WrappedTextIsWholeOrThrows) {
    exhaust([](Trial& trial, std::string const&) {
        return trial.attempt([&] {
            trial.m_notes = varo::WordWrappedText("a caption of words", kLong, 10, 40).getText();
        });
    });
}

}  // namespace
