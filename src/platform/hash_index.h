#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace varo_3_3::internal {

/// Hashes a text, eight bytes at a time. Not for keys that an attacker may choose.
class TextHash {
public:
    static std::uint32_t of(std::string_view text) {
        TextHash hash(text.size());
        hash.mixAll(text.data(), text.size());
        return hash.value();
    }

    /// The hash of prefix + text, without joining them; the prefix has at most seven bytes.
    static std::uint32_t of(std::string_view prefix, std::string_view text) {
        TextHash hash(prefix.size() + text.size());
        std::uint64_t word = prefix.empty() ? 0 : loadPart(prefix.data(), prefix.size());
        std::size_t taken = 0;
        for (std::size_t at = prefix.size(); at < 8 && taken < text.size(); ++at) {
            word |= std::uint64_t{static_cast<unsigned char>(text[taken++])} << 8 * at;
        }
        hash.mix(word);
        hash.mixAll(text.data() + taken, text.size() - taken);
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

    /// The first item with this hash that `isWanted(item)` accepts, or kNone.
    template <class Predicate>
    std::uint32_t find(std::uint32_t hash, Predicate isWanted) const {
        Slot const* const slots = this->slots();
        std::size_t const mask = this->mask();
        for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
            Slot const& slot = slots[at];
            if (slot.item == kNone || (slot.hash == hash && isWanted(slot.item))) {
                return slot.item;
            }
        }
    }

    template <class Visit>
    void forEach(Visit visit) const {
        for (std::size_t at = 0; at <= mask(); ++at) {
            if (slots()[at].item != kNone) {
                visit(slots()[at].item);
            }
        }
    }

    /// Makes room for `count` more items. On std::bad_alloc nothing has changed.
    void reserveMore(std::size_t count) {
        std::size_t const needed = 2 * (m_used + count);  // half full: 1.5 steps a search
        if (needed > mask() + 1) {
            grow(needed);
        }
    }

    /// Requires room made with reserveMore.
    void insert(std::uint32_t hash, std::uint32_t item) noexcept {
        std::size_t at = hash & mask();
        while (slots()[at].item != kNone) {
            at = (at + 1) & mask();
        }
        slots()[at] = {hash, item};
        ++m_used;
    }

    /// Replaces `old`, which is in the table under this hash, with `item`.
    void replace(std::uint32_t hash, std::uint32_t old, std::uint32_t item) noexcept {
        slots()[slotOf(hash, old)].item = item;
    }

    /// Removes `item`, which is in the table under this hash, and closes the gap.
    void erase(std::uint32_t hash, std::uint32_t item) noexcept {
        std::size_t gap = slotOf(hash, item);
        for (std::size_t at = (gap + 1) & mask(); slots()[at].item != kNone;
             at = (at + 1) & mask()) {
            std::size_t const home = slots()[at].hash & mask();
            if (((at - home) & mask()) >= ((at - gap) & mask())) {
                slots()[gap] = slots()[at];
                gap = at;
            }
        }
        slots()[gap].item = kNone;
        --m_used;
    }

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t item = kNone;
    };

    static constexpr std::size_t kSmall = 32;

    Slot const* slots() const { return m_large.empty() ? m_small : m_large.data(); }
    Slot* slots() { return m_large.empty() ? m_small : m_large.data(); }
    std::size_t mask() const { return m_large.empty() ? kSmall - 1 : m_large.size() - 1; }

    std::size_t slotOf(std::uint32_t hash, std::uint32_t item) const {
        std::size_t at = hash & mask();
        while (slots()[at].item != item) {
            at = (at + 1) & mask();
        }
        return at;
    }

    void grow(std::size_t needed) {
        std::size_t size = 4 * kSmall;
        while (size < needed) {
            size *= 2;
        }
        HashIndex larger;
        larger.m_large.resize(size);
        for (std::size_t at = 0; at <= mask(); ++at) {
            if (slots()[at].item != kNone) {
                larger.insert(slots()[at].hash, slots()[at].item);
            }
        }
        m_large.swap(larger.m_large);
    }

    // A power of two of them, of which at most half are used. The first 16 items need no memory:
    // that saves an ordinary parse two allocations.
    Slot m_small[kSmall];
    std::vector<Slot> m_large;  // in the place of those, or none
    std::size_t m_used = 0;
};

}  // namespace varo_3_3::internal
