#pragma once

#include <cstdint>
#include <string_view>

namespace glsl {

enum class NumberKind : std::uint8_t {
    signedInteger,
    unsignedInteger,
    floating,
    doubleFloating,
};

/// A numeric literal as read from the text.
struct Number {
    NumberKind kind = NumberKind::signedInteger;
    const char* error = nullptr;  // constant message; the other fields are then of no use
    std::uint32_t integer = 0;    // value, a signed one as its bits
    float floatValue = 0.0f;
    double doubleValue = 0.0;
    std::string_view digits;  // of a float or double, in the source, without the suffix;
                              // an exponent may still be written with `E`
};

/// Reads the literal at `at`, which is a digit or a `.` in front of one, and moves `at` behind what
/// it consumed. The text ends with a zero byte.
Number readNumber(const char*& at);

/// What strtof and strtod give in the C locale for a text of digits, `.`, `e` or `E`, `+` and `-`
/// that begins with a digit or with `.` and a digit.
float toFloat(std::string_view digits);
double toDouble(std::string_view digits);

}  // namespace glsl
