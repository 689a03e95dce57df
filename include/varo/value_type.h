#pragma once

#include <cstdio>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "mosaic2/variant.h"
#include "varo/number.h"

namespace varo_3_3 {

/// How a host makes an enumeration the type of an option: by the words for its values, which become
/// the option's allowed values. On a command line the beginning of one word is enough.
///
///     template <>
///     struct varo::Words<Format> {
///         static constexpr varo::Word<Format> list[] = {{"table", Format::table},
///                                                       {"csv", Format::csv}};
///     };
template <class Type>
struct Words;

/// One entry of such a list. `text` is a literal.
template <class Type>
struct Word {
    char const* text;
    Type value;
};

/// How a host makes a type of its own the type of an option. It is declared as a string option; a
/// parse refuses what cannot be converted, with kRefused.
///
///     template <>
///     struct varo::Conversion<Size> {
///         /// Nothing if `text` is not a size; `reason`, a sentence, may then say why.
///         static std::optional<Size> fromText(std::string_view text, std::string& reason);
///         /// Only for defaultValue().
///         static std::string toText(Size const& value);
///     };
///
/// A value is converted when it is parsed, and again each time that it is asked for.
template <class Type>
struct Conversion;

namespace internal {

template <class Type, class = void>
inline constexpr bool hasWords = false;
template <class Type>
inline constexpr bool hasWords<Type, std::void_t<decltype(sizeof(Words<Type>))>> = true;

template <class Type, class = void>
inline constexpr bool hasConversion = false;
template <class Type>
inline constexpr bool hasConversion<Type, std::void_t<decltype(sizeof(Conversion<Type>))>> = true;

template <class Type>
inline constexpr bool isText =
    std::is_same_v<Type, std::string> || std::is_same_v<Type, std::string_view> ||
    std::is_same_v<Type, char const*>;

/// Numbers, but not the character types, for which "1" could mean the digit or the number.
template <class Type>
inline constexpr bool isNumber = (std::is_integral_v<Type> && !std::is_same_v<Type, bool> &&
                                  !std::is_same_v<Type, char> && !std::is_same_v<Type, wchar_t> &&
                                  !std::is_same_v<Type, char16_t> &&
#ifdef __cpp_char8_t
                                  !std::is_same_v<Type, char8_t> &&
#endif
                                  !std::is_same_v<Type, char32_t>) ||
                                 std::is_same_v<Type, float> || std::is_same_v<Type, double>;

/// The number type that the parser converts to for a number of type Type.
template <class Type>
using Parsed = std::conditional_t<
    std::is_floating_point_v<Type>, double,
    std::conditional_t<(sizeof(Type) > sizeof(int)),
                       std::conditional_t<std::is_signed_v<Type>, long long, unsigned long long>,
                       std::conditional_t<std::is_signed_v<Type>, int, unsigned>>>;

/// Whether what the parser converts may still not fit Type: a handler then checks each value.
template <class Type>
constexpr bool isChecked() {
    if constexpr (isNumber<Type>) {
        return sizeof(Type) < (std::is_integral_v<Type> ? sizeof(int) : sizeof(double));
    } else {
        return hasConversion<Type>;
    }
}

template <class Type>
constexpr mosaic2::das_variant_type_t tagOf() {
    static_assert(!std::is_const_v<Type> && !std::is_volatile_v<Type>, "Declare the plain type.");
    static_assert(std::is_void_v<Type> || std::is_same_v<Type, bool> || isNumber<Type> ||
                      isText<Type> || hasWords<Type> || hasConversion<Type>,
                  "No type for an option: specialise varo::Words or varo::Conversion for it.");
    if constexpr (std::is_void_v<Type>) {
        return mosaic2::vtNull;
    } else if constexpr (std::is_same_v<Type, bool>) {
        return mosaic2::vtBool;
    } else if constexpr (isNumber<Type> && std::is_floating_point_v<Type>) {
        return mosaic2::vtDouble;
    } else if constexpr (isNumber<Type> && sizeof(Type) > sizeof(int)) {
        return std::is_signed_v<Type> ? mosaic2::vtS64 : mosaic2::vtU64;
    } else if constexpr (isNumber<Type>) {
        return std::is_signed_v<Type> ? mosaic2::vtS32 : mosaic2::vtU32;
    } else {
        return mosaic2::vtString;
    }
}

inline char const* textOf(mosaic2::variant_t const& value) {
    return value.can_get<char const*>() ? value.get<char const*>() : nullptr;
}

/// What a variant holds, as Type; nothing if it is not one. `reason` may then say why.
template <class Type>
std::optional<Type> read(mosaic2::variant_t const& value, std::string& reason) {
    if constexpr (std::is_arithmetic_v<Type>) {
        return numberAs<Type>(value);
    } else {
        char const* const text = textOf(value);
        if (text == nullptr) {
            return std::nullopt;
        }
        if constexpr (isText<Type>) {
            return Type(text);
        } else if constexpr (hasWords<Type>) {
            for (Word<Type> const& word : Words<Type>::list) {
                if (std::string_view(text) == word.text) {
                    return word.value;
                }
            }
            return std::nullopt;
        } else {
            return Conversion<Type>::fromText(text, reason);
        }
    }
}

template <class Type>
std::optional<Type> read(mosaic2::variant_t const& value) {
    std::string reason;
    return read<Type>(value, reason);
}

/// Of the doubles that become `number` as float, one with the fewest digits: 0.1 for 0.1F, as it is
/// typed and shown.
inline double shortestDouble(float number) {
    for (int digits = std::numeric_limits<float>::digits10;
         digits < std::numeric_limits<float>::max_digits10; ++digits) {
        char text[32];
        std::snprintf(text, sizeof text, "%.*g", digits, static_cast<double>(number));
        double found = 0;  // read and written in the same locale, whichever that is
        if (std::sscanf(text, "%lf", &found) == 1 && static_cast<float>(found) == number) {
            return found;
        }
    }
    return static_cast<double>(number);
}

/// A number as an option of its type stores it.
template <class Type>
mosaic2::variant_t numberVariant(Type number) {
    if constexpr (std::is_same_v<Type, float>) {
        return shortestDouble(number);
    } else {
        return static_cast<Parsed<Type>>(number);
    }
}

inline mosaic2::variant_t textVariant(std::string_view text) {
    return mosaic2::variant_t::copy_of(text.data(), text.size());
}

/// A text that a host writes; "" for null, as in the bare interface.
template <class Given>
std::string_view viewOf(Given const& text) {
    if constexpr (std::is_convertible_v<Given const&, char const*>) {
        char const* const begin = text;
        return begin != nullptr ? begin : "";
    } else {
        return text;
    }
}

/// `value`, which a host writes for an option of type Type, as the option stores it. A number that
/// Type cannot hold becomes one of another type, or a text, which describeMistakes() reports.
template <class Type, class Given>
mosaic2::variant_t write(Given const& value) {
    if constexpr (std::is_same_v<Type, bool>) {
        static_assert(std::is_same_v<Given, bool>, "The option is boolean.");
        return value;
    } else if constexpr (isNumber<Type>) {
        static_assert(isNumber<Given>, "The option is a number.");
        static_assert(std::is_floating_point_v<Type> || std::is_integral_v<Given>,
                      "The option is an integer.");
        mosaic2::variant_t const given = numberVariant(value);
        std::optional<Type> const number = numberAs<Type>(given);
        if (number) {
            return numberVariant(*number);
        }
        return numberAs<Parsed<Type>>(given) ? textVariant(std::to_string(value)) : given;
    } else if constexpr (isText<Type>) {
        static_assert(std::is_convertible_v<Given const&, std::string_view>,
                      "The option is a text.");
        return textVariant(viewOf(value));
    } else if constexpr (hasWords<Type>) {
        static_assert(std::is_same_v<Type, Given>, "The option is another enumeration.");
        for (Word<Type> const& word : Words<Type>::list) {
            if (word.value == value) {
                return textVariant(word.text);
            }
        }
        return {};
    } else if constexpr (std::is_convertible_v<Given const&, std::string_view>) {
        return textVariant(viewOf(value));
    } else {
        static_assert(std::is_convertible_v<Given const&, Type>, "The option has another type.");
        return textVariant(Conversion<Type>::toText(value));
    }
}

/// What an option of type Type returns for the default `value`, which was written as `written`:
/// what is read back from that, or 0 for a number that Type cannot hold.
template <class Type, class Given>
std::optional<Type> readWritten(mosaic2::variant_t const& written, Given const& value) {
    std::optional<Type> number = read<Type>(written);
    if constexpr (std::is_arithmetic_v<Type>) {
        return number.value_or(Type{});
    } else {
        return number ? std::move(number) : std::optional<Type>(static_cast<Type>(value));
    }
}

/// Says which numbers Type can hold. Types with a conversion of their own give their own reasons.
template <class Type>
void explainRange(std::string& reason) {
    if constexpr (isNumber<Type> && std::is_integral_v<Type>) {
        reason = "It must be from " + std::to_string(std::numeric_limits<Type>::min()) + " to " +
                 std::to_string(std::numeric_limits<Type>::max()) + ".";
    } else if constexpr (isNumber<Type>) {
        reason = "It is too large.";
    }
}

}  // namespace internal
}  // namespace varo_3_3
