#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace varo_3_3::internal {

/// An item of a list that is sorted by its group, then by its key.
struct SortItem {
    std::uint64_t group;
    std::string_view key;  ///< its text outlives the list
    void const* item;
};

using SortItems = std::vector<SortItem>;

/// Which of two items of one group comes first, whatever their keys: below 0, 0 or above 0 as in
/// std::strcmp.
using CompareItems = int (*)(SortItem const& left, SortItem const& right);

/// Appends an item.
void addItem(SortItems& items, std::uint64_t group, std::string_view key, void const* item);

/// Sorts by group, then by `compare` unless it is null, then by key; equal ones stay in order. A
/// list in order costs one step an item. May throw std::bad_alloc, with nothing changed.
void sortItems(SortItems& items, CompareItems compare = nullptr);

}  // namespace varo_3_3::internal
