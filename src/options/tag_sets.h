#pragma once

#include <set>
#include <string>

namespace varo_3_3 {

/// Whether the two sets have a string in common. A walk over both, in their order.
inline bool isIntersected(std::set<std::string> const& a, std::set<std::string> const& b) {
    auto inA = a.begin();
    auto inB = b.begin();
    while (inA != a.end() && inB != b.end()) {
        int const order = inA->compare(*inB);
        if (order == 0) {
            return true;
        }
        if (order < 0) {
            ++inA;
        } else {
            ++inB;
        }
    }
    return false;
}

}  // namespace varo_3_3
