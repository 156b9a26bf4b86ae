#include "DirectXEffectMgr/Source/core/source_assembly.h"

#include <gtest/gtest.h>

#include "DirectXEffectMgr/Source/core/fixed_texts.h"
#include "log_capture.h"
#include "memory_files.h"

namespace {

// The fixed texts once more in another form, so that a slip in either shows.
constexpr const char* kFragmentText =
    "\n#define __ANDROID__\n#define customize_in in\n#define highp \n#define mediump \n#defin"
    "e lowp \nvec2 TransTc(vec2 tc)\n{ \n    return vec2(tc.x, 1.0 - tc.y); \n}\nvec2  MovTc("
    "vec2 tc)\n{ \n    return tc; \n}\nvec4 TransV(vec4 v)\n{ \n    v.y*=-1.0; \n    return v"
    "; \n}\nvec4 gl_FragCoord;\n";

constexpr const char* kVertexText =
    "\nin vec4 position;\nin vec4 texcoord;\nout vec4 gl_Position;\nout vec2 tc;\n#define cus"
    "tomize_in in\n#define customize_out out\n#define highp \n#define mediump \n#define lowp "
    "\nvec2 TransTc(vec2 tc)\n{ \n    return vec2(tc.x, 1.0 - tc.y); \n}\nvec2  MovTc(vec2 tc"
    ")\n{ \n    return tc; \n}\nvec4 TransV(vec4 v)\n{ \n    v.y*=-1.0; \n    return v; \n}\n";

constexpr const char* kFixedVertexText =
    "\nstruct VertexInput\n{\n    float4 position : position;\n    float4 texcoord : texcoord"
    ";\n};\n\nstruct VertexOutput\n{\n    float4 gl_Position : SV_Position;\n    float2 tc : "
    "TEXCOORD0;\n};\n\nvoid main(){\n    return;\n}\n\nVertexOutput mainVS(VertexInput input)"
    "\n{\n    VertexOutput output;\n    output.gl_Position = float4(input.position.xy * 2.0 -"
    " 1.0, 0.0, 1.0);\n    output.tc = (input.position.xy - 0.5) + 0.5;\n    return output;\n"
    "}\n";

TEST(FixedTextsTest, AreThose) {
    EXPECT_EQ(kFragmentPrelude, kFragmentText);
    EXPECT_EQ(kVertexPrelude, kVertexText);
    EXPECT_EQ(kFixedVertexShader, kFixedVertexText);
}

struct TextCase {
    const char* text;
    const char* result;
};
void PrintTo(const TextCase& c, std::ostream* out) {
    *out << '"' << c.text << '"';
}

class ExpandPrefixTest : public testing::TestWithParam<TextCase> {};

TEST_P(ExpandPrefixTest, Expands) {
    EXPECT_EQ(ExpandPrefix(GetParam().text, "PREFIX"), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ExpandPrefixTest,
    testing::Values(TextCase{"", ""}, TextCase{"no call", "no call"},
                    TextCase{"PREFIX(strength)", "PREFIX_strength"},
                    TextCase{"a * PREFIX(b) + PREFIX(c);", "a * PREFIX_b + PREFIX_c;"},
                    TextCase{"PREFIX(a)PREFIX(b)", "PREFIX_aPREFIX_b"},
                    TextCase{"PREFIX(iResolution)", "iResolution"},
                    TextCase{"PREFIX(iResolutionOrig).x", "iResolutionOrig.x"},
                    TextCase{"PREFIX( iResolution)", "PREFIX_ iResolution"},
                    TextCase{"PREFIX(iResolutionX)", "PREFIX_iResolutionX"},
                    TextCase{"PREFIX(a(b))", "PREFIX_a(b)"},
                    TextCase{"PREFIX(a(b)(c(d)))e)", "PREFIX_a(b)(c(d))e)"},
                    TextCase{"PREFIX(a[3])", "PREFIX_a[3]"}, TextCase{"PREFIX()", "PREFIX_"},
                    // What is inside stays, a call too.
                    TextCase{"PREFIX(PREFIX(a))", "PREFIX_PREFIX(a)"},
                    // Without a closing parenthesis everything is inside.
                    TextCase{"x PREFIX(a; y", "x PREFIX_a; y"}, TextCase{"PREFIX(", "PREFIX_"},
                    TextCase{"PREFIX(a(b)", "PREFIX_a(b)"},
                    TextCase{"PREFIX(iResolution", "iResolution"},
                    // Only the letters count, not what stands before them.
                    TextCase{"MYPREFIX(a)", "MYPREFIX_a"}, TextCase{"PREFIX (a)", "PREFIX (a)"},
                    TextCase{"prefix(a)", "prefix(a)"}, TextCase{"// PREFIX(a)", "// PREFIX_a"},
                    TextCase{"PREFIX(a\nb)\n", "PREFIX_a\nb\n"},
                    TextCase{"PREFIX_DRAW_INSTANCE(a)", "PREFIX_DRAW_INSTANCE(a)"}));

TEST(ExpandPrefixTest, AnotherPrefixAndBytesOfAllKinds) {
    EXPECT_EQ(ExpandPrefix("PREFIX(a)", "fx1"), "fx1_a");
    const std::string text("a\0PREFIX(\0\xFF)z", 13);
    EXPECT_EQ(ExpandPrefix(text, "P"), std::string("a\0P_\0\xFFz", 7));
}

class ExpandDrawInstanceTest : public testing::TestWithParam<TextCase> {};

TEST_P(ExpandDrawInstanceTest, Expands) {
    EXPECT_EQ(ExpandDrawInstance(GetParam().text, "PREFIX"), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ExpandDrawInstanceTest,
    testing::Values(TextCase{"", ""}, TextCase{"PREFIX_DRAW_INSTANCE(x)", "PREFIX_x"},
                    TextCase{"PREFIX_DRAW_INSTANCE(iResolution)", "PREFIX_iResolution"},
                    TextCase{"PREFIX_DRAW_INSTANCE(a(b)) c", "PREFIX_a(b) c"},
                    TextCase{"PREFIX_DRAW_INSTANCE(a", "PREFIX_a"},
                    TextCase{"PREFIX(x)", "PREFIX(x)"}));

TEST(ExpandPrefixTest, ManyCallsTakeLinearTime) {
    std::string text;
    std::string result;
    for (int i = 0; i < 200000; ++i) {
        text += "PREFIX(a)+";
        result += "PREFIX_a+";
    }
    EXPECT_TRUE(ExpandPrefix(text, "PREFIX") == result);
    const std::string open(1000000, '(');
    EXPECT_TRUE(ExpandPrefix("PREFIX(" + open, "PREFIX") == "PREFIX_" + open);
}

}  // namespace
