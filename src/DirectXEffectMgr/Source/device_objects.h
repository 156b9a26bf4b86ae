#pragma once

#include <d3d11.h>

#include <cstdint>

#include "DirectXEffectMgr/Include/OpenGLEffectTypes.h"

/// Description of a texture as every texture of the library has it: one mip level, no array, one
/// sample, for the graphics card alone, no options.
D3D11_TEXTURE2D_DESC texture_description(uint32_t width, uint32_t height, DXGI_FORMAT format,
                                         UINT bind_flags);

/// Makes the view of a flat, single-sample texture: first mip level, one level.
///
/// @param view  receives the view; null on failure
HRESULT create_view(ID3D11Device* device, ID3D11Texture2D* texture, DXGI_FORMAT format,
                    ID3D11ShaderResourceView*& view);

/// Makes the sampler of all colour pictures: linear, mirrored on all axes.
///
/// @param sampler  receives the sampler; null on failure
HRESULT create_colour_sampler(ID3D11Device* device, ID3D11SamplerState*& sampler);

/// True if texture, view and sampler are all there.
bool is_whole(const GpuData& picture);

/// Releases texture, view and sampler, each if set, and clears the fields.
void release_objects(GpuData& picture);
