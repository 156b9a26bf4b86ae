#pragma once

/// Appends to a string without a call per piece.

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace glsl {

/// Writes at the end of a string that nobody else touches meanwhile. Positions count from the
/// string's beginning, what stood in it before included.
///
/// The string is longer than the text while the writer lives, and is cut to it at the end, also
/// when an exception (out of memory) ends the writing.
class TextWriter {
public:
    /// @param expected  bytes that will probably be written; only speed depends on it
    TextWriter(std::string& out, size_t expected) : out_(out) {
        size_t used = out.size();
        out_.resize(used + expected);
        adopt(used);
    }
    ~TextWriter() { out_.resize(size()); }
    TextWriter(const TextWriter&) = delete;
    TextWriter& operator=(const TextWriter&) = delete;

    [[nodiscard]] size_t size() const { return static_cast<size_t>(at_ - begin_); }
    /// What stands from `begin` up to `end`; valid until the next write.
    [[nodiscard]] std::string_view view(size_t begin, size_t end) const {
        return {begin_ + begin, end - begin};
    }
    [[nodiscard]] std::string_view from(size_t begin) const { return view(begin, size()); }

    void put(char c) {
        require(1);
        *at_++ = c;
    }
    /// @param piece  no part of what this writer wrote; see repeat()
    void put(std::string_view piece) {
        require(piece.size());
        append(piece.data(), piece.size());
    }
    void put(std::string_view first, std::string_view second) {
        require(first.size() + second.size());
        append(first.data(), first.size());
        append(second.data(), second.size());
    }
    /// A text whose length the compiler knows.
    template <size_t kSize>
    void put(const char (&piece)[kSize]) {
        require(kSize - 1);
        append(piece, kSize - 1);
    }
    /// Appends what stands from `begin` up to `end` once more.
    void repeat(size_t begin, size_t end) {
        require(end - begin);
        append(begin_ + begin, end - begin);
    }

    /// Forgets everything from `position` on.
    void truncate(size_t position) { at_ = begin_ + position; }
    /// Takes `count` bytes out.
    void erase(size_t position, size_t count) {
        std::memmove(begin_ + position, begin_ + position + count, size() - position - count);
        at_ -= count;
    }
    void overwrite(size_t position, char c) { begin_[position] = c; }

private:
    void adopt(size_t used) {
        begin_ = out_.data();
        at_ = begin_ + used;
        end_ = begin_ + out_.size();
    }
    void append(const char* bytes, size_t count) {
        if (count != 0) {  // an empty view may point nowhere
            std::memcpy(at_, bytes, count);
            at_ += count;
        }
    }
    void require(size_t count) {
        if (static_cast<size_t>(end_ - at_) < count) {
            grow(count);
        }
    }
    void grow(size_t count) {
        const size_t used = size();
        out_.resize(used + count + used / 2);
        adopt(used);
    }

    std::string& out_;
    char* begin_ = nullptr;
    char* at_ = nullptr;
    char* end_ = nullptr;
};

}  // namespace glsl
