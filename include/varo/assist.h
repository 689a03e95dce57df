#pragma once

#include "varo/export.h"
#include "varo/parser.h"

namespace varo_3_3 {

// For the person at the terminal: functions beside the interface, since 3.3.1. They take a parser
// of this library and answer "" for null and for another implementation of IParser, and when memory
// is short. Their texts are never null and live as long as the parser. None throws, sends an event,
// writes a trace, takes a position or changes the text of getErrorDesc().

/// Where the last parse failed: "common.options:3, from weekly.options:5, from argument 2", with
/// lines and arguments counted from 1, or "text:4, ..." for parseStream; names are as they were
/// given, whatever bytes they have. When options and actions do not fit together, the place of the
/// one that does not, or of the later one of two; of a file the name alone where the line is not
/// known (it is among the first 1,000 arguments of the file). For an option file that cannot be
/// read, the place that names it. "" after success, and when no place is to blame. Since 3.3.1.
VARO_EXPORT char const* errorOrigin(IParser* parser);

}  // namespace varo_3_3
