#pragma once

#include <cstddef>

/// The program's operator new, replaced: it counts, and it fails on request.
namespace allocator {

/// Allocations since the last resetCount(), of the calling thread.
size_t count();
void resetCount();

/// Allocations minus deallocations of the whole process.
long long live();

/// Lets the nth next allocation of the calling thread throw std::bad_alloc; 0: none does.
void failNth(size_t nth);

/// Whether the allocation of failNth() has been reached.
bool struck();

}  // namespace allocator
