#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stdexcept>
#include <thread>

#include "host/fake_host.h"

namespace {

using host::Effect;
using host::FakeHost;
using host::Library;
using host::Mode;
using namespace std::chrono_literals;

/// Closed at first; whoever waits goes on once it is opened.
class Gate {
public:
    void open() {
        const std::lock_guard<std::mutex> lock(mutex_);
        open_ = true;
        opened_.notify_all();
    }
    void wait() {
        std::unique_lock<std::mutex> lock(mutex_);
        opened_.wait(lock, [this] { return open_; });
    }

private:
    std::mutex mutex_;
    std::condition_variable opened_;
    bool open_ = false;  // guarded by mutex_
};

class ThreadedTaskTest : public FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(Mode::threaded);
    }
    std::thread::id renderThread() {
        std::thread::id id;
        engine
            ->PostTask(
                [&id] {
                    id = std::this_thread::get_id();
                    return true;
                },
                false)
            .wait();
        return id;
    }
};

TEST_F(ThreadedTaskTest, RunsInTheOrderOfPosting) {
    std::string order;
    std::vector<std::future<bool>> done;
    for (char name = 'a'; name <= 'h'; ++name) {
        done.push_back(engine->PostTask(
            [&order, name] {
                order += name;
                return true;
            },
            name % 2 == 0));
    }
    for (std::future<bool>& one : done) {
        EXPECT_TRUE(one.get());
    }
    EXPECT_EQ("abcdefgh", order);
}

TEST_F(ThreadedTaskTest, TheValueComesBack) {
    EXPECT_TRUE(engine->PostTask([] { return true; }, false).get());
    EXPECT_FALSE(engine->PostTask([] { return false; }, true).get());
}

TEST_F(ThreadedTaskTest, RunsOnTheRenderThreadAndNotOnTheCallers) {
    EXPECT_NE(std::this_thread::get_id(), renderThread());
    EXPECT_EQ(renderThread(), renderThread());
}

TEST_F(ThreadedTaskTest, AnExceptionReachesTheWaiterAndTheQueueGoesOn) {
    std::future<bool> failed =
        engine->PostTask([]() -> bool { throw std::runtime_error("told you"); }, false);
    std::future<bool> next = engine->PostTask([] { return true; }, false);
    try {
        failed.get();
        FAIL() << "no exception";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ("told you", error.what());
    }
    EXPECT_TRUE(next.get());
}

TEST_F(ThreadedTaskTest, TasksPendingAtDestroyAreDroppedAndTheirPromisesBroken) {
    Gate started;
    Gate gate;
    std::future<bool> running = engine->PostTask(
        [&] {
            started.open();
            gate.wait();
            return true;
        },
        false);
    started.wait();
    bool ran = false;
    std::future<bool> pending = engine->PostTask([&ran] { return ran = true; }, false);
    std::thread destroyer([this] { stop(); });
    try {
        pending.get();
        ADD_FAILURE() << "the pending task was not dropped";
    } catch (const std::future_error& error) {
        EXPECT_EQ(std::make_error_code(std::future_errc::broken_promise), error.code());
    }
    gate.open();
    destroyer.join();
    EXPECT_TRUE(running.get());
    EXPECT_FALSE(ran);
}

TEST_F(ThreadedTaskTest, PostingWhileTheEngineStopsGivesAFutureWithoutState) {
    const Effect effect = makeEffect();
    Gate started;
    Gate gate;
    Gate done;
    std::future<bool> late;
    bool post_result = true;
    std::future<bool> running = engine->PostTask(
        [&] {
            started.open();
            gate.wait();
            late = engine->PostTask([] { return true; }, false);
            post_result = effect->DoTaskPost([] { return true; });
            return true;
        },
        false);
    std::future<bool> pending = engine->PostTask([] { return true; }, false);
    started.wait();
    IOpenGLEffectEngine* stopping = engine;
    std::thread destroyer([stopping] { Library::get().destroy(stopping); });
    EXPECT_THROW(pending.get(), std::future_error);  // the queue is closed from here on
    gate.open();
    destroyer.join();
    EXPECT_FALSE(late.valid());
    EXPECT_FALSE(post_result);
    ASSERT_EQ(1u, host::log::errors().size());
    EXPECT_EQ(0u, host::log::errors()[0].find("DoTaskPost exception:"));
}

