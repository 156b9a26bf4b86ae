// From a finished target to the host's memory, and from the recording to the device.

#include <d3d11.h>
#include <wrl/client.h>

#include <algorithm>
#include <cstring>

#include "DirectXEffectMgr/Source/DirectXEffect.h"
#include "DirectXEffectMgr/Source/device_objects.h"
#include "DirectXEffectMgr/Source/device_util.h"
#include "DirectXEffectMgr/Source/logging/logging.h"
#include "DirectXEffectMgr/Source/pipeline_states.h"

namespace {

using Microsoft::WRL::ComPtr;

constexpr uint32_t kBytesPerPixel = 4;

// Nothing where the device refuses it.
ComPtr<ID3D11Texture2D> make_staging_texture(ID3D11Device* device, uint32_t width,
                                             uint32_t height) {
    D3D11_TEXTURE2D_DESC description =
        texture_description(width, height, DXGI_FORMAT_B8G8R8A8_UNORM, 0);
    description.Usage = D3D11_USAGE_STAGING;
    description.CPUAccessFlags = D3D11_CPU_ACCESS_READ;
    ComPtr<ID3D11Texture2D> texture;
    if (FAILED(device->CreateTexture2D(&description, nullptr, &texture))) {
        return nullptr;
    }
    return texture;
}

// Maps a staging texture as soon as the device is done with it; null data if it can't.
D3D11_MAPPED_SUBRESOURCE map_when_done(ID3D11DeviceContext& context, ID3D11Texture2D* staging) {
    D3D11_MAPPED_SUBRESOURCE mapped{};
    HRESULT result = DXGI_ERROR_WAS_STILL_DRAWING;
    while (result == DXGI_ERROR_WAS_STILL_DRAWING) {
        result = context.Map(staging, 0, D3D11_MAP_READ, D3D11_MAP_FLAG_DO_NOT_WAIT, &mapped);
    }
    if (FAILED(result)) {
        log_error("%s ERROR: Map = 0x%08lx\n", "CDirectXEffect::ReadImageFromTex",
                  static_cast<unsigned long>(result));
        mapped.pData = nullptr;
    }
    return mapped;
}

// The texture behind a target's picture; nothing if there is none.
ComPtr<ID3D11Resource> resource_of(const TextureNum& source) {
    ComPtr<ID3D11Resource> resource;
    if (source.gpu_data != nullptr && source.gpu_data->srv != nullptr) {
        source.gpu_data->srv->GetResource(&resource);
    }
    return resource;
}

// How a mapped picture is laid out in the host's buffer.
struct CopyShape {
    uint32_t row_bytes;
    uint32_t rows;        // copied one by one
    uint32_t whole_rows;  // copied at once, if the pitches agree
    uint32_t pitch;       // bytes from row to row in the buffer
};

void copy_picture(const D3D11_MAPPED_SUBRESOURCE& mapped, const CopyShape& shape, void* buffer) {
    if (shape.pitch == mapped.RowPitch) {
        std::memcpy(buffer, mapped.pData, size_t{shape.pitch} * shape.whole_rows);
        return;
    }
    // Never into the next row's place, and so never past the end of the last one.
    const size_t bytes = std::min({shape.row_bytes, shape.pitch, mapped.RowPitch});
    const auto* from = static_cast<const uint8_t*>(mapped.pData);
    auto* to = static_cast<uint8_t*>(buffer);
    for (uint32_t row = 0; row < shape.rows; ++row) {
        std::memcpy(to, from, bytes);
        from += mapped.RowPitch;
        to += shape.pitch;
    }
}

}  // namespace

bool CDirectXEffect::ReleaseStagingTexture() {
    release(staging_texture);
    return true;
}

bool CDirectXEffect::ReadImageFromTex(const TextureNum& source, uint32_t image_width,
                                      uint32_t image_height, uint32_t image_pitch, void* buffer) {
    if (device == nullptr || deferred_context == nullptr || buffer == nullptr) {
        return false;
    }
    const uint32_t own_width = width;
    const uint32_t own_height = height;
    if (staging_texture == nullptr) {
        staging_texture = make_staging_texture(device, own_width, own_height).Detach();
    }
    ComPtr<ID3D11Texture2D> staging = staging_texture;
    if (image_width != own_width || image_height != own_height) {
        staging = make_staging_texture(device, image_width, image_height);
    }
    ComPtr<ID3D11Resource> picture = resource_of(source);
    if (staging != nullptr && picture != nullptr) {
        deferred_context->CopyResource(staging.Get(), picture.Get());
    }
    Recording recording;  // handed over in any case: it holds the draw as well
    D3D11_MAPPED_SUBRESOURCE mapped{};
    if (ExecuteRecorded(recording) && staging != nullptr && picture != nullptr) {
        mapped = map_when_done(*recording.context.Get(), staging.Get());
    }
    if (mapped.pData == nullptr) {
        log_error("reading data from dx tex is failed! buf is null!");
        leftovers_.keep(picture.Detach());
        leftovers_.keep(recording.context.Detach());
        leftovers_.keep(recording.list.Detach());
        leftovers_.keep(staging.Detach());
        return false;
    }
    // On purpose: as many rows as the effect has, if the picture that was read has them.
    const uint32_t rows = std::min(own_height, image_height);
    copy_picture(mapped, {image_width * kBytesPerPixel, rows, image_height, image_pitch}, buffer);
    recording.context->Unmap(staging.Get(), 0);
    return true;
}

bool CDirectXEffect::ExecuteRecorded(Recording& given) {
    const HRESULT recorded = deferred_context->FinishCommandList(FALSE, &given.list);
    device->GetImmediateContext(&given.context);
    if (FAILED(recorded) || given.list == nullptr || given.context == nullptr) {
        return false;
    }
    given.context->ExecuteCommandList(given.list.Get(), FALSE);
    return true;
}
