#pragma once

#include <atomic>

/// A plain value that several threads may read and write without a lock: a flag, a size, an id.
///
/// Reads and writes are atomic and promise nothing about other memory. Used like the value itself;
/// name the type when it goes to a variadic function: `static_cast<uint32_t>(width)`.
template <class T>
class Relaxed {
public:
    Relaxed() noexcept : value_(T{}) {}
    explicit Relaxed(T value) noexcept : value_(value) {}
    Relaxed(const Relaxed&) = delete;
    Relaxed& operator=(const Relaxed&) = delete;

    Relaxed& operator=(T value) noexcept {
        value_.store(value, std::memory_order_relaxed);
        return *this;
    }
    operator T() const noexcept { return value_.load(std::memory_order_relaxed); }

private:
    std::atomic<T> value_;
};
