#include "options/record_pool.h"

#include <algorithm>

namespace varo_3_3 {

OptionDescription& RecordPool::spare() {
    if (m_used == m_size) {
        std::size_t const size = std::clamp(2 * m_size, kFirstBlock, kLargestBlock);
        m_blocks.push_back(std::make_unique<OptionDescription[]>(size));
        m_size = size;
        m_used = 0;
    }
    OptionDescription& record = m_blocks.back()[m_used];
    if (m_isTouched) {
        record = OptionDescription();
    }
    m_isTouched = true;
    return record;
}

}  // namespace varo_3_3
