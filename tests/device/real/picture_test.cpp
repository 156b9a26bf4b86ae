// What an effect sees and what comes out: pixels on the real device. Every expected value follows
// from how the shader text is wrapped: the result's first and third channel are exchanged on the
// way into the B, G, R, A target and back on each read of an input; `tc` grows upwards from the
// lower left corner, and reads are turned over, so that pictures stay upright.

#include <cmath>

#include "real/pixel_host.h"

namespace {

using host::Effect;
using host::Mode;
using host::Picture;
using host::Pixel;
using host::PixelHost;
using host::samePicture;
using host::samePixel;
using host::testPicture;
using host::uniform;

class PictureTest : public PixelHost {};

TEST_F(PictureTest, PassThroughGivesTheInputBackByteForByte) {
    const Picture input = testPicture(67, 41);
    const Effect effect = makeEffect(host::kPass);
    effect->AddFlatInput(67, 41, input.pitch(), false);
    ASSERT_EQ(0, init(effect));
    setPicture(effect, 0, input);
    EXPECT_TRUE(samePicture(input, render(effect)));
}

TEST_F(PictureTest, AColourComesOutAsItWasReturned) {
    const Effect effect =
        readyEffect("vec4 FUNCNAME(vec2 tc) { return vec4(0.2, 0.4, 0.6, 0.8); }\n");
    EXPECT_TRUE(uniform({51, 102, 153, 204}, render(effect)));
}

TEST_F(PictureTest, TheCoordinateGrowsToTheRightAndUpwards) {
    const Effect effect = readyEffect("vec4 FUNCNAME(vec2 tc) { return vec4(tc, 0.0, 1.0); }\n");
    const Picture picture = render(effect);
    ASSERT_EQ(67u, picture.width);
    for (const uint32_t x : {0U, 33U, 66U}) {
        for (const uint32_t y : {0U, 20U, 40U}) {
            // Pixel centres; the top row has the largest second coordinate.
            const double right = (x + 0.5) / 67.0 * 255.0;
            const double up = (1.0 - (y + 0.5) / 41.0) * 255.0;
            const Pixel expected = {static_cast<int>(std::lround(right)),
                                    static_cast<int>(std::lround(up)), 0, 255};
            EXPECT_TRUE(samePixel(expected, picture.pixel(x, y))) << x << "," << y;
        }
    }
}

TEST_F(PictureTest, FragCoordCountsPixelsFromTheTop) {
    const Effect effect = readyEffect(
        "vec4 FUNCNAME(vec2 tc) { return vec4(gl_FragCoord.x / 255.0, gl_FragCoord.y / 255.0, "
        "gl_FragCoord.z, gl_FragCoord.w); }\n");
    const Picture picture = render(effect);
    // Centres lie at .5: the byte may be rounded either way.
    EXPECT_TRUE(samePixel({0, 0, 0, 255}, picture.pixel(0, 0)));
    EXPECT_TRUE(samePixel({66, 40, 0, 255}, picture.pixel(66, 40)));
    EXPECT_TRUE(samePixel({10, 30, 0, 255}, picture.pixel(10, 30)));
}

TEST_F(PictureTest, ResolutionReadsTheRenderSize) {
    const Effect effect = readyEffect(
        "vec4 FUNCNAME(vec2 tc) { return vec4(PREFIX(iResolution) / 255.0, "
        "PREFIX(iResolutionOrig) / 255.0); }\n");
    EXPECT_TRUE(uniform({67, 41, 67, 41}, render(effect), 0));
    ASSERT_EQ(0, effect->ResizeEffect(30, 20, 120, effect));
    EXPECT_TRUE(uniform({30, 20, 30, 20}, render(effect), 0));
}

TEST_F(PictureTest, AnOwnVertexShaderTurnsThePictureOver) {
    // On purpose: with a vertex shader of its own the effect gets its coordinates as the vertices
    // have them; here the first row of vertices reads the last row of the picture.
    const Picture input = testPicture(67, 41);
    const Effect effect = makeEffect(host::kPass);
    effect->SetVertexShaderText(host::kVertex);
    effect->AddFlatInput(67, 41, input.pitch(), false);
    ASSERT_EQ(0, init(effect)) << host::log::all();
    setPicture(effect, 0, input);
    Picture expected(67, 41);
    for (uint32_t y = 0; y < 41; ++y) {
        std::copy(input.bytes.begin() + (40 - y) * 268, input.bytes.begin() + (41 - y) * 268,
                  expected.bytes.begin() + y * 268);
    }
    EXPECT_TRUE(samePicture(expected, render(effect), 1));
}

TEST_F(PictureTest, TransTcTurnsItBack) {
    const Picture input = testPicture(67, 41);
    const Effect effect = makeEffect("vec4 FUNCNAME(vec2 tc) { return INPUT1(TransTc(tc)); }\n");
    effect->SetVertexShaderText(host::kVertex);
    effect->AddFlatInput(67, 41, input.pitch(), false);
    ASSERT_EQ(0, init(effect)) << host::log::all();
    setPicture(effect, 0, input);
    EXPECT_TRUE(samePicture(input, render(effect), 1));
}

TEST_F(PictureTest, BothModesGiveTheSameBytes) {
    const Picture input = testPicture(67, 41);
    Picture results[2];
    for (const Mode each : {Mode::inlined, Mode::threaded}) {
        mode = each;
        const Effect effect = makeEffect(
            "vec4 FUNCNAME(vec2 tc) { return INPUT1(tc) * 0.5 + vec4(tc, 0.1, 0.2); }\n");
        effect->AddFlatInput(67, 41, input.pitch(), false);
        ASSERT_EQ(0, init(effect));
        setPicture(effect, 0, input);
        results[each == Mode::threaded ? 1 : 0] = render(effect);
    }
    EXPECT_TRUE(samePicture(results[0], results[1]));
}

TEST_F(PictureTest, AFailedCompileLeavesTheEffectForAnotherTry) {
    const Effect effect = makeEffect(host::kBadHlsl);
    EXPECT_NE(0, init(effect));
    EXPECT_TRUE(host::log::holds(4, "Failed to compile frag shader: "));
    EXPECT_TRUE(host::log::holds(2, "   1:"));
    effect->SetFragmentShaderText(host::kRed);
    ASSERT_EQ(0, init(effect));
    EXPECT_TRUE(uniform({255, 0, 0, 255}, render(effect), 0));
}

TEST_F(PictureTest, TwoEffectsWithTheSameTextDrawTheSame) {
    const Effect first = readyEffect(host::kRed);
    const Effect second = readyEffect(host::kRed, 30, 20);
    EXPECT_TRUE(uniform({255, 0, 0, 255}, render(first), 0));
    EXPECT_TRUE(uniform({255, 0, 0, 255}, render(second), 0));
}

TEST_F(PictureTest, SizesOfOnePixelAndOfOneRow) {
    for (const auto& [width, height] : {std::pair<uint32_t, uint32_t>{1, 1}, {1, 37}, {53, 1}}) {
        const Picture input = testPicture(width, height);
        const Effect effect = makeEffect(host::kPass, width, height);
        effect->AddFlatInput(width, height, input.pitch(), false);
        ASSERT_EQ(0, init(effect));
        setPicture(effect, 0, input);
        EXPECT_TRUE(samePicture(input, render(effect))) << width << "x" << height;
    }
}

// Parameters.

TEST_F(PictureTest, ScalarsAndVectorsReachTheShader) {
    const Effect effect = makeEffect(
        "vec4 FUNCNAME(vec2 tc) { return vec4(PREFIX(a) + float(PREFIX(b)) / 255.0, PREFIX(c).y, "
        "PREFIX(d).z, PREFIX(e).w); }\n");
    const float c[2] = {0, 0.4F};
    const float d[3] = {0, 0, 0.6F};
    const float e[4] = {0, 0, 0, 0.8F};
    effect->RegisterParamFloat("a", 0.1F);
    effect->RegisterParamInt("b", 10);
    effect->RegisterParamVec2("c", c);
    effect->RegisterParamVec3("d", d);
    effect->RegisterParamVec4("e", e);
    ASSERT_EQ(0, init(effect)) << host::log::all();
    EXPECT_TRUE(uniform({36, 102, 153, 204}, render(effect)));  // 25.5 + 10
    effect->SetParamFloat("a", 0.2F);
    effect->SetParamInt("b", 0);
    EXPECT_TRUE(uniform({51, 102, 153, 204}, render(effect)));
}

TEST_F(PictureTest, AMatrixMultipliesAsInGlsl) {
    // Column by column, as GLSL keeps it: the product with the first unit vector is the first
    // column, that of a row vector from the left its first elements.
    const float m[16] = {0.1F, 0.2F, 0.3F, 0.4F, 0.5F, 0.6F, 0.7F, 0.8F,
                         0.9F, 1.0F, 0.0F, 0.1F, 0.2F, 0.3F, 0.4F, 0.5F};
    const Effect effect = makeEffect("vec4 FUNCNAME(vec2 tc) { return PREFIX(m) * PREFIX(v); }\n");
    const float first[4] = {1, 0, 0, 0};
    const float third[4] = {0, 0, 1, 0};
    effect->RegisterParamMat4("m", m);
    effect->RegisterParamVec4("v", first);
    ASSERT_EQ(0, init(effect)) << host::log::all();
    EXPECT_TRUE(uniform({26, 51, 77, 102}, render(effect)));  // 25.5, 51, 76.5, 102
    effect->SetParamVec4("v", third);
    EXPECT_TRUE(uniform({230, 255, 0, 26}, render(effect)));  // 229.5, 255, 0, 25.5
}

TEST_F(PictureTest, VectorArraysReachTheShader) {
    const float array[8] = {0.1F, 0.2F, 0.3F, 0.4F, 0.5F, 0.6F, 0.7F, 0.8F};
    const Effect effect = makeEffect("vec4 FUNCNAME(vec2 tc) { return PREFIX(v)[1]; }\n");
    effect->RegisterParamVec4Array("v", array, 2);
    ASSERT_EQ(0, init(effect)) << host::log::all();
    EXPECT_TRUE(uniform({128, 153, 179, 204}, render(effect)));  // 127.5, 153, 178.5, 204
}

TEST_F(PictureTest, FillersKeepVectorsInPlace) {
    const float tint[3] = {0.25F, 0.5F, 0.75F};
    const float offset[2] = {0.125F, 0.375F};
    const Effect effect = makeEffect(
        "vec4 FUNCNAME(vec2 tc) { return vec4(PREFIX(tint) + vec3(0.0, 0.0, PREFIX(offset).x), "
        "PREFIX(amount)); }\n");
    effect->RegisterParamFloat("amount", 0.5F);
    effect->RegisterParamVec2("offset", offset);
    effect->RegisterParamVec3("tint", tint);
    ASSERT_EQ(0, init(effect)) << host::log::all();
    EXPECT_TRUE(uniform({64, 128, 223, 128}, render(effect)));  // 63.75, 127.5, 223.125, 127.5
}

TEST_F(PictureTest, ParametersPerPassAndTheFirstForTheRest) {
    // Three passes add their value to the picture; the third has no entry and takes the first.
    const Effect effect = makeEffect("vec4 FUNCNAME(vec2 tc) { return vec4(PREFIX(a)); }\n");
    float first = 10.0F / 255;
    float second = 40.0F / 255;
    effect->RegisterParamFloat("a", 0);
    effect->SetParamFloatPerPass("a", {&first, &second});
    effect->SetVertexCounts({4, 4, 4});
    effect->SetBlendMode(3);
    ASSERT_EQ(0, init(effect));
    EXPECT_TRUE(uniform({60, 60, 60, 60}, render(effect)));
}

}  // namespace
