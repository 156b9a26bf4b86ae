#include <windows.h>

#include <gtest/gtest.h>

#include "trust/crowd.h"

namespace {

using host::FakeHost;
using host::Lines;
using host::Mode;

class StressTest : public FakeHost {};

TEST_F(StressTest, EightThreadsAndFiftyEffectsOnOneEngine) {
    start(Mode::threaded);
    EXPECT_GT(trust::runCrowd(engine, trust::stressLength(), true), 500);
    stop();
    EXPECT_EQ(Lines(), world.live());
    EXPECT_EQ(Lines(), world.errors());
}

TEST_F(StressTest, HandlesDoNotGrowWithEngines) {
    const auto handles = [] {
        DWORD count = 0;
        GetProcessHandleCount(GetCurrentProcess(), &count);
        return count;
    };
    DWORD after_warm_up = 0;
    for (int i = 0; i < 60; ++i) {
        start(Mode::threaded);
        EXPECT_EQ(0, draw(readyEffect()));
        stop();
        if (i == 10) {
            after_warm_up = handles();
        }
    }
    EXPECT_LE(handles(), after_warm_up + 5);
}

}  // namespace
