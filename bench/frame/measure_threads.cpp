#include <condition_variable>
#include <future>
#include <mutex>
#include <thread>

#include "frame/frame_sections.h"
#include "frame/frame_world.h"

namespace bench {
namespace {

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
    const std::vector<double> times = block_medians(
        scale.rounds, 500,
        {[&inline_effect] { inline_effect.draw(); }, [&threaded_effect] { threaded_effect.draw(); },
         [&hand_over] { hand_over.call(); }},
        [] {});
    Section section;
    section.title = "threads: draw only, on a device that does nothing";
    section.columns = {"draw", "us"};
    section.rows = {{"inline mode", {times[0], 2}},
                    {"threaded mode", {times[1], 2}},
                    {"threaded minus inline", {times[1] - times[0], 2}},
                    {"bare promise and condition hand-over", {times[2], 2}}};
    section.notes.push_back("medians of " + std::to_string(scale.rounds) +
                            " interleaved blocks of 500");
    return section;
}

}  // namespace bench
