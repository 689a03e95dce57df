#include <climits>

#include "results/item_list.h"
#include "support.h"

namespace {

using namespace mosaic2;
using namespace varo_test;

constexpr int kEnd = varo::kNoPosition;

bool isNothing(varo::Value const& value) {
    return value.text() == std::string() && value.value().m_type == vtNull &&
           value.position() == kEnd;
}

/// A parser whose options are queried, and what one command line stored.
class ParseResult : public ::testing::Test {
protected:
    ParseResult() : m_result(m_parser.createResult()) {
        m_parser->option("n,number", "", vtS32, "");
        m_parser->option("list", "", vtString, "");
        m_parser->option("flag", "", vtNull, "");
        m_parser->option("level", "", vtS32, "")->defaultValue(3);
        m_parser->option("absent", "", vtS32, "");
    }

    void parse(Arguments const& arguments) {
        EXPECT_EQ(varo_test::parse(m_parser, m_result, arguments), kSuccess) << m_parser.error();
        m_query = m_result.interface();
    }

    std::string next(char const* name) {
        int const announced = m_query->nextPosition();
        varo::Value const value = m_query->next(name);
        EXPECT_EQ(announced, value.position());
        return isNothing(value) ? "nothing" : show(value.value());
    }

    varo::Parser m_parser;
    varo::Result m_result;
    varo::IParseResult* m_query = nullptr;
};

TEST_F(ParseResult, OccurrenceComesBeforeItsValues) {
    parse({"--list", "", "--list=a,b"});
    varo::Value const bare = m_query->get("list", 0, kEnd);
    EXPECT_EQ(bare.text() + show(bare.value()), "null");
    // The values that follow belong to the second occurrence.
    EXPECT_EQ(next("list"), "'a'");
    varo::Value const second = m_query->get("list", bare.position() + 1, kEnd);
    EXPECT_LT(bare.position(), second.position());
    EXPECT_EQ(show(second.value()), "'a'");
    EXPECT_GT(m_query->nextPosition(), second.position() + 1);
    EXPECT_EQ(next("list"), "'b'");
    EXPECT_EQ(next("list"), "nothing");
}

TEST_F(ParseResult, RangesEndBeforeAnOccurrenceButWithAValue) {
    parse({"--n=1", "--n=2", "--n=3"});
    std::vector<int> occurrences, values;
    for (int from = 0; m_query->present("n", from, kEnd); from = occurrences.back() + 1) {
        occurrences.push_back(m_query->get("n", from, kEnd).position());
    }
    for (varo::Value const& value : m_result.values("n")) {
        values.push_back(value.position());
    }
    ASSERT_EQ(occurrences.size() + values.size(), 6U);

    EXPECT_FALSE(m_query->present("n", occurrences[0], occurrences[0]));
    EXPECT_TRUE(m_query->present("n", occurrences[0], occurrences[0] + 1));
    EXPECT_FALSE(m_query->present("n", occurrences[0] + 1, occurrences[1]));
    EXPECT_TRUE(isNothing(m_query->get("n", occurrences[2] + 1, kEnd)));
    EXPECT_EQ(show(m_query->get("n", occurrences[1], kEnd).value()), "s32 2");
    EXPECT_EQ(contents(m_result, "n", values[0], values[1]), "s32 1 s32 2");
    EXPECT_EQ(contents(m_result, "n", 0, values[1] - 1), "s32 1");
    EXPECT_EQ(contents(m_result, "n", occurrences[1], kEnd), "s32 2 s32 3");
    // From and to need not make sense.
    EXPECT_FALSE(m_query->present("n", kEnd, 0));
    EXPECT_EQ(next("n"), "nothing");
    EXPECT_EQ(contents(m_result, "n", INT_MIN, INT_MAX), "s32 1 s32 2 s32 3");
    EXPECT_EQ(contents(m_result, "n", INT_MIN, 0), "absent");

    auto const last = [&](int from, int to) {
        varo::Value const value = varo::getLastValue(m_query, "n", from, to);
        return isNothing(value) ? "nothing" : show(value.value());
    };
    EXPECT_EQ(last(0, values[2]), "s32 2");
    EXPECT_EQ(last(0, values[2] + 1), "s32 3");
    EXPECT_EQ(last(values[0] + 1, values[1]), "nothing");
    EXPECT_EQ(last(kEnd, 0), "nothing");
    EXPECT_EQ(last(INT_MIN, INT_MAX), "s32 3");
}

TEST_F(ParseResult, WalksEveryValueOnce) {
    parse({"--n=1,2", "--flag", "--n=3"});
    EXPECT_STREQ(m_query->get("n", 0, kEnd).text(), "1");
    EXPECT_STREQ(m_query->next("n").text(), "2");
    EXPECT_EQ(next("number"), "s32 3");
    EXPECT_EQ(next("n"), "nothing");
    EXPECT_EQ(next("n"), "nothing");
    EXPECT_TRUE(m_query->present("number", 0, kEnd));
    EXPECT_EQ(next("n"), "s32 1");
    // Another name gets nothing, and moves nothing.
    EXPECT_TRUE(isNothing(m_query->next("flag")));
    EXPECT_TRUE(isNothing(m_query->next("unheard")));
    EXPECT_TRUE(isNothing(m_query->next(nullptr)));
    EXPECT_EQ(next("n"), "s32 2");
    EXPECT_EQ(show(varo::getLastValue(m_query, "n", 0, kEnd).value()), "s32 3");
    EXPECT_EQ(next("n"), "s32 1");
    EXPECT_FALSE(m_query->present("absent", 0, kEnd));
    EXPECT_TRUE(isNothing(m_query->next("n")));
}

TEST_F(ParseResult, FlagsHaveOccurrencesOnly) {
    parse({"--flag", "--n=1", "--flag", "--n=2", "--flag"});
    std::vector<int> positions{m_query->get("flag", 0, kEnd).position()};
    while (m_query->nextPosition() != kEnd) {
        varo::Value const value = m_query->next("flag");
        EXPECT_EQ(value.text() + show(value.value()), "null");
        EXPECT_LT(positions.back(), value.position());
        positions.push_back(value.position());
    }
    ASSERT_EQ(positions.size(), 3U);
    EXPECT_EQ(contents(m_result, "flag", 0, positions[1]), "null null");
    EXPECT_EQ(contents(m_result, "flag", positions[0] + 1, positions[2] - 1), "null");
    EXPECT_EQ(varo::getLastValue(m_query, "flag", 0, positions[2]).position(), positions[1]);
    EXPECT_TRUE(isNothing(varo::getLastValue(m_query, "flag", positions[2] + 1, kEnd)));
}

TEST_F(ParseResult, OccurrencesHideTheDefault) {
    m_parser->option("empty", "", vtString, "")->defaultValue("");
    m_parser->option("other", "", vtS32, "")->defaultValue("of another kind");
    parse({});
    EXPECT_TRUE(m_query->present("level", 7, 7));
    EXPECT_EQ(next("level"), "nothing");
    varo::Value const value = m_query->get("level", 7, 7);
    EXPECT_EQ(value.text(), std::string("3"));
    EXPECT_EQ(value.as<int>(), 3);
    EXPECT_EQ(next("level"), "nothing");
    EXPECT_EQ(varo::getLastValue(m_query, "level", 0, kEnd).as<int>(), 3);
    EXPECT_EQ(contents(m_result, "empty"), "default ''");
    EXPECT_EQ(contents(m_result, "other"), "default 'of another kind'");

    EXPECT_TRUE(m_query->present("level", 0, kEnd));
    parse({"--level=4"});
    EXPECT_EQ(next("level"), "nothing");
    EXPECT_EQ(contents(m_result, "level"), "s32 4");
    EXPECT_EQ(contents(m_result, "level", 0, 0), "absent");
    EXPECT_TRUE(isNothing(m_query->get("level", 0, 0)));
    EXPECT_TRUE(isNothing(varo::getLastValue(m_query, "level", 0, 0)));
    EXPECT_EQ(varo::getLastValue(m_query, "level", 0, kEnd).as<int>(), 4);
}

TEST_F(ParseResult, NamesAreKnownWhole) {
    parse({"--number=5"});
    EXPECT_EQ(contents(m_result, "number") + " " + contents(m_result, "n"), "s32 5 s32 5");
    for (char const* name : {"num", "unheard", "", static_cast<char const*>(nullptr)}) {
        EXPECT_FALSE(m_query->present(name, 0, kEnd));
        EXPECT_TRUE(isNothing(m_query->get(name, 0, kEnd)));
        EXPECT_TRUE(isNothing(varo::getLastValue(m_query, name, 0, kEnd)));
    }
    EXPECT_TRUE(isNothing(varo::getLastValue(nullptr, "n", 0, kEnd)));
}

TEST_F(ParseResult, KeysComeBeforeSynonyms) {
    m_parser->option("one", "", vtS32, "")->synonym("uno")->synonym("two");
    varo::Parser const other;
    other->option("two", "", vtS32, "");
    parse({"--one=1"});
    EXPECT_EQ(contents(m_result, "two"), "s32 1");
    EXPECT_EQ(other->parseStream("--two=2", m_query), kRefused);
    EXPECT_STREQ(other.error(), "");
    EXPECT_EQ(contents(m_result, "two"), "s32 2");
    EXPECT_EQ(contents(m_result, "one"), "s32 1");
    // A later occurrence goes to the first of its names that is a key.
    m_result = other.createResult();
    EXPECT_EQ(other->parseStream("--two=2", m_result.interface()), kSuccess);
    parse({"--one=1"});
    EXPECT_EQ(contents(m_result, "two"), "s32 2 s32 1");
}

TEST_F(ParseResult, MustBelongToTheParser) {
    varo::Parser const other;
    other->option("two", "", vtS32, "");
    m_result = other.createResult();
    EXPECT_EQ(other->parseStream("--two=2", m_result.interface()), kSuccess);
    // An option that is met twice, before and after another, must not count for two.
    for (char const* const text : {"--n=1", "--n=1\n--list=a\n--n=2"}) {
        EXPECT_EQ(m_parser->parseStream(text, m_result.interface()), kRefused);
    }
}

TEST_F(ParseResult, FurtherParsesAddToIt) {
    parse({"--n=1,2", "--", "a"});
    varo::Value const first = m_query->get("n", 0, kEnd);
    char const* plain = nullptr;
    EXPECT_EQ(m_query->getFirstArgument(&plain), 0);
    std::string many;
    for (int index = 3; index < 2000; ++index) {
        many += "--n=" + std::to_string(index) + "\n";
    }
    EXPECT_EQ(m_parser->parseStream((many + "--\nb\n").c_str(), m_query), kSuccess);
    for (int index = 2; index < 2000; ++index) {
        ASSERT_EQ(next("n"), "s32 " + std::to_string(index));
    }
    EXPECT_EQ(next("n"), "nothing");
    EXPECT_STREQ(first.text(), "1");
    EXPECT_STREQ(plain, "a");
    EXPECT_EQ(plainArguments(m_result), "a|b|");
}

TEST_F(ParseResult, PlainArgumentsStartWithTheFirst) {
    parse({"--n=1"});
    char const* text = "untouched";
    EXPECT_EQ(m_query->getNextArgument(&text), 1);
    EXPECT_EQ(m_query->getFirstArgument(&text), 1);
    EXPECT_STREQ(text, "untouched");
    parse({"--", "a", "b"});
    EXPECT_EQ(m_query->getNextArgument(&text) + m_query->getNextArgument(&text), 0);
    EXPECT_STREQ(text, "b");
    EXPECT_EQ(m_query->getNextArgument(&text), 1);
    EXPECT_EQ(m_query->getFirstArgument(&text), 0);
    EXPECT_STREQ(text, "a");
}

TEST_F(ParseResult, OutlivesItsParser) {
    parse({"--list=kept", "--", "plain"});
    m_parser = varo::Parser();
    varo::Value const value = m_query->get("list", 0, kEnd);
    EXPECT_STREQ(value.text(), "kept");
    EXPECT_EQ(contents(m_result, "level"), "default s32 3");
    EXPECT_EQ(plainArguments(m_result), "plain|");
    m_result = varo::Result();
    EXPECT_STREQ(value.as<char const*>(), "kept");
}

TEST(ItemList, OwnsWhatItTakesOver) {
    variant_t const text("shared");
    auto const references = [&] {
        return *reinterpret_cast<int const*>(
            text.m_value.m_text - sizeof(variant_t::data_header_t) + sizeof(std::uint64_t));
    };
    for (int const count : {1, 2, 9}) {
        varo_3_3::ItemList list;
        auto const fill = [&] {
            for (int position = 0; position < count; ++position) {
                varo_3_3::NewValue value{"typed", text, position};
                list.reserveMore(1);
                list.append(value, position);
                EXPECT_EQ(value.value.m_type, vtNull);
            }
        };
        fill();
        EXPECT_EQ(references(), 1 + count);
        varo_3_3::ItemList moved = std::move(list);
        EXPECT_EQ(moved.size(), static_cast<unsigned>(count));
        EXPECT_EQ(moved.back().position, count - 1);
        varo::Value const copy = varo_3_3::ItemList::valueOf(moved[0], 7);
        EXPECT_EQ(show(copy.value()) + copy.text() + std::to_string(copy.position()),
                  "'shared'typed7");
        EXPECT_EQ(references(), 2 + count);
        fill();  // again, after it was emptied
        EXPECT_EQ(references(), 2 + 2 * count);
    }
    EXPECT_EQ(references(), 1);
}

TEST(Defaults, OfEarlierParsesKeepTheirTexts) {
    varo::Parser const parser;
    varo::IOption* const option = parser->option("mode", "", vtString, "")->defaultValue("first");
    varo::Result result = parser.createResult();
    EXPECT_EQ(parse(parser, result, {}), kSuccess);
    char const* const text = result.interface()->get("mode", 0, 1).as<char const*>();
    int const position = result.interface()->get("mode", 0, 1).position();
    option->defaultValue("second");
    EXPECT_EQ(parse(parser, result, {}), kSuccess);
    EXPECT_EQ(contents(result, "mode"), "default 'second'");
    EXPECT_LT(position, result.interface()->get("mode", 0, 1).position());
    EXPECT_STREQ(text, "first");
}

}  // namespace
