#pragma once

#include <string>
#include <string_view>

#include "mosaic2/variant.h"

namespace varo_3_3 {

/// Turns the text of one value into a variant. execute<T>() converts to T, leaves the value in
/// m_result and returns whether the whole text could be read as T. No conversion depends on a
/// locale.
///
/// - bool: 1/0, true/false, yes/no, on/off in any letter case
/// - int, unsigned, long long: decimal
/// - unsigned long long: decimal; hexadecimal with a leading 0x or a letter A to F in it
/// - double: decimal, with or without an exponent; a value too small for a double becomes 0
/// - char const*: the text itself
///
/// Numbers may have blanks, tabs and line ends around them and begin with "+", unsigned ones not
/// with "-". Numbers out of range are not converted.
struct OperationFromString {
    template <class Type>
    bool execute();

    std::string_view m_text;
    mosaic2::variant_t& m_result;
};

/// Appends the text of a variant to m_text: booleans as 1 or 0, integers in decimal, doubles as the
/// shortest decimal text that reads back the same, strings as they are.
struct OperationToString {
    template <class Type>
    void execute();

    mosaic2::variant_t const& m_value;
    std::string& m_text;
};

/// Finds the name by which help and messages show a type.
struct OperatorGetTypeName {
    template <class Type>
    void execute();

    char const* m_name = "";
};

/// Whether texts are converted for options of this type; all others take any text as vtNull.
bool hasConversion(mosaic2::das_variant_type_t type);

/// Sets `result` to the converted text, or to vtNull when it cannot be converted to this type.
/// Throws std::bad_alloc.
void fromString(std::string_view text, mosaic2::das_variant_type_t type,
                mosaic2::variant_t& result);

/// Appends the text of `value`; kinds that have none append nothing.
void appendText(std::string& text, mosaic2::variant_t const& value);

/// The display name of a type; "" for a type without conversion.
char const* typeName(mosaic2::das_variant_type_t type);

}  // namespace varo_3_3
