#include "glsl/hlsl/print_tu.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "glsl/hlsl/prelude.h"
#include "translate.h"

namespace glsl {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char* kOutputStruct =
    "\nstruct VertexOutput\n{\n    float4 gl_Position : SV_Position;\n    float2 tc : TEXCOORD0;\n";

constexpr const char* kWrapper =
    "\n\nfloat4 mainPS(VertexOutput input) : SV_TARGET\n{\n"
    "    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;\n"
    "    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);\n"
    "    _tc.y = 1.0 - _tc.y;\n"
    "    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;\n"
    "}\n    ";

constexpr const char* kWrapperWithVertexShader =
    "\n\nfloat4 mainPS(VertexOutput input) : SV_TARGET\n{\n"
    "    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;\n"
    "    float4 gl_FragCoord = float4(_tc * iResolution.xy, input.gl_Position.z / "
    "input.gl_Position.w, 1.0);\n"
    "    return FUNCNAME(input.tc, input, gl_FragCoord).zyxw;\n"
    "}\n    ";

Translation fragment(const std::string& source, uint32_t inputs = 0, uint32_t audio = 0) {
    Translation t;
    t.inputs = inputs;
    t.audio = audio;
    t.translate(source);
    EXPECT_EQ(t.error, "");
    return t;
}

Translation vertex(const std::string& source) {
    Translation t;
    t.isVertex = true;
    t.translate(source);
    EXPECT_EQ(t.error, "");
    return t;
}

const std::string kPreludeString(kPrelude);

// ---- the prelude

// Sum of all bytes, each times its place: notices a byte that changed or moved.
uint64_t checksum(std::string_view bytes) {
    uint64_t sum = 0;
    uint64_t place = 0;
    for (const char c : bytes) {
        sum += ++place * static_cast<unsigned char>(c);
    }
    return sum;
}

TEST(PreludeTest, HasItsSizeAndItsPieces) {
    EXPECT_EQ(kPrelude.size(), 3762U);
    EXPECT_EQ(kPrelude.substr(0, 35), "\nfloat2 GLOBAL_TRANS_TC(float2 tc){");
    for (const char* piece :
         {"float2 GLOBAL_TRANS_TC(float2 tc){\n    return float2(tc.x, 1.0 - tc.y);\n}\n\n",
          "bool global_is_equal_vec2(float2 v0, float2 v1) {\n    if(v0.x == v1.x && v0.y == "
          "v1.y)\n"
          "        return true;\n    return false;\n}\n\n",
          "bool global_is_not_equal_vec3(float3 v0, float3 v1) {\n"
          "    if(v0.x != v1.x || v0.y != v1.y || v0.z != v1.z)\n        return true;\n"
          "    return false;\n}\n\n",
          "float4 gloabal_float4_Constructor(float value){\n"
          "    return float4(value, value, value, value);\n}\n"
          "int2 gloabal_int2_Constructor(int value){\n    return int2(value, value);\n}\n",
          "float2x2 gloabal_float2x2_Constructor(float value){\n"
          "    return float2x2(value, 0.0f, value, 0.0f);\n}\n",
          "float gloabal_lessThan(float a, float b){\n    return a < b ? 1.0 : 0.0;\n}\n",
          "float2 gloabal_greaterThan2(float2 a, float2 b){\n"
          "    return float2((a.x > b.x ? 1.0 : 0.0), (a.y > b.y ? 1.0 : 0.0));\n}\n",
          "    // N card is ok, i card is not ok!\n",
          "    return float4(depth, depth, depth, depth);\n"
          "    */\n}\n"}) {
        EXPECT_THAT(kPreludeString, HasSubstr(piece));
    }
}

TEST(PreludeTest, IsTheSameToTheByte) {
    EXPECT_EQ(checksum(kPrelude), 535121372U);
}

// ---- whole stages

TEST(FragmentUnitTest, AnEmptySourceHasStructAndWrapper) {
    EXPECT_EQ(fragment("").text, kPreludeString + kOutputStruct + "\n};\n" + "\n" + kWrapper);
}

TEST(VertexUnitTest, AnEmptySourceHasBothStructsAndTheStaticOutputs) {
    EXPECT_EQ(vertex("").text,
              "static float4 gl_Position;\nstatic float2 tc;\n" + kPreludeString +
                  "\nstruct VertexInput\n{\n\n};\n" + kOutputStruct + "\n};\n" + "\n" +
                  "\n\nVertexOutput mainVS(VertexInput input)\n{\n    VertexOutput output;\n"
                  "    main(input);\n    output.gl_Position = gl_Position;\n    output.tc = tc;\n"
                  "\n    output.gl_Position.y *= -1.0f;\n    return output;\n}\n    ");
}

TEST(FragmentUnitTest, APassThroughEffectPrintsLineByLine) {
    EXPECT_EQ(bodyOf(fragment("vec4 FUNCNAME(vec2 tc) { return INPUT1(tc) * 0.5; }", 1).text),
              "float4 FUNCNAME(float2 tc, VertexOutput input, float4 gl_FragCoord) {\n"
              "return (INPUT1.Sample(INPUT1_SAMPLER, GLOBAL_TRANS_TC( tc)).zyxw * 0.5f);\n"
              "return float4(gloabal_float4_Constructor(0.0f));\n"
              "}\n");
}

TEST(FragmentUnitTest, TheWrapperGoesByTheVertexShader) {
    Translation t;
    t.hasVertexShader = true;
    t.translate("");
    EXPECT_EQ(t.text, kPreludeString + kOutputStruct + "\n};\n\n" + kWrapperWithVertexShader);
}

TEST(UnitTest, EverythingStandsInItsPlace) {
    const std::string source =
        "#version 330\n#extension GLX : require\n"
        "uniform B { vec2 block; };\nfloat before = 1.0;\nuniform float u;\nin vec2 q;\n"
        "struct S { float a; };\nconst float PI = 3.14;\nvec4 gl_FragCoord;\nuniform vec2 w[2];\n"
        "float f();\nvoid g() { }\nS after;\n";
    EXPECT_EQ(fragment(source, 1, 1).text,
              "#define PI (3.1400001049041748f)\n" + kPreludeString + kOutputStruct + "\n};\n" +
                  "\ncbuffer MyConstantBuffer : register(b0)\n{\nfloat u;\nfloat2 w[2];\n\n};\n"
                  "Texture2D INPUT1 : register(t0);\nSamplerState INPUT1_SAMPLER : register(s0);\n"
                  "Texture2D AUDIO_INPUT1 : register(t1);\n"
                  "SamplerState AUDIO_INPUT1_SAMPLER : register(s1);\n\n"
                  "#version 330 core\n#extension GLX : require\n"
                  "struct S {\nfloat a;\n};\n"
                  "static float before = 1.0f;\nstatic struct S after;\n"
                  "B {\nfloat2 block;\n};\n"
                  "float f(VertexOutput input, float4 gl_FragCoord);\n"
                  "void g(VertexOutput input, float4 gl_FragCoord) {\nreturn ;\n}\n" +
                  kWrapper);
}

TEST(UnitTest, AppendsToWhatIsThere) {
    Translation t;
    t.text = "// mine\n";
    t.translate("");
    EXPECT_EQ(t.text.substr(0, 30), "// mine\n" + kPreludeString.substr(0, 22));
}

// ---- constants, uniforms, textures, directives

TEST(ConstantTest, BecomesAMacroAheadOfThePrelude) {
    EXPECT_EQ(headOf(fragment("const int N = 2 + 1;\nconst vec2 V = vec2(1.0, N);\n"
                              "const float line = 0.5;\n")
                         .text),
              "#define N (3)\n#define V (float2(1.0f,  N))\n"
              "#define AVOID_KEYWORD_CONFLICTS_line (0.5f)\n");
}

TEST(ConstantTest, IsKnownOnlyBehindItsLine) {
    // Its own name and later ones read as members of the input.
    EXPECT_EQ(headOf(fragment("float b;\nconst vec2 A = vec2(b, 1.0);\n").text),
              "#define A (float2( b, 1.0f))\n");
    EXPECT_EQ(headOf(fragment("const vec2 A = vec2(b(), 1.0);\nfloat b;\n").text),
              "#define A (float2(b(), 1.0f))\n");
}

TEST(ConstantTest, WithoutAValueLeavesTheLineOpen) {
    arena* const home = arena::create(1024);
    auto* unit = home->make<astTU>(*home, 5U);
    auto* constant = home->make<astGlobalVariable>(1U, 1U);
    constant->name = "x";
    constant->storage = kStorageConst;
    unit->globals.push_back(*home, constant);
    std::string hlsl;
    std::string varyings;
    printTU(*unit, 0, 0, false, hlsl, varyings, nullptr, false);
    EXPECT_EQ(headOf(hlsl), "#define x");
    home->release();
}

TEST(UniformTest, StandInDeclarationOrderInOneBuffer) {
    EXPECT_THAT(
        fragment("uniform int PREFIX_mode;\nuniform float PLACEHOLDER_VALUE_0;\n"
                 "uniform vec2 iResolution;\nuniform mat3 m;\nuniform vec4 a[4];\n"
                 "layout(location = 2) uniform flat highp float line;\n")
            .text,
        HasSubstr("\n};\n\ncbuffer MyConstantBuffer : register(b0)\n{\n"
                  "int PREFIX_mode;\nfloat PLACEHOLDER_VALUE_0;\nfloat2 iResolution;\n"
                  "float3x3 m;\nfloat4 a[4];\n"
                  "layout (location = 2) flat float AVOID_KEYWORD_CONFLICTS_line;\n\n};\n"));
}

TEST(UniformTest, MayHaveAValueAndASizeOfAConstant) {
    const Translation t =
        fragment("const int N = 3;\nuniform float u = 1.0;\nuniform vec2 a[N];\n");
    EXPECT_THAT(t.text, HasSubstr("{\nfloat u = 1.0f;\nfloat2 a[ N];\n\n};\n"));
}

TEST(UniformTest, WithoutAnyThereIsNoBuffer) {
    EXPECT_THAT(fragment("float a;\nin vec2 b;\nuniform B { float c; };\n").text,
                Not(HasSubstr("cbuffer")));
}

TEST(TextureTest, ImagesComeFirstAndAudioFollowsOnTheSameRun) {
    EXPECT_THAT(fragment("", 2, 1).text,
                HasSubstr("\n};\nTexture2D INPUT1 : register(t0);\n"
                          "SamplerState INPUT1_SAMPLER : register(s0);\n"
                          "Texture2D INPUT2 : register(t1);\n"
                          "SamplerState INPUT2_SAMPLER : register(s1);\n"
                          "Texture2D AUDIO_INPUT1 : register(t2);\n"
                          "SamplerState AUDIO_INPUT1_SAMPLER : register(s2);\n\n"));
}

struct DirectiveCase {
    const char* glsl;
    const char* hlsl;
};
class DirectiveTest : public testing::TestWithParam<DirectiveCase> {};
INSTANTIATE_TEST_SUITE_P(
    Forms, DirectiveTest,
    testing::Values(DirectiveCase{"#version 330\n", "#version 330 core\n"},
                    DirectiveCase{"#version 450 compatibility\n", "#version 450 compatibility\n"},
                    DirectiveCase{"#version 300 es\n", "#version 300 es\n"},
                    DirectiveCase{"#extension E : enable\n", "#extension E : enable\n"},
                    DirectiveCase{"#extension E : require\n", "#extension E : require\n"},
                    DirectiveCase{"#extension E : warn\n", "#extension E : warn\n"},
                    DirectiveCase{"#extension E : disable\n", "#extension E : disable\n"},
                    DirectiveCase{"#define X 1\n", ""}));

TEST_P(DirectiveTest, GoesIntoTheTextAsItStands) {
    EXPECT_EQ(bodyOf(fragment(GetParam().glsl).text), GetParam().hlsl);
}

// ---- the vertex stage's inputs and outputs

TEST(VertexUnitTest, InputsAreMembersWithSemantics) {
    EXPECT_THAT(
        vertex("in vec4 position;\nin vec4 position1;\nin vec2 a[3];\nin float line;\n").text,
        HasSubstr("\nstruct VertexInput\n{\n    float4 position : position;\n"
                  "    float4 position1_ : position1_;\n    float2 a : a;\n"
                  "    float AVOID_KEYWORD_CONFLICTS_line : AVOID_KEYWORD_CONFLICTS_line;\n"
                  "\n};\n"));
}

TEST(VertexUnitTest, OutputsAreStaticsCopiesAndVaryings) {
    const Translation t = vertex(
        "out vec4 gl_Position;\nout vec2 tc;\nout vec3 normal;\n"
        "out float line;\nout vec2 a[2];\n");
    const std::string varyings =
        "    float3 normal : __normal;\n"
        "    float AVOID_KEYWORD_CONFLICTS_line : __AVOID_KEYWORD_CONFLICTS_line;\n"
        "    float2 a[2] : __a;\n";
    EXPECT_EQ(headOf(t.text),
              "static float4 gl_Position;\nstatic float2 tc;\nstatic float3 normal;\n"
              "static float AVOID_KEYWORD_CONFLICTS_line;\nstatic float2 a[2];\n");
    EXPECT_EQ(t.varyings, varyings);
    EXPECT_THAT(t.text, HasSubstr(kOutputStruct + varyings + "\n};\n"));
    EXPECT_THAT(
        t.text,
        HasSubstr("    output.tc = tc;\n    output.normal = normal;\n"
                  "    output.AVOID_KEYWORD_CONFLICTS_line = AVOID_KEYWORD_CONFLICTS_line;\n"
                  "    output.a = a;\n\n    output.gl_Position.y *= -1.0f;\n"));
}

TEST(VertexUnitTest, VaryingsReachTheFragmentStage) {
    Translation first = vertex("out vec3 normal;\nvoid main() { normal = normal; }");
    Translation second;
    second.varyings = first.varyings;
    second.translate("in vec3 normal;\nvec4 FUNCNAME(vec2 tc) { normal.rg; }");
    EXPECT_THAT(second.text,
                HasSubstr(kOutputStruct + std::string("    float3 normal : __normal;\n\n};\n")));
    EXPECT_THAT(second.text, HasSubstr("input.normal.xy;\n"));
    EXPECT_EQ(second.varyings, first.varyings);
}

TEST(VertexUnitTest, AppendsToVaryingsThatAreThere) {
    Translation t;
    t.isVertex = true;
    t.varyings = "    float2 earlier : __earlier;\n";
    t.translate("out vec3 n;\n");
    EXPECT_EQ(t.varyings, "    float2 earlier : __earlier;\n    float3 n : __n;\n");
    EXPECT_THAT(t.text, HasSubstr(kOutputStruct + std::string("    float3 n : __n;\n\n};\n")));
}

TEST(VertexUnitTest, MainTakesTheInputAndReturnsNothing) {
    EXPECT_EQ(bodyOf(vertex("out vec4 gl_Position;\nin vec4 position;\n"
                            "void main() { gl_Position = position; }\n")
                         .text),
              "\nvoid main(VertexInput input)\n{\ngl_Position = input.position;\n\nreturn;\n}\n");
}

TEST(VertexUnitTest, MainIsNoFunctionThatCanBeCalledWithHiddenArguments) {
    EXPECT_THAT(vertex("void main() { }\nvoid f() { main(); }\n").text, HasSubstr("{\nmain();\n"));
}

TEST(FragmentUnitTest, MainIsAFunctionLikeAnyOther) {
    EXPECT_EQ(bodyOf(fragment("void main() { }").text),
              "void main(VertexOutput input, float4 gl_FragCoord) {\nreturn ;\n}\n");
}

TEST(VertexUnitTest, AnArraySizeIsWalkedForEachOfItsTexts) {
    // Three times: the static, the line of the struct, and with it the varyings.
    const Translation t = vertex("out vec2 a[DEPTH_INPUT2(1)];\n");
    EXPECT_THAT(t.text, HasSubstr("static float2 a[global_depth_input_level(INPUT2, "
                                  "INPUT2_SAMPLER, GLOBAL_TRANS_TC(1))];\n"));
    EXPECT_EQ(t.varyings,
              "    float2 a[INPUT2.SampleLevel(INPUT2_SAMPLER, GLOBAL_TRANS_TC(1), "
              "0.0f).zyxw] : __a;\n");
}

// ---- the scope around

TEST(ParentScopeTest, ItsEntriesAreSeenAndWritten) {
    Translation t;
    t.scope = std::make_shared<Environment>();
    t.scope->define("HAVE_FUNC_noise", makeBoolean(true));
    t.scope->define("noise_RETURN_TYPE", makeVec2({1, 1}));
    t.scope->define("HAVE_FUNC_f", makeObject(0));
    t.translate("void f() { noise(1.0).rg; }");
    EXPECT_THAT(t.text, HasSubstr("noise(1.0f, input, gl_FragCoord).xy;\n"));
    EXPECT_TRUE(isBoolean(t.scope->get("HAVE_FUNC_f")));
    EXPECT_FALSE(t.scope->has("f_RETURN_TYPE"));
}

TEST(ParentScopeTest, AStageFromOutsideChangesTheUsesAlone) {
    Translation t;
    t.scope = std::make_shared<Environment>();
    t.scope->define("isVertexShader", makeBoolean(true));
    t.translate("in vec2 q;\nvoid f() { q.rg; }");
    EXPECT_THAT(t.text, HasSubstr("void f(VertexInput input) {\nq.xy;\n"));
    EXPECT_THAT(t.text, HasSubstr("mainPS"));
}

TEST(ParentScopeTest, AFalseMarkKeepsTheAttribute) {
    Translation t;
    t.scope = std::make_shared<Environment>();
    t.scope->define("env__________isDidMatArraySubScriptObject", makeBoolean(false));
    t.translate("void f() { for (;;) 1.0; }");
    EXPECT_THAT(t.text, HasSubstr("\n[loop]\nfor(;;)1.0f;\n"));
    EXPECT_TRUE(t.scope->empty());  // the outermost loop has taken the mark away
}

// ---- marks of lines

TEST(LineMarkTest, EachStatementBeginsWhereItsMarkSays) {
    Translation t;
    t.withMarks = true;
    t.translate(
        "const float C = 1.0;\n"           // 1
        "uniform vec2 u;\n"                // 2
        "float g;\n"                       // 3
        "void f() {\n"                     // 4
        "  g = 1.0;\n"                     // 5
        "  for (int i = 0; i < 2; ++i)\n"  // 6
        "    u;\n"                         // 7
        "  mat2 m;\n"                      // 8
        "  for (;;) {\n"                   // 9
        "    m[0];\n"                      // 10
        "  }\n"                            // 11
        "}\n");
    std::string lines;
    size_t last = 0;
    for (const LineMark& mark : t.marks) {
        EXPECT_GE(mark.offset, last);
        last = mark.offset;
        std::string begin = t.text.substr(mark.offset, 12);
        begin.erase(std::min(begin.size(), begin.find('\n', 1)));
        lines += std::to_string(mark.line) + "|" + begin + "\n";
    }
    EXPECT_EQ(lines,
              "1|#define C (1\n2|float2 u;\n3|static float\n4|void f(Verte\n5| g = 1.0f;\n"
              "6|\n[loop]\n6|int i = 0; (\n7| u;\n8|float2x2 m =\n9|for(;;) {\n9| {\n"
              "10| m[0];\n4|return ;\n")
        << lines;
}

TEST(LineMarkTest, CostNothingInTheText) {
    Translation with;
    with.withMarks = true;
    Translation without;
    const std::string source = "out vec2 q;\nuniform vec2 u;\nvoid main() { for (;;) u; }\n";
    with.isVertex = without.isVertex = true;
    with.translate(source);
    without.translate(source);
    EXPECT_EQ(with.text, without.text);
    EXPECT_FALSE(with.marks.empty());
}

}  // namespace
}  // namespace glsl
