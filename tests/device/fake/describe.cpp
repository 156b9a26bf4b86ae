#include "fake/describe.h"

#include <cstdio>
#include <iterator>

namespace fake {
namespace {

struct Name {
    unsigned long value;
    const char* text;
};

constexpr Name kFormats[] = {
    {DXGI_FORMAT_UNKNOWN, "UNKNOWN"},
    {DXGI_FORMAT_R32G32B32A32_FLOAT, "R32G32B32A32_FLOAT"},
    {DXGI_FORMAT_R32G32B32_FLOAT, "R32G32B32_FLOAT"},
    {DXGI_FORMAT_R32G32_FLOAT, "R32G32_FLOAT"},
    {DXGI_FORMAT_R32_TYPELESS, "R32_TYPELESS"},
    {DXGI_FORMAT_D32_FLOAT, "D32_FLOAT"},
    {DXGI_FORMAT_R32_FLOAT, "R32_FLOAT"},
    {DXGI_FORMAT_R32_UINT, "R32_UINT"},
    {DXGI_FORMAT_R8_UNORM, "R8_UNORM"},
    {DXGI_FORMAT_R8G8B8A8_UNORM, "R8G8B8A8_UNORM"},
    {DXGI_FORMAT_B8G8R8A8_UNORM, "B8G8R8A8_UNORM"},
};

constexpr Name kUsages[] = {
    {D3D11_USAGE_DEFAULT, "DEFAULT"},
    {D3D11_USAGE_IMMUTABLE, "IMMUTABLE"},
    {D3D11_USAGE_DYNAMIC, "DYNAMIC"},
    {D3D11_USAGE_STAGING, "STAGING"},
};

constexpr Name kBinds[] = {
    {D3D11_BIND_VERTEX_BUFFER, "VERTEX_BUFFER"},
    {D3D11_BIND_INDEX_BUFFER, "INDEX_BUFFER"},
    {D3D11_BIND_CONSTANT_BUFFER, "CONSTANT_BUFFER"},
    {D3D11_BIND_SHADER_RESOURCE, "SHADER_RESOURCE"},
    {D3D11_BIND_RENDER_TARGET, "RENDER_TARGET"},
    {D3D11_BIND_DEPTH_STENCIL, "DEPTH_STENCIL"},
};

constexpr Name kCpuAccess[] = {
    {D3D11_CPU_ACCESS_WRITE, "WRITE"},
    {D3D11_CPU_ACCESS_READ, "READ"},
};

constexpr Name kComparisons[] = {
    {D3D11_COMPARISON_NEVER, "NEVER"},     {D3D11_COMPARISON_LESS, "LESS"},
    {D3D11_COMPARISON_EQUAL, "EQUAL"},     {D3D11_COMPARISON_LESS_EQUAL, "LESS_EQUAL"},
    {D3D11_COMPARISON_GREATER, "GREATER"}, {D3D11_COMPARISON_NOT_EQUAL, "NOT_EQUAL"},
    {D3D11_COMPARISON_ALWAYS, "ALWAYS"},
};

constexpr Name kAddresses[] = {
    {D3D11_TEXTURE_ADDRESS_WRAP, "WRAP"},
    {D3D11_TEXTURE_ADDRESS_MIRROR, "MIRROR"},
    {D3D11_TEXTURE_ADDRESS_CLAMP, "CLAMP"},
};

constexpr Name kFilters[] = {
    {D3D11_FILTER_MIN_MAG_MIP_POINT, "MIN_MAG_MIP_POINT"},
    {D3D11_FILTER_MIN_MAG_MIP_LINEAR, "MIN_MAG_MIP_LINEAR"},
    {D3D11_FILTER_COMPARISON_MIN_MAG_MIP_LINEAR, "COMPARISON_MIN_MAG_MIP_LINEAR"},
};

constexpr Name kSrvDimensions[] = {
    {D3D11_SRV_DIMENSION_TEXTURE2D, "TEXTURE2D"},
    {D3D11_SRV_DIMENSION_TEXTURE2DMS, "TEXTURE2DMS"},
};
constexpr Name kRtvDimensions[] = {
    {D3D11_RTV_DIMENSION_TEXTURE2D, "TEXTURE2D"},
    {D3D11_RTV_DIMENSION_TEXTURE2DMS, "TEXTURE2DMS"},
};
constexpr Name kDsvDimensions[] = {
    {D3D11_DSV_DIMENSION_TEXTURE2D, "TEXTURE2D"},
    {D3D11_DSV_DIMENSION_TEXTURE2DMS, "TEXTURE2DMS"},
};

constexpr Name kBlends[] = {
    {D3D11_BLEND_ZERO, "ZERO"},
    {D3D11_BLEND_ONE, "ONE"},
    {D3D11_BLEND_SRC_ALPHA, "SRC_ALPHA"},
    {D3D11_BLEND_INV_SRC_ALPHA, "INV_SRC_ALPHA"},
    {D3D11_BLEND_DEST_COLOR, "DEST_COLOR"},
    {D3D11_BLEND_INV_DEST_COLOR, "INV_DEST_COLOR"},
};
constexpr Name kBlendOps[] = {{D3D11_BLEND_OP_ADD, "ADD"}};

constexpr Name kFills[] = {{D3D11_FILL_SOLID, "SOLID"}, {D3D11_FILL_WIREFRAME, "WIREFRAME"}};
constexpr Name kCulls[] = {
    {D3D11_CULL_NONE, "NONE"}, {D3D11_CULL_FRONT, "FRONT"}, {D3D11_CULL_BACK, "BACK"}};

constexpr Name kTopologies[] = {
    {D3D11_PRIMITIVE_TOPOLOGY_TRIANGLELIST, "TRIANGLELIST"},
    {D3D11_PRIMITIVE_TOPOLOGY_TRIANGLESTRIP, "TRIANGLESTRIP"},
    {D3D11_PRIMITIVE_TOPOLOGY_LINELIST, "LINELIST"},
    {D3D11_PRIMITIVE_TOPOLOGY_LINESTRIP, "LINESTRIP"},
    {D3D11_PRIMITIVE_TOPOLOGY_POINTLIST, "POINTLIST"},
};

constexpr Name kMaps[] = {
    {D3D11_MAP_READ, "READ"},
    {D3D11_MAP_WRITE, "WRITE"},
    {D3D11_MAP_READ_WRITE, "READ_WRITE"},
    {D3D11_MAP_WRITE_DISCARD, "WRITE_DISCARD"},
    {D3D11_MAP_WRITE_NO_OVERWRITE, "WRITE_NO_OVERWRITE"},
};

/// A value of another size in the description than in the table still prints its number.
template <size_t N, class Value>
std::string nameIn(const Name (&table)[N], Value value) {
    for (const Name& row : table) {
        if (row.value == static_cast<unsigned long>(value)) {
            return row.text;
        }
    }
    return std::to_string(static_cast<unsigned long>(value));
}

template <size_t N>
std::string flagsIn(const Name (&table)[N], unsigned long flags) {
    std::string text;
    for (const Name& row : table) {
        if ((flags & row.value) != 0) {
            text += (text.empty() ? "" : "|") + std::string(row.text);
            flags &= ~row.value;
        }
    }
    if (flags != 0 || text.empty()) {
        text += (text.empty() ? "" : "|") + std::to_string(flags);
    }
    return text;
}

template <class Value>
std::string number(Value value) {
    return std::to_string(static_cast<long long>(value));
}

/// "name=value", led by a blank.
std::string field(const char* name, const std::string& value) {
    return std::string(" ") + name + "=" + value;
}

std::string faceText(const D3D11_DEPTH_STENCILOP_DESC& face) {
    return nameIn(kComparisons, face.StencilFunc) + "/" + number(face.StencilFailOp) + "/" +
           number(face.StencilDepthFailOp) + "/" + number(face.StencilPassOp);
}

}  // namespace

std::string formatName(DXGI_FORMAT format) {
    return nameIn(kFormats, format);
}

std::string hexCode(HRESULT code) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08lx", static_cast<unsigned long>(code));
    return text;
}

