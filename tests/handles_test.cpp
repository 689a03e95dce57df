#include <iomanip>
#include <optional>
#include <sstream>
#include <string_view>
#include <type_traits>

#include "support.h"

namespace {

using namespace mosaic2;
using namespace varo_test;

static_assert(!std::is_copy_constructible_v<varo::Parser> &&
              !std::is_copy_constructible_v<varo::Result> &&
              !std::is_constructible_v<varo::Parser, int>);
static_assert(sizeof(varo::Result) == sizeof(void*));
static_assert(!varo::Flags(varo::kDashGuard).has(varo::kUnknownIsError));

varo::Parser makeParser() {
    varo::Parser parser(varo::kUnknownIsError | varo::Flags());
    parser->option("level", "", vtS32, "")->defaultValue(3);
    parser->option("size", "", vtU64, "");
    parser->option("ratio", "", vtDouble, "");
    parser->option("word", "", vtString, "");
    parser->option("flag", "", vtBool, "");
    parser->option("help", "", vtNull, "");
    return parser;
}

TEST(Handles, GiveValuesOrNothing) {
    varo::Parser const parser = makeParser();
    varo::Result result = parser.createResult();
    ASSERT_EQ(
        parse(parser, result, {"--size=ff,1", "--ratio=2.5", "--word=a,b", "--no-flag", "--help"}),
        0);
    EXPECT_TRUE(result.has("level") && result.has("help") && !result.has("unheard"));
    EXPECT_EQ(result.get<int>("level"), 3);
    EXPECT_EQ(result.last<int>("level"), 3);
    EXPECT_EQ(result.get<unsigned long>("size"), 255U);
    EXPECT_EQ(result.last<long>("size"), 1);
    EXPECT_EQ(result.get<double>("size"), 255.0);
    EXPECT_EQ(result.get<bool>("flag"), false);
    EXPECT_EQ(result.get<std::string>("word"), "a");
    EXPECT_EQ(result.last<std::string_view>("word"), "b");
    EXPECT_STREQ(result.get<char const*>("word").value_or(""), "a");
    // What cannot be read as the type asked for is absent.
    EXPECT_FALSE(result.get<int>("ratio") || result.get<bool>("ratio") || result.get<int>("word") ||
                 result.get<std::string>("level") || result.get<bool>("help") ||
                 result.get<int>("unheard"));
}

/// Reads one value as every kind of number; "-" for what the number does not fit into.
std::string readings(varo::Result const& result, char const* name) {
    std::string shown;
    auto const read = [&](auto number) {
        using Type = decltype(number);
        std::optional<Type> const value = result.last<Type>(name);
        std::ostringstream text;
        text.imbue(std::locale::classic());
        text << std::setprecision(20) << +value.value_or(Type());
        shown += value ? text.str() + " " : "- ";
    };
    [&](auto... numbers) { (read(numbers), ...); }(
        bool(), static_cast<signed char>(0), static_cast<unsigned short>(0), 0, 0U, 0L, 0UL, 0.0F);
    return shown;
}

TEST(Handles, GiveNumbersThatFit) {
    varo::Parser parser;
    parser->option("s32", "", vtS32, "");
    parser->option("u64", "", vtU64, "");
    parser->option("s64", "", vtS64, "");
    parser->option("double", "", vtDouble, "");
    parser->option("bool", "", vtBool, "");
    struct Row {
        char const* argument;
        char const* readings;  // bool, signed char, unsigned short, int, unsigned, long, ...
    };
    Row const rows[] = {
        {"--s32=-5", "- -5 - -5 - -5 - -5 "},
        {"--s64=12", "- 12 12 12 12 12 12 12 "},
        {"--s64=1", "1 1 1 1 1 1 1 1 "},
        {"--s64=-2147483649", "- - - - - -2147483649 - -2147483648 "},
        {"--u64=18446744073709551615", "- - - - - - 18446744073709551615 18446744073709551616 "},
        {"--u64=2147483648", "- - - - 2147483648 2147483648 2147483648 2147483648 "},
        {"--double=65535", "- - 65535 65535 65535 65535 65535 65535 "},
        {"--double=-128", "- -128 - -128 - -128 - -128 "},
        {"--double=2.5", "- - - - - - - 2.5 "},
        {"--double=9223372036854775808", "- - - - - - 9223372036854775808 9223372036854775808 "},
        {"--double=18446744073709551616", "- - - - - - - 18446744073709551616 "},
        {"--double=1e39", "- - - - - - - - "},
        {"--no-bool", "0 0 0 0 0 0 0 0 "},
    };
    for (Row const& row : rows) {
        varo::Result result = parser.createResult();
        EXPECT_EQ(parse(parser, result, {row.argument}), kSuccess);
        std::string const argument = row.argument;
        std::string const name = argument.substr(2, argument.find('=') - 2);
        EXPECT_EQ(readings(result, name == "no-bool" ? "bool" : name.c_str()), row.readings)
            << argument;
    }
}

TEST(Handles, LetOtherQueriesComeIntoALoop) {
    varo::Parser const parser = makeParser();
    varo::Result result = parser.createResult();
    ASSERT_EQ(parse(parser, result, {"--word=a,b", "--size=1", "--word=c", "--", "x", "y"}),
              kSuccess);
    std::string met;
    for (varo::Value const& outer : result.values("word")) {
        met += result.has("level") ? " " : "?";
        for (varo::Value const& inner : result.values("word", outer.position())) {
            met += inner.text();
            result.interface()->get("size", 0, varo::kNoPosition);
        }
        for (char const* argument : result.arguments()) {
            met += argument;
            met += *result.arguments().front();
        }
    }
    EXPECT_EQ(met, " abcxxyx bcxxyx cxxyx");
}

TEST(Handles, WalkWhatAParseWithinAParseStored) {
    varo::Parser parser(varo::kUnknownIsError);
    auto const words = parser.option<std::string>("word", "");
    varo::Result result = parser.createResult();
    RecordingHandler handler;
    handler.m_reaction = [&](std::string const& event) {
        if (event == "value word=outer") {
            EXPECT_EQ(parser.parseText("--word=inner,last", result), kSuccess);
        }
        return true;
    };
    parser->addHandler(&handler);
    ASSERT_EQ(parse(parser, result, {"--word=first", "--word=outer,more"}), kSuccess);
    // In the order in which they were stored; their positions do not ascend.
    std::string met;
    for (std::string const& word : result.all(words)) {
        met += word + std::to_string(result.all(words).size()) + " ";
        result.values(words, varo::kNoPosition - 1);
    }
    EXPECT_EQ(met, "first5 inner5 last5 outer5 more5 ");
}

TEST(Handles, WalkValuesAndArguments) {
    varo::Parser const parser = makeParser();
    varo::Result result = parser.createResult();
    ASSERT_EQ(parse(parser, result, {"--word=a", "--help", "--word=b,c", "--", "x", "", "y"}),
              kSuccess);
    auto const words = [&](int from, int to) {
        std::string all;
        for (varo::Value const& value : result.values("word", from, to)) {
            all += value.text();
        }
        return all;
    };
    int const second = result.interface()->get("help", 0, varo::kNoPosition).position();
    EXPECT_EQ(words(0, varo::kNoPosition), "abc");
    EXPECT_EQ(words(second, varo::kNoPosition), "bc");
    EXPECT_EQ(words(0, second), "a");
    EXPECT_TRUE(result.values("level").empty());
    EXPECT_EQ(plainArguments(result), "x||y|");
}

TEST(Handles, AreEmptyAfterAMove) {
    varo::Parser source = makeParser();
    varo::Parser const parser = std::move(source);
    varo::Result first = parser.createResult();
    varo::Result result = std::move(first);
    EXPECT_FALSE(source);  // NOLINT(bugprone-use-after-move): what is left is the subject
    EXPECT_FALSE(first);   // NOLINT(bugprone-use-after-move)
    EXPECT_FALSE(source.createResult());
    EXPECT_EQ(parse(source, result, {"--word=b"}), kUnusableArguments);
    EXPECT_STRNE(source.error(), "");
    EXPECT_FALSE(first.has("word"));
    EXPECT_EQ(first.get<std::string>("word"), std::nullopt);
    EXPECT_EQ(first.last<std::string>("word"), std::nullopt);
    EXPECT_TRUE(first.values("word").empty() && first.arguments().empty());
}

TEST(Handles, TakeAlongWhatTheyHold) {
    varo::Parser source = makeParser();
    varo::Parser parser = std::move(source);
    varo::Result first = parser.createResult();
    varo::Result result = std::move(first);
    ASSERT_EQ(parse(parser, result, {"--word=a"}), kSuccess);
    first = std::move(result);
    EXPECT_EQ(first.get<std::string>("word"), "a");
    source = std::move(parser);
    EXPECT_EQ(parse(source, first, {"--word=b"}), kSuccess);
    EXPECT_EQ(contents(first, "word"), "'a' 'b'");
}

}  // namespace
