#pragma once

/// The library as an editor loads it, and one effect of it ready to be drawn.

#include <d3d11.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "DirectXEffectMgr/Include/OpenGLEffectMgr.h"

namespace bench {

/// Loads the library once; throws std::runtime_error if that fails.
class HostLibrary {
public:
    static const HostLibrary& get();

    CreateEngineFunction create = nullptr;
    DestroyEngineFunction destroy = nullptr;

private:
    HostLibrary();
};

/// An engine for the life of the object. One per mode at a time.
class Engine {
public:
    /// @param device  null: a hardware device of the engine's own
    Engine(bool threaded, ID3D11Device* device);
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    IOpenGLEffectEngine* operator->() const { return engine_; }
    ID3D11Device* device() const { return engine_->GetDevicePair()->device; }
    ID3D11DeviceContext* immediate() const { return engine_->GetDevicePair()->immediate_context; }

private:
    IOpenGLEffectEngine* engine_ = nullptr;
};

/// What a measured effect is like.
struct EffectPlan {
    std::string fragment;
    uint32_t width = 64;
    uint32_t height = 64;
    bool with_input = true;  // a still picture of the effect's size
    int floats = 2;          // parameters p0, p1, ...
    int passes = 1;
    int instances = 0;  // of each pass
};

/// The text of the effect that is drawn everywhere: a picture and two parameters.
std::string usual_fragment();

/// An initialised effect and the memory that it reads.
class Effect {
public:
    Effect(const Engine& engine, EffectPlan plan);

    /// Draws one frame; throws if that fails.
    void draw() { draw(plain_draw_); }
    void draw(const DrawParams& params);
    /// Gives the input its picture, to be uploaded by the next draw.
    void set_streaming_picture();

    IOpenGLEffect& operator*() const { return *effect_; }
    const EffectPlan& plan() const { return plan_; }

private:
    EffectPlan plan_;
    DrawParams plain_draw_;
    std::vector<uint8_t> pixels_;
    std::shared_ptr<IOpenGLEffect> effect_;
};

}  // namespace bench
