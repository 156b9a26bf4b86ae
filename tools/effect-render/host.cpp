#include "host.h"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <string>

#include "console.h"
#include "tool_error.h"

namespace effect_render {
namespace {

template <typename Function>
Function Find(HMODULE module, const char* name) {
    const FARPROC address = GetProcAddress(module, name);
    if (address == nullptr) {
        throw ToolError(std::string(kOpenGLEffectMgrFileName) + ": has no function '" + name + "'");
    }
    return reinterpret_cast<Function>(reinterpret_cast<void*>(address));
}

}  // namespace

Library::Library() {
    const HMODULE module = LoadLibraryA(kOpenGLEffectMgrFileName);
    if (module == nullptr) {
        throw ToolError(std::string(kOpenGLEffectMgrFileName) + ": cannot be loaded (error " +
                        std::to_string(GetLastError()) + ")");
    }
    create_ = Find<CreateEngineFunction>(module, "CreateNLEOpenGLEffectEngineInstance");
    destroy_ = Find<DestroyEngineFunction>(module, "DestroyNLEOpenGLEffectEngineInstance");
    Find<SetIsAutoCreateGLContextFunction>(module, "SetIsAutoCreateGLContext");
}

Engine::Engine(const Library& library, EngineMode mode) : library_(library) {
    const bool threaded = mode == EngineMode::Threaded;
    const int32_t result = library.Create()(&engine_, LogFromLibrary, threaded, nullptr);
    if (result != kResultOk || engine_ == nullptr) {
        throw ToolError("there is no Direct3D 11 device to draw with");
    }
}

Engine::~Engine() {
    library_.Destroy()(engine_);
}

}  // namespace effect_render
