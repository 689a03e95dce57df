#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>

namespace varo_3_3::internal {

// The attributes noinline and cold, here and elsewhere, keep rare code out of the functions that
// every argument runs through, which saves 3 % of an argument. On code that becomes common they
// would cost time instead.
template <class Vector>
[[gnu::noinline]] void growFor(Vector& vector, std::size_t count, std::size_t smallest) {
    vector.reserve(std::max({vector.size() + count, 2 * vector.size(), smallest}));
}

/// Makes room for `count` more elements, so that adding them cannot fail: the first time for
/// `smallest` at least, later growing as push_back does.
template <class Vector>
void reserveMore(Vector& vector, std::size_t count, std::size_t smallest = 1) {
    if (vector.capacity() - vector.size() < count) [[unlikely]] {
        growFor(vector, count, smallest);
    }
}

/// Adds an element for which there is room. Without this promise each place would carry the code
/// that grows the vector.
template <class Vector, class... Arguments>
auto& emplaceReserved(Vector& vector, Arguments&&... arguments) {
    if (vector.size() == vector.capacity()) {
        __builtin_unreachable();
    }
    return vector.emplace_back(std::forward<Arguments>(arguments)...);
}

}  // namespace varo_3_3::internal
