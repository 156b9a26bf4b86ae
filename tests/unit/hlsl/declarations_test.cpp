#include <gtest/gtest.h>

#include "translate.h"

namespace glsl {
namespace {

constexpr const char* kFragmentEnd = "VertexOutput input, float4 gl_FragCoord) {\n";

struct TextCase {
    const char* glsl;
    const char* hlsl;
};
void PrintTo(const TextCase& c, std::ostream* out) {
    *out << c.glsl;
}

// ---- locals

class LocalTest : public testing::TestWithParam<TextCase> {};
INSTANTIATE_TEST_SUITE_P(
    Values, LocalTest,
    testing::Values(
        TextCase{"float x;", "float x = float(0.0f);\n"},
        TextCase{"vec2 p;", "float2 p = float2(0.0f, 0.0f);\n"},
        TextCase{"int n;", "int n = int(0);\n"}, TextCase{"bool q;", "bool q = bool();\n"},
        TextCase{"S x;", "struct S x = struct S();\n"}, TextCase{"float x = f;", "float x =  f;\n"},
        TextCase{"const float x = 1.0;", "const float x = 1.0f;\n"},
        TextCase{"float x = 1.0, y;", "float x = 1.0f;\nfloat y = float(0.0f);\n"},
        // The parser finds the outer x; its text is the new one's, which is in scope already.
        TextCase{"float x = 1.0; { vec2 x = x.xy; }",
                 "float x = 1.0f;\n {\nfloat2 x =  x.xy;\n}\n"},
        TextCase{"float line = 1.0; line = 2.0;",
                 "float AVOID_KEYWORD_CONFLICTS_line = 1.0f;\n"
                 " AVOID_KEYWORD_CONFLICTS_line = 2.0f;\n"}));
INSTANTIATE_TEST_SUITE_P(
    Arrays, LocalTest,
    testing::Values(
        TextCase{"vec2 a[3];",
                 "float2 a[3] = {float2(0.0f, 0.0f), float2(0.0f, 0.0f), float2(0.0f, 0.0f)};\n"},
        TextCase{"float a[2][3];",
                 "float a[2][3] = {float(0.0f), float(0.0f)}, "
                 "{float(0.0f), float(0.0f), float(0.0f)};\n"},
        TextCase{"float a[0];", "float a[0] = {};\n"}, TextCase{"float a[2u];", "float a[2u];\n"},
        TextCase{"float a[i];", "float a[ i];\n"},
        TextCase{"float a[2][i];", "float a[2][ i] = {float(0.0f), float(0.0f)}, {};\n"},
        TextCase{"float a[];", "float a[];\n"},
        TextCase{"int a[3] = { 1, 2, 3 };", "int a[3] = {1, 2, 3};\n"},
        TextCase{"int a[3] = int[](1, 2, 3);", "int a[3] = {1, 2, 3};\n"},
        TextCase{"float a[1] = { f };", "float a[1] = { f};\n"},
        // One whole entry stands in the innermost braces, whatever the size.
        TextCase{"float a[2][2] = {{1.0, 2.0}, {3.0, 4.0}};",
                 "float a[2][2] = {{1.0f, 2.0f},{3.0f, 4.0f}};\n"},
        TextCase{"float a[3][2] = {{1.0, 2.0}, {3.0, 4.0}};",
                 "float a[3][2] = {{1.0f, 2.0f},{3.0f, 4.0f},{}};\n"},
        TextCase{"float a[0][2] = {{1.0, 2.0}};", "float a[0][2] = {};\n"},
        TextCase{"float a[2][0][2] = {{1.0}};", "float a[2][0][2] = {{},{}};\n"},
        TextCase{"float a[2][1][1] = {{{1.0}}, {{2.0}}};",
                 "float a[2][1][1] = {{{1.0f}},{{2.0f}}};\n"},
        // An inner sequence on the right keeps its parentheses, one on the left does not.
        TextCase{"float a[1] = { (1.0, 2.0), 3.0 };", "float a[1] = {1.0f, 2.0f, 3.0f};\n"},
        TextCase{"float a[1] = { 1.0, (2.0, 3.0) };", "float a[1] = {1.0f, (2.0f, 3.0f)};\n"}));

TEST_P(LocalTest, Prints) {
    EXPECT_EQ(statements(GetParam().glsl), GetParam().hlsl);
}

TEST(LocalArrayTest, WithAValueAndASizePrintsBothTexts) {
    EXPECT_EQ(statements("float x[2] = f;"), "float x[2] =  f = {float(0.0f), float(0.0f)};\n");
}

TEST(LocalTest, ShadowsUntilItsBlockCloses) {
    EXPECT_EQ(statements("{ vec2 f; f.r = 1.0; } f = 2.0;"),
              " {\nfloat2 f = float2(0.0f, 0.0f);\n f.x = 1.0f;\n}\n f = 2.0f;\n");
}

// ---- functions and parameters

TEST(FunctionTest, ParametersCarryTheHiddenOnesBehindThem) {
    EXPECT_EQ(bodyOf(printFragment("void f(out vec2 p, inout float q) { }")),
              std::string("void f(inout float2 p, float q, ") + kFragmentEnd + "return ;\n}\n");
    EXPECT_EQ(bodyOf(printFragment("void f() { }")),
              std::string("void f(") + kFragmentEnd + "return ;\n}\n");
    EXPECT_EQ(bodyOf(printVertex("void f(in float a) { }")),
              "void f(float a, VertexInput input) {\nreturn ;\n}\n");
    EXPECT_EQ(bodyOf(printVertex("void f() { }")), "void f(VertexInput input) {\nreturn ;\n}\n");
}

TEST(FunctionTest, ParameterQualifiersAreMostlyDropped) {
    EXPECT_EQ(bodyOf(printFragment("void f(highp float a, lowp in vec2 b, coherent float c, "
                                   "writeonly out int d) { }")),
              std::string("void f(float a, float2 b, coherent float c, writeonly inout int d, ") +
                  kFragmentEnd + "return ;\n}\n");
}

TEST(FunctionTest, AnOutArrayLosesItsSizes) {
    EXPECT_EQ(bodyOf(printFragment("void f(float a[2], out float b[3], inout float c[4]) { }")),
              std::string("void f(float a[2], inout float b, float c[4], ") + kFragmentEnd +
                  "return ;\n}\n");
}

TEST(FunctionTest, AnUnnamedParameterIsItsTypeAlone) {
    EXPECT_EQ(bodyOf(printFragment("float f(float);")),
              "float f(float, VertexOutput input, float4 gl_FragCoord);\n");
}

TEST(FunctionTest, NamesAvoidWordsOfHlsl) {
    EXPECT_EQ(bodyOf(printFragment("float max(float min) { return min; }")),
              std::string("float AVOID_KEYWORD_CONFLICTS_max(float AVOID_KEYWORD_CONFLICTS_min, ") +
                  kFragmentEnd + "return  AVOID_KEYWORD_CONFLICTS_min;\nreturn float(0.0f);\n}\n");
}

class ClosingReturnTest : public testing::TestWithParam<TextCase> {};
INSTANTIATE_TEST_SUITE_P(
    Types, ClosingReturnTest,
    testing::Values(TextCase{"vec4", "float4(gloabal_float4_Constructor(0.0f))"},
                    TextCase{"vec2", "float2(gloabal_float2_Constructor(0.0f))"},
                    TextCase{"ivec3", "int3(gloabal_int3_Constructor(0))"},
                    TextCase{"float", "float(0.0f)"}, TextCase{"int", "int(0)"},
                    TextCase{"uint", "uint(0)"}, TextCase{"bool", "true"},
                    TextCase{"double", "double()"},
                    TextCase{"mat4", "float4x4(gloabal_float4x4_Constructor(1.0f))"},
                    TextCase{"void", ""}, TextCase{"uvec2", ""}));

TEST_P(ClosingReturnTest, EndsEveryFunction) {
    const std::string hlsl = bodyOf(printFragment(GetParam().glsl + std::string(" f() { }")));
    const std::string end = std::string("{\nreturn ") + GetParam().hlsl + ";\n}\n";
    ASSERT_GT(hlsl.size(), end.size());
    EXPECT_EQ(hlsl.substr(hlsl.size() - end.size()), end);
}

TEST(ClosingReturnTest, FollowsAReturnOfTheFunctionsOwn) {
    EXPECT_EQ(
        bodyOf(printFragment("float f() { return 1.0; return; }")),
        std::string("float f(") + kFragmentEnd + "return 1.0f;\nreturn;\nreturn float(0.0f);\n}\n");
}

// ---- globals

class StaticGlobalTest : public testing::TestWithParam<TextCase> {};
INSTANTIATE_TEST_SUITE_P(
    Qualifiers, StaticGlobalTest,
    testing::Values(TextCase{"float x;", "static float x;\n"},
                    TextCase{"float x = 1.0;", "static float x = 1.0f;\n"},
                    TextCase{"vec3 a[2];", "static float3 a[2];\n"},
                    TextCase{"float a[];", "static float a[];\n"},
                    TextCase{"float a[][2];", "static float a[][2];\n"},
                    TextCase{"float line;", "static float AVOID_KEYWORD_CONFLICTS_line;\n"},
                    TextCase{"attribute vec2 x;", "static attribute float2 x;\n"},
                    TextCase{"varying vec2 x;", "static varying float2 x;\n"},
                    TextCase{"buffer float x;", "static buffer float x;\n"},
                    TextCase{"shared float x;", "static shared float x;\n"},
                    TextCase{"centroid varying float x;", "static varying float x;\n"},
                    TextCase{"varying centroid float x;", "static varying centroid float x;\n"},
                    TextCase{"varying patch float x;", "static varying patch float x;\n"},
                    TextCase{"varying smooth float x;", "static varying smooth float x;\n"},
                    TextCase{"varying flat int x;", "static varying flat int x;\n"},
                    TextCase{"varying noperspective float x;",
                             "static varying noperspective float x;\n"},
                    TextCase{"shared coherent float x;", "static shared coherent float x;\n"},
                    TextCase{"coherent volatile restrict readonly writeonly float x;",
                             "static coherent volatile restrict readonly writeonly float x;\n"},
                    TextCase{"shared highp float x;", "static shared float x;\n"},
                    TextCase{"invariant float x;", "static float x;\n"},
                    TextCase{"layout(location = 1, shared) varying float x;",
                             "static layout (location = 1, shared) varying float x;\n"}));

TEST_P(StaticGlobalTest, Prints) {
    EXPECT_EQ(bodyOf(printFragment(GetParam().glsl)), GetParam().hlsl);
}

TEST(StructTest, FieldsAreDeclaredAvoidingKeywords) {
    EXPECT_EQ(bodyOf(printFragment("struct S { float a[2]; vec2 line; int n, m[3]; };")),
              "struct S {\nfloat a[2];\nfloat2 AVOID_KEYWORD_CONFLICTS_line;\nint n;\n"
              "int m[3];\n};\n");
}

TEST(StructTest, AnonymousStructHasNoName) {
    EXPECT_EQ(bodyOf(printFragment("struct { float a; } x;")),
              "struct {\nfloat a;\n};\nstatic struct  x;\n");
}

TEST(InterfaceBlockTest, PrintsItsStorageAndNoSemantics) {
    EXPECT_EQ(bodyOf(printFragment("uniform U { float a; };\nin I { vec2 b; };\n"
                                   "out O { vec3 c; };\nbuffer B { int d; };\n")),
              "U {\nfloat a;\n};\nin I {\nfloat2 b;\n};\nout O {\nfloat3 c;\n};\n"
              "buffer B {\nint d;\n};\n");
}

TEST(InterfaceBlockTest, AnInstanceIsAStaticOfTheBlocksType) {
    EXPECT_EQ(bodyOf(printFragment("uniform U { float a; vec2 v; } u;\n"
                                   "float f() { return (u.v + u.v).r; }")),
              "static struct U u;\nU {\nfloat a;\nfloat2 v;\n};\n"
              "float f(VertexOutput input, float4 gl_FragCoord) {\n"
              "return ( u.v +  u.v).x;\nreturn float(0.0f);\n}\n");
}

}  // namespace
}  // namespace glsl
