#include "effect-render/job.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "diagnostics/second_look.h"
#include "effect-render/effect_json.h"
#include "effect-render/picture.h"
#include "effect-render/reports.h"
#include "expect_error.h"
#include "temp_folder.h"

namespace effect_render {
namespace {

class JobTest : public testing::Test {
protected:
    JobTest() {
        Picture picture;
        picture.width = 13;
        picture.height = 7;
        picture.pixels.assign(13 * 7 * 4, 128);
        SavePicture(folder_.Path() + "/small.png", picture);
        shader_ = folder_.Write("a.frag", "vec4 FUNCNAME(vec2 tc) { return INPUT1(tc); }");
    }

    Job Make(std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), {"-o", "out%d.png"});
        std::string help;
        return MakeJob(*ParseOptions(arguments, help));
    }

    std::string Described(const std::string& json) {
        folder_.Write("effect.json", json);
        return folder_.Path();
    }

    TempFolder folder_;
    std::string shader_;
};

TEST_F(JobTest, ShaderFileTakesTheSizeOfItsFirstInput) {
    const Job job = Make({shader_, "-i", folder_.Path() + "/small.png"});
    EXPECT_EQ(job.width, 13u);
    EXPECT_EQ(job.height, 7u);
    ASSERT_EQ(job.effects.size(), 1u);
    EXPECT_EQ(job.effects[0].fragment, shader_);
    EXPECT_TRUE(job.effects[0].passes[0].attributes.empty());
}

TEST_F(JobTest, EffectWithoutInputsIs640By360) {
    const Job job = Make({shader_});
    EXPECT_EQ(job.width, 640u);
    EXPECT_EQ(job.height, 360u);
}

TEST_F(JobTest, SizeOfTheCommandLineComesBeforeThatOfTheDescription) {
    const std::string effect =
        Described(R"({"fragment": "a.frag", "size": [20, 10], "inputs": ["small.png"]})");
    EXPECT_EQ(Make({effect}).width, 20u);
    EXPECT_EQ(Make({effect, "--size", "5x6"}).width, 5u);
}

TEST_F(JobTest, CommandLineReplacesWhatTheDescriptionSays) {
    const std::string effect = Described(R"({"fragment": "a.frag", "inputs": ["small.png"],
        "defines": {"N": "1"}, "blend": "add",
        "params": [{"name": "k", "type": "float", "default": 1}]})");
    const Job job =
        Make({effect,     "-i",      "x.png",    "-i",      "y.png",   "--size", "9x9",
              "--define", "N=2",     "--define", "M=3",     "--float", "k=4",    "--vec2",
              "p=1,2",    "--blend", "0",        "--depth", "--clear", "1,0,0,1"});
    const EffectDescription& result = job.effects[0];
    ASSERT_EQ(result.inputs.size(), 2u);
    EXPECT_EQ(result.inputs[0].files, std::vector<std::string>{"x.png"});
    EXPECT_EQ(result.inputs[1].files, std::vector<std::string>{"y.png"});
    ASSERT_EQ(result.defines.size(), 2u);
    EXPECT_EQ(result.defines[0].second, "2");
    EXPECT_EQ(result.FindParam("k")->still, std::vector<double>{4.0});
    EXPECT_EQ(result.FindParam("p")->still, (std::vector<double>{1.0, 2.0}));
    EXPECT_EQ(result.blend, 0);
    EXPECT_TRUE(result.depth);
    EXPECT_EQ(result.clear_color[0], 1.0f);
}

TEST_F(JobTest, ParameterOfAnotherTypeIsWrongUsage) {
    const std::string effect = Described(
        R"({"fragment": "a.frag", "params": [{"name": "k", "type": "float", "default": 1}]})");
    EXPECT_EQ(ErrorOf([this, &effect] {
                  Make({effect, "--int", "k=4"});
              }),
              "'k' is a float, not a int");
}

