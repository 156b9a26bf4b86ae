// What a frame costs once everything is made: nothing on the heap, and no device object beyond
// the states that each draw makes.

#include <gtest/gtest.h>

#include "host/fake_host.h"
#include "unit/counting_allocator.h"

namespace {

using host::Effect;
using host::FakeHost;
using host::Mode;

class SteadyFrameTest : public FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(Mode::inlined);
    }
    Effect fullEffect() {
        host::EffectPlan plan;
        plan.with_depth = true;
        Effect effect = makeEffectOf(host::kPass, plan);
        effect->SetDepthTest(true);
        effect->SetMsaa(true);
        effect->SetBlendMode(1);
        effect->AddFbo();
        effect->AddFlatInput(8, 8, 32, false);
        effect->AddAudioInput();
        effect->RegisterParamFloat("a_parameter_with_quite_a_long_name", 1);
        effect->RegisterParamMat4("another_parameter_with_a_long_name", numbers);
        effect->RegisterParamVec4Array("an_array_with_a_name_beyond_small_strings", numbers, 4);
        effect->RegisterInstanceParamFloat("per_instance_parameter_with_a_name", numbers, 8);
        effect->SetVertexCounts({4, 4});
        effect->SetInstanceCounts({3, 0});
        EXPECT_EQ(0, init(effect)) << host::log::all();
        return effect;
    }
    /// What a host does for each frame.
    void frame(const Effect& effect, const DrawParams& params) {
        effect->SetParamFloat("a_parameter_with_quite_a_long_name", 2);
        effect->SetParamMat4("another_parameter_with_a_long_name", numbers);
        effect->SetParamVec4Array("an_array_with_a_name_beyond_small_strings", numbers, 4);
        effect->SetInputTexture(0, pixels, 8, 8, 32, 4, false, 0);
        effect->SetAudioInput(1, 8, numbers);
        ASSERT_EQ(0, draw(effect, params));
    }
    float numbers[16] = {};
    uint8_t pixels[256] = {};
};

TEST_F(SteadyFrameTest, AllocatesNothing) {
    const Effect effect = fullEffect();
    std::vector<uint8_t> buffer(67 * 41 * 4);
    DrawParams plain;
    DrawParams readback;
    readback.readback_buffer = buffer.data();
    world.setRecording(false);
    for (int i = 0; i < 3; ++i) {
        frame(effect, plain);
        frame(effect, readback);
    }
    allocator::resetCount();
    for (int i = 0; i < 10; ++i) {
        frame(effect, plain);
    }
    EXPECT_EQ(0u, allocator::count());
    for (int i = 0; i < 10; ++i) {
        frame(effect, readback);
    }
    EXPECT_EQ(0u, allocator::count());
    world.setRecording(true);
}

TEST_F(SteadyFrameTest, APlainDrawAllocatesNothing) {
    const Effect effect = readyEffect();
    world.setRecording(false);
    draw(effect);
    allocator::resetCount();
    draw(effect);
    EXPECT_EQ(0u, allocator::count());
    world.setRecording(true);
}

TEST_F(SteadyFrameTest, MakesOnlyTheStatesOfTheDrawAndItsList) {
    const Effect effect = fullEffect();
    const DrawParams params;
    world.setRecording(false);
    frame(effect, params);
    frame(effect, params);
    const int states[] = {
        world.created(fake::Kind::depth_state), world.created(fake::Kind::raster_state),
        world.created(fake::Kind::blend_state), world.created(fake::Kind::command_list)};
    const int all = world.createdInAll();
    for (int i = 0; i < 10; ++i) {
        frame(effect, params);
    }
    EXPECT_EQ(20, world.created(fake::Kind::depth_state) - states[0]);
    EXPECT_EQ(10, world.created(fake::Kind::raster_state) - states[1]);
    EXPECT_EQ(10, world.created(fake::Kind::blend_state) - states[2]);
    EXPECT_EQ(10, world.created(fake::Kind::command_list) - states[3]);
    EXPECT_EQ(50, world.createdInAll() - all);
    world.setRecording(true);
}

}  // namespace
