#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "translate.h"

namespace glsl {
namespace {

struct ConstructorCase {
    const char* glsl;
    const char* hlsl;
    const char* kind;
};
void PrintTo(const ConstructorCase& c, std::ostream* out) {
    *out << c.glsl;
}
using C = ConstructorCase;

class ConstructorTest : public testing::TestWithParam<ConstructorCase> {};

TEST_P(ConstructorTest, Prints) {
    EXPECT_EQ(expression(GetParam().glsl), GetParam().hlsl);
}
TEST_P(ConstructorTest, HasTheClassOfItsType) {
    EXPECT_EQ(classOf(GetParam().glsl), GetParam().kind);
}

INSTANTIATE_TEST_SUITE_P(
    Vectors, ConstructorTest,
    testing::Values(C{"vec2()", "float2(gloabal_float2_Constructor(0.0f))", "vec2"},
                    C{"vec3()", "float3(gloabal_float3_Constructor(0.0f))", "vec3"},
                    C{"vec4()", "float4(gloabal_float4_Constructor(0.0f))", "vec4"},
                    C{"ivec2()", "int2(gloabal_int2_Constructor(0))", "ivec2"},
                    C{"ivec3()", "int3(gloabal_int3_Constructor(0))", "ivec3"},
                    C{"ivec4()", "int4(gloabal_int4_Constructor(0))", "ivec4"},
                    C{"vec2(1.0)", "float2(gloabal_float2_Constructor(1.0f))", "vec2"},
                    C{"vec3(f)", "float3(gloabal_float3_Constructor( f))", "vec3"},
                    C{"vec4(i)", "float4(gloabal_float4_Constructor( i))", "vec4"},
                    C{"ivec2(1.0)", "int2(gloabal_int2_Constructor(1.0f))", "ivec2"},
                    C{"ivec3(i)", "int3(gloabal_int3_Constructor( i))", "ivec3"},
                    C{"ivec4(b)", "int4(gloabal_int4_Constructor( b))", "ivec4"},
                    // Only an argument of the same size does without the helper.
                    C{"vec2(v2)", "float2( v2)", "vec2"}, C{"vec2(i2)", "float2( i2)", "vec2"},
                    C{"vec3(v3)", "float3( v3)", "vec3"}, C{"vec3(i3)", "float3( i3)", "vec3"},
                    C{"vec4(v4)", "float4( v4)", "vec4"}, C{"ivec2(v2)", "int2( v2)", "ivec2"},
                    C{"ivec4(i4)", "int4( i4)", "ivec4"},
                    C{"vec3(v4)", "float3(gloabal_float3_Constructor( v4))", "vec3"},
                    C{"vec2(m2)", "float2(gloabal_float2_Constructor( m2))", "vec2"},
                    C{"ivec3(v2)", "int3(gloabal_int3_Constructor( v2))", "ivec3"},
                    C{"vec2(i2 + k2)", "float2(gloabal_float2_Constructor(( i2 +  k2)))", "vec2"},
                    C{"vec2(vec2(vec2(f)))",
                      "float2(float2(float2(gloabal_float2_Constructor( f))))", "vec2"},
                    C{"vec3(f, v2)", "float3( f,  v2)", "vec3"},
                    C{"vec4(v4.rgb, 1.0)", "float4( v4.xyz, 1.0f)", "vec4"},
                    C{"vec2(f, g, h)", "float2( f,  g,  h)", "vec2"}));

INSTANTIATE_TEST_SUITE_P(
    Matrices, ConstructorTest,
    testing::Values(
        C{"mat2()", "float2x2(gloabal_float2x2_Constructor(1.0f))", "mat2"},
        C{"mat3()", "float3x3(gloabal_float3x3_Constructor(1.0f))", "mat3"},
        C{"mat4()", "float4x4(gloabal_float4x4_Constructor(1.0f))", "mat4"},
        C{"mat2(2.0)", "float2x2(gloabal_float2x2_Constructor(2.0f))", "mat2"},
        C{"mat3(m4)", "float3x3(gloabal_float3x3_Constructor( m4))", "mat3"},
        C{"mat4(m4)", "float4x4(gloabal_float4x4_Constructor( m4))", "mat4"},
        C{"mat2(v2, w2)", "float2x2( v2,  w2)", "mat2"},
        C{"mat2(1.0, 0.0, 0.0, 1.0)", "float2x2(1.0f, 0.0f, 0.0f, 1.0f)", "mat2"},
        C{"mat3(v3, w3, v3)", "float3x3( v3,  w3,  v3)", "mat3"},
        C{"mat3(1, 2, 3, 4, 5, 6, 7, 8, 9)", "float3x3(1, 2, 3, 4, 5, 6, 7, 8, 9)", "mat3"},
        C{"mat4(v4, v4, v4, v4)", "float4x4( v4,  v4,  v4,  v4)", "mat4"},
        C{"mat4(f,f,f,f,f,f,f,f,f,f,f,f,f,f,f,f)",
          "float4x4( f,  f,  f,  f,  f,  f,  f,  f,  f,  f,  f,  f,  f,  f,  f,  f)", "mat4"},
        C{"mat2(1.0, 2.0, 3.0)", "float2x2()", "mat2"}, C{"mat3(v3, v3)", "float3x3()", "mat3"},
        C{"mat4(v4, v4, v4)", "float4x4()", "mat4"}));

INSTANTIATE_TEST_SUITE_P(
    Others, ConstructorTest,
    testing::Values(C{"bool()", "true", "bool"}, C{"bool(1)", "true", "bool"},
                    C{"bool(false)", "true", "bool"}, C{"bool(f, g)", "true", "bool"},
                    C{"float()", "float(0.0f)", "float"}, C{"float(i)", "float( i)", "float"},
                    C{"float(f, g)", "float( f,  g)", "float"}, C{"int()", "int(0)", "int"},
                    C{"int(f)", "int( f)", "int"}, C{"uint()", "uint(0)", "int"},
                    C{"uint(i)", "uint( i)", "int"}, C{"double()", "double()", "double"},
                    C{"double(f)", "double( f)", "double"}, C{"uvec2()", "uvec2()", "other"},
                    C{"uvec2(i)", "uvec2( i)", "other"}, C{"mat2x3(f)", "mat2x3( f)", "other"},
                    C{"bvec2(b, b)", "bvec2( b,  b)", "other"}));

TEST(ConstructorMessageTest, AWrongCountForAMatrixNamesLineAndColumn) {
    Translation t;
    t.translate("void f() {\n  return mat3(1.0, 2.0);\n}\n");
    EXPECT_THAT(t.log, testing::ElementsAre("error line :2,14  mat parameters's size is wrong"));
    EXPECT_THAT(t.text, testing::HasSubstr("return float3x3();\n"));
}

}  // namespace
}  // namespace glsl
