#include "fake/device.h"

#include <memory>

#include "fake/context.h"
#include "fake/describe.h"
#include "fake/dxgi.h"
#include "fake/resources.h"

namespace fake {
namespace {

constexpr UINT kLargestSide = 16384;

bool validTexture(const D3D11_TEXTURE2D_DESC* desc) {
    return desc != nullptr && desc->Width > 0 && desc->Height > 0 && desc->Width <= kLargestSide &&
           desc->Height <= kLargestSide;
}

bool validBuffer(const D3D11_BUFFER_DESC* desc) {
    if (desc == nullptr || desc->ByteWidth == 0) {
        return false;
    }
    return (desc->BindFlags & D3D11_BIND_CONSTANT_BUFFER) == 0 || desc->ByteWidth % 16 == 0;
}

bool validElements(const D3D11_INPUT_ELEMENT_DESC* elements, UINT count) {
    for (UINT i = 0; i < count; ++i) {
        if (elements[i].Format == DXGI_FORMAT_UNKNOWN || elements[i].SemanticName == nullptr) {
            return false;
        }
    }
    return count == 0 || elements != nullptr;
}

std::string elementList(const D3D11_INPUT_ELEMENT_DESC* elements, UINT count) {
    std::string text;
    for (UINT i = 0; i < count; ++i) {
        text += (i == 0 ? "" : ", ") + describe(elements[i]);
    }
    return text;
}

}  // namespace

// One creation from beginning to end: the fault that was asked for, the checks that a real device
// makes, the object, the line in the log. On failure the out pointer keeps its value, so that a
// caller that trusts it is found out.
template <class Double, class Interface, class Text, class... Args>
Double* Device::create(const char* method, bool valid, const Text& text, Interface** out,
                       HRESULT& code, Args&&... args) {
    if (!world().recording()) {
        code = world().enter(method);
        if (FAILED(code)) {
            return nullptr;
        }
        return publish(world(), std::make_unique<Double>(world(), std::forward<Args>(args)...),
                       out);
    }
    const std::lock_guard<std::recursive_mutex> lock(world().mutex());
    code = world().enter(method);
    if (SUCCEEDED(code) && (!valid || out == nullptr)) {
        code = E_INVALIDARG;
    }
    Double* made = nullptr;
    Call call{name(), method, text(), hexCode(code), {}, nullptr};
    if (SUCCEEDED(code)) {
        made =
            publish(world(), std::make_unique<Double>(world(), std::forward<Args>(args)...), out);
        call.outcome = made->name();
    }
    world().record(std::move(call));
    return made;
}

HRESULT Device::QueryInterface(REFIID id, void** out) {
    if (id != __uuidof(IDXGIDevice)) {
        return UnusedDevice::QueryInterface(id, out);
    }
    HRESULT code = S_OK;
    create<DxgiDevice>(
        "QueryInterface", true, [] { return std::string("IDXGIDevice"); },
        reinterpret_cast<IDXGIDevice**>(out), code);
    return code;
}

HRESULT Device::CreateBuffer(const D3D11_BUFFER_DESC* desc, const D3D11_SUBRESOURCE_DATA* data,
                             ID3D11Buffer** out) {
    HRESULT code = S_OK;
    const auto text = [desc, data] {
        return (desc == nullptr ? "null" : describe(*desc)) + (data != nullptr ? " data" : "");
    };
    Buffer* made = create<Buffer>("CreateBuffer", validBuffer(desc), text, out, code, *desc);
    if (made != nullptr && data != nullptr && data->pSysMem != nullptr && world().recording()) {
        made->store().fill(data->pSysMem, 0);
    }
    return code;
}

HRESULT Device::CreateTexture2D(const D3D11_TEXTURE2D_DESC* desc,
                                const D3D11_SUBRESOURCE_DATA* data, ID3D11Texture2D** out) {
    HRESULT code = S_OK;
    const auto text = [desc, data] {
        return (desc == nullptr ? "null" : describe(*desc)) + (data != nullptr ? " data" : "");
    };
    create<Texture>("CreateTexture2D", validTexture(desc), text, out, code, *desc);
    return code;
}

template <class Double, class Interface, class Desc>
HRESULT Device::createView(const char* method, Kind kind, UINT bind, ID3D11Resource* resource,
                           const Desc* desc, Interface** out) {
    HRESULT code = S_OK;
    Texture* texture = asTexture(resource);
    const bool valid =
        texture != nullptr && desc != nullptr && (texture->desc().BindFlags & bind) != 0;
    const auto text = [this, resource, desc] {
        return world().nameOf(resource) + ", " + (desc == nullptr ? "null" : describe(*desc));
    };
    create<Double>(method, valid, text, out, code, kind, desc == nullptr ? Desc{} : *desc, texture);
    return code;
}

HRESULT Device::CreateShaderResourceView(ID3D11Resource* resource,
                                         const D3D11_SHADER_RESOURCE_VIEW_DESC* desc,
                                         ID3D11ShaderResourceView** out) {
    return createView<ShaderView>("CreateShaderResourceView", Kind::srv, D3D11_BIND_SHADER_RESOURCE,
                                  resource, desc, out);
}

HRESULT Device::CreateRenderTargetView(ID3D11Resource* resource,
                                       const D3D11_RENDER_TARGET_VIEW_DESC* desc,
                                       ID3D11RenderTargetView** out) {
    return createView<TargetView>("CreateRenderTargetView", Kind::rtv, D3D11_BIND_RENDER_TARGET,
                                  resource, desc, out);
}

HRESULT Device::CreateDepthStencilView(ID3D11Resource* resource,
                                       const D3D11_DEPTH_STENCIL_VIEW_DESC* desc,
                                       ID3D11DepthStencilView** out) {
    return createView<DepthView>("CreateDepthStencilView", Kind::dsv, D3D11_BIND_DEPTH_STENCIL,
                                 resource, desc, out);
}

HRESULT Device::CreateInputLayout(const D3D11_INPUT_ELEMENT_DESC* elements, UINT count,
                                  const void* code_bytes, SIZE_T, ID3D11InputLayout** out) {
    HRESULT code = S_OK;
    create<Plain<ID3D11InputLayout>>(
        "CreateInputLayout", code_bytes != nullptr && validElements(elements, count),
        [elements, count] { return elementList(elements, count); }, out, code, Kind::layout);
    return code;
}

template <class Interface>
HRESULT Device::createShader(const char* method, Kind kind, const void* code_bytes, SIZE_T length,
                             const ID3D11ClassLinkage* linkage, Interface** out) {
    HRESULT code = S_OK;
    create<Plain<Interface>>(
        method, code_bytes != nullptr && length > 0,
        [linkage] { return std::string(linkage == nullptr ? "code" : "code, linkage"); }, out, code,
        kind);
    return code;
}

HRESULT Device::CreateVertexShader(const void* code, SIZE_T length, ID3D11ClassLinkage* linkage,
                                   ID3D11VertexShader** out) {
    return createShader("CreateVertexShader", Kind::vertex_shader, code, length, linkage, out);
}

HRESULT Device::CreatePixelShader(const void* code, SIZE_T length, ID3D11ClassLinkage* linkage,
                                  ID3D11PixelShader** out) {
    return createShader("CreatePixelShader", Kind::pixel_shader, code, length, linkage, out);
}

template <class Interface, class Desc>
HRESULT Device::createState(const char* method, Kind kind, const Desc* desc, Interface** out) {
    HRESULT code = S_OK;
    create<State<Interface, Desc>>(
        method, desc != nullptr, [desc] { return desc == nullptr ? "null" : describe(*desc); }, out,
        code, kind, desc == nullptr ? Desc{} : *desc);
    return code;
}

HRESULT Device::CreateBlendState(const D3D11_BLEND_DESC* desc, ID3D11BlendState** out) {
    return createState("CreateBlendState", Kind::blend_state, desc, out);
}

HRESULT Device::CreateDepthStencilState(const D3D11_DEPTH_STENCIL_DESC* desc,
                                        ID3D11DepthStencilState** out) {
    return createState("CreateDepthStencilState", Kind::depth_state, desc, out);
}

HRESULT Device::CreateRasterizerState(const D3D11_RASTERIZER_DESC* desc,
                                      ID3D11RasterizerState** out) {
    return createState("CreateRasterizerState", Kind::raster_state, desc, out);
}

HRESULT Device::CreateSamplerState(const D3D11_SAMPLER_DESC* desc, ID3D11SamplerState** out) {
    return createState("CreateSamplerState", Kind::sampler, desc, out);
}

HRESULT Device::CreateDeferredContext(UINT flags, ID3D11DeviceContext** out) {
    HRESULT code = S_OK;
    create<Context>(
        "CreateDeferredContext", true, [flags] { return std::to_string(flags); }, out, code,
        Kind::deferred);
    return code;
}

HRESULT Device::GetDeviceRemovedReason() {
    const HRESULT reason = world().removedReason();
    if (!world().recording()) {
        return reason;
    }
    const std::lock_guard<std::recursive_mutex> lock(world().mutex());
    const HRESULT told = world().enter("GetDeviceRemovedReason");
    const HRESULT code = FAILED(told) ? told : reason;
    world().record(
        {name(), "GetDeviceRemovedReason", "", FAILED(code) ? hexCode(code) : "", {}, nullptr});
    return code;
}

void Device::GetImmediateContext(ID3D11DeviceContext** out) {
    *out = world().immediate();
    (*out)->AddRef();
    if (world().recording()) {
        world().record({name(), "GetImmediateContext", "", "immediate", {}, nullptr});
    }
}

}  // namespace fake