TEST_F(ThreadedTaskTest, ADrawFromInsideATaskRunsAtOnce) {
    const Effect effect = readyEffect();
    int32_t result = -1;
    EXPECT_TRUE(effect->DoTaskPost([&] {
        result = draw(effect);
        return true;
    }));
    EXPECT_EQ(0, result);
}

TEST_F(ThreadedTaskTest, ADrawWaitsItsTurnInTheQueue) {
    const Effect effect = readyEffect();
    Gate gate;
    std::future<bool> running = engine->PostTask(
        [&gate] {
            gate.wait();
            return true;
        },
        false);
    std::atomic<bool> drawn{false};
    std::thread drawer([&] {
        EXPECT_EQ(0, draw(effect));
        drawn = true;
    });
    std::this_thread::sleep_for(50ms);
    EXPECT_FALSE(drawn);
    gate.open();
    drawer.join();
    EXPECT_TRUE(drawn);
}

TEST_F(ThreadedTaskTest, DestroyWhileADrawWaitsEndsTheDrawWithABrokenPromise) {
    Effect effect = readyEffect();
    Gate started;
    Gate gate;
    std::future<bool> running = engine->PostTask(
        [&] {
            started.open();
            gate.wait();
            return true;
        },
        false);
    started.wait();
    std::atomic<int> broken{0};
    std::thread drawer([&] {
        try {
            draw(effect);
        } catch (const std::future_error&) {
            ++broken;
        }
    });
    std::this_thread::sleep_for(50ms);
    std::thread destroyer([this] { stop(); });
    drawer.join();
    gate.open();
    destroyer.join();
    EXPECT_EQ(1, broken);
}

TEST_F(ThreadedTaskTest, DoTaskPostGivesTheValueAndLogsAnException) {
    const Effect effect = makeEffect();
    EXPECT_TRUE(effect->DoTaskPost([] { return true; }));
    EXPECT_FALSE(effect->DoTaskPost([] { return false; }));
    EXPECT_TRUE(host::log::errors().empty());
    EXPECT_FALSE(effect->DoTaskPost([]() -> bool { throw std::runtime_error("boom"); }));
    EXPECT_EQ((host::Lines{"DoTaskPost exception:boom"}), host::log::errors());
}

TEST_F(ThreadedTaskTest, PostTaskAsyncGivesTheFuture) {
    const Effect effect = makeEffect();
    EXPECT_TRUE(effect->PostTaskAsync([] { return true; }, false).get());
    EXPECT_THROW(effect->PostTaskAsync([]() -> bool { throw std::runtime_error("x"); }, true).get(),
                 std::runtime_error);
}

TEST_F(ThreadedTaskTest, TheCleanerRunsAtTheFirstDrawAndItsWaitEndsEarly) {
    // Its first clean is posted with the first draw; Destroy does not wait its two seconds out.
    const Effect effect = readyEffect();
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(0, draw(effect));
    const auto before = std::chrono::steady_clock::now();
    const_cast<Effect&>(effect).reset();
    stop();
    EXPECT_LT(std::chrono::steady_clock::now() - before, 1500ms);
}

TEST_F(ThreadedTaskTest, ResizeAndInitWaitInTheQueueToo) {
    const Effect effect = makeEffectOf(host::kRed);
    EXPECT_EQ(0, init(effect));
    EXPECT_EQ(0, effect->ResizeEffect(30, 20, 120, effect));
    EXPECT_EQ(30u, effect->GetWidth());
    EXPECT_EQ(20u, effect->GetHeight());
    EXPECT_EQ(120u, effect->GetPitch());
}

