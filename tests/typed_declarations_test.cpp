#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "support.h"

enum class Shape { kCircle, kSquare, kStar };

template <>
struct varo::Words<Shape> {
    static constexpr varo::Word<Shape> list[] = {
        {"circle", Shape::kCircle}, {"square", Shape::kSquare}, {"star", Shape::kStar}};
};

template <>
struct varo::Conversion<std::chrono::seconds> {
    static std::optional<std::chrono::seconds> fromText(std::string_view text,
                                                        std::string& reason) {
        int number = 0;
        auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        std::string_view const unit(end, static_cast<std::size_t>(text.data() + text.size() - end));
        if (error != std::errc() || (unit != "s" && unit != "min")) {
            reason = "A time is a number with s or min.";
            return std::nullopt;
        }
        return std::chrono::seconds(unit == "s" ? number : 60 * number);
    }
    static std::string toText(std::chrono::seconds time) {
        return std::to_string(time.count()) + "s";
    }
};

/// A number of bytes; gives no reasons, and throws where a host's own code may.
struct Size {
    std::uint64_t bytes;
};

template <>
struct varo::Conversion<Size> {
    static std::optional<Size> fromText(std::string_view text, std::string&) {
        if (text == "throw") {
            throw std::runtime_error("no size");
        }
        std::uint64_t number = 0;
        auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        bool const isGiga = std::string_view(end) == "G";
        if (error != std::errc() || (!isGiga && *end != '\0')) {
            return std::nullopt;
        }
        return Size{number << (isGiga ? 30 : 0)};
    }
};

/// Has no default constructor.
struct Port {
    explicit Port(int given) : number(given) {}
    int number;
};

template <>
struct varo::Conversion<Port> {
    static std::optional<Port> fromText(std::string_view text, std::string&) {
        return text == "ssh" ? std::optional<Port>(22) : std::nullopt;
    }
    static std::string toText(Port const& port) { return port.number == 21 ? "ssh" : "?"; }
};

