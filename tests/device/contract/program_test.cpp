#include <gtest/gtest.h>

#include "host/fake_host.h"
#include "host/temp_folder.h"

namespace {

using host::Effect;
using host::EffectPlan;
using host::FakeHost;
using host::FakeHostBothModes;
using host::Lines;
using host::Mode;
using host::TempFolder;

constexpr int32_t kFail = static_cast<int32_t>(0x80004005);
const char kGreen[] = "vec4 FUNCNAME(vec2 tc) { return vec4(0.0, 1.0, 0.0, 1.0); }\n";
const char kBlue[] = "vec4 FUNCNAME(vec2 tc) { return vec4(0.0, 0.0, 1.0, 1.0); }\n";

class ProgramTest : public FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(Mode::inlined);
        effect = readyEffect();  // pixel_shader#1
        effect->SetVertexCounts({4, 4, 4, 4, 4});
    }
    void TearDown() override {
        effect.reset();
        FakeHost::TearDown();
    }
    /// Names of the pixel shaders of one draw, pass by pass.
    Lines pixelShaders() {
        world.clearCalls();
        result = draw(effect);
        Lines names;
        for (const fake::Call& call : world.callsOf("PSSetShader")) {
            names.push_back(call.arguments.substr(0, call.arguments.find(',')));
        }
        return names;
    }
    int32_t add(const char* text, int32_t number = 0) {
        EXPECT_TRUE(effect->AddProgram(&number, text, nullptr));
        return number;
    }
    Effect effect;
    int32_t result = -1;
};

TEST_F(ProgramTest, NumbersBeginAtTwo) {
    EXPECT_EQ(2, add(kGreen));
    EXPECT_EQ(3, add(kBlue));
    EXPECT_EQ(4, add(kBlue, -7));
    EXPECT_EQ(5, add(kBlue, 99)) << "a number that is not there gets a new one";
}

TEST_F(ProgramTest, PassesTakeTheirPrograms) {
    add(kGreen);
    add(kBlue);
    effect->SetPassPrograms({0, 2, 1, 3});
    // Below 2 the main program; a pass past the list too.
    EXPECT_EQ((Lines{"pixel_shader#1", "pixel_shader#2", "pixel_shader#1", "pixel_shader#3",
                     "pixel_shader#1"}),
              pixelShaders());
    EXPECT_EQ(0, result);
}

TEST_F(ProgramTest, ANegativeNumberMeansTheMainProgram) {
    effect->SetVertexCounts({4});
    effect->SetPassPrograms({-3});
    EXPECT_EQ((Lines{"pixel_shader#1"}), pixelShaders());
}

TEST_F(ProgramTest, ANumberThatDoesNotExistSkipsThePassWithALineInTheLog) {
    add(kGreen);
    effect->SetPassPrograms({5, 2});
    host::log::clear();
    EXPECT_EQ((Lines{"pixel_shader#2", "pixel_shader#1", "pixel_shader#1", "pixel_shader#1"}),
              pixelShaders());
    EXPECT_EQ(4u, world.callsOf("Draw").size());
    EXPECT_EQ(1u, host::log::errors().size() + host::log::warnings().size());
    EXPECT_EQ(0, result);
}

TEST_F(ProgramTest, AFailedCompileIsTrueAndLeavesAnEmptyProgram) {
    // On purpose: the host keeps the number and may replace the program.
    const int32_t number = add(host::kBadGlsl);
    EXPECT_EQ(2, number);
    EXPECT_FALSE(host::log::errors().empty());
    effect->SetVertexCounts({4, 4});
    effect->SetPassPrograms({0, 2});
    const Lines shaders = pixelShaders();
    EXPECT_EQ("pixel_shader#1", shaders.at(0));
    EXPECT_EQ(0, result);
    EXPECT_EQ(2, add(kGreen, 2));
    EXPECT_EQ((Lines{"pixel_shader#1", "pixel_shader#2"}), pixelShaders());
}

TEST_F(ProgramTest, ReplacingGivesTheOldOneBackToThePool) {
    add(kGreen);
    EXPECT_EQ(2, add(kBlue, 2));
    effect->SetVertexCounts({4});
    effect->SetPassPrograms({2});
    EXPECT_EQ((Lines{"pixel_shader#3"}), pixelShaders());
    EXPECT_EQ(2, add(kGreen, 2));
    EXPECT_EQ(3, world.created(fake::Kind::pixel_shader)) << "revived from the pool";
}

TEST_F(ProgramTest, RemovingKeepsTheOthersNumbers) {
    add(kGreen);
    add(kBlue);
    int32_t number = 2;
    EXPECT_TRUE(effect->RemoveProgram(&number));
    EXPECT_EQ(0, number);
    effect->SetVertexCounts({4});
    effect->SetPassPrograms({3});
    EXPECT_EQ((Lines{"pixel_shader#3"}), pixelShaders());
    EXPECT_EQ(4, add(kGreen)) << "the place of a removed one is not filled by a new one";
}

