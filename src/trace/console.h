#pragma once

#include <initializer_list>
#include <iosfwd>
#include <string_view>

namespace varo_3_3::internal {

/// The console stream, ready for use.
std::ostream& console();

/// Writes the parts as one line to `stream`, at once. What the stream refuses is lost, even if the
/// host made it throw; only the cancellation of the thread passes through.
void writeLine(std::ostream& stream, std::initializer_list<std::string_view> parts);

}  // namespace varo_3_3::internal
