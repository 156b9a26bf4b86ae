#include <condition_variable>
#include <future>
#include <mutex>
#include <thread>

#include "frame/frame_sections.h"
#include "frame/frame_world.h"

namespace bench {
namespace {

constexpr int kDraws = 25;   // in a block
constexpr int kBlocks = 10;  // for each round that was asked for

// The least that gives work to another thread and takes a result back: a lock, a condition, a
// promise.
class HandOver {
public:
    HandOver() : worker_([this] { serve(); }) {}

    ~HandOver() {
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            closed_ = true;
        }
        wanted_.notify_one();
        worker_.join();
    }

    HandOver(const HandOver&) = delete;
    HandOver& operator=(const HandOver&) = delete;

    bool call() {
        std::promise<bool> promise;
        std::future<bool> answer = promise.get_future();
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            promise_ = &promise;
        }
        wanted_.notify_one();
        return answer.get();
    }

private:
    void serve() {
        std::unique_lock<std::mutex> lock(mutex_);
        while (true) {
            wanted_.wait(lock, [this] { return closed_ || promise_ != nullptr; });
            if (promise_ == nullptr) {
                return;
            }
            std::promise<bool>* promise = promise_;
            promise_ = nullptr;
            promise->set_value(true);
        }
    }

    std::mutex mutex_;                       // guards the two below
    std::promise<bool>* promise_ = nullptr;  // what is asked for; the caller's
    bool closed_ = false;
    std::condition_variable wanted_;
    std::thread worker_;  // last: it uses all of the above
};

}  // namespace

Section measure_threads(const FrameScale& scale) {
    const Engine inline_engine(false, null_world().device());
    const Engine threaded_engine(true, null_world().device());
    EffectPlan plan;
    plan.fragment = usual_fragment();
    Effect inline_effect(inline_engine, plan);
    Effect threaded_effect(threaded_engine, plan);
    HandOver hand_over;
    const Rounds times = block_times(
        scale.rounds * kBlocks, kDraws,
        {[&inline_effect] { inline_effect.draw(); }, [&threaded_effect] { threaded_effect.draw(); },
         [&hand_over] { hand_over.call(); }},
        [] {});
    const double inline_us = times.median_of(0);
    const double threaded_us = times.median_of(1);
    const double bare_us = times.median_of(2);
    Section section;
    section.title = "threads: draw only, on a device that does nothing";
    section.columns = {"draw", "us", "least us"};
    section.rows = {{"inline mode", {inline_us, 2}, {times.least_of(0), 2}},
                    {"threaded mode", {threaded_us, 2}, {times.least_of(1), 2}},
                    {"threaded minus inline", {threaded_us - inline_us, 2}, ""},
                    {"bare promise and condition hand-over", {bare_us, 2}, {times.least_of(2), 2}}};
    section.notes.push_back(
        format("medians of %d interleaved blocks of %d", scale.rounds * kBlocks, kDraws));
    // Two hand-overs of the same kind differ by a few percent from run to run.
    constexpr double kSpread = 1.05;
    section.findings.push_back(
        {"threaded mode minus inline mode, draw only", "a bare promise and condition hand-over",
         format("%.1f us beside %.1f us", threaded_us - inline_us, bare_us), "one hand-over",
         outcome_of(threaded_us - inline_us <= bare_us * kSpread)});
    return section;
}

}  // namespace bench
