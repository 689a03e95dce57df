#include "options/value_index.h"

#include <algorithm>

namespace varo_3_3 {
namespace {

using mosaic2::variant_t;

enum Kind { kInteger, kDouble, kNotANumber, kText, kOther };

Kind kindOf(variant_t const& value) {
    if (value.can_get<long long>()) {
        return kInteger;
    }
    if (value.can_get<double>()) {
        return value.get<double>() == value.get<double>() ? kDouble : kNotANumber;
    }
    return value.can_get<char const*>() ? kText : kOther;
}

/// The characters of a narrow string; "" for a borrowed null.
std::string_view textOf(variant_t const& value) {
    char const* const text = value.get<char const*>();
    return text != nullptr ? text : "";
}

}  // namespace

bool ByKind::operator()(variant_t const& left, variant_t const& right) const {
    Kind const kind = kindOf(left);
    Kind const otherKind = kindOf(right);
    if (kind != otherKind || kind == kNotANumber) {
        return kind < otherKind;
    }
    return kind == kInteger ? left.m_value.m_signed < right.m_value.m_signed : left < right;
}

variant_t asOtherNumber(variant_t const& value) {
    constexpr double kLargestExact = 9007199254740992.0;  // 2^53
    Kind const kind = kindOf(value);
    if (kind == kInteger) {
        return value.get<double>();
    }
    double const number = kind == kDouble ? value.get<double>() : kLargestExact;
    bool const isExact = number > -kLargestExact && number < kLargestExact;
    return isExact ? variant_t(static_cast<long long>(number)) : variant_t();
}

ValueIndex::ValueIndex(std::vector<variant_t> const& values) {
    m_sorted.reserve(values.size());
    for (variant_t const& value : values) {
        m_sorted.push_back(&value);
    }
    std::sort(m_sorted.begin(), m_sorted.end(),
              [](auto const* left, auto const* right) { return ByKind()(*left, *right); });
}

bool ValueIndex::contains(variant_t const& value) const {
    auto const holds = [&](variant_t const& wanted) {
        auto const place =
            std::partition_point(m_sorted.begin(), m_sorted.end(),
                                 [&](auto const* held) { return ByKind()(*held, wanted); });
        return place != m_sorted.end() && **place == value;
    };
    return holds(value) || holds(asOtherNumber(value));
}

ValueIndex::Completion ValueIndex::complete(std::string_view text) const {
    auto const begin =
        std::partition_point(m_sorted.begin(), m_sorted.end(), [&](auto const* held) {
            Kind const kind = kindOf(*held);
            return kind < kText || (kind == kText && textOf(*held) < text);
        });
    auto const end = std::partition_point(begin, m_sorted.end(), [&](auto const* held) {
        return kindOf(*held) == kText && textOf(*held).starts_with(text);
    });
    if (begin == end) {
        return {};
    }
    return {*begin, textOf(**begin) == textOf(**(end - 1))};
}

}  // namespace varo_3_3
