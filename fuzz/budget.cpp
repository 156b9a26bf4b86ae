#include "budget.h"

#include <ctime>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

// The sanitizer's run time; a build without one does not have these.
extern "C" {
__attribute__((weak)) int __sanitizer_install_malloc_and_free_hooks(
    void (*malloc_hook)(const volatile void*, size_t), void (*free_hook)(const volatile void*));
__attribute__((weak)) size_t __sanitizer_get_allocated_size(const volatile void* p);
}

namespace fuzz {
namespace {

constexpr double kSecondsPerPiece = 1.0;
constexpr std::size_t kPiece = std::size_t{64} << 10;  // bytes of input that a second is for

// Plain numbers: everything measured runs on the fuzzer's one thread.
bool measuring = false;
long long live_bytes = 0;
long long peak_bytes = 0;

void on_malloc(const volatile void* /*pointer*/, size_t bytes) {
    if (measuring) {
        live_bytes += static_cast<long long>(bytes);
        peak_bytes = std::max(peak_bytes, live_bytes);
    }
}

void on_free(const volatile void* pointer) {
    if (measuring && pointer != nullptr) {
        live_bytes -= static_cast<long long>(__sanitizer_get_allocated_size(pointer));
    }
}

void install_hooks() {
    static const bool done = [] {
        if (__sanitizer_install_malloc_and_free_hooks != nullptr) {
            __sanitizer_install_malloc_and_free_hooks(on_malloc, on_free);
        }
        return true;
    }();
    static_cast<void>(done);
}

double thread_seconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

}  // namespace

Budget::Budget(std::size_t input_bytes) : input_bytes_(input_bytes) {
    install_hooks();
    live_bytes = peak_bytes = 0;
    started_ = thread_seconds();
    measuring = true;
}

Budget::~Budget() {
    measuring = false;
    const double seconds = thread_seconds() - started_;
    const double pieces = std::max(1.0, static_cast<double>(input_bytes_) / kPiece);
    const auto allowed = static_cast<long long>(kBytesPerByte * input_bytes_ + kBytesBesides);
    if (seconds > kSecondsPerPiece * pieces || peak_bytes > allowed) {
        std::fprintf(stderr, "%zu bytes of input took %.2f s and %lld bytes of heap\n",
                     input_bytes_, seconds, peak_bytes);
        std::abort();
    }
}

void require(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "does not hold: %s\n", what);
        std::abort();
    }
}

}  // namespace fuzz
