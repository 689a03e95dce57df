#include "platform/hash_index.h"

#include <cstring>

namespace varo_3_3::internal {

HashIndex::HashIndex() noexcept {
    std::memset(m_small, 0xFF, sizeof(m_small));  // kNone in each
}

void HashIndex::insert(std::uint32_t hash, std::uint32_t item) noexcept {
    m_slots[slotOf(hash, kNone)] = {hash, item};
    ++m_used;
}

void HashIndex::erase(std::uint32_t hash, std::uint32_t item) noexcept {
    std::size_t gap = slotOf(hash, item);
    for (std::size_t at = (gap + 1) & m_mask; m_slots[at].item != kNone; at = (at + 1) & m_mask) {
        std::size_t const home = m_slots[at].hash & m_mask;
        if (((at - home) & m_mask) >= ((at - gap) & m_mask)) {
            m_slots[gap] = m_slots[at];
            gap = at;
        }
    }
    m_slots[gap].item = kNone;
    --m_used;
}

/// The slot that holds `item`, or the free one at which a search for this hash ends.
std::size_t HashIndex::slotOf(std::uint32_t hash, std::uint32_t item) const noexcept {
    std::size_t at = hash & m_mask;
    while (m_slots[at].item != item) {
        at = (at + 1) & m_mask;
    }
    return at;
}

void HashIndex::grow(std::size_t needed) {
    std::size_t size = 4 * kSmall;
    while (size < needed) {
        size *= 2;
    }
    std::vector<Slot> larger(size, Slot{0, kNone});
    Slot const* const end = m_slots + m_mask + 1;
    Slot const* slot = m_slots;
    m_slots = larger.data();
    m_mask = size - 1;
    for (; slot != end; ++slot) {
        if (slot->item != kNone) {
            m_slots[slotOf(slot->hash, kNone)] = *slot;
        }
    }
    m_large.swap(larger);
}

}  // namespace varo_3_3::internal
