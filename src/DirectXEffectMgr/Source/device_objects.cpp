#include "DirectXEffectMgr/Source/device_objects.h"

#include "DirectXEffectMgr/Source/device_util.h"

D3D11_TEXTURE2D_DESC texture_description(uint32_t width, uint32_t height, DXGI_FORMAT format,
                                         UINT bind_flags) {
    D3D11_TEXTURE2D_DESC description{};
    description.Width = width;
    description.Height = height;
    description.MipLevels = 1;
    description.ArraySize = 1;
    description.Format = format;
    description.SampleDesc.Count = 1;
    description.Usage = D3D11_USAGE_DEFAULT;
    description.BindFlags = bind_flags;
    return description;
}

HRESULT create_view(ID3D11Device* device, ID3D11Texture2D* texture, DXGI_FORMAT format,
                    ID3D11ShaderResourceView*& view) {
    D3D11_SHADER_RESOURCE_VIEW_DESC description{};
    description.Format = format;
    description.ViewDimension = D3D11_SRV_DIMENSION_TEXTURE2D;
    description.Texture2D.MostDetailedMip = 0;
    description.Texture2D.MipLevels = 1;
    return device->CreateShaderResourceView(texture, &description, &view);
}

HRESULT create_colour_sampler(ID3D11Device* device, ID3D11SamplerState*& sampler) {
    D3D11_SAMPLER_DESC description{};
    description.Filter = D3D11_FILTER_MIN_MAG_MIP_LINEAR;
    description.AddressU = D3D11_TEXTURE_ADDRESS_MIRROR;
    description.AddressV = D3D11_TEXTURE_ADDRESS_MIRROR;
    description.AddressW = D3D11_TEXTURE_ADDRESS_MIRROR;
    description.ComparisonFunc = D3D11_COMPARISON_NEVER;
    description.MaxLOD = D3D11_FLOAT32_MAX;
    return device->CreateSamplerState(&description, &sampler);
}

bool is_whole(const GpuData& picture) {
    return picture.texture != nullptr && picture.srv != nullptr && picture.sampler != nullptr;
}

void release_objects(GpuData& picture) {
    release(picture.texture);
    release(picture.srv);
    release(picture.sampler);
}
