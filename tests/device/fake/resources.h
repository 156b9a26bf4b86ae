#pragma once

#include <d3d11.h>

#include <cstdint>
#include <vector>

#include "fake/object.h"

namespace fake {

/// The bytes of a resource, made at the first use; rows lie back to back.
class Store {
public:
    Store(size_t row_bytes, size_t rows) : row_bytes_(row_bytes), rows_(rows) {}

    size_t rowBytes() const { return row_bytes_; }
    size_t rows() const { return rows_; }
    std::vector<uint8_t>& bytes();
    void drop() { std::vector<uint8_t>().swap(bytes_); }

    /// Takes rows that lie `pitch` bytes apart.
    void fill(const void* source, size_t pitch);

    /// What Map hands out, rows `pitch` apart: the present bytes, or rubbish to be overwritten.
    uint8_t* beginMap(size_t pitch, bool keep);
    /// Ends the mapping and gives what the caller left there.
    std::vector<uint8_t> endMap();
    bool mapped() const { return !window_.empty(); }

private:
    size_t row_bytes_;
    size_t rows_;
    std::vector<uint8_t> bytes_;
    std::vector<uint8_t> window_;  // what Map handed out; empty while not mapped
};

/// What buffers and textures share: a store and ID3D11Resource.
template <class Interface>
class Resource : public Child<Interface> {
public:
    Resource(World& world, Kind kind, size_t row_bytes, size_t rows)
        : Child<Interface>(world, kind), store_(row_bytes, rows) {}

    bool answers(REFIID id) const override {
        return Child<Interface>::answers(id) || id == __uuidof(ID3D11Resource);
    }
    void STDMETHODCALLTYPE SetEvictionPriority(UINT) override {}
    UINT STDMETHODCALLTYPE GetEvictionPriority() override { return 0; }
    void die() override { store_.drop(); }
    Store& store() { return store_; }

private:
    Store store_;
};

class Buffer : public Resource<ID3D11Buffer> {
public:
    Buffer(World& world, const D3D11_BUFFER_DESC& desc)
        : Resource(world, Kind::buffer, desc.ByteWidth, 1), desc_(desc) {}
    void STDMETHODCALLTYPE GetType(D3D11_RESOURCE_DIMENSION* out) override {
        *out = D3D11_RESOURCE_DIMENSION_BUFFER;
    }
    void STDMETHODCALLTYPE GetDesc(D3D11_BUFFER_DESC* out) override { *out = desc_; }
    const D3D11_BUFFER_DESC& desc() const { return desc_; }

private:
    D3D11_BUFFER_DESC desc_;
};

class Texture : public Resource<ID3D11Texture2D> {
public:
    Texture(World& world, const D3D11_TEXTURE2D_DESC& desc);
    void STDMETHODCALLTYPE GetType(D3D11_RESOURCE_DIMENSION* out) override {
        *out = D3D11_RESOURCE_DIMENSION_TEXTURE2D;
    }
    void STDMETHODCALLTYPE GetDesc(D3D11_TEXTURE2D_DESC* out) override { *out = desc_; }
    const D3D11_TEXTURE2D_DESC& desc() const { return desc_; }

private:
    D3D11_TEXTURE2D_DESC desc_;
};

/// The double behind a resource pointer, whichever it is; null for null.
Texture* asTexture(ID3D11Resource* resource);
Buffer* asBuffer(ID3D11Resource* resource);
Store* storeOf(ID3D11Resource* resource);

/// A view keeps its resource alive.
template <class Interface, class Desc>
class View : public Child<Interface> {
public:
    View(World& world, Kind kind, const Desc& desc, Texture* texture)
        : Child<Interface>(world, kind), desc_(desc), texture_(texture) {}

    bool answers(REFIID id) const override {
        return Child<Interface>::answers(id) || id == __uuidof(ID3D11View);
    }
    void STDMETHODCALLTYPE GetResource(ID3D11Resource** out) override {
        *out = texture_.get();
        if (*out != nullptr) {
            (*out)->AddRef();
        }
    }
    void STDMETHODCALLTYPE GetDesc(Desc* out) override { *out = desc_; }
    void die() override { texture_ = Hold<Texture>(); }
    Texture* texture() const { return texture_.get(); }

private:
    Desc desc_;
    Hold<Texture> texture_;
};

using ShaderView = View<ID3D11ShaderResourceView, D3D11_SHADER_RESOURCE_VIEW_DESC>;
using TargetView = View<ID3D11RenderTargetView, D3D11_RENDER_TARGET_VIEW_DESC>;
using DepthView = View<ID3D11DepthStencilView, D3D11_DEPTH_STENCIL_VIEW_DESC>;

/// A state object: nothing but its description.
template <class Interface, class Desc>
class State : public Child<Interface> {
public:
    State(World& world, Kind kind, const Desc& desc) : Child<Interface>(world, kind), desc_(desc) {}
    void STDMETHODCALLTYPE GetDesc(Desc* out) override { *out = desc_; }

private:
    Desc desc_;
};

/// Shaders and layouts: nothing but their being there.
template <class Interface>
class Plain : public Child<Interface> {
public:
    using Child<Interface>::Child;
};

}  // namespace fake
