#pragma once

/// Counts what the program asks of the heap, through any library: the C allocation functions of the
/// whole process are replaced by counting ones, and operator new stands on them.

#include <cstddef>

namespace bench {

struct HeapUse {
    size_t allocations = 0;
    size_t peak_bytes = 0;  // above what was in use at the start, as the allocator hands it out
    size_t kept_bytes = 0;  // still in use at the end
};

/// Starts counting on this thread from zero.
void start_counting();

/// Ends it and tells what was seen.
HeapUse stop_counting();

}  // namespace bench
