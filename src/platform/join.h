#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace BRIX {

/// The parts one after the other, in one allocation.
inline std::string join(std::initializer_list<std::string_view> parts) {
    std::size_t size = 0;
    for (std::string_view const part : parts) {
        size += part.size();
    }
    std::string text;
    text.reserve(size);
    for (std::string_view const part : parts) {
        text += part;
    }
    return text;
}

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
