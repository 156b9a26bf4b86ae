// The effect's colour targets and depth buffers.

#include <d3d11.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "DirectXEffectMgr/Source/DirectXEffect.h"
#include "DirectXEffectMgr/Source/device_objects.h"
#include "DirectXEffectMgr/Source/device_util.h"
#include "DirectXEffectMgr/Source/logging/logging.h"

namespace {

constexpr DXGI_FORMAT kColourFormat = DXGI_FORMAT_B8G8R8A8_UNORM;
constexpr uint32_t kGlRgba8 = 32856;
constexpr UINT kMsaaSamples = 4;

HRESULT create_target_view(ID3D11Device* device, ID3D11Texture2D* texture, bool multisampled,
                           ID3D11RenderTargetView*& view) {
    D3D11_RENDER_TARGET_VIEW_DESC description{};
    description.Format = kColourFormat;
    description.ViewDimension =
        multisampled ? D3D11_RTV_DIMENSION_TEXTURE2DMS : D3D11_RTV_DIMENSION_TEXTURE2D;
    return device->CreateRenderTargetView(texture, &description, &view);
}

HRESULT create_msaa_texture(ID3D11Device* device, uint32_t width, uint32_t height,
                            ID3D11Texture2D*& texture) {
    D3D11_TEXTURE2D_DESC description =
        texture_description(width, height, kColourFormat, D3D11_BIND_RENDER_TARGET);
    description.SampleDesc.Count = kMsaaSamples;
    return device->CreateTexture2D(&description, nullptr, &texture);
}

HRESULT create_depth_texture(ID3D11Device* device, uint32_t width, uint32_t height,
                             bool multisampled, ID3D11Texture2D*& texture) {
    D3D11_TEXTURE2D_DESC description =
        texture_description(width, height, DXGI_FORMAT_R32_TYPELESS,
                            D3D11_BIND_DEPTH_STENCIL | D3D11_BIND_SHADER_RESOURCE);
    description.SampleDesc.Count = multisampled ? kMsaaSamples : 1;
    return device->CreateTexture2D(&description, nullptr, &texture);
}

HRESULT create_depth_view(ID3D11Device* device, ID3D11Texture2D* texture, bool multisampled,
                          ID3D11DepthStencilView*& view) {
    D3D11_DEPTH_STENCIL_VIEW_DESC description{};
    description.Format = DXGI_FORMAT_D32_FLOAT;
    description.ViewDimension =
        multisampled ? D3D11_DSV_DIMENSION_TEXTURE2DMS : D3D11_DSV_DIMENSION_TEXTURE2D;
    return device->CreateDepthStencilView(texture, &description, &view);
}

HRESULT create_depth_srv(ID3D11Device* device, ID3D11Texture2D* texture, bool multisampled,
                         ID3D11ShaderResourceView*& view) {
    if (!multisampled) {
        return create_view(device, texture, DXGI_FORMAT_R32_FLOAT, view);
    }
    D3D11_SHADER_RESOURCE_VIEW_DESC description{};
    description.Format = DXGI_FORMAT_R32_FLOAT;
    description.ViewDimension = D3D11_SRV_DIMENSION_TEXTURE2DMS;
    return device->CreateShaderResourceView(texture, &description, &view);
}

HRESULT create_depth_sampler(ID3D11Device* device, ID3D11SamplerState*& sampler) {
    D3D11_SAMPLER_DESC description{};
    description.Filter = D3D11_FILTER_COMPARISON_MIN_MAG_MIP_LINEAR;
    description.AddressU = D3D11_TEXTURE_ADDRESS_CLAMP;
    description.AddressV = D3D11_TEXTURE_ADDRESS_CLAMP;
    description.AddressW = D3D11_TEXTURE_ADDRESS_CLAMP;
    description.ComparisonFunc = D3D11_COMPARISON_LESS_EQUAL;
    description.MaxLOD = D3D11_FLOAT32_MAX;
    return device->CreateSamplerState(&description, &sampler);
}

// Fills the gaps of a target's picture; stops at the first failure.
bool create_colour(ID3D11Device* device, bool msaa, uint32_t width, uint32_t height,
                   TextureNum& fbo) {
    const UINT bind_flags =
        msaa ? D3D11_BIND_SHADER_RESOURCE : D3D11_BIND_RENDER_TARGET | D3D11_BIND_SHADER_RESOURCE;
    const D3D11_TEXTURE2D_DESC description =
        texture_description(width, height, kColourFormat, bind_flags);
    if (failed(device->CreateTexture2D(&description, nullptr, &fbo.colour.texture),
               "CreateFboTexture CreateTexture2D failed!")) {
        return false;
    }
    if (msaa && fbo.msaa_texture == nullptr &&
        failed(create_msaa_texture(device, width, height, fbo.msaa_texture),
               "CreateFboMsaa CreateTexture2D failed!")) {
        return false;
    }
    if (msaa && fbo.render_target_view == nullptr &&
        failed(create_target_view(device, fbo.msaa_texture, true, fbo.render_target_view),
               "CreateFboMsaa CreateRenderTargetView failed!")) {
        return false;
    }
    if (fbo.colour.srv == nullptr &&
        failed(create_view(device, fbo.colour.texture, kColourFormat, fbo.colour.srv),
               "CreateFboTexture CreateShaderResourceView failed!")) {
        return false;
    }
    return fbo.colour.sampler != nullptr ||
           !failed(create_colour_sampler(device, fbo.colour.sampler),
                   "CreateFboTexture CreateSamplerState failed!");
}

struct DepthMessages {
    const char* texture;
    const char* view;
    const char* srv;
    const char* sampler;
};
constexpr DepthMessages kDepthMessages = {
    "CreateFboDepth CreateTexture2D failed!", "CreateFboDepth CreateDepthStencilView failed!",
    "CreateFboDepth CreateShaderResourceView failed!", "CreateFboDepth CreateSamplerState failed!"};
constexpr DepthMessages kMsaaDepthMessages = {
    "fboDepth msaa CreateTexture2D failed!", "fboDepth msaa CreateDepthStencilView failed!",
    "CreateFboDepth msaa CreateShaderResourceView failed!",
    "CreateFboDepth msaa CreateSamplerState failed!"};

// Fills the gaps of a depth buffer of one kind; stops at the first failure.
bool create_depth(ID3D11Device* device, uint32_t width, uint32_t height, bool multisampled,
                  GpuData& depth, ID3D11DepthStencilView*& view) {
    const DepthMessages& messages = multisampled ? kMsaaDepthMessages : kDepthMessages;
    if (depth.texture == nullptr &&
        failed(create_depth_texture(device, width, height, multisampled, depth.texture),
               messages.texture)) {
        return false;
    }
    if (view == nullptr &&
        failed(create_depth_view(device, depth.texture, multisampled, view), messages.view)) {
        return false;
    }
    if (depth.srv == nullptr &&
        failed(create_depth_srv(device, depth.texture, multisampled, depth.srv), messages.srv)) {
        return false;
    }
    return depth.sampler != nullptr ||
           !failed(create_depth_sampler(device, depth.sampler), messages.sampler);
}

template <class Record>
void ensure(Record*& record) {
    if (record == nullptr) {
        record = new Record();
    }
}

// Puts a record of the old size aside, for a change back, and a fresh one in its place. A record
// that never got a size fits no request: it goes at once.
template <class Record>
void put_aside(std::vector<Record*>& spares, Record*& place, void (*release_objects)(Record&)) {
    if (place == nullptr) {
        return;
    }
    if (place->width == 0 || place->height == 0) {
        release_objects(*place);
        *place = Record();
        return;
    }
    auto fresh = std::make_unique<Record>();
    spares.push_back(place);
    place = fresh.release();
}

// Puts the first spare record of this size in the place of a fresh one.
template <class Record>
bool take_spare(std::vector<Record*>& spares, const DrawSettings& settings, Record*& place) {
    const auto spare = std::find_if(spares.begin(), spares.end(), [&settings](const Record* r) {
        return r->width == settings.width && r->height == settings.height;
    });
    if (spare == spares.end()) {
        return false;
    }
    delete std::exchange(place, *spare);
    spares.erase(spare);
    return true;
}

// The record of a target that doesn't exist yet, the same for all effects.
TextureNum no_target;

}  // namespace

