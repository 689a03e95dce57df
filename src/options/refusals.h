#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace varo_3_3 {

/// The declarations that were refused, for the host's own test. Costs nothing until there is one;
/// only the first ones are kept by name, since a host may go on declaring what is refused.
class Refusals {
public:
    enum class Reason : std::uint8_t { kNoNames, kTooManyNames, kLongThirdName, kNameTaken };

    struct Entry {
        std::string names;     // as they were given
        std::uint32_t holder;  // the number of the declaration that has a taken name
        Reason reason;
    };

    void add(char const* names, Reason reason, std::uint32_t holder) noexcept;

    /// One for which there was no memory, not even to keep its names.
    void addNameless() noexcept { ++m_withoutMemory; }

    std::vector<Entry> const& entries() const { return m_entries; }
    std::size_t moreThanEntries() const { return m_more; }
    std::size_t withoutMemory() const { return m_withoutMemory; }

private:
    static constexpr std::size_t kMost = 100;

    std::vector<Entry> m_entries;
    std::size_t m_more = 0;
    std::size_t m_withoutMemory = 0;
};

}  // namespace varo_3_3
