#include "heap_count.h"

#include <malloc.h>

#include <cerrno>
#include <cstdint>

// The C library's own functions under their second names.
extern "C" {
void* __libc_malloc(size_t size);
void __libc_free(void* block);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
}

namespace bench {
namespace {

struct Counter {
    bool running;
    size_t allocations;
    int64_t in_use;  // may go below zero: blocks from before the start are freed too
    int64_t peak;
};

thread_local Counter counter = {};

void* count_block(void* block) {
    if (counter.running && block != nullptr) {
        ++counter.allocations;
        counter.in_use += static_cast<int64_t>(malloc_usable_size(block));
        if (counter.in_use > counter.peak) {
            counter.peak = counter.in_use;
        }
    }
    return block;
}

void count_end(void* block) {
    if (counter.running && block != nullptr) {
        counter.in_use -= static_cast<int64_t>(malloc_usable_size(block));
    }
}

size_t from_zero(int64_t value) {
    return value > 0 ? static_cast<size_t>(value) : 0;
}

}  // namespace

void start_counting() {
    counter = {true, 0, 0, 0};
}

HeapUse stop_counting() {
    counter.running = false;
    return {counter.allocations, from_zero(counter.peak), from_zero(counter.in_use)};
}

}  // namespace bench

extern "C" {

void* malloc(size_t size) noexcept {
    return bench::count_block(__libc_malloc(size));
}

void free(void* block) noexcept {
    bench::count_end(block);
    __libc_free(block);
}

void* calloc(size_t count, size_t size) noexcept {
    return bench::count_block(__libc_calloc(count, size));
}

void* realloc(void* block, size_t size) noexcept {
    bench::count_end(block);
    return bench::count_block(__libc_realloc(block, size));
}

void* memalign(size_t alignment, size_t size) noexcept {
    return bench::count_block(__libc_memalign(alignment, size));
}

void* aligned_alloc(size_t alignment, size_t size) noexcept {
    return memalign(alignment, size);
}

int posix_memalign(void** block, size_t alignment, size_t size) noexcept {
    *block = memalign(alignment, size);
    return *block == nullptr ? ENOMEM : 0;
}

}  // extern "C"
