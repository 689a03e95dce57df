#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/hash_index.h"

namespace varo_3_3 {

/// Holds the texts that a parser or a result hands to the host: what it returns stays in place,
/// ended by a zero, until the holder is destroyed. After std::bad_alloc it remains usable.
class Garbage {
public:
    Garbage() = default;
    Garbage(Garbage const&) = delete;
    Garbage& operator=(Garbage const&) = delete;

    /// The held copy of `text`; equal texts share one copy. Null counts as "".
    virtual char const* init(char const* text);
    char const* init(std::string_view text);

    /// A copy of `text` that is shared with no other: cheaper where texts rarely repeat. Null
    /// counts as "".
    char const* keep(char const* text);
    char const* keep(std::string_view text);

    /// Holds a long text without copying it. The same text as the last one shares its copy.
    char const* adopt(std::string text);

private:
    std::vector<std::vector<char>> m_chunks;
    char* m_free = nullptr;  // the unused end of the newest chunk that texts are put into
    std::size_t m_freeSize = 0;
    std::size_t m_chunkSize = 0;
    std::vector<std::string> m_adopted;  // too long to be moved with the vector
    std::vector<std::string_view> m_shared;
    internal::HashIndex m_sharedIndex;
};

}  // namespace varo_3_3
