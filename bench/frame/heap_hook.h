#pragma once

/// Counts what a loaded library asks of the heap: its imports of malloc, calloc, realloc and free
/// are redirected to counting functions.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// Redirects the imports of each of these loaded modules, for the life of the process. Modules that
/// are not loaded are left out.
///
/// @returns the number of imports that were redirected
size_t hook_heap_of(const std::vector<std::string>& modules);

/// Calls that gave a block, and bytes in use by blocks of the hooked modules, since the process
/// started.
struct HookedHeap {
    uint64_t allocations = 0;
    int64_t bytes_in_use = 0;
};
HookedHeap hooked_heap();

}  // namespace bench
