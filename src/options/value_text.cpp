#include "options/value_text.h"

#include <algorithm>
#include <array>
#include <charconv>
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
std::string_view trimNumber(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\n\v\f\r";
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    text = text.substr(0, text.find_last_not_of(kBlanks) + 1);
    bool const hasPlus = text.size() > 1 && text[0] == '+' && text[1] != '+' && text[1] != '-';
    text.remove_prefix(hasPlus ? 1 : 0);
    return text;
}

template <class Type>
bool readWhole(std::string_view text, Type& value, int base = 10) {
    char const* const end = text.data() + text.size();
    auto const [stop, error] = std::from_chars(text.data(), end, value, base);
    return error == std::errc() && stop == end;
}

template <class Type>
bool readInteger(std::string_view text, mosaic2::variant_t& result) {
    Type value = 0;
    if (!readWhole(trimNumber(text), value)) {
        return false;
    }
    result = value;
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
    if (!readWhole(number, value, isHexadecimal ? 16 : 10)) {
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
    appendNumber(m_text, m_value.get<long long>());
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

mosaic2::variant_t fromString(std::string_view text, mosaic2::das_variant_type_t type) {
    OperationFromString operation{text, {}};
    dispatch(type, [&operation]<class Type>() { operation.execute<Type>(); });
    return std::move(operation.m_result);
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
