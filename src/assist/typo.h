#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace varo_3_3::internal {

/// A mistyped word, to be held against the names that may have been meant.
///
/// Counts the edits (a byte inserted, left out or replaced, or two neighbours exchanged; upper and
/// lower case letters are equal) between the word and a name, and between the word and the best
/// beginning of the name, since people abbreviate. All columns of the table are computed at once as
/// bits of one number, which bounds the word at 64 bytes: Hyyrö, "A bit-vector algorithm for
/// computing Levenshtein and Damerau edit distances", 2003.
class Typo {
public:
    /// The word is read here only, up to its 64th byte; to a name it must be near in size as well.
    explicit Typo(std::string_view word);

    static constexpr unsigned kFar = ~0U;

    /// How near a name is: the lower the nearer, kFar when more edits are between than a
    /// slip explains: one up to 4 bytes, two up to 8, three above, none for a single byte. For an
    /// abbreviation one less, as there are many more beginnings than names. Takes time in the
    /// length of the word, not of the name.
    unsigned rank(std::string_view name) const;

    static unsigned editsOf(unsigned rank) { return rank / kSteps; }

private:
    static constexpr unsigned kSteps = 4;  // of ranks in one edit

    struct Edits {
        unsigned whole;
        unsigned beginning;
    };
    Edits count(std::string_view name) const;

    std::array<std::uint64_t, 256> m_places{};  // of each byte in the word
    std::size_t m_wordSize;
    std::size_t m_size;  // up to the 64th byte
    unsigned m_mostEdits;
    unsigned m_mostOfBeginning;
    unsigned char m_first = 0;
};

}  // namespace varo_3_3::internal
