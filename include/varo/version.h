#pragma once

#include "varo/export.h"

/// The version of these headers as one number, major * 10000 + minor * 100 + patch. The build reads
/// the library's version from these three lines.
#define VARO_VERSION_MAJOR 3
#define VARO_VERSION_MINOR 3
#define VARO_VERSION_PATCH 1
#define VARO_VERSION (VARO_VERSION_MAJOR * 10000 + VARO_VERSION_MINOR * 100 + VARO_VERSION_PATCH)

namespace varo_3_3 {

/// The version of the loaded library, encoded like VARO_VERSION. It differs from the macro when a
/// program runs with a release other than the one it was compiled with.
VARO_EXPORT int libraryVersion() noexcept;

}  // namespace varo_3_3
