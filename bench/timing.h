#pragma once

/// Medians of interleaved runs.

#include <algorithm>
#include <chrono>
#include <vector>

namespace bench {

/// Microseconds that one call of `work` takes.
template <class Work>
double time_us(const Work& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const auto end = std::chrono::steady_clock::now();
    return std::chrono::duration<double, std::micro>(end - start).count();
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
/// not counted, and gives the median time of each i in microseconds. Going round instead of
/// repeating one i keeps caches and branch predictors as they are when different effects follow
/// one another.
template <class Work>
std::vector<double> medians_in_rotation(size_t count, int rounds, const Work& work) {
    std::vector<std::vector<double>> times(count);
    for (int round = -1; round < rounds; ++round) {
        for (size_t i = 0; i < count; ++i) {
            const double us = time_us([&work, i] { work(i); });
            if (round >= 0) {
                times[i].push_back(us);
            }
        }
    }
    std::vector<double> medians(count);
    std::transform(times.begin(), times.end(), medians.begin(),
                   [](std::vector<double>& values) { return median(std::move(values)); });
    return medians;
}

}  // namespace bench
