#pragma once

#include "varo/export.h"

namespace varo_3_3 {

class IOption;
class IParser;

/// What a program has got wrong in its declarations, one line each; "" when all is well. For the
/// program's own test, after everything is declared:
///
///     EXPECT_STREQ(varo::describeMistakes(parser.interface()), "");
///
/// It reports refused declarations, each with the reason (the first hundred by name); names that
/// nobody can type; names of other declarations that a name or synonym hides; modifiers of actions
/// that are not declared; modifiers that share a name but not their type; all positional
/// declarations but the first; defaults, allowed values and deprecated values of another type than
/// the option's; defaults outside the allowed values; and allowed values that hold the separator.
/// The lines are for people, and may change with any version.
///
/// The text lives as long as the parser. "" also for null and for a parser that createParser did
/// not make; "Out of memory." when memory runs out. Since 3.3.1.
VARO_EXPORT char const* describeMistakes(IParser* parser);

/// What may be intended, one line each: every pair of names of different declarations where one
/// begins with the other, so that the shorter does not abbreviate the longer. One-letter names are
/// left out. Otherwise like describeMistakes. Since 3.3.1.
VARO_EXPORT char const* describeRemarks(IParser* parser);

/// Whether `option` is the placeholder that `parser` returns for refused declarations. False for
/// null, and for a parser that createParser did not make. Since 3.3.1.
VARO_EXPORT bool isRefused(IParser* parser, IOption const* option);

}  // namespace varo_3_3

/// Programs that do not pin the version of the interface may write varo::.
namespace varo = varo_3_3;
