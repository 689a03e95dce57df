#include <limits>
#include <memory>

#include "support.h"

namespace {

using namespace mosaic2;
using namespace varo_test;

TEST(AllowedValues, AreMatchedWholeOrByTheirBeginning) {
    varo::Parser const parser;
    parser->option("mode", "", vtString, "")
        ->allowValue("fast")
        ->allowValue("fair")
        ->allowValue({"fa", true})
        ->allowValue("slow");
    parser->option("size", "", vtS32, "")->allowValue(10)->allowValue(20.0)->allowValue("30");
    auto const refused = [](std::string const& argument, std::string const& reason,
                            std::string const& possible) {
        return "Value validation problem in argument '--" + argument + "': " + reason +
               ". Possible values follows: " + possible;
    };
    std::string const ambiguous = "Ambiguous value for option 'mode'",
                      notAllowed = "Option 'mode' does not allow value 'Fast'",
                      notASize = "Option 'size' does not allow value '",
                      modes = "'fast', 'fair', 'fa'", sizes = "'10', '20', '30'";
    check(parser,
          {{{"--mode=fast"}, kSuccess, "", "mode", "'fast'"},
           {{"--mode=fas,fai"}, kSuccess, "", "mode", "'fast' 'fair'"},
           {{"--mode=fa"}, kSuccess, "", "mode", "'fa'"},
           {{"--mode=f"}, kParseError, refused("mode=f", ambiguous, modes)},
           {{"--mode", "Fast"}, kParseError, refused("mode", notAllowed, modes + ", 'slow'")},
           // Numbers are equal by value, and only strings are completed.
           {{"--size=10,20"}, kSuccess, "", "size", "s32 10 s32 20"},
           {{"--size=30"}, kParseError, refused("size=30", notASize + "30'", sizes)},
           {{"--size=1"}, kParseError, refused("size=1", notASize + "1'", sizes)}});

    varo::Result result = parser.createResult();
    parse(parser, result, {"--mode=fas"});
    EXPECT_STREQ(result.interface()->get("mode", 0, varo::kNoPosition).text(), "fas");
}

TEST(AllowedValues, AreFoundAmongMany) {
    varo::Parser const parser(varo::kUnknownIsError);
    varo::IOption* const mode = parser->option("mode", "", vtString, "");
    varo::IOption* const size = parser->option("size", "", vtU64, "");
    varo::IOption* const ratio = parser->option("ratio", "", vtDouble, "");
    for (int number = 20; number > 0; --number) {
        std::string const text = "mode" + std::string(number, 'x') + "-" + std::to_string(number);
        mode->allowValue(text.c_str())->allowValue(text.c_str())->allowValue(number);
        size->allowValue(number * 1.0)->allowValue(text.c_str());
        ratio->allowValue(number)->allowValue(std::numeric_limits<double>::quiet_NaN());
    }
    size->allowValue(-1)->allowValue(9007199254740993.0);
    check(parser, {{{"--mode=modexx-"}, kSuccess, "", "mode", "'modexx-2'"},
                   {{"--mode=modexxx-3"}, kSuccess, "", "mode", "'modexxx-3'"},
                   {{"--size=7"}, kSuccess, "", "size", "u64 7"},
                   {{"--size=ffffffffffffffff"}, kSuccess, "", "size", "u64 18446744073709551615"},
                   {{"--size=9007199254740993"}, kSuccess, "", "size", "u64 9007199254740993"},
                   {{"--ratio=3"}, kSuccess, "", "ratio", "double 3"}});
    varo::Result none;
    for (char const* const refused :
         {"--mode=7", "--mode=modey", "--mode=modexx", "--size=21", "--ratio=2.5", "--ratio=-3"}) {
        EXPECT_EQ(parse(parser, none, {refused}), kParseError) << refused;
    }
}

// What a result holds does not depend on the memory of the program that declared it.
TEST(AllowedValues, AreStoredAsStringsOfTheirOwn) {
    auto word = std::make_unique<std::string>("a word that is borrowed");
    varo::Result result;
    {
        varo::Parser const parser;
        parser->option("word", "", vtString, "")
            ->allowValue(variant_t(word->c_str(), true))
            ->tokenize(0);
        result = parser.createResult();
        EXPECT_EQ(parse(parser, result, {"--word=a w", "--word=" + *word}), kSuccess);
    }
    word->assign(word->size(), 'X');
    word.reset();
    EXPECT_EQ(contents(result, "word"), "'a word that is borrowed' 'a word that is borrowed'");
    EXPECT_STREQ(result.interface()->get("word", 0, varo::kNoPosition).text(), "a w");
}

TEST(DeprecatedValues, AreReplacedOnceWithAWarning) {
    varo::Parser const parser;
    parser->option("mode,m", "", vtString, "")
        ->allowValue("new")
        ->allowDeprecatedValue("a", "b")
        ->allowDeprecatedValue("b", "a")
        ->allowDeprecatedValue("b", "second entry")
        ->allowDeprecatedValue(5, "another kind");
    parser->option("level", "", vtS32, "")
        ->allowDeprecatedValue(1U, 2)
        ->allowDeprecatedValue("x", 7)
        ->allowDeprecatedValue(3.0, 4);
    auto const warning = [](std::string const& text, std::string const& name,
                            std::string const& replacement) {
        return "Warning: '" + text + "' argument is deprecated for the option '-" + name +
               "'. Use the '" + replacement + "' argument instead.";
    };
    std::string const aToB = warning("a", "mode", "b");
    check(parser,
          {{{"--mode=a"}, kSuccess, aToB, "mode", "'b'"},
           {{"--mode=b,a"}, kSuccess, warning("b", "mode", "a") + "\n" + aToB, "mode", "'a' 'b'"},
           {{"--level=1,2"}, kSuccess, warning("1", "level", "2"), "level", "s32 2 s32 2"},
           {{"--level=+3", "-m=new,a"},
            kSuccess,
            warning("+3", "level", "4") + "\n" + aToB,
            "mode",
            "'new' 'b'"},
           // A warning survives neither an error nor the next parse.
           {{"--mode=a", "--level"},
            kParseError,
            "Option 'level' requires a value in argument: '--level'"},
           {{"--level=9"}, kSuccess, ""}});

    varo::Parser const plain(varo::kPositionalAfterMarker);
    plain->option("mode", "", vtString, "")->positional()->allowDeprecatedValue("a", "b");
    check(plain, {{{"a", "--", "a"}, kSuccess, aToB + "\n" + aToB, "mode", "'b' 'b'"}});
}

TEST(ValueIntake, SplitsAtTheSeparatorAndDropsEmptyPieces) {
    varo::Parser const parser;
    parser->option("list", "", vtString, "");
    parser->option("n", "", vtS32, "");
    parser->option("whole", "", vtString, "")->tokenize(':')->tokenize('\0');
    parser->option("equals", "", vtString, "")->tokenize('=');
    parser->option("dash", "", vtString, "")->tokenize('-');
    parser->option("byte", "", vtString, "")->tokenize('\xa4');
    parser->option("control", "", vtString, "")->tokenize('\1');
    check(parser,
          {{{"--list=a,,b,"}, kSuccess, "", "list", "'a' 'b'"},
           {{"--list", ",a b"}, kSuccess, "", "list", "'a b'"},
           {{"--list=,,,"}, kParseError, "No value parsed in argument ',,,' for option 'list'"},
           {{"--whole=a,b"}, kSuccess, "", "whole", "'a,b'"},
           {{"--equals=a=b"}, kSuccess, "", "equals", "'a' 'b'"},
           {{"--dash=-a-b"}, kSuccess, "", "dash", "'a' 'b'"},
           {{"--byte=x\xc3\xa4y"}, kSuccess, "", "byte", "'x\xc3' 'y'"},
           {{"--control=x\1y"}, kSuccess, "", "control", "'x' 'y'"},
           // One bad piece refuses the occurrence; earlier occurrences stay.
           {{"--n=1", "--n=2,x"},
            kParseError,
            cannotParse("--n=2,x", "n", "x", "integer"),
            "n",
            "s32 1"},
           {{"--list=" + std::string(1000000, ',') + "x"}, kSuccess, "", "list", "'x'"}});
}

}  // namespace
