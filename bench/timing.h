#pragma once

/// Medians of interleaved runs.

#include <algorithm>
#include <vector>

#include "clock.h"

namespace bench {

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

/// The times of several kinds of work that took turns, in microseconds.
class Rounds {
public:
    explicit Rounds(size_t kinds) : times_(kinds) {}

    void add(size_t kind, double us) { times_[kind].push_back(us); }

    double median_of(size_t kind) const { return median(times_[kind]); }
    double least_of(size_t kind) const {
        return times_[kind].empty() ? 0.0
                                    : *std::min_element(times_[kind].begin(), times_[kind].end());
    }

    /// The median over the rounds of one kind's time divided by another's of the same round: what
    /// slows a round down slows both.
    double ratio(size_t kind, size_t to) const {
        std::vector<double> ratios;
        for (size_t i = 0; i < std::min(times_[kind].size(), times_[to].size()); ++i) {
            ratios.push_back(times_[kind][i] / times_[to][i]);
        }
        return median(std::move(ratios));
    }

private:
    std::vector<std::vector<double>> times_;
};

/// Runs `work(i)` for i from 0 to `kinds` - 1 in turn, `rounds` times over, after one round that is
/// not counted, and keeps the time of each, divided by `parts`. Going round instead of repeating
/// one i keeps caches and branch predictors as they are when different effects follow one another;
/// each round begins with another i, so that none always follows the same one's last traces.
template <class Work>
Rounds in_rotation(size_t kinds, int rounds, const Work& work, double parts = 1.0) {
    Rounds times(kinds);
    for (int round = -1; round < rounds; ++round) {
        for (size_t n = 0; n < kinds; ++n) {
            const size_t i = (n + static_cast<size_t>(round + 1)) % kinds;
            const double us = time_us([&work, i] { work(i); });
            if (round >= 0) {
                times.add(i, us / parts);
            }
        }
    }
    return times;
}

}  // namespace bench
