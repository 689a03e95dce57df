#include <optional>
#include <string_view>
#include <type_traits>

#include "support.h"

namespace {

using namespace mosaic2;
using namespace varo_test;

static_assert(!std::is_copy_constructible_v<varo::Parser> &&
              !std::is_copy_constructible_v<varo::Result> &&
              !std::is_constructible_v<varo::Parser, int>);
static_assert(sizeof(varo::Parser) == sizeof(void*) && sizeof(varo::Result) == sizeof(void*));
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
    // What cannot be read as asked is not there.
    EXPECT_FALSE(result.get<int>("size") || result.get<bool>("ratio") || result.get<int>("word") ||
                 result.get<std::string>("level") || result.get<bool>("help") ||
                 result.get<int>("unheard"));
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
    EXPECT_EQ(result.values("level").begin(), result.values("level").end());
    EXPECT_EQ(plainArguments(result), "x||y|");
    EXPECT_STREQ((result.values("word").begin()++)->text(), "a");
    EXPECT_STREQ(*result.arguments().begin()++, "x");
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
    EXPECT_EQ(first.values("word").begin(), first.values("word").end());
    EXPECT_EQ(first.arguments().begin(), first.arguments().end());
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
