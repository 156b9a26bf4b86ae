// Blending, depth, culling, primitives, samples, passes and instances on the real device.

#include <algorithm>
#include <cmath>
#include <set>

#include "real/pixel_host.h"

namespace {

using host::Effect;
using host::Picture;
using host::Pixel;
using host::PixelHost;
using host::samePicture;
using host::samePixel;
using host::uniform;

// A vertex shader for positions given in clip coordinates; y is negated behind it, so that -1 is
// the top of the picture.
const char kClipVertex[] =
    "in vec3 pos;\n"
    "void main()\n{\n    gl_Position = vec4(pos, 1.0);\n    tc = pos.xy;\n}\n";
const char kColour[] = "vec4 FUNCNAME(vec2 tc) { return PREFIX(colour); }\n";

// Two triangles over the whole picture at a depth.
std::vector<float> quadAt(float z) {
    return {-1, -1, z, 1, -1, z, -1, 1, z, -1, 1, z, 1, -1, z, 1, 1, z};
}

class PipelineTest : public PixelHost {
protected:
    /// An effect of 6 vertices per pass, one colour and one quad per pass.
    Effect layered(const std::vector<float>& depths, bool with_depth) {
        Effect effect = makeEffect(kColour, 20, 10, with_depth);
        effect->SetVertexShaderText(kClipVertex);
        effect->RegisterParamVec4("colour", nullptr);
        std::vector<VertexAttribute> attributes;
        std::vector<float*> colours;
        quads_.clear();
        for (const float depth : depths) {
            quads_.push_back(quadAt(depth));
        }
        for (size_t i = 0; i < depths.size(); ++i) {
            attributes.push_back(
                effect->MakeVertexAttribute("pos", 3, quads_[i].data(), true, false, 0));
            colours.push_back(colours_[i]);
        }
        effect->SetVertexAttributes(attributes);
        effect->SetParamVec4PerPass("colour", colours);
        effect->SetVertexCounts(std::vector<int32_t>(depths.size(), 6));
        effect->SetPrimitiveMode(1);
        EXPECT_EQ(0, init(effect)) << host::log::all();
        return effect;
    }
    std::vector<std::vector<float>> quads_;
    float colours_[3][4] = {{1, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}};
    const Pixel red = {255, 0, 0, 255};
    const Pixel green = {0, 255, 0, 255};
    const Pixel blue = {0, 0, 255, 255};
};

// Clearing.

TEST_F(PipelineTest, TheClearColourGoesToTheTargetAsItStands) {
    // Not exchanged as the shader's result is: its third channel is the first byte.
    const Effect effect = readyEffect(host::kRed, 20, 10);
    effect->SetVertexCounts({});
    effect->SetClearColor(0.2F, 0.4F, 0.6F, 0.8F);
    EXPECT_TRUE(uniform({153, 102, 51, 204}, render(effect)));
}

TEST_F(PipelineTest, WithoutClearingFramesAddUp) {
    const Effect effect = makeEffect(kColour, 20, 10);
    const float step[4] = {0.1F, 0.1F, 0.1F, 0.1F};
    effect->RegisterParamVec4("colour", step);
    ASSERT_EQ(0, init(effect));
    effect->SetBlendMode(3);
    ASSERT_EQ(0, draw(effect));  // cleared
    effect->SetClearEnabled(false);
    ASSERT_EQ(0, draw(effect));
    EXPECT_TRUE(uniform({77, 77, 77, 77}, render(effect), 2));
}

// Blending: S and D as the target holds them, in the order that the picture's bytes have.

struct BlendCase {
    int32_t mode;
    Pixel expected;
};

class BlendTest : public PixelHost, public testing::WithParamInterface<BlendCase> {};

TEST_P(BlendTest, MixesResultAndTarget) {
    const Effect effect = makeEffect(kColour, 20, 10);
    const float source[4] = {0.6F, 0.4F, 0.2F, 0.5F};
    effect->RegisterParamVec4("colour", source);
    ASSERT_EQ(0, init(effect));
    // As the target holds it: bytes 0.3, 0.2, 0.1, 0.4.
    effect->SetClearColor(0.1F, 0.2F, 0.3F, 0.4F);
    effect->SetBlendMode(GetParam().mode);
    EXPECT_TRUE(uniform(GetParam().expected, render(effect), 2));
}

INSTANTIATE_TEST_SUITE_P(Modes, BlendTest,
                         testing::Values(
                             // The result alone: 0.6, 0.4, 0.2, 0.5.
                             BlendCase{0, {153, 102, 51, 128}}, BlendCase{2, {153, 102, 51, 128}},
                             BlendCase{6, {153, 102, 51, 128}},
                             // S * 0.5 + D * 0.5: 0.45, 0.3, 0.15, 0.45.
                             BlendCase{1, {115, 77, 38, 115}},
                             // S + D: 0.9, 0.6, 0.3, 0.9.
                             BlendCase{3, {230, 153, 77, 230}},
                             // S + D * 0.5: 0.75, 0.5, 0.25, 0.7.
                             BlendCase{4, {191, 128, 64, 179}},
                             // S * (1 - D) + D: 0.72, 0.52, 0.28; alpha S + D * 0.5: 0.7.
                             BlendCase{5, {184, 133, 71, 179}}),
                         [](const auto& row) { return "Mode" + std::to_string(row.param.mode); });

// Depth.

TEST_F(PipelineTest, WithTheTestTheNearerPassStays) {
    const Effect effect = layered({0.25F, 0.75F}, true);
    effect->SetDepthTest(true);
    EXPECT_TRUE(uniform(red, render(effect), 0));
}

TEST_F(PipelineTest, WithoutTheTestTheLaterPassWins) {
    const Effect effect = layered({0.25F, 0.75F}, false);
    EXPECT_TRUE(uniform(green, render(effect), 0));
}

TEST_F(PipelineTest, EqualDepthPassesTheTest) {
    const Effect effect = layered({0.5F, 0.5F}, true);
    effect->SetDepthTest(true);
    EXPECT_TRUE(uniform(green, render(effect), 0));
}

TEST_F(PipelineTest, APassThatDoesNotWriteDepthHidesNothing) {
    const Effect effect = layered({0.25F, 0.75F, 0.5F}, true);
    effect->SetDepthTest(true);
    effect->SetDepthWriteList({false, true});
    // The first writes no depth, the second at 0.75 does, the third takes the first entry.
    EXPECT_TRUE(uniform(blue, render(effect), 0));
    effect->SetDepthWriteList({true});
    EXPECT_TRUE(uniform(red, render(effect), 0));
}

TEST_F(PipelineTest, DepthIsClearedInEachDraw) {
    const Effect effect = layered({0.75F}, true);
    effect->SetDepthTest(true);
    EXPECT_TRUE(uniform(red, render(effect), 0));
    EXPECT_TRUE(uniform(red, render(effect), 0));
}

TEST_F(PipelineTest, ADepthBufferWithoutTheTestTestsAllTheSame) {
    // On purpose: the state that is set with the buffer tests and writes.
    const Effect effect = layered({0.25F, 0.75F}, true);
    EXPECT_TRUE(uniform(red, render(effect), 0));
}

// Culling.

TEST_F(PipelineTest, BackFacesAreCulled) {
    // Of these two halves the upper left one runs clockwise on the screen, the other against it.
    const float corners[18] = {-1, -1, 0, 1, -1, 0, -1, 1, 0, 1, -1, 0, -1, 1, 0, 1, 1, 0};
    const Effect effect = makeEffect(host::kRed, 20, 20);
    effect->SetVertexShaderText(kClipVertex);
    effect->AddVertexAttribute("pos", 3, corners, false, false, 0);
    effect->SetVertexCount(6);
    effect->SetPrimitiveMode(1);
    ASSERT_EQ(0, init(effect));
    EXPECT_TRUE(uniform(red, render(effect), 0));
    effect->SetCullBack(true);
    const Picture half = render(effect);
    EXPECT_TRUE(samePixel(red, half.pixel(2, 2), 0));
    EXPECT_TRUE(samePixel({0, 0, 0, 0}, half.pixel(17, 17), 0));
}

TEST_F(PipelineTest, TheFixedQuadIsABackFace) {
    const Effect effect = readyEffect(host::kRed, 20, 10);
    effect->SetCullBack(true);
    EXPECT_TRUE(uniform({0, 0, 0, 0}, render(effect), 0));
}

// Primitives.

TEST_F(PipelineTest, AStripOfThreeVerticesIsHalfThePicture) {
    const Effect effect = readyEffect(host::kRed, 20, 20);
    effect->SetVertexCount(3);
    const Picture half = render(effect);
    EXPECT_TRUE(samePixel(red, half.pixel(2, 2), 0));
    EXPECT_TRUE(samePixel({0, 0, 0, 0}, half.pixel(17, 17), 0));
}

TEST_F(PipelineTest, AListTakesThreeVerticesEach) {
    const Effect effect = readyEffect(host::kRed, 20, 20);
    effect->SetPrimitiveMode(1);
    const Picture half = render(effect);  // four vertices: one triangle
    EXPECT_TRUE(samePixel(red, half.pixel(2, 2), 0));
    EXPECT_TRUE(samePixel({0, 0, 0, 0}, half.pixel(17, 17), 0));
}

TEST_F(PipelineTest, LinesWithAndWithoutIndices) {
    // A horizontal line through the middle of row 5 of 10.
    const float ends[6] = {-1, 0.1F, 0, 1, 0.1F, 0};
    const uint32_t indices[2] = {0, 1};
    for (const bool indexed : {false, true}) {
        const Effect effect = makeEffect(host::kRed, 20, 10);
        effect->SetVertexShaderText(kClipVertex);
        effect->AddVertexAttribute("pos", 3, ends, false, false, 0);
        effect->SetVertexCount(2);
        effect->SetPrimitiveMode(indexed ? 2 : 3);
        if (indexed) {
            effect->AddVertexAttribute("e", 2, indices, false, true, 1);
        }
        ASSERT_EQ(0, init(effect));
        const Picture line = render(effect);
        EXPECT_TRUE(samePixel(red, line.pixel(10, 5), 0)) << indexed;
        EXPECT_TRUE(samePixel({0, 0, 0, 0}, line.pixel(10, 3), 0));
        EXPECT_TRUE(samePixel({0, 0, 0, 0}, line.pixel(10, 7), 0));
    }
}

TEST_F(PipelineTest, IndicesPickTheVertices) {
    const Effect effect = readyEffect(host::kRed, 20, 20);
    const uint32_t second[3] = {2, 1, 3};
    effect->SetPrimitiveMode(1);
    effect->AddVertexAttribute("e", 3, second, false, true, 1);
    const Picture half = render(effect);
    EXPECT_TRUE(samePixel({0, 0, 0, 0}, half.pixel(2, 2), 0));
    EXPECT_TRUE(samePixel(red, half.pixel(17, 17), 0));
    const uint32_t first[3] = {0, 1, 2};
    effect->AddVertexAttribute("e", 3, first, true, true, 1);
    const Picture other = render(effect);
    EXPECT_TRUE(samePixel(red, other.pixel(2, 2), 0));
    EXPECT_TRUE(samePixel({0, 0, 0, 0}, other.pixel(17, 17), 0));
}

TEST_F(PipelineTest, DirtyVertexDataIsReadAgain) {
    std::vector<float> quad = quadAt(0.5F);
    const Effect effect = makeEffect(host::kRed, 20, 10);
    effect->SetVertexShaderText(kClipVertex);
    effect->AddVertexAttribute("pos", 3, quad.data(), false, false, 0);
    effect->SetVertexCount(6);
    effect->SetPrimitiveMode(1);
    ASSERT_EQ(0, init(effect));
    EXPECT_TRUE(uniform(red, render(effect), 0));
    std::fill(quad.begin(), quad.end(), 0.0F);
    EXPECT_TRUE(uniform(red, render(effect), 0)) << "kept until it is dirty";
    effect->AddVertexAttribute("pos", 3, quad.data(), true, false, 0);
    EXPECT_TRUE(uniform({0, 0, 0, 0}, render(effect), 0));
}

// Samples.

std::set<int> shadesOf(const Picture& picture) {
    std::set<int> shades;
    for (uint32_t y = 0; y < picture.height; ++y) {
        for (uint32_t x = 0; x < picture.width; ++x) {
            shades.insert(picture.pixel(x, y)[0]);
        }
    }
    return shades;
}

TEST_F(PipelineTest, FourSamplesSoftenAnEdge) {
    const float corners[9] = {-1, -1, 0, 1, -0.9F, 0, -0.9F, 1, 0};
    for (const bool msaa : {false, true}) {
        const Effect effect = makeEffect(host::kRed, 31, 29);
        effect->SetVertexShaderText(kClipVertex);
        effect->AddVertexAttribute("pos", 3, corners, false, false, 0);
        effect->SetVertexCount(3);
        effect->SetPrimitiveMode(1);
        effect->SetMsaa(msaa);
        ASSERT_EQ(0, init(effect));
        const std::set<int> shades = shadesOf(render(effect));
        EXPECT_EQ(1u, shades.count(0));
        EXPECT_EQ(1u, shades.count(255));
        if (msaa) {
            EXPECT_GT(shades.size(), 2u) << "some pixels are covered in part";
        } else {
            EXPECT_EQ(2u, shades.size());
        }
    }
}

TEST_F(PipelineTest, FourSamplesWithDepth) {
    const Effect effect = layered({0.25F, 0.75F}, true);
    effect->SetDepthTest(true);
    effect->SetMsaa(true);
    EXPECT_TRUE(uniform(red, render(effect), 0));
}

// Passes, programs and instances.

TEST_F(PipelineTest, PassesMayHaveProgramsOfTheirOwn) {
    const Effect effect = makeEffect(host::kRed, 20, 10);
    ASSERT_EQ(0, init(effect));
    int32_t number = 0;
    ASSERT_TRUE(effect->AddProgram(
        &number, "vec4 FUNCNAME(vec2 tc) { return vec4(0.0, 1.0, 0.0, 0.0); }\n", nullptr));
    effect->SetVertexCounts({4, 4});
    effect->SetBlendMode(3);
    EXPECT_TRUE(uniform({255, 0, 0, 255}, render(effect), 0));
    effect->SetPassPrograms({0, number});
    EXPECT_TRUE(uniform({255, 255, 0, 255}, render(effect), 0));
    EXPECT_TRUE(effect->RemoveProgram(&number));
    effect->SetPassPrograms({});
    EXPECT_TRUE(uniform({255, 0, 0, 255}, render(effect), 0));
}

TEST_F(PipelineTest, InstancesTakeTheirParametersInTurn) {
    // Three instances, each a fifth of the picture at its own place in its own colour.
    const float places[3] = {0.0F, 0.4F, 0.8F};
    const Effect effect =
        makeEffect("vec4 FUNCNAME(vec2 tc) { return PREFIX_DRAW_INSTANCE(tint); }\n", 20, 10);
    effect->SetVertexShaderText(
        "void main()\n{\n"
        "    float x = PREFIX_DRAW_INSTANCE(place) + position.x * 0.2;\n"
        "    gl_Position = vec4(x * 2.0 - 1.0, position.y * 2.0 - 1.0, 0.0, 1.0);\n"
        "    tc = position.xy;\n}\n");
    effect->RegisterInstanceParamFloat("place", places, 3);
    effect->RegisterInstanceParamVec4("tint", colours_, 3);
    effect->SetInstanceCount(3);
    ASSERT_EQ(0, init(effect)) << host::log::all();
    const Picture picture = render(effect);
    const Pixel none = {0, 0, 0, 0};
    EXPECT_TRUE(samePixel(red, picture.pixel(1, 5), 0));
    EXPECT_TRUE(samePixel(none, picture.pixel(5, 5), 0));
    EXPECT_TRUE(samePixel(green, picture.pixel(9, 5), 0));
    EXPECT_TRUE(samePixel(none, picture.pixel(13, 5), 0));
    EXPECT_TRUE(samePixel(blue, picture.pixel(17, 5), 0));
    effect->SetInstanceCount(1);
    EXPECT_TRUE(samePixel(none, render(effect).pixel(9, 5), 0));
}

TEST_F(PipelineTest, InstanceDataOfTheNextFrame) {
    float tints[4] = {1, 0, 0, 1};
    const Effect effect =
        makeEffect("vec4 FUNCNAME(vec2 tc) { return PREFIX_DRAW_INSTANCE(tint); }\n", 20, 10);
    effect->RegisterInstanceParamVec4("tint", tints, 1);
    effect->SetInstanceCount(1);
    ASSERT_EQ(0, init(effect)) << host::log::all();
    EXPECT_TRUE(uniform(red, render(effect), 0));
    EXPECT_EQ(0, effect->SetInstanceParamVec4("tint", colours_[2], 1));
    EXPECT_TRUE(uniform(blue, render(effect), 0));
}

}  // namespace
