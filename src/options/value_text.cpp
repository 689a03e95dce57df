#include "options/value_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <utility>

namespace varo_3_3 {
namespace {

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

char toLower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A'))
                                                : character;
}

bool equalsIgnoringCase(std::string_view text, std::string_view lowerCase) {
    return std::equal(text.begin(), text.end(), lowerCase.begin(), lowerCase.end(),
                      [](char left, char right) { return toLower(left) == right; });
}

/// The number without the white space around it and without a "+" that no other sign follows.
[[gnu::noinline]] std::string_view trimNumber(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\n\v\f\r";
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    text = text.substr(0, text.find_last_not_of(kBlanks) + 1);
    bool const hasPlus = text.size() > 1 && text[0] == '+' && text[1] != '+' && text[1] != '-';
    text.remove_prefix(hasPlus ? 1 : 0);
    return text;
}

unsigned digitOf(char character) {
    char const lower = toLower(character);
    return isDigit(character)             ? static_cast<unsigned>(character - '0')
           : lower >= 'a' && lower <= 'f' ? static_cast<unsigned>(lower - 'a') + 10
                                          : 16;
}

/// Reads a number without a sign. False unless it is the whole text and fits.
bool readDigits(std::string_view digits, unsigned base, unsigned long long& value) {
    value = 0;
    for (char const character : digits) {
        unsigned const digit = digitOf(character);
        if (digit >= base || __builtin_mul_overflow(value, base, &value) ||
            __builtin_add_overflow(value, digit, &value)) {
            return false;
        }
    }
    return !digits.empty();
}

/// Reads a decimal integer, which may be negative if `least` is. `bits` are those of the number.
bool readDecimal(std::string_view text, long long least, unsigned long long most,
                 unsigned long long& bits) {
    bool const isNegative = least < 0 && text.starts_with('-');
    unsigned long long magnitude = 0;
    if (!readDigits(text.substr(isNegative ? 1 : 0), 10, magnitude) ||
        magnitude > (isNegative ? 0 - static_cast<unsigned long long>(least) : most)) {
        return false;
    }
    bits = isNegative ? 0 - magnitude : magnitude;
    return true;
}

/// Most numbers stand alone, and are read before anything is trimmed.
template <class Type>
bool readInteger(std::string_view text, mosaic2::variant_t& result) {
    constexpr long long kLeast = static_cast<long long>(std::numeric_limits<Type>::min());
    constexpr auto kMost = static_cast<unsigned long long>(std::numeric_limits<Type>::max());
    unsigned long long bits = 0;
    if (!readDecimal(text, kLeast, kMost, bits) &&
        !readDecimal(trimNumber(text), kLeast, kMost, bits)) {
        return false;
    }
    result = static_cast<Type>(bits);
    return true;
}

/// Whether a number out of range is too small rather than too large, which std::from_chars does not
/// tell. True when, with the exponent applied, the first digit other than 0 is after the decimal
/// point.
bool isTooSmall(std::string_view number) {
    std::size_t const exponentAt = std::min(number.find_first_of("eE"), number.size());
    std::string_view const digits = number.substr(0, exponentAt);
    auto const firstDigit = static_cast<long long>(digits.find_first_of("123456789"));
    auto const point = static_cast<long long>(std::min(digits.find('.'), digits.size()));
    std::string_view exponent = number.substr(std::min(exponentAt + 1, number.size()));
    exponent.remove_prefix(exponent.starts_with('+') ? 1 : 0);
    long long shift = 0;
    auto const [stop, error] =
        std::from_chars(exponent.data(), exponent.data() + exponent.size(), shift);
    if (error == std::errc::result_out_of_range) {
        return exponent.starts_with('-');
    }
    return shift <= firstDigit - point;
}

}  // namespace

template <>
bool OperationFromString::execute<bool>() {
    for (std::string_view const word : {"1", "true", "yes", "on"}) {
        if (equalsIgnoringCase(m_text, word)) {
            m_result = true;
            return true;
        }
    }
    for (std::string_view const word : {"0", "false", "no", "off"}) {
        if (equalsIgnoringCase(m_text, word)) {
            m_result = false;
            return true;
        }
    }
    return false;
}

template <>
bool OperationFromString::execute<int>() {
    return readInteger<int>(m_text, m_result);
}

template <>
bool OperationFromString::execute<unsigned int>() {
    return readInteger<unsigned int>(m_text, m_result);
}

template <>
bool OperationFromString::execute<long long>() {
    return readInteger<long long>(m_text, m_result);
}

template <>
bool OperationFromString::execute<unsigned long long>() {
    std::string_view number = trimNumber(m_text);
    bool const hasPrefix = number.starts_with("0x") || number.starts_with("0X");
    number.remove_prefix(hasPrefix ? 2 : 0);
    bool const isHexadecimal =
        hasPrefix || number.find_first_of("ABCDEFabcdef") != std::string_view::npos;
    unsigned long long value = 0;
    if (!readDigits(number, isHexadecimal ? 16 : 10, value)) {
        return false;
    }
    m_result = value;
    return true;
}

