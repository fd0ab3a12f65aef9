// Counts the heap allocations of the calling thread, so that a benchmark can
// show that the code it measures does not allocate (report the count per
// iteration as a counter rather than asserting it).
#pragma once

#include <cstdint>

namespace bench {

// Calls of the global operator new / new[] made by this thread so far.
uint64_t AllocationCount() noexcept;

}  // namespace bench
