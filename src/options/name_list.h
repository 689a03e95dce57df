#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

#include "options/garbage.h"

namespace varo_3_3 {

/// The names of a declaration, the primary one first. Their texts are kept by the parser, each
/// ended by a zero and with "no-" before it: so the negation of a boolean needs no text of its own.
class NameList {
public:
    static constexpr std::string_view kNegation = "no-";

    std::size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    std::string_view const* begin() const { return m_many.empty() ? m_few : m_many.data(); }
    std::string_view const* end() const { return begin() + m_size; }
    /// The primary name, "" if there is none.
    std::string_view first() const { return m_few[0]; }
    std::string_view operator[](std::size_t at) const { return begin()[at]; }
    bool operator==(NameList const& other) const {
        return std::equal(begin(), end(), other.begin(), other.end());
    }

    /// "no-" and the name at `at`.
    std::string_view negation(std::size_t at) const {
        std::string_view const name = begin()[at];
        return {name.data() - kNegation.size(), kNegation.size() + name.size()};
    }

    /// Adds a copy of `name`. Throws std::bad_alloc, with nothing changed.
    void add(std::string_view name, Garbage& texts);

    /// Requires: there is one.
    void removeLast() {
        --m_size;
        if (!m_many.empty()) {
            m_many.pop_back();
        } else {
            m_few[m_size] = "";
        }
    }

private:
    // As many as a declaration may begin with need no memory; 17 declarations save 17 allocations.
    static constexpr std::size_t kFew = 3;

    [[gnu::cold]] void addToMany(std::string_view name);

    std::string_view m_few[kFew] = {""};
    std::vector<std::string_view> m_many;  // all of them, from the fourth on
    std::size_t m_size = 0;
};

}  // namespace varo_3_3