void CDirectXEffect::CreateFboTexture(TextureNum& fbo, uint32_t /*format_code*/, uint32_t fbo_width,
                                      uint32_t fbo_height, bool with_objects) {
    if (with_objects) {
        if (fbo.colour.texture == nullptr &&
            !create_colour(device, msaa, fbo_width, fbo_height, fbo)) {
            return;
        }
        fbo.gpu_data = &fbo.colour;
    }
    if (fbo.render_target_view == nullptr &&
        failed(create_target_view(device, fbo.colour.texture, false, fbo.render_target_view),
               "CreateFboTexture CreateRenderTargetView failed!")) {
        return;
    }
    fbo.width = fbo_width;
    fbo.height = fbo_height;
}

void CDirectXEffect::CreateFboDepth(FboDepth& fbo_depth, uint32_t fbo_width, uint32_t fbo_height) {
    if (msaa && !create_depth(device, fbo_width, fbo_height, true, fbo_depth.msaa_depth,
                              fbo_depth.msaa_depth_view)) {
        return;
    }
    if (!create_depth(device, fbo_width, fbo_height, false, fbo_depth.depth,
                      fbo_depth.depth_view)) {
        return;
    }
    fbo_depth.width = fbo_width;
    fbo_depth.height = fbo_height;
}

