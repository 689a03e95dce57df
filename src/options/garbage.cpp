#include "options/garbage.h"

#include <algorithm>
#include <utility>

namespace varo_3_3 {

char const* Garbage::init(char const* text) {
    return init(std::string_view(text != nullptr ? text : ""));
}

char const* Garbage::init(std::string_view text) {
    auto const place = m_shared.lower_bound(text);
    bool const isHeld = place != m_shared.end() && *place == text;
    return (isHeld ? place : m_shared.emplace_hint(place, text))->c_str();
}

char const* Garbage::init(std::string&& text) {
    return m_shared.insert(std::move(text)).first->c_str();
}

char const* Garbage::keep(char const* text) {
    return keep(std::string_view(text != nullptr ? text : ""));
}

char const* Garbage::keep(std::string_view text) {
    constexpr std::size_t kFirstChunk = 256;      // all texts of an ordinary parse
    constexpr std::size_t kLargestChunk = 65536;  // from here on allocating costs next to nothing
    std::size_t const size = text.size() + 1;
    char* place = m_free;
    if (size <= m_freeSize) {
        m_free += size;
        m_freeSize -= size;
    } else {
        // A text that would fill much of a chunk gets one of its own, the chunk in use goes on.
        std::size_t const nextChunk = std::clamp(2 * m_chunkSize, kFirstChunk, kLargestChunk);
        bool const ownChunk = size > nextChunk / 4;
        m_chunks.emplace_back(ownChunk ? size : nextChunk);
        place = m_chunks.back().data();
        if (!ownChunk) {
            m_chunkSize = nextChunk;
            m_free = place + size;
            m_freeSize = nextChunk - size;
        }
    }
    text.copy(place, text.size());
    place[text.size()] = '\0';
    return place;
}

}  // namespace varo_3_3
