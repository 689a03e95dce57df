#include <algorithm>
#include <memory>
#include <set>
#include <stdexcept>

#include "support.h"

namespace {

using namespace mosaic2;
using namespace varo_test;

/// A parser with three handlers, called in this order.
class Handlers : public ::testing::Test {
protected:
    Handlers() : m_parser(varo::kUnknownIsError), m_result(m_parser.createResult()) {
        m_level = m_parser->option("level,l", "", vtS32, "");
        m_parser->option("list", "", vtString, "");
        m_parser->option("flag", "", vtBool, "");
        for (RecordingHandler& handler : m_handlers) {
            m_parser->addHandler(&handler);
        }
    }

    /// Lets the handler do something once, when it sees `event`.
    void once(int index, std::string const& event, std::function<bool()> const& action) {
        m_handlers[index].m_reaction = [done = false, event,
                                        action](std::string const& seen) mutable {
            if (done || seen != event) {
                return true;
            }
            done = true;
            return action();
        };
    }

    int parse(Arguments const& arguments) {
        return varo_test::parse(m_parser, m_result, arguments);
    }

    varo::Parser m_parser;
    varo::Result m_result;
    varo::IOption* m_level = nullptr;
    RecordingHandler m_handlers[3];
};

TEST_F(Handlers, HearEventsInOrder) {
    EXPECT_FALSE(m_parser->addHandler(&m_handlers[0]));
    EXPECT_FALSE(m_parser->addHandler(nullptr));
    EXPECT_FALSE(m_parser->addHandler(m_parser.interface()));
    EXPECT_TRUE(m_parser->removeHandler(&m_handlers[2]));
    EXPECT_FALSE(m_parser->removeHandler(&m_handlers[2]));
    EXPECT_FALSE(m_parser->removeHandler(nullptr));
    EXPECT_EQ(parse({"-l=+1,2", "--list=a,,b", "--no-fl", "--list", "", "--", "--list=x"}),
              kSuccess);
    EXPECT_EQ(m_handlers[0].m_events,
              "option level; value level=+1; value level=2; option list; value list=a; "
              "value list=b; option flag; value flag=0; option list; ");
    EXPECT_EQ(m_handlers[1].m_events, m_handlers[0].m_events);
    EXPECT_EQ(m_handlers[2].m_events, "");
}

TEST_F(Handlers, KeepTextsAsLongAsTheParser) {
    std::string const text(100, 't');
    EXPECT_EQ(parse({"--list=" + text, "--" + text}), kParseError);
    char const* const error = m_parser.error();
    EXPECT_EQ(parse({"-another"}), kParseError);
    m_result = varo::Result();
    std::string all = error;
    for (char const* const kept : m_handlers[0].m_texts) {
        all += kept;
    }
    EXPECT_EQ(all, "Unknown option: --" + text + "list" + text + "--" + text + "-another");
}

TEST_F(Handlers, HearOfNullsAsEmptyTexts) {
    EXPECT_TRUE(m_parser->onOptionParse(nullptr));
    EXPECT_TRUE(m_parser->onValueParse(nullptr, varo::Value(nullptr, 1, 0)));
    EXPECT_TRUE(m_parser->onUknownArgument(nullptr));
    EXPECT_EQ(m_handlers[0].m_events, "option ; value =; unknown ; ");
}

TEST_F(Handlers, RefuseValues) {
    once(1, "value list=b", [] { return false; });
    EXPECT_EQ(parse({"--list=x", "--list=a,b", "--level=1"}), kRefused);
    EXPECT_STREQ(m_parser.error(),
                 "Value 'a,b' is not valid for option 'list' in argument '--list=a,b'");
    EXPECT_EQ(contents(m_result, "list"), "'x'");
    EXPECT_EQ(contents(m_result, "level"), "absent");
    std::string const last = m_handlers[0].m_events.substr(m_handlers[0].m_events.rfind("value"));
    EXPECT_EQ(last, "value list=b; ");
    EXPECT_EQ(m_handlers[2].m_events, "option list; value list=x; option list; value list=a; ");
}

TEST_F(Handlers, LeaveARefusalInTheTrace) {
    once(1, "value list=b", [] { return false; });
    Console const console;
    EXPECT_EQ(parse({"varooption=varologenable=1", "--list=b"}), kRefused);
    std::string const end =
        "AbbreviationParserValue 'b' is not valid for option 'list' in argument "
        "'--list=b' One of the handler signaled the value is not valid.\n";
    EXPECT_EQ(console.text().substr(console.text().size() - end.size()), end);
}

TEST_F(Handlers, VetoUnknownArgumentsTogether) {
    struct Silent final : varo::EventHandler {
    } silent;
    m_parser->addHandler(&silent);
    once(0, "unknown -a", [] { return false; });
    once(2, "option level", [] { return false; });  // has no effect
    EXPECT_EQ(parse({"-a", "--level=1", "-b"}), kParseError);
    EXPECT_STREQ(m_parser.error(), "Unknown option: -b");
    EXPECT_EQ(m_handlers[2].m_events, "unknown -a; option level; value level=1; unknown -b; ");
    EXPECT_EQ(contents(m_result, "level"), "s32 1");
}

TEST_F(Handlers, RemoveEachOther) {
    for (char const* const event : {"option level", "value level=1", "unknown -x"}) {
        for (int remover = 0; remover < 3; ++remover) {
            for (int removed = 0; removed < 3; ++removed) {
                SCOPED_TRACE(event + std::to_string(remover) + std::to_string(removed));
                varo::Parser const parser;
                parser->option("level", "", vtS32, "");
                std::unique_ptr<RecordingHandler> handlers[3];
                for (auto& handler : handlers) {
                    handler = std::make_unique<RecordingHandler>();
                    parser->addHandler(handler.get());
                }
                std::sort(std::begin(handlers), std::end(handlers));
                handlers[remover]->m_reaction = [&](std::string const& seen) {
                    if (seen == event && parser->removeHandler(handlers[removed].get()) &&
                        removed != remover) {
                        handlers[removed].reset();
                    }
                    return true;
                };
                varo::Result result = parser.createResult();
                EXPECT_EQ(varo_test::parse(parser, result, {"--level=1", "-x", "--level=2"}),
                          kSuccess);
                std::string const all =
                    "option level; value level=1; unknown -x; option level; value level=2; ";
                for (int index = 0; index < 3; ++index) {
                    std::size_t const end = all.find(event) + std::string(event).size() + 2;
                    if (handlers[index] != nullptr) {
                        EXPECT_EQ(handlers[index]->m_events,
                                  index == removed ? all.substr(0, end) : all);
                    }
                }
            }
        }
    }
}

TEST_F(Handlers, DeclareAndReplaceWhatIsInUse) {
    once(0, "option level", [&] {
        for (int index = 0; index < 1000; ++index) {
            m_parser->option(("extra" + std::to_string(index)).c_str(), "", vtS32, "");
        }
        m_parser->setReplace(true);
        m_parser->option("level,l", "another", vtString, "");
        m_parser->option("list", "", vtS32, "")->synonym("lost");
        return true;
    });
    once(1, "value list=7", [&] {
        m_parser->option("list", "", vtString, "");
        return true;
    });
    EXPECT_EQ(parse({"-l=1", "--extra999=5", "--list=7,8"}), kSuccess) << m_parser.error();
    EXPECT_EQ(contents(m_result, "level"), "s32 1");
    EXPECT_EQ(contents(m_result, "extra999"), "s32 5");
    EXPECT_EQ(contents(m_result, "list"), "s32 7 s32 8");
    EXPECT_EQ(parse({"-l=x"}), kSuccess);
    EXPECT_EQ(contents(m_result, "level"), "s32 1 'x'");
}

TEST_F(Handlers, QueryTheResultBeingFilled) {
    std::string seen;
    once(0, "value level=3", [&] { return m_level->synonym("late") == m_level; });
    m_handlers[1].m_reaction = [&](std::string const&) {
        seen += contents(m_result, "level") + "; ";
        m_result.interface()->next("level");
        EXPECT_STREQ(m_parser->getErrorDesc(), "");
        EXPECT_STRNE(m_parser->getDescription(false), "");
        return true;
    };
    EXPECT_EQ(parse({"--level=1,2", "--level=3"}), kSuccess);
    EXPECT_EQ(seen, "absent; absent; absent; s32 1 s32 2; s32 1 s32 2; ");
    EXPECT_EQ(contents(m_result, "late"), "s32 1 s32 2 s32 3");
}

/// Arguments in memory that a handler can overwrite and free.
class Perishable {
public:
    explicit Perishable(Arguments const& arguments) {
        for (std::string const& argument : arguments) {
            m_texts.push_back(std::make_unique<std::string>(argument));
            m_argv.push_back(m_texts.back()->data());
        }
    }

