#include "unit/counting_allocator.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace allocator {
namespace {

// Plain thread-locals: the allocator may run before any of them could be constructed.
thread_local size_t counted = 0;
thread_local size_t fail_in = 0;
thread_local bool failed = false;
std::atomic<long long> alive{0};

void* take(size_t size) {
    ++counted;
    if (fail_in > 0 && --fail_in == 0) {
        failed = true;
        throw std::bad_alloc();
    }
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    ++alive;
    return memory;
}

void give(void* memory) {
    if (memory != nullptr) {
        --alive;
        std::free(memory);
    }
}

}  // namespace

size_t count() {
    return counted;
}
void resetCount() {
    counted = 0;
}
long long live() {
    return alive;
}
void failNth(size_t nth) {
    fail_in = nth;
    failed = false;
}
bool struck() {
    return failed;
}

}  // namespace allocator

void* operator new(size_t size) {
    return allocator::take(size);
}
void* operator new[](size_t size) {
    return allocator::take(size);
}
void operator delete(void* memory) noexcept {
    allocator::give(memory);
}
void operator delete[](void* memory) noexcept {
    allocator::give(memory);
}
void operator delete(void* memory, size_t) noexcept {
    allocator::give(memory);
}
void operator delete[](void* memory, size_t) noexcept {
    allocator::give(memory);
}
