#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>

#include "tree_dump.h"

namespace glsl {
namespace {

using test::firstError;
using test::parsed;

constexpr char kInvalid[] = "invalid operation in constant expression";
constexpr char kNotConstant[] = "not a valid constant expression";

// What `const T x = TEXT;` folds to: the dump of the value, or the message without its place.
std::string folded(const std::string& text) {
    const std::string result = parsed("const float x = " + text + ";");
    const std::size_t value = result.find("x=");
    if (result.rfind("const float:x=", 0) == 0 && value != std::string::npos) {
        return result.substr(value + 2);
    }
    const std::size_t message = result.find(':', result.find(':') + 1);
    return message == std::string::npos ? result : result.substr(message + 1);
}

struct FoldCase {
    const char* text;
    const char* value;
};
void PrintTo(const FoldCase& c, std::ostream* out) {
    *out << c.text;
}

class FoldTest : public testing::TestWithParam<FoldCase> {};

TEST_P(FoldTest, ComesTo) {
    EXPECT_EQ(folded(GetParam().text), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Plain, FoldTest,
    testing::Values(FoldCase{"4", "4"}, FoldCase{"4u", "4u"}, FoldCase{"1.50", "1.5f'1.50"},
                    FoldCase{"1.5lf", "1.5lf'1.5"}, FoldCase{"true", "true"}, FoldCase{"(4)", "4"},
                    FoldCase{"-4", "-4"}, FoldCase{"- -4", "4"}, FoldCase{"-1.5", "-1.5f'-1.5"},
                    FoldCase{"- -1.5", "1.5f'--1.5"}, FoldCase{"-1.5lf", "-1.5lf'-1.5"},
                    FoldCase{"-0.0", "-0f'-0.0"}, FoldCase{"+4", "4"}, FoldCase{"+4u", "4u"},
                    FoldCase{"+1.5", "1.5f'1.5"}, FoldCase{"+1.5lf", "1.5lf'1.5"},
                    FoldCase{"-1u", kInvalid}, FoldCase{"-true", kInvalid},
                    FoldCase{"+true", kInvalid}, FoldCase{"!true", kNotConstant},
                    FoldCase{"~1", kNotConstant}, FoldCase{"\"s\"", kNotConstant},
                    FoldCase{"f()", kNotConstant}, FoldCase{"(1, 2)", kNotConstant},
                    FoldCase{"true ? 1 : 2", kNotConstant},
                    FoldCase{"-2147483647 - 1", "-2147483648"},
                    FoldCase{"-(-2147483647 - 1)", "-2147483648"}));

INSTANTIATE_TEST_SUITE_P(
    Integers, FoldTest,
    testing::Values(
        FoldCase{"2 * 3", "6"}, FoldCase{"65536 * 65536", "0"},
        FoldCase{"2147483647 + 1", "-2147483648"}, FoldCase{"-2147483647 - 2", "2147483647"},
        FoldCase{"7 / 2", "3"}, FoldCase{"-7 / 2", "-3"}, FoldCase{"7 % 4", "3"},
        FoldCase{"-7 % 4", "-3"}, FoldCase{"7 % -4", "3"}, FoldCase{"1 << 4", "16"},
        FoldCase{"1 << 33", "2"}, FoldCase{"1 << 31", "-2147483648"}, FoldCase{"-8 >> 1", "-4"},
        FoldCase{"8 >> 34", "2"}, FoldCase{"1 & 3", "1"}, FoldCase{"1 ^ 3", "2"},
        FoldCase{"1 | 2", kInvalid}, FoldCase{"1 < 2", "true"}, FoldCase{"2 > 3", "false"},
        FoldCase{"-1 < 1", "true"}, FoldCase{"2 <= 2", "true"}, FoldCase{"2 >= 3", "false"},
        FoldCase{"2 == 2", "true"}, FoldCase{"2 != 2", "false"}, FoldCase{"2 && 0", "false"},
        FoldCase{"2 && 4", "true"}, FoldCase{"0 || 0", "false"}, FoldCase{"0 || 4", "true"},
        FoldCase{"2 ^^ 4", "false"}, FoldCase{"2 ^^ 0", "true"}, FoldCase{"1 / 0", kInvalid},
        FoldCase{"1 % 0", kInvalid}, FoldCase{"(-2147483647 - 1) / -1", kInvalid},
        FoldCase{"(-2147483647 - 1) % -1", kInvalid},
        FoldCase{"(-2147483647 - 1) / 1", "-2147483648"}, FoldCase{"1 + 2 * 3 - 4", "3"}));

INSTANTIATE_TEST_SUITE_P(
    Unsigned, FoldTest,
    testing::Values(FoldCase{"2u * 3u", "6u"}, FoldCase{"4294967295u * 2u", "4294967294u"},
                    FoldCase{"4294967295u / 2u", "2147483647u"}, FoldCase{"7u % 4u", "3u"},
                    FoldCase{"4294967295u + 1u", "0u"}, FoldCase{"0u - 1u", "4294967295u"},
                    FoldCase{"1u << 33u", "2u"}, FoldCase{"4294967288u >> 1u", "2147483644u"},
                    FoldCase{"6u & 3u", "2u"}, FoldCase{"6u ^ 3u", "5u"},
                    FoldCase{"6u | 3u", kInvalid}, FoldCase{"4294967295u < 1u", "false"},
                    FoldCase{"4294967295u > 1u", "true"}, FoldCase{"1u <= 1u", "true"},
                    FoldCase{"1u >= 2u", "false"}, FoldCase{"1u == 1u", "true"},
                    FoldCase{"1u != 1u", "false"}, FoldCase{"1u && 0u", "false"},
                    FoldCase{"1u || 0u", "true"}, FoldCase{"1u ^^ 1u", "false"},
                    FoldCase{"1u / 0u", kInvalid}, FoldCase{"1u % 0u", kInvalid},
                    FoldCase{"2147483648u / 4294967295u", "0u"}));

INSTANTIATE_TEST_SUITE_P(
    Reals, FoldTest,
    testing::Values(FoldCase{"1.0 * 2.0", "2f'1.0*2.0"}, FoldCase{"1.0 / 4.0", "0.25f'1.0/4.0"},
                    FoldCase{"1.0 + 2.0", "3f'1.0+2.0"}, FoldCase{"1.0 - 2.0", "-1f'1.0-2.0"},
                    FoldCase{"1.0 + 2.0 * 3.0", "7f'1.0+2.0*3.0"},
                    FoldCase{"(1.0 + 2.0) * 3.0", "9f'1.0+2.0*3.0"},
                    FoldCase{"-(1.0 + 2.0)", "-3f'-1.0+2.0"}, FoldCase{"1.0 - -2.0", "3f'1.0--2.0"},
                    FoldCase{"1e2f * 2.0", "200f'1e2*2.0"}, FoldCase{"1.0 / 0.0", "inff'1.0/0.0"},
                    FoldCase{"5.0 % 2.0", kInvalid}, FoldCase{"1.0 << 1.0", kInvalid},
                    FoldCase{"1.0 >> 1.0", kInvalid}, FoldCase{"1.0 & 1.0", kInvalid},
                    FoldCase{"1.0 ^ 1.0", kInvalid}, FoldCase{"1.0 | 1.0", kInvalid},
                    FoldCase{"1.0 < 2.0", "true"}, FoldCase{"1.0 > 2.0", "false"},
                    FoldCase{"1.0 <= 1.0", "true"}, FoldCase{"1.0 >= 2.0", "false"},
                    FoldCase{"1.0 == 1.0", "true"}, FoldCase{"1.0 != 1.0", "false"},
                    FoldCase{"1.0 && 0.0", "false"}, FoldCase{"1.0 || 0.0", "true"},
                    FoldCase{"1.0 ^^ 2.0", "false"}, FoldCase{"0.0 ^^ 2.0", "true"},
                    // A text of its own is lost to a comparison, and none comes back.
                    FoldCase{"1.0 < 2.0 == true", "true"}, FoldCase{"1.5lf * 2.0lf", "3lf'1.5*2.0"},
                    FoldCase{"1.5lf / 2.0lf", "0.75lf'1.5/2.0"},
                    FoldCase{"1.5lf + 2.0lf", "3.5lf'1.5+2.0"},
                    FoldCase{"1.5lf - 2.0lf", "-0.5lf'1.5-2.0"},
                    FoldCase{"1.5lf % 2.0lf", kInvalid}, FoldCase{"1.5lf < 2.0lf", "true"},
                    FoldCase{"1.5lf ^^ 0.0lf", "true"}));

// 0.0 / 0.0 is no number: unequal to all, true in logic.
INSTANTIATE_TEST_SUITE_P(NoNumbers, FoldTest,
                         testing::Values(FoldCase{"0.0 / 0.0 == 0.0 / 0.0", "false"},
                                         FoldCase{"0.0 / 0.0 != 0.0", "true"},
                                         FoldCase{"0.0 / 0.0 < 1.0", "false"},
                                         FoldCase{"0.0 / 0.0 && 1.0", "true"},
                                         FoldCase{"0.0 || 0.0 / 0.0", "true"},
                                         FoldCase{"0.0 / 0.0 ^^ 0.0", "true"},
                                         FoldCase{"0.0lf / 0.0lf == 0.0lf / 0.0lf", "false"}));

INSTANTIATE_TEST_SUITE_P(
    Bools, FoldTest,
    testing::Values(FoldCase{"true && false", "false"}, FoldCase{"true && true", "true"},
                    FoldCase{"false || true", "true"}, FoldCase{"true ^^ true", "false"},
                    FoldCase{"true == true", "true"}, FoldCase{"true != true", "false"},
                    FoldCase{"true + true", kInvalid}, FoldCase{"true * true", kInvalid},
                    FoldCase{"true / true", kInvalid}, FoldCase{"true % true", kInvalid},
                    FoldCase{"true - true", kInvalid}, FoldCase{"true < true", kInvalid},
                    FoldCase{"true > true", kInvalid}, FoldCase{"true <= true", kInvalid},
                    FoldCase{"true >= true", kInvalid}, FoldCase{"true & true", kInvalid},
                    FoldCase{"true | true", kInvalid}, FoldCase{"true ^ true", kInvalid},
                    FoldCase{"true << true", kInvalid}, FoldCase{"true >> true", kInvalid}));

// The left operand decides alone; the right one's bits are taken as they are.
INSTANTIATE_TEST_SUITE_P(
    Unlike, FoldTest,
    testing::Values(FoldCase{"1 + 1.0", "1065353217"}, FoldCase{"1 + 2u", "3"},
                    FoldCase{"1u + 1.0", "1065353217u"}, FoldCase{"1 + true", "2"},
                    FoldCase{"1.0 + 0", "1f'1.0+"}, FoldCase{"0.0 + 1065353216", "1f'0.0+"},
                    FoldCase{"1.0 + 1065353216u", "2f'1.0+"}, FoldCase{"true && 2", "true"},
                    FoldCase{"true && 0", "false"}, FoldCase{"1.0 == 1065353216", "true"}));

TEST(EvaluatorTest, GlobalConstantsTakePart) {
    EXPECT_EQ(parsed("const int a = 2; const int b = a * 3;"), "const int:a=2 | const int:b=6");
    EXPECT_EQ(parsed("int a = 2; int b = a + a;"), "int:a=2 | int:b=4");
    EXPECT_EQ(parsed("uniform float a = 2.0; float b = a * 0.5;"),
              "uniform float:a=2f'2.0 | float:b=1f'2.0*0.5");
}

TEST(EvaluatorTest, GlobalsWithoutAFoldedValueDoNot) {
    EXPECT_EQ(firstError("int a; int b = a;"), "1:18:not a valid constant expression");
    EXPECT_EQ(firstError("const vec2 a = vec2(1.0); const vec2 b = a;"),
              "1:44:not a valid constant expression");
    EXPECT_EQ(firstError("void f(int p) { int x = 1; const int y = 1; switch (p) { case y: ; } }"),
              "1:65:case label is not a valid constant expression");
}

TEST(EvaluatorTest, AConstantIsKeptAndNotCopied) {
    parser reader("const float a = 1.5; const float b = a; const float c = +a;", "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderFragment);
    ASSERT_NE(unit, nullptr);
    EXPECT_EQ(unit->globals[1]->initialValue, unit->globals[0]->initialValue);
    EXPECT_EQ(unit->globals[2]->initialValue, unit->globals[0]->initialValue);
}

TEST(EvaluatorTest, AFoldedNodeStandsAtTheParsersPosition) {
    parser reader("const int a = 1 + 2;", "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderFragment);
    ASSERT_NE(unit, nullptr);
    EXPECT_EQ(unit->globals[0]->initialValue->column, 21u) << "behind the semicolon";
}

TEST(EvaluatorTest, ACaseLabelKeepsTheUnfoldedExpression) {
    EXPECT_EQ(test::body("switch (i) { case 1 + 1: ; }"), "(switch i case:(+ 1 1) ;)");
}

TEST(EvaluatorTest, BothOperandsHaveTheirMessage) {
    EXPECT_EQ(parsed("const int x = (1 | 2) + (3 | 4);"),
              "1:33:invalid operation in constant expression|"
              "1:33:invalid operation in constant expression");
    EXPECT_EQ(parsed("const int x = (1 | 2) + 3;"),
              "1:27:invalid operation in constant expression");
}

TEST(EvaluatorTest, NegativeZeroAndInfinityKeepTheirBits) {
    parser reader("const float a = -0.0; const float b = -1.0 / 0.0;", "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderFragment);
    ASSERT_NE(unit, nullptr);
    EXPECT_TRUE(std::signbit(as<astFloatConstant>(unit->globals[0]->initialValue)->value));
    EXPECT_TRUE(std::isinf(as<astFloatConstant>(unit->globals[1]->initialValue)->value));
}

// Each constant is twice as long as the one before.
std::string doublings(int count) {
    std::string source = "const float c0 = 1.0;\n";
    for (int i = 1; i <= count; ++i) {
        const std::string before = "c" + std::to_string(i - 1);
        source += "const float c" + std::to_string(i) + " = " + before + "*" + before + ";\n";
    }
    return source;
}

TEST(EvaluatorTest, TextsOfTextsAreJoinedUpToALimit) {
    const std::string source = doublings(12);
    parser reader(source.c_str(), "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderFragment);
    ASSERT_NE(unit, nullptr);
    const text joined = as<astFloatConstant>(unit->globals[12]->initialValue)->text;
    EXPECT_EQ(joined.size(), 4096u * 4 - 1);
    EXPECT_EQ(joined.substr(0, 8), "1.0*1.0*");
    EXPECT_EQ(joined.substr(joined.size() - 7), "1.0*1.0");

    EXPECT_EQ(firstError(doublings(200)), "22:27:Out of memory");
    std::string minus = "const double c0 = 1.0lf;\n";
    for (int i = 1; i <= 40000; ++i) {
        minus += "const double c" + std::to_string(i) + "=-c" + std::to_string(i - 1) + ";\n";
    }
    EXPECT_NE(firstError(minus).find(":Out of memory"), std::string::npos);
}

TEST(EvaluatorTest, ALongConstantMayBeUsedAsOftenAsOneLikes) {
    std::string source = doublings(19) + "float a[9]; void f() { ";
    for (int i = 0; i < 20000; ++i) {
        source += "a[c19]=c19;";
    }
    EXPECT_EQ(firstError(source + " }"), "none");
    // What is only compared is written all the same.
    source = doublings(19);
    for (int i = 0; i < 20; ++i) {
        source += "const bool b" + std::to_string(i) + " = c19 + c19 > 1.0;\n";
    }
    EXPECT_NE(firstError(source).find(":Out of memory"), std::string::npos);
}

}  // namespace
}  // namespace glsl
