// What an effect.json can ask for, seen in the picture.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "render_fixture.h"

namespace effect_render {
namespace {

class FolderTest : public RenderTest {
protected:
    FolderTest() {
        Write("solid.frag", "vec4 FUNCNAME(vec2 tc) {\n    return PREFIX(color);\n}\n");
        // Puts the unit square into the part of the picture that `place` tells: left, bottom,
        // width, height, all in 0..1 with y upwards.
        Write("place.vert",
              "void main() {\n"
              "    vec2 spot = PREFIX(place).xy + position.xy * PREFIX(place).zw;\n"
              "    gl_Position = TransV(vec4(spot * 2.0 - 1.0, PREFIX(depth), 1.0));\n"
              "    tc = position.xy;\n"
              "}\n");
    }
};

constexpr char kPlaced[] = R"("fragment": "solid.frag", "vertex": "place.vert", "size": [16, 16])";

TEST_F(FolderTest, PassesHaveParametersOfTheirOwn) {
    const Picture out = RenderDescribed(std::string("{") + kPlaced + R"(, "params": [
        {"name": "color", "type": "vec4", "default": [1, 0, 0, 1]},
        {"name": "place", "type": "vec4", "default": [0, 0, 0.5, 1]},
        {"name": "depth", "type": "float", "default": 0}],
        "passes": [{}, {"params": {"color": [0, 0, 1, 1], "place": [0.5, 0, 0.5, 1]}}]})");
    EXPECT_EQ(PixelAt(out, 2, 8), (Color{255, 0, 0, 255}));
    EXPECT_EQ(PixelAt(out, 13, 8), (Color{0, 0, 255, 255}));
}

TEST_F(FolderTest, InstancesHaveValuesOfTheirOwn) {
    const Picture out =
        RenderDescribed(std::string("{") + kPlaced + R"(, "instances": 4, "params": [
        {"name": "color", "type": "instance-vec4",
         "default": [1,0,0,1, 0,1,0,1, 0,0,1,1, 1,1,0,1]},
        {"name": "place", "type": "instance-vec4", "default": [
            0,0,0.5,0.5, 0.5,0,0.5,0.5, 0,0.5,0.5,0.5, 0.5,0.5,0.5,0.5]},
        {"name": "depth", "type": "float", "default": 0}]})");
    EXPECT_EQ(PixelAt(out, 2, 13), (Color{255, 0, 0, 255}));
    EXPECT_EQ(PixelAt(out, 13, 13), (Color{0, 255, 0, 255}));
    EXPECT_EQ(PixelAt(out, 2, 2), (Color{0, 0, 255, 255}));
    EXPECT_EQ(PixelAt(out, 13, 2), (Color{255, 255, 0, 255}));
}

constexpr char kThreeDepths[] = R"(, "depth": true, "params": [
    {"name": "color", "type": "vec4", "default": [1, 0, 0, 1]},
    {"name": "place", "type": "vec4", "default": [0, 0, 1, 1]},
    {"name": "depth", "type": "float", "default": 0.2}],
    "passes": [{%}, {"params": {"color": [0, 0, 1, 1], "depth": 0.8}}]})";

TEST_F(FolderTest, NearerPassStaysInFront) {
    std::string json = std::string("{") + kPlaced + kThreeDepths;
    json.replace(json.find('%'), 1, "");
    EXPECT_EQ(PixelAt(RenderDescribed(json), 8, 8), (Color{255, 0, 0, 255}));
}

TEST_F(FolderTest, PassThatWritesNoDepthIsDrawnOver) {
    std::string json = std::string("{") + kPlaced + kThreeDepths;
    json.replace(json.find('%'), 1, R"("depth-write": false)");
    EXPECT_EQ(PixelAt(RenderDescribed(json), 8, 8), (Color{0, 0, 255, 255}));
}

