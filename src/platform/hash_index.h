#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace BRIX {

/// Hashes prefix + text, a prefix of at most eight bytes, without joining them. Eight bytes at a
/// time; not for keys that an enemy may choose.
inline std::uint32_t hashText(std::string_view prefix, std::string_view text) {
    std::uint64_t hash = prefix.size() + text.size();
    auto const mixIn = [&hash](char const* bytes, std::size_t size) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, size);
        hash = (hash ^ word) * 0x9E3779B97F4A7C15;  // 2^64 divided by the golden ratio
        hash ^= hash >> 32;
    };
    if (!prefix.empty()) {
        char word[sizeof(std::uint64_t)];
        std::size_t size = 0;
        for (char const byte : prefix) {
            word[size++] = byte;
        }
        for (; size < sizeof(word) && !text.empty(); text.remove_prefix(1)) {
            word[size++] = text.front();
        }
        mixIn(word, size);
    }
    while (text.size() >= sizeof(std::uint64_t)) {
        mixIn(text.data(), sizeof(std::uint64_t));
        text.remove_prefix(sizeof(std::uint64_t));
    }
    if (!text.empty()) {
        mixIn(text.data(), text.size());
    }
    return static_cast<std::uint32_t>(hash);
}

inline std::uint32_t hashText(std::string_view text) {
    return hashText({}, text);
}

/// A table from hashes to the numbers of items that its owner keeps elsewhere; open addressing with
/// linear probing. Items are told apart by a comparison that the owner brings along.
class HashIndex {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    /// The first item with this hash that `isWanted(item)` accepts, or kNone.
    template <class Predicate>
    std::uint32_t find(std::uint32_t hash, Predicate isWanted) const {
        if (m_slots.empty()) {
            return kNone;
        }
        for (std::size_t at = hash & mask();; at = (at + 1) & mask()) {
            Slot const& slot = m_slots[at];
            if (slot.item == kNone || (slot.hash == hash && isWanted(slot.item))) {
                return slot.item;
            }
        }
    }

    template <class Visit>
    void forEach(Visit visit) const {
        for (Slot const& slot : m_slots) {
            if (slot.item != kNone) {
                visit(slot.item);
            }
        }
    }

    /// Makes room for `count` more items. On std::bad_alloc nothing has changed.
    void reserveMore(std::size_t count) {
        std::size_t const needed = 2 * (m_used + count);
        if (needed > m_slots.size()) {
            grow(needed);
        }
    }

    /// Requires room made with reserveMore.
    void insert(std::uint32_t hash, std::uint32_t item) noexcept {
        std::size_t at = hash & mask();
        while (m_slots[at].item != kNone) {
            at = (at + 1) & mask();
        }
        m_slots[at] = {hash, item};
        ++m_used;
    }

    /// Puts `item` in the place of `old`, which is in the table under this hash.
    void replace(std::uint32_t hash, std::uint32_t old, std::uint32_t item) noexcept {
        m_slots[slotOf(hash, old)].item = item;
    }

    /// Removes `item`, which is in the table under this hash, and closes the gap.
    void erase(std::uint32_t hash, std::uint32_t item) noexcept {
        std::size_t gap = slotOf(hash, item);
        for (std::size_t at = (gap + 1) & mask(); m_slots[at].item != kNone;
             at = (at + 1) & mask()) {
            std::size_t const home = m_slots[at].hash & mask();
            if (((at - home) & mask()) >= ((at - gap) & mask())) {
                m_slots[gap] = m_slots[at];
                gap = at;
            }
        }
        m_slots[gap].item = kNone;
        --m_used;
    }

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t item = kNone;
    };

    std::size_t mask() const { return m_slots.size() - 1; }

    std::size_t slotOf(std::uint32_t hash, std::uint32_t item) const {
        std::size_t at = hash & mask();
        while (m_slots[at].item != item) {
            at = (at + 1) & mask();
        }
        return at;
    }

    void grow(std::size_t needed) {
        std::size_t size = 32;
        while (size < needed) {
            size *= 2;
        }
        HashIndex larger;
        larger.m_slots.resize(size);
        for (Slot const& slot : m_slots) {
            if (slot.item != kNone) {
                larger.insert(slot.hash, slot.item);
            }
        }
        m_slots.swap(larger.m_slots);
    }

    std::vector<Slot> m_slots;  // as many as a power of two, or none; at most half are used
    std::size_t m_used = 0;
};

}  // namespace BRIX
