#include "DirectXEffectMgr/Source/shared_pool.h"

#include <windows.h>

#include <mutex>
#include <new>
#include <utility>

#include "DirectXEffectMgr/Source/logging/logging.h"
#include "DirectXEffectMgr/Source/resource_pool_dx.h"

namespace {

constexpr size_t kUnusedProgramsMax = 100;
constexpr size_t kFreeTexturesMaxBytes = 26214400;
constexpr size_t kReservedLimit = 25;

// Deletes the pool only on its own thread, so that no device object is released from a foreign
// one; anywhere else the pool stays allocated for good, and its home with it.
struct PoolDeleter {
    std::shared_ptr<PoolHome> home;

    void operator()(ResourcePoolDX* pool) const {
        if (GetCurrentThreadId() == home->thread_id) {
            delete pool;
        } else {
            home->self = home;
            home->kept = pool;
        }
    }
};

struct SharedPoolPlace {
    std::mutex mutex;                      // guards pool; never held while a pool is deleted
    std::shared_ptr<ResourcePoolDX> pool;  // of the engine that started last
};

// Never destroyed: at the end of the process the device's own library may be gone already.
SharedPoolPlace& place() {
    static auto* const the_place = new SharedPoolPlace;
    return *the_place;
}

void replace(std::shared_ptr<ResourcePoolDX> pool) {
    {
        const std::lock_guard<std::mutex> lock(place().mutex);
        place().pool.swap(pool);
    }
    // The former pool goes here, outside the lock.
}

}  // namespace

void SetUpSharedPool(const std::shared_ptr<PoolHome>& home) {
    try {
        std::shared_ptr<ResourcePoolDX> pool(
            new ResourcePoolDX(&home->device.device, &home->device.immediate_context,
                               kUnusedProgramsMax, kFreeTexturesMaxBytes, kReservedLimit),
            PoolDeleter{home});
        home->pool = pool;
        replace(std::move(pool));
    } catch (const std::bad_alloc&) {
        log_error("no memory for the resource pool");
    }
}

void ClearSharedPool() {
    replace(nullptr);
}

std::shared_ptr<ResourcePoolDX> SharedPool() {
    const std::lock_guard<std::mutex> lock(place().mutex);
    return place().pool;
}

std::shared_ptr<ResourcePoolDX> PoolForEngine(const std::shared_ptr<PoolHome>& home) {
    std::shared_ptr<ResourcePoolDX> shared = SharedPool();
    const auto* const deleter = std::get_deleter<PoolDeleter>(shared);
    if (deleter != nullptr && deleter->home->device.device == home->device.device) {
        return shared;
    }
    if (std::shared_ptr<ResourcePoolDX> own = home->pool.lock()) {
        return own;
    }
    return {std::shared_ptr<void>(), home->kept};  // without an owner: it is never deleted
}
