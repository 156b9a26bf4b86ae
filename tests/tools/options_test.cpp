#include "effect-render/options.h"

#include <gtest/gtest.h>

#include "expect_error.h"

namespace effect_render {
namespace {

Options Parse(const std::vector<std::string>& arguments) {
    std::string help;
    const auto options = ParseOptions(arguments, help);
    EXPECT_TRUE(options.has_value());
    return options.value_or(Options());
}

std::string UsageErrorOf(std::vector<std::string> arguments) {
    std::string help;
    try {
        ParseOptions(arguments, help);
    } catch (const ToolError& error) {
        EXPECT_EQ(error.Status(), ExitStatus::WrongUsage);
        return error.what();
    }
    ADD_FAILURE() << "no error";
    return "";
}

TEST(OptionsTest, EffectAndOutputAreEnough) {
    const Options options = Parse({"blur.frag", "-o", "out.png"});
    EXPECT_EQ(options.effect, "blur.frag");
    EXPECT_EQ(options.output, "out.png");
    EXPECT_EQ(options.mode, EngineMode::Threaded);
    EXPECT_FALSE(options.size.has_value());
    EXPECT_FALSE(options.depth || options.msaa || options.log);
    EXPECT_EQ(options.frames.first, 0);
    EXPECT_EQ(options.frames.last, 0);
}

TEST(OptionsTest, RepeatedOptionsKeepTheirOrderAndEatNothingBehindThem) {
    const Options options = Parse({"-i", "a.png", "--input", "b.png", "--audio", "s.f32", "e.frag",
                                   "--define", "N=4", "--define", "TEXT=a=b", "-o", "out.png"});
    EXPECT_EQ(options.effect, "e.frag");
    EXPECT_EQ(options.inputs, (std::vector<std::string>{"a.png", "b.png"}));
    EXPECT_EQ(options.audio, std::vector<std::string>{"s.f32"});
    ASSERT_EQ(options.defines.size(), 2u);
    EXPECT_EQ(options.defines[0].second, "4");
    EXPECT_EQ(options.defines[1].first, "TEXT");
    EXPECT_EQ(options.defines[1].second, "a=b");
}

TEST(OptionsTest, ParametersOfEveryTypeAreTaken) {
    const Options options =
        Parse({"e.frag", "-o", "o.png", "--int", "n=-3", "--float", "f=0.5", "--vec2", "p=1,2",
               "--vec3", "c=1,0,-1", "--vec4", "d=1,2,3,4", "--mat2", "m=1,0,0,1", "--mat3",
               "k=1,0,0,0,1,0,0,0,1", "--mat4", "q=1,0,0,0,0,1,0,0,0,0,1,0,0,0,0,1"});
    ASSERT_EQ(options.params.size(), 8u);
    EXPECT_EQ(options.params[0].name, "n");
    EXPECT_EQ(options.params[0].still, std::vector<double>{-3.0});
    EXPECT_EQ(options.params[3].still, (std::vector<double>{1.0, 0.0, -1.0}));
    EXPECT_EQ(options.params[7].type.kind, ParamKind::Mat4);
    EXPECT_EQ(options.params[7].still.size(), 16u);
}

TEST(OptionsTest, DrawingIsSetUp) {
    const Options options =
        Parse({"e.frag", "-o", "o%03d.png", "--size", "67x41", "--frames", "10-24", "--mode",
               "inline", "--depth", "--msaa", "--blend", "3", "--clear", "1,0.5,0,1", "--log"});
    EXPECT_EQ(options.size, std::pair(67u, 41u));
    EXPECT_EQ(options.frames.first, 10);
    EXPECT_EQ(options.frames.last, 24);
    EXPECT_EQ(options.span.first, 10);
    EXPECT_EQ(options.span.last, 24);
    EXPECT_EQ(options.mode, EngineMode::Inline);
    EXPECT_TRUE(options.depth && options.msaa && options.log);
    EXPECT_EQ(options.blend, 3);
    EXPECT_EQ(options.clear_color, (std::array<float, 4>{1.0f, 0.5f, 0.0f, 1.0f}));
}

TEST(OptionsTest, SpanIsKeptApartFromTheFrames) {
    const Options options =
        Parse({"e.frag", "-o", "%d.png", "--frames", "10-19", "--span", "0-99"});
    EXPECT_EQ(options.frames.last, 19);
    EXPECT_EQ(options.span.last, 99);
}

TEST(OptionsTest, PathsThatBeginWithASlashAreNoOptions) {
    const Options options = Parse({"/home/me/e.frag", "-o", "/tmp/o.png", "-i", "/tmp/i.png"});
    EXPECT_EQ(options.effect, "/home/me/e.frag");
    EXPECT_EQ(options.output, "/tmp/o.png");
    EXPECT_EQ(options.inputs, std::vector<std::string>{"/tmp/i.png"});
}

TEST(OptionsTest, HelpNamesEveryOption) {
    std::string help;
    EXPECT_FALSE(ParseOptions({"--help"}, help).has_value());
    for (const char* option :
         {"-o,--output", "-i,--input", "--audio",  "--size", "--int",        "--float",
          "--vec2",      "--vec3",     "--vec4",   "--mat2", "--mat3",       "--mat4",
          "--define",    "--vertex",   "--frames", "--span", "--mode",       "--depth",
          "--msaa",      "--blend",    "--clear",  "--log",  "--transition", "--no-rewrites"}) {
        EXPECT_NE(help.find(option), std::string::npos) << option;
    }
}

TEST(OptionsTest, TransitionTakesItsPicturesInPlaceOfAnEffect) {
    const Options options = Parse({"--transition", "t.glsl", "a.png", "b.png", "-i", "c.png", "-o",
                                   "%d.png", "--no-rewrites"});
    EXPECT_EQ(options.transition, "t.glsl");
    EXPECT_EQ(options.inputs, (std::vector<std::string>{"a.png", "b.png", "c.png"}));
    EXPECT_EQ(options.effect, "");
    EXPECT_FALSE(options.rewrites);
    EXPECT_TRUE(Parse({"--transition", "t.glsl", "a.png", "b.png", "-o", "o.png"}).rewrites);
}

struct BadUsage {
    std::vector<std::string> arguments;
    const char* error;
};

void PrintTo(const BadUsage& c, std::ostream* out) {
    *out << c.error;
}

class BadUsageTest : public testing::TestWithParam<BadUsage> {};

TEST_P(BadUsageTest, IsToldWithTheOptionAndTheText) {
    EXPECT_EQ(UsageErrorOf(GetParam().arguments), GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    All, BadUsageTest,
    testing::Values(
        BadUsage{{"-o", "o.png"}, "EFFECT is required"},
        BadUsage{{"e.frag"}, "-o OUT.png or --raw-out is required"},
        BadUsage{{"e.frag", "f.frag", "-o", "o.png"}, "'f.frag': only one EFFECT can be drawn"},
        BadUsage{{"e.frag", "-o", "o.png", "--no-rewrites"},
                 "--no-rewrites: belongs to --transition"},
        BadUsage{{"--transition", "t.glsl", "-o", "o.png", "--vertex", "v"},
                 "--vertex: a transition has no vertex shader"},
        BadUsage{{"e.frag", "-o", "o.png", "--size", "640"},
                 "--size '640': expected WxH, each from 1 to 16384"},
        BadUsage{{"e.frag", "-o", "o.png", "--size", "0x5"},
                 "--size '0x5': expected WxH, each from 1 to 16384"},
        BadUsage{{"e.frag", "-o", "o.png", "--size", "5x20000"},
                 "--size '5x20000': expected WxH, each from 1 to 16384"},
        BadUsage{{"e.frag", "-o", "o%d.png", "--frames", "5-2"},
                 "--frames '5-2': expected A-B, two frame numbers in order"},
        BadUsage{{"e.frag", "-o", "o%d.png", "--frames", "a-b"},
                 "--frames 'a-b': expected A-B, two frame numbers in order"},
        BadUsage{{"e.frag", "-o", "o.png", "--frames", "1-2"},
                 "-o 'o.png': several frames need a field such as %04d in it"},
        BadUsage{{"e.frag", "-o", "o%d%d.png"}, "-o 'o%d%d.png': holds more than one field"},
        BadUsage{{"e.frag", "-o", "o%s.png"},
                 "-o 'o%s.png': only fields such as %d and %04d can stand here"},
        BadUsage{{"e.frag", "-o", "o.png", "--mode", "fast"},
                 "--mode 'fast': expected threaded or inline"},
        BadUsage{{"e.frag", "-o", "o.png", "--blend", "x"}, "--blend 'x': expected a number"},
        BadUsage{{"e.frag", "-o", "o.png", "--clear", "1,2,3"},
                 "--clear '1,2,3': expected R,G,B,A"},
        BadUsage{{"e.frag", "-o", "o.png", "--define", "N"}, "--define 'N': expected NAME=VALUE"},
        BadUsage{{"e.frag", "-o", "o.png", "--vec2", "p=1"}, "'p=1': a vec2 takes 2 number(s)"}));

TEST(OptionsTest, UnknownOptionIsWrongUsage) {
    EXPECT_NE(UsageErrorOf({"e.frag", "-o", "o.png", "--depht"}).find("--depht"),
              std::string::npos);
}

struct PathCase {
    const char* pattern;
    int32_t frame;
    const char* path;
};

class FramePathTest : public testing::TestWithParam<PathCase> {};

TEST_P(FramePathTest, FieldBecomesTheFrameNumber) {
    EXPECT_EQ(FramePath(GetParam().pattern, GetParam().frame), GetParam().path);
}

INSTANTIATE_TEST_SUITE_P(All, FramePathTest,
                         testing::Values(PathCase{"o%d.png", 7, "o7.png"},
                                         PathCase{"o%04d.png", 7, "o0007.png"},
                                         PathCase{"o%3d.png", 7, "o  7.png"},
                                         PathCase{"o%02d.png", 123, "o123.png"},
                                         PathCase{"100%%/%d.png", 1, "100%/1.png"},
                                         PathCase{"plain.png", 5, "plain.png"}));

TEST(StreamOptionsTest, RawInGoesOnUntilTheEndOfTheInput) {
    const Options options = Parse({"e.frag", "--raw-in", "160x90", "--raw-out"});
    ASSERT_TRUE(options.raw_in.has_value());
    EXPECT_EQ(*options.raw_in, (std::pair<uint32_t, uint32_t>{160, 90}));
    EXPECT_TRUE(options.raw_out);
    EXPECT_TRUE(options.until_end);
    EXPECT_EQ(options.frames.first, 0);
    EXPECT_EQ(options.span.last, 0);
}

TEST(StreamOptionsTest, FramesEndTheInputEarly) {
    const Options options =
        Parse({"e.frag", "--raw-in", "4x4", "--raw-out", "--frames", "5-9", "--float", "k=0:1"});
    EXPECT_FALSE(options.until_end);
    EXPECT_EQ(options.frames.first, 5);
    EXPECT_EQ(options.frames.last, 9);
    EXPECT_EQ(options.span.first, 5);
    EXPECT_EQ(options.span.last, 9);
}

TEST(StreamOptionsTest, WhatMakesNoSenseIsRefused) {
    EXPECT_EQ(UsageErrorOf({"e.frag"}), "-o OUT.png or --raw-out is required");
    EXPECT_EQ(UsageErrorOf({"e.frag", "-o", "o.png", "--raw-out"}),
              "-o and --raw-out exclude each other");
    EXPECT_EQ(UsageErrorOf({"e.frag", "--raw-in", "4", "--raw-out"}),
              "--raw-in '4': expected WxH, each from 1 to 16384");
    EXPECT_EQ(UsageErrorOf({"e.frag", "--raw-in", "4x4", "--raw-out", "--float", "k=0:1"}),
              "--raw-in: a parameter that moves needs --frames A-B or --span A-B");
    EXPECT_EQ(UsageErrorOf({"e.frag", "--raw-in", "4x4", "-o", "o.png"}),
              "-o 'o.png': several frames need a field such as %04d in it");
}

TEST(WatchOptionsTest, CountAndStreamsAreChecked) {
    EXPECT_EQ(Parse({"e.frag", "-o", "o.png", "--watch", "--watch-count", "3"}).watch_count, 3);
    EXPECT_EQ(UsageErrorOf({"e.frag", "-o", "o.png", "--watch", "--watch-count", "0"}),
              "--watch-count '0': expected a number");
    EXPECT_EQ(UsageErrorOf({"e.frag", "-o", "o.png", "--watch-count", "1"}),
              "--watch-count: only with --watch");
    EXPECT_EQ(UsageErrorOf({"e.frag", "--raw-out", "--watch"}),
              "--watch: frames of a stream cannot be drawn again");
}

}  // namespace
}  // namespace effect_render
