// Many threads, many effects and many engines on the fake device: nothing is misused, nothing is
// left, nothing grows.

#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <thread>

#include "trust/crowd.h"
#include "trust/footprint.h"
#include "trust/random_calls.h"

namespace {

using host::FakeHost;
using host::Library;
using host::Lines;
using host::Mode;

constexpr int kEngines = 200;
constexpr int kWarmUp = 20;  // engines until what is made once for the process is made
constexpr size_t kHeapSlack = size_t{1} << 20;

class StressTest : public FakeHost {
protected:
    /// A pool whose place another engine took from its own thread stays for good, with what it
    /// keeps for later: programs and free textures. Nothing else may be left.
    static void expectOnlyPooled(const Lines& live) {
        static const std::set<std::string> pooled = {"pixel_shader", "vertex_shader", "texture",
                                                     "srv", "sampler"};
        for (const std::string& line : live) {
            EXPECT_EQ(1u, pooled.count(line.substr(0, line.find('#')))) << line;
        }
    }
};

TEST_F(StressTest, EightThreadsAndFiftyEffectsOnOneEngine) {
    start(Mode::threaded);
    const int calls = trust::runCrowd(engine, trust::stressLength(), true);
    EXPECT_GT(calls, 500);
    stop();
    EXPECT_EQ(Lines(), world.live());
    EXPECT_EQ(Lines(), world.errors());
    std::printf("%d calls in %d seconds\n", calls, static_cast<int>(trust::stressLength().count()));
}

// The pool of the process is that of the engine that started last; each engine's effects keep to
// their own device all the same. The fake devices take another one's objects for strangers.
TEST_F(StressTest, TwoEnginesOnDifferentDevicesAtTheSameTime) {
    fake::World& other = host::newWorld();
    start(Mode::threaded);
    IOpenGLEffectEngine* second = nullptr;
    ASSERT_EQ(0, Library::get().create(&second, host::log::receive, false, other.device()));
    std::thread crowd([this] { trust::runCrowd(engine, std::chrono::seconds(2), true); });
    int pictures = 0;
    for (uint32_t seed = 500; seed < 510; ++seed) {
        trust::RandomHost host(second, seed);
        for (int i = 0; i < 100; ++i) {
            host.step();
        }
        pictures += host.pictures();
    }
    crowd.join();
    EXPECT_GT(pictures, 20);
    Library::get().destroy(second);
    stop();
    EXPECT_EQ(Lines(), world.errors());
    EXPECT_EQ(Lines(), other.errors());
    expectOnlyPooled(world.live());
    expectOnlyPooled(other.live());
}

class EnginesTest : public FakeHost, public testing::WithParamInterface<Mode> {};

TEST_P(EnginesTest, TwoHundredEnginesLeaveNothing) {
    world.setRecording(false);  // its list of calls would grow
    trust::Footprint before;
    for (int i = 0; i < kEngines; ++i) {
        start(GetParam());
        EXPECT_EQ(0, draw(readyEffect()));
        stop();
        host::log::clear();
        if (i == kWarmUp) {
            before = trust::footprintNow();
        }
    }
    const trust::Footprint after = trust::footprintNow();
    std::printf("%s\n", change(before, after).c_str());
    EXPECT_GT(before.handles, 0u) << "they are counted";
    EXPECT_LE(after.handles, before.handles + 5);
    EXPECT_LE(after.heap_bytes, before.heap_bytes + kHeapSlack);
    world.setRecording(true);
}

INSTANTIATE_TEST_SUITE_P(Modes, EnginesTest, testing::Values(Mode::inlined, Mode::threaded),
                         host::modeParamName);

}  // namespace
