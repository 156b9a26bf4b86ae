#include "effect-render/params.h"

#include <gtest/gtest.h>

#include "expect_error.h"

namespace effect_render {
namespace {

struct TypeCase {
    const char* text;
    ParamType type;
    size_t components;
};

void PrintTo(const TypeCase& c, std::ostream* out) {
    *out << c.text;
}

class ParamTypeTest : public testing::TestWithParam<TypeCase> {};

TEST_P(ParamTypeTest, TextAndTypeMeanTheSame) {
    const auto type = ParseType(GetParam().text);
    ASSERT_TRUE(type.has_value());
    EXPECT_TRUE(*type == GetParam().type);
    EXPECT_EQ(TypeText(*type), GetParam().text);
    EXPECT_EQ(Components(type->kind), GetParam().components);
}

INSTANTIATE_TEST_SUITE_P(
    All, ParamTypeTest,
    testing::Values(TypeCase{"int", {ParamKind::Int, ParamShape::Plain}, 1},
                    TypeCase{"float", {ParamKind::Float, ParamShape::Plain}, 1},
                    TypeCase{"vec2", {ParamKind::Vec2, ParamShape::Plain}, 2},
                    TypeCase{"vec3", {ParamKind::Vec3, ParamShape::Plain}, 3},
                    TypeCase{"vec4", {ParamKind::Vec4, ParamShape::Plain}, 4},
                    TypeCase{"mat2", {ParamKind::Mat2, ParamShape::Plain}, 4},
                    TypeCase{"mat3", {ParamKind::Mat3, ParamShape::Plain}, 9},
                    TypeCase{"mat4", {ParamKind::Mat4, ParamShape::Plain}, 16},
                    TypeCase{"int[]", {ParamKind::Int, ParamShape::Array}, 1},
                    TypeCase{"vec3[]", {ParamKind::Vec3, ParamShape::Array}, 3},
                    TypeCase{"instance-float", {ParamKind::Float, ParamShape::Instance}, 1},
                    TypeCase{"instance-vec4", {ParamKind::Vec4, ParamShape::Instance}, 4}));

class NoParamTypeTest : public testing::TestWithParam<const char*> {};

TEST_P(NoParamTypeTest, IsRefused) {
    EXPECT_FALSE(ParseType(GetParam()).has_value());
}

INSTANTIATE_TEST_SUITE_P(All, NoParamTypeTest,
                         testing::Values("", "vec5", "Float", "mat4[]", "instance-mat2", "[]",
                                         "instance-", "instance-vec2[]", "float[4]"));

TEST(ParamTrackTest, StillParameterKeepsItsValueAnywhere) {
    const ParamTrack track = ParseParam(ParamKind::Vec2, "p=0.25,-3");
    EXPECT_EQ(track.name, "p");
    EXPECT_EQ(track.At(std::nullopt), (std::vector<double>{0.25, -3.0}));
    EXPECT_EQ(track.At(1.0), (std::vector<double>{0.25, -3.0}));
}

TEST(ParamTrackTest, MovingParameterGoesFromFirstToLast) {
    const ParamTrack track = ParseParam(ParamKind::Vec2, "p=0:1,5");
    EXPECT_EQ(track.At(0.0), (std::vector<double>{0.0, 5.0}));
    EXPECT_EQ(track.At(0.25), (std::vector<double>{0.25, 5.0}));
    EXPECT_EQ(track.At(1.0), (std::vector<double>{1.0, 5.0}));
}

TEST(ParamTrackTest, MovingParameterShowsItsFirstValueWhereNothingMoves) {
    EXPECT_EQ(ParseParam(ParamKind::Float, "p=2:9").At(std::nullopt), std::vector<double>{2.0});
}

struct BadParamCase {
    ParamKind kind;
    const char* text;
    const char* error;
};

void PrintTo(const BadParamCase& c, std::ostream* out) {
    *out << c.text;
}

class BadParamTest : public testing::TestWithParam<BadParamCase> {};

TEST_P(BadParamTest, IsWrongUsage) {
    const BadParamCase& row = GetParam();
    EXPECT_EQ(ErrorOf([&row] { ParseParam(row.kind, row.text); }), row.error);
}

INSTANTIATE_TEST_SUITE_P(
    All, BadParamTest,
    testing::Values(BadParamCase{ParamKind::Float, "p", "'p': expected NAME=VALUE"},
                    BadParamCase{ParamKind::Float, "=1", "'=1': expected NAME=VALUE"},
                    BadParamCase{ParamKind::Float, "p=", "'p=': '' is no number"},
                    BadParamCase{ParamKind::Float, "p=1x", "'p=1x': '1x' is no number"},
                    BadParamCase{ParamKind::Float, "p=1:", "'p=1:': '' is no number"},
                    BadParamCase{ParamKind::Float, "p=inf", "'p=inf': 'inf' is no number"},
                    BadParamCase{ParamKind::Float, "p=1,2", "'p=1,2': a float takes 1 number(s)"},
                    BadParamCase{ParamKind::Vec3, "p=1,2", "'p=1,2': a vec3 takes 3 number(s)"},
                    BadParamCase{ParamKind::Int, "p=1.5", "'p=1.5': '1.5' is no 32-bit integer"},
                    BadParamCase{ParamKind::Int, "p=3000000000",
                                 "'p=3000000000': '3000000000' is no 32-bit integer"}));

TEST(PackValuesTest, IntsAreRoundedAndFloatsKeepTheirValue) {
    EXPECT_EQ(PackValues(ParamKind::Int, {2.5, -1.2}).ints, (std::vector<int32_t>{3, -1}));
    EXPECT_EQ(PackValues(ParamKind::Vec2, {0.5, 2.0}).floats, (std::vector<float>{0.5f, 2.0f}));
}

}  // namespace
}  // namespace effect_render
