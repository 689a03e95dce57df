#pragma once

#include <vector>

#include "options/option_description.h"
#include "varo/result.h"

namespace varo_3_3 {

/// One occurrence of an option on its way into a result: its position and its values, in order.
struct OptionData {
    int m_position = 0;
    std::vector<Value> m_values;
};

/// Where recognisers put what they recognised.
class IResultCollector {
public:
    /// Stores one occurrence of `option`. Takes the values out of `data`; texts that are not the
    /// characters of their value are copied. When it throws, nothing is stored.
    virtual void store(OptionDescription const& option, OptionData& data) = 0;

protected:
    ~IResultCollector() = default;
};

}  // namespace varo_3_3
