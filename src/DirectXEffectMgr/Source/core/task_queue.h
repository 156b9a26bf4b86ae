#pragma once

/// The queue between the host's threads and the render thread.

#include <atomic>
#include <condition_variable>
#include <deque>
#include <future>
#include <mutex>

/// A piece of device work. What its function returns or throws goes to the holder of its future.
using RenderTask = std::packaged_task<bool()>;

/// Pending work, first in, first out, unbounded. Any number of threads may enqueue; one thread
/// takes. No lock is held while a task runs or is destroyed.
class TaskQueue {
public:
    TaskQueue() = default;
    TaskQueue(const TaskQueue&) = delete;
    TaskQueue& operator=(const TaskQueue&) = delete;

    /// Appends a task and wakes the taker.
    /// @returns false if the queue is closed; `task` is then left with the caller
    [[nodiscard]] bool enqueue(RenderTask&& task);

    /// Closes the queue for good, drops what is pending, and wakes the taker. The future of a
    /// dropped task gets the broken-promise error. Closing twice does nothing more.
    void close();

    /// Whether close() was called. Takes no lock, so the answer may be outdated at once.
    bool closed() const { return closed_.load(std::memory_order_relaxed); }

    /// Waits for a task and moves it to `task`, whose old content is destroyed. A closed queue wins
    /// over pending tasks.
    /// @returns false once the queue is closed; `task` is then unchanged
    [[nodiscard]] bool take(RenderTask& task);

    /// One turn of the taker's loop: take() and run. `task` keeps the task that ran, until the next
    /// turn, so that what it holds is destroyed only then. A task without state, or one that ran
    /// already, throws std::future_error.
    /// @returns false once the queue is closed
    [[nodiscard]] bool run_next(RenderTask& task);

private:
    std::mutex mutex_;  // guards tasks_ and the writing of closed_
    std::condition_variable not_empty_;
    std::deque<RenderTask> tasks_;     // oldest first
    std::atomic<bool> closed_{false};  // set once, by close()
};
