// Public transitions drawn with effect-render --transition.

#include <gtest/gtest.h>

#include "render_fixture.h"

namespace effect_render {
namespace {

class TransitionRenderTest : public RenderTest {
protected:
    TransitionRenderTest() {
        SavePicture(At("red.png"), Plain({255, 0, 0, 255}));
        SavePicture(At("blue.png"), Plain({0, 0, 255, 255}));
    }

    static Picture Plain(const Color& color) {
        Picture picture;
        picture.width = 8;
        picture.height = 4;
        for (size_t i = 0; i < 8 * 4 * 4; ++i) {
            picture.pixels.push_back(static_cast<uint8_t>(color[i % 4]));
        }
        return picture;
    }

    ProgramResult RunTransition(const std::string& text, std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"--transition", Write("t.glsl", text), At("red.png"),
                                             At("blue.png"), "-o", At("%d.png")});
        return Run(arguments);
    }

    Color Frame(int number) {
        return PixelAt(LoadPicture(At(std::to_string(number) + ".png"), 4), 3, 1);
    }
};

TEST_F(TransitionRenderTest, FadeGoesFromOnePictureToTheOther) {
    const ProgramResult result = RunTransition(
        "vec4 transition(vec2 uv) {\n"
        "    return mix(getFromColor(uv), getToColor(uv), progress);\n"
        "}\n",
        {"--frames", "0-4"});
    ASSERT_EQ(result.status, 0) << result.message;
    EXPECT_EQ(Frame(0), (Color{255, 0, 0, 255}));
    EXPECT_TRUE(Near(Frame(1), {191, 0, 64, 255}));
    EXPECT_EQ(Frame(4), (Color{0, 0, 255, 255}));
}

TEST_F(TransitionRenderTest, DefaultsAndOverridesReachTheShader) {
    const std::string text =
        "uniform float green; // = 0.2\n"
        "uniform bool on; // = true\n"
        "vec4 transition(vec2 uv) { return on ? vec4(0.0, green, 0.0, 1.0) : vec4(1.0); }\n";
    ASSERT_EQ(RunTransition(text, {}).status, 0);
    EXPECT_EQ(Frame(0), (Color{0, 51, 0, 255}));
    ASSERT_EQ(RunTransition(text, {"--float", "green=0.4"}).status, 0);
    EXPECT_EQ(Frame(0), (Color{0, 102, 0, 255}));
    ASSERT_EQ(RunTransition(text, {"--int", "on=0"}).status, 0);
    EXPECT_EQ(Frame(0), (Color{255, 255, 255, 255}));
}

TEST_F(TransitionRenderTest, RewritesKeepTheMeaningOfOpenGl) {
    // mod(-0.25, 1.0) is 0.75 in GLSL.
    const std::string text =
        "vec4 transition(vec2 uv) {\n"
        "    return vec4(vec3(mod(progress - 0.25, 1.0)), 1.0);\n"
        "}\n";
    const ProgramResult result = RunTransition(text, {"--log"});
    ASSERT_EQ(result.status, 0);
    EXPECT_TRUE(Near(Frame(0), {191, 191, 191, 255}));
    EXPECT_NE(result.message.find("effect-render: note: "), std::string::npos) << result.message;
    ASSERT_EQ(RunTransition(text, {"--no-rewrites"}).status, 0);
    EXPECT_EQ(Frame(0), (Color{0, 0, 0, 255}));
}

TEST_F(TransitionRenderTest, ErrorsNameTheFile) {
    const ProgramResult result =
        RunTransition("vec4 transition(vec2 uv) { return missing(uv); }\n", {});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.message.find("t.glsl"), std::string::npos) << result.message;
}

}  // namespace
}  // namespace effect_render
