#pragma once

#include <cstddef>

namespace BRIX {

/// Makes room for `count` more elements, growing as push_back does, so that adding them cannot
/// fail.
template <class Vector>
void reserveMore(Vector& vector, std::size_t count) {
    if (vector.capacity() - vector.size() < count) {
        std::size_t const doubled = 2 * vector.size();
        vector.reserve(doubled > vector.size() + count ? doubled : vector.size() + count);
    }
}

}  // namespace BRIX
