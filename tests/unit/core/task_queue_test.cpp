#include "DirectXEffectMgr/Source/core/task_queue.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

// Runs the taker's loop on a thread of its own; ends with the queue's closing.
class Taker {
public:
    explicit Taker(TaskQueue& queue)
        : queue_(queue), thread_([&queue] {
              RenderTask task;
              while (queue.run_next(task)) {
              }
          }) {}
    ~Taker() {
        queue_.close();
        thread_.join();
    }

private:
    TaskQueue& queue_;
    std::thread thread_;
};

std::future_errc error_of(std::future<bool>& future) {
    try {
        future.get();
    } catch (const std::future_error& error) {
        return static_cast<std::future_errc>(error.code().value());
    }
    return {};
}

TEST(TaskQueueTest, TasksRunInTheOrderOfTheirPosting) {
    TaskQueue queue;
    std::string order;
    std::vector<std::future<bool>> results;
    for (const char c : std::string("ABCDE")) {
        RenderTask task([&order, c] {
            order += c;
            return true;
        });
        results.push_back(task.get_future());
        EXPECT_TRUE(queue.enqueue(std::move(task)));
    }
    Taker taker(queue);
    for (std::future<bool>& result : results) {
        EXPECT_TRUE(result.get());
    }
    EXPECT_EQ(order, "ABCDE");
}

TEST(TaskQueueTest, ValuesReachTheWaiter) {
    TaskQueue queue;
    Taker taker(queue);
    for (const bool value : {true, false}) {
        RenderTask task([value] { return value; });
        std::future<bool> result = task.get_future();
        EXPECT_TRUE(queue.enqueue(std::move(task)));
        EXPECT_EQ(result.get(), value);
    }
}

TEST(TaskQueueTest, AnExceptionReachesTheWaiterAndTheLoopGoesOn) {
    TaskQueue queue;
    Taker taker(queue);
    RenderTask bad([]() -> bool { throw std::runtime_error("no"); });
    RenderTask good([] { return true; });
    std::future<bool> bad_result = bad.get_future();
    std::future<bool> good_result = good.get_future();
    EXPECT_TRUE(queue.enqueue(std::move(bad)));
    EXPECT_TRUE(queue.enqueue(std::move(good)));
    EXPECT_THROW(bad_result.get(), std::runtime_error);
    EXPECT_TRUE(good_result.get());
}

TEST(TaskQueueTest, ClosingBreaksThePromisesOfPendingTasks) {
    TaskQueue queue;
    bool ran = false;
    RenderTask task([&ran] { return ran = true; });
    std::future<bool> result = task.get_future();
    EXPECT_TRUE(queue.enqueue(std::move(task)));
    queue.close();
    EXPECT_EQ(error_of(result), std::future_errc::broken_promise);
    EXPECT_FALSE(ran);
}

TEST(TaskQueueTest, AClosedQueueRefusesAndLeavesTheTaskWithTheCaller) {
    TaskQueue queue;
    queue.close();
    EXPECT_TRUE(queue.closed());
    RenderTask task([] { return true; });
    std::future<bool> result = task.get_future();
    EXPECT_FALSE(queue.enqueue(std::move(task)));
    EXPECT_TRUE(task.valid());
    task();
    EXPECT_TRUE(result.get());
}

TEST(TaskQueueTest, AClosedQueueGivesNothing) {
    TaskQueue queue;
    queue.close();
    queue.close();
    RenderTask task;
    EXPECT_FALSE(queue.take(task));
    EXPECT_FALSE(queue.run_next(task));
    EXPECT_FALSE(task.valid());
}

TEST(TaskQueueTest, ClosingWinsOverPendingTasksOfARunningTaker) {
    TaskQueue queue;
    std::promise<void> started;
    std::promise<void> go_on;
    RenderTask first([&] {
        started.set_value();
        go_on.get_future().wait();
        return true;
    });
    RenderTask second([] { return true; });
    std::future<bool> first_result = first.get_future();
    std::future<bool> second_result = second.get_future();
    EXPECT_TRUE(queue.enqueue(std::move(first)));
    EXPECT_TRUE(queue.enqueue(std::move(second)));
    {
        Taker taker(queue);
        started.get_future().wait();
        queue.close();
        go_on.set_value();
    }
    EXPECT_TRUE(first_result.get());
    EXPECT_EQ(error_of(second_result), std::future_errc::broken_promise);
}

