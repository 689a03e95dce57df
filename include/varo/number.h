#pragma once

#include <limits>
#include <optional>
#include <type_traits>

#include "mosaic2/variant.h"

namespace varo_3_3::internal {

template <class Type>
constexpr bool isInRange(unsigned long long number) noexcept {
    return number <= static_cast<unsigned long long>(std::numeric_limits<Type>::max());
}

template <class Type>
constexpr bool isInRange(long long number) noexcept {
    return number < 0 ? number >= static_cast<long long>(std::numeric_limits<Type>::min())
                      : isInRange<Type>(static_cast<unsigned long long>(number));
}

/// Whether a number is an integer that Type holds; for a floating Type whether it is no larger than
/// Type's largest, infinities included.
template <class Type>
constexpr bool isInRange(double number) noexcept {
    if constexpr (std::is_floating_point_v<Type>) {
        constexpr double kInfinity = std::numeric_limits<double>::infinity();
        constexpr Type kMax = std::numeric_limits<Type>::max();
        return !(number > kMax || number < -kMax) || number == kInfinity || number == -kInfinity;
    } else {
        constexpr int kDigits = std::numeric_limits<Type>::digits;
        constexpr double kEnd = 2.0 * static_cast<double>(1ULL << (kDigits - 1));
        return number < kEnd && number >= static_cast<double>(std::numeric_limits<Type>::min()) &&
               number == static_cast<double>(static_cast<Type>(number));
    }
}

template <class Type, class Number>
constexpr std::optional<Type> fitted(Number number) noexcept {
    if constexpr (std::is_floating_point_v<Type> && !std::is_floating_point_v<Number>) {
        return static_cast<Type>(number);
    } else {
        return isInRange<Type>(number) ? std::optional<Type>(static_cast<Type>(number))
                                       : std::nullopt;
    }
}

/// The number that a variant holds, as any arithmetic Type; nothing if it holds none, or one that
/// Type cannot hold. A floating Type takes the nearest number that it has.
template <class Type>
std::optional<Type> numberAs(mosaic2::variant_t const& value) noexcept {
    static_assert(std::is_floating_point_v<Type> || sizeof(Type) <= sizeof(long long),
                  "No option holds a number of more than 64 bits.");
    if (value.m_type == mosaic2::vtBool) {
        return static_cast<Type>(value.get<bool>());
    }
    if (value.can_get<long long>()) {
        return value.m_type % 2 != 0 ? fitted<Type>(value.get<unsigned long long>())
                                     : fitted<Type>(value.get<long long>());
    }
    return value.can_get<double>() ? fitted<Type>(value.get<double>()) : std::nullopt;
}

}  // namespace varo_3_3::internal
