#include <gtest/gtest.h>

#include "glsl/keywords.h"
#include "translate.h"

namespace glsl {
namespace {

struct TypeCase {
    const char* glsl;
    const char* hlsl;
    const char* kind;   // class of a variable of the type
    const char* zeros;  // of a default value
};
void PrintTo(const TypeCase& c, std::ostream* out) {
    *out << c.glsl;
}

constexpr const char* kNineZeros = "0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f";
constexpr const char* kSixteenZeros =
    "0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, "
    "0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f";

class TypeTest : public testing::TestWithParam<TypeCase> {};
INSTANTIATE_TEST_SUITE_P(
    Mapped, TypeTest,
    testing::Values(
        TypeCase{"mat2", "float2x2", "mat2", "0.0f, 0.0f, 0.0f, 0.0f"},
        TypeCase{"mat3", "float3x3", "mat3", kNineZeros},
        TypeCase{"mat4", "float4x4", "mat4", kSixteenZeros},
        TypeCase{"vec2", "float2", "vec2", "0.0f, 0.0f"},
        TypeCase{"vec3", "float3", "vec3", "0.0f, 0.0f, 0.0f"},
        TypeCase{"vec4", "float4", "vec4", "0.0f, 0.0f, 0.0f, 0.0f"},
        TypeCase{"ivec2", "int2", "ivec2", "0, 0"}, TypeCase{"ivec3", "int3", "ivec3", "0, 0, 0"},
        TypeCase{"ivec4", "int4", "ivec4", "0, 0, 0, 0"}, TypeCase{"int", "int", "int", "0"},
        TypeCase{"uint", "uint", "int", "0"}, TypeCase{"float", "float", "float", "0.0f"},
        TypeCase{"double", "double", "double", ""}, TypeCase{"bool", "bool", "bool", ""}));
// Everything else keeps its word and has no class of its own.
INSTANTIATE_TEST_SUITE_P(
    Unmapped, TypeTest,
    testing::Values(
        TypeCase{"uvec2", "uvec2", "other", ""}, TypeCase{"uvec3", "uvec3", "other", ""},
        TypeCase{"uvec4", "uvec4", "other", ""}, TypeCase{"bvec2", "bvec2", "other", ""},
        TypeCase{"bvec3", "bvec3", "other", ""}, TypeCase{"bvec4", "bvec4", "other", ""},
        TypeCase{"dvec3", "dvec3", "other", ""}, TypeCase{"dmat4", "dmat4", "other", ""},
        TypeCase{"mat2x2", "mat2x2", "other", ""}, TypeCase{"mat2x3", "mat2x3", "other", ""},
        TypeCase{"mat4x4", "mat4x4", "other", ""}, TypeCase{"sampler2D", "sampler2D", "other", ""},
        TypeCase{"image2D", "image2D", "other", ""},
        TypeCase{"atomic_uint", "atomic_uint", "other", ""},
        TypeCase{"FilterData", "FilterData", "other", ""}, TypeCase{"uchar", "uchar", "other", ""},
        TypeCase{"string", "string", "other", ""},
        TypeCase{"GLProgram", "GLProgram", "other", ""}));

TEST_P(TypeTest, PrintsItsHlslWord) {
    const std::string source = std::string(GetParam().glsl) + " x;";
    EXPECT_EQ(statements(source).find(std::string(GetParam().hlsl) + " x = "), 0U);
}

TEST_P(TypeTest, DefaultValueHasItsZeros) {
    const std::string word = GetParam().hlsl;
    EXPECT_EQ(statements(std::string(GetParam().glsl) + " x;"),
              word + " x = " + word + "(" + GetParam().zeros + ");\n");
}

TEST_P(TypeTest, VariableHasItsClass) {
    EXPECT_EQ(classOf("x", std::string(GetParam().glsl) + " x; "), GetParam().kind);
}

TEST(StructTypeTest, KeepsTheWordStructAtUses) {
    const std::string hlsl =
        printFragment("struct S { float a; };\nS g;\nS f(S p) { S l; return p; }\n");
    EXPECT_EQ(bodyOf(hlsl),
              "struct S {\nfloat a;\n};\n"
              "static struct S g;\n"
              "struct S f(struct S p, VertexOutput input, float4 gl_FragCoord) {\n"
              "struct S l = struct S();\n"
              "return  p;\n"
              "return struct S();\n}\n");
}

// Every type keyword prints something, and only those of the table another word.
TEST(TypeKeywordTest, PrintsItselfUnlessMapped) {
    for (uint32_t id = 0; id < kKeywordCount; ++id) {
        const std::string word(keywordText(id));
        if (!isTypeKeyword(id) || word == "void") {
            continue;
        }
        std::string expected = word;
        for (const char* vector : {"vec", "mat"}) {
            for (const char digit : {'2', '3', '4'}) {
                const std::string d(1, digit);
                if (word == vector + d) {
                    expected = "float" + d + (vector[0] == 'm' ? "x" + d : "");
                } else if (word == "i" + (vector + d) && vector[0] == 'v') {
                    expected = "int" + d;
                }
            }
        }
        EXPECT_EQ(statements(word + " x;").find(expected + " x = " + expected + "("), 0U) << word;
    }
}

}  // namespace
}  // namespace glsl