TEST_F(ThreadedTaskTest, TwoThreadsDrawTwoEffectsAThousandTimes) {
    const Effect first = readyEffect();
    const Effect second = readyEffect(host::kRed);
    world.setRecording(false);
    std::atomic<int> failures{0};
    const auto drawMany = [&failures, this](const Effect& effect) {
        for (int i = 0; i < 1000; ++i) {
            failures += draw(effect) == 0 ? 0 : 1;
        }
    };
    std::thread other([&] { drawMany(first); });
    drawMany(second);
    other.join();
    world.setRecording(true);
    EXPECT_EQ(0, failures);
}

TEST_F(ThreadedTaskTest, AnEffectReleasedAfterItsEngineLeavesItsObjects) {
    Effect effect = readyEffect();
    EXPECT_EQ(0, draw(effect));
    IOpenGLEffectEngine* stopping = engine;
    std::future<bool> late;
    Gate started;
    Gate gate;
    engine->PostTask(
        [&] {
            started.open();
            gate.wait();
            return true;
        },
        false);
    started.wait();
    std::future<bool> pending = engine->PostTask([] { return true; }, false);
    std::thread destroyer([stopping] { Library::get().destroy(stopping); });
    EXPECT_THROW(pending.get(), std::future_error);
    effect.reset();  // the queue refuses its release: nothing hangs, the objects stay
    gate.open();
    destroyer.join();
    EXPECT_NE(host::Lines(), world.live());
}

class InlineTaskTest : public FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(Mode::inlined);
    }
};

TEST_F(InlineTaskTest, APlainTaskRunsAtOnceOnTheCallersThread) {
    std::thread::id ran;
    std::future<bool> done = engine->PostTask(
        [&ran] {
            ran = std::this_thread::get_id();
            return true;
        },
        false);
    EXPECT_EQ(std::this_thread::get_id(), ran);
    EXPECT_TRUE(done.get());
}

TEST_F(InlineTaskTest, AnExceptionGoesIntoTheFuture) {
    std::future<bool> done =
        engine->PostTask([]() -> bool { throw std::runtime_error("x"); }, false);
    EXPECT_THROW(done.get(), std::runtime_error);
}

TEST_F(InlineTaskTest, ATaskForTheThreadWaitsForGoodAndIsDroppedAtDestroy) {
    // On purpose: nobody serves the queue of an inline engine.
    bool ran = false;
    std::future<bool> done = engine->PostTask([&ran] { return ran = true; }, true);
    EXPECT_EQ(std::future_status::timeout, done.wait_for(50ms));
    stop();
    EXPECT_FALSE(ran);
    EXPECT_THROW(done.get(), std::future_error);
}

TEST_F(InlineTaskTest, TheExportRedirectsTheRouting) {
    Library::get().setAutoCreate(engine, true);
    std::future<bool> queued = engine->PostTask([] { return true; }, false);
    EXPECT_EQ(std::future_status::timeout, queued.wait_for(20ms));
    Library::get().setAutoCreate(engine, false);
    EXPECT_TRUE(engine->PostTask([] { return true; }, false).get());
}

TEST_F(InlineTaskTest, DrawsOnAnyCallersThread) {
    const Effect effect = readyEffect();
    int32_t result = -1;
    std::thread([&] { result = draw(effect); }).join();
    EXPECT_EQ(0, result);
}

TEST_F(InlineTaskTest, ADrawWithTheThreadFlagWaitsInTheQueue) {
    const Effect effect = readyEffect();
    effect->SetUseRenderThread(true);
    std::atomic<int> broken{0};
    std::thread drawer([&] {
        try {
            draw(effect);
        } catch (const std::future_error&) {
            ++broken;
        }
    });
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(0, broken);
    world.clearCalls();
    stop();
    drawer.join();
    EXPECT_EQ(1, broken);
    effect->SetUseRenderThread(false);
}

}  // namespace
