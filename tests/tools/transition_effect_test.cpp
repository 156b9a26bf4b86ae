#include "effect-render/transition_effect.h"

#include <gtest/gtest.h>

#include "effect-render/job.h"
#include "effect-render/picture.h"
#include "expect_error.h"
#include "temp_folder.h"

namespace effect_render {
namespace {

class TransitionEffectTest : public testing::Test {
protected:
    TransitionEffectTest() {
        Picture picture;
        picture.width = 12;
        picture.height = 8;
        picture.pixels.assign(12 * 8 * 4, 128);
        picture_ = folder_.Path() + "/a.png";
        SavePicture(picture_, picture);
        file_ = folder_.Write("t.glsl",
                              "uniform float size; // = 0.25\r\n"
                              "uniform bool flip; // = true\r\n"
                              "uniform ivec2 count; // = ivec2(3, 5)\r\n"
                              "vec4 transition(vec2 uv) {\r\n"
                              "  float m = mod(uv.x, size);\r\n"
                              "  return flip ? getFromColor(uv * m) : getToColor(vec2(count));\r\n"
                              "}\r\n");
    }

    Job Make(std::vector<std::string> arguments, std::string file = "") {
        arguments.insert(arguments.begin(), {"--transition", file.empty() ? file_ : file});
        arguments.insert(arguments.end(), {"-o", "out%d.png"});
        std::string help;
        return MakeJob(*ParseOptions(arguments, help));
    }

    std::string ErrorWith(const std::vector<std::string>& arguments, const std::string& file = "") {
        return ErrorOf([&] { Make(arguments, file); });
    }

    TempFolder folder_;
    std::string picture_;
    std::string file_;
};

TEST_F(TransitionEffectTest, TextKeepsItsLines) {
    const Job job = Make({picture_, picture_, "--no-rewrites"});
    ASSERT_EQ(job.effects.size(), 1u);
    EXPECT_EQ(job.effects[0].fragment, file_);
    EXPECT_EQ(
        job.effects[0].fragment_text,
        " // = 0.25\n"
        " // = true\n"
        " // = ivec2(3, 5)\n"
        "vec4 FUNCNAME(vec2 uv) {\n"
        "  float m = mod(uv.x, PREFIX(size));\n"
        "  return (PREFIX(flip) != 0) ? INPUT1(uv * m) : INPUT2(vec2(ivec2(PREFIX(count))));\n"
        "}\n");
    EXPECT_TRUE(job.effects[0].notes.empty());
}

TEST_F(TransitionEffectTest, RewritesAreNotedForTheAuthor) {
    const Job job = Make({picture_, picture_});
    EXPECT_EQ(job.effects[0].notes.size(), 2u);  // mod, and the parts of the ?:
    EXPECT_NE(job.effects[0].fragment_text.find("floor("), std::string::npos);
}

TEST_F(TransitionEffectTest, ParametersHaveTheirDefaults) {
    const Job job = Make({picture_, picture_});
    const EffectDescription& effect = job.effects[0];
    EXPECT_EQ(effect.FindParam("size")->still, std::vector<double>{0.25});
    EXPECT_EQ(effect.FindParam("flip")->type, (ParamType{ParamKind::Int, ParamShape::Plain}));
    EXPECT_EQ(effect.FindParam("flip")->still, std::vector<double>{1.0});
    EXPECT_EQ(effect.FindParam("count")->type, (ParamType{ParamKind::Vec2, ParamShape::Plain}));
    EXPECT_EQ(effect.FindParam("count")->still, (std::vector<double>{3.0, 5.0}));
}

TEST_F(TransitionEffectTest, ProgressGoesFromTheFirstFrameToTheLast) {
    const Job job = Make({picture_, picture_, "--frames", "0-4"});
    const ParamTrack* progress = job.effects[0].FindParam("progress");
    EXPECT_EQ(progress->At(0.0), std::vector<double>{0.0});
    EXPECT_EQ(progress->At(0.25), std::vector<double>{0.25});
    EXPECT_EQ(progress->At(1.0), std::vector<double>{1.0});
}

TEST_F(TransitionEffectTest, RatioIsThatOfThePicture) {
    EXPECT_EQ(Make({picture_, picture_}).effects[0].FindParam("ratio")->still,
              std::vector<double>{1.5});
    EXPECT_EQ(Make({picture_, picture_, "--size", "40x10"}).effects[0].FindParam("ratio")->still,
              std::vector<double>{4.0});
    EXPECT_EQ(Make({picture_, picture_, "--float", "ratio=2"}).effects[0].FindParam("ratio")->still,
              std::vector<double>{2.0});
}

TEST_F(TransitionEffectTest, CommandLineReplacesDefaults) {
    const Job job = Make(
        {picture_, picture_, "--float", "size=0:2", "--float", "progress=0.5", "--int", "flip=0"});
    EXPECT_EQ(job.effects[0].FindParam("size")->last, std::vector<double>{2.0});
    EXPECT_TRUE(job.effects[0].FindParam("progress")->first.empty());
    EXPECT_EQ(job.effects[0].FindParam("flip")->still, std::vector<double>{0.0});
}

TEST_F(TransitionEffectTest, MissingPicturesAreNamed) {
    EXPECT_EQ(ErrorWith({}), "--transition '" + file_ + "': expected two pictures");
    EXPECT_EQ(ErrorWith({picture_}), "--transition '" + file_ + "': expected two pictures");
    const std::string luma =
        folder_.Write("luma.glsl",
                      "uniform sampler2D luma;\n"
                      "vec4 transition(vec2 p) { return texture2D(luma, p); }");
    EXPECT_EQ(ErrorWith({picture_, picture_}, luma),
              "--transition '" + luma + "': its 'luma' needs picture 3");
    EXPECT_EQ(Make({picture_, picture_, picture_}, luma).effects[0].inputs.size(), 3u);
}

TEST_F(TransitionEffectTest, UnknownParameterIsRefused) {
    EXPECT_EQ(ErrorWith({picture_, picture_, "--float", "sise=1"}),
              "'sise': '" + file_ + "' has no such parameter");
    EXPECT_EQ(ErrorWith({picture_, picture_, "--float", "flip=1"}), "'flip' is a int, not a float");
}

TEST_F(TransitionEffectTest, OtherTextsAreRefused) {
    const std::string other = folder_.Write("other.glsl", "float f() { return 1.0; }\n");
    EXPECT_EQ(ErrorWith({picture_, picture_}, other),
              other + ": no `vec4 transition(vec2 ...)` in the text");
    EXPECT_NE(ErrorWith({picture_, picture_}, folder_.Path() + "/none.glsl").find("none.glsl"),
              std::string::npos);
}

}  // namespace
}  // namespace effect_render
