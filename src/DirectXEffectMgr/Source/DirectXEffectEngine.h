#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <thread>

#include "DirectXEffectMgr/Include/IOpenGLEffectEngine.h"
#include "DirectXEffectMgr/Source/core/task_queue.h"
#include "DirectXEffectMgr/Source/relaxed.h"
#include "DirectXEffectMgr/Source/shared_pool.h"

class CDirectXEffect;

/// Values of an engine's `init_result`.
constexpr int32_t kInitReady = 0;  // device and context are there
constexpr int32_t kInitNoCom = 1;  // they are, but COM could not be initialised
constexpr int32_t kInitNoDevice = static_cast<int32_t>(0x800AA000u);

/// The one implementation of `IOpenGLEffectEngine`.
///
/// States: constructed, started (`init_result` known), stopped. Effects keep a stopped engine
/// alive: it refuses what would go to its queue. The device and its context are set once at the
/// start and never released: effects and host textures may still refer to them.
class CDirectXEffectEngine final : public IOpenGLEffectEngine,
                                   public std::enable_shared_from_this<CDirectXEffectEngine> {
public:
    CDirectXEffectEngine();
    CDirectXEffectEngine(const CDirectXEffectEngine&) = delete;
    CDirectXEffectEngine& operator=(const CDirectXEffectEngine&) = delete;
    /// Stops, unless that was done.
    ~CDirectXEffectEngine() override;

    int32_t CreateEffect(uint32_t width, uint32_t height, uint32_t pitch, bool with_depth,
                         const char* fragment_path, std::shared_ptr<IOpenGLEffect>& out,
                         uint32_t source_encoding, const char* vertex_path,
                         SegmentList fragment_segments, SegmentList vertex_segments) override;
    std::future<bool> PostTask(std::function<bool()> task, bool want_thread) override;
    bool BindTextureData(const void* pixels, uint32_t width, uint32_t height, uint32_t pitch,
                         GpuData** slot, GpuDataMap& map) override;
    void ReleaseGpuDataMap(GpuDataMap& map) override;
    bool IsAutoCreateGLContext() override { return auto_create; }
    void SetIsAutoCreateGLContext(bool value) override { auto_create = value; }
    void SetOwnerThread(ID3D11Device* given) override;
    DevicePair* GetDevicePair() override { return device_pair; }
    bool CleanResourcePool() override;

    /// Makes the device and the shared pool; in threaded mode on a render thread that it starts.
    /// Returns when `init_result` is known. Called once.
    void StartEngine();
    /// Stops the cleaner thread, drops the pending tasks, ends the render thread: in this order,
    /// and not on either of these threads.
    void StopEngine();
    [[nodiscard]] int32_t InitResult() const { return init_result; }
    /// Whether the calling thread is one that StopEngine would have to join.
    [[nodiscard]] bool RunsOnThisThread();

    // Effect operations brought to the thread that uses the device. They block until the work is
    // done; an exception from it reaches the caller. Results: 0; 0x80004005 (E_FAIL) for failed
    // work, a refused task, or what is no effect of ours; otherwise `init_result`.
    int32_t InitEffectOnEngine(std::shared_ptr<IOpenGLEffect> effect);
    int32_t DrawEffectOnEngine(std::shared_ptr<IOpenGLEffect> effect, bool want_thread);
    int32_t ResizeEffectOnEngine(std::shared_ptr<IOpenGLEffect> effect);
    /// Releases an effect's device objects; called from its destructor. With the queue closed
    /// nothing is released.
    void ReleaseEffectOnEngine(CDirectXEffect* effect) noexcept;

private:
    static void RenderThreadMain(CDirectXEffectEngine* engine);
    void RunTasks();
    /// Queues a task. False if the queue is closed; the task is then left with the caller.
    bool EnqueueTask(RenderTask&& task);
    /// Runs effect work on the render thread, or here in inline mode, and gives its result.
    template <class Work>
    int32_t RunAndWait(Work work);
    int32_t QueueAndWait(RenderTask task);

    int32_t InitDevice(ID3D11Device* given);
    void ReleaseDevice();
    void ReportAdapter() const;
    void SetUpPool(uint32_t thread_id);

    void StartCleaner();
    void CleanPeriodically(const std::function<bool()>& clean, std::chrono::milliseconds period);
    [[nodiscard]] bool SleepUntilStopped(std::chrono::milliseconds period);

    DevicePair* device_pair = nullptr;  // points at `device` below; null while constructing
    uint32_t reserved_one = 1;          // nothing reads it
    Relaxed<ID3D11Device*> external_device{nullptr};  // the host's, null for none; not owned
    std::promise<int> init_promise;                   // init_result on its way to StartEngine
    std::thread render_thread;
    Relaxed<bool> stop_cleaner{false};  // set first thing in StopEngine
    TaskQueue tasks;                    // with its lock, its condition and its closed flag
    Relaxed<bool> auto_create{true};    // the mode: true threaded, false inline
    Relaxed<int32_t> init_result{kInitReady};
    Relaxed<uint32_t> owner_thread_id{0};   // the thread that called SetOwnerThread
    Relaxed<uint32_t> render_thread_id{0};  // 0 until the render thread has a device
    std::thread cleaner_thread;
    std::once_flag cleaner_once;
    DevicePair device;
    uint32_t feature_level = 0;     // as device creation gave it
    bool com_initialized_ = false;  // by InitDevice, on the thread that ran it
    void* module_ = nullptr;        // this library, kept loaded while threads run in it
    std::mutex cleaner_mutex_;      // guards the start of the cleaner thread, and its sleep
    std::condition_variable cleaner_wake_;
    std::shared_ptr<PoolHome> home_;  // of the pool that this engine made
};
