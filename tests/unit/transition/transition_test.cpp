#include "transition/transition.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace transition {
namespace {

TEST(TransitionTest, BecomesAnEffectLineByLine) {
    const Effect effect = adapt(
        "uniform float size; // = 0.2\n"
        "vec4 transition(vec2 uv) {\n"
        "    return mix(getFromColor(uv), getToColor(uv * size), progress);\n"
        "}\n",
        {});
    EXPECT_EQ(effect.error, "");
    EXPECT_EQ(effect.glsl,
              " // = 0.2\n"
              "vec4 FUNCNAME(vec2 uv) {\n"
              "    return mix(INPUT1(uv), INPUT2(uv * PREFIX(size)), PREFIX(progress));\n"
              "}\n");
    ASSERT_EQ(effect.params.size(), 3u);
    EXPECT_EQ(effect.params[0].name, "progress");
    EXPECT_EQ(effect.params[1].name, "ratio");
    EXPECT_EQ(effect.params[2].name, "size");
    EXPECT_TRUE(effect.rewrites.empty());
}

TEST(TransitionTest, BoolAndIntegerVectorParametersAreConvertedAtTheirUses) {
    const Effect effect = adapt(
        "uniform bool flip; // = true\nuniform ivec2 count; // = ivec2(3)\n"
        "vec4 transition(vec2 uv) { return flip ? getFromColor(uv * vec2(count)) : vec4(0.0); }",
        {});
    EXPECT_THAT(effect.glsl, testing::HasSubstr("(PREFIX(flip) != 0) ?"));
    EXPECT_THAT(effect.glsl, testing::HasSubstr("vec2(ivec2(PREFIX(count)))"));
}

TEST(TransitionTest, SamplerParameterBecomesAFurtherInput) {
    const Effect effect = adapt(
        "uniform sampler2D luma;\n"
        "vec4 transition(vec2 uv) { return texture2D(luma, uv) + texture(luma, uv.yx); }",
        {});
    EXPECT_THAT(effect.samplers, testing::ElementsAre("luma"));
    EXPECT_EQ(effect.glsl, "\nvec4 FUNCNAME(vec2 uv) { return INPUT3( uv) + INPUT3( uv.yx); }");
}

TEST(TransitionTest, WithoutRewritesOnlyNamesChange) {
    const char* text = "vec4 transition(vec2 uv) { bool b; return vec4(mod(uv.x, 0.5)); }";
    EXPECT_THAT(adapt(text, {false}).glsl, testing::HasSubstr("bool b; return vec4(mod("));
    EXPECT_TRUE(adapt(text, {false}).rewrites.empty());
    EXPECT_EQ(adapt(text, {true}).rewrites.size(), 2u);
}

TEST(TransitionTest, TextWithoutTheEntryIsRefused) {
    EXPECT_NE(adapt("float f() { return 1.0; }", {}).error, "");
    EXPECT_NE(adapt("", {}).error, "");
}

TEST(TransitionTest, HostileTextsEnd) {
    for (const char* text : {"vec4 transition(", "vec4 transition(vec2 uv) { mod(mod(mod(",
                             "vec4 transition(vec2 a) { ? : ? : ( [ { }",
                             "vec4 transition(vec2 a) {} uniform uniform uniform",
                             "vec4 transition(vec2 a) {} #define", "vec4 transition(/*"}) {
        const Effect effect = adapt(text, {});
        const std::string given(text);
        EXPECT_EQ(std::count(effect.glsl.begin(), effect.glsl.end(), '\n'),
                  effect.error.empty() ? std::count(given.begin(), given.end(), '\n') : 0);
    }
}

}  // namespace
}  // namespace transition
