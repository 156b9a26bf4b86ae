#include "frame/host_library.h"

#include <windows.h>

#include <stdexcept>

namespace bench {
namespace {

template <class Function>
Function function_of(HMODULE module, const char* name) {
    const FARPROC address = GetProcAddress(module, name);
    if (address == nullptr) {
        throw std::runtime_error(std::string("the library has no function ") + name);
    }
    return reinterpret_cast<Function>(reinterpret_cast<void*>(address));
}

void check(int32_t result, const char* what) {
    if (result != 0) {
        throw std::runtime_error(std::string(what) + " failed");
    }
}

}  // namespace

const HostLibrary& HostLibrary::get() {
    static const HostLibrary library;
    return library;
}

HostLibrary::HostLibrary() {
    const HMODULE module = LoadLibraryA(kOpenGLEffectMgrFileName);
    if (module == nullptr) {
        throw std::runtime_error(std::string("cannot load ") + kOpenGLEffectMgrFileName);
    }
    create = function_of<CreateEngineFunction>(module, "CreateNLEOpenGLEffectEngineInstance");
    destroy = function_of<DestroyEngineFunction>(module, "DestroyNLEOpenGLEffectEngineInstance");
}

Engine::Engine(bool threaded, ID3D11Device* device) {
    check(HostLibrary::get().create(&engine_, nullptr, threaded, device), "making the engine");
    if (!threaded) {
        engine_->SetOwnerThread(nullptr);
    }
}

Engine::~Engine() {
    HostLibrary::get().destroy(engine_);
}

std::string usual_fragment() {
    return "vec4 FUNCNAME(vec2 tc) {\n"
           "    return INPUT1(tc) * PREFIX(p0) + vec4(PREFIX(p1), 0.0, 0.0, 0.0);\n"
           "}\n";
}

Effect::Effect(const Engine& engine, EffectPlan plan)
    : plan_(std::move(plan)), pixels_(size_t{plan_.width} * plan_.height * 4, 0x40) {
    const uint32_t pitch = plan_.width * 4;
    check(engine->CreateEffect(plan_.width, plan_.height, pitch, false, "", effect_, 0, "", {}, {}),
          "making an effect");
    effect_->SetFragmentShaderText(plan_.fragment.c_str());
    for (int i = 0; i < plan_.floats; ++i) {
        effect_->RegisterParamFloat(("p" + std::to_string(i)).c_str(), 0.5f);
    }
    if (plan_.with_input) {
        effect_->AddFlatInput(plan_.width, plan_.height, pitch, true);
    }
    check(effect_->InitEffect(effect_), "compiling an effect");
    if (plan_.with_input) {
        check(effect_->SetInputTextureRef(0, pixels_.data(), plan_.width, plan_.height, pitch, 4,
                                          false, 9729, 0, 0),
              "setting a picture");
    }
    effect_->SetVertexCounts(std::vector<int32_t>(static_cast<size_t>(plan_.passes), 4));
    std::vector<int32_t> instances(static_cast<size_t>(plan_.passes), plan_.instances);
    effect_->SetInstanceCounts(instances);
}

void Effect::draw(const DrawParams& params) {
    check(effect_->DrawEffect(params, effect_, 0), "a draw");
}

void Effect::set_streaming_picture() {
    effect_->SetInputTexture(0, pixels_.data(), plan_.width, plan_.height, plan_.width * 4, 4,
                             false, 9729);
}

}  // namespace bench
