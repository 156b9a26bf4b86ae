#pragma once

#include <cstdint>
#include <functional>
#include <future>
#include <memory>

#include "OpenGLEffectTypes.h"

class IOpenGLEffect;

/// The engine: makes effects, posts work to the thread that owns the device, and keeps host
/// textures up to date.
///
/// `CreateNLEOpenGLEffectEngineInstance` gives it, `DestroyNLEOpenGLEffectEngineInstance` takes it
/// back; never delete it yourself. The order of the operations is the order of their slots.
///
/// Modes: in threaded mode the engine runs a render thread of its own and device work is queued to
/// it; in inline mode device work runs on the calling thread, which must be the host's own
/// rendering thread.
///
/// Effects must be gone before their engine is destroyed.
class IOpenGLEffectEngine {
public:
    /// Slot 0. The exported destroy function calls it.
    virtual ~IOpenGLEffectEngine() = default;

    /// Slot 1. Makes an effect. Nothing is read or compiled before `InitEffect` of the effect.
    ///
    /// @param width, height      render size in pixels
    /// @param pitch              bytes from row to row of a read-back picture
    /// @param with_depth         the target gets a depth buffer
    /// @param fragment_path      fragment shader file, UTF-8; null counts as empty
    /// @param out                receives the effect; what it held before is released
    /// @param source_encoding    1: the shader files are base64 text; any other value: plain text
    /// @param vertex_path        vertex shader file, UTF-8; null or empty: the built-in one
    /// @param fragment_segments  variants of the pieces that stand before the fragment source
    /// @param vertex_segments    the same for the vertex source
    /// @returns 0; 0x80004005 if the effect could not be made, `out` is then empty
    /// Any thread.
    virtual int32_t CreateEffect(uint32_t width, uint32_t height, uint32_t pitch, bool with_depth,
                                 const char* fragment_path, std::shared_ptr<IOpenGLEffect>& out,
                                 uint32_t source_encoding, const char* vertex_path,
                                 SegmentList fragment_segments, SegmentList vertex_segments) = 0;

    /// Slot 2. Runs a task where device work runs.
    ///
    /// Threaded mode: the task is queued, first in first out. Inline mode: it runs before the call
    /// returns, unless `want_thread` is set and the host gave a device of its own: then it is
    /// queued, and as no thread takes it from there it stays until the engine is destroyed.
    ///
    /// @param task         the work; its result or exception goes into the future
    /// @param want_thread  ask for the queue in inline mode, see above
    /// @returns the task's future; one without state once the engine is being destroyed. A task
    ///          still queued at that moment is dropped, its future then throws `broken_promise`.
    /// Any thread. Do not wait on a queued task from inside a task.
    virtual std::future<bool> PostTask(std::function<bool()> task, bool want_thread) = 0;

    /// Slot 3. Keeps a texture filled from host memory, on the immediate context.
    ///
    /// A `*slot` that is null or no key of `map` gets a new record, a former address is forgotten.
    /// A known one is filled again, or its three objects are made anew at the same record if the
    /// size differs.
    ///
    /// @param pixels         B, G, R, A bytes; may be null for a known record of the same size,
    ///                       which then stays as it is, and for new objects, which stay unfilled
    /// @param width, height  size in pixels
    /// @param pitch          bytes from row to row of `pixels`
    /// @param slot           the host's pointer to its record; null as an address is refused
    /// @param map            the host's records and their sizes
    /// @returns false if an object could not be made (logged): the record is freed and `*slot` is
    ///          null, while an older key of it stays in `map` and must be erased by the host
    /// Calling thread, without a lock: in threaded mode call it from inside a task.
    virtual bool BindTextureData(const void* pixels, uint32_t width, uint32_t height,
                                 uint32_t pitch, GpuData** slot, GpuDataMap& map) = 0;

    /// Slot 4. Releases the objects of each key of `map` and frees the records. The map itself is
    /// not changed: its keys dangle, clear it next. Thread as for `BindTextureData`.
    virtual void ReleaseGpuDataMap(GpuDataMap& map) = 0;

    /// Slot 5. Whether the engine works in threaded mode. Any thread.
    virtual bool IsAutoCreateGLContext() = 0;

    /// Slot 6. Sets the mode by which work is routed; it starts or stops no thread. Meant for the
    /// library's own start. Any thread.
    virtual void SetIsAutoCreateGLContext(bool value) = 0;

    /// Slot 7. Records the calling thread as the one that owns the device in inline mode.
    ///
    /// @param device  the host's own device to remember; null leaves the former one
    virtual void SetOwnerThread(ID3D11Device* device) = 0;

    /// Slot 8. The engine's device and immediate context; valid while the engine lives, no
    /// reference is added. Any thread.
    virtual DevicePair* GetDevicePair() = 0;

    /// Slot 9. Brings the shared pool's unused textures under their budget. Runs on the calling
    /// thread: in threaded mode call it from inside a task.
    ///
    /// @returns true
    virtual bool CleanResourcePool() = 0;
};
