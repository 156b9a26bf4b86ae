#include "trust/random_calls.h"

#include <gtest/gtest.h>

namespace {

using host::FakeHost;
using host::Lines;
using host::Mode;

class RandomCallsTest : public FakeHost, public testing::WithParamInterface<Mode> {};

TEST_P(RandomCallsTest, NothingBreaksAndNothingIsLeft) {
    int pictures = 0;
    for (uint32_t seed = 1; seed <= 40; ++seed) {
        start(GetParam());
        {
            trust::RandomHost host(engine, seed);
            for (int i = 0; i < 150; ++i) {
                host.step();
                host::log::clear();
                world.clearCalls();
                ASSERT_EQ(Lines(), world.errors())
                    << "seed " << seed << ", step " << i << ": " << host.lastCall();
            }
            pictures += host.pictures();
        }
        stop();
    }
    EXPECT_GT(pictures, 400) << "the sequences must reach drawing";
    start(Mode::inlined);  // replaces the last pool
    stop();
    EXPECT_EQ(Lines(), world.live());
}

TEST_P(RandomCallsTest, NorWithADeviceThatFailsNowAndThen) {
    static const char* const methods[] = {
        "CreateTexture2D",         "CreateBuffer",          "Map",
        "CreateSamplerState",      "CreateRasterizerState", "FinishCommandList",
        "CreateShaderResourceView"};
    for (uint32_t seed = 101; seed <= 120; ++seed) {
        start(GetParam());
        {
            trust::RandomHost host(engine, seed);
            for (int i = 0; i < 150; ++i) {
                if (i % 5 == 0) {
                    world.failNth(methods[(seed + static_cast<uint32_t>(i)) % std::size(methods)],
                                  1 + i % 3);
                }
                host.step();
                host::log::clear();
                world.clearCalls();
                ASSERT_EQ(Lines(), world.errors())
                    << "seed " << seed << ", step " << i << ": " << host.lastCall();
            }
            world.clearFaults();
        }
        stop();
    }
    start(Mode::inlined);
    stop();
    EXPECT_EQ(Lines(), world.live());
}

INSTANTIATE_TEST_SUITE_P(Modes, RandomCallsTest, testing::Values(Mode::inlined, Mode::threaded),
                         host::modeParamName);

}  // namespace
