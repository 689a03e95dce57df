#include "platform/lead_sort.h"

#include <algorithm>

namespace varo_3_3::internal {

void sortByLead(std::vector<Lead>& leads,
                bool (*isBefore)(void const* context, std::uint32_t left, std::uint32_t right),
                void const* context) {
    std::sort(leads.begin(), leads.end(), [=](Lead const& left, Lead const& right) {
        if (left.lead != right.lead) {
            return left.lead < right.lead;
        }
        return isBefore != nullptr && isBefore(context, left.item, right.item);
    });
}

}  // namespace varo_3_3::internal
