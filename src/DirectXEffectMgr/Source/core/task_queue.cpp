#include "DirectXEffectMgr/Source/core/task_queue.h"

bool TaskQueue::enqueue(RenderTask&& task) {
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (closed()) {
            return false;
        }
        tasks_.push_back(std::move(task));
    }
    not_empty_.notify_one();
    return true;
}

void TaskQueue::close() {
    // Destroyed behind the lock: what a task holds may come back to the queue.
    std::deque<RenderTask> dropped;
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        closed_.store(true, std::memory_order_relaxed);
        dropped.swap(tasks_);
    }
    dropped.clear();
    not_empty_.notify_all();
}

bool TaskQueue::take(RenderTask& task) {
    RenderTask next;
    {
        std::unique_lock<std::mutex> lock(mutex_);
        not_empty_.wait(lock, [this] { return closed() || !tasks_.empty(); });
        if (closed()) {
            return false;
        }
        next = std::move(tasks_.front());
        tasks_.pop_front();
    }
    task = std::move(next);
    return true;
}

bool TaskQueue::run_next(RenderTask& task) {
    if (!take(task)) {
        return false;
    }
    task();
    return true;
}
