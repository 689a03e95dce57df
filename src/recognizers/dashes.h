#pragma once

#include <string_view>

#include "platform/white_space.h"

namespace varo_3_3 {

/// As getDashLength, for all dashes but "-".
unsigned long getLongDashLength(std::string_view arg, unsigned long pos);

/// The length in bytes of the dash that begins at byte `pos` of `arg`, 0 if none does. Dashes are
/// "-" and five longer ones that keyboards and editors substitute for it. Throws std::out_of_range
/// when `pos` is past the end.
inline unsigned long getDashLength(std::string_view arg, unsigned long pos) {
    return pos < arg.size() && arg[pos] == '-' ? 1 : getLongDashLength(arg, pos);
}

/// Splits an argument, less one or two leading dashes, at the first "=" or run of white space into
/// name and value, which point into it. Without such a separator, all of it is the name, `value` is
/// unchanged, and the answer is false.
bool splitOptionValue(std::string_view arg, internal::WhiteSpace& whiteSpace,
                      std::string_view* name, std::string_view* value);

}  // namespace varo_3_3
