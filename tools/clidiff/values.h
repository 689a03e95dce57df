#pragma once

#include <string>
#include <vector>

#include "command_line.h"

namespace clidiff {

/// What becomes of the values that `older` accepted: a line, without the option's name, for each
/// one that `newer` refuses or takes for something else.
std::vector<std::string> brokenValues(Declaration const& older, Declaration const& newer);

}  // namespace clidiff