namespace {

using namespace std::chrono_literals;
using namespace varo_test;

/// Declares one option of Type, parses one command line, and asks for the option.
template <class Type>
std::optional<Type> ask(Arguments const& arguments, int code = varo::kSuccess) {
    varo::Parser parser(varo::kUnknownIsError);
    auto const option = parser.option<Type>("o", "");
    varo::Result result = parser.createResult();
    EXPECT_EQ(parse(parser, result, arguments), code) << parser.error();
    return result[option];
}

/// Whether a value of Type is what was typed, and the one typed after it refused.
template <class Type>
void expectBorder(Type value, std::string const& typed, std::string const& refused, int code) {
    EXPECT_EQ(ask<Type>({"--o=" + typed}), value);
    EXPECT_EQ(ask<Type>({"--o=" + refused}, code), std::nullopt) << refused;
}

TEST(TypedDeclarations, HoldNumbersOfEveryWidthOrNone) {
    // What the parser itself converts, it refuses with one code; what a handler must check, with
    // another.
    int const early = varo::kParseError;
    int const late = varo::kRefused;
    expectBorder<signed char>(127, "127", "128", late);
    expectBorder<std::int8_t>(-128, "-128", "-129", late);
    expectBorder<std::uint8_t>(255, "255", "256", late);
    expectBorder<short>(-32768, "-32768", "-32769", late);
    expectBorder<unsigned short>(65535, "65535", "65536", late);
    expectBorder<int>(-2147483647 - 1, "-2147483648", "-2147483649", early);
    expectBorder<unsigned>(4294967295U, "4294967295", "4294967296", early);
    expectBorder<unsigned>(0, "0", "-1", early);
    expectBorder<long>(INT64_MAX, "9223372036854775807", "9223372036854775808", early);
    expectBorder<long long>(INT64_MIN, "-9223372036854775808", "-9223372036854775809", early);
    expectBorder<unsigned long>(UINT64_MAX, "18446744073709551615", "18446744073709551616", early);
    expectBorder<unsigned long long>(255, "ff", "-1", early);
    expectBorder<float>(0.1F, "0.1", "1e39", late);
    expectBorder<double>(1e300, "1e300", "1e309", early);
}

TEST(TypedDeclarations, AnswerByTheirKind) {
    varo::Parser parser(varo::kUnknownIsError);
    auto const level = parser.option<int>("level,l", "").defaultValue(1).allow(1, 2, 3);
    auto const depth = parser.option<unsigned>("depth", "").synonym("deep");
    auto const quiet = parser.option<bool>("quiet", "");
    auto const color = parser.option<bool>("color", "").defaultValue(true);
    auto const help = parser.option<void>("help,h", "");
    auto const files = parser.option<std::string>("file", "").positional().whole();
    auto const path = parser.option<std::string_view>("path", "").separator(':').defaultValue("/");
    auto const title = parser.option<char const*>("title", "").defaultValue(std::string("none"));
    auto const shape = parser.option<Shape>("shape", "")
                           .defaultValue(Shape::kSquare)
                           .deprecated("round", Shape::kCircle);
    auto const wait = parser.option<std::chrono::seconds>("wait", "").defaultValue(2min);
    static_assert(
        std::is_same_v<decltype(std::declval<varo::Result>()[level]), int> &&
        std::is_same_v<decltype(std::declval<varo::Result>()[depth]), std::optional<unsigned>> &&
        std::is_same_v<decltype(std::declval<varo::Result>()[quiet]), bool> &&
        std::is_same_v<decltype(std::declval<varo::Result>()[help]), bool> &&
        std::is_same_v<decltype(std::declval<varo::Result>()[shape]), Shape>);

    // Every row: what was typed, then all answers.
    struct Row {
        Arguments arguments;
        std::string answers;
    };
    Row const rows[] = {
        {{}, "1 -1 0 1 0 [] / none square 120"},
        {{"-l", "3", "--deep=7", "--quiet", "--no-color", "-h", "a,b", "c"},
         "3 7 1 0 1 [a,b|c|] / none square 120"},
        {{"--path=x:y", "--title=t", "--shape=st", "--wait=5s"}, "1 -1 0 1 0 [] y t star 5"},
        {{"--shape=round", "--quiet", "--no-quiet"}, "1 -1 0 1 0 [] / none circle 120"},
        // An occurrence without a value leaves the handle's own default.
        {{"--level", "", "--title", "", "--path", "", "--shape", "", "--wait", "", "--depth", ""},
         "1 -1 0 1 0 [] / none square 120"},
    };
    auto const answers = [&](varo::Result const& result) {
        std::string text = std::to_string(result[level]) + " ";
        text += result[depth] ? std::to_string(*result[depth]) : "-1";
        text += result[quiet] ? " 1" : " 0";
        text += result[color] ? " 1" : " 0";
        text += result[help] ? " 1 [" : " 0 [";
        for (std::string const& file : result.all(files)) {
            text += file + "|";
        }
        char const* const shapes[] = {"circle", "square", "star"};
        return text + "] " + std::string(result[path]) + " " + result[title] + " " +
               shapes[static_cast<int>(result[shape])] + " " + std::to_string(result[wait].count());
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.answers);
        varo::Result result = parser.createResult();
        EXPECT_EQ(parse(parser, result, row.arguments), kSuccess) << parser.error();
        EXPECT_EQ(answers(result), row.answers);
    }
    // No defaults in the result: the handles have them.
    varo::Result result = parser.createResult();
    EXPECT_EQ(parser.parseText("--quiet\nx", result), 0);
    EXPECT_EQ(answers(result), "1 -1 1 1 0 [x|] / none square 120");
    EXPECT_EQ(answers(varo::Result()), "1 -1 0 1 0 [] / none square 120");
}

