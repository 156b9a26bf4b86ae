#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__) || defined(_M_X64)
#define GLSL_HAVE_SSE2 1
#include <emmintrin.h>
#endif
#if defined(_MSC_VER)
#include <intrin.h>
#endif

/// Searches over raw bytes, sixteen at a time where the processor can.
namespace glsl {

/// Number of the lowest bit that is set; `mask` is not 0.
inline unsigned lowestBit(std::uint32_t mask) {
#if defined(_MSC_VER)
    unsigned long bit = 0;
    _BitScanForward(&bit, mask);
    return static_cast<unsigned>(bit);
#else
    return static_cast<unsigned>(__builtin_ctz(mask));
#endif
}

inline unsigned lowestBit64(std::uint64_t mask) {
#if defined(_MSC_VER)
    unsigned long bit = 0;
    _BitScanForward64(&bit, mask);
    return static_cast<unsigned>(bit);
#else
    return static_cast<unsigned>(__builtin_ctzll(mask));
#endif
}

#if defined(GLSL_HAVE_SSE2)
inline __m128i loadBlock(const char* at) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
}
inline std::uint32_t blockMask(__m128i matches) {
    return static_cast<std::uint32_t>(_mm_movemask_epi8(matches));
}
#endif

/// First byte in [at, end) that is `a` or `b`; `end` if there is none.
inline const char* findEither(const char* at, const char* end, char a, char b) {
#if defined(GLSL_HAVE_SSE2)
    const __m128i wanted_a = _mm_set1_epi8(a);
    const __m128i wanted_b = _mm_set1_epi8(b);
    for (; end - at >= 16; at += 16) {
        const __m128i block = loadBlock(at);
        const std::uint32_t mask = blockMask(
            _mm_or_si128(_mm_cmpeq_epi8(block, wanted_a), _mm_cmpeq_epi8(block, wanted_b)));
        if (mask != 0) {
            return at + lowestBit(mask);
        }
    }
#endif
    while (at != end && *at != a && *at != b) {
        ++at;
    }
    return at;
}

/// First byte in [at, end) that is `wanted`; `end` if there is none.
inline const char* findByte(const char* at, const char* end, char wanted) {
    if (at == end) {
        return end;
    }
    const void* found = std::memchr(at, wanted, static_cast<std::size_t>(end - at));
    return found == nullptr ? end : static_cast<const char*>(found);
}

inline std::size_t countByte(const char* at, const char* end, char wanted) {
    std::size_t count = 0;
    for (; at != end; ++at) {
        count += *at == wanted ? 1 : 0;
    }
    return count;
}

/// If a comment begins at `at`, the byte behind it (for `//` the one behind the newline), else
/// `at`. An unclosed comment reaches to `end`. `/*/` does not close itself.
inline const char* skipComment(const char* at, const char* end) {
    if (end - at < 2 || at[0] != '/') {
        return at;
    }
    if (at[1] == '/') {
        const char* newline = findByte(at + 2, end, '\n');
        return newline == end ? end : newline + 1;
    }
    if (at[1] != '*') {
        return at;
    }
    for (const char* star = at + 2;; ++star) {
        star = findByte(star, end, '*');
        if (end - star < 2) {
            return end;
        }
        if (star[1] == '/') {
            return star + 2;
        }
    }
}

/// The same, and all comments that follow at once.
inline const char* skipComments(const char* at, const char* end) {
    for (;;) {
        const char* behind = skipComment(at, end);
        if (behind == at) {
            return at;
        }
        at = behind;
    }
}

}  // namespace glsl