TEST_F(JobTest, FileForATargetInputIsWrongUsage) {
    const std::string effect =
        Described(R"({"fragment": "a.frag", "targets": 1, "inputs": [{"target": 0}]})");
    EXPECT_EQ(ErrorOf([this, &effect] {
                  Make({effect, "-i", "x.png"});
              }),
              "--input 'x.png': input 1 of this effect takes no file");
}

TEST_F(JobTest, StreamIsTheFirstInputAndFilesFollow) {
    const Job job = Make({shader_, "--raw-in", "24x18", "-i", "b.png"});
    EXPECT_EQ(job.width, 24u);
    EXPECT_EQ(job.height, 18u);
    const auto& inputs = job.effects[0].inputs;
    ASSERT_EQ(inputs.size(), 2u);
    EXPECT_EQ(inputs[0].kind, InputKind::Stream);
    EXPECT_EQ(inputs[0].stream_size, (std::pair<uint32_t, uint32_t>{24, 18}));
    EXPECT_TRUE(inputs[0].files.empty());
    EXPECT_EQ(inputs[1].files, std::vector<std::string>{"b.png"});
}

TEST_F(JobTest, StreamReplacesAPictureButNothingElse) {
    const std::string folder = Described(
        R"({"fragment": "a.frag", "inputs": [{"file": "small.png", "filter": "nearest"}]})");
    const Job job = Make({folder, "--raw-in", "4x4"});
    EXPECT_EQ(job.effects[0].inputs[0].kind, InputKind::Stream);
    EXPECT_TRUE(job.effects[0].inputs[0].nearest);
    Described(R"({"fragment": "a.frag", "targets": 1, "inputs": [{"target": 0}]})");
    EXPECT_EQ(ErrorOf([&] {
                  Make({folder, "--raw-in", "4x4"});
              }),
              "--raw-in: input 1 of this effect takes no picture from outside");
    Described(R"({"fragment": "a.frag", "inputs": [{"file": "small.png", "channels": 1}]})");
    EXPECT_EQ(ErrorOf([&] {
                  Make({folder, "--raw-in", "4x4"});
              }),
              "--raw-in: input 1 of this effect takes a brightness picture");
}

TEST_F(JobTest, MissingEffectIsNamed) {
    EXPECT_EQ(ErrorOf([this] { Make({"no.frag"}); }), "no.frag: there is no such effect");
}

TEST(WayTest, GoesFromZeroToOneOverTheSpan) {
    EXPECT_EQ(WayAt(10, {10, 20}), 0.0);
    EXPECT_EQ(WayAt(15, {10, 20}), 0.5);
    EXPECT_EQ(WayAt(20, {10, 20}), 1.0);
    EXPECT_EQ(WayAt(25, {10, 20}), 1.0);
    EXPECT_FALSE(WayAt(3, {3, 3}).has_value());
}

TEST(SampleEffectsTest, EveryDescriptionReads) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ORVANE_EFFECTS_FOLDER)) {
        if (!std::filesystem::exists(entry.path() / "effect.json")) {
            continue;
        }
        ++count;
        EXPECT_NO_THROW(LoadEffectFolder(entry.path().generic_u8string())) << entry.path();
    }
    EXPECT_GE(count, 12);
}

TEST(SampleEffectsTest, NoneIsWarnedOf) {
    size_t programs = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ORVANE_EFFECTS_FOLDER)) {
        if (!std::filesystem::exists(entry.path() / "effect.json")) {
            continue;
        }
        for (const EffectDescription& effect : LoadEffectFolder(entry.path().generic_u8string())) {
            const std::vector<diagnostics::EffectFacts> facts = FactsOf(effect);
            programs += facts.size();
            EXPECT_TRUE(diagnostics::explain_failure(facts, "").empty()) << entry.path();
            for (const diagnostics::Finding& finding : diagnostics::find_warnings(facts)) {
                ADD_FAILURE() << diagnostics::full_text(finding);
            }
        }
    }
    EXPECT_GE(programs, 14u);
}

}  // namespace
}  // namespace effect_render
