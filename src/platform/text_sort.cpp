#include "platform/text_sort.h"

#include <algorithm>

#include "platform/lead_sort.h"
#include "platform/text_lead.h"

namespace varo_3_3::internal {
namespace {

bool isBefore(SortItem const& left, SortItem const& right, CompareItems compare) {
    if (left.group != right.group) {
        return left.group < right.group;
    }
    int order = compare != nullptr ? compare(left, right) : 0;
    order = order != 0 ? order : left.key.compare(right.key);
    return order < 0;
}

bool isSorted(SortItems const& items, CompareItems compare) {
    for (std::size_t number = 1; number < items.size(); ++number) {
        if (isBefore(items[number], items[number - 1], compare)) {
            return false;
        }
    }
    return true;
}

/// A number that sorts like an item or its beginning.
std::uint64_t leadFor(SortItem const& item, CompareItems compare) {
    std::uint64_t const group = std::min<std::uint64_t>(item.group, 0xFFFF);
    bool const hasKey = compare == nullptr && group != 0xFFFF;
    return group << 48U | (hasKey ? leadOf(item.key) >> 16U : 0);
}

}  // namespace

void addItem(SortItems& items, std::uint64_t group, std::string_view key, void const* item) {
    items.push_back({group, key, item});
}

void sortItems(SortItems& items, CompareItems compare) {
    if (isSorted(items, compare)) {
        return;
    }
    std::vector<Lead> leads(items.size());
    for (std::uint32_t number = 0; number < leads.size(); ++number) {
        leads[number] = {leadFor(items[number], compare), number};
    }
    sortByLead(leads, [&](std::uint32_t left, std::uint32_t right) {
        return isBefore(items[left], items[right], compare) ||
               (left < right && !isBefore(items[right], items[left], compare));
    });
    SortItems sorted(items.size());
    for (std::size_t number = 0; number < sorted.size(); ++number) {
        sorted[number] = items[leads[number].item];
    }
    items.swap(sorted);
}

}  // namespace varo_3_3::internal