TEST_F(FolderTest, PassesHaveProgramsOfTheirOwn) {
    Write("other.frag", "vec4 FUNCNAME(vec2 tc) {\n    return vec4(0.0, 1.0, 0.0, 1.0);\n}\n");
    const Picture out = RenderDescribed(std::string("{") + kPlaced + R"(,
        "programs": [{"name": "other", "fragment": "other.frag", "vertex": "place.vert"}],
        "params": [{"name": "color", "type": "vec4", "default": [1, 0, 0, 1]},
                   {"name": "place", "type": "vec4", "default": [0, 0, 0.5, 1]},
                   {"name": "depth", "type": "float", "default": 0}],
        "passes": [{}, {"program": "other", "params": {"place": [0.5, 0, 0.5, 1]}}]})");
    EXPECT_EQ(PixelAt(out, 2, 8), (Color{255, 0, 0, 255}));
    EXPECT_EQ(PixelAt(out, 13, 8), (Color{0, 255, 0, 255}));
}

TEST_F(FolderTest, ProgramThatDoesNotCompileFails) {
    Write("other.frag", "vec4 FUNCNAME(vec2 tc) { return nothing }\n");
    Write("effect.json", std::string("{") + kPlaced + R"(,
        "programs": [{"name": "other", "fragment": "other.frag"}],
        "params": [{"name": "color", "type": "vec4", "default": [1, 0, 0, 1]},
                   {"name": "place", "type": "vec4", "default": [0, 0, 0.5, 1]},
                   {"name": "depth", "type": "float", "default": 0}]})");
    const ProgramResult result = Run({folder_.Path(), "-o", At("out.png")});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.message.find("the program 'other' does not compile"), std::string::npos)
        << result.message;
}

TEST_F(FolderTest, ElementListPicksTheVertices) {
    // Six corners, of which the list takes those of the lower left triangle.
    Write("corner.vert",
          "void main() {\n"
          "    gl_Position = TransV(vec4(position.xy * 2.0 - 1.0, 0.0, 1.0));\n"
          "    tc = position.xy;\n"
          "}\n");
    const Picture out = RenderDescribed(R"({"fragment": "solid.frag", "vertex": "corner.vert",
        "size": [16, 16], "primitive": "triangles", "elements": {"data": [1, 3, 5]},
        "attributes": {"position": {"components": 2,
                                    "data": [9, 9, 0, 0, 9, 9, 1, 0, 9, 9, 0, 1]}},
        "params": [{"name": "color", "type": "vec4", "default": [1, 1, 1, 1]}]})");
    EXPECT_EQ(PixelAt(out, 2, 13), (Color{255, 255, 255, 255}));
    EXPECT_EQ(PixelAt(out, 13, 2), (Color{0, 0, 0, 0}));
}

TEST_F(FolderTest, OwnAttributesReachTheVertexShader) {
    Write("tint.vert",
          "customize_in vec3 tint;\ncustomize_out vec3 shade;\n"
          "void main() {\n"
          "    gl_Position = TransV(vec4(position.xy * 2.0 - 1.0, 0.0, 1.0));\n"
          "    shade = tint;\n    tc = position.xy;\n"
          "}\n");
    Write("tint.frag",
          "customize_in vec3 shade;\nvec4 FUNCNAME(vec2 tc) {\n    return vec4(shade, 1.0);\n}\n");
    const Picture out = RenderDescribed(R"({"fragment": "tint.frag", "vertex": "tint.vert",
        "size": [16, 16], "attributes": {"tint": {"components": 3,
            "data": [0, 0.5, 1, 0, 0.5, 1, 0, 0.5, 1, 0, 0.5, 1]}}})");
    EXPECT_TRUE(Near(PixelAt(out, 8, 8), {0, 128, 255, 255}));
}

