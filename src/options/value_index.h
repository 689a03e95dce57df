#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "mosaic2/variant.h"

namespace varo_3_3 {

/// An order of variants that a search can follow. Their own has cycles where kinds are mixed, as in
/// 1, 1.0 and "1", so here the kind comes first. Integers are equal by their bits, and are ordered
/// by them.
struct ByKind {
    bool operator()(mosaic2::variant_t const& left, mosaic2::variant_t const& right) const;
};

/// The integer or double that is equal to this number of the other kind; vtNull if there is none,
/// and for doubles from 2^53 on, which equal several integers.
mosaic2::variant_t asOtherNumber(mosaic2::variant_t const& value);

/// Finds values of a list without looking at each. The list must not change meanwhile.
class ValueIndex {
public:
    /// Throws std::bad_alloc.
    explicit ValueIndex(std::vector<mosaic2::variant_t> const& values);

    /// Whether one of the values is equal to `value`.
    bool contains(mosaic2::variant_t const& value) const;

    /// What begins with a text: nothing, one value, which may be in the list several times, or
    /// several.
    struct Completion {
        mosaic2::variant_t const* value = nullptr;
        bool isUnique = false;
    };

    /// The narrow strings that begin with `text`.
    Completion complete(std::string_view text) const;

private:
    std::vector<mosaic2::variant_t const*> m_sorted;
};

}  // namespace varo_3_3
