// The three functions that the library exports, and the one engine of each mode.

#include <memory>
#include <mutex>

#include "DirectXEffectMgr/Include/OpenGLEffectMgr.h"
#include "DirectXEffectMgr/Source/DirectXEffectEngine.h"
#include "DirectXEffectMgr/Source/logging/logging.h"

namespace {

struct Engines {
    std::mutex engine_lock;  // guards both; held for the whole of create and destroy
    std::shared_ptr<CDirectXEffectEngine> threaded_engine;
    std::shared_ptr<CDirectXEffectEngine> inline_engine;
};

// Never destroyed: an engine that the host forgot must not be joined while the process ends.
Engines& engines() {
    static auto* const the_engines = new Engines;
    return *the_engines;
}

void make_engine(std::shared_ptr<CDirectXEffectEngine>& place, LogFunction log_callback,
                 bool auto_create, ID3D11Device* external_device) {
    set_log_callback(log_callback);
    place = std::make_shared<CDirectXEffectEngine>();
    place->SetIsAutoCreateGLContext(auto_create);
    place->SetOwnerThread(external_device);
    place->StartEngine();
}

}  // namespace

extern "C" int32_t CreateNLEOpenGLEffectEngineInstance(IOpenGLEffectEngine** out_engine,
                                                       LogFunction log_callback, bool auto_create,
                                                       ID3D11Device* external_device) {
    const std::lock_guard<std::mutex> lock(engines().engine_lock);
    if (out_engine == nullptr) {
        return kResultPointer;
    }
    auto& place = auto_create ? engines().threaded_engine : engines().inline_engine;
    if (place == nullptr) {
        make_engine(place, log_callback, auto_create, external_device);
    }
    if (place->InitResult() < 0) {
        return kResultOutOfMemory;
    }
    *out_engine = place.get();
    return kResultOk;
}

extern "C" int32_t DestroyNLEOpenGLEffectEngineInstance(IOpenGLEffectEngine* engine) {
    const std::lock_guard<std::mutex> lock(engines().engine_lock);
    for (auto* const place : {&engines().threaded_engine, &engines().inline_engine}) {
        if (engine == nullptr || engine != place->get()) {
            continue;
        }
        if ((*place)->RunsOnThisThread()) {
            log_error("an engine cannot be destroyed from its own thread");
            break;
        }
        (*place)->StopEngine();
        place->reset();
        break;
    }
    return kResultOk;
}

extern "C" void SetIsAutoCreateGLContext(IOpenGLEffectEngine* engine, bool value) {
    if (engine != nullptr) {
        engine->SetIsAutoCreateGLContext(value);
    }
}
