#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace glsl {

/// What identifiers and keywords are found by: the first eight bytes as a number (the first byte
/// lowest, zero behind a shorter word) and a hash over all bytes.
struct WordKey {
    std::uint64_t head;
    std::uint32_t hash;
};

inline constexpr std::uint64_t kWordMultiplier = 0x9E3779B97F4A7C15u;

/// The bytes of `word` from `from` on, eight at most, as a number; byte order does not matter.
constexpr std::uint64_t wordBytes(const char* word, std::size_t length, std::size_t from) {
    std::uint64_t value = 0;
    const std::size_t end = length - from < 8 ? length : from + 8;
    for (std::size_t i = from; i < end; ++i) {
        value |= static_cast<std::uint64_t>(static_cast<unsigned char>(word[i]))
                 << (8 * (i - from));
    }
    return value;
}

constexpr std::uint32_t finishWordHash(std::uint64_t mixed, std::size_t length) {
    return static_cast<std::uint32_t>(((mixed ^ length) * kWordMultiplier) >> 32);
}

constexpr std::uint64_t mixWordTail(std::uint64_t mixed, std::uint64_t bytes) {
    return (mixed ^ (mixed >> 29)) * kWordMultiplier + bytes;
}

constexpr WordKey wordKey(const char* word, std::size_t length) {
    const std::uint64_t head = wordBytes(word, length, 0);
    std::uint64_t mixed = head;
    for (std::size_t from = 8; from < length; from += 8) {
        mixed = mixWordTail(mixed, wordBytes(word, length, from));
    }
    return {head, finishWordHash(mixed, length)};
}

}  // namespace glsl
