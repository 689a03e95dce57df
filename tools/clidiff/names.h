#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "command_line.h"

namespace clidiff {

/// What the dashed words of a command line mean: its names, the "no-" forms of booleans, and the
/// beginnings of both, by the rules of the parser.
class Names {
public:
    /// One way to call a declaration.
    struct Key {
        std::string text;
        std::size_t declaration;
        std::size_t order;  ///< in the parser's list: by declaration, by name, negation second
        bool isNegated;     ///< text is "no-" and a name of a boolean
    };

    /// What a typed name means.
    struct Meaning {
        enum Kind { kNothing, kOne, kAmbiguous };
        Kind kind = kNothing;
        std::size_t declaration = 0;  ///< of kOne
        bool isNegated = false;       ///< of kOne: turns a boolean off
        std::span<Key const> candidates;
    };

    /// `line` outlives this object.
    explicit Names(CommandLine const& line);

    Meaning find(std::string_view typed) const;

    /// All keys with exactly this text, in the parser's order.
    std::span<Key const> exactly(std::string_view text) const;

    /// All keys, by text and then in the parser's order.
    std::span<Key const> keys() const { return m_keys; }

private:
    bool isOneOption(Key const& first) const;

    CommandLine const& m_line;
    std::vector<Key> m_keys;
};

/// Of all beginnings of `texts` at least one out of each group that stands in front of the same
/// set of texts, and every text itself: what decides something about beginnings by the texts that
/// follow need look at no others. `texts` is sorted; the beginnings are views of it, sorted,
/// without repetition, none of them empty.
std::vector<std::string_view> tellingBeginnings(std::vector<std::string_view> const& texts);

/// Sorts and drops repetitions.
void sortUnique(std::vector<std::string_view>& texts);

}  // namespace clidiff
