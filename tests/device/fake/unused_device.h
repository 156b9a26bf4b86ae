#pragma once

#include "fake/object.h"

namespace fake {

/// The methods of the device that the library has no use for: a call is recorded as not served.
class UnusedDevice : public Unknown<ID3D11Device> {
public:
    using Unknown<ID3D11Device>::Unknown;

    HRESULT STDMETHODCALLTYPE CreateTexture1D(const D3D11_TEXTURE1D_DESC*,
                                              const D3D11_SUBRESOURCE_DATA*,
                                              ID3D11Texture1D**) override {
        unused("CreateTexture1D");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateTexture3D(const D3D11_TEXTURE3D_DESC*,
                                              const D3D11_SUBRESOURCE_DATA*,
                                              ID3D11Texture3D**) override {
        unused("CreateTexture3D");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateUnorderedAccessView(ID3D11Resource*,
                                                        const D3D11_UNORDERED_ACCESS_VIEW_DESC*,
                                                        ID3D11UnorderedAccessView**) override {
        unused("CreateUnorderedAccessView");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateGeometryShader(const void*, SIZE_T, ID3D11ClassLinkage*,
                                                   ID3D11GeometryShader**) override {
        unused("CreateGeometryShader");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateGeometryShaderWithStreamOutput(
        const void*, SIZE_T, const D3D11_SO_DECLARATION_ENTRY*, UINT, const UINT*, UINT, UINT,
        ID3D11ClassLinkage*, ID3D11GeometryShader**) override {
        unused("CreateGeometryShaderWithStreamOutput");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateHullShader(const void*, SIZE_T, ID3D11ClassLinkage*,
                                               ID3D11HullShader**) override {
        unused("CreateHullShader");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateDomainShader(const void*, SIZE_T, ID3D11ClassLinkage*,
                                                 ID3D11DomainShader**) override {
        unused("CreateDomainShader");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateComputeShader(const void*, SIZE_T, ID3D11ClassLinkage*,
                                                  ID3D11ComputeShader**) override {
        unused("CreateComputeShader");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateClassLinkage(ID3D11ClassLinkage**) override {
        unused("CreateClassLinkage");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateQuery(const D3D11_QUERY_DESC*, ID3D11Query**) override {
        unused("CreateQuery");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreatePredicate(const D3D11_QUERY_DESC*, ID3D11Predicate**) override {
        unused("CreatePredicate");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateCounter(const D3D11_COUNTER_DESC*, ID3D11Counter**) override {
        unused("CreateCounter");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE OpenSharedResource(HANDLE, REFIID, void**) override {
        unused("OpenSharedResource");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CheckFormatSupport(DXGI_FORMAT, UINT*) override {
        unused("CheckFormatSupport");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CheckMultisampleQualityLevels(DXGI_FORMAT, UINT, UINT*) override {
        unused("CheckMultisampleQualityLevels");
        return E_NOTIMPL;
    }
    void STDMETHODCALLTYPE CheckCounterInfo(D3D11_COUNTER_INFO*) override {
        unused("CheckCounterInfo");
    }
    HRESULT STDMETHODCALLTYPE CheckCounter(const D3D11_COUNTER_DESC*, D3D11_COUNTER_TYPE*, UINT*,
                                           LPSTR, UINT*, LPSTR, UINT*, LPSTR, UINT*) override {
        unused("CheckCounter");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CheckFeatureSupport(D3D11_FEATURE, void*, UINT) override {
        unused("CheckFeatureSupport");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetPrivateData(REFGUID, UINT*, void*) override {
        unused("GetPrivateData");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetPrivateData(REFGUID, UINT, const void*) override {
        unused("SetPrivateData");
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetPrivateDataInterface(REFGUID, const IUnknown*) override {
        unused("SetPrivateDataInterface");
        return E_NOTIMPL;
    }
    D3D_FEATURE_LEVEL STDMETHODCALLTYPE GetFeatureLevel() override {
        unused("GetFeatureLevel");
        return {};
    }
    UINT STDMETHODCALLTYPE GetCreationFlags() override {
        unused("GetCreationFlags");
        return {};
    }
    HRESULT STDMETHODCALLTYPE SetExceptionMode(UINT) override {
        unused("SetExceptionMode");
        return E_NOTIMPL;
    }
    UINT STDMETHODCALLTYPE GetExceptionMode() override {
        unused("GetExceptionMode");
        return {};
    }

private:
    void unused(const char* method) {
        world().record({name(), method, "", "not served", {}, nullptr});
    }
};

}  // namespace fake