void CDirectXEffect::ReleaseFboTexture(TextureNum& fbo) {
    release(fbo.render_target_view);
    release_objects(fbo.colour);
    release(fbo.msaa_texture);
    fbo.width = 0;
    fbo.height = 0;
}

void CDirectXEffect::ReleaseFboDepth(FboDepth& fbo_depth) {
    release_objects(fbo_depth.depth);
    release(fbo_depth.depth_view);
    release_objects(fbo_depth.msaa_depth);
    release(fbo_depth.msaa_depth_view);
    fbo_depth.width = 0;
    fbo_depth.height = 0;
}

void CDirectXEffect::PrepareTargets(const DrawSettings& settings) {
    ensure(target);
    ensure(depth);
    const bool resized = target->width != settings.width || target->height != settings.height;
    if (resized) {
        ReleaseFboTexture(*target);
        ReleaseFboDepth(*depth);
        SpareExtraTargets();
    }
    CreateFboTexture(*target, kGlRgba8, settings.width, settings.height, true);
    if (settings.has_depth) {
        CreateFboDepth(*depth, settings.width, settings.height);
    }
    PrepareExtraTargets(settings, resized);
}

void CDirectXEffect::SpareExtraTargets() {
    for (TextureNum*& extra : extra_targets) {
        put_aside(spare_targets, extra, ReleaseFboTexture);
    }
    for (FboDepth*& extra : extra_depths) {
        put_aside(spare_depths, extra, ReleaseFboDepth);
    }
}

void CDirectXEffect::PrepareExtraTargets(const DrawSettings& settings, bool resized) {
    for (size_t n = 0; n < extra_targets.size(); ++n) {
        ensure(extra_targets[n]);
        if (!resized || !take_spare(spare_targets, settings, extra_targets[n])) {
            CreateFboTexture(*extra_targets[n], kGlRgba8, settings.width, settings.height, true);
        }
        if (!settings.extra_depths) {
            continue;
        }
        ensure(extra_depths[n]);
        if (!resized || !take_spare(spare_depths, settings, extra_depths[n])) {
            CreateFboDepth(*extra_depths[n], settings.width, settings.height);
        }
    }
}

int32_t CDirectXEffect::AddFbo() {
    extra_targets.reserve(extra_targets.size() + 1);
    extra_depths.reserve(extra_depths.size() + 1);
    extra_targets.push_back(nullptr);
    extra_depths.push_back(nullptr);
    ++extra_count;
    return kResultOk;
}

int32_t CDirectXEffect::SwapFbo(int32_t number) {
    if (number < 0 || number >= extra_count) {
        if (refusals_.is_first(Refusal::kTarget, number)) {
            log_error("SwapFbo: no target has the number %d", number);
        }
        return kResultRefused;
    }
    const auto position = static_cast<size_t>(number);
    std::swap(target, extra_targets[position]);
    if (depth_test && with_depth) {
        std::swap(depth, extra_depths[position]);
    }
    return kResultOk;
}

TextureNum* CDirectXEffect::GetFbo(int32_t number) {
    if (number < 0 || number >= extra_count) {
        if (refusals_.is_first(Refusal::kTarget, number)) {
            log_error("GetFbo: no target has the number %d", number);
        }
        return &no_target;
    }
    TextureNum* const extra = extra_targets[static_cast<size_t>(number)];
    return extra != nullptr ? extra : &no_target;
}

GpuData* CDirectXEffect::CreateGpuData(ID3D11Texture2D* texture) {
    if (texture == nullptr || device == nullptr) {
        return nullptr;
    }
    auto data = std::make_unique<GpuData>();
    data->texture = texture;
    if (failed(create_view(device, texture, kColourFormat, data->srv),
               "CreateGpuData CreateShaderResourceView failed!")) {
        return nullptr;
    }
    if (failed(create_colour_sampler(device, data->sampler),
               "CreateGpuData CreateSamplerState failed!")) {
        release(data->srv);
        return nullptr;
    }
    return data.release();
}

void CDirectXEffect::ReleaseGpuData(GpuData* data) {
    if (data == nullptr) {
        return;
    }
    // The texture stays the host's.
    release(data->srv);
    release(data->sampler);
    delete data;
}
