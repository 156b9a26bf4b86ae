#pragma once

#include <cstdint>
#include <string_view>

namespace glsl {

struct WordKey;  // word.h

/// Keyword numbers that code names one by one; a number is the keyword's place in the table of
/// keywords.cpp. A word that C++ keeps for itself has an underscore behind it here.
enum class Keyword : std::uint32_t {
    attribute = 0,
    const_ = 1,
    uniform = 2,
    varying = 3,
    buffer = 4,
    shared = 5,
    coherent = 6,
    volatile_ = 7,
    restrict_ = 8,
    readonly = 9,
    writeonly = 10,
    atomic_uint = 11,
    layout = 12,
    centroid = 13,
    flat = 14,
    smooth = 15,
    noperspective = 16,
    patch = 17,
    break_ = 18,
    continue_ = 19,
    do_ = 20,
    for_ = 21,
    while_ = 22,
    switch_ = 23,
    case_ = 24,
    default_ = 25,
    if_ = 26,
    else_ = 27,
    subroutine = 28,
    in = 29,
    out = 30,
    inout = 31,
    float_ = 32,
    double_ = 33,
    int_ = 34,
    void_ = 35,
    bool_ = 36,
    true_ = 37,
    false_ = 38,
    invariant = 39,
    precise = 40,
    discard = 41,
    return_ = 42,
    FilterData = 43,
    GLProgram = 60,
    mat2 = 61,
    mat3 = 62,
    mat4 = 63,
    vec2 = 85,
    vec3 = 86,
    vec4 = 87,
    ivec2 = 88,
    ivec3 = 89,
    ivec4 = 90,
    bvec2 = 91,
    bvec3 = 92,
    bvec4 = 93,
    dvec2 = 94,
    dvec3 = 95,
    dvec4 = 96,
    uint_ = 97,
    uvec2 = 98,
    uvec3 = 99,
    uvec4 = 100,
    lowp = 101,
    mediump = 102,
    highp = 103,
    precision = 104,
    sampler1D = 105,
    sampler2D = 106,
    uimage2DMSArray = 177,
    struct_ = 178,
    common = 179,
    using_ = 216,
};

inline constexpr std::uint32_t kKeywordCount = 217;

constexpr std::uint32_t id(Keyword keyword) {
    return static_cast<std::uint32_t>(keyword);
}

/// Spelling of a keyword; empty for a number that is none.
std::string_view keywordText(std::uint32_t id);

/// Number of the keyword that `word` is, exactly and in this case; -1 if it is none.
std::int32_t findKeyword(std::string_view word);
/// The same with the key of `word` at hand.
std::int32_t findKeyword(std::string_view word, const WordKey& key);

/// True for the words that name a type: scalars and `void`, the host's words, vectors, matrices,
/// samplers, images and `atomic_uint`.
constexpr bool isTypeKeyword(std::uint32_t id) {
    return id == 11 || (id >= 32 && id <= 36) || (id >= 43 && id <= 100) ||
           (id >= 105 && id <= 177);
}

/// True for the words that a declaration refuses.
constexpr bool isReservedKeyword(std::uint32_t id) {
    return id >= 179 && id <= 216;
}

}  // namespace glsl