    void perish() {
        for (auto& text : m_texts) {
            text->assign(text->size(), 'X');
            text.reset();
        }
        std::fill(m_argv.begin(), m_argv.end(), nullptr);
    }

    std::vector<char const*> m_argv;

private:
    std::vector<std::unique_ptr<std::string>> m_texts;
};

TEST_F(Handlers, MayOverwriteWhatIsParsed) {
    std::string const tail(100, 't');
    for (std::string const first : {"--list=se,cret,s", "unknown"}) {
        SCOPED_TRACE(first);
        m_result = m_parser.createResult();
        Perishable line({"tool", first, "--level", "2", "--list=" + tail, "--", tail});
        bool const isUnknown = first == "unknown";
        once(0, isUnknown ? "unknown unknown" : "option list", [&] {
            line.perish();
            return !isUnknown;  // lets the unknown argument pass
        });
        EXPECT_EQ(m_parser.parse(7, line.m_argv.data(), m_result), kSuccess);
        EXPECT_EQ(contents(m_result, "list"), (isUnknown ? "'" : "'se' 'cret' 's' '") + tail + "'");
        EXPECT_EQ(contents(m_result, "level"), "s32 2");
        EXPECT_EQ(plainArguments(m_result), tail + "|");
    }
    // The same buffer serves the next text, while the first one is still being parsed.
    m_result = m_parser.createResult();
    auto text = std::make_unique<std::string>("--level=1\n--list=" + tail + "\n--level=x\n");
    once(0, "value level=1", [&] {
        *text = "--list=inner";
        EXPECT_EQ(m_parser->parseStream(text->c_str(), m_result.interface()), kSuccess);
        text.reset();
        return true;
    });
    EXPECT_EQ(m_parser->parseStream(text->c_str(), m_result.interface()), kParseError);
    EXPECT_EQ(m_parser.error(), cannotParse("--level=x", "level", "x", "integer"));
    EXPECT_EQ(contents(m_result, "list"), "'inner' '" + tail + "'");
}

TEST_F(Handlers, EnableOptionFiles) {
    Directory const directory;
    std::string const path = directory.write("late.options", "--level=7\n");
    m_parser->option("option-file", "", vtString, "");
    once(0, "option option-file", [&] { return !m_parser->addOptionFileOption("", ""); });
    EXPECT_EQ(parse({"--option-file=" + path}), kSuccess);
    EXPECT_EQ(contents(m_result, "level"), "s32 7");
}

TEST_F(Handlers, AreGivenEqualTextsAtOneAddress) {
    EXPECT_EQ(parse({"--list=same,same", "--same", "--list=same"}), kParseError);
    m_handlers[1].m_reaction = [](std::string const& event) { return event != "unknown same"; };
    EXPECT_EQ(parse({"same", "--list=same"}), kSuccess);
    std::set<char const*> addresses;
    for (char const* const text : m_handlers[0].m_texts) {
        if (text == std::string("same")) {
            addresses.insert(text);
        }
    }
    EXPECT_EQ(addresses.size(), 1U);
}

TEST_F(Handlers, SwitchTheTraceOn) {
    Console const console;
    once(0, "value list=a", [] { return varo_3_3::internal::varoLogEnabled = true; });
    EXPECT_EQ(parse({"--list=a"}), kSuccess);
    EXPECT_EQ(console.text(),
              "AbbreviationParser: sent event on value parsed, option: 'list', value: 'a'\n"
              "AbbreviationParser: stored option to result container.\n"
              "AbbreviationParser: removing argument: '--list=a'\n");
}

TEST_F(Handlers, ParseAgain) {
    varo::Result other = m_parser.createResult();
    once(0, "value list=a", [&] {
        EXPECT_EQ(varo_test::parse(varo::Parser(), m_result, {"x"}), kRefused);  // has no "level"
        EXPECT_EQ(varo_test::parse(m_parser, other, {"--level=2", "--list=c", "--", "inner"}),
                  kSuccess);
        EXPECT_EQ(parse({"--level=3", "--list=d", "-x"}), kParseError);
        return true;
    });
    EXPECT_EQ(parse({"--level=1", "--list=a,b", "--", "outer"}), kSuccess);
    EXPECT_STREQ(m_parser.error(), "");
    EXPECT_EQ(contents(m_result, "level"), "s32 1 s32 3");
    // What the inner parse stored came first, though its positions are higher.
    EXPECT_EQ(contents(m_result, "list"), "'d' 'a' 'b'");
    int const inner = m_result.interface()->get("list", 0, varo::kNoPosition).position();
    EXPECT_STREQ(m_result.interface()->get("list", 0, inner).text(), "a");
    EXPECT_EQ(plainArguments(m_result), "outer|");
    EXPECT_EQ(contents(other, "level"), "s32 2");
    EXPECT_EQ(plainArguments(other), "inner|");
}

TEST_F(Handlers, LeaveTheLastValueToItsPosition) {
    once(0, "value list=b", [&] { return parse({"--list=c"}) == kSuccess; });
    EXPECT_EQ(parse({"--list=a,b"}), kSuccess);
    EXPECT_EQ(contents(m_result, "list"), "'c' 'a' 'b'");
    varo::IParseResult* const result = m_result.interface();
    varo::Value const last = varo::getLastValue(result, "list", 0, varo::kNoPosition);
    EXPECT_STREQ(last.text(), "c");
    EXPECT_STREQ(varo::getLastValue(result, "list", 0, last.position()).text(), "b");
}

TEST_F(Handlers, ThrowThroughTheParse) {
    for (char const* const event : {"option level", "value level=1", "unknown -x"}) {
        SCOPED_TRACE(event);
        m_result = m_parser.createResult();
        once(1, event, []() -> bool { throw std::runtime_error("mine"); });
        EXPECT_EQ(parse({"--list=a", "--level=1", "-x"}), kUnidentifiedProblem);
        EXPECT_STREQ(m_parser.error(), "Unidentified problem detected.");
        once(1, event, []() -> bool { throw 42; });
        EXPECT_THROW(parse({"--list=b", "--level=1", "-x"}), int);
        EXPECT_STREQ(m_parser.error(), "");
        EXPECT_EQ(m_parser->parseStream("--list=c\n", m_result.interface()), kSuccess);
        EXPECT_STREQ(m_parser.error(), "");
        EXPECT_EQ(contents(m_result, "list"), "'a' 'b' 'c'");
    }
}

}  // namespace
