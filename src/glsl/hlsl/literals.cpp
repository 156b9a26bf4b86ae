#include "glsl/hlsl/literals.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <iterator>

namespace glsl {

namespace {

constexpr int kFractionDigits = 16;  // of "%.16f"
constexpr int kMantissaBits = 24;    // of a 32-bit float, the hidden one included
constexpr uint32_t kTenTo9 = 1000000000U;

// A finite float is mantissa * 2^exponent, exactly.
struct Parts {
    bool negative;
    uint32_t mantissa;
    int exponent;
};

Parts split(float value) {
    uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    const uint32_t fraction = bits & 0x7FFFFFU;
    const int biased = static_cast<int>((bits >> 23) & 0xFFU);
    const bool negative = (bits >> 31) != 0;
    return biased == 0 ? Parts{negative, fraction, -149}
                       : Parts{negative, fraction | 0x800000U, biased - 150};
}

char* put(char* at, std::string_view text) {
    std::memcpy(at, text.data(), text.size());
    return at + text.size();
}

// Exactly nine digits, zeros in front.
char* putNineDigits(char* at, uint32_t value) {
    for (int i = 8; i >= 0; --i) {
        at[i] = static_cast<char>('0' + value % 10);
        value /= 10;
    }
    return at + 9;
}

// mantissa * 2^shift for shift above 0, up to 128 bits: long division by 10^9.
char* putBigInteger(char* at, uint32_t mantissa, int shift) {
    uint32_t words[4] = {};  // lowest first
    const uint64_t shifted = static_cast<uint64_t>(mantissa) << (shift % 32);
    words[shift / 32] = static_cast<uint32_t>(shifted);
    if (shift / 32 < 3) {
        words[shift / 32 + 1] = static_cast<uint32_t>(shifted >> 32);
    }
    uint32_t groups[5] = {};  // of nine digits, lowest first: 2^128 has 39 digits
    int count = 0;
    do {
        uint64_t rest = 0;
        for (int i = 3; i >= 0; --i) {
            const uint64_t part = (rest << 32) | words[i];
            words[i] = static_cast<uint32_t>(part / kTenTo9);
            rest = part % kTenTo9;
        }
        groups[count++] = static_cast<uint32_t>(rest);
    } while ((words[0] | words[1] | words[2] | words[3]) != 0);
    at = std::to_chars(at, at + 10, groups[--count]).ptr;
    while (count > 0) {
        at = putNineDigits(at, groups[--count]);
    }
    return at;
}

// The digits behind the point as a number, and how many they are.
struct Fraction {
    uint64_t digits;
    int count;
};

constexpr uint64_t kPowersOfFive[] = {
    1ULL,         5ULL,          25ULL,         125ULL,         625ULL,          3125ULL,
    15625ULL,     78125ULL,      390625ULL,     1953125ULL,     9765625ULL,      48828125ULL,
    244140625ULL, 1220703125ULL, 6103515625ULL, 30517578125ULL, 152587890625ULL,
};
static_assert(std::size(kPowersOfFive) == kFractionDigits + 1, "5^0 to 5^16");

// round(mantissa / 2^bits * 10^16), ties to even, for more than 16 bits. As 10^16 is 5^16 * 2^16,
// the product stays below 2^62 and nothing is lost before the one rounding shift.
uint64_t roundedDigits(uint32_t mantissa, int bits) {
    const uint64_t product = mantissa * kPowersOfFive[kFractionDigits];
    const int shift = bits - kFractionDigits;
    if (shift > 62) {
        return 0;
    }
    const uint64_t quotient = product >> shift;
    const uint64_t rest = product & ((1ULL << shift) - 1);
    const uint64_t half = 1ULL << (shift - 1);
    const bool up = rest > half || (rest == half && (quotient & 1) != 0);
    return quotient + (up ? 1 : 0);
}

// mantissa / 2^bits, which is below 1, without zeros at its end; one zero for nothing. An odd
// number of 2^-n ends behind n digits.
Fraction fractionOf(uint32_t mantissa, int bits) {
    while (bits > 0 && (mantissa & 1) == 0 && mantissa != 0) {
        mantissa >>= 1;
        --bits;
    }
    if (mantissa == 0) {
        return {0, 1};
    }
    if (bits <= kFractionDigits) {
        return {mantissa * kPowersOfFive[bits], bits};
    }
    Fraction result{roundedDigits(mantissa, bits), kFractionDigits};
    while (result.count > 1 && result.digits % 10 == 0) {
        result.digits /= 10;
        --result.count;
    }
    return result;
}

char* putFraction(char* at, Fraction fraction) {
    for (int i = fraction.count - 1; i >= 0; --i) {
        at[i] = static_cast<char>('0' + fraction.digits % 10);
        fraction.digits /= 10;
    }
    return at + fraction.count;
}

char* putFinite(char* at, const Parts& parts) {
    if (parts.negative) {
        *at++ = '-';  // of a negative zero too
    }
    if (parts.exponent > 0) {
        return put(putBigInteger(at, parts.mantissa, parts.exponent), ".0");
    }
    const int bits = -parts.exponent;  // behind the point
    const uint32_t whole = bits < kMantissaBits ? parts.mantissa >> bits : 0;
    const uint32_t rest = bits < 32 ? parts.mantissa - (whole << bits) : parts.mantissa;
    // 24 bits behind the point never round up to a whole.
    at = std::to_chars(at, at + 10, whole).ptr;
    *at++ = '.';
    return putFraction(at, fractionOf(rest, bits));
}

std::string_view view(const LiteralBuffer& buffer, const char* end) {
    return {buffer.data(), static_cast<size_t>(end - buffer.data())};
}

}  // namespace

std::string_view intLiteral(int32_t value, LiteralBuffer& buffer) {
    return view(buffer, std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr);
}

std::string_view uintLiteral(uint32_t value, LiteralBuffer& buffer) {
    // On purpose: bits above 2^31 read as a negative number, as they always did.
    const auto bits = static_cast<int32_t>(value);
    char* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), bits).ptr;
    return view(buffer, put(end, "u"));
}

std::string_view floatLiteral(float value, LiteralBuffer& buffer) {
    char* at = buffer.data();
    if (std::isfinite(value)) {
        return view(buffer, put(putFinite(at, split(value)), "f"));
    }
    at = put(at, std::signbit(value) ? "-" : "");
    return view(buffer, put(at, std::isnan(value) ? "nan.0f" : "inf.0f"));
}

std::string_view doubleLiteral(double value, LiteralBuffer& buffer) {
    if (!std::isfinite(value)) {
        char* const at = put(buffer.data(), std::signbit(value) ? "-" : "");
        return view(buffer, put(at, std::isnan(value) ? "nan" : "inf"));
    }
    constexpr int kSignificantDigits = 6;
    return view(buffer, std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::general, kSignificantDigits)
                            .ptr);
}

}  // namespace glsl
