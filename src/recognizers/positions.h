#pragma once

#include <sys/single_threaded.h>

#include "varo/result.h"

namespace varo_3_3::internal {

/// Takes the next number of a sequence of positions. At its end, 2147483646, the sequence stops.
/// Threads may share a sequence: each gets its numbers in ascending order.
[[gnu::always_inline]] inline int takePosition(int& next) {
    constexpr int kLastPosition = kNoPosition - 1;
    if (__libc_single_threaded) {  // plain steps, as for reference counts
        return next < kLastPosition ? next++ : kLastPosition;
    }
    int position = __atomic_load_n(&next, __ATOMIC_RELAXED);
    while (position < kLastPosition &&
           !__atomic_compare_exchange_n(&next, &position, position + 1, true, __ATOMIC_RELAXED,
                                        __ATOMIC_RELAXED)) {
    }
    return position;
}

/// The next number of a sequence, without taking it.
inline int nextPosition(int const& next) {
    return __atomic_load_n(&next, __ATOMIC_RELAXED);
}

}  // namespace varo_3_3::internal
