#pragma once

/// Medians of interleaved runs.

#include <algorithm>
#include <chrono>
#include <ctime>
#include <vector>

namespace bench {

/// A point in time in microseconds. On Windows the clock on the wall, because work goes on in other
/// threads there; else the processor time of this thread, which other programs on the machine
/// disturb less.
inline double now_us() {
#if defined(_WIN32)
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::micro>(now).count();
#else
    timespec now = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e6 + static_cast<double>(now.tv_nsec) / 1e3;
#endif
}

/// Microseconds that one call of `work` takes.
template <class Work>
double time_us(const Work& work) {
    const double start = now_us();
    work();
    return now_us() - start;
}

/// The middle value; of an even number the upper middle one. 0 for none.
inline double median(std::vector<double> values) {
    if (values.empty()) {
        return 0.0;
    }
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

/// Runs `work(i)` for i from 0 to `count` - 1 in turn, `rounds` times over, after one round that is
/// not counted, and gives the median time of each i in microseconds, divided by `parts`. Going
/// round instead of repeating one i keeps caches and branch predictors as they are when different
/// effects follow one another.
template <class Work>
std::vector<double> medians_in_rotation(size_t count, int rounds, const Work& work,
                                        double parts = 1.0) {
    std::vector<std::vector<double>> times(count);
    for (int round = -1; round < rounds; ++round) {
        for (size_t i = 0; i < count; ++i) {
            const double us = time_us([&work, i] { work(i); });
            if (round >= 0) {
                times[i].push_back(us / parts);
            }
        }
    }
    std::vector<double> medians(count);
    std::transform(times.begin(), times.end(), medians.begin(),
                   [](std::vector<double>& values) { return median(std::move(values)); });
    return medians;
}

}  // namespace bench
