#pragma once

#include <bits/functexcept.h>

#include <cstddef>

/// The standard exceptions that the library throws itself, through the functions that libstdc++'s
/// own headers call: each class thrown by name would add four symbols that the loader looks up
/// whenever a program starts. These functions belong to libstdc++'s binary interface, not to its
/// documented one: another standard library breaks this file, and no other.
namespace varo_3_3::internal {

[[noreturn]] inline void throwBadAlloc() {
    std::__throw_bad_alloc();
}

[[noreturn]] inline void throwLogicError(char const* text) {
    std::__throw_logic_error(text);
}

/// `format` takes the two numbers as %zu.
[[noreturn]] inline void throwOutOfRange(char const* format, std::size_t at, std::size_t size) {
    std::__throw_out_of_range_fmt(format, at, size);
}

}  // namespace varo_3_3::internal
