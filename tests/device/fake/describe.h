#pragma once

#include <d3d11.h>

#include <string>

#include "fake/world.h"

/// Texts of everything that crosses the device's interfaces, names in place of numbers where
/// the platform has one. Each description is complete: a field that is missing here is missing
/// from every test.
namespace fake {

std::string formatName(DXGI_FORMAT format);
std::string hexCode(HRESULT code);
std::string floatText(float value);

std::string describe(const D3D11_BUFFER_DESC& desc);
std::string describe(const D3D11_TEXTURE2D_DESC& desc);
std::string describe(const D3D11_SHADER_RESOURCE_VIEW_DESC& desc);
std::string describe(const D3D11_RENDER_TARGET_VIEW_DESC& desc);
std::string describe(const D3D11_DEPTH_STENCIL_VIEW_DESC& desc);
std::string describe(const D3D11_SAMPLER_DESC& desc);
std::string describe(const D3D11_DEPTH_STENCIL_DESC& desc);
std::string describe(const D3D11_RASTERIZER_DESC& desc);
std::string describe(const D3D11_BLEND_DESC& desc);
std::string describe(const D3D11_INPUT_ELEMENT_DESC& desc);
std::string describe(const D3D11_VIEWPORT& viewport);
std::string topologyName(D3D11_PRIMITIVE_TOPOLOGY topology);
std::string mapName(D3D11_MAP kind);

/// Bytes of one pixel in memory; 4 for every format that the tests do not name.
UINT pixelBytes(DXGI_FORMAT format);

}  // namespace fake
