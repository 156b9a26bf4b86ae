#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <string_view>
#include <utility>

namespace glsl {

/// Bump memory for one syntax tree. Whatever is made here is given back in one go when the last
/// reference to the arena goes; no destructor of an object in it ever runs, so such objects own
/// nothing outside the arena, and giving back a tree takes no recursion however deep it is.
///
/// The arena lies in its own first block. One thread uses it; the count is not atomic.
class arena {
public:
    /// A new arena with one reference, whose first block holds about `first_bytes` bytes.
    /// Throws std::bad_alloc.
    static arena* create(std::size_t first_bytes);

    arena(const arena&) = delete;
    arena& operator=(const arena&) = delete;

    void retain() { ++references_; }
    /// Drops one reference; the last one gives back all blocks and the arena itself.
    void release() {
        if (--references_ == 0) {
            destroy();
        }
    }

    /// `bytes` bytes, aligned to 8 and not initialised. Throws std::bad_alloc.
    void* allocate(std::size_t bytes) {
        bytes = (bytes + 7) & ~std::size_t{7};
        if (static_cast<std::size_t>(end_ - cursor_) < bytes) {
            return allocateInNewBlock(bytes);
        }
        void* result = cursor_;
        cursor_ += bytes;
        return result;
    }

    template <class T, class... Arguments>
    T* make(Arguments&&... arguments) {
        static_assert(alignof(T) <= 8, "blocks are aligned to 8");
        return ::new (allocate(sizeof(T))) T(std::forward<Arguments>(arguments)...);
    }

    /// A copy of `text` that lives as long as the arena.
    std::string_view copy(std::string_view text) {
        if (text.empty()) {
            return {};
        }
        char* bytes = static_cast<char*>(allocate(text.size()));
        std::memcpy(bytes, text.data(), text.size());
        return {bytes, text.size()};
    }

    /// Bytes taken from the heap so far.
    std::size_t footprint() const { return footprint_; }

private:
    struct Block {
        Block* next;
    };

    arena(char* cursor, char* end, std::size_t footprint)
        : cursor_(cursor), end_(end), footprint_(footprint) {}
    ~arena() = default;
    void* allocateInNewBlock(std::size_t bytes);
    void destroy();

    char* cursor_;             // next free byte of the newest block
    char* end_;                // behind its last byte
    Block* blocks_ = nullptr;  // newest first; the block that holds the arena is not among them
    std::size_t footprint_;
    std::uint32_t references_ = 1;
};

}  // namespace glsl
