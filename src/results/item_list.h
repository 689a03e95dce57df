#pragma once

#include <algorithm>
#include <cstdint>
#include <new>

#include "results/result_collector.h"
#include "varo/result.h"

namespace varo_3_3 {

/// A value of an occurrence, or an occurrence without one: the parts of a Value, which can be moved
/// as bytes.
struct Item {
    char const* text;
    mosaic2::variant_t::value_t data;
    mosaic2::das_variant_type_t type;
    int position;
    int occurrence;  // its position
    bool isValue;
};

static_assert(sizeof(Item) == 32);

/// A list of items that owns their references to shared blocks, and does nothing else. The first
/// item is kept in the list itself: most options are given once, and so need no memory.
class ItemList {
public:
    ItemList() = default;
    ItemList(ItemList&& other) noexcept
        : m_first(other.m_first),
          m_items(other.isSmall() ? &m_first : other.m_items),
          m_size(other.m_size),
          m_capacity(other.m_capacity) {
        other.m_items = &other.m_first;
        other.m_size = 0;
        other.m_capacity = 1;
    }
    ItemList& operator=(ItemList&&) = delete;
    ~ItemList() {
        for (Item const& item : *this) {
            release(item);
        }
        freeHeap();
    }

    std::uint32_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    Item const* begin() const { return m_items; }
    Item const* end() const { return m_items + m_size; }
    Item const& operator[](std::size_t at) const { return m_items[at]; }
    Item const& back() const { return end()[-1]; }

    /// Makes room for `count` more items. Throws std::bad_alloc, with nothing changed.
    void reserveMore(std::uint32_t count) {
        if (m_capacity - m_size < count) [[unlikely]] {
            grow(count);
        }
    }

    // These require that room.

    /// Takes over what `value` holds, and leaves vtNull in it. Its text is ended by a zero.
    void append(NewValue& value, int occurrence) noexcept {
        *place() = {value.text.data(), value.value.m_value, value.value.m_type,
                    value.position,    occurrence,          true};
        value.value.m_type = mosaic2::vtNull;
    }
    void appendOccurrence(int position) noexcept {
        *place() = {"", {0}, mosaic2::vtNull, position, position, false};
    }

    /// The item's value, at a position. It shares the item's block.
    static Value valueOf(Item const& item, int position) {
        Lent lent;
        lent.variant.m_value = item.data;
        lent.variant.m_type = item.type;
        return Value(item.text, lent.variant, position);
    }

private:
    /// A variant that is only looked at: it releases nothing.
    union Lent {
        Lent() {}   // NOLINT(modernize-use-equals-default): of a union it would be deleted
        ~Lent() {}  // NOLINT(modernize-use-equals-default)
        mosaic2::variant_t variant;
    };

    bool isSmall() const { return m_items == &m_first; }

    Item* place() noexcept { return m_items + m_size++; }

    void freeHeap() noexcept {
        if (!isSmall()) {
            ::operator delete(m_items);
        }
    }

    static void release(Item const& item) noexcept {
        mosaic2::variant_t owner;
        owner.m_value = item.data;
        owner.m_type = item.type;
    }

    [[gnu::noinline]] void grow(std::uint32_t count) {
        constexpr std::uint32_t kFew = 4;
        std::uint32_t const capacity = std::max({m_size + count, 2 * m_capacity, kFew});
        auto* const larger = static_cast<Item*>(::operator new(capacity * sizeof(Item)));
        for (std::uint32_t at = 0; at < m_size; ++at) {
            larger[at] = m_items[at];
        }
        freeHeap();
        m_items = larger;
        m_capacity = capacity;
    }

    Item m_first;
    Item* m_items = &m_first;
    std::uint32_t m_size = 0;
    std::uint32_t m_capacity = 1;
};

}  // namespace varo_3_3
