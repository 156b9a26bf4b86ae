#include "trust/crowd.h"

#include <atomic>
#include <cstdlib>
#include <memory>
#include <random>
#include <thread>
#include <vector>

#include "trust/random_calls.h"

namespace trust {
namespace {

constexpr uint32_t kThreads = 8;
constexpr uint32_t kEffects = 50;

void hostThread(IOpenGLEffectEngine* engine, uint32_t number, bool draws_unindexed,
                std::chrono::steady_clock::time_point end, std::atomic<int>& steps) {
    std::vector<std::unique_ptr<RandomHost>> hosts;
    for (uint32_t effect = number; effect < kEffects; effect += kThreads) {
        hosts.push_back(std::make_unique<RandomHost>(engine, effect + 1, draws_unindexed));
    }
    std::mt19937 random(number);
    while (std::chrono::steady_clock::now() < end) {
        RandomHost& host = *hosts[random() % hosts.size()];
        if (random() % 200 == 0) {
            host.release();
        } else {
            host.step();
        }
        if (++steps % 500 == 0) {
            host::log::clear();
        }
    }
}

}  // namespace

int runCrowd(IOpenGLEffectEngine* engine, std::chrono::seconds length, bool draws_unindexed) {
    std::atomic<int> steps{0};
    const auto end = std::chrono::steady_clock::now() + length;
    std::vector<std::thread> threads;
    for (uint32_t i = 0; i < kThreads; ++i) {
        threads.emplace_back([engine, i, draws_unindexed, end, &steps] {
            hostThread(engine, i, draws_unindexed, end, steps);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    host::log::clear();
    return steps;
}

std::chrono::seconds stressLength() {
    const char* given = std::getenv("ORVANE_STRESS_SECONDS");
    const int seconds = given == nullptr ? 0 : std::atoi(given);
    return std::chrono::seconds(seconds > 0 ? seconds : 8);
}

}  // namespace trust
