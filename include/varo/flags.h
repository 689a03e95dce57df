#pragma once

#include "varo/parser.h"

namespace varo_3_3 {

/// A set of creation flags that takes nothing but flags: `kUnknownIsError | kDashGuard`.
class Flags {
public:
    constexpr Flags() noexcept = default;
    constexpr Flags(CreationFlag flag) noexcept : m_bits(flag) {}

    constexpr bool has(CreationFlag flag) const noexcept { return (m_bits & flag) != 0; }

    /// The number that createParser takes; the set also converts to it implicitly.
    constexpr int bits() const noexcept { return m_bits; }
    constexpr operator int() const noexcept { return m_bits; }

    friend constexpr Flags operator|(Flags left, Flags right) noexcept {
        Flags both;
        both.m_bits = left.m_bits | right.m_bits;
        return both;
    }
    friend constexpr Flags operator|(Flags left, CreationFlag right) noexcept {
        return left | Flags(right);
    }
    friend constexpr Flags operator|(CreationFlag left, Flags right) noexcept {
        return Flags(left) | right;
    }

private:
    int m_bits = 0;
};

constexpr Flags operator|(CreationFlag left, CreationFlag right) noexcept {
    return Flags(left) | Flags(right);
}

}  // namespace varo_3_3
