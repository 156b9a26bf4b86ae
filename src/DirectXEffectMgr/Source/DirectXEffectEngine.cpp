#include "DirectXEffectMgr/Source/DirectXEffectEngine.h"

#include <windows.h>

#include <system_error>
#include <utility>

namespace {

// Keeps this library loaded until the handle goes to FreeLibrary: a host that unloads it without
// destroying the engine must not pull the code from under the engine's threads.
HMODULE hold_module() {
    static const char here = 0;
    HMODULE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, &here, &module);
    return module;
}

}  // namespace

CDirectXEffectEngine::CDirectXEffectEngine() : home_(std::make_shared<PoolHome>()) {
    device_pair = &device;
}

CDirectXEffectEngine::~CDirectXEffectEngine() {
    StopEngine();
}

void CDirectXEffectEngine::StopEngine() {
    {
        const std::lock_guard<std::mutex> lock(cleaner_mutex_);
        stop_cleaner = true;
    }
    cleaner_wake_.notify_all();
    if (cleaner_thread.joinable()) {
        cleaner_thread.join();
    }
    tasks.close();
    if (render_thread.joinable()) {
        render_thread.join();
    }
    if (void* const module = std::exchange(module_, nullptr)) {
        FreeLibrary(static_cast<HMODULE>(module));
    }
}

bool CDirectXEffectEngine::RunsOnThisThread() {
    const std::lock_guard<std::mutex> lock(cleaner_mutex_);
    const std::thread::id here = std::this_thread::get_id();
    return here == render_thread.get_id() || here == cleaner_thread.get_id();
}

void CDirectXEffectEngine::SetOwnerThread(ID3D11Device* given) {
    const uint32_t here = GetCurrentThreadId();
    owner_thread_id = here;
    if (!auto_create) {
        home_->thread_id = here;
    }
    if (given != nullptr) {
        external_device = given;
    }
}

void CDirectXEffectEngine::StartEngine() {
    if (!auto_create) {
        init_result = InitDevice(external_device);
        if (init_result < 0) {
            ReleaseDevice();
        }
        SetUpPool(owner_thread_id);
        return;
    }
    std::future<int> initialized = init_promise.get_future();
    module_ = hold_module();
    try {
        render_thread = std::thread(RenderThreadMain, this);
    } catch (const std::system_error&) {
        init_result = kInitNoDevice;
        return;
    }
    initialized.wait();
    if (init_result < 0) {
        ReleaseDevice();
    }
}

void CDirectXEffectEngine::RenderThreadMain(CDirectXEffectEngine* engine) {
    engine->init_result = engine->InitDevice(engine->external_device);
    const bool failed = engine->init_result < 0;
    if (!failed) {
        engine->render_thread_id = GetCurrentThreadId();
        engine->SetUpPool(engine->render_thread_id);
    }
    // The pool is there before the host hears of success: engines that start one after the other
    // replace it in that order.
    engine->init_promise.set_value(engine->init_result);
    if (failed) {
        return;
    }
    RenderTask current;
    while (engine->tasks.run_next(current)) {
    }
    ClearSharedPool();
}

void CDirectXEffectEngine::SetUpPool(uint32_t thread_id) {
    home_->device = device;
    home_->thread_id = thread_id;
    SetUpSharedPool(home_);
}

bool CDirectXEffectEngine::EnqueueTask(RenderTask&& task) {
    return tasks.enqueue(std::move(task));
}

std::future<bool> CDirectXEffectEngine::PostTask(std::function<bool()> task, bool want_thread) {
    RenderTask work(std::move(task));
    if (!auto_create && (!want_thread || external_device == nullptr)) {
        std::future<bool> result = work.get_future();
        work();
        return result;
    }
    if (tasks.closed()) {
        return {};
    }
    std::future<bool> result = work.get_future();
    EnqueueTask(std::move(work));
    return result;
}