TEST(TypedDeclarations, RefuseWhatTheHostsTypeDoesNotHave) {
    varo::Parser parser(varo::kUnknownIsError);
    auto const wait = parser.option<std::chrono::seconds>("wait,w", "");
    auto const size = parser.option<Size>("size", "").deprecated("12g", "12G");
    auto const port = parser.option<std::uint16_t>("port", "");
    varo::Parser moved = std::move(parser);
    std::string const invalid = "' is not valid for option '";
    check(moved,
          {
              {{"-w", "90s"}, kSuccess, "", "wait", "'90s'"},
              {{"--wait=1min,2s"}, kSuccess, "", "wait", "'1min' '2s'"},
              {{"--wait=1min,2h"},
               kRefused,
               "Value '1min,2h" + invalid +
                   "wait' in argument '--wait=1min,2h': "
                   "A time is a number with s or min.",
               "wait",
               "absent"},
              {{"--size=12G"}, kSuccess, "", "size", "'12G'"},
              {{"--size=12Q"}, kRefused, "Value '12Q" + invalid + "size' in argument '--size=12Q'"},
              {{"--size=throw"}, kUnidentifiedProblem, "Unidentified problem detected."},
              {{"--port=70000"},
               kRefused,
               "Value '70000" + invalid +
                   "port' in argument '--port=70000': "
                   "It must be from 0 to 65535."},
          });
    varo::Result result = moved.createResult();
    EXPECT_EQ(parse(moved, result, {"--size=3", "--size=2G", "--wait=1s,2min", "--port=80"}),
              kSuccess);
    EXPECT_EQ(result[size]->bytes, 2ULL << 30);
    EXPECT_EQ(result.all(wait), (std::vector{1s, 120s}));
    EXPECT_EQ(result[port], 80);
    EXPECT_EQ(result.last<std::chrono::seconds>("wait"), 120s);
    // A reason belongs to its own parse: a later refusal by somebody else has none.
    EXPECT_EQ(parse(moved, result, {"--wait=never"}), kRefused);
    RecordingHandler handler;
    handler.m_reaction = [](std::string const& event) { return event != "value wait=1s"; };
    moved->addHandler(&handler);
    EXPECT_EQ(parse(moved, result, {"--wait=1s"}), kRefused);
    EXPECT_EQ(moved.error(), "Value '1s" + invalid + "wait' in argument '--wait=1s'");
}

TEST(TypedDeclarations, KeepTheChecksOfTheDeclarationThatParses) {
    varo::Parser parser(varo::kUnknownIsError);
    auto const add = parser.action<void>("add", "");
    auto const list = parser.action<void>("list", "");
    parser.option<std::string>("plain", "");
    parser.option<Size>("plain", "");  // refused
    parser.modifier<std::string>("shared", add, "");
    parser.modifier<Size>("shared", list, "");  // the first one is what parses
    parser.option<Size>("replaced", "");
    parser.option<std::string>("sized", "");
    parser->setReplace(true);
    parser.option<std::string>("replaced", "");
    parser.option<Size>("sized", "");
    check(parser, {{{"--add", "--plain=x"}, kSuccess, ""},
                   {{"--add", "--shared=x"}, kSuccess, ""},
                   {{"--add", "--replaced=x"}, kSuccess, ""},
                   {{"--add", "--sized=x"},
                    kRefused,
                    "Value 'x' is not valid for option 'sized' in argument '--sized=x'"}});
}

TEST(TypedDeclarations, CheckModifiersOfOneNameByTheirTypes) {
    varo::Parser parser(varo::kUnknownIsError);
    auto const add = parser.action<void>("add", "");
    auto const list = parser.action<void>("list", "");
    parser.modifier<std::uint8_t>("shared", add, "");
    parser.modifier<int>("shared,other", list, "");
    parser.modifier<Size>("sized", add, "");
    parser.modifier<int>("narrowed", add, "");
    parser->setReplace(true);
    parser.modifier<int>("sized", add, "");
    parser.modifier<std::uint8_t>("narrowed", add, "");
    auto const refusal = [](std::string const& name) {
        return "Value '300' is not valid for option '" + name + "' in argument '--" + name +
               "=300': It must be from 0 to 255.";
    };
    check(parser, {{{"--list", "--other=300"}, kSuccess, ""},
                   {{"--add", "--shared=300"}, kRefused, refusal("shared")},
                   {{"--add", "--sized=3"}, kSuccess, ""},
                   {{"--add", "--narrowed=300"}, kRefused, refusal("narrowed")}});
    char const* const error = parser.error();
    EXPECT_EQ(parser.error(), error) << "the first text is gone";
}

