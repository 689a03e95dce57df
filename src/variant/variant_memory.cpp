#include <sys/single_threaded.h>

#include <cstdlib>

#include "mosaic2/variant.h"
#include "platform/throw.h"

namespace mosaic2 {

variant_t::memory_functions_t variant_t::m_mem = {std::free, std::malloc};

namespace internal {

// Before a process has its second thread, plain steps are atomic too, and cost a tenth.

int sync_inc(int* count) {
    if (__libc_single_threaded) {
        return ++*count;
    }
    return __atomic_add_fetch(count, 1, __ATOMIC_RELAXED);
}

int sync_dec(int* count) {
    if (__libc_single_threaded) {
        return --*count;
    }
    return __atomic_sub_fetch(count, 1, __ATOMIC_ACQ_REL);
}

void throw_bad_alloc() {
    varo_3_3::internal::throwBadAlloc();
}

}  // namespace internal
}  // namespace mosaic2
