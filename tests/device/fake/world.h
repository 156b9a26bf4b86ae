#pragma once

#include <d3d11.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace fake {

class Device;
class Context;
class Object;

/// What an object of the fake device is; also the index of the creation counters.
enum class Kind : uint32_t {
    device,
    immediate,
    deferred,
    command_list,
    buffer,
    texture,
    srv,
    rtv,
    dsv,
    sampler,
    depth_state,
    raster_state,
    blend_state,
    vertex_shader,
    pixel_shader,
    layout,
    dxgi_device,
    adapter,
    count
};

/// Name of a kind as it stands in the log: "texture", "rtv" and so on.
const char* kindName(Kind kind);

/// One call that reached the fake device.
struct Call {
    std::string object;            ///< "device", "immediate", "deferred#1", "dxgi_device#1" ...
    std::string method;            ///< name of the interface method
    std::string arguments;         ///< every argument, descriptions in full
    std::string outcome;           ///< name of the object made, or the failing code; else empty
    std::vector<uint8_t> bytes;    ///< bytes that went in: initial data, updates, unmapped writes
    const void* source = nullptr;  ///< host pointer that the bytes came from, if any

    /// The call as one line: "device.CreateTexture2D(...) -> texture#1".
    std::string text() const;
};

/// A Direct3D 11 device that exists in memory only, with everything made by it.
///
/// Hands out one ID3D11Device and its immediate context. Each call to any object is recorded in
/// order; each object's references are counted; calls can be told to fail. All objects stay
/// readable until the world ends, so that a use of a released object is reported, not a crash.
/// Safe to be used from several threads.
class World {
public:
    World();
    ~World();
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    /// The device, without a reference added. It lives as long as the world.
    ID3D11Device* device() const;

    /// The device's immediate context, without a reference added.
    ID3D11DeviceContext* immediate() const;

    // Recording.

    /// Off: calls leave no trace, released objects are freed at once, no bytes move, and nothing
    /// is formatted: a device that does nothing, for measurements. On at first.
    void setRecording(bool on) { recording_ = on; }
    bool recording() const { return recording_.load(std::memory_order_relaxed); }

    std::vector<Call> calls() const;
    void clearCalls();

    /// The recorded calls as lines, in order.
    std::vector<std::string> texts() const;

    /// The lines of those calls that name this method, in order.
    std::vector<std::string> textsOf(std::string_view method) const;

    /// The calls of this method, in order.
    std::vector<Call> callsOf(std::string_view method) const;

    /// Method names in order, with how often each came since the last clearCalls().
    std::map<std::string, int> counts() const;

    // Faults.

    /// Lets the nth next call of this method fail with the code; 1 is the very next one.
    void failNth(const std::string& method, int nth, HRESULT code = E_FAIL);

    /// Lets every call of this method fail until clearFaults().
    void failAll(const std::string& method, HRESULT code = E_FAIL);

    /// Whether a failNth() has struck since it was set.
    bool faultStruck() const;
    void clearFaults();

    /// From now on GetDeviceRemovedReason gives the code; S_OK puts the device back.
    void setRemovedReason(HRESULT code) { removed_reason_ = code; }
    HRESULT removedReason() const { return removed_reason_; }

    /// As setRemovedReason, and every creation and Map fails with the code.
    void remove(HRESULT code);

    /// The same at the nth next call that can fail: that call is the first one to do so. 0 takes
    /// the order back.
    void removeAt(int nth, HRESULT code);

    /// The next calls of Map with D3D11_MAP_FLAG_DO_NOT_WAIT give DXGI_ERROR_WAS_STILL_DRAWING.
    void setStillDrawing(int times) { still_drawing_ = times; }
    bool takeStillDrawing();

    /// A Map that succeeds hands out a null pointer.
    void setMapGivesNull(bool on) { map_gives_null_ = on; }
    bool mapGivesNull() const { return map_gives_null_; }

    /// Bytes that the rows of mapped textures are longer than their pixels; 0 at first.
    void setRowPadding(UINT bytes) { row_padding_ = bytes; }
    UINT rowPadding() const { return row_padding_; }

    // Objects.

    /// Names of all objects with references left, the device and its context left out:
    /// "texture#3: 1".
    std::vector<std::string> live() const;

    /// References on the object behind an interface pointer; -1 for a stranger.
    int references(const void* object) const;

    /// How many objects of this kind were made so far; counted also while recording is off.
    int created(Kind kind) const;
    int createdInAll() const;

    /// Misuse: too many releases, uses of dead objects, strangers among the arguments.
    std::vector<std::string> errors() const;

    /// Name of the object behind an interface pointer: "null", "rtv#1", or "stranger".
    std::string nameOf(const void* object) const;

    /// Bytes of a buffer or texture as they are now, rows without padding.
    std::vector<uint8_t> bytesOf(const void* resource) const;

    /// The same by the name in the log, "buffer#2"; empty for a name that is not there.
    std::vector<uint8_t> bytesOfName(std::string_view name) const;

    // For the doubles themselves.

    std::recursive_mutex& mutex() const { return mutex_; }
    /// Counts the call, and gives the code by which it is told to fail, or S_OK.
    HRESULT enter(const char* method);
    void record(Call call);
    void misuse(std::string text);
    void adopt(std::unique_ptr<Object> object, const void* interface_pointer);
    void forget(Object* object, const void* interface_pointer);
    int nextNumber(Kind kind) { return ++created_[static_cast<size_t>(kind)]; }

private:
    struct Fault {
        int remaining = 0;  // calls until it strikes; 0: not armed
        HRESULT code = S_OK;
        bool always = false;
    };

    HRESULT strike(const std::string& method);

    mutable std::recursive_mutex mutex_;  // guards everything below that is not atomic
    std::atomic<bool> recording_{true};
    std::atomic<bool> any_fault_{false};
    std::vector<Call> calls_;
    std::map<std::string, int> counts_;
    std::map<std::string, Fault> faults_;
    bool struck_ = false;
    std::atomic<HRESULT> removed_reason_{S_OK};
    std::atomic<HRESULT> lost_{S_OK};
    int calls_to_loss_ = 0;  // 0: no loss is ordered
    HRESULT loss_code_ = S_OK;
    std::atomic<int> still_drawing_{0};
    std::atomic<bool> map_gives_null_{false};
    std::atomic<UINT> row_padding_{0};
    std::array<std::atomic<int>, static_cast<size_t>(Kind::count)> created_{};
    std::unordered_map<const void*, Object*> by_pointer_;
    std::vector<std::unique_ptr<Object>> objects_;
    std::vector<std::string> errors_;
    std::unique_ptr<Device> device_;
    std::unique_ptr<Context> immediate_;
};

}  // namespace fake
