#pragma once

/// How constants are spelled. The texts are the same on every platform: nothing here depends on a
/// locale or on the C library's printf.

#include <array>
#include <cstdint>
#include <string_view>

namespace glsl {

/// Room for any literal; the longest is a float of 40 digits before the point.
using LiteralBuffer = std::array<char, 64>;

/// "%d": 7, -7. The view ends with the buffer's life.
std::string_view intLiteral(int32_t value, LiteralBuffer& buffer);

/// "%du": the 32 bits as a signed number, so that 4294967295 reads -1u.
std::string_view uintLiteral(uint32_t value, LiteralBuffer& buffer);

/// "%.16f" of the widened value (ties to even), without the zeros at its end but with a digit
/// behind the point, and "f": 1.0f, 0.1000000014901161f. Infinity is inf.0f and not a number
/// nan.0f, either with its sign.
std::string_view floatLiteral(float value, LiteralBuffer& buffer);

/// "%g": 2.5, 2, 1e+20.
std::string_view doubleLiteral(double value, LiteralBuffer& buffer);

}  // namespace glsl
