#pragma once

#include <cstdint>
#include <vector>

namespace varo_3_3::internal {

/// Something to be sorted: a number that sorts like it, or like its beginning, and its own number.
struct Lead {
    std::uint64_t lead;
    std::uint32_t item;
};

/// Sorts by lead; of the same lead by isBefore(context, left item, right item), or in any order if
/// that is null. A function, not a template: each kind of elements would add 2.5 KB of sorting.
void sortByLead(std::vector<Lead>& leads,
                bool (*isBefore)(void const* context, std::uint32_t left, std::uint32_t right),
                void const* context);

/// The same for a function object isBefore(left item, right item).
template <class IsBefore>
void sortByLead(std::vector<Lead>& leads, IsBefore const& isBefore) {
    sortByLead(
        leads,
        [](void const* context, std::uint32_t left, std::uint32_t right) {
            return (*static_cast<IsBefore const*>(context))(left, right);
        },
        &isBefore);
}

}  // namespace varo_3_3::internal
