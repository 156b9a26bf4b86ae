#include <gtest/gtest.h>

#include "host/fake_host.h"

namespace {

using host::Effect;
using host::FakeHost;
using host::FakeHostBothModes;
using host::Lines;
using host::Mode;

class EffectStateTest : public FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(Mode::inlined);
    }
};

TEST_F(EffectStateTest, SizesComeFromCreateAndResize) {
    const Effect effect = makeEffect();
    EXPECT_EQ(67u, effect->GetWidth());
    EXPECT_EQ(41u, effect->GetHeight());
    EXPECT_EQ(268u, effect->GetPitch());
    EXPECT_EQ(0, effect->ResizeEffect(10, 20, 64, effect));
    EXPECT_EQ(10u, effect->GetWidth());
    EXPECT_EQ(20u, effect->GetHeight());
    EXPECT_EQ(64u, effect->GetPitch());
}

TEST_F(EffectStateTest, APitchAboveZeroOfADrawReplacesTheEffects) {
    const Effect effect = readyEffect();
    effect->DrawEffect(DrawParams(), effect, 0);
    EXPECT_EQ(268u, effect->GetPitch());
    effect->DrawEffect(DrawParams(), effect, -4);
    EXPECT_EQ(268u, effect->GetPitch());
    effect->DrawEffect(DrawParams(), effect, 512);
    EXPECT_EQ(512u, effect->GetPitch());
}

TEST_F(EffectStateTest, TargetsAreNullBeforeTheFirstDraw) {
    const Effect effect = readyEffect();
    EXPECT_EQ(nullptr, effect->GetRenderTarget());
    EXPECT_EQ(nullptr, effect->GetOutputTexture());
}

TEST_F(EffectStateTest, ADrawFillsTheOutputsRecord) {
    const Effect effect = readyEffect();
    ASSERT_EQ(0, draw(effect));
    const TextureNum* output = effect->GetOutputTexture();
    ASSERT_NE(nullptr, output);
    EXPECT_EQ(effect->GetRenderTarget(), output);
    EXPECT_EQ(0u, output->reserved);
    EXPECT_EQ(67u, output->width);
    EXPECT_EQ(41u, output->height);
    EXPECT_EQ(&output->colour, output->gpu_data);
    EXPECT_EQ(nullptr, output->depth_gpu_data);
    EXPECT_EQ(nullptr, output->msaa_texture);
    EXPECT_EQ("texture#1", world.nameOf(output->colour.texture));
    EXPECT_EQ("srv#1", world.nameOf(output->colour.srv));
    EXPECT_EQ("sampler#1", world.nameOf(output->colour.sampler));
    EXPECT_EQ("rtv#1", world.nameOf(output->render_target_view));
}

TEST_F(EffectStateTest, ADrawWithDepthHandsTheDepthPictureOut) {
    host::EffectPlan plan;
    plan.with_depth = true;
    const Effect effect = readyEffect(host::kRed, plan);
    ASSERT_EQ(0, draw(effect));
    // The colour texture is the first, the depth texture the second.
    const GpuData* depth = effect->GetOutputTexture()->depth_gpu_data;
    ASSERT_NE(nullptr, depth);
    EXPECT_EQ("texture#2", world.nameOf(depth->texture));
    EXPECT_EQ("srv#2", world.nameOf(depth->srv));
    EXPECT_EQ("sampler#2", world.nameOf(depth->sampler));
}

TEST_F(EffectStateTest, WithMsaaTheDepthPictureIsTheFourSampleOne) {
    host::EffectPlan plan;
    plan.with_depth = true;
    const Effect effect = makeEffectOf(host::kRed, plan);
    effect->SetMsaa(true);
    ASSERT_EQ(0, init(effect));
    ASSERT_EQ(0, draw(effect));
    const TextureNum* output = effect->GetOutputTexture();
    EXPECT_EQ("texture#1", world.nameOf(output->colour.texture));
    EXPECT_EQ("texture#2", world.nameOf(output->msaa_texture));
    EXPECT_EQ("texture#3", world.nameOf(output->depth_gpu_data->texture));
    EXPECT_NE(std::string::npos, world.textsOf("CreateTexture2D")[2].find("samples=4/0"));
}

