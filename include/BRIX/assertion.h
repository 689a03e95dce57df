#pragma once

#include "varo/export.h"

namespace BRIX::debug::_private {

/// What a failed check is reported to: `check` is its text, `file` the header that holds it, `line`
/// its line there and `function` the signature of the function that made it. All texts are
/// literals. A hook that returns lets the failed operation go on; one that throws may end the
/// process.
using assertion_t = void (*)(char const* check, char const* file, int line, char const* function);

/// The hook in force for the whole process; never null. At first it writes one line to standard
/// error. A host may store its own function here, from one thread, while no other uses the library.
extern VARO_EXPORT assertion_t assertion;

}  // namespace BRIX::debug::_private