TEST_F(FolderTest, StepsReadWhatTheStepBeforeHasDrawn) {
    Write("steps.frag",
          "vec4 FUNCNAME(vec2 tc) {\n"
          "    if (PREFIX(stage) == 0) {\n        return vec4(0.5, 0.0, 0.0, 1.0);\n    }\n"
          "    return vec4(INPUT1(tc).r * 0.5, 1.0, 0.0, 1.0);\n}\n");
    const Picture out = RenderDescribed(R"({"fragment": "steps.frag", "size": [8, 8],
        "targets": 1, "inputs": [{"target": 0}],
        "params": [{"name": "stage", "type": "int", "default": 0}],
        "steps": [{}, {"swap": [0], "params": {"stage": 1}}, {"swap": [0]}]})");
    EXPECT_TRUE(Near(PixelAt(out, 4, 4), {32, 255, 0, 255}));
}

TEST_F(FolderTest, SwappedTargetFeedsTheNextFrame) {
    Write("feed.frag",
          "vec4 FUNCNAME(vec2 tc) {\n"
          "    return vec4(INPUT1(tc).r + 0.25, 0.0, 0.0, 1.0);\n}\n");
    Write("effect.json", R"({"fragment": "feed.frag", "size": [8, 8], "targets": 1,
        "inputs": [{"target": 0}], "steps": [{"swap": [0]}]})");
    const ProgramResult result = Run({folder_.Path(), "--frames", "0-2", "-o", At("f%d.png")});
    ASSERT_EQ(result.status, 0) << result.message;
    EXPECT_TRUE(Near(PixelAt(LoadPicture(At("f0.png"), 4), 4, 4), {64, 0, 0, 255}));
    EXPECT_TRUE(Near(PixelAt(LoadPicture(At("f1.png"), 4), 4, 4), {128, 0, 0, 255}));
    EXPECT_TRUE(Near(PixelAt(LoadPicture(At("f2.png"), 4), 4, 4), {191, 0, 0, 255}));
}

TEST_F(FolderTest, VariantsOfSegmentsAreChosen) {
    Write("red.glsl", "vec4 paint() {\n    return vec4(1.0, 0.0, 0.0, 1.0);\n}\n");
    Write("green.glsl", "vec4 paint() {\n    return vec4(0.0, 1.0, 0.0, 1.0);\n}\n");
    Write("main.frag", "vec4 FUNCNAME(vec2 tc) {\n    return paint();\n}\n");
    const std::string start = R"({"fragment": "main.frag", "size": [4, 4],
        "segments": {"fragment": [["red.glsl", "green.glsl"]]})";
    EXPECT_EQ(PixelAt(RenderDescribed(start + "}"), 1, 1), (Color{255, 0, 0, 255}));
    EXPECT_EQ(PixelAt(RenderDescribed(start + R"(, "variants": {"fragment": [1]}})"), 1, 1),
              (Color{0, 255, 0, 255}));
    EXPECT_EQ(PixelAt(RenderDescribed(start + R"(, "steps": [
                          {}, {"variants": {"fragment": [1]}}]})"),
                      1, 1),
              (Color{0, 255, 0, 255}));
}

TEST_F(FolderTest, ChainDrawsEachEffectOverTheOneBefore) {
    Write("one/a.frag", "vec4 FUNCNAME(vec2 tc) {\n    return vec4(tc.y, 0.5, 1.0, 1.0);\n}\n");
    Write("one/effect.json", R"({"fragment": "a.frag", "size": [16, 16]})");
    Write("two/b.frag",
          "vec4 FUNCNAME(vec2 tc) {\n    return vec4(INPUT1(tc).rgb * PREFIX(k), 1.0);\n}\n");
    Write("two/effect.json", R"({"fragment": "b.frag",
        "params": [{"name": "k", "type": "float", "default": 1}]})");
    const Picture out =
        RenderDescribed(R"({"chain": ["one", {"effect": "two", "params": {"k": 0.5}}, "two"]})");
    EXPECT_TRUE(Near(PixelAt(out, 8, 0), {124, 64, 128, 255}));
    EXPECT_TRUE(Near(PixelAt(out, 8, 15), {4, 64, 128, 255}));
}

