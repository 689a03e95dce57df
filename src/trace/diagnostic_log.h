#pragma once

#include <string_view>

#include "trace/console.h"
#include "varo/trace.h"

namespace varo_3_3::internal {

// The parts of a line are converted in a separate function, out of the path of a parse that is not
// traced.
template <class... Parts>
[[gnu::cold, gnu::noinline]] void writeTrace(Parts... parts) {
    writeLine({parts...});
}

template <class>
using TextPart = std::string_view;

/// Writes one line of the trace, assembled from texts, if `isOn`. Otherwise this costs one branch
/// and nothing is assembled.
template <class... Parts>
void traceWhile(bool const& isOn, Parts const&... parts) {
    if (isOn) [[unlikely]] {
        writeTrace<TextPart<Parts>...>(parts...);
    }
}

/// The same while the process's trace is on.
template <class... Parts>
void varoLog(Parts const&... parts) {
    traceWhile(varoLogEnabled, parts...);
}

}  // namespace varo_3_3::internal
