#pragma once

#include <string_view>

#include "trace/console.h"
#include "varo/trace.h"

namespace varo_3_3::internal {

// What a line is put together from is converted in a function of its own, off the way of a parse
// that is not traced.
template <class... Parts>
[[gnu::cold, gnu::noinline]] void writeTrace(Parts... parts) {
    writeLine({parts...});
}

template <class>
using TextPart = std::string_view;

/// Writes one line of the trace, put together from texts. While the trace is off this costs one
/// branch and nothing is put together, so there is nothing to discard either.
template <class... Parts>
void varoLog(Parts const&... parts) {
    if (varoLogEnabled) [[unlikely]] {
        writeTrace<TextPart<Parts>...>(parts...);
    }
}

}  // namespace varo_3_3::internal