TEST(TypedDeclarations, TellOfDefaultsThatTheTypeDoesNotHave) {
    varo::Parser parser;
    auto const port = parser.option<std::uint16_t>("port", "").defaultValue(70000);
    auto const tiny = parser.option<short>("tiny", "").defaultValue(40000);
    auto const huge = parser.option<float>("huge", "").defaultValue(1e300);
    parser.option<std::uint8_t>("byte", "").allow(300, 5);
    std::string const mistakes = varo::describeMistakes(parser.interface());
    for (char const* name : {"port", "tiny", "huge", "byte"}) {
        EXPECT_NE(mistakes.find(name), std::string::npos) << name;
    }
    varo::Result const none;
    EXPECT_TRUE(none[port] == 0 && none[tiny] == 0 && none[huge] == 0);
}

TEST(TypedDeclarations, HaveDefaultsAsTheyAreReadAndShown) {
    varo::Parser parser;
    auto const port = parser.option<Port>("port", "").defaultValue(Port(21));
    auto const share = parser.option<float>("share", "").defaultValue(0.1F).allow(0.1, 0.25F);
    char const* const unset = nullptr;
    auto const title = parser.option<std::string>("title", "").defaultValue(unset);
    EXPECT_STREQ(varo::describeMistakes(parser.interface()), "");
    EXPECT_EQ(std::string(parser.help()).find("0.1000"), std::string::npos);
    varo::Result result = parser.createResult();
    EXPECT_EQ(parse(parser, result, {}), kSuccess);
    EXPECT_TRUE(result[port].number == 22 && result[share] == 0.1F && result[title].empty());
    EXPECT_EQ(varo::Result()[port].number, 22);
    for (char const* argument : {"--share=0.1", "--share=0.25"}) {
        EXPECT_EQ(parse(parser, result, {argument}), kSuccess) << parser.error();
    }
    EXPECT_EQ(parse(parser, result, {"--title", "", "--title=x"}), kSuccess);
    EXPECT_EQ(result.values(title).size(), 1U);
    EXPECT_EQ(varo::printable(unset), "");
}

TEST(TypedDeclarations, ModifiersBelongToTheirActions) {
    varo::Parser parser(varo::kUnknownIsError | varo::kDoubleDashHelp);
    auto const add = parser.action<std::string>("add,a", "Put in").whole();
    auto const list = parser.action<void>("list", "Show");
    auto const check = parser.action<void>("check", "Look");
    auto const level = parser.modifier<int>("level", add | check, "How much").defaultValue(6);
    parser.option<bool>("all", "Everything");
    parser.allowTogether(add | list | check);
    varo::Result result = parser.createResult();
    EXPECT_EQ(parse(parser, result, {"-a", "x,y", "--level=9"}), kSuccess);
    EXPECT_EQ(result[add], "x,y");
    EXPECT_FALSE(result[list] || result[check]);
    EXPECT_EQ(result[level], 9);
    EXPECT_EQ(parse(parser, result, {"--list", "--check", "--level=1"}), kParseError);
    EXPECT_STREQ(parser.error(), "Action '-list' doesn't accept option '-level'");
    EXPECT_STREQ(parser.help(), parser->getDescription(false));
    EXPECT_STREQ(parser.topicHelp(level), parser->getDescription("level", false));
    EXPECT_STREQ(parser.actionHelp(add), parser->getActionModifiersDescription("add", false));
    EXPECT_STREQ(parser.globalHelp(), parser->getGlobalModifiersDescription(false));
    EXPECT_STREQ(parser.help(varo::Sections::kHidden), parser->getDescription(true));
}

TEST(TypedDeclarations, OutliveTheirParserAndTheNamesTheyWereMadeWith) {
    std::optional<varo::DefaultedOption<std::string>> title;
    varo::Result result;
    {
        varo::Parser parser;
        std::string const name = "a name too long to be kept in the string itself";
        title = parser.option<std::string>((name + ",t").c_str(), "").defaultValue(name + "!");
        result = parser.createResult();
        EXPECT_EQ(parse(parser, result, {"-t", "x"}), kSuccess);
    }
    varo::DefaultedOption<std::string> const copy = *title;
    title.reset();
    EXPECT_EQ(result[copy], "x");
    EXPECT_EQ(varo::Result()[copy], "a name too long to be kept in the string itself!");
    // Without a parser, declarations have no effect.
    varo::Parser parser;
    varo::Parser const taken = std::move(parser);
    auto const none =
        parser.option<Size>("size", "").positional();  // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(none.interface(), nullptr);
    EXPECT_STREQ(parser.help(), "");
}

}  // namespace
