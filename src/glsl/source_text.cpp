#include "glsl/source_text.h"

#include <algorithm>
#include <cstring>

namespace glsl {

void SourceText::assign(const char* bytes, std::size_t length, std::size_t slack) {
    capacity_ = length + slack;
    bytes_.reset(new char[capacity_ + kPadding]);
    length_ = length;
    if (length != 0) {
        std::memcpy(bytes_.get(), bytes, length);
    }
    std::memset(bytes_.get() + length, 0, kPadding);
}

void SourceText::resize(std::size_t length) {
    if (length > capacity_) {
        const std::size_t capacity = std::max(length, capacity_ + capacity_ / 2);
        std::unique_ptr<char[]> larger(new char[capacity + kPadding]);
        std::memcpy(larger.get(), bytes_.get(), length_);
        bytes_ = std::move(larger);
        capacity_ = capacity;
    }
    length_ = length;
    std::memset(bytes_.get() + length, 0, kPadding);
}

void SourceText::replaceTail(std::size_t from, std::string_view tail) {
    resize(from + tail.size());
    if (!tail.empty()) {
        std::memcpy(bytes_.get() + from, tail.data(), tail.size());
    }
}

}  // namespace glsl
