// Who outlives whom: effects, engines, pools, and both modes beside each other.

#include <gtest/gtest.h>

#include <algorithm>
#include <future>
#include <string>
#include <thread>

#include "host/fake_host.h"

namespace {

using host::Effect;
using host::FakeHost;
using host::Library;
using host::Lines;
using host::Mode;

constexpr int32_t kFail = static_cast<int32_t>(0x80004005);

std::ptrdiff_t liveOf(const fake::World& world, const std::string& kind) {
    const Lines live = world.live();
    return std::count_if(live.begin(), live.end(), [&kind](const std::string& line) {
        return line.compare(0, kind.size() + 1, kind + "#") == 0;
    });
}

class LifetimeTest : public FakeHost {
protected:
    /// An engine on a device of its own, which the fixture does not know.
    static IOpenGLEffectEngine* startOn(fake::World& other, Mode mode) {
        IOpenGLEffectEngine* made = nullptr;
        EXPECT_EQ(0, Library::get().create(&made, host::log::receive, mode == Mode::threaded,
                                           other.device()));
        return made;
    }
    Effect readyEffectOf(IOpenGLEffectEngine* other) {
        engine = other;
        return readyEffect();
    }
};

TEST_F(LifetimeTest, AnEffectOfAStoppedThreadedEngineRefusesItsWork) {
    start(Mode::threaded);
    const Effect effect = readyEffect();
    stop();
    EXPECT_EQ(kFail, draw(effect));
    EXPECT_EQ(kFail, init(effect));
    EXPECT_EQ(kFail, effect->ResizeEffect(8, 8, 32, effect));
    EXPECT_FALSE(effect->PostTaskAsync([] { return true; }, false).valid());
    EXPECT_FALSE(effect->DoTaskPost([] { return true; }));
    EXPECT_NE(nullptr, effect->GetEffectDevicePair());
}

TEST_F(LifetimeTest, AnEffectOfAStoppedInlineEngineStillDraws) {
    start(Mode::inlined);
    const Effect effect = readyEffect();
    stop();
    EXPECT_EQ(0, draw(effect));
}

TEST_F(LifetimeTest, AnEngineThatEffectsKeepIsANewOneForTheNextCreate) {
    start(Mode::threaded);
    const Effect old_effect = readyEffect();
    const IOpenGLEffectEngine* const old_engine = engine;
    stop();
    start(Mode::threaded);
    EXPECT_NE(old_engine, engine);
    EXPECT_EQ(0, draw(readyEffect()));
    EXPECT_EQ(kFail, draw(old_effect));
}

TEST_F(LifetimeTest, DestroyFromInsideATaskIsRefusedAndTheEngineGoesOn) {
    start(Mode::threaded);
    IOpenGLEffectEngine* const live = engine;
    EXPECT_TRUE(live->PostTask([live] { return Library::get().destroy(live) == 0; }, false).get());
    EXPECT_EQ((Lines{"an engine cannot be destroyed from its own thread"}), host::log::errors());
    EXPECT_TRUE(live->PostTask([] { return true; }, false).get());
}

TEST_F(LifetimeTest, TheLastPointerToAnEffectMayGoInsideATask) {
    start(Mode::threaded);
    Effect effect = readyEffect();
    EXPECT_EQ(0, draw(effect));
    std::future<bool> done = engine->PostTask(
        [&effect] {
            effect.reset();
            return true;
        },
        false);
    EXPECT_TRUE(done.get());
    EXPECT_EQ(0, liveOf(world, "deferred"));
}

TEST_F(LifetimeTest, EnginesOnTwoDevicesKeepTheirShadersApart) {
    // The pool in the process's one place is of the engine that started last. An engine on another
    // device takes its own, or it would draw with shaders of a foreign device.
    fake::World& other = host::newWorld();
    IOpenGLEffectEngine* const threaded = start(Mode::threaded);
    IOpenGLEffectEngine* const inlined = startOn(other, Mode::inlined);
    {
        const Effect first = readyEffectOf(threaded);
        EXPECT_EQ(0, draw(first));
        const Effect second = readyEffectOf(inlined);
        EXPECT_EQ(0, draw(second));
        EXPECT_EQ(1, liveOf(world, "pixel_shader"));
        EXPECT_EQ(1, liveOf(other, "pixel_shader"));
    }
    Library::get().destroy(inlined);
    EXPECT_EQ(Lines(), other.errors());
}

TEST_F(LifetimeTest, EnginesOnOneDeviceShareTheirPrograms) {
    IOpenGLEffectEngine* const inlined = start(Mode::inlined);
    IOpenGLEffectEngine* const threaded = start(Mode::threaded);
    const Effect first = readyEffectOf(threaded);
    const Effect second = readyEffectOf(inlined);
    EXPECT_EQ(1, liveOf(world, "pixel_shader"));
}

TEST_F(LifetimeTest, ThePoolOfADestroyedEngineStaysForTheOthersEffects) {
    IOpenGLEffectEngine* const inlined = start(Mode::inlined);
    IOpenGLEffectEngine* const threaded = start(Mode::threaded);
    const Effect effect = readyEffectOf(inlined);  // from the pool of the threaded engine
    Library::get().destroy(threaded);
    EXPECT_EQ(0, draw(effect));
    const Effect late = readyEffectOf(inlined);  // the shared place is empty
    EXPECT_EQ(0, draw(late));
}

TEST_F(LifetimeTest, ThePoolOfAThreadedEngineGoesWithIt) {
    start(Mode::threaded);
    readyEffect();  // its program stays with the pool, unused
    EXPECT_EQ(1, liveOf(world, "pixel_shader"));
    stop();
    EXPECT_EQ(Lines(), world.live());
}

TEST_F(LifetimeTest, ThePoolOfAnInlineEngineGoesWhenItIsReplacedOnTheOwnersThread) {
    start(Mode::inlined);
    readyEffect();
    stop();
    EXPECT_EQ(1, liveOf(world, "pixel_shader"));
    start(Mode::inlined);
    EXPECT_EQ(0, liveOf(world, "pixel_shader"));
}

TEST_F(LifetimeTest, APoolReplacedOnAForeignThreadStaysAllocated) {
    // On purpose: no device object is released from a thread that the device does not belong to.
    start(Mode::inlined);
    readyEffect();
    stop();
    start(Mode::threaded);
    EXPECT_EQ(1, liveOf(world, "pixel_shader"));
}

TEST_F(LifetimeTest, TheOwnerThreadOfAnInlineEngineCanMove) {
    start(Mode::inlined);
    readyEffect();
    std::thread([this] { engine->SetOwnerThread(nullptr); }).join();
    stop();
    start(Mode::inlined);
    EXPECT_EQ(1, liveOf(world, "pixel_shader"))
        << "replaced on a thread that is no longer the owner";
}

}  // namespace
