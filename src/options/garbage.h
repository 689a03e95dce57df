#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace varo_3_3 {

/// Holds the texts that a parser or a result hands to the host: what it returns stays in place,
/// ended by a zero, until the holder is destroyed. After std::bad_alloc it remains usable.
class Garbage {
public:
    Garbage() = default;

    /// Puts the first texts that it keeps into the `size` bytes at `chunk`, which outlives it.
    Garbage(char* chunk, std::size_t size) : m_free(chunk), m_freeSize(size), m_chunkSize(size) {}
    Garbage(Garbage const&) = delete;
    Garbage& operator=(Garbage const&) = delete;

    /// The held copy of `text`; equal texts share one copy. Null is the same as "". Texts are
    /// searched by order, so an attacker can make them neither collide nor pile up.
    virtual char const* init(char const* text);
    char const* init(std::string_view text);
    char const* init(std::string&& text);

    /// A copy of `text` that is shared with no other: cheaper where texts rarely repeat. Null is
    /// the same as "".
    char const* keep(char const* text);
    char const* keep(std::string_view text);

    /// Room for `size` bytes, which the caller fills in. Throws std::bad_alloc.
    char* room(std::size_t size);

private:
    [[gnu::noinline]] char* roomInNewChunk(std::size_t size);

    std::vector<std::unique_ptr<char[]>> m_chunks;
    char* m_free = nullptr;  // the unused end of the newest chunk that texts are put into
    std::size_t m_freeSize = 0;
    std::size_t m_chunkSize = 0;
    std::set<std::string, std::less<>> m_shared;
};

}  // namespace varo_3_3