TEST_F(FolderTest, OneChannelPictureReadsAsGrey) {
    Picture grey;
    grey.width = 8;
    grey.height = 8;
    grey.pixels.assign(8 * 8 * 4, 100);
    SavePicture(At("grey.png"), grey);
    Write("copy.frag", "vec4 FUNCNAME(vec2 tc) {\n    return INPUT1(tc);\n}\n");
    const Picture out = RenderDescribed(
        R"({"fragment": "copy.frag", "inputs": [{"file": "grey.png", "channels": 1}]})");
    EXPECT_EQ(PixelAt(out, 3, 3), (Color{100, 100, 100, 255}));
}

TEST_F(FolderTest, StillAndStreamingPicturesDrawTheSame) {
    SavePicture(At("in.png"), Pattern(9, 5));
    Write("copy.frag", "vec4 FUNCNAME(vec2 tc) {\n    return INPUT1(tc);\n}\n");
    for (const char* still : {"true", "false"}) {
        const Picture out = RenderDescribed(
            std::string(R"({"fragment": "copy.frag", "inputs": [{"file": "in.png", "still": )") +
            still + "}]}");
        EXPECT_EQ(out.pixels, Pattern(9, 5).pixels) << still;
    }
}

TEST_F(FolderTest, InputCanHaveAPictureForEachPass) {
    Picture dark = Pattern(4, 4);
    dark.pixels.assign(64, 50);
    Picture bright = dark;
    bright.pixels.assign(64, 60);
    SavePicture(At("1.png"), dark);
    SavePicture(At("2.png"), bright);
    Write("copy.frag", "vec4 FUNCNAME(vec2 tc) {\n    return INPUT1(tc);\n}\n");
    const Picture out = RenderDescribed(R"({"fragment": "copy.frag", "blend": "add",
        "inputs": [{"files": ["1.png", "2.png"]}], "passes": [{}, {}]})");
    EXPECT_EQ(PixelAt(out, 1, 1), (Color{110, 110, 110, 110}));
}

TEST_F(FolderTest, Base64SourcesAreDecoded) {
    // vec4 FUNCNAME(vec2 tc) { return vec4(0.0, 1.0, 1.0, 1.0); }
    Write("a.b64",
          "dmVjNCBGVU5DTkFNRSh2ZWMyIHRjKSB7IHJldHVybiB2ZWM0KDAuMCwgMS4wLCAxLjAsIDEuMCk7IH0=");
    const Picture out =
        RenderDescribed(R"({"fragment": "a.b64", "encoding": "base64", "size": [4, 4]})");
    EXPECT_EQ(PixelAt(out, 1, 1), (Color{0, 255, 255, 255}));
}

class SampleTest : public RenderTest, public testing::WithParamInterface<const char*> {};

// The picture itself is looked at by people; a test sees that there is one, at a small size, and
// that both modes agree on it.
TEST_P(SampleTest, DrawsAPictureInBothModes) {
    const std::string effect = std::string(ORVANE_EFFECTS_FOLDER) + "/" + GetParam();
    const Picture threaded = Render({effect, "--size", "97x55"});
    const Picture single = Render({effect, "--size", "97x55", "--mode", "inline"});
    EXPECT_EQ(threaded.pixels, single.pixels);
    std::set<Color> colors;
    for (uint32_t y = 0; y < threaded.height; ++y) {
        for (uint32_t x = 0; x < threaded.width; ++x) {
            colors.insert(PixelAt(threaded, x, y));
        }
    }
    EXPECT_GT(colors.size(), 100u);
}

INSTANTIATE_TEST_SUITE_P(All, SampleTest,
                         testing::Values("card-flip", "chroma-key", "color-grade", "dissolve",
                                         "dream", "flag", "gaussian-blur", "glow", "kaleidoscope",
                                         "particles", "shape-mask", "torus-knot"),
                         [](const auto& sample) {
                             std::string name = sample.param;
                             name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
                             return name;
                         });

}  // namespace
}  // namespace effect_render
