#include "glsl/hlsl/naming.h"

#include <algorithm>

namespace glsl {

namespace {

constexpr std::string_view kAvoided = "AVOID_KEYWORD_CONFLICTS_";

// A word of HLSL that a GLSL name must not meet, as it appears in the output.
struct AvoidedWord {
    std::string_view replacement;
    bool calleeStays;  // built-in functions of both languages

    constexpr std::string_view word() const { return replacement.substr(kAvoided.size()); }
};

constexpr AvoidedWord kAvoidedWords[] = {
    {"AVOID_KEYWORD_CONFLICTS_point", false},
    {"AVOID_KEYWORD_CONFLICTS_line", false},
    {"AVOID_KEYWORD_CONFLICTS_linear", false},
    {"AVOID_KEYWORD_CONFLICTS_matrix", false},
    {"AVOID_KEYWORD_CONFLICTS_vector", false},
    {"AVOID_KEYWORD_CONFLICTS_kernel", false},
    {"AVOID_KEYWORD_CONFLICTS_interpolation", false},
    {"AVOID_KEYWORD_CONFLICTS_mul", false},
    {"AVOID_KEYWORD_CONFLICTS_triangles", false},
    {"AVOID_KEYWORD_CONFLICTS_triangle", false},
    {"AVOID_KEYWORD_CONFLICTS_texture", false},
    {"AVOID_KEYWORD_CONFLICTS_pass", false},
    {"AVOID_KEYWORD_CONFLICTS_new", false},
    {"AVOID_KEYWORD_CONFLICTS_cos", true},
    {"AVOID_KEYWORD_CONFLICTS_sin", true},
    {"AVOID_KEYWORD_CONFLICTS_max", true},
    {"AVOID_KEYWORD_CONFLICTS_min", true},
};

// The shortest and the longest avoided word, and their initials: most names are told apart by them.
constexpr size_t kShortest = 3;
constexpr size_t kLongest = 13;
constexpr InitialSet kInitials("plmvkitncs");

constexpr bool mayBeAvoided(std::string_view name) {
    return name.size() >= kShortest && name.size() <= kLongest && kInitials.hasInitialOf(name);
}

constexpr bool initialsCoverTheTable() {
    for (const AvoidedWord& row : kAvoidedWords) {
        if (!mayBeAvoided(row.word())) {
            return false;
        }
    }
    return true;
}
static_assert(initialsCoverTheTable(), "keep kShortest, kLongest and kInitials in step");

struct Rename {
    std::string_view glsl;
    std::string_view hlsl;
};

// Built-ins that HLSL knows under another name; every other name stays as it is.
constexpr Rename kRenames[] = {
    {"inversesqrt", "rsqrt"},
    {"dFdx", "ddx"},
    {"dFdy", "ddy"},
    {"mod", "fmod"},  // On purpose: rounds the other way below zero, and effects rely on it.
};

}  // namespace

std::string_view avoidKeyword(std::string_view name, bool isFunctionCall) {
    if (!mayBeAvoided(name)) {
        return name;
    }
    for (const AvoidedWord& row : kAvoidedWords) {
        if (row.word() == name) {
            return isFunctionCall && row.calleeStays ? name : row.replacement;
        }
    }
    return name;
}

std::string semanticName(std::string_view name) {
    std::string result(name);
    if (needsSemanticMark(name)) {
        result += '_';
    }
    return result;
}

std::string_view renameBuiltin(std::string_view name) {
    for (const Rename& row : kRenames) {
        if (row.glsl == name) {
            return row.hlsl;
        }
    }
    return name;
}

bool isNumberedName(std::string_view name, std::string_view prefix) {
    return name.substr(0, prefix.size()) == prefix &&
           std::all_of(name.begin() + static_cast<std::ptrdiff_t>(prefix.size()), name.end(),
                       [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace glsl
