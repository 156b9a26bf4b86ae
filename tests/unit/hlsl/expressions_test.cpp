#include <gtest/gtest.h>

#include "translate.h"

namespace glsl {
namespace {

struct ExpressionCase {
    const char* glsl;
    const char* hlsl;
    const char* kind;  // class; null where the text is all that matters
};
void PrintTo(const ExpressionCase& c, std::ostream* out) {
    *out << c.glsl;
}

class ExpressionTest : public testing::TestWithParam<ExpressionCase> {};

TEST_P(ExpressionTest, Prints) {
    EXPECT_EQ(expression(GetParam().glsl), GetParam().hlsl);
}

TEST_P(ExpressionTest, HasItsClass) {
    if (GetParam().kind != nullptr) {
        EXPECT_EQ(classOf(GetParam().glsl), GetParam().kind);
    }
}

using C = ExpressionCase;

INSTANTIATE_TEST_SUITE_P(Constants, ExpressionTest,
                         testing::Values(C{"7", "7", "int"}, C{"7u", "7u", "int"},
                                         C{"4294967295u", "-1u", "int"}, C{"1.0", "1.0f", "float"},
                                         C{"0.1", "0.1000000014901161f", "float"},
                                         C{"1e39", "inf.0f", "float"}, C{"2.0lf", "2", "double"},
                                         C{"2.5lf", "2.5", "double"}, C{"true", "true", "bool"},
                                         C{"false", "false", "bool"}, C{"\"text\"", "", "null"}));

INSTANTIATE_TEST_SUITE_P(
    Unary, ExpressionTest,
    testing::Values(C{"-f", "- f", "float"}, C{"+v2", "+ v2", "vec2"}, C{"~i", "~ i", "int"},
                    C{"!b", "! b", "bool"}, C{"++i", "++ i", "int"}, C{"--v3", "-- v3", "vec3"},
                    C{"i++", " i++", "int"}, C{"m2--", " m2--", "mat2"},
                    // No parentheses of their own, whatever comes of it.
                    C{"-(-f)", "-- f", "float"}, C{"- -1.0", "--1.0f", "float"},
                    C{"-(f = g)", "- f =  g", "float"}, C{"-v4.x", "- v4.x", "float"},
                    C{"!(i < j)", "!( i <  j)", "bool"}, C{"(f + g)++", "( f +  g)++", "float"}));

INSTANTIATE_TEST_SUITE_P(
    Operators, ExpressionTest,
    testing::Values(C{"f * g", "( f *  g)", "float"}, C{"f / g", "( f /  g)", "float"},
                    C{"i % j", "( i %  j)", "int"}, C{"f + g", "( f +  g)", "float"},
                    C{"f - g", "( f -  g)", "float"}, C{"i << j", "( i <<  j)", "int"},
                    C{"i >> j", "( i >>  j)", "int"}, C{"f < g", "( f <  g)", "bool"},
                    C{"f > g", "( f >  g)", "bool"}, C{"f <= g", "( f <=  g)", "bool"},
                    C{"f >= g", "( f >=  g)", "bool"}, C{"f == g", "( f ==  g)", "bool"},
                    C{"f != g", "( f !=  g)", "bool"}, C{"i & j", "( i &  j)", "int"},
                    C{"i ^ j", "( i ^  j)", "int"}, C{"i | j", "( i |  j)", "int"},
                    C{"b && b", "( b &&  b)", "bool"}, C{"b ^^ b", "( b ^^  b)", "null"},
                    C{"b || b", "( b ||  b)", "bool"}, C{"i * 2.0", "( i * 2.0f)", "float"},
                    C{"i2 + k2", "( i2 +  k2)", "null"}, C{"i2 == k2", "( i2 ==  k2)", "bool"},
                    C{"i2 != k2", "( i2 !=  k2)", "null"}, C{"m4 * 2.0", "( m4 * 2.0f)", "null"},
                    C{"f + d", "( f +  d)", "double"}, C{"b + b", "( b +  b)", "int"},
                    C{"v2 + v3", "( v2 +  v3)", "null"}, C{"2.0 * v3", "(2.0f *  v3)", "vec3"},
                    C{"f - g - h", "(( f -  g) -  h)", "float"},
                    C{"f - (g - h)", "( f - ( g -  h))", "float"},
                    C{"f + g * h", "( f + ( g *  h))", "float"}));

INSTANTIATE_TEST_SUITE_P(
    Helpers, ExpressionTest,
    testing::Values(C{"v2 == w2", "(global_is_equal_vec2( v2,  w2))", "bool"},
                    C{"v3 == w3", "(global_is_equal_vec3( v3,  w3))", "bool"},
                    C{"v4 == w4", "(global_is_equal_vec4( v4,  w4))", "bool"},
                    C{"v2 != w2", "(global_is_not_equal_vec2( v2,  w2))", "null"},
                    C{"v3 != w3", "(global_is_not_equal_vec3( v3,  w3))", "null"},
                    C{"v4 != w4", "(global_is_not_equal_vec4( v4,  w4))", "null"},
                    C{"v3 == 1.0", "(global_is_equal_vec3( v3, 1.0f))", "null"},
                    C{"1.0 == v3", "(1.0f ==  v3)", "null"},
                    C{"v4 == m4", "(global_is_equal_vec4( v4,  m4))", "null"},
                    // Equality of the first pair is a bool; the second then is plain.
                    C{"v2 == w2 == b", "((global_is_equal_vec2( v2,  w2)) ==  b)", "bool"}));

INSTANTIATE_TEST_SUITE_P(
    Matrices, ExpressionTest,
    testing::Values(
        C{"m2 * v2", "(mul( v2,  m2))", "vec2"}, C{"m3 * v3", "(mul( v3,  m3))", "vec3"},
        C{"m4 * v4", "(mul( v4,  m4))", "vec4"}, C{"v2 * m2", "(mul( v2,  m2))", "vec2"},
        C{"v3 * m3", "(mul( v3,  m3))", "vec3"}, C{"v4 * m4", "(mul( v4,  m4))", "vec4"},
        C{"m2 * n2", "(mul( n2,  m2))", "mat2"}, C{"m3 * n3", "(mul( n3,  m3))", "mat3"},
        C{"m4 * n4", "(mul( n4,  m4))", "mat4"},
        // Any operator multiplies.
        C{"m2 + n2", "(mul( n2,  m2))", "null"}, C{"m3 / n3", "(mul( n3,  m3))", "null"},
        C{"m4 == v4", "(mul( v4,  m4))", "null"}, C{"v2 - m2", "(mul( v2,  m2))", "null"},
        C{"m2 == n2", "(mul( n2,  m2))", "null"},
        // Only of one size.
        C{"m2 * v3", "( m2 *  v3)", "null"}, C{"m4 * m3", "( m4 *  m3)", "null"},
        C{"m2 * i2", "( m2 *  i2)", "null"}));

// A chain is written in one go; its order must come out as if each level had been.
INSTANTIATE_TEST_SUITE_P(
    Chains, ExpressionTest,
    testing::Values(C{"m4 * n4 * v4", "(mul( v4, (mul( n4,  m4))))", "vec4"},
                    C{"m4 * n4 * m4 * n4", "(mul( n4, (mul( m4, (mul( n4,  m4))))))", "mat4"},
                    C{"v4 * m4 * n4", "(mul((mul( v4,  m4)),  n4))", "vec4"},
                    C{"m4 * (n4 * v4)", "(mul((mul( v4,  n4)),  m4))", "vec4"},
                    C{"m2 * v2 + v2 * m2 + w2", "(((mul( v2,  m2)) + (mul( v2,  m2))) +  w2)",
                      "vec2"},
                    C{"2.0 * v2 * m2 - w2", "((mul((2.0f *  v2),  m2)) -  w2)", "vec2"},
                    C{"f * (m2 * v2).x * g", "(( f * (mul( v2,  m2)).x) *  g)", "float"}));

INSTANTIATE_TEST_SUITE_P(
    Assignments, ExpressionTest,
    testing::Values(
        C{"f = g", " f =  g", "float"}, C{"f += g", " f +=  g", "float"},
        C{"f -= g", " f -=  g", "float"}, C{"f *= g", " f *=  g", "float"},
        C{"f /= g", " f /=  g", "float"}, C{"i %= j", " i %=  j", "int"},
        C{"i <<= j", " i <<=  j", "int"}, C{"i >>= j", " i >>=  j", "int"},
        C{"i &= j", " i &=  j", "int"}, C{"i ^= j", " i ^=  j", "int"},
        C{"i |= j", " i |=  j", "int"}, C{"v2 = f", " v2 =  f", "vec2"},
        C{"v2 *= m2", " v2 = mul( v2,  m2)", "vec2"}, C{"v3 *= m3", " v3 = mul( v3,  m3)", "vec3"},
        C{"v4 *= m4", " v4 = mul( v4,  m4)", "vec4"}, C{"m2 *= n2", " m2 = mul( n2,  m2)", "mat2"},
        C{"m3 *= n3", " m3 = mul( n3,  m3)", "mat3"}, C{"m4 *= n4", " m4 = mul( n4,  m4)", "mat4"},
        C{"m4 *= 2.0", " m4 *= 2.0f", "mat4"}, C{"m2 *= v2", " m2 *=  v2", "mat2"},
        C{"v2 *= m3", " v2 *=  m3", "vec2"}, C{"m2 += n2", " m2 +=  n2", "mat2"},
        C{"v2 *= m2 * n2", " v2 = mul( v2, (mul( n2,  m2)))", "vec2"},
        C{"f = g = h", " f =  g =  h", "float"},
        C{"v2 *= m2 *= n2", " v2 = mul( v2,  m2) = mul( v2 = mul( v2,  m2),  n2)", "vec2"},
        C{"(f = g) + h", "(( f =  g) +  h)", "float"},
        C{"f + (g = h)", "( f + ( g =  h))", "float"},
        C{"(v2 *= m2) * m2", "(mul(( v2 = mul( v2,  m2)),  m2))", "vec2"},
        C{"m2 * (v2 *= m2)", "(mul(( v2 = mul( v2,  m2)),  m2))", "vec2"},
        C{"(m2 = n2) * v2", "(mul( v2, ( m2 =  n2)))", "vec2"},
        C{"(f = g).x", " f =  g.x", "other"}));

INSTANTIATE_TEST_SUITE_P(
    Others, ExpressionTest,
    testing::Values(C{"(f, g)", "( f,  g)", "other"}, C{"((f, g), h)", "(( f,  g),  h)", "other"},
                    C{"(f, (g, h))", "( f, ( g,  h))", "other"},
                    C{"b ? f : g", "( b ?  f :  g)", "float"},
                    C{"b ? f : v2", "( b ?  f :  v2)", "vec2"},
                    C{"f < g ? f * 2.0 : g", "(( f <  g) ? ( f * 2.0f) :  g)", "float"}));

// ---- where a name lives

TEST(NameTest, AnUnknownNameReadsAsAMemberOfTheInput) {
    Translation t;
    t.translate("in vec2 q;\nout vec3 r;\nvoid f() { discard; q.x; r.r; probe(r); }\n");
    EXPECT_NE(t.text.find("discard;\ninput.q.x;\ninput.r.r;\nprobe(input.r);\n"),
              std::string::npos);
    EXPECT_EQ(t.log.size(), 1U);  // r has no class in this stage
}

TEST(NameTest, FragmentInputHasTheClassOfItsType) {
    EXPECT_NE(
        printFragment("in vec2 q;\nvoid f() { q.rg - q.st; }").find("(input.q.xy - input.q.xy);"),
        std::string::npos);
}

TEST(NameTest, UniformsConstantsAndStaticsPrintWithABlank) {
    const std::string hlsl = printFragment(
        "uniform vec2 u;\nconst float c = 1.0;\nvec3 g;\n"
        "void f() { u.rg + v(c) + g.r; }\nvec2 h(vec2 u) { return u.rg; }\n");
    EXPECT_NE(hlsl.find("(( u.xy + v( c)) +  g.x);\n"), std::string::npos) << hlsl;
}

TEST(NameTest, TheFileScopesClassWinsOverALocals) {
    // Of two things with one name the class is that of the global, the text is the same.
    EXPECT_NE(printFragment("uniform vec2 u;\nvoid f() { float u; u.rg; }").find(" u.xy;"),
              std::string::npos);
}

TEST(NameTest, FragmentCoordinateIsAParameterWithAClass) {
    EXPECT_NE(printFragment("vec4 gl_FragCoord;\nvoid f() { gl_FragCoord.rg; }")
                  .find(" gl_FragCoord.xy;"),
              std::string::npos);
}

TEST(NameTest, StaticOutputsOfTheVertexStagePrintBare) {
    const std::string hlsl = printVertex(
        "out vec4 gl_Position;\nout vec2 tc;\nout vec3 n;\nvoid main() {\n"
        "gl_Position = gl_Position; tc = tc.st; n.rg = n.st; f(tc);\n}\n");
    EXPECT_NE(hlsl.find("gl_Position = gl_Position;\ntc = tc.st;\nn.xy = n.xy;\nf(tc);\n"),
              std::string::npos)
        << hlsl;
}

TEST(NameTest, APositionIsBareInTheFragmentStageToo) {
    const std::string hlsl = printFragment(
        "in vec4 gl_Position;\nin vec2 tc;\n"
        "void f() { gl_Position; tc; }");
    EXPECT_NE(hlsl.find("{\ngl_Position;\ninput.tc;\n"), std::string::npos) << hlsl;
}

TEST(NameTest, AParameterCalledLikeAStaticOutputIsAParameter) {
    const std::string hlsl = printVertex("out vec2 tc;\nvec2 f(vec2 tc) { return tc.st; }\n");
    EXPECT_NE(hlsl.find("return  tc.xy;\n"), std::string::npos) << hlsl;
}

TEST(NameTest, VertexInputsAreMembersByTheirSemantic) {
    const std::string hlsl = printVertex(
        "in vec4 position;\nin vec4 position1;\nin vec2 line;\nvoid main() {\n"
        "position.rg; position1.rg; line.st;\n}\n");
    EXPECT_NE(hlsl.find("input.position.xy;\ninput.position1_.xy;\n"
                        "input.AVOID_KEYWORD_CONFLICTS_line.xy;\n"),
              std::string::npos)
        << hlsl;
}

TEST(NameTest, APreciseVariableIsPreciseAtEachUse) {
    // The parser marks no variable as precise, so the mark is set by hand.
    Translation t;
    t.translate("void f() { }");
    arena* const home = arena::create(1024);
    auto* unit = home->make<astTU>(*home, 5U);
    auto* type = home->make<astBuiltin>(32U, 1U, 1U);
    auto* variable = home->make<astGlobalVariable>(1U, 1U);
    variable->name = "x";
    variable->baseType = type;
    variable->isPrecise = true;
    variable->initialValue = home->make<astVariableIdentifier>(variable, 1U, 1U);
    unit->globals.push_back(*home, variable);
    std::string hlsl;
    std::string varyings;
    printTU(*unit, 0, 0, false, hlsl, varyings, nullptr, false);
    EXPECT_EQ(bodyOf(hlsl), "static precise float x = precise input.x;\n");
    home->release();
}

}  // namespace
}  // namespace glsl
