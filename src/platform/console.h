#pragma once

#include <ostream>

#include "varo/trace.h"

namespace BRIX {

/// The console stream, made ready for use even in a program that never includes <iostream>.
std::ostream& console();

}  // namespace BRIX
