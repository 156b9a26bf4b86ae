#include "clock.h"

#if defined(_WIN32)
#if defined(_MSC_VER)
#include <intrin.h>
#else
#include <x86intrin.h>
#endif
#include <chrono>
#else
#include <ctime>
#endif

namespace bench {

#if defined(_WIN32)
namespace {

// Counter steps in a microsecond, beside the system's clock for a while that makes its own
// coarseness small.
double measure_steps() {
    using Clock = std::chrono::steady_clock;
    constexpr auto kWhile = std::chrono::milliseconds(50);
    const auto start = Clock::now();
    const auto first = __rdtsc();
    auto end = start;
    while (end - start < kWhile) {
        end = Clock::now();
    }
    const auto steps = static_cast<double>(__rdtsc() - first);
    return steps / std::chrono::duration<double, std::micro>(end - start).count();
}

}  // namespace

double now_us() {
    static const double steps_per_us = measure_steps();
    static const auto origin = __rdtsc();
    return static_cast<double>(__rdtsc() - origin) / steps_per_us;
}
#else
double now_us() {
    timespec now = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e6 + static_cast<double>(now.tv_nsec) / 1e3;
}
#endif

}  // namespace bench
