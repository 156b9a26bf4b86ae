// Which thread an effect's work runs on, and the cleaner thread.

#include <windows.h>

#include <system_error>
#include <typeinfo>
#include <utility>

#include "DirectXEffectMgr/Source/DirectXEffect.h"
#include "DirectXEffectMgr/Source/DirectXEffectEngine.h"
#include "DirectXEffectMgr/Source/logging/logging.h"
#include "DirectXEffectMgr/Source/resource_pool_dx.h"

namespace {

constexpr std::chrono::milliseconds kCleanPeriod{2000};

int32_t result_of(bool done) {
    return done ? kResultOk : kResultFail;
}

// Null for what is no effect of this library. The class is final: its type says all, and comparing
// that costs a draw a few instructions, where a cast that searches costs more than a device call.
CDirectXEffect* effect_of(const std::shared_ptr<IOpenGLEffect>& effect) {
    IOpenGLEffect* const given = effect.get();
    if (given == nullptr) {
        return nullptr;
    }
    const IOpenGLEffect& object = *given;
    const std::type_info& type = typeid(object);
    const bool is_ours = &type == &typeid(CDirectXEffect) || type == typeid(CDirectXEffect);
    return is_ours ? static_cast<CDirectXEffect*>(given) : nullptr;
}

}  // namespace

// The effect comes as a shared pointer by value: so it lives until the call returns. A task
// captures the bare effect: its owner waits in the caller, and a shared pointer that went last on
// the render thread would make the effect's destructor wait for the very task it runs in.

int32_t CDirectXEffectEngine::QueueAndWait(RenderTask task) {
    std::future<bool> done = task.get_future();
    if (!EnqueueTask(std::move(task))) {
        return kResultFail;
    }
    return result_of(done.get());
}

template <class Work>
int32_t CDirectXEffectEngine::RunAndWait(Work work) {
    if (init_result != kInitReady) {
        return init_result;
    }
    if (!auto_create) {
        return result_of(work());
    }
    return QueueAndWait(RenderTask(std::move(work)));
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the copy keeps the effect alive
int32_t CDirectXEffectEngine::InitEffectOnEngine(std::shared_ptr<IOpenGLEffect> effect) {
    CDirectXEffect* const target = effect_of(effect);
    if (target == nullptr) {
        return kResultFail;
    }
    return RunAndWait([target, this] { return target->InitProgram(PoolForEngine(home_)); });
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the copy keeps the effect alive
int32_t CDirectXEffectEngine::ResizeEffectOnEngine(std::shared_ptr<IOpenGLEffect> effect) {
    CDirectXEffect* const target = effect_of(effect);
    if (target == nullptr) {
        return kResultFail;
    }
    return RunAndWait([target] { return target->ReleaseStagingTexture(); });
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the copy keeps the effect alive
int32_t CDirectXEffectEngine::DrawEffectOnEngine(std::shared_ptr<IOpenGLEffect> effect,
                                                 bool want_thread) {
    CDirectXEffect* const target = effect_of(effect);
    if (target == nullptr) {
        return kResultFail;
    }
    if (auto_create) {
        StartCleaner();
    }
    const uint32_t here = GetCurrentThreadId();
    const bool inline_on_given = !auto_create && external_device != nullptr;
    if (inline_on_given && !want_thread && here != owner_thread_id) {
        want_thread = here == render_thread_id;
    }
    // The steady path of inline mode: no task object, no allocation.
    if (!auto_create && !(inline_on_given && want_thread)) {
        return result_of(target->RenderPass());
    }
    if (init_result != kInitReady) {
        return init_result;
    }
    RenderTask task([target, want_thread] {
        target->SetUseRenderThread(want_thread);
        return target->RenderPass();
    });
    if (here != render_thread_id) {
        return QueueAndWait(std::move(task));
    }
    std::future<bool> done = task.get_future();
    task();
    return result_of(done.get());
}

void CDirectXEffectEngine::ReleaseEffectOnEngine(CDirectXEffect* effect) noexcept {
    const bool queued = auto_create || (external_device != nullptr && effect->UsesRenderThread());
    // A host's task may hold the last pointer to an effect: the thread cannot wait for itself.
    if (!queued || GetCurrentThreadId() == render_thread_id) {
        effect->ReleaseEffectResources();
        return;
    }
    try {
        RenderTask task([effect] { return effect->ReleaseEffectResources(); });
        const std::future<bool> done = task.get_future();
        if (EnqueueTask(std::move(task))) {
            done.wait();
        }
    } catch (const std::exception& error) {
        log_error("effect not released: %s", error.what());
    }
}

void CDirectXEffectEngine::StartCleaner() {
    std::call_once(cleaner_once, [this] {
        const std::lock_guard<std::mutex> lock(cleaner_mutex_);
        if (stop_cleaner) {
            return;
        }
        try {
            cleaner_thread = std::thread([this] {
                CleanPeriodically([this] { return CleanResourcePool(); }, kCleanPeriod);
            });
        } catch (const std::system_error& error) {
            log_error("no cleaner thread: %s", error.what());
        }
    });
}

void CDirectXEffectEngine::CleanPeriodically(const std::function<bool()>& clean,
                                             std::chrono::milliseconds period) {
    bool stopped = stop_cleaner;
    while (!stopped) {
        try {
            const std::future<bool> unseen = PostTask(clean, false);
            stopped = SleepUntilStopped(period);
        } catch (const std::exception&) {
            // Short of memory: the pool is cleaned at the next turn.
            stopped = SleepUntilStopped(period);
        }
    }
}

bool CDirectXEffectEngine::SleepUntilStopped(std::chrono::milliseconds period) {
    const auto until = std::chrono::steady_clock::now() + period;
    std::unique_lock<std::mutex> lock(cleaner_mutex_);
    return cleaner_wake_.wait_until(lock, until, [this]() -> bool { return stop_cleaner; });
}

bool CDirectXEffectEngine::CleanResourcePool() {
    if (const std::shared_ptr<ResourcePoolDX> pool = SharedPool()) {
        pool->trim_textures();
    }
    return true;
}
