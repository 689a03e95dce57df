#include "options/value_index.h"

#include <algorithm>

#include "platform/lead_sort.h"
#include "platform/text_lead.h"

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

/// Sorts like the value: its kind, then the beginning of an integer or text.
std::uint64_t leadOf(variant_t const& value) {
    constexpr std::uint64_t kSign = std::uint64_t{1} << 63;
    Kind const kind = kindOf(value);
    std::uint64_t const lead = kind == kInteger ? value.m_value.m_unsigned ^ kSign
                               : kind == kText  ? internal::leadOf(textOf(value))
                                                : 0;
    return std::uint64_t{kind} << 60 | lead >> 4;
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
    std::vector<internal::Lead> order(values.size());
    for (std::size_t number = 0; number < order.size(); ++number) {
        order[number] = {leadOf(values[number]), static_cast<std::uint32_t>(number)};
    }
    internal::sortByLead(order, [&](std::uint32_t left, std::uint32_t right) {
        return ByKind()(values[left], values[right]);
    });
    m_sorted.resize(values.size());
    for (std::size_t number = 0; number < order.size(); ++number) {
        m_sorted[number] = &values[order[number].item];
    }
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
