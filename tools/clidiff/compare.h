#pragma once

#include <string>
#include <vector>

#include "command_line.h"

namespace clidiff {

/// What changed, a line each.
struct Changes {
    std::vector<std::string> breaks;
    std::vector<std::string> additions;
};

/// Compares two versions of a command line. Without a break, every line that the old one accepted,
/// and whose dashed words it all knew, gives with the new one the same return code, the same values
/// under the old names, and the same plain arguments.
///
/// The other way round it may be too careful: some rare changes, such as a name that moves between
/// declarations which share names, count as breaks although no line may notice them.
Changes compare(CommandLine const& older, CommandLine const& newer);

}  // namespace clidiff
