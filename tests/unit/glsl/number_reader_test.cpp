#include "glsl/number_reader.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

namespace glsl {
namespace {

std::uint32_t bits(float value) {
    std::uint32_t result = 0;
    std::memcpy(&result, &value, sizeof(result));
    return result;
}

std::uint64_t bits(double value) {
    std::uint64_t result = 0;
    std::memcpy(&result, &value, sizeof(result));
    return result;
}

struct LiteralCase {
    const char* text;
    const char* reading;  // kind, value and digits, or the message; then what is left
};
void PrintTo(const LiteralCase& c, std::ostream* out) {
    *out << c.text;
}

std::string reading(const char* text) {
    const char* at = text;
    const Number number = readNumber(at);
    std::string result;
    if (number.error != nullptr) {
        result = number.error;
    } else if (number.kind == NumberKind::signedInteger) {
        result = "int " + std::to_string(number.integer);
    } else if (number.kind == NumberKind::unsignedInteger) {
        result = "uint " + std::to_string(number.integer);
    } else if (number.kind == NumberKind::floating) {
        result = "float " + std::string(number.digits);
    } else {
        result = "double " + std::string(number.digits);
    }
    return result + " <" + at + ">";
}

class LiteralTest : public testing::TestWithParam<LiteralCase> {};

TEST_P(LiteralTest, ReadsAs) {
    EXPECT_EQ(reading(GetParam().text), GetParam().reading);
}

INSTANTIATE_TEST_SUITE_P(
    Integers, LiteralTest,
    testing::Values(LiteralCase{"0", "int 0 <>"}, LiteralCase{"4;", "int 4 <;>"},
                    LiteralCase{"010", "int 8 <>"}, LiteralCase{"09", "int 0 <9>"},
                    LiteralCase{"078", "int 7 <8>"}, LiteralCase{"0x1f", "int 31 <>"},
                    LiteralCase{"0XfF", "int 255 <>"}, LiteralCase{"0x", "int 0 <>"},
                    LiteralCase{"0x1fu", "uint 31 <>"}, LiteralCase{"7u", "uint 7 <>"},
                    LiteralCase{"7U", "uint 7 <>"}, LiteralCase{"1_a", "int 1 <_a>"},
                    LiteralCase{"0x1e+1", "int 30 <+1>"}, LiteralCase{"017u", "uint 15 <>"},
                    LiteralCase{"2147483647", "int 2147483647 <>"},
                    LiteralCase{"2147483648", "literal needs more than 32-bits <>"},
                    LiteralCase{"2147483648u", "uint 2147483648 <>"},
                    LiteralCase{"4294967295u", "uint 4294967295 <>"},
                    LiteralCase{"4294967296u", "literal needs more than 32-bits <>"},
                    LiteralCase{"0xFFFFFFFF", "literal needs more than 32-bits <>"},
                    LiteralCase{"0xFFFFFFFFu", "uint 4294967295 <>"},
                    LiteralCase{"037777777777u", "uint 4294967295 <>"},
                    LiteralCase{"99999999999999999999999999999999",
                                "literal needs more than 32-bits <>"}));

INSTANTIATE_TEST_SUITE_P(
    Floats, LiteralTest,
    testing::Values(LiteralCase{"1.5", "float 1.5 <>"}, LiteralCase{"1.5f", "float 1.5 <>"},
                    LiteralCase{"1.5F", "float 1.5 <>"}, LiteralCase{"1f", "float 1 <>"},
                    LiteralCase{"1.", "float 1. <>"}, LiteralCase{".5", "float .5 <>"},
                    LiteralCase{"2E3", "float 2E3 <>"}, LiteralCase{"2e+3", "float 2e+3 <>"},
                    LiteralCase{"2e-3;", "float 2e-3 <;>"}, LiteralCase{"1.5e2", "float 1.5e2 <>"},
                    LiteralCase{"09.5", "int 0 <9.5>"}, LiteralCase{"00.5", "float 00.5 <>"},
                    LiteralCase{"07.59", "float 07.59 <>"}, LiteralCase{"1..2", "float 1. <.2>"},
                    LiteralCase{"01e5", "float 01e5 <>"}, LiteralCase{"01e9", "float 01e <9>"},
                    LiteralCase{"3.0lf", "double 3.0 <>"}, LiteralCase{"3LF", "double 3 <>"},
                    LiteralCase{"2e3lf", "double 2e3 <>"}));

INSTANTIATE_TEST_SUITE_P(
    Refused, LiteralTest,
    testing::Values(LiteralCase{"1e ", "invalid numeric literal < >"},
                    LiteralCase{"1e", "invalid numeric literal <>"},
                    LiteralCase{"1e+ 2", "invalid numeric literal <+ 2>"},
                    LiteralCase{"1x", "invalid numeric literal <x>"},
                    LiteralCase{"1l", "invalid numeric literal <l>"},
                    LiteralCase{"1lF", "invalid numeric literal <lF>"},
                    LiteralCase{"0xg", "invalid numeric literal <g>"},
                    LiteralCase{"1.5u", "invalid use of suffix on literal <u>"},
                    LiteralCase{"1e2U", "invalid use of suffix on literal <U>"},
                    LiteralCase{"0x10.0", "invalid numeric literal <>"},
                    LiteralCase{"0x.8", "invalid numeric literal <>"},
                    LiteralCase{"0x1lf", "invalid numeric literal <>"}));

TEST(NumberReaderTest, FloatsAgreeWithTheCLibrary) {
    const char* const cases[] = {
        "0",
        "0.0",
        "1",
        "0.1",
        "0.2",
        "16777216",
        "16777217",
        "16777219",
        "1.17549e-38",
        "1.4e-45",
        "1e-45",
        "7e-46",
        "1e-46",
        "3.4028235e38",
        "3.4028236e38",
        "1e39",
        "1e400",
        "1e-400",
        "0e",
        "0e+",
        "0.3333333333333333333333",
        "123456789",
        "9.99999999",
        "00000000000000000000000000000000000000000000000000001",
        "8388608.5",
        "1e10",
        ".00000000000000000000000000000000000000000000000000001e53",
        "100000000000000000000000000000000000000000000000000000e-53",
        "0e99999999999999999999",
        "1e99999999999999999999",
        "1e-99999999999999999999",
    };
    for (const char* text : cases) {
        EXPECT_EQ(bits(toFloat(text)), bits(std::strtof(text, nullptr))) << text;
        EXPECT_EQ(bits(toDouble(text)), bits(std::strtod(text, nullptr))) << text;
    }
}

TEST(NumberReaderTest, RandomDecimalsAgreeWithTheCLibrary) {
    std::mt19937 random(7);
    for (int i = 0; i < 20000; ++i) {
        std::string text = std::to_string(random() % 100000000u);
        text.insert(random() % (text.size() + 1), 1, '.');
        if (text[0] == '.' && text.size() == 1) {
            continue;
        }
        if (random() % 4 == 0) {
            text += "e" + std::string(random() % 2 == 0 ? "-" : "") + std::to_string(random() % 50);
        }
        ASSERT_EQ(bits(toFloat(text)), bits(std::strtof(text.c_str(), nullptr))) << text;
        ASSERT_EQ(bits(toDouble(text)), bits(std::strtod(text.c_str(), nullptr))) << text;
    }
}

}  // namespace
}  // namespace glsl
