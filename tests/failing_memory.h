#pragma once

/// Programs that are linked with failing_memory.cpp get an operator new and an allocator of
/// variants that count and that fail on demand.
namespace memory {

enum Source : unsigned { kOperatorNew = 1, kVariants = 2 };

extern unsigned sources;          ///< Those that fail once `countdown` has run out.
extern long countdown;            ///< Allocations of these sources that still succeed.
extern bool once;                 ///< Whether only one allocation fails.
extern bool failed;               ///< Whether an allocation has failed.
extern long made;                 ///< Allocations that succeeded, from any source.
extern long outstanding;          ///< Blocks not yet released, from any source.
extern long outstandingVariants;  ///< Those of variants alone.

/// From now on `allocations` from `which` sources succeed, then one fails, or all that follow.
void failAfter(long allocations, unsigned which, bool onlyOnce);

}  // namespace memory
