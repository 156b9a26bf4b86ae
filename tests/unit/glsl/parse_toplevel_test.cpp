#include <gtest/gtest.h>

#include <string>

#include "tree_dump.h"

namespace glsl {
namespace {

using test::firstError;
using test::parsed;

struct UnitCase {
    const char* source;
    const char* tree;
    std::uint32_t stage = kShaderFragment;
};
void PrintTo(const UnitCase& c, std::ostream* out) {
    *out << c.source;
}

class TopLevelTest : public testing::TestWithParam<UnitCase> {};

TEST_P(TopLevelTest, ParsesAs) {
    EXPECT_EQ(parsed(GetParam().source, GetParam().stage), GetParam().tree);
}

INSTANTIATE_TEST_SUITE_P(
    Globals, TopLevelTest,
    testing::Values(UnitCase{"", ""}, UnitCase{" // nothing", ""}, UnitCase{"float a;", "float:a"},
                    UnitCase{"float a, b;", "float:a | float:b"},
                    UnitCase{"in vec4 p, q;", "in vec4:p | in vec4:q"},
                    UnitCase{"FilterData f; atomic_uint c; uimage2DMSArray u;",
                             "FilterData:f | atomic_uint:c | uimage2DMSArray:u"},
                    UnitCase{"const float a = 1.0;", "const float:a=1f'1.0"},
                    UnitCase{"const float c = -1.5;", "const float:c=-1.5f'-1.5"},
                    UnitCase{"float a = 1;", "float:a=1"},
                    UnitCase{"uniform float u = 1.0;", "uniform float:u=1f'1.0"},
                    UnitCase{"const vec2 v = vec2(1.0);", "const vec2:v=(new vec2 1f'1.0)"},
                    UnitCase{"vec2 v = vec2(f(1));", "vec2:v=(new vec2 (call f 1))"},
                    // A comma behind a value is the sequence operator, not a further name.
                    UnitCase{"float a = 1, b;", "1:15:`b' was not declared in this scope"},
                    UnitCase{"float a = 1, b = 2;", "1:15:`b' was not declared in this scope"},
                    UnitCase{"float class;", "1:12:expected name for declaration"}));

INSTANTIATE_TEST_SUITE_P(
    Arrays, TopLevelTest,
    testing::Values(UnitCase{"int a[2];", "int:a[2]#"}, UnitCase{"int a[];", "int:a[]#"},
                    UnitCase{"int a[2][3];", "int:a[2][3]#"}, UnitCase{"int[2] a;", "int:a[2]#"},
                    UnitCase{"int[2][3] a;", "int:a[3][2]#"},
                    UnitCase{"int[2] a[3];", "int:a[2][3]#"},
                    UnitCase{"int a[2], b;", "int:a[2]# | int:b#"},
                    UnitCase{"int[2] a[3], b[4];", "int:a[2][3]# | int:b[2][4]#"},
                    UnitCase{"const int n = 2; int a[n + 1];", "const int:n=2 | int:a[(+ n 1)]#"},
                    UnitCase{"struct S { int p; }; S[2] s;", "struct S { int:p } | struct:S:s[2]#"},
                    UnitCase{"int[] a;", "silent"},
                    UnitCase{"int[n] a;", "1:6:`n' was not declared in this scope"}));

INSTANTIATE_TEST_SUITE_P(
    Qualifiers, TopLevelTest,
    testing::Values(
        UnitCase{"attribute float a;", "attribute float:a"},
        UnitCase{"varying float a;", "varying float:a"},
        UnitCase{"buffer float a;", "buffer float:a"},
        UnitCase{"shared float a;", "shared float:a"}, UnitCase{"out float a;", "out float:a"},
        UnitCase{"centroid in float a;", "in float:a"},
        UnitCase{"in centroid float a;", "in aux0 float:a"},
        UnitCase{"in smooth float a;", "in interp0 float:a"},
        UnitCase{"in noperspective float a;", "in interp2 float:a"},
        UnitCase{"highp float a;", "prec0 float:a"}, UnitCase{"mediump float a;", "prec1 float:a"},
        UnitCase{"lowp float a;", "prec2 float:a"}, UnitCase{"coherent float a;", "mem1 float:a"},
        UnitCase{"volatile float a;", "mem2 float:a"},
        UnitCase{"restrict float a;", "mem4 float:a"},
        UnitCase{"readonly float a;", "mem8 float:a"},
        UnitCase{"writeonly float a;", "mem16 float:a"},
        UnitCase{"coherent volatile readonly uniform image2D a;", "uniform mem11 image2D:a"},
        UnitCase{"uniform coherent image2D a;", "uniform mem1 image2D:a"},
        // Out of order makes two groups, and the later one wipes out what it does not name.
        UnitCase{"flat in vec2 a;", "in vec2:a"}, UnitCase{"in flat vec2 a;", "in interp1 vec2:a"},
        UnitCase{"highp const float x = 1.0;", "const float:x=1f'1.0"},
        UnitCase{"const highp float x = 1.0;", "const prec0 float:x=1f'1.0"},
        UnitCase{"in flat highp vec2 a;", "in interp1 prec0 vec2:a"},
        UnitCase{"in highp flat vec2 a;", "interp1 vec2:a"},
        // Read and dropped.
        UnitCase{"invariant float x;", "float:x"}, UnitCase{"precise float x;", "float:x"},
        UnitCase{"invariant precise out vec4 x;", "out vec4:x"},
        UnitCase{"attribute vec4 p, flat q;", "1:25:multiple storage qualifiers in declaration"},
        // Behind a comma a qualifier word brings the first one's storage along: a block.
        UnitCase{"in vec4 p, flat q;", "1:19:expected '{' for input block definition"}));

INSTANTIATE_TEST_SUITE_P(
    Layouts, TopLevelTest,
    testing::Values(
        UnitCase{"layout(location = 1) in vec4 p;", "in layout:location=1 vec4:p"},
        UnitCase{"layout(location = 1 + 2) in vec4 p;", "in layout:location=3 vec4:p"},
        UnitCase{"layout() in vec4 p;", "in vec4:p"},
        UnitCase{"layout(shared) uniform float a;", "uniform layout:shared float:a"},
        UnitCase{"layout(std140, row_major, binding = 2u) uniform float a;",
                 "uniform layout:std140 layout:row_major layout:binding=2u float:a"},
        UnitCase{"layout(std140 packed) float a;", "layout:std140 layout:packed float:a"},
        UnitCase{"layout(std140,) float a;", "layout:std140 float:a"},
        UnitCase{"uniform layout(binding = 1) float a;", "uniform layout:binding=1 float:a"},
        // Of one name the last one stays, at its own place.
        UnitCase{"layout(location = 1, index = 2) layout(location = 3) in vec4 p;",
                 "in layout:index=2 layout:location=3 vec4:p"},
        UnitCase{"layout(location = 1, location = 2) in vec4 p;", "in layout:location=2 vec4:p"},
        UnitCase{"layout(location = 1) in vec4 p, q;",
                 "in layout:location=1 vec4:p | in layout:location=1 vec4:q"},
        UnitCase{"const int n = 4; layout(align = n) float a;",
                 "const int:n=4 | layout:align=4 float:a"}));

INSTANTIATE_TEST_SUITE_P(
    LayoutErrors, TopLevelTest,
    testing::Values(
        UnitCase{"layout in vec4 p;", "1:10:expected `(' after `layout'"},
        UnitCase{"layout(foo) in vec4 p;", "1:11:unknown layout qualifier `foo'"},
        UnitCase{"layout(location) in vec4 p;",
                 "1:17:expected layout qualifier value for `location' layout qualifier"},
        UnitCase{"layout(std140 = 1) uniform B { float x; };",
                 "1:16:unexpected layout qualifier value on `std140' layout qualifier"},
        UnitCase{"layout(shared = 1) float a;",
                 "1:16:unexpected layout qualifier value on `shared' layout qualifier"},
        UnitCase{"layout(location = f()) in vec4 p;",
                 "1:23:value for layout qualifier `location' is not a valid constant expression"},
        UnitCase{"layout(location = 1 | 2) in vec4 p;",
                 "1:25:invalid operation in constant expression"},
        UnitCase{"layout(location = ) in vec4 p;", "1:20:syntax error during unary prefix"},
        UnitCase{"layout(1) in vec4 p;", "silent"}, UnitCase{"layout(in) in vec4 p;", "silent"},
        UnitCase{"layout(std140 1) in vec4 p;", "silent"},
        UnitCase{"layout(std140", "1:14:premature end of file"}));

// Every name of the table; a value is given where one is wanted.
TEST(LayoutTest, KnowsItsNames) {
    for (const char* name : {"shared",
                             "packed",
                             "std140",
                             "row_major",
                             "column_major",
                             "triangles",
                             "quads",
                             "isolines",
                             "equal_spacing",
                             "fractional_even_spacing",
                             "fractional_odd_spacing",
                             "cw",
                             "ccw",
                             "point_mode",
                             "points",
                             "lines",
                             "lines_adjacency",
                             "triangles_adjacency",
                             "origin_upper_left",
                             "pixel_center_integer",
                             "early_fragment_tests",
                             "line_strip",
                             "triangle_strip",
                             "depth_any",
                             "depth_greater",
                             "depth_less",
                             "depth_unchanged"}) {
        EXPECT_EQ(parsed("layout(" + std::string(name) + ") float a;"),
                  "layout:" + std::string(name) + " float:a");
        EXPECT_NE(firstError("layout(" + std::string(name) + " = 1) float a;"), "none");
    }
    for (const char* name :
         {"binding", "offset", "align", "location", "component", "index", "invocations",
          "local_size_x", "local_size_y", "local_size_z", "xfb_buffer", "xfb_stride", "xfb_offset",
          "vertices", "max_vertices", "stream"}) {
        EXPECT_EQ(parsed("layout(" + std::string(name) + " = 1) float a;"),
                  "layout:" + std::string(name) + "=1 float:a");
        EXPECT_NE(firstError("layout(" + std::string(name) + ") float a;"), "none");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Stages, TopLevelTest,
    testing::Values(
        UnitCase{"in centroid vec4 p;",
                 "1:17:cannot use auxiliary storage qualifier on vertex shader input",
                 kShaderVertex},
        UnitCase{"in flat vec4 p;",
                 "1:13:cannot use interpolation qualifier on vertex shader input", kShaderVertex},
        UnitCase{"flat in vec4 p;",
                 "1:13:cannot use interpolation qualifier on vertex shader input", kShaderVertex},
        UnitCase{"centroid in vec4 p;",
                 "1:17:cannot use auxiliary storage qualifier on vertex shader input",
                 kShaderVertex},
        UnitCase{"out flat vec4 p;", "out interp1 vec4:p", kShaderVertex},
        UnitCase{"out centroid vec4 p;",
                 "1:18:cannot use auxiliary storage qualifier on fragment shader output"},
        UnitCase{"out flat vec4 p;",
                 "1:14:cannot use interpolation qualifier on fragment shader output"},
        UnitCase{"in flat vec4 p;", "in interp1 vec4:p"},
        UnitCase{"in patch vec4 p;",
                 "1:14:applying `patch' qualifier to input can only be done in tessellation "
                 "evaluation shaders"},
        UnitCase{"in patch vec4 p;", "in aux2 vec4:p", kShaderTessellationEvaluation},
        UnitCase{"out patch vec4 p;", "out aux2 vec4:p", kShaderTessellationControl},
        UnitCase{"out patch vec4 p;",
                 "1:15:applying `patch' qualifier to output can only be done in tessellation "
                 "control shaders",
                 kShaderTessellationEvaluation},
        UnitCase{"out patch vec4 p;",
                 "1:15:cannot use auxiliary storage qualifier on fragment shader output"},
        UnitCase{"in patch flat vec4 p;",
                 "1:19:cannot use interpolation qualifier with auxiliary storage qualifier "
                 "`patch'",
                 kShaderTessellationEvaluation}));

INSTANTIATE_TEST_SUITE_P(
    Refused, TopLevelTest,
    testing::Values(
        UnitCase{"const float a;", "1:15:const-qualified variable declared but not initialized"},
        UnitCase{"const float f();", "1:15:const-qualified variable declared but not initialized"},
        UnitCase{"float c; float b = c + 1.0;", "1:28:not a valid constant expression"},
        UnitCase{"float b = f();", "1:15:not a valid constant expression"},
        UnitCase{"uniform vec2 v = vec2(1.0);", "1:28:not a valid constant expression"},
        UnitCase{"const bool t = !true;", "1:22:not a valid constant expression"},
        UnitCase{"const int a = 1, b = 2;", "1:19:`b' was not declared in this scope"},
        UnitCase{"float a = ;", "1:12:syntax error during unary prefix"},
        UnitCase{"in out float a;", "1:13:multiple storage qualifiers in declaration"},
        UnitCase{"in centroid centroid float a;",
                 "1:27:multiple auxiliary storage qualifiers in declaration"},
        UnitCase{"in flat flat float a;", "1:19:multiple interpolation qualifiers in declaration"},
        UnitCase{"highp lowp float a;", "1:17:multiple precision qualifiers in declaration"},
        UnitCase{"void a;", "1:8:`void' cannot be used in declaration"},
        UnitCase{"void;", "1:6:`void' cannot be used in declaration"},
        UnitCase{"float;", "1:7:expected name for declaration"},
        UnitCase{"float = 1;", "1:11:expected name for declaration"},
        UnitCase{"foo a;", "1:6:expected typename"}, UnitCase{"foo", "1:4:premature end of file"},
        UnitCase{"class x;", "1:6:cannot use a reserved keyword"},
        UnitCase{"in class x;", "1:9:cannot use a reserved keyword"},
        UnitCase{"using x;", "1:6:cannot use a reserved keyword"},
        UnitCase{"float a", "1:8:premature end of file"}));

INSTANTIATE_TEST_SUITE_P(
    WrongTokens, TopLevelTest,
    testing::Values(
        // Kinds without a number print as 0, the others by their number or bits.
        UnitCase{"float a b;", "1:10:syntax error at top level 0"},
        UnitCase{"float a \"s\";", "1:12:syntax error at top level 0"},
        UnitCase{"float a {", "1:10:syntax error at top level 0"},
        UnitCase{"float a }", "1:10:syntax error at top level 0"},
        UnitCase{"float a 7;", "1:10:syntax error at top level 7"},
        UnitCase{"float a 4294967295u;", "1:20:syntax error at top level -1"},
        UnitCase{"float a 1.0;", "1:12:syntax error at top level 1065353216"},
        UnitCase{"float a 1.5lf;", "1:14:syntax error at top level 0"},
        UnitCase{"float a float;", "1:14:syntax error at top level 32"},
        UnitCase{"float a + 1;", "1:10:syntax error at top level 12"},
        UnitCase{"float a\n#define X 1\n;", "2:12:syntax error at top level 2"},
        // Tokens that cannot stand in front of a declaration.
        UnitCase{"; float a;", "1:2:syntax error at top level 0"},
        UnitCase{"precision mediump float;", "1:10:syntax error at top level 104"},
        UnitCase{"} x", "1:2:syntax error at top level 0"},
        UnitCase{"7 x", "1:2:syntax error at top level 7"},
        UnitCase{"in 7 x", "1:5:syntax error at top level 7"},
        // At the text's end they are silent.
        UnitCase{"}", "silent"}, UnitCase{";", "silent"}, UnitCase{"in", "silent"},
        UnitCase{"float a; }", "silent"}, UnitCase{"in ;", "silent"}));

TEST(TopLevelTest, ALexicalErrorBehindAQualifierIsReported) {
    EXPECT_EQ(firstError("in$ x;"), "1:3:invalid character encountered");
    EXPECT_EQ(firstError("in $ x;"), "1:4:invalid character encountered");
}

TEST(TopLevelTest, TheFirstGlobalOfANameIsTheOneFound) {
    parser reader("const int a = 1; const int a = 2; const int b = a;", "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderFragment);
    ASSERT_NE(unit, nullptr);
    EXPECT_EQ(test::dump(*unit->globals[2]), "const int:b=1");
}

TEST(TopLevelTest, ANameIsKnownBehindItsWholeDeclaration) {
    EXPECT_EQ(firstError("int a = 1, b = a;"), "1:13:`b' was not declared in this scope");
}

}  // namespace
}  // namespace glsl
