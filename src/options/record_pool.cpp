#include "options/record_pool.h"

#include <algorithm>

namespace varo_3_3 {

OptionDescription& RecordPool::spare() {
    if (m_spare == nullptr && m_free != nullptr) {
        m_spare = m_free;
        m_free = m_free->m_nextFree;
    }
    if (m_spare != nullptr) {
        *m_spare = OptionDescription();
        return *m_spare;
    }
    if (m_used == m_size) {
        std::size_t const size = std::clamp(2 * m_size, kFirstBlock, kLargestBlock);
        m_blocks.push_back(std::make_unique<OptionDescription[]>(size));
        m_size = size;
        m_used = 0;
    }
    m_spare = &m_blocks.back()[m_used++];
    return *m_spare;
}

}  // namespace varo_3_3
