#pragma once

#include "varo/parser.h"

namespace varo_3_3 {

/// What a recognizer returns. A parse returns its failures to the host.
enum result_t : int {
    /// recognize: this recognizer takes the argument; parse: it has taken it.
    kTaken = 0,
    /// recognize: not mine.
    kNotTaken = 1,
    /// parse: an event handler refused a value; the message quotes it.
    kValueRefused = 1,
    /// parse: the message says what is wrong.
    kArgumentError = 2
};

static_assert(int{kTaken} == kSuccess && int{kValueRefused} == kRefused &&
              int{kArgumentError} == kParseError);

}  // namespace varo_3_3
