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

/// Whether the option or action with this name, any of its names, is among the arguments after
/// argv[0], whatever else is wrong with them: for help and version, which users ask for beside
/// mistakes. Only where a parse would take a word as that option: after "--", among what
/// kTakeTheRest takes along and as a value of another option it is not asked for, nor as "--no-"
/// and the name. Option files are not read. False also when memory is short. Since 3.3.1.
VARO_EXPORT bool isAskedFor(IParser* parser, int argc, char const* const* argv, char const* name);

/// The primary name of the first option among the arguments after argv[0] that is given an empty
/// text, as in `--keep "$UNSET"`, which is stored as an option without a value; the positional one
/// counts too. Null when there is none. Lives as long as the declaration. Since 3.3.1.
VARO_EXPORT char const* firstEmptyOption(IParser* parser, int argc, char const* const* argv);
/// After a failed parse, what may have been meant, on one line that is fit for a terminal:
///
///     Did you mean '--format=json'?                       an unknown name, or a value not allowed
///     '--depth' belongs to '--scan', not to '--report'.   not accepted by the action
///     Write '--count=-5'.                                 a value that begins with "-"
///     Write '--no-color'.                                 a boolean with a value
///     Add '--scan' or '--report'.                         no action
///
/// Up to three names are told, with the dashes and the value of the one that was typed; hidden
/// options are not. "" after success, and when nothing is near enough. The time is linear in the
/// names, of which no more than 64 bytes count. Since 3.3.1.
VARO_EXPORT char const* suggestion(IParser* parser);

/// What a parse of these arguments would do, without doing it: a line for each argument, and for
/// each line of the option files they name, which are read. Lines tell the place, the word, and
/// what it is or, at the first wrong one of which a parse would end, why it is wrong:
///
///     argument 1: '--sc' is the action 'scan', abbreviated
///     argument 2: '--by=dir' is the option 'by', with the value 'dir'
///     weekly.options:3: '--limits=5' is wrong: Unknown option: --limits=5
///
/// A last line "all together: ..." tells when the options and actions do not fit together. Handlers
/// are not asked. Fit for a terminal; long words are cut. "" for no arguments, and when a pointer
/// is null. Since 3.3.1.
VARO_EXPORT char const* explanation(IParser* parser, int argc, char const* const* argv);

}  // namespace varo_3_3
