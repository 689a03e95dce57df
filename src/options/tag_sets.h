#pragma once

#include <algorithm>
#include <set>
#include <string>

namespace varo_3_3 {

/// Whether the two sets have a string in common. Takes time linear in the smaller one and
/// logarithmic in the larger: an action has few tags, however many a modifier has.
inline bool isIntersected(std::set<std::string> const& a, std::set<std::string> const& b) {
    std::set<std::string> const& smaller = a.size() < b.size() ? a : b;
    std::set<std::string> const& larger = &smaller == &a ? b : a;
    return std::any_of(smaller.begin(), smaller.end(),
                       [&](std::string const& tag) { return larger.contains(tag); });
}

}  // namespace varo_3_3
