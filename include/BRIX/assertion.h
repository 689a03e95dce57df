#pragma once

#include "varo/export.h"

namespace BRIX::debug::_private {

/// A function that failed checks are reported to: `check` is the text of the check, `file` and
/// `line` tell where it is, and `function` is the signature of the function that made it. All texts
/// are literals. When the hook returns, the failed operation goes on; one that throws may end the
/// process.
using assertion_t = void (*)(char const* check, char const* file, int line, char const* function);

/// The hook of the whole process; never null. The initial one writes one line to standard error. A
/// host may store its own function here, from one thread, while no other uses the library.
extern VARO_EXPORT assertion_t assertion;

}  // namespace BRIX::debug::_private
