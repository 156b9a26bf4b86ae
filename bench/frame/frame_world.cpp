#include "frame/frame_world.h"

#include <windows.h>
#include <wrl/client.h>

#include <stdexcept>

namespace bench {

EffectSource usual_source() {
    EffectSource source;
    source.name = "usual";
    source.fragment = usual_fragment();
    source.parameters = {{"float", "p0", 1}, {"float", "p1", 1}};
    return source;
}

HlslTexts usual_texts() {
    ProgramText text;
    if (!Subject(usual_source()).translate(text)) {
        throw std::runtime_error("the usual effect was refused");
    }
    return {text.vertex_hlsl, text.fragment_hlsl};
}

fake::World& null_world() {
    static fake::World* const world = [] {
        auto* made = new fake::World;
        made->setRecording(false);
        return made;
    }();
    return *world;
}

void wait_for_device(ID3D11Device* device) {
    Microsoft::WRL::ComPtr<ID3D11DeviceContext> immediate;
    device->GetImmediateContext(&immediate);
    const D3D11_QUERY_DESC desc = {D3D11_QUERY_EVENT, 0};
    Microsoft::WRL::ComPtr<ID3D11Query> query;
    if (FAILED(device->CreateQuery(&desc, &query))) {
        throw std::runtime_error("the device makes no query");
    }
    immediate->End(query.Get());
    BOOL done = FALSE;
    while (immediate->GetData(query.Get(), &done, sizeof done, 0) == S_FALSE) {
        Sleep(0);
    }
}

}  // namespace bench
