#pragma once

#include "DirectXEffectMgr/Include/OpenGLEffectMgr.h"
#include "options.h"

namespace effect_render {

/// The library, loaded by its name as an editor does it, and from then on until the process ends:
/// an engine never lets go of its device. Throws a ToolError if the library or one of its three
/// functions is missing.
class Library {
public:
    Library();

    CreateEngineFunction Create() const { return create_; }
    DestroyEngineFunction Destroy() const { return destroy_; }

private:
    CreateEngineFunction create_ = nullptr;
    DestroyEngineFunction destroy_ = nullptr;
};

/// An engine of the library. Throws a ToolError if there is no device. Effects must be gone before
/// it goes.
class Engine {
public:
    Engine(const Library& library, EngineMode mode);
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    IOpenGLEffectEngine& Get() const { return *engine_; }

private:
    const Library& library_;
    IOpenGLEffectEngine* engine_ = nullptr;
};

}  // namespace effect_render
