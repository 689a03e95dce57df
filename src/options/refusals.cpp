#include "options/refusals.h"

#include <exception>

namespace varo_3_3 {

void Refusals::add(char const* names, Reason reason, std::uint32_t holder) noexcept {
    if (m_entries.size() < kMost) {
        try {
            m_entries.push_back({names != nullptr ? names : "", holder, reason});
            return;
        } catch (std::exception const&) {  // no memory: at least it is counted
        }
    }
    ++m_more;
}

}  // namespace varo_3_3
