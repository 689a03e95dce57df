#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace varo_3_3::internal {

/// Hashes a text, eight bytes at a time. Not for keys that an attacker can choose.
class TextHash {
public:
    static std::uint32_t of(std::string_view text) {
        TextHash hash(text.size());
        hash.mixAll(text.data(), text.size());
        return hash.value();
    }

private:
    static constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;  // 2^64 / golden ratio

    explicit TextHash(std::size_t size) : m_hash(size) {}

    /// The upper half of one more product: small tables use the lowest bits, which every byte of
    /// the text must influence.
    std::uint32_t value() const { return static_cast<std::uint32_t>((m_hash * kMultiplier) >> 32); }

    void mix(std::uint64_t word) {
        m_hash = (m_hash ^ word) * kMultiplier;
        m_hash ^= m_hash >> 32;
    }

    void mixAll(char const* bytes, std::size_t size) {
        for (; size >= 8; bytes += 8, size -= 8) {
            mix(load<std::uint64_t>(bytes));
        }
        if (size != 0) {
            mix(loadPart(bytes, size));
        }
    }

    template <class Word>
    static Word load(char const* bytes) {
        Word word;
        std::memcpy(&word, bytes, sizeof(word));
        return word;
    }

    /// One to seven bytes as the low end of a word; loads of fixed sizes that may overlap.
    static std::uint64_t loadPart(char const* bytes, std::size_t size) {
        if (size >= 4) {
            return load<std::uint32_t>(bytes) | std::uint64_t{load<std::uint32_t>(bytes + size - 4)}
                                                    << 8 * (size - 4);
        }
        auto const byte = [bytes](std::size_t at) {
            return std::uint64_t{static_cast<unsigned char>(bytes[at])} << 8 * at;
        };
        return byte(0) | byte(size / 2) | byte(size - 1);
    }

    std::uint64_t m_hash;
};

/// A table from hashes to the numbers of items that its owner keeps elsewhere; open addressing with
/// linear probing. The owner supplies the comparison of items.
class HashIndex {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    [[gnu::noinline]] HashIndex() noexcept;
    HashIndex(HashIndex const&) = delete;
    HashIndex& operator=(HashIndex const&) = delete;

    /// The first item with this hash that `isWanted(item)` accepts, or kNone.
    template <class Predicate>
    std::uint32_t find(std::uint32_t hash, Predicate isWanted) const {
        for (std::size_t at = hash & m_mask;; at = (at + 1) & m_mask) {
            Slot const& slot = m_slots[at];
            if (slot.item == kNone || (slot.hash == hash && isWanted(slot.item))) {
                return slot.item;
            }
        }
    }

    template <class Visit>
    void forEach(Visit visit) const {
        for (std::size_t at = 0; at <= m_mask; ++at) {
            if (m_slots[at].item != kNone) {
                visit(m_slots[at].item);
            }
        }
    }

    /// Makes room for `count` more items. On std::bad_alloc nothing has changed.
    void reserveMore(std::size_t count) {
        std::size_t const needed = 2 * (m_used + count);  // half full: 1.5 steps a search
        if (needed > m_mask + 1) {
            grow(needed);
        }
    }

    /// Requires room made with reserveMore.
    void insert(std::uint32_t hash, std::uint32_t item) noexcept;

    /// Replaces `old`, which is in the table under this hash, with `item`.
    void replace(std::uint32_t hash, std::uint32_t old, std::uint32_t item) noexcept {
        m_slots[slotOf(hash, old)].item = item;
    }

    /// Removes `item`, which is in the table under this hash, and closes the gap.
    void erase(std::uint32_t hash, std::uint32_t item) noexcept;

private:
    struct Slot {
        std::uint32_t hash;
        std::uint32_t item;
    };

    static constexpr std::size_t kSmall = 32;

    std::size_t slotOf(std::uint32_t hash, std::uint32_t item) const noexcept;
    void grow(std::size_t needed);

    // A power of two of them, of which at most half are used. The first 16 items need no memory:
    // that saves an ordinary parse two allocations.
    Slot m_small[kSmall];
    std::vector<Slot> m_large;  // used instead of m_small unless empty
    Slot* m_slots = m_small;    // of the two those in use
    std::size_t m_mask = kSmall - 1;
    std::size_t m_used = 0;
};

}  // namespace varo_3_3::internal