TEST_F(EffectStateTest, SwitchingMsaaAfterTheFirstDrawRemakesNothing) {
    const Effect effect = readyEffect();
    ASSERT_EQ(0, draw(effect));
    effect->SetMsaa(true);
    world.clearCalls();
    draw(effect);
    EXPECT_TRUE(world.callsOf("CreateTexture2D").empty());
    EXPECT_TRUE(world.callsOf("CreateRenderTargetView").empty());
}

TEST_F(EffectStateTest, GetEffectDevicePairIsTheEngines) {
    EXPECT_EQ(engine->GetDevicePair(), makeEffect()->GetEffectDevicePair());
}

TEST_P(FakeHostBothModes, AnEffectLeavesNothingOnTheDevice) {
    {
        host::EffectPlan plan;
        plan.with_depth = true;
        const Effect effect = makeEffectOf(host::kPass, plan);
        effect->SetMsaa(true);
        effect->SetDepthTest(true);
        effect->AddFbo();
        effect->AddFbo();
        effect->AddFlatInput(5, 3, 20, false);
        effect->AddAudioInput();
        const std::vector<uint8_t> pixels(60, 1);
        const float samples[4] = {};
        std::vector<uint8_t> buffer(67 * 41 * 4);
        DrawParams params;
        params.readback_buffer = buffer.data();
        ASSERT_EQ(0, init(effect)) << host::log::all();
        for (int i = 0; i < 3; ++i) {
            effect->SetInputTexture(0, pixels.data(), 5, 3, 20, 4, false, 0);
            effect->SetAudioInput(1, 4, samples);
            EXPECT_EQ(0, draw(effect, params));
            EXPECT_EQ(0, effect->SwapFbo(i % 2));
        }
        int32_t number = 0;
        EXPECT_TRUE(effect->AddProgram(&number, host::kRed, nullptr));
        EXPECT_EQ(2, number);
        EXPECT_EQ(0, effect->ResizeEffect(20, 10, 80, effect));
        EXPECT_EQ(0, draw(effect));
        EXPECT_EQ(Lines(), host::log::errors());
    }
    if (GetParam() == Mode::threaded) {
        stop();  // the pool goes with the render thread
        EXPECT_EQ(Lines(), world.live());
    } else {
        // The pool of an inline engine stays until the next one replaces it.
        stop();
        start(GetParam());
        EXPECT_EQ(Lines(), world.live());
    }
}

TEST_P(FakeHostBothModes, AnEffectThatNeverDrewLeavesNothing) {
    makeEffect();
    EXPECT_EQ(0, init(makeEffectOf(host::kRed)));
    EXPECT_NE(0, init(makeEffectOf(host::kBadGlsl)));
    stop();
    start(GetParam());
    EXPECT_EQ(Lines(), world.live());
}

TEST_P(FakeHostBothModes, AHundredEffectsComeAndGo) {
    for (int i = 0; i < 100; ++i) {
        const Effect effect = makeEffectOf(host::kRed);
        ASSERT_EQ(0, init(effect));
        ASSERT_EQ(0, draw(effect));
    }
    // One program for all of them stays in the pool: two shaders.
    EXPECT_EQ((Lines{"pixel_shader#1: 1", "vertex_shader#1: 1"}), world.live());
}

TEST_F(EffectStateTest, ReferencesOnTheDeviceDoNotGrowWithEffects) {
    const int before = world.references(world.device());
    const int context_before = world.references(world.immediate());
    for (int i = 0; i < 5; ++i) {
        const Effect effect = readyEffect();
        std::vector<uint8_t> buffer(67 * 41 * 4);
        DrawParams params;
        params.readback_buffer = buffer.data();
        EXPECT_EQ(0, draw(effect, params));
        EXPECT_EQ(0, draw(effect));
    }
    EXPECT_EQ(before, world.references(world.device()));
    EXPECT_EQ(context_before, world.references(world.immediate()));
}

}  // namespace
