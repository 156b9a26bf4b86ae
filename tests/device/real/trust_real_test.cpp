// Hosts without a plan on the real device: nothing breaks, and the engine draws right afterwards.

#include <windows.h>

#include <psapi.h>

#include "real/pixel_host.h"
#include "trust/crowd.h"
#include "trust/random_calls.h"

namespace {

using host::Effect;
using host::Mode;
using host::PixelHost;
using host::uniform;

class RandomRealTest : public PixelHost, public testing::WithParamInterface<Mode> {
protected:
    void SetUp() override {
        PixelHost::SetUp();
        mode = GetParam();
    }
    void expectDraws() {
        host::log::clear();
        const Effect effect = readyEffect(host::kRed);
        EXPECT_TRUE(uniform({255, 0, 0, 255}, render(effect), 0));
    }
};

TEST_P(RandomRealTest, AFewHundredCallsBreakNothing) {
    int pictures = 0;
    for (uint32_t seed = 1; seed <= 4; ++seed) {
        trust::RandomHost host(engine(), seed, false);
        for (int i = 0; i < 100; ++i) {
            host.step();
            host::log::clear();
        }
        pictures += host.pictures();
    }
    EXPECT_GT(pictures, 10);
    expectDraws();
}

TEST_P(RandomRealTest, HundredsOfEffectsDoNotFillTheMemory) {
    const auto memory = [] {
        PROCESS_MEMORY_COUNTERS counters{};
        GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
        return counters.PagefileUsage;
    };
    size_t after_warm_up = 0;
    for (int i = 0; i < 400; ++i) {
        const Effect effect = readyEffect(host::kRed, 16, 16);
        ASSERT_EQ(0, draw(effect));
        host::log::clear();
        if (i == 100) {
            after_warm_up = memory();
        }
    }
    // Three hundred effects; one that leaked its target alone would show.
    EXPECT_LT(memory(), after_warm_up + (8u << 20));
    expectDraws();
}

INSTANTIATE_TEST_SUITE_P(Modes, RandomRealTest, testing::Values(Mode::inlined, Mode::threaded),
                         host::modeParamName);

class CrowdRealTest : public PixelHost {};

TEST_F(CrowdRealTest, EightThreadsAndFiftyEffects) {
    mode = Mode::threaded;
    EXPECT_GT(trust::runCrowd(engine(), trust::stressLength(), false), 100);
    const Effect effect = readyEffect(host::kRed);
    EXPECT_TRUE(uniform({255, 0, 0, 255}, render(effect), 0));
}

}  // namespace
