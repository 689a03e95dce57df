#pragma once

#include <span>
#include <string_view>

#include "options/option_description.h"
#include "varo/result.h"

namespace varo_3_3 {

/// A value on its way into a result: as Value, but for its text, which no zero ends and which lives
/// until it is stored.
struct NewValue {
    std::string_view text;
    mosaic2::variant_t value;
    int position = 0;
};

/// One occurrence of an option on its way into a result: its position and its values, in order.
struct OptionData {
    int m_position;
    std::span<NewValue> m_values;
};

/// Receives what recognizers recognized.
class IResultCollector {
public:
    /// Stores one occurrence of `option`. Moves the values away; texts that are not the characters
    /// of their value are copied. When it throws, nothing is stored.
    virtual void store(OptionDescription const& option, OptionData const& data) = 0;

protected:
    ~IResultCollector() = default;
};

}  // namespace varo_3_3
