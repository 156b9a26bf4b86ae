#pragma once

#include "DirectXEffectMgr/Include/OpenGLEffectMgr.h"
#include "options.h"

namespace effect_render {

/// The library, loaded by its name as an editor does it. Throws a ToolError if it or one of its
/// three functions is missing.
class Library {
public:
    Library();
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    CreateEngineFunction Create() const { return create_; }
    DestroyEngineFunction Destroy() const { return destroy_; }

private:
    void* module_ = nullptr;
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
