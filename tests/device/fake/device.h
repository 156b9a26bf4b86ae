#pragma once

#include <mutex>
#include <utility>

#include "fake/unused_device.h"

namespace fake {

/// The one device of a world.
class Device : public UnusedDevice {
public:
    explicit Device(World& world) : UnusedDevice(world, Kind::device) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override;

    HRESULT STDMETHODCALLTYPE CreateBuffer(const D3D11_BUFFER_DESC* desc,
                                           const D3D11_SUBRESOURCE_DATA* data,
                                           ID3D11Buffer** out) override;
    HRESULT STDMETHODCALLTYPE CreateTexture2D(const D3D11_TEXTURE2D_DESC* desc,
                                              const D3D11_SUBRESOURCE_DATA* data,
                                              ID3D11Texture2D** out) override;
    HRESULT STDMETHODCALLTYPE CreateShaderResourceView(ID3D11Resource* resource,
                                                       const D3D11_SHADER_RESOURCE_VIEW_DESC* desc,
                                                       ID3D11ShaderResourceView** out) override;
    HRESULT STDMETHODCALLTYPE CreateRenderTargetView(ID3D11Resource* resource,
                                                     const D3D11_RENDER_TARGET_VIEW_DESC* desc,
                                                     ID3D11RenderTargetView** out) override;
    HRESULT STDMETHODCALLTYPE CreateDepthStencilView(ID3D11Resource* resource,
                                                     const D3D11_DEPTH_STENCIL_VIEW_DESC* desc,
                                                     ID3D11DepthStencilView** out) override;
    HRESULT STDMETHODCALLTYPE CreateInputLayout(const D3D11_INPUT_ELEMENT_DESC* elements,
                                                UINT count, const void* code, SIZE_T length,
                                                ID3D11InputLayout** out) override;
    HRESULT STDMETHODCALLTYPE CreateVertexShader(const void* code, SIZE_T length,
                                                 ID3D11ClassLinkage* linkage,
                                                 ID3D11VertexShader** out) override;
    HRESULT STDMETHODCALLTYPE CreatePixelShader(const void* code, SIZE_T length,
                                                ID3D11ClassLinkage* linkage,
                                                ID3D11PixelShader** out) override;
    HRESULT STDMETHODCALLTYPE CreateBlendState(const D3D11_BLEND_DESC* desc,
                                               ID3D11BlendState** out) override;
    HRESULT STDMETHODCALLTYPE CreateDepthStencilState(const D3D11_DEPTH_STENCIL_DESC* desc,
                                                      ID3D11DepthStencilState** out) override;
    HRESULT STDMETHODCALLTYPE CreateRasterizerState(const D3D11_RASTERIZER_DESC* desc,
                                                    ID3D11RasterizerState** out) override;
    HRESULT STDMETHODCALLTYPE CreateSamplerState(const D3D11_SAMPLER_DESC* desc,
                                                 ID3D11SamplerState** out) override;
    HRESULT STDMETHODCALLTYPE CreateDeferredContext(UINT flags, ID3D11DeviceContext** out) override;
    HRESULT STDMETHODCALLTYPE GetDeviceRemovedReason() override;
    void STDMETHODCALLTYPE GetImmediateContext(ID3D11DeviceContext** out) override;

private:
    template <class Double, class Interface, class Text, class... Args>
    Double* create(const char* method, bool valid, const Text& text, Interface** out, HRESULT& code,
                   Args&&... args);
    template <class Double, class Interface, class Desc>
    HRESULT createView(const char* method, Kind kind, UINT bind, ID3D11Resource* resource,
                       const Desc* desc, Interface** out);
    template <class Interface, class Desc>
    HRESULT createState(const char* method, Kind kind, const Desc* desc, Interface** out);
    template <class Interface>
    HRESULT createShader(const char* method, Kind kind, const void* code, SIZE_T length,
                         const ID3D11ClassLinkage* linkage, Interface** out);
};

}  // namespace fake