template <>
bool OperationFromString::execute<double>() {
    std::string_view const number = trimNumber(m_text);
    std::size_t const first = number.starts_with('-') ? 1 : 0;
    if (first == number.size() || !(isDigit(number[first]) || number[first] == '.')) {
        return false;  // neither "inf" nor "nan"
    }
    double value = 0;
    char const* const end = number.data() + number.size();
    auto const [stop, error] = std::from_chars(number.data(), end, value);
    if (stop != end) {
        return false;
    }
    if (error == std::errc::result_out_of_range) {
        if (!isTooSmall(number)) {
            return false;
        }
        value = first == 1 ? -0.0 : 0.0;
    }
    m_result = value;
    return true;
}

template <>
bool OperationFromString::execute<char const*>() {
    m_result = mosaic2::variant_t::copy_of(m_text.data(), m_text.size());
    return true;
}

namespace {

template <class Type>
void appendNumber(std::string& text, Type value) {
    std::array<char, 32> digits;  // the longest double has 24 characters
    auto const written = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    text.append(digits.data(), written.ptr);
}

}  // namespace

template <>
void OperationToString::execute<bool>() {
    m_text += m_value.get<bool>() ? '1' : '0';
}

template <>
void OperationToString::execute<long long>() {
    long long const number = m_value.get<long long>();
    auto const bits = static_cast<unsigned long long>(number);
    m_text += number < 0 ? "-" : "";
    appendNumber(m_text, number < 0 ? 0 - bits : bits);
}

template <>
void OperationToString::execute<unsigned long long>() {
    appendNumber(m_text, m_value.get<unsigned long long>());
}

template <>
void OperationToString::execute<double>() {
    appendNumber(m_text, m_value.get<double>());
}

template <>
void OperationToString::execute<char const*>() {
    char const* const text = m_value.get<char const*>();
    m_text += text != nullptr ? text : "";
}

template <>
void OperatorGetTypeName::execute<bool>() {
    m_name = "undefined";  // intended: the help of a boolean shows no type
}

template <>
void OperatorGetTypeName::execute<int>() {
    m_name = "integer";
}

template <>
void OperatorGetTypeName::execute<unsigned int>() {
    m_name = "unsigned integer";
}

template <>
void OperatorGetTypeName::execute<long long>() {
    m_name = "64 bit integer";
}

template <>
void OperatorGetTypeName::execute<unsigned long long>() {
    m_name = "unsigned 64 bit or hex";
}

template <>
void OperatorGetTypeName::execute<double>() {
    m_name = "double";
}

template <>
void OperatorGetTypeName::execute<char const*>() {
    m_name = "string";
}

namespace {

/// Runs `operation` for the C++ type that belongs to the type of an option. False if none does.
template <class Operation>
bool dispatch(mosaic2::das_variant_type_t type, Operation operation) {
    switch (type) {
        case mosaic2::vtBool:
            operation.template operator()<bool>();
            return true;
        case mosaic2::vtS32:
            operation.template operator()<int>();
            return true;
        case mosaic2::vtU32:
            operation.template operator()<unsigned int>();
            return true;
        case mosaic2::vtS64:
            operation.template operator()<long long>();
            return true;
        case mosaic2::vtU64:
            operation.template operator()<unsigned long long>();
            return true;
        case mosaic2::vtDouble:
            operation.template operator()<double>();
            return true;
        case mosaic2::vtString:
            operation.template operator()<char const*>();
            return true;
        default:
            return false;
    }
}

}  // namespace

bool hasConversion(mosaic2::das_variant_type_t type) {
    return dispatch(type, []<class Type>() {});
}

void fromString(std::string_view text, mosaic2::das_variant_type_t type,
                mosaic2::variant_t& result) {
    result.free_data();
    OperationFromString operation{text, result};
    dispatch(type, [&operation]<class Type>() { operation.execute<Type>(); });
}

void appendText(std::string& text, mosaic2::variant_t const& value) {
    OperationToString operation{value, text};
    if (value.m_type == mosaic2::vtBool) {
        operation.execute<bool>();
    } else if (value.can_get<long long>()) {
        bool const isUnsigned = (value.m_type & 1) != 0;
        isUnsigned ? operation.execute<unsigned long long>() : operation.execute<long long>();
    } else if (value.can_get<double>()) {
        operation.execute<double>();
    } else if (value.can_get<char const*>()) {
        operation.execute<char const*>();
    }
}

char const* typeName(mosaic2::das_variant_type_t type) {
    OperatorGetTypeName operation;
    dispatch(type, [&operation]<class Type>() { operation.execute<Type>(); });
    return operation.m_name;
}

}  // namespace varo_3_3
