#include "assist/typo.h"

#include <algorithm>

namespace varo_3_3::internal {
namespace {

constexpr std::size_t kMostBytes = 64;

unsigned char lower(char letter) {
    return static_cast<unsigned char>(letter >= 'A' && letter <= 'Z' ? letter + ('a' - 'A')
                                                                     : letter);
}

}  // namespace

Typo::Typo(std::string_view word)
    : m_wordSize(word.size()),
      m_size(std::min(word.size(), kMostBytes)),
      m_mostEdits(m_size < 2    ? 0
                  : m_size <= 4 ? 1
                  : m_size <= 8 ? 2
                                : 3),
      m_mostOfBeginning(m_size < 4    ? 0
                        : m_size <= 8 ? 1
                                      : 2) {
    for (std::size_t at = 0; at < m_size; ++at) {
        m_places[lower(word[at])] |= std::uint64_t{1} << at;
    }
    for (unsigned char letter = 'a'; letter <= 'z'; ++letter) {
        m_places[letter - ('a' - 'A')] = m_places[letter];
    }
    if (m_size != 0) {
        m_first = lower(word.front());
    }
}

unsigned Typo::rank(std::string_view name) const {
    if (m_size == 0 || name.size() < 2 || name.size() + m_mostEdits < m_wordSize) {
        return kFar;
    }
    auto const [whole, beginning] = count(name);
    unsigned const far = kSteps * (m_mostEdits + 1);
    unsigned best = whole <= m_mostEdits ? kSteps * whole : far;
    // Of equally many edits those against the whole name weigh more, and those after its first
    // byte.
    best = beginning <= m_mostOfBeginning ? std::min(best, kSteps * beginning + 2) : best;
    bool const isFirstRight = m_first == lower(name.front());
    return best == far ? kFar : best + (isFirstRight ? 0 : 1);
}

Typo::Edits Typo::count(std::string_view name) const {
    std::uint64_t const last = std::uint64_t{1} << (m_size - 1);
    std::uint64_t down = ~std::uint64_t{0};  // where a row has one edit more than the row above
    std::uint64_t up = 0;                    // ... and one less
    std::uint64_t diagonal = 0;
    std::uint64_t places = 0;
    auto edits = static_cast<unsigned>(m_size);
    Edits found = {kFar, edits};
    // More bytes of the name make more edits only.
    std::size_t const read = std::min(name.size(), m_size + m_mostEdits);
    for (std::size_t at = 0; at < read; ++at) {
        // One byte makes one edit less at best: most names are given up half way through.
        if (edits > m_mostEdits + (read - at) && found.beginning > m_mostOfBeginning) {
            return {kFar, kFar};
        }
        std::uint64_t const before = places;
        places = m_places[static_cast<unsigned char>(name[at])];
        std::uint64_t const exchanged = ((~diagonal & places) << 1) & before;
        diagonal = (((places & down) + down) ^ down) | places | up | exchanged;
        std::uint64_t right = up | ~(diagonal | down);
        std::uint64_t left = diagonal & down;
        edits += (right & last) != 0 ? 1 : 0;
        edits -= (left & last) != 0 ? 1 : 0;
        found.beginning = std::min(found.beginning, edits);
        right = right << 1 | 1;
        left <<= 1;
        down = left | ~(diagonal | right);
        up = right & diagonal;
    }
    found.whole = read == name.size() ? edits : kFar;
    return found;
}

}  // namespace varo_3_3::internal