std::string floatText(float value) {
    char text[48];
    std::snprintf(text, sizeof text, "%.9g", static_cast<double>(value));
    return text;
}

std::string topologyName(D3D11_PRIMITIVE_TOPOLOGY topology) {
    return nameIn(kTopologies, topology);
}

std::string mapName(D3D11_MAP kind) {
    return nameIn(kMaps, kind);
}

UINT pixelBytes(DXGI_FORMAT format) {
    switch (format) {
        case DXGI_FORMAT_R8_UNORM:
            return 1;
        case DXGI_FORMAT_R32G32B32A32_FLOAT:
            return 16;
        default:
            return 4;
    }
}

std::string describe(const D3D11_BUFFER_DESC& desc) {
    return number(desc.ByteWidth) + " bytes" + field("usage", nameIn(kUsages, desc.Usage)) +
           field("bind", flagsIn(kBinds, desc.BindFlags)) +
           field("cpu", flagsIn(kCpuAccess, desc.CPUAccessFlags)) +
           field("misc", number(desc.MiscFlags)) +
           field("stride", number(desc.StructureByteStride));
}

std::string describe(const D3D11_TEXTURE2D_DESC& desc) {
    return number(desc.Width) + "x" + number(desc.Height) + field("mips", number(desc.MipLevels)) +
           field("array", number(desc.ArraySize)) + field("format", formatName(desc.Format)) +
           field("samples", number(desc.SampleDesc.Count) + "/" + number(desc.SampleDesc.Quality)) +
           field("usage", nameIn(kUsages, desc.Usage)) +
           field("bind", flagsIn(kBinds, desc.BindFlags)) +
           field("cpu", flagsIn(kCpuAccess, desc.CPUAccessFlags)) +
           field("misc", number(desc.MiscFlags));
}

