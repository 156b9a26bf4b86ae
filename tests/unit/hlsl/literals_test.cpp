#include "glsl/hlsl/literals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <string>

namespace glsl {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

std::string floatText(float value) {
    LiteralBuffer buffer;
    return std::string(floatLiteral(value, buffer));
}

std::string doubleText(double value) {
    LiteralBuffer buffer;
    return std::string(doubleLiteral(value, buffer));
}

#ifndef _WIN32
float floatOf(uint32_t bits) {
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}
#endif

TEST(LiteralTest, IntIsSignedDecimal) {
    LiteralBuffer buffer;
    EXPECT_EQ(intLiteral(7, buffer), "7");
    EXPECT_EQ(intLiteral(0, buffer), "0");
    EXPECT_EQ(intLiteral(-12, buffer), "-12");
    EXPECT_EQ(intLiteral(std::numeric_limits<int32_t>::min(), buffer), "-2147483648");
    EXPECT_EQ(intLiteral(std::numeric_limits<int32_t>::max(), buffer), "2147483647");
}

TEST(LiteralTest, UintPrintsItsBitsAsASignedNumber) {
    LiteralBuffer buffer;
    EXPECT_EQ(uintLiteral(7, buffer), "7u");
    EXPECT_EQ(uintLiteral(2147483647U, buffer), "2147483647u");
    EXPECT_EQ(uintLiteral(2147483648U, buffer), "-2147483648u");
    EXPECT_EQ(uintLiteral(4294967295U, buffer), "-1u");
}

struct FloatCase {
    float value;
    const char* text;
};
void PrintTo(const FloatCase& c, std::ostream* out) {
    *out << c.text;
}

class FloatLiteralTest : public testing::TestWithParam<FloatCase> {};
INSTANTIATE_TEST_SUITE_P(
    Spelling, FloatLiteralTest,
    testing::Values(FloatCase{1.0F, "1.0f"}, FloatCase{0.0F, "0.0f"}, FloatCase{-0.0F, "-0.0f"},
                    FloatCase{0.5F, "0.5f"}, FloatCase{2.5F, "2.5f"}, FloatCase{100.0F, "100.0f"},
                    FloatCase{-1.25F, "-1.25f"}, FloatCase{0.1F, "0.1000000014901161f"},
                    FloatCase{3.14F, "3.1400001049041748f"},
                    FloatCase{1e20F, "100000002004087734272.0f"},
                    FloatCase{16777216.0F, "16777216.0f"}, FloatCase{33554432.0F, "33554432.0f"},
                    FloatCase{4294967296.0F, "4294967296.0f"},
                    FloatCase{3.4028234663852886e38F, "340282346638528859811704183484516925440.0f"},
                    FloatCase{5e-17F, "0.0000000000000001f"}, FloatCase{4e-17F, "0.0f"},
                    FloatCase{-1e-20F, "-0.0f"}, FloatCase{kInfinity, "inf.0f"},
                    FloatCase{-kInfinity, "-inf.0f"}, FloatCase{std::nanf(""), "nan.0f"},
                    // Halfway between two texts: 2^-17 ends in ...25 behind 16 digits.
                    FloatCase{7.62939453125e-06F, "0.0000076293945312f"},
                    FloatCase{2.288818359375e-05F, "0.0000228881835938f"}));

TEST_P(FloatLiteralTest, IsSpelled) {
    EXPECT_EQ(floatText(GetParam().value), GetParam().text);
}

#ifndef _WIN32  // only the comparison with the C library below asks it
// The rule in the C library's words.
std::string formattedFloat(float value) {
    char buffer[1024];
    std::snprintf(buffer, sizeof buffer, "%.16f", static_cast<double>(value));
    std::string text = buffer;
    if (text.find('.') == std::string::npos) {
        std::snprintf(buffer, sizeof buffer, "%g.0f", static_cast<double>(value));
        return buffer;
    }
    text.erase(text.find_last_not_of('0') + 1);
    return text + (text.back() == '.' ? "0f" : "f");
}
#endif

#ifndef _WIN32  // the C library there rounds another way

TEST(FloatLiteralRandomTest, AgreesWithTheCLibraryOnAMillionBitPatterns) {
    std::mt19937 random(20261121);
    for (int i = 0; i < 1000000; ++i) {
        auto bits = static_cast<uint32_t>(random());
        if (i % 2 == 0) {  // usual magnitudes
            bits = (bits & 0x807FFFFFU) | ((90U + (bits >> 23) % 80U) << 23);
        }
        const float value = floatOf(bits);
        ASSERT_EQ(floatText(value), formattedFloat(value)) << std::hex << bits;
    }
}

TEST(DoubleLiteralRandomTest, AgreesWithTheCLibraryOnManyBitPatterns) {
    std::mt19937_64 random(20261121);
    for (int i = 0; i < 200000; ++i) {
        const uint64_t bits = random();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        if (i % 2 == 0) {
            value = static_cast<double>(static_cast<int32_t>(bits)) / 1000.0;
        }
        char buffer[64];
        std::snprintf(buffer, sizeof buffer, "%g", value);
        ASSERT_EQ(doubleText(value), buffer) << std::hex << bits;
    }
}

#endif

TEST(DoubleLiteralTest, KeepsSixDigitsAndNoSuffix) {
    EXPECT_EQ(doubleText(2.5), "2.5");
    EXPECT_EQ(doubleText(2.0), "2");
    EXPECT_EQ(doubleText(-0.0), "-0");
    EXPECT_EQ(doubleText(3.14159265), "3.14159");
    EXPECT_EQ(doubleText(100000.0), "100000");
    EXPECT_EQ(doubleText(1000000.0), "1e+06");
    EXPECT_EQ(doubleText(1e20), "1e+20");
    EXPECT_EQ(doubleText(0.0001), "0.0001");
    EXPECT_EQ(doubleText(0.00001), "1e-05");
    EXPECT_EQ(doubleText(1e-300), "1e-300");
    EXPECT_EQ(doubleText(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(doubleText(-std::numeric_limits<double>::infinity()), "-inf");
    EXPECT_EQ(doubleText(std::nan("")), "nan");
}

}  // namespace
}  // namespace glsl
