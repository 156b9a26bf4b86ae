#include <windows.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "trust/random_calls.h"

namespace {

using host::FakeHost;
using host::Lines;
using host::Mode;
using namespace std::chrono_literals;

constexpr int kThreads = 8;
constexpr int kEffectsPerThread = 6;

/// One host thread with effects of its own: makes, uses and drops them at random.
void hostThread(IOpenGLEffectEngine* engine, uint32_t seed,
                std::chrono::steady_clock::time_point end, std::atomic<int>& steps) {
    std::vector<std::unique_ptr<trust::RandomHost>> hosts;
    for (uint32_t i = 0; i < kEffectsPerThread; ++i) {
        hosts.push_back(std::make_unique<trust::RandomHost>(engine, seed * 100 + i));
    }
    std::mt19937 random(seed);
    while (std::chrono::steady_clock::now() < end) {
        trust::RandomHost& host = *hosts[random() % hosts.size()];
        if (random() % 200 == 0) {
            host.release();
        } else {
            host.step();
        }
        ++steps;
    }
}

class StressTest : public FakeHost {
protected:
    int run(std::chrono::seconds length) {
        std::atomic<int> steps{0};
        const auto end = std::chrono::steady_clock::now() + length;
        std::vector<std::thread> threads;
        for (uint32_t i = 0; i < kThreads; ++i) {
            threads.emplace_back([this, i, end, &steps] { hostThread(engine, i + 1, end, steps); });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        return steps;
    }
};

TEST_F(StressTest, EightThreadsAndFiftyEffectsOnOneEngine) {
    start(Mode::threaded);
    const int steps = run(8s);
    host::log::clear();
    EXPECT_GT(steps, 500);
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
