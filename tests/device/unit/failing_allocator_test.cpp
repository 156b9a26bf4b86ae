// Every allocation of a compile and of a draw fails in turn: nothing crashes, nothing leaks, and
// the next attempt works.

#include <gtest/gtest.h>

#include <functional>

#include "host/fake_host.h"
#include "unit/counting_allocator.h"

namespace {

using host::Effect;
using host::FakeHost;
using host::Mode;

constexpr size_t kManySteps = 20000;  // more than any of the scenes allocates

class FailingAllocatorTest : public FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(Mode::inlined);
        world.setRecording(false);
    }
    void TearDown() override {
        world.setRecording(true);
        FakeHost::TearDown();
    }
    /// Runs the scene with its first, second ... last allocation failing; gives how many failed.
    size_t sweep(const std::function<void()>& scene) {
        for (size_t nth = 1; nth < kManySteps; ++nth) {
            allocator::failNth(nth);
            try {
                scene();
            } catch (const std::bad_alloc&) {
                // The host gets it: there is nobody else to tell.
            }
            const bool struck = allocator::struck();
            allocator::failNth(0);
            if (!struck) {
                return nth - 1;
            }
        }
        return kManySteps;
    }
};

TEST_F(FailingAllocatorTest, Draws) {
    // A new effect in each step, whose first draw makes everything.
    const Effect keeper = makeEffectOf(host::kPass);  // keeps the program in the pool
    keeper->AddFlatInput(8, 8, 32, false);
    ASSERT_EQ(0, init(keeper));
    const std::vector<uint8_t> pixels(256);
    std::vector<uint8_t> buffer(67 * 41 * 4);
    DrawParams params;
    params.readback_buffer = buffer.data();
    size_t failed = 0;
    for (size_t nth = 1; nth < kManySteps; ++nth) {
        const Effect effect = makeEffectOf(host::kPass);
        effect->AddFlatInput(8, 8, 32, false);
        effect->AddFbo();
        effect->SetDepthTest(true);
        ASSERT_EQ(0, init(effect));
        effect->SetInputTexture(0, pixels.data(), 8, 8, 32, 4, false, 0);
        allocator::failNth(nth);
        try {
            draw(effect, params);
        } catch (const std::bad_alloc&) {
        }
        const bool struck = allocator::struck();
        allocator::failNth(0);
        ASSERT_EQ(0, draw(effect, params)) << "after allocation " << nth;
        if (!struck) {
            break;
        }
        ++failed;
    }
    EXPECT_GT(failed, 5u);
}

TEST_F(FailingAllocatorTest, Compiles) {
    const Effect effect = makeEffectOf(host::kPass);
    effect->SetVertexShaderText(host::kVertex);
    effect->AddFlatInput(8, 8, 32, false);
    effect->RegisterParamVec3("tint", nullptr);
    ASSERT_EQ(0, init(effect));
    EXPECT_GT(sweep([&] { init(effect); }), 10u);
    EXPECT_EQ(0, init(effect));
    EXPECT_EQ(0, draw(effect));
}

TEST_F(FailingAllocatorTest, EffectsAreMadeAndRegistered) {
    EXPECT_GT(sweep([&] {
                  Effect effect;
                  engine->CreateEffect(8, 8, 32, true, "a_path_longer_than_a_small_string.frag",
                                       effect, 0, "another_path_that_is_rather_long.vert",
                                       {{"a", "b"}}, {{"c"}});
                  effect->AddFlatInput(4, 4, 16, false);
                  effect->AddAudioInput();
                  effect->AddFbo();
                  effect->RegisterParamFloat("a_name_longer_than_a_small_string", 1);
                  effect->RegisterParamVec2Array("another_name_longer_than_that", nullptr, 3);
                  effect->SetParamFloatPerPass("a_name_longer_than_a_small_string", {nullptr});
                  effect->SetVertexCounts({1, 2, 3});
                  effect->SetInputTextureList(0, std::vector<InputTexture>(3));
                  effect->AddVertexAttribute("v", 2, nullptr, false, false, 0);
              }),
              20u);
    EXPECT_EQ(0, draw(readyEffect()));
}

