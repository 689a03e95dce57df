#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "command_line.h"

namespace clidiff {

/// Why a text is no command line that this version can compare.
struct Fault {
    std::size_t offset;  ///< in bytes from the beginning
    std::string reason;
};

/// Reads what describeJson wrote. Throws Fault.
CommandLine readJson(std::string_view text);

}  // namespace clidiff
