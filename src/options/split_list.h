#pragma once

#include <string_view>

namespace varo_3_3::internal {

/// Calls `take(element)` for each element of a list separated by commas, empty ones too: an empty
/// text is a list of one empty element.
template <class Take>
void splitList(std::string_view list, Take take) {
    for (;;) {
        std::size_t const comma = list.find(',');
        take(list.substr(0, comma));
        if (comma == std::string_view::npos) {
            return;
        }
        list.remove_prefix(comma + 1);
    }
}

}  // namespace varo_3_3::internal