TEST_F(FailingAllocatorTest, NothingLeaks) {
    const Effect effect = makeEffectOf(host::kPass);
    effect->AddFlatInput(8, 8, 32, false);
    ASSERT_EQ(0, init(effect));
    ASSERT_EQ(0, draw(effect));
    const auto scene = [&] {
        const Effect other = makeEffectOf(host::kPass);
        other->AddFlatInput(8, 8, 32, false);
        if (init(other) == 0) {
            draw(other);
        }
    };
    scene();
    host::log::clear();
    const long long before = allocator::live();
    for (size_t nth = 1; nth < 400; ++nth) {
        allocator::failNth(nth);
        try {
            scene();
        } catch (const std::bad_alloc&) {
        }
        allocator::failNth(0);
    }
    scene();
    host::log::clear();
    // What a vector or a map of the library keeps for the next time is no leak of each step.
    EXPECT_LT(allocator::live() - before, 40);
}

// The same on an engine's render thread, where the work of a threaded engine is done. The thread
// itself lives on: what it cannot finish fails alone.
class RenderThreadAllocatorTest : public FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(Mode::threaded);
        world.setRecording(false);
    }
    void TearDown() override {
        world.setRecording(true);
        FakeHost::TearDown();
    }
    void onRenderThread(const std::function<void()>& work) {
        EXPECT_TRUE(engine
                        ->PostTask(
                            [&work] {
                                work();
                                return true;
                            },
                            true)
                        .get());
    }
    /// Runs the scene with the first, second ... last allocation of the render thread failing, and
    /// the check behind each; gives how many failed.
    size_t sweep(const std::function<void()>& scene, const std::function<void()>& check) {
        for (size_t nth = 1; nth < kManySteps && !HasFailure(); ++nth) {
            onRenderThread([nth] { allocator::failNth(nth); });
            try {
                scene();
            } catch (const std::bad_alloc&) {
            }
            bool struck = false;
            onRenderThread([&struck] {
                struck = allocator::struck();
                allocator::failNth(0);
            });
            check();
            if (!struck) {
                return nth - 1;
            }
        }
        return kManySteps;
    }
};

TEST_F(RenderThreadAllocatorTest, Compiles) {
    const Effect effect = makeEffectOf(host::kPass);
    effect->SetVertexShaderText(host::kVertex);
    effect->AddFlatInput(8, 8, 32, false);
    ASSERT_EQ(0, init(effect));
    EXPECT_GT(sweep([&] { init(effect); },
                    [&] {
                        ASSERT_EQ(0, init(effect)) << host::log::all();
                        ASSERT_EQ(0, draw(effect));
                        host::log::clear();
                    }),
              10u);
}

TEST_F(RenderThreadAllocatorTest, Draws) {
    const Effect keeper = makeEffectOf(host::kPass);
    keeper->AddFlatInput(8, 8, 32, false);
    ASSERT_EQ(0, init(keeper));
    const std::vector<uint8_t> pixels(256);
    std::vector<uint8_t> buffer(67 * 41 * 4);
    DrawParams params;
    params.readback_buffer = buffer.data();
    const auto prepare = [&] {
        Effect effect = makeEffectOf(host::kPass);
        effect->AddFlatInput(8, 8, 32, false);
        effect->SetDepthTest(true);
        EXPECT_EQ(0, init(effect));
        effect->SetInputTexture(0, pixels.data(), 8, 8, 32, 4, false, 0);
        return effect;
    };
    Effect effect = prepare();
    EXPECT_GT(sweep([&] { draw(effect, params); },
                    [&] {
                        ASSERT_EQ(0, draw(effect, params)) << host::log::all();
                        effect = prepare();
                        host::log::clear();
                    }),
              3u);
}

}  // namespace
