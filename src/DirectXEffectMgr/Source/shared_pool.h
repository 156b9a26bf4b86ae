#pragma once

#include <cstdint>
#include <memory>

#include "DirectXEffectMgr/Include/OpenGLEffectTypes.h"
#include "DirectXEffectMgr/Source/relaxed.h"

class ResourcePoolDX;

/// Where a pool lives: the device that it works on and the thread that may end it. Outlives the
/// pool, and the engine that made it.
struct PoolHome {
    DevicePair device;                       // read by the pool through its slots
    Relaxed<uint32_t> thread_id{0};          // the pool is deleted on this thread or not at all
    std::weak_ptr<ResourcePoolDX> pool;      // set once, before effects ask for it
    Relaxed<ResourcePoolDX*> kept{nullptr};  // set when the pool stays allocated for good,
    std::shared_ptr<PoolHome> self;          // and its home with it
};

/// Makes the pool of an engine on its home's device and puts it in the place of the process's
/// shared pool; the former one loses that owner. Without memory for it there is no pool.
void SetUpSharedPool(const std::shared_ptr<PoolHome>& home);

/// Empties the place of the shared pool. Run on the thread that may delete the pool, this deletes
/// it, unless somebody uses it at this moment.
void ClearSharedPool();

/// The pool of the engine that started last; empty before the first and after a clearing.
[[nodiscard]] std::shared_ptr<ResourcePoolDX> SharedPool();

/// The pool that effects of an engine take: the shared one, or, where that stands on another
/// device than the engine's, the engine's own.
///
/// @returns empty if there is neither. An effect keeps it, so that the end of the other engine does
///          not take the pool away.
[[nodiscard]] std::shared_ptr<ResourcePoolDX> PoolForEngine(const std::shared_ptr<PoolHome>& home);
