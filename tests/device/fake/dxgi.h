#pragma once

#include <dxgi.h>

#include "fake/object.h"

namespace fake {

/// IDXGIObject: no private data, no parent.
template <class Interface>
class DxgiObject : public Unknown<Interface> {
public:
    using Unknown<Interface>::Unknown;
    HRESULT STDMETHODCALLTYPE SetPrivateData(REFGUID, UINT, const void*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetPrivateDataInterface(REFGUID, const IUnknown*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetPrivateData(REFGUID, UINT*, void*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetParent(REFIID, void**) override { return E_NOTIMPL; }
};

/// What every adapter of the fake device says of itself; the name has a letter outside ASCII.
DXGI_ADAPTER_DESC adapterDescription();

class Adapter : public DxgiObject<IDXGIAdapter> {
public:
    explicit Adapter(World& world) : DxgiObject(world, Kind::adapter) {}
    HRESULT STDMETHODCALLTYPE EnumOutputs(UINT, IDXGIOutput**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetDesc(DXGI_ADAPTER_DESC* out) override;
    HRESULT STDMETHODCALLTYPE CheckInterfaceSupport(REFGUID, LARGE_INTEGER*) override {
        return E_NOTIMPL;
    }
};

class DxgiDevice : public DxgiObject<IDXGIDevice> {
public:
    explicit DxgiDevice(World& world) : DxgiObject(world, Kind::dxgi_device) {}
    HRESULT STDMETHODCALLTYPE GetAdapter(IDXGIAdapter** out) override;
    HRESULT STDMETHODCALLTYPE CreateSurface(const DXGI_SURFACE_DESC*, UINT, DXGI_USAGE,
                                            const DXGI_SHARED_RESOURCE*, IDXGISurface**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE QueryResourceResidency(IUnknown* const*, DXGI_RESIDENCY*,
                                                     UINT) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetGPUThreadPriority(INT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetGPUThreadPriority(INT*) override { return E_NOTIMPL; }
};

}  // namespace fake
