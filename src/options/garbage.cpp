#include "options/garbage.h"

#include <algorithm>
#include <utility>

namespace varo_3_3 {

char const* Garbage::init(char const* text) {
    return init(std::string_view(text != nullptr ? text : ""));
}

char const* Garbage::init(std::string_view text) {
    std::uint32_t const hash = internal::TextHash::of(text);
    std::uint32_t const held = m_sharedIndex.find(
        hash, [&](std::uint32_t candidate) { return m_shared[candidate] == text; });
    if (held != internal::HashIndex::kNone) {
        return m_shared[held].data();
    }
    m_sharedIndex.reserveMore(1);
    char const* const copy = keep(text);
    m_shared.emplace_back(copy, text.size());
    m_sharedIndex.insert(hash, static_cast<std::uint32_t>(m_shared.size() - 1));
    return copy;
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

char const* Garbage::adopt(std::string text) {
    constexpr std::size_t kLong = 64;  // a chunk has room for shorter ones, which may be shared
    if (text.size() < kLong) {
        return init(text);
    }
    if (m_adopted.empty() || m_adopted.back() != text) {
        m_adopted.push_back(std::move(text));
    }
    return m_adopted.back().c_str();
}

}  // namespace varo_3_3
