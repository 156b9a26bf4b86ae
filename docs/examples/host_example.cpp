// A complete host: draws one effect over a picture in memory and prints two of its pixels.
// It needs the headers in Include/ and, when it runs, the library with its DLLs beside it.

#include <windows.h>

#include <cstdio>
#include <memory>
#include <vector>

#include "DirectXEffectMgr/Include/OpenGLEffectMgr.h"

namespace {

constexpr char kShader[] =
    "vec4 FUNCNAME(vec2 tc) {\n"
    "    vec4 color = INPUT1(tc);\n"
    "    return vec4(mix(color.rgb, 1.0 - color.rgb, PREFIX(amount)), color.a);\n"
    "}\n";

void Log(int32_t level, const char* format, va_list args) {
    if (level >= 3) {  // warnings and errors
        std::vfprintf(stderr, format, args);
        std::fputc('\n', stderr);
    }
}

int DrawNegative(IOpenGLEffectEngine& engine) {
    const uint32_t width = 64, height = 36, pitch = width * 4;
    std::vector<uint8_t> input(pitch * height, 255);  // R, G, B, A; here all white
    std::vector<uint8_t> output(pitch * height);

    std::shared_ptr<IOpenGLEffect> effect;
    engine.CreateEffect(width, height, pitch, false, "", effect, 0, "", {}, {});
    effect->SetFragmentShaderText(kShader);
    effect->RegisterParamFloat("amount", 0.0f);
    const int32_t index = effect->AddFlatInput(width, height, pitch, false);
    if (effect->InitEffect(effect) != 0) {
        return 1;  // the log tells why
    }
    for (const float amount : {0.0f, 1.0f}) {  // two frames
        effect->SetParamFloat("amount", amount);
        effect->SetInputTexture(index, input.data(), width, height, pitch, 4, false, 0);
        DrawParams params;
        params.readback_buffer = output.data();
        if (effect->DrawEffect(params, effect, static_cast<int32_t>(pitch)) != 0) {
            return 1;
        }
        std::printf("amount %.0f: %d %d %d %d\n", static_cast<double>(amount), output[0], output[1],
                    output[2], output[3]);
    }
    return 0;  // the effect goes here, before its engine
}

}  // namespace

int main() {
    HMODULE library = LoadLibraryA(kOpenGLEffectMgrFileName);
    if (library == nullptr) {
        std::fprintf(stderr, "%s cannot be loaded\n", kOpenGLEffectMgrFileName);
        return 1;
    }
    const auto address = [library](const char* name) {
        return reinterpret_cast<void*>(GetProcAddress(library, name));
    };
    const auto create =
        reinterpret_cast<CreateEngineFunction>(address("CreateNLEOpenGLEffectEngineInstance"));
    const auto destroy =
        reinterpret_cast<DestroyEngineFunction>(address("DestroyNLEOpenGLEffectEngineInstance"));
    IOpenGLEffectEngine* engine = nullptr;
    if (create(&engine, Log, true, nullptr) != 0) {
        return 1;  // no Direct3D 11 device
    }
    const int status = DrawNegative(*engine);
    destroy(engine);
    return status;
}
