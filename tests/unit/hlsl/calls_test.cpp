#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "translate.h"

namespace glsl {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct CallCase {
    const char* glsl;
    const char* hlsl;
    const char* kind;  // class; null where the text is all that matters
};
void PrintTo(const CallCase& c, std::ostream* out) {
    *out << c.glsl;
}
using C = CallCase;

class CallTest : public testing::TestWithParam<CallCase> {};

TEST_P(CallTest, Prints) {
    EXPECT_EQ(expression(GetParam().glsl), GetParam().hlsl);
}

TEST_P(CallTest, HasItsClass) {
    if (GetParam().kind != nullptr) {
        EXPECT_EQ(classOf(GetParam().glsl), GetParam().kind);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Mapped, CallTest,
    testing::Values(
        C{"mix(v2, w2, f)", "(lerp( v2,  w2,  f))", "vec2"},
        C{"mix(f, g, b)", "(lerp( f,  g,  b))", "float"}, C{"mix(v2, w2)", "", "float"},
        C{"mix()", "", "float"}, C{"mix(v2, w2, f, g)", "", "float"},
        C{"atan(f)", "atan( f)", "float"}, C{"atan(f, g)", "atan2( f,  g)", "float"},
        C{"atan(v2)", "atan( v2)", "vec2"}, C{"atan(v2, v3)", "atan2( v2,  v3)", "vec3"},
        C{"atan(v2, f)", "atan2( v2,  f)", "vec2"}, C{"atan()", ")", "float"},
        C{"atan(f, g, v3)", " f,  g,  v3)", "vec3"},
        C{"atan(v3, i2 + k2)", "atan2( v3, ( i2 +  k2))", "float"},
        C{"atan(i2 + k2, v3)", "atan2(( i2 +  k2),  v3)", "vec3"},
        C{"atan(i, f)", "atan2( i,  f)", "int"}, C{"fract(f)", "(( f) - floor( f))", "float"},
        C{"fract(v3)", "(( v3) - floor( v3))", "vec3"},
        C{"fract(f, g)", "(( f) - floor( f))", "float"}, C{"fract()", "(() - floor())", "null"},
        C{"fract(fract(f))", "(((( f) - floor( f))) - floor((( f) - floor( f))))", "float"}));

INSTANTIATE_TEST_SUITE_P(
    Comparisons, CallTest,
    testing::Values(C{"lessThan(f, g)", "gloabal_lessThan( f,  g)", "float"},
                    C{"lessThan(v2, w2)", "gloabal_lessThan2( v2,  w2)", "vec2"},
                    C{"lessThan(v3, w3)", "gloabal_lessThan3( v3,  w3)", "vec3"},
                    C{"lessThan(v4, w4)", "gloabal_lessThan4( v4,  w4)", "vec4"},
                    C{"greaterThan(f, g)", "gloabal_greaterThan( f,  g)", "float"},
                    C{"greaterThan(v2, w2)", "gloabal_greaterThan2( v2,  w2)", "vec2"},
                    C{"greaterThan(v3, w3)", "gloabal_greaterThan3( v3,  w3)", "vec3"},
                    C{"greaterThan(v4, w4)", "gloabal_greaterThan4( v4,  w4)", "vec4"},
                    C{"lessThan(v4, f)", "gloabal_lessThan( v4,  f)",
                      "float"},  // the second decides
                    C{"lessThan(i2, k2)", "", "ivec2"}, C{"lessThan(f, i)", "", "int"},
                    C{"greaterThan(v2, s)", "", "other"}, C{"greaterThan(f)", "", "float"},
                    C{"lessThan(f, g, h)", "", "float"}));

INSTANTIATE_TEST_SUITE_P(
    Inputs, CallTest,
    testing::Values(
        C{"INPUT(v2)", "INPUT1.Sample(INPUT1_SAMPLER, GLOBAL_TRANS_TC( v2)).zyxw", "vec4"},
        C{"INPUT1(v2)", "INPUT1.Sample(INPUT1_SAMPLER, GLOBAL_TRANS_TC( v2)).zyxw", "vec4"},
        C{"INPUT12(v2)", "INPUT12.Sample(INPUT12_SAMPLER, GLOBAL_TRANS_TC( v2)).zyxw", "vec4"},
        C{"INPUT1(v2, f)", "INPUT1.Sample(INPUT1_SAMPLER, GLOBAL_TRANS_TC( v2)).zyxw", "vec4"},
        C{"INPUT2()", "INPUT2.Sample(INPUT2_SAMPLER, GLOBAL_TRANS_TC()).zyxw", "vec4"},
        C{"AUDIO_INPUT(v2)", "AUDIO_INPUT.Sample(AUDIO_INPUT_SAMPLER, GLOBAL_TRANS_TC( v2)).zzzz",
          "vec4"},
        C{"AUDIO_INPUT1(v2)",
          "AUDIO_INPUT1.Sample(AUDIO_INPUT1_SAMPLER, GLOBAL_TRANS_TC( v2)).zzzz", "vec4"},
        C{"DEPTH_INPUT(v2)", "global_depth_input(INPUT1, INPUT1_SAMPLER, GLOBAL_TRANS_TC( v2))",
          "vec4"},
        C{"DEPTH_INPUT2(v2)", "global_depth_input(INPUT2, INPUT2_SAMPLER, GLOBAL_TRANS_TC( v2))",
          "vec4"},
        C{"INPUTS(v2)", "INPUTS( v2)", "vec2"}, C{"INPUT1a(v2)", "INPUT1a( v2)", "vec2"},
        C{"DEPTH_INPUT_2(v2)", "DEPTH_INPUT_2( v2)", "vec2"}, C{"DEPTH(v2)", "DEPTH( v2)", "vec2"},
        C{"input1(v2)", "input1( v2)", "vec2"}));

INSTANTIATE_TEST_SUITE_P(
    General, CallTest,
    testing::Values(
        C{"sin(f)", "sin( f)", "float"}, C{"cos(v2)", "cos( v2)", "vec2"},
        C{"max(f, g)", "max( f,  g)", "float"}, C{"min(v2, f)", "min( v2,  f)", "vec2"},
        C{"inversesqrt(f)", "rsqrt( f)", "float"}, C{"dFdx(v2)", "ddx( v2)", "vec2"},
        C{"dFdy(v3)", "ddy( v3)", "vec3"}, C{"mod(f, g)", "fmod( f,  g)", "float"},
        C{"texture(t, v2)", "AVOID_KEYWORD_CONFLICTS_texture( t,  v2)", "vec2"},
        C{"line(f)", "AVOID_KEYWORD_CONFLICTS_line( f)", "float"},
        C{"unknown()", "unknown()", "float"}, C{"distance(v2, w2)", "distance( v2,  w2)", "float"},
        C{"length(v3)", "length( v3)", "float"}, C{"dot(v4, w4)", "dot( v4,  w4)", "float"},
        C{"step(0.5, v2)", "step(0.5f,  v2)", "vec2"}, C{"pow(v2, f)", "pow( v2,  f)", "vec2"},
        C{"clamp(f, 0.0, 1.0)", "clamp( f, 0.0f, 1.0f)", "float"}));

// float < int < double < vec2 < vec3 < vec4 < ivec2 < ivec3 < ivec4 < mat2 < mat3 < mat4
INSTANTIATE_TEST_SUITE_P(
    WidestArgument, CallTest,
    testing::Values(C{"p(f, i)", "p( f,  i)", "int"}, C{"p(i, f)", "p( i,  f)", "int"},
                    C{"p(d, i)", "p( d,  i)", "double"}, C{"p(d, v2)", "p( d,  v2)", "vec2"},
                    C{"p(v3, v2)", "p( v3,  v2)", "vec3"}, C{"p(v4, i2)", "p( v4,  i2)", "ivec2"},
                    C{"p(i2, i3, i4)", "p( i2,  i3,  i4)", "ivec4"},
                    C{"p(m2, i4)", "p( m2,  i4)", "mat2"},
                    C{"p(m3, m4, m2)", "p( m3,  m4,  m2)", "mat4"}, C{"p(b)", "p( b)", "float"},
                    C{"p(s, u)", "p( s,  u)", "int"}, C{"p(b, s, t)", "p( b,  s,  t)", "float"}));

// ---- the vertex stage

TEST(VertexCallTest, SamplesALevel) {
    const std::string hlsl = printVertex(
        "out vec2 tc;\nvoid main() { INPUT2(tc); AUDIO_INPUT1(tc); DEPTH_INPUT(tc); "
        "DEPTH_INPUT3(tc); }");
    EXPECT_THAT(
        hlsl,
        HasSubstr(
            "INPUT2.SampleLevel(INPUT2_SAMPLER, GLOBAL_TRANS_TC(tc), 0.0f).zyxw;\n"
            "AUDIO_INPUT1.SampleLevel(AUDIO_INPUT1_SAMPLER, GLOBAL_TRANS_TC(tc), 0.0f).zzzz;\n"
            "global_depth_input_level(INPUT1, INPUT1_SAMPLER, GLOBAL_TRANS_TC(tc));\n"
            "global_depth_input_level(INPUT3, INPUT3_SAMPLER, GLOBAL_TRANS_TC(tc));\n"));
}

TEST(VertexCallTest, UserFunctionsTakeTheInputAlone) {
    EXPECT_THAT(printVertex("float f(float a) { return a; }\nfloat g() { return 1.0; }\n"
                            "void main() { f(1.0); g(); }"),
                HasSubstr("f(1.0f, input);\ng(input);\n"));
}

TEST(VertexCallTest, ALocalCalledIsVertexShaderMakesAFunctionOne) {
    EXPECT_THAT(
        printFragment("void f(bool isVertexShader) { INPUT1(tc2()); }"),
        HasSubstr("void f(bool isVertexShader, VertexInput input) {\n"
                  "INPUT1.SampleLevel(INPUT1_SAMPLER, GLOBAL_TRANS_TC(tc2()), 0.0f).zyxw;"));
}

// ---- user functions

TEST(UserFunctionTest, TakesHiddenArgumentsBehindItsDefinitionOnly) {
    const std::string hlsl = printFragment(
        "void before() { foo(1.0); }\n"
        "vec3 foo(float a) { return foo(a); }\n"
        "vec3 bar() { return foo(2.0); }\n"
        "void after() { foo(1.0).rg; bar().rg; }\n");
    EXPECT_THAT(hlsl, HasSubstr("{\nfoo(1.0f);\n"));
    EXPECT_THAT(hlsl, HasSubstr("return foo( a);\n"));  // unknown in its own body
    EXPECT_THAT(hlsl, HasSubstr("return foo(2.0f, input, gl_FragCoord);\n"));
    EXPECT_THAT(hlsl, HasSubstr("foo(1.0f, input, gl_FragCoord).xy;\n"
                                "bar(input, gl_FragCoord).xy;\n"));
}

TEST(UserFunctionTest, AfterAPrototypeItCountsAsDefinedButHasNoResultType) {
    const std::string hlsl = printFragment("vec3 foo(float a);\nvoid f() { foo(1.0).rg; }\n");
    EXPECT_THAT(hlsl, HasSubstr("foo(1.0f, input, gl_FragCoord).rg;\n"));
}

TEST(UserFunctionTest, ResultIsThatOfItsReturnTypeWhateverTheArguments) {
    const std::string hlsl = printFragment(
        "float dot(mat4 a) { return 1.0; }\nvec2 length(mat4 a) { return vec2(1.0, 2.0); }\n"
        "void nothing() { }\n"
        "void f(mat4 m, vec2 v) { length(m).rg; length(m) == v; nothing() == v; }\n");
    EXPECT_THAT(hlsl, HasSubstr("length( m, input, gl_FragCoord).xy;\n"
                                "(global_is_equal_vec2(length( m, input, gl_FragCoord),  v));\n"
                                "(nothing(input, gl_FragCoord) ==  v);\n"));
}

TEST(UserFunctionTest, ACallOfTheAuthorsOwnMaxReachesTheBuiltIn) {
    const std::string hlsl =
        printFragment("float max(float a) { return a; }\nvoid f() { max(1.0); }\n");
    EXPECT_THAT(hlsl, HasSubstr("float AVOID_KEYWORD_CONFLICTS_max(float a, "));
    EXPECT_THAT(hlsl, HasSubstr("{\nmax(1.0f);\n"));
}

TEST(UserFunctionTest, ARenamedBuiltInIsLookedUpUnderItsNewName) {
    const std::string hlsl = printFragment(
        "float mod(float a) { return a; }\nvoid f() { mod(1.0); }\n"
        "float fmod(float a) { return a; }\nvoid g() { mod(1.0); }\n");
    EXPECT_THAT(hlsl, HasSubstr("{\nfmod(1.0f);\n"));
    EXPECT_THAT(hlsl, HasSubstr("{\nfmod(1.0f, input, gl_FragCoord);\n"));
}

TEST(UserFunctionTest, AMappedNameNeverReachesIt) {
    EXPECT_THAT(printFragment("float fract(float a) { return a; }\nvoid f() { fract(1.0); }\n"),
                HasSubstr("((1.0f) - floor(1.0f));\n"));
}

// ---- arguments that count twice

TEST(TwofoldWalkTest, ANumberedDepthInputInsideACallReadsThePicture) {
    EXPECT_EQ(expression("sin(DEPTH_INPUT2(v2))"),
              "sin(INPUT2.Sample(INPUT2_SAMPLER, GLOBAL_TRANS_TC( v2)).zyxw)");
    EXPECT_EQ(expression("vec4(DEPTH_INPUT2(v2))"),
              "float4(INPUT2.Sample(INPUT2_SAMPLER, GLOBAL_TRANS_TC( v2)).zyxw)");
    EXPECT_EQ(expression("float(DEPTH_INPUT3(v2))"),
              "float(INPUT3.Sample(INPUT3_SAMPLER, GLOBAL_TRANS_TC( v2)).zyxw)");
}

TEST(TwofoldWalkTest, ABareDepthInputStaysOne) {
    EXPECT_EQ(expression("sin(DEPTH_INPUT(v2))"),
              "sin(global_depth_input(INPUT1, INPUT1_SAMPLER, GLOBAL_TRANS_TC( v2)))");
}

TEST(TwofoldWalkTest, ArgumentsThatAreWalkedOnceKeepTheDepth) {
    const std::string depth = "global_depth_input(INPUT2, INPUT2_SAMPLER, GLOBAL_TRANS_TC( v2))";
    EXPECT_EQ(expression("mix(DEPTH_INPUT2(v2), v4, f)"), "(lerp(" + depth + ",  v4,  f))");
    EXPECT_EQ(expression("fract(DEPTH_INPUT2(v2))"), "((" + depth + ") - floor(" + depth + "))");
    EXPECT_EQ(expression("atan(DEPTH_INPUT2(v2))"), "atan(" + depth + ")");
    EXPECT_EQ(expression("lessThan(v4, DEPTH_INPUT2(v2))"),
              "gloabal_lessThan4( v4, " + depth + ")");
    EXPECT_EQ(expression("INPUT1(DEPTH_INPUT2(v2))"),
              "INPUT1.Sample(INPUT1_SAMPLER, GLOBAL_TRANS_TC(" + depth + ")).zyxw");
    EXPECT_EQ(expression("vec2(DEPTH_INPUT2(v2), f)"), "float2(" + depth + ",  f)");
    EXPECT_EQ(expression("DEPTH_INPUT2(v2) * f"), "(" + depth + " *  f)");
}

TEST(TwofoldWalkTest, DepthInsideAMappedCallInsideAGeneralOneReadsThePicture) {
    EXPECT_EQ(expression("sin(mix(DEPTH_INPUT2(v2), v4, f))"),
              "sin((lerp(INPUT2.Sample(INPUT2_SAMPLER, GLOBAL_TRANS_TC( v2)).zyxw,  v4,  f)))");
    EXPECT_EQ(expression("DEPTH_INPUT2(sin(DEPTH_INPUT3(v2)).xy)"),
              "global_depth_input(INPUT2, INPUT2_SAMPLER, GLOBAL_TRANS_TC(sin(INPUT3.Sample("
              "INPUT3_SAMPLER, GLOBAL_TRANS_TC( v2)).zyxw).xy))");
}

TEST(TwofoldWalkTest, EachCallIsWalkedForItself) {
    const std::string depth = "global_depth_input(INPUT2, INPUT2_SAMPLER, GLOBAL_TRANS_TC( v2))";
    const std::string image = "INPUT2.Sample(INPUT2_SAMPLER, GLOBAL_TRANS_TC( v2)).zyxw";
    EXPECT_EQ(expression("DEPTH_INPUT2(v2) + sin(DEPTH_INPUT2(v2)) + DEPTH_INPUT2(v2)"),
              "((" + depth + " + sin(" + image + ")) + " + depth + ")");
}

TEST(TwofoldWalkTest, ABoolConstructorWalksItsArgumentToo) {
    // Printed once with no text, so the tree has changed when the outer call prints it again.
    EXPECT_EQ(statements("p(bool(DEPTH_INPUT2(v2)));"), "p(true);\n");
}

// ---- messages

TEST(CallMessageTest, NamesLineAndColumnOfTheCall) {
    Translation t;
    t.translate(
        "vec2 u;\nvoid f(ivec2 i) {\n  lessThan(i, i);\n  greaterThan(i);\n"
        "  lessThan();\n  greaterThan(i, i);\n  g(h(u + i), u);\n}\n");
    // The position is behind the name: the node is made when its bracket is still ahead.
    EXPECT_THAT(t.log, ElementsAre("error line :3,11  lessThan is wrong",
                                   "error line :4,14  greaterThan parameters size is wrong",
                                   "error line :5,11  lessThan parameters size is wrong",
                                   "error line :6,14  greaterThan is wrong",
                                   "error line :7,6  function call param is empty"));
}

TEST(CallMessageTest, EachArgumentWithoutAClassIsReported) {
    const Translation t = translateStatements("p(i2 + k2, f, i2 + k2);");
    EXPECT_EQ(t.log.size(), 2U);
    EXPECT_EQ(t.text, "p(( i2 +  k2),  f, ( i2 +  k2));\n");
}

TEST(CallMessageTest, NestingReportsASiteOnce) {
    EXPECT_EQ(translateStatements("p(p(p(p(i2 + k2))));").log.size(), 1U);
    EXPECT_EQ(translateStatements("p(p(DEPTH_INPUT2(v2), i2 + k2));").log.size(), 1U);
    EXPECT_EQ(translateStatements("vec2(vec2(lessThan(i2, k2)));").log.size(), 1U);
}

TEST(CallMessageTest, NoneForKnownArguments) {
    EXPECT_THAT(translateStatements("p(f, v2, s, t, (f, g));").log, IsEmpty());
}

// ---- pieces of 4096 bytes and more

// mix(a, b, c) whose text has the given length.
std::string mixOfSize(size_t size, std::string& hlsl) {
    const std::string name(size - std::string("(lerp( , 1.0f, 1.0f))").size(), 'n');
    hlsl = "(lerp( " + name + ", 1.0f, 1.0f))";
    return "void f(float " + name + ") { mix(" + name + ", 1.0, 1.0); }";
}

TEST(PieceLimitTest, FourThousandAndNinetyFiveBytesFit) {
    std::string hlsl;
    Translation t;
    t.translate(mixOfSize(4095, hlsl));
    ASSERT_EQ(hlsl.size(), 4095U);
    EXPECT_THAT(t.text, HasSubstr(hlsl + ";\n"));
    EXPECT_THAT(t.log, IsEmpty());
}

TEST(PieceLimitTest, OneMoreIsCut) {
    std::string hlsl;
    Translation t;
    t.translate(mixOfSize(4096, hlsl));
    ASSERT_EQ(hlsl.size(), 4096U);
    EXPECT_THAT(t.text, HasSubstr(hlsl.substr(0, 4095) + ";\n"));
    EXPECT_THAT(t.log, ElementsAre("printDX print size is larger than 4096"));
}

TEST(PieceLimitTest, ALongComparisonIsCut) {
    const std::string name(2500, 'n');
    Translation t;
    t.translate("void f(vec2 " + name + ") { lessThan(" + name + ", " + name + "); }");
    const std::string uncut = "gloabal_lessThan2( " + name + ",  " + name + ")";
    EXPECT_THAT(t.text, HasSubstr("{\n" + uncut.substr(0, 4095) + ";\n"));
    EXPECT_THAT(t.log, ElementsAre("printDX print size is larger than 4096"));
}

TEST(PieceLimitTest, LongNamesAreCutWhereverTheyStand) {
    const std::string name(5000, 'n');
    const std::string cut = name.substr(0, 4094);
    Translation t;
    t.translate("vec4 g;\nvoid " + name + "() { }\nvoid f(float " + name + ") { " + name + "; " +
                name + "(); g." + name + "; }\n");
    ASSERT_EQ(t.error, "");
    EXPECT_THAT(t.text, HasSubstr("void " + cut + "VertexOutput input"));
    EXPECT_THAT(t.text, HasSubstr("void f(float " + cut + ", VertexOutput input"));
    EXPECT_THAT(t.text, HasSubstr("{\n " + cut + ";\n" + cut + "ninput, gl_FragCoord);\n g." + cut +
                                  ";\n"));
    EXPECT_EQ(t.log.size(), 5U);
}

}  // namespace
}  // namespace glsl
