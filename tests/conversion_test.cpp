#include <clocale>

#include "support.h"

namespace {

/// Whether the C library's functions below behave as in another country's locale.
bool g_isAbroad = false;

locale_t atHome() {
    static locale_t const locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

}  // namespace

extern "C" int isspace(int character) noexcept {
    return g_isAbroad ? character == 'x' : isspace_l(character, atHome());
}

extern "C" double strtod(char const* nptr, char** endptr) noexcept {
    if (g_isAbroad) {
        *endptr = const_cast<char*>(nptr);
        return 0;
    }
    return strtod_l(nptr, endptr, atHome());
}

namespace {

using namespace mosaic2;
using namespace varo_test;

struct Type {
    das_variant_type_t tag;
    std::string name;
    std::string shown;              // what precedes its values here
    std::vector<std::string> read;  // "text -> value"
    std::vector<std::string> refused;
};

std::vector<Type> types() {
    std::string const zeros(400, '0');
    return {
        {vtS32,
         "integer",
         "s32 ",
         {"0 -> 0", "+7 -> 7", "-5 -> -5", "\t 012 \n -> 12", zeros + "1 -> 1",
          "2147483647 -> 2147483647", "-2147483648 -> -2147483648"},
         {"2147483648", "-2147483649", "1" + zeros, "12x", "1 2", "- 5", "+-5", "+", " ", "0x10",
          "1,5", "1.000"}},
        {vtU32,
         "unsigned integer",
         "u32 ",
         {"+1 -> 1", " 12  -> 12", "4294967295 -> 4294967295"},
         {"4294967296", "-1", "-0", "12 x", "0x10", "1e3"}},
        {vtS64,
         "64 bit integer",
         "s64 ",
         {"9223372036854775807 -> 9223372036854775807",
          "-9223372036854775808 -> -9223372036854775808"},
         {"9223372036854775808", "-9223372036854775809", "ff", "0x10"}},
        {vtU64,
         "unsigned 64 bit or hex",
         "u64 ",
         {"10 -> 10", "18446744073709551615 -> 18446744073709551615",
          "0xFFFFFFFFFFFFFFFF -> 18446744073709551615", " 0X10  -> 16", "1a -> 26", "+F -> 15",
          "1e3 -> 483"},
         {"18446744073709551616", "0x10000000000000000", "0x", "0x-1", "0x0x1", "fg", "-1", "1,0"}},
        {vtDouble,
         "double",
         "double ",
         {"1.5 -> 1.5", "+.5 -> 0.5", "-25e2 -> -2500", " 5.  -> 5",
          "1.7976931348623157e308 -> 1.7976931348623157e+308",
          // A number too small becomes zero, however it is written.
          "5e-324 -> 5e-324", "1e-999 -> 0", "1" + zeros + "e-999 -> 0", "0." + zeros + "1 -> 0",
          "1e-99999999999999999999 -> 0", "0e999 -> 0", "-1e-999 -> -0",
          "0." + zeros + "1e401 -> 1"},
         {" ", "-", ".", "1.8e308", "1e+999", "-1e999", "1" + zeros, "0." + zeros + "1e999",
          "1e99999999999999999999", "+-1", "++1", "1e", "nan", "-inf", "Infinity", "1,5", "0x10",
          "1 2"}},
        {vtBool,
         "undefined",
         "",
         {"1 -> true", "True -> true", "YES -> true", "on -> true", "0 -> false", "false -> false",
          "nO -> false", "oFF -> false"},
         {"2", "y", "banana"}},
        {vtString, "string", "", {" a=\xff\x01 -> ' a=\xff\x01'"}, {}},
        {vtNull, "", "", {"banana -> null"}, {}},
    };
}

void expectConversions() {
    for (Type const& type : types()) {
        varo::Parser const parser(varo::kKeepCommas);
        parser->option("x", "", type.tag, "")->positional();
        std::vector<Case> cases;
        for (std::string const& row : type.read) {
            std::size_t const arrow = row.find(" -> ");
            cases.push_back(
                {{row.substr(0, arrow)}, kSuccess, "", "x", type.shown + row.substr(arrow + 4)});
        }
        for (std::string const& text : type.refused) {
            cases.push_back(
                {{text}, kParseError, cannotParse(text, "x", text, type.name), "x", "absent"});
        }
        SCOPED_TRACE(type.name);
        check(parser, cases);
    }
}

void expectShortTexts() {
    varo::Parser const parser;
    parser->option("x", "", vtString, "")
        ->allowValue(true)
        ->allowValue(-1234567)
        ->allowValue(4294967295U)
        ->allowValue(18446744073709551615ULL)
        ->allowValue(0.1)
        ->allowValue(1e300)
        ->allowValue(1234567.0)
        ->allowValue("a")
        ->allowValue({nullptr, true})
        ->allowValue(variant_t());
    check(parser, {{{"--x=1"},
                    kParseError,
                    "Value validation problem in argument '--x=1': Option 'x' does not allow value "
                    "'1'. Possible values follows: '1', '-1234567', '4294967295', "
                    "'18446744073709551615', '0.1', '1e+300', '1234567', 'a', '', ''"}});
}

class CommaAndDots final : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

/// Takes every letter but no digit for a digit, and changes no letter's case.
class OtherLetters final : public std::ctype<char> {
public:
    OtherLetters() : std::ctype<char>(table()) {}

private:
    static mask const* table() {
        static mask masks[table_size];
        for (std::size_t at = 0; at < table_size; ++at) {
            bool const isLetter = (classic_table()[at] & alpha) != 0;
            masks[at] = isLetter ? mask{digit | xdigit | space} : mask{alpha};
        }
        return masks;
    }
    char do_tolower(char letter) const override { return letter; }
    char do_toupper(char letter) const override { return letter; }
};

TEST(Conversion, ReadsEveryTypeUpToItsLimits) {
    expectConversions();
}

TEST(Conversion, WritesTheShortestText) {
    expectShortTexts();
}

TEST(Conversion, DoesNotDependOnTheLocale) {
    GlobalFacet const punctuation(new CommaAndDots);
    GlobalFacet const letters(new OtherLetters);
    g_isAbroad = true;
    expectConversions();
    expectShortTexts();
    g_isAbroad = false;
}

}  // namespace
