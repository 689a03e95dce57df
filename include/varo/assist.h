#pragma once

#include "varo/export.h"
#include "varo/parser.h"

namespace varo_3_3 {

// For the person at the terminal: functions outside the interface, since 3.3.1. They take a parser
// of this library and return "" for null, for another implementation of IParser, and when memory
// runs out. Their texts are never null and live as long as the parser. None throws, sends an event,
// writes a trace, takes a position or changes the text of getErrorDesc().

/// Where the last parse failed: "common.options:3, from weekly.options:5, from argument 2", with
/// lines and arguments counted from 1, or "text:4, ..." for parseStream; names are as they were
/// given, whatever bytes they have. When options and actions do not fit together, it is the place
/// of the one that does not fit, or of the later of two; for a file, the name alone when the line
/// is not known (it is for the first 1,000 arguments of the file). For an option file that cannot
/// be read, it is the place that names it. "" after success, and when no place is to blame. Since
/// 3.3.1.
VARO_EXPORT char const* errorOrigin(IParser* parser);

/// Whether the option or action called `name`, which may be any of its names, is among the
/// arguments after argv[0], whatever else is wrong with them: for help and version, which users ask
/// for on wrong lines too. It must be where a parse would take it as that option: not after "--",
/// not in what kTakeTheRest takes, not as a value of another option, and not with "no-" before it.
/// Option files are not read. False also when memory runs out. Since 3.3.1.
VARO_EXPORT bool isAskedFor(IParser* parser, int argc, char const* const* argv, char const* name);

/// The primary name of the first option among the arguments after argv[0] that is given an empty
/// text, as in `--keep "$UNSET"`, which is stored as an option without a value; the positional
/// option included. Null when there is none. Lives as long as the declaration. Since 3.3.1.
VARO_EXPORT char const* firstEmptyOption(IParser* parser, int argc, char const* const* argv);

/// After a failed parse, what may have been meant, on one line that is safe for a terminal:
///
///     Did you mean '--format=json'?                       an unknown name, or a value not allowed
///     '--depth' belongs to '--scan', not to '--report'.   not accepted by the action
///     Write '--count=-5'.                                 a value that begins with "-"
///     Write '--no-color'.                                 a boolean with a value
///     Add '--scan' or '--report'.                         no action
///
/// It offers up to three names, with the dashes that were typed and with the value, if a parse
/// would take that; but no hidden options, and for a missing action neither help nor version. A
/// word is shown as the program would see it: a shell may want blanks and other characters of it
/// quoted. "" after success, and when nothing is close enough. Time is linear in the number of
/// names. Since 3.3.1.
VARO_EXPORT char const* suggestion(IParser* parser);

/// What a parse of these arguments would do, without doing it: a line for each argument, and for
/// each line of the option files that they name, which are read. Each tells the place, the word,
/// and what it is or why it is wrong; a parse would end at the first wrong one:
///
///     argument 1: '--sc' is the action 'scan', abbreviated
///     argument 2: '--by=dir' is the option 'by', with the value 'dir'
///     weekly.options:3: '--limits=5' is wrong: Unknown option: --limits=5
///
/// A last line "all together: ..." tells when the options and actions do not fit together. Handlers
/// are not called, and so neither a Conversion nor the check of types narrower than int. The text
/// is safe for a terminal; long words are cut. "" for no arguments, and when a pointer is null.
/// Since 3.3.1.
VARO_EXPORT char const* explanation(IParser* parser, int argc, char const* const* argv);

}  // namespace varo_3_3
