#pragma once

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace varo_3_3::internal {

/// A structure of a host, which may be older and know fewer members, or newer and know more: those
/// that it does not give are as in a default one.
template <class Sized>
Sized knownPart(Sized const* given) {
    static_assert(std::is_trivially_copyable_v<Sized>);
    Sized known;
    if (given != nullptr && given->size > 0) {
        std::size_t const size = std::min(static_cast<std::size_t>(given->size), sizeof(Sized));
        std::memcpy(&known, given, size - size % alignof(Sized));  // whole members
    }
    return known;
}

/// A text of a host.
inline char const* textOf(char const* text) {
    return text != nullptr ? text : "";
}

}  // namespace varo_3_3::internal