TEST(TaskQueueTest, ClosingWakesAWaitingTaker) {
    TaskQueue queue;
    std::promise<bool> answer;
    std::thread taker([&queue, &answer] {
        RenderTask task;
        answer.set_value(queue.take(task));
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    queue.close();
    EXPECT_FALSE(answer.get_future().get());
    taker.join();
}

TEST(TaskQueueTest, ATaskWithoutStateOrOneThatRanThrowsTheStandardError) {
    TaskQueue queue;
    RenderTask ran([] { return true; });
    ran();
    EXPECT_TRUE(queue.enqueue(RenderTask()));
    EXPECT_TRUE(queue.enqueue(std::move(ran)));
    RenderTask task;
    EXPECT_THROW(static_cast<void>(queue.run_next(task)), std::future_error);
    EXPECT_THROW(static_cast<void>(queue.run_next(task)), std::future_error);
}

TEST(TaskQueueTest, WhatATaskHoldsIsKeptUntilTheNextTurn) {
    TaskQueue queue;
    auto held = std::make_shared<int>(0);
    const std::weak_ptr<int> watch = held;
    EXPECT_TRUE(queue.enqueue(RenderTask([held] { return held != nullptr; })));
    held.reset();
    EXPECT_TRUE(queue.enqueue(RenderTask([] { return true; })));
    RenderTask task;
    EXPECT_TRUE(queue.run_next(task));
    EXPECT_FALSE(watch.expired());
    EXPECT_TRUE(queue.run_next(task));
    EXPECT_TRUE(watch.expired());
}

// Goes to the queue again when it is destroyed.
struct CallsBack {
    explicit CallsBack(TaskQueue& where, bool& result) : queue(where), accepted(result) {}
    CallsBack(const CallsBack&) = delete;
    CallsBack& operator=(const CallsBack&) = delete;
    ~CallsBack() {
        accepted = queue.enqueue(RenderTask([] { return true; }));
    }
    TaskQueue& queue;
    bool& accepted;
};

TEST(TaskQueueTest, ADroppedTaskMayCallTheQueueFromItsDestructor) {
    TaskQueue queue;
    bool accepted = true;
    auto caller = std::make_shared<CallsBack>(queue, accepted);
    EXPECT_TRUE(queue.enqueue(RenderTask([caller] { return caller != nullptr; })));
    caller.reset();
    queue.close();
    EXPECT_FALSE(accepted);
}

TEST(TaskQueueTest, AFinishedTaskMayCallTheQueueFromItsDestructor) {
    TaskQueue queue;
    bool accepted = false;
    auto caller = std::make_shared<CallsBack>(queue, accepted);
    EXPECT_TRUE(queue.enqueue(RenderTask([caller] { return caller != nullptr; })));
    caller.reset();
    EXPECT_TRUE(queue.enqueue(RenderTask([] { return true; })));
    RenderTask task;
    EXPECT_TRUE(queue.run_next(task));
    EXPECT_TRUE(queue.run_next(task));
    EXPECT_TRUE(accepted);
    EXPECT_TRUE(queue.run_next(task));
}

TEST(TaskQueueTest, ATaskMayPostAnother) {
    TaskQueue queue;
    Taker taker(queue);
    std::promise<void> inner_ran;
    RenderTask outer([&] {
        return queue.enqueue(RenderTask([&inner_ran] {
            inner_ran.set_value();
            return true;
        }));
    });
    std::future<bool> result = outer.get_future();
    EXPECT_TRUE(queue.enqueue(std::move(outer)));
    EXPECT_TRUE(result.get());
    inner_ran.get_future().wait();
}

// Posts numbered tasks and returns how many of them ran before the close.
struct Poster {
    TaskQueue& queue;
    std::vector<std::future<bool>> results;
    int refused = 0;

    void post(int count) {
        for (int i = 0; i < count; ++i) {
            RenderTask task([] { return true; });
            std::future<bool> result = task.get_future();
            if (queue.enqueue(std::move(task))) {
                results.push_back(std::move(result));
            } else {
                ++refused;
            }
        }
    }
};

TEST(TaskQueueTest, UnderManyPostersEveryTaskIsRunOrBrokenOrRefused) {
    TaskQueue queue;
    std::vector<Poster> posters;
    for (int i = 0; i < 4; ++i) {
        posters.push_back(Poster{queue, {}, 0});
    }
    int ran = 0;
    int broken = 0;
    int refused = 0;
    {
        Taker taker(queue);
        std::vector<std::thread> threads;
        for (Poster& poster : posters) {
            threads.emplace_back([&poster] { poster.post(2000); });
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        queue.close();
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
    for (Poster& poster : posters) {
        refused += poster.refused;
        for (std::future<bool>& result : poster.results) {
            try {
                ran += result.get() ? 1 : 0;
            } catch (const std::future_error& error) {
                EXPECT_EQ(error.code(), std::future_errc::broken_promise);
                ++broken;
            }
        }
    }
    EXPECT_EQ(ran + broken + refused, 8000);
}

}  // namespace
