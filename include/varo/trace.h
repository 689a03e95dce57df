#pragma once

#include <iosfwd>

#include "varo/export.h"

namespace varo_3_3::internal {

/// Whether the trace is written to BRIX::ucout. Every parse switches it off when it starts, and on
/// again if its first argument is "varooption=varologenable=1", so what a host sets holds until the
/// next parse. One switch for the whole process. Threads may parse at the same time; a host may
/// write the switch only while none does.
extern VARO_EXPORT bool varoLogEnabled;

}  // namespace varo_3_3::internal

namespace BRIX {

/// The console stream that the trace is written to: the process's std::cout under a second name. (A
/// reference, since a separate stream would have to be constructed whenever the library is loaded.)
/// Redirect the trace with `ucout.rdbuf(buffer)`.
extern VARO_EXPORT std::ostream& ucout;

namespace internal {

/// Makes ucout ready for use, as the header iostream does for std::cout. Returns true.
VARO_EXPORT bool prepareConsole();

#ifndef VARO_BUILDING_LIBRARY
/// Runs when a program that includes this header starts, so that ucout can be used from then on.
[[maybe_unused]] static bool const consoleIsReady = prepareConsole();
#endif

}  // namespace internal
}  // namespace BRIX
