#include "glsl/arena.h"

#include <algorithm>

namespace glsl {

namespace {

// A block is a quarter of what the arena holds already: few blocks for a large source, little
// waste for a small one.
constexpr std::size_t kSmallestBlock = 4096;
constexpr std::size_t kLargestBlock = std::size_t{1} << 20;

}  // namespace

arena* arena::create(std::size_t first_bytes) {
    const std::size_t bytes = sizeof(arena) + ((first_bytes + 7) & ~std::size_t{7});
    char* memory = static_cast<char*>(::operator new(bytes));
    return ::new (memory) arena(memory + sizeof(arena), memory + bytes, bytes);
}

void* arena::allocateInNewBlock(std::size_t bytes) {
    const std::size_t usual = std::clamp(footprint_ / 4, kSmallestBlock, kLargestBlock);
    const std::size_t size = std::max(usual, bytes + sizeof(Block));
    char* memory = static_cast<char*>(::operator new(size));
    blocks_ = ::new (memory) Block{blocks_};
    footprint_ += size;
    char* first = memory + sizeof(Block);
    // A single large object does not cost the rest of the block in use.
    if (size - sizeof(Block) - bytes >= static_cast<std::size_t>(end_ - cursor_)) {
        cursor_ = first + bytes;
        end_ = memory + size;
    }
    return first;
}

void arena::destroy() {
    for (Block* block = blocks_; block != nullptr;) {
        Block* next = block->next;
        ::operator delete(block);
        block = next;
    }
    this->~arena();
    ::operator delete(this);
}

}  // namespace glsl
