#include <gtest/gtest.h>

#include "translate.h"

namespace glsl {
namespace {

struct FieldCase {
    const char* glsl;
    const char* hlsl;
    const char* kind;
};
void PrintTo(const FieldCase& c, std::ostream* out) {
    *out << c.glsl;
}
using C = FieldCase;

class FieldTest : public testing::TestWithParam<FieldCase> {};

TEST_P(FieldTest, Prints) {
    EXPECT_EQ(expression(GetParam().glsl), GetParam().hlsl);
}
TEST_P(FieldTest, HasItsClass) {
    EXPECT_EQ(classOf(GetParam().glsl), GetParam().kind);
}

INSTANTIATE_TEST_SUITE_P(
    Swizzles, FieldTest,
    testing::Values(C{"v4.r", " v4.x", "float"}, C{"v4.g", " v4.y", "float"},
                    C{"v4.b", " v4.z", "float"}, C{"v4.a", " v4.w", "float"},
                    C{"v4.s", " v4.x", "float"}, C{"v4.t", " v4.y", "float"},
                    C{"v4.p", " v4.z", "float"}, C{"v4.q", " v4.w", "float"},
                    C{"v4.x", " v4.x", "float"}, C{"v4.w", " v4.w", "float"},
                    C{"v4.rgb", " v4.xyz", "vec3"}, C{"v4.stpq", " v4.xyzw", "vec4"},
                    C{"v4.ba", " v4.zw", "vec2"}, C{"v4.bgra", " v4.zyxw", "vec4"},
                    C{"v2.xyxy", " v2.xyxy", "vec4"}, C{"v3.rr", " v3.xx", "vec2"},
                    C{"v4.xgtq", " v4.xyyw", "vec4"}, C{"i4.r", " i4.x", "int"},
                    C{"i3.xy", " i3.xy", "ivec2"}, C{"i2.stp", " i2.xyz", "ivec3"},
                    C{"i3.bgra", " i3.zyxw", "ivec4"}, C{"v4.h", " v4.h", "float"},
                    C{"v4.rgbar", " v4.xyzwx", "other"}, C{"i2.rrrrr", " i2.xxxxx", "other"},
                    C{"v4.rgb.rg.g", " v4.xyz.xy.y", "float"}));

INSTANTIATE_TEST_SUITE_P(Others, FieldTest,
                         testing::Values(C{"s.a", " s.a", "float"},
                                         // Declared under another name, read under its own.
                                         C{"s.line", " s.line", "vec3"},
                                         C{"s.line.line", " s.line.line", "vec4"},
                                         C{"s.inner", " s.inner", "other"},
                                         C{"m4.rgb", " m4.rgb", "other"}, C{"f.r", " f.r", "other"},
                                         C{"m4[0].x", " m4[0].x", "other"},
                                         C{"(i2 + k2).rg", "( i2 +  k2).rg", "other"},
                                         C{"t.rg", " t.rg", "other"}, C{"d.a", " d.a", "other"}));

INSTANTIATE_TEST_SUITE_P(
    Subscripts, FieldTest,
    testing::Values(C{"v3[0]", " v3[0]", "vec3"}, C{"v3[i]", " v3[ i]", "vec3"},
                    C{"m4[1]", " m4[1]", "mat4"}, C{"m4[1][2]", " m4[1][2]", "mat4"},
                    C{"m4[1] * v4", "(mul( v4,  m4[1]))", "vec4"},
                    C{"i2[1 + 2]", " i2[3]", "ivec2"}, C{"f[1]", " f[1]", "float"},
                    C{"p(v2)[1]", "p( v2)[1]", "vec2"}, C{"i2[i++]", " i2[ i++]", "ivec2"},
                    C{"v4[int(f)].rg", " v4[int( f)].xy", "vec2"}));

TEST(FieldOfArrayTest, AnArrayHasTheClassOfItsElement) {
    EXPECT_EQ(statements("float a[3] = { 1.0 }; a[i] = f; vec2 c[2] = { v2 }; c[0].rg = v2;"),
              "float a[3] = {1.0f};\n a[ i] =  f;\nfloat2 c[2] = { v2};\n c[0].xy =  v2;\n");
    EXPECT_EQ(classOf("a[i]", "float a[3]; "), "float");
}

TEST(FieldOfStructTest, AFieldOfStructTypeIsAStruct) {
    const std::string hlsl = printFragment(
        "struct T { vec2 c; };\nstruct S { T inner; };\nT pick(S s) { return s.inner; }\n"
        "void f(S s) { (pick(s).c + pick(s).c).rg; }\n");
    EXPECT_NE(
        hlsl.find("(pick( s, input, gl_FragCoord).c + pick( s, input, gl_FragCoord).c).xy;\n"),
        std::string::npos)
        << hlsl;
}

}  // namespace
}  // namespace glsl
