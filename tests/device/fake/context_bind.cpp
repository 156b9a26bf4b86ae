#include "fake/context.h"
#include "fake/describe.h"

namespace fake {
namespace {

std::string numberText(UINT value) {
    return std::to_string(value);
}

}  // namespace

void Context::log(const char* method, std::string arguments) {
    world().record({name(), method, std::move(arguments), "", {}, nullptr});
}

// "[rtv#1]"; a null array with a count is misuse and would crash on a real device.
std::string Context::arrayText(UINT count, const void* const* pointers) const {
    if (pointers == nullptr && count > 0) {
        world().misuse("null array of " + numberText(count));
        return "null array";
    }
    std::string text = "[";
    for (UINT i = 0; i < count; ++i) {
        text += (i == 0 ? "" : ", ") + world().nameOf(pointers[i]);
    }
    return text + "]";
}

template <class Interface>
void Context::logArray(const char* method, UINT start, UINT count, Interface* const* pointers) {
    if (quiet()) {
        return;
    }
    // Every interface of the fake device is singly derived: the pointer is the object's.
    log(method, numberText(start) + ", " +
                    arrayText(count, reinterpret_cast<const void* const*>(pointers)));
}

void Context::VSSetConstantBuffers(UINT start, UINT count, ID3D11Buffer* const* buffers) {
    logArray("VSSetConstantBuffers", start, count, buffers);
}

void Context::PSSetConstantBuffers(UINT start, UINT count, ID3D11Buffer* const* buffers) {
    logArray("PSSetConstantBuffers", start, count, buffers);
}

void Context::PSSetShaderResources(UINT start, UINT count, ID3D11ShaderResourceView* const* views) {
    logArray("PSSetShaderResources", start, count, views);
}

void Context::VSSetShaderResources(UINT start, UINT count, ID3D11ShaderResourceView* const* views) {
    logArray("VSSetShaderResources", start, count, views);
}

void Context::PSSetSamplers(UINT start, UINT count, ID3D11SamplerState* const* samplers) {
    logArray("PSSetSamplers", start, count, samplers);
}

void Context::VSSetSamplers(UINT start, UINT count, ID3D11SamplerState* const* samplers) {
    logArray("VSSetSamplers", start, count, samplers);
}

void Context::PSSetShader(ID3D11PixelShader* shader, ID3D11ClassInstance* const*, UINT count) {
    if (!quiet()) {
        log("PSSetShader", world().nameOf(shader) + ", " + numberText(count));
    }
}

void Context::VSSetShader(ID3D11VertexShader* shader, ID3D11ClassInstance* const*, UINT count) {
    if (!quiet()) {
        log("VSSetShader", world().nameOf(shader) + ", " + numberText(count));
    }
}

void Context::IASetInputLayout(ID3D11InputLayout* layout) {
    if (!quiet()) {
        log("IASetInputLayout", world().nameOf(layout));
    }
}

void Context::IASetVertexBuffers(UINT start, UINT count, ID3D11Buffer* const* buffers,
                                 const UINT* strides, const UINT* offsets) {
    if (quiet()) {
        return;
    }
    std::string text =
        numberText(start) + ", " + arrayText(count, reinterpret_cast<const void* const*>(buffers));
    for (UINT i = 0; i < count; ++i) {
        text += " stride " + numberText(strides[i]) + " offset " + numberText(offsets[i]);
    }
    log("IASetVertexBuffers", std::move(text));
}

void Context::IASetIndexBuffer(ID3D11Buffer* buffer, DXGI_FORMAT format, UINT offset) {
    if (!quiet()) {
        log("IASetIndexBuffer",
            world().nameOf(buffer) + ", " + formatName(format) + ", " + numberText(offset));
    }
}

void Context::IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY topology) {
    if (!quiet()) {
        log("IASetPrimitiveTopology", topologyName(topology));
    }
}

void Context::OMSetRenderTargets(UINT count, ID3D11RenderTargetView* const* targets,
                                 ID3D11DepthStencilView* depth) {
    if (!quiet()) {
        log("OMSetRenderTargets", arrayText(count, reinterpret_cast<const void* const*>(targets)) +
                                      ", " + world().nameOf(depth));
    }
}

void Context::OMSetBlendState(ID3D11BlendState* state, const FLOAT* factor, UINT mask) {
    if (quiet()) {
        return;
    }
    std::string text = world().nameOf(state) + ", ";
    if (factor == nullptr) {
        text += "null";
    } else {
        for (int i = 0; i < 4; ++i) {
            text += (i == 0 ? "" : "/") + floatText(factor[i]);
        }
    }
    log("OMSetBlendState", text + ", " + hexCode(static_cast<HRESULT>(mask)));
}

void Context::OMSetDepthStencilState(ID3D11DepthStencilState* state, UINT reference) {
    if (!quiet()) {
        log("OMSetDepthStencilState", world().nameOf(state) + ", " + numberText(reference));
    }
}

void Context::RSSetState(ID3D11RasterizerState* state) {
    if (!quiet()) {
        log("RSSetState", world().nameOf(state));
    }
}

void Context::RSSetViewports(UINT count, const D3D11_VIEWPORT* viewports) {
    if (quiet()) {
        return;
    }
    std::string text;
    for (UINT i = 0; i < count; ++i) {
        text += (i == 0 ? "" : "; ") + describe(viewports[i]);
    }
    log("RSSetViewports", std::move(text));
}

}  // namespace fake