TEST_F(ProgramTest, AMissingTextStandsForTheEffectsFile) {
    const TempFolder folder;
    effect->SetFragmentShaderPath(folder.write("a.frag", kBlue).c_str());
    int32_t number = 0;
    EXPECT_TRUE(effect->AddProgram(&number, nullptr, nullptr));
    effect->SetVertexCounts({4});
    effect->SetPassPrograms({number});
    EXPECT_EQ((Lines{"pixel_shader#2"}), pixelShaders());
    EXPECT_TRUE(host::log::holds(2, "read file:"));
}

TEST_P(FakeHostBothModes, ProgramsAreAddedAndRemovedInBothModes) {
    const Effect effect = readyEffect();
    int32_t number = 0;
    EXPECT_TRUE(effect->AddProgram(&number, kGreen, host::kVertex));
    EXPECT_EQ(2, number);
    effect->SetPassPrograms({2});
    EXPECT_EQ(0, draw(effect));
    EXPECT_TRUE(effect->RemoveProgram(&number));
    EXPECT_EQ(0, number);
}

/// An effect with one fragment segment of three variants, the last of them broken.
class VariantTest : public FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(Mode::inlined);
        EffectPlan plan;
        plan.fragment_segments = {{folder.write("one.frag", "#define LEVEL 0.25\n"),
                                   folder.write("two.frag", "#define LEVEL 0.75\n"),
                                   folder.write("bad.frag", "#define LEVEL )\n")}};
        effect = makeEffectOf("vec4 FUNCNAME(vec2 tc) { return vec4(LEVEL); }\n", plan);
    }
    void TearDown() override {
        effect.reset();
        FakeHost::TearDown();
    }
    TempFolder folder;
    Effect effect;
};

TEST_F(VariantTest, TheFirstVariantIsTakenIfNoneIsPicked) {
    EXPECT_EQ(0, init(effect)) << host::log::all();
    EXPECT_TRUE(host::log::holds(2, "one.frag"));
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(1, world.created(fake::Kind::pixel_shader));
}

TEST_F(VariantTest, AChangeIsCompiledByTheNextDraw) {
    EXPECT_EQ(0, init(effect));
    EXPECT_EQ(0, draw(effect));
    effect->SetFragmentSegmentIndices({1});
    EXPECT_EQ(1, world.created(fake::Kind::pixel_shader));
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(2, world.created(fake::Kind::pixel_shader));
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(2, world.created(fake::Kind::pixel_shader));
    effect->SetFragmentSegmentIndices({0});
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(2, world.created(fake::Kind::pixel_shader)) << "known to the pool";
}

TEST_F(VariantTest, TheLayoutStaysThatOfTheFirstProgram) {
    EXPECT_EQ(0, init(effect));
    EXPECT_EQ(0, draw(effect));
    effect->SetFragmentSegmentIndices({1});
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(1, world.created(fake::Kind::layout));
}

TEST_F(VariantTest, AVariantThatDoesNotCompileEndsTheDrawUntilTheNextInit) {
    // On purpose: after a failed change nothing but InitEffect brings the effect back.
    EXPECT_EQ(0, init(effect));
    EXPECT_EQ(0, draw(effect));
    effect->SetFragmentSegmentIndices({2});
    world.clearCalls();
    EXPECT_EQ(kFail, draw(effect));
    EXPECT_TRUE(world.callsOf("Draw").empty()) << "nothing is drawn with null programs";
    EXPECT_EQ(Lines(), world.textsOf("OMSetRenderTargets"));
    effect->SetFragmentSegmentIndices({0});
    EXPECT_EQ(kFail, draw(effect));
    EXPECT_EQ(0, init(effect));
    EXPECT_EQ(0, draw(effect));
}

TEST_F(VariantTest, AnIndexOutOfRangeIsRefused) {
    EXPECT_EQ(0, init(effect));
    for (const std::vector<int32_t>& indices :
         {std::vector<int32_t>{3}, {-1}, {0, 0}, {2147483647}}) {
        effect->SetFragmentSegmentIndices(indices);
        host::log::clear();
        EXPECT_EQ(kFail, init(effect));
        EXPECT_FALSE(host::log::errors().empty());
    }
    effect->SetFragmentSegmentIndices({0});
    EXPECT_EQ(0, init(effect));
    EXPECT_EQ(0, draw(effect));
}

TEST_F(VariantTest, AShortListLeavesTheRemainingSegmentsOut) {
    EffectPlan plan;
    const std::string level = folder.write("level.frag", "#define LEVEL 0.5\n");
    plan.fragment_segments = {{level}, {folder.write("never.frag", "this is no GLSL\n")}};
    const Effect other = makeEffectOf("vec4 FUNCNAME(vec2 tc) { return vec4(LEVEL); }\n", plan);
    other->SetFragmentSegmentIndices({0});
    EXPECT_EQ(0, init(other)) << host::log::all();
}

TEST_F(VariantTest, SegmentsMayIncludeFilesBesideThem) {
    EffectPlan plan;
    folder.write("parts/level.inc", "#define LEVEL 0.5\n");
    plan.fragment_segments = {{folder.write("parts/a.frag", "#include \"level.inc\"\n")}};
    const Effect other = makeEffectOf("vec4 FUNCNAME(vec2 tc) { return vec4(LEVEL); }\n", plan);
    EXPECT_EQ(0, init(other)) << host::log::all();
}

}  // namespace
