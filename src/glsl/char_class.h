#pragma once

#include <cstdint>

namespace glsl {

// What a byte can be part of, as flags. The C library's questions depend on the locale; these do
// not.
inline constexpr std::uint8_t kLetter = 1;
inline constexpr std::uint8_t kDigit = 2;
inline constexpr std::uint8_t kUnderscore = 4;
inline constexpr std::uint8_t kBlank = 8;  // 9 to 13 and 32
inline constexpr std::uint8_t kHexLetter = 16;
inline constexpr std::uint8_t kWordByte = kLetter | kDigit | kUnderscore;
inline constexpr std::uint8_t kWordStart = kLetter | kUnderscore;

struct CharClasses {
    std::uint8_t of[256] = {};
};

constexpr CharClasses makeCharClasses() {
    CharClasses classes;
    for (int c = 'a'; c <= 'z'; ++c) {
        const auto flags = static_cast<std::uint8_t>(c <= 'f' ? kLetter | kHexLetter : kLetter);
        classes.of[c] = flags;
        classes.of[c - 'a' + 'A'] = flags;
    }
    for (int c = '0'; c <= '9'; ++c) {
        classes.of[c] = kDigit;
    }
    classes.of[static_cast<unsigned char>('_')] = kUnderscore;
    for (int c = 9; c <= 13; ++c) {
        classes.of[c] = kBlank;
    }
    classes.of[32] = kBlank;
    return classes;
}

inline constexpr CharClasses kCharClasses = makeCharClasses();

constexpr bool isClass(char c, std::uint8_t flags) {
    return (kCharClasses.of[static_cast<unsigned char>(c)] & flags) != 0;
}

}  // namespace glsl
