#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <set>
#include <utility>

/// Numbers of the host that name nothing, by what they should name.
enum class Refusal { kProgram, kPrimitiveMode, kVertexCount, kTarget };

/// Remembers which numbers were refused, so that each costs the log one line and not one per frame.
class RefusalLog {
public:
    /// True the first time that this number is refused for this. After a good many different
    /// numbers always false: a log that full tells nothing new. Any thread.
    [[nodiscard]] bool is_first(Refusal refusal, int32_t number) {
        const std::lock_guard<std::mutex> lock(mutex_);
        return seen_.size() < kMost && seen_.emplace(refusal, number).second;
    }

private:
    static constexpr size_t kMost = 64;
    std::mutex mutex_;  // guards seen_
    std::set<std::pair<Refusal, int32_t>> seen_;
};
