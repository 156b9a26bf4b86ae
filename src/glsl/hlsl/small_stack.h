#pragma once

/// A growable array that starts inside its owner, so that a usual shader takes no heap for it.

#include <array>
#include <cstddef>
#include <type_traits>
#include <vector>

namespace glsl {

/// A stack of plain records; the first kInline of them live in the object itself. Growing moves
/// the records, so hold positions and not pointers.
template <typename T, size_t kInline>
class SmallStack {
    static_assert(std::is_trivially_copyable_v<T>, "records are moved as bytes");

public:
    SmallStack() = default;
    SmallStack(const SmallStack&) = delete;
    SmallStack& operator=(const SmallStack&) = delete;

    [[nodiscard]] size_t size() const { return size_; }
    [[nodiscard]] T& operator[](size_t i) { return data_[i]; }
    [[nodiscard]] const T& operator[](size_t i) const { return data_[i]; }
    [[nodiscard]] T& back() { return data_[size_ - 1]; }

    void push(T record) {
        if (size_ == capacity_) {
            grow();
        }
        data_[size_++] = record;
    }
    void truncate(size_t size) { size_ = size; }

private:
    void grow() {
        std::vector<T> larger(capacity_ * 2);
        for (size_t i = 0; i < size_; ++i) {
            larger[i] = data_[i];
        }
        heap_.swap(larger);
        data_ = heap_.data();
        capacity_ = heap_.size();
    }

    std::array<T, kInline> inline_;  // not initialised: only what lies below size_ is read
    std::vector<T> heap_;
    T* data_ = inline_.data();
    size_t size_ = 0;
    size_t capacity_ = kInline;
};

}  // namespace glsl
