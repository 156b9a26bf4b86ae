// What the engine makes for the host: effects, and textures filled from the host's memory.

#include <d3d11.h>

#include <string>
#include <utility>

#include "DirectXEffectMgr/Source/DirectXEffect.h"
#include "DirectXEffectMgr/Source/DirectXEffectEngine.h"
#include "DirectXEffectMgr/Source/device_objects.h"
#include "DirectXEffectMgr/Source/device_util.h"
#include "DirectXEffectMgr/Source/logging/logging.h"

namespace {

std::string text_of(const char* text) {
    return text != nullptr ? text : "";
}

// Makes the three objects; on failure none is left.
bool create_objects(ID3D11Device* device, uint32_t width, uint32_t height, GpuData& data) {
    if (device == nullptr) {
        log_error("BindTexture CreateTexture2D failed!");
        return false;
    }
    const D3D11_TEXTURE2D_DESC description =
        texture_description(width, height, DXGI_FORMAT_B8G8R8A8_UNORM, D3D11_BIND_SHADER_RESOURCE);
    const char* failure = nullptr;
    if (FAILED(device->CreateTexture2D(&description, nullptr, &data.texture))) {
        failure = "BindTexture CreateTexture2D failed!";
    } else if (FAILED(create_view(device, data.texture, DXGI_FORMAT_B8G8R8A8_UNORM, data.srv))) {
        failure = "BindTexture CreateShaderResourceView failed!";
    } else if (FAILED(create_colour_sampler(device, data.sampler))) {
        failure = "CreateSamplerState failed!";
    }
    if (failure != nullptr) {
        log_error("%s", failure);
        release_objects(data);
    }
    return failure == nullptr;
}

void upload(ID3D11DeviceContext* context, const GpuData& data, const void* pixels,
            uint32_t row_pitch) {
    if (context != nullptr && pixels != nullptr && data.texture != nullptr) {
        context->UpdateSubresource(data.texture, 0, nullptr, pixels, row_pitch, 0);
    }
}

std::vector<int32_t> size_entry(uint32_t width, uint32_t height) {
    return {static_cast<int32_t>(width), static_cast<int32_t>(height)};
}

// A new record with its objects and its entry in the map; null if the device failed.
GpuData* make_host_texture(ID3D11Device* device, uint32_t width, uint32_t height, GpuDataMap& map) {
    auto made = std::make_unique<GpuData>();
    std::vector<int32_t>& size = map[made.get()];
    size = size_entry(width, height);
    if (!create_objects(device, width, height, *made)) {
        map.erase(made.get());
        return nullptr;
    }
    return made.release();
}

}  // namespace

int32_t CDirectXEffectEngine::CreateEffect(uint32_t width, uint32_t height, uint32_t pitch,
                                           bool with_depth, const char* fragment_path,
                                           std::shared_ptr<IOpenGLEffect>& out,
                                           uint32_t source_encoding, const char* vertex_path,
                                           SegmentList fragment_segments,
                                           SegmentList vertex_segments) {
    auto effect = std::make_shared<CDirectXEffect>(
        this, width, height, pitch, with_depth, text_of(fragment_path), source_encoding,
        text_of(vertex_path), std::move(fragment_segments), std::move(vertex_segments));
    effect->SetDevice(device.device, device.immediate_context);
    if (!effect->IsUsable()) {
        out.reset();
        return kResultFail;
    }
    out = std::move(effect);
    return kResultOk;
}

bool CDirectXEffectEngine::BindTextureData(const void* pixels, uint32_t width, uint32_t height,
                                           uint32_t pitch, GpuData** slot, GpuDataMap& map) {
    if (slot == nullptr) {
        return false;
    }
    const bool known = *slot != nullptr && map.count(*slot) != 0;
    if (!known) {
        *slot = make_host_texture(device.device, width, height, map);
        if (*slot != nullptr) {
            upload(device.immediate_context, **slot, pixels, pitch);
        }
        return *slot != nullptr;
    }
    GpuData& data = **slot;
    std::vector<int32_t>& size = map[*slot];
    if (size == size_entry(width, height)) {
        upload(device.immediate_context, data, pixels, pitch);
        return true;
    }
    release_objects(data);
    if (!create_objects(device.device, width, height, data)) {
        // The key stays in the host's map, which is the host's to clear.
        delete *slot;
        *slot = nullptr;
        return false;
    }
    upload(device.immediate_context, data, pixels, pitch);
    size = size_entry(width, height);
    return true;
}

void CDirectXEffectEngine::ReleaseGpuDataMap(GpuDataMap& map) {
    for (const auto& entry : map) {
        if (entry.first != nullptr) {
            release_objects(*entry.first);
            delete entry.first;
        }
    }
}
