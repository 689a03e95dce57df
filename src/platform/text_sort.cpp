#include "platform/text_sort.h"

#include <algorithm>

#include "platform/lead_sort.h"
#include "platform/reserve_more.h"
#include "platform/text_lead.h"

namespace varo_3_3::internal {
namespace {

/// The order of items, by their numbers.
struct Order {
    SortItems const& items;
    CompareItems compare;

    [[gnu::noinline]] bool operator()(std::uint32_t left, std::uint32_t right) const {
        SortItem const& first = items[left];
        SortItem const& second = items[right];
        if (first.group != second.group) {
            return first.group < second.group;
        }
        int order = compare != nullptr ? compare(first, second) : 0;
        order = order != 0 ? order : first.key.compare(second.key);
        return order != 0 ? order < 0 : left < right;
    }

    bool holds() const {
        for (std::uint32_t number = 1; number < items.size(); ++number) {
            if (!(*this)(number - 1, number)) {
                return false;
            }
        }
        return true;
    }
};

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
    Order const order{items, compare};
    if (order.holds()) {
        return;
    }
    std::vector<Lead> leads(items.size());
    for (std::uint32_t number = 0; number < leads.size(); ++number) {
        leads[number] = {leadFor(items[number], compare), number};
    }
    sortByLead(leads, order);
    SortItems sorted;
    sorted.reserve(items.size());
    for (Lead const& lead : leads) {
        emplaceReserved(sorted, items[lead.item]);
    }
    items.swap(sorted);
}

}  // namespace varo_3_3::internal