std::string describe(const D3D11_SHADER_RESOURCE_VIEW_DESC& desc) {
    std::string text = formatName(desc.Format) + " " + nameIn(kSrvDimensions, desc.ViewDimension);
    if (desc.ViewDimension == D3D11_SRV_DIMENSION_TEXTURE2D) {
        text += field("mip", number(desc.Texture2D.MostDetailedMip)) +
                field("levels", number(desc.Texture2D.MipLevels));
    }
    return text;
}

std::string describe(const D3D11_RENDER_TARGET_VIEW_DESC& desc) {
    std::string text = formatName(desc.Format) + " " + nameIn(kRtvDimensions, desc.ViewDimension);
    if (desc.ViewDimension == D3D11_RTV_DIMENSION_TEXTURE2D) {
        text += field("mip", number(desc.Texture2D.MipSlice));
    }
    return text;
}

std::string describe(const D3D11_DEPTH_STENCIL_VIEW_DESC& desc) {
    std::string text = formatName(desc.Format) + " " + nameIn(kDsvDimensions, desc.ViewDimension) +
                       field("flags", number(desc.Flags));
    if (desc.ViewDimension == D3D11_DSV_DIMENSION_TEXTURE2D) {
        text += field("mip", number(desc.Texture2D.MipSlice));
    }
    return text;
}

std::string describe(const D3D11_SAMPLER_DESC& desc) {
    std::string border;
    for (float value : desc.BorderColor) {
        border += (border.empty() ? "" : ",") + floatText(value);
    }
    return nameIn(kFilters, desc.Filter) +
           field("address", nameIn(kAddresses, desc.AddressU) + "/" +
                                nameIn(kAddresses, desc.AddressV) + "/" +
                                nameIn(kAddresses, desc.AddressW)) +
           field("bias", floatText(desc.MipLODBias)) +
           field("anisotropy", number(desc.MaxAnisotropy)) +
           field("compare", nameIn(kComparisons, desc.ComparisonFunc)) + field("border", border) +
           field("lod", floatText(desc.MinLOD) + ".." + floatText(desc.MaxLOD));
}

std::string describe(const D3D11_DEPTH_STENCIL_DESC& desc) {
    return "depth=" + number(desc.DepthEnable) +
           field("write", number(static_cast<int>(desc.DepthWriteMask))) +
           field("func", nameIn(kComparisons, desc.DepthFunc)) +
           field("stencil", number(desc.StencilEnable)) +
           field("masks", number(desc.StencilReadMask) + "/" + number(desc.StencilWriteMask)) +
           field("front", faceText(desc.FrontFace)) + field("back", faceText(desc.BackFace));
}

std::string describe(const D3D11_RASTERIZER_DESC& desc) {
    return "fill=" + nameIn(kFills, desc.FillMode) + field("cull", nameIn(kCulls, desc.CullMode)) +
           field("ccw", number(desc.FrontCounterClockwise)) +
           field("bias", number(desc.DepthBias) + "/" + floatText(desc.DepthBiasClamp) + "/" +
                             floatText(desc.SlopeScaledDepthBias)) +
           field("clip", number(desc.DepthClipEnable)) +
           field("scissor", number(desc.ScissorEnable)) +
           field("multisample", number(desc.MultisampleEnable)) +
           field("lines", number(desc.AntialiasedLineEnable));
}

std::string describe(const D3D11_BLEND_DESC& desc) {
    const D3D11_RENDER_TARGET_BLEND_DESC& first = desc.RenderTarget[0];
    return "coverage=" + number(desc.AlphaToCoverageEnable) +
           field("independent", number(desc.IndependentBlendEnable)) +
           field("enable", number(first.BlendEnable)) +
           field("color", nameIn(kBlends, first.SrcBlend) + "," + nameIn(kBlends, first.DestBlend) +
                              "," + nameIn(kBlendOps, first.BlendOp)) +
           field("alpha", nameIn(kBlends, first.SrcBlendAlpha) + "," +
                              nameIn(kBlends, first.DestBlendAlpha) + "," +
                              nameIn(kBlendOps, first.BlendOpAlpha)) +
           field("mask", number(first.RenderTargetWriteMask));
}

std::string describe(const D3D11_INPUT_ELEMENT_DESC& desc) {
    return std::string(desc.SemanticName == nullptr ? "?" : desc.SemanticName) + "/" +
           number(desc.SemanticIndex) + ":" + formatName(desc.Format) + "@" +
           number(desc.InputSlot) + "+" + number(desc.AlignedByteOffset) + " class " +
           number(static_cast<int>(desc.InputSlotClass)) + "/" + number(desc.InstanceDataStepRate);
}

std::string describe(const D3D11_VIEWPORT& viewport) {
    return floatText(viewport.TopLeftX) + "," + floatText(viewport.TopLeftY) + " " +
           floatText(viewport.Width) + "x" + floatText(viewport.Height) + " " +
           floatText(viewport.MinDepth) + ".." + floatText(viewport.MaxDepth);
}

}  // namespace fake
