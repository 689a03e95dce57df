#include "options/garbage.h"

#include <algorithm>
#include <utility>

#include "platform/reserve_more.h"

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
    char* const place = room(text.size() + 1);
    *std::copy(text.begin(), text.end(), place) = '\0';
    return place;
}

char* Garbage::room(std::size_t size) {
    if (size > m_freeSize) {
        return roomInNewChunk(size);
    }
    char* const place = m_free;
    m_free += size;
    m_freeSize -= size;
    return place;
}

/// A text that would fill much of a chunk gets one of its own, and the current chunk stays in use.
char* Garbage::roomInNewChunk(std::size_t size) {
    constexpr std::size_t kFirstChunk = 256;      // all texts of an ordinary parse
    constexpr std::size_t kLargestChunk = 65536;  // from here on allocating costs next to nothing
    std::size_t const nextChunk = std::clamp(2 * m_chunkSize, kFirstChunk, kLargestChunk);
    bool const isOwnChunk = size > nextChunk / 4;
    internal::reserveMore(m_chunks, 1);
    internal::emplaceReserved(m_chunks, new char[isOwnChunk ? size : nextChunk]);
    char* const place = m_chunks.back().get();
    if (!isOwnChunk) {
        m_chunkSize = nextChunk;
        m_free = place + size;
        m_freeSize = nextChunk - size;
    }
    return place;
}

}  // namespace varo_3_3
