// Hosts without a plan on the real device: nothing breaks, and the engine draws right afterwards.

#include <algorithm>
#include <cstdio>

#include "real/pixel_host.h"
#include "trust/crowd.h"
#include "trust/footprint.h"
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
    const auto memory = [] { return trust::footprintNow().private_bytes; };
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
    // The first half fills the pool, to its budget and its hundred unused programs.
    const auto half = std::max(trust::stressLength() / 2, std::chrono::seconds(1));
    int calls = trust::runCrowd(engine(), half, false);
    const trust::Footprint before = trust::footprintNow();
    calls += trust::runCrowd(engine(), half, false);
    EXPECT_GT(calls, 100);
    const trust::Footprint after = trust::footprintNow();
    std::printf("%d calls in %d seconds, in the second half %s\n", calls,
                static_cast<int>(2 * half.count()), change(before, after).c_str());
    EXPECT_LE(after.handles, before.handles + 20);
    const Effect effect = readyEffect(host::kRed);
    EXPECT_TRUE(uniform({255, 0, 0, 255}, render(effect), 0));
}

}  // namespace
