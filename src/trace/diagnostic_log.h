#pragma once

#include <iosfwd>
#include <string_view>

#include "trace/console.h"
#include "varo/trace.h"

namespace varo_3_3::internal {

/// Where lines of the trace go: the console stream while the trace is on, else a stream that
/// discards them.
std::ostream& varoLog();

/// Whether the trace is on. The switch is a plain bool for hosts; threads may change it meanwhile.
inline bool isTraced(bool const& traceSwitch) {
    return __atomic_load_n(&traceSwitch, __ATOMIC_RELAXED);
}

inline void switchTrace(bool isOn) {
    __atomic_store_n(&varoLogEnabled, isOn, __ATOMIC_RELAXED);
}

// The parts of a line are converted in a function of its own, off the path of a parse that is not
// traced.
template <class... Parts>
[[gnu::cold, gnu::noinline]] void writeTrace(Parts... parts) {
    writeLine(varoLog(), {parts...});
}

template <class>
using TextPart = std::string_view;

/// Writes one line of the trace, joined from texts, if the switch is on. Otherwise this costs one
/// branch, and nothing is joined.
template <class... Parts>
[[gnu::always_inline]] inline void traceWhile(bool const& traceSwitch, Parts const&... parts) {
    if (isTraced(traceSwitch)) [[unlikely]] {
        writeTrace<TextPart<Parts>...>(parts...);
    }
}

/// The same for the switch of the process.
template <class... Parts>
void varoLog(Parts const&... parts) {
    traceWhile(varoLogEnabled, parts...);
}

}  // namespace varo_3_3::internal
