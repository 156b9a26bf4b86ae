#pragma once

#include <functional>
#include <vector>

#include "fake/resources.h"
#include "fake/unused_context.h"

namespace fake {

/// What moves bytes when a command is carried out.
using Commands = std::vector<std::function<void()>>;

/// A recorded list: its commands are carried out when the immediate context executes it.
class CommandList : public Child<ID3D11CommandList> {
public:
    CommandList(World& world, Commands commands)
        : Child(world, Kind::command_list), commands_(std::move(commands)) {}
    UINT STDMETHODCALLTYPE GetContextFlags() override { return 0; }
    void die() override { commands_.clear(); }
    const Commands& commands() const { return commands_; }

private:
    Commands commands_;
};

/// The immediate context or a deferred one. Every call is recorded in full. On a deferred context
/// bytes move only when its list is executed.
class Context : public UnusedContext {
public:
    Context(World& world, Kind kind) : UnusedContext(world, kind) {}

    // Binding: context_bind.cpp.
    void STDMETHODCALLTYPE VSSetConstantBuffers(UINT, UINT, ID3D11Buffer* const*) override;
    void STDMETHODCALLTYPE PSSetConstantBuffers(UINT, UINT, ID3D11Buffer* const*) override;
    void STDMETHODCALLTYPE PSSetShaderResources(UINT, UINT,
                                                ID3D11ShaderResourceView* const*) override;
    void STDMETHODCALLTYPE VSSetShaderResources(UINT, UINT,
                                                ID3D11ShaderResourceView* const*) override;
    void STDMETHODCALLTYPE PSSetSamplers(UINT, UINT, ID3D11SamplerState* const*) override;
    void STDMETHODCALLTYPE VSSetSamplers(UINT, UINT, ID3D11SamplerState* const*) override;
    void STDMETHODCALLTYPE PSSetShader(ID3D11PixelShader*, ID3D11ClassInstance* const*,
                                       UINT) override;
    void STDMETHODCALLTYPE VSSetShader(ID3D11VertexShader*, ID3D11ClassInstance* const*,
                                       UINT) override;
    void STDMETHODCALLTYPE IASetInputLayout(ID3D11InputLayout*) override;
    void STDMETHODCALLTYPE IASetVertexBuffers(UINT, UINT, ID3D11Buffer* const*, const UINT*,
                                              const UINT*) override;
    void STDMETHODCALLTYPE IASetIndexBuffer(ID3D11Buffer*, DXGI_FORMAT, UINT) override;
    void STDMETHODCALLTYPE IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY) override;
    void STDMETHODCALLTYPE OMSetRenderTargets(UINT, ID3D11RenderTargetView* const*,
                                              ID3D11DepthStencilView*) override;
    void STDMETHODCALLTYPE OMSetBlendState(ID3D11BlendState*, const FLOAT*, UINT) override;
    void STDMETHODCALLTYPE OMSetDepthStencilState(ID3D11DepthStencilState*, UINT) override;
    void STDMETHODCALLTYPE RSSetState(ID3D11RasterizerState*) override;
    void STDMETHODCALLTYPE RSSetViewports(UINT, const D3D11_VIEWPORT*) override;

    // Work: context_work.cpp.
    void STDMETHODCALLTYPE Draw(UINT, UINT) override;
    void STDMETHODCALLTYPE DrawIndexed(UINT, UINT, INT) override;
    HRESULT STDMETHODCALLTYPE Map(ID3D11Resource*, UINT, D3D11_MAP, UINT,
                                  D3D11_MAPPED_SUBRESOURCE*) override;
    void STDMETHODCALLTYPE Unmap(ID3D11Resource*, UINT) override;
    void STDMETHODCALLTYPE CopyResource(ID3D11Resource*, ID3D11Resource*) override;
    void STDMETHODCALLTYPE UpdateSubresource(ID3D11Resource*, UINT, const D3D11_BOX*, const void*,
                                             UINT, UINT) override;
    void STDMETHODCALLTYPE ResolveSubresource(ID3D11Resource*, UINT, ID3D11Resource*, UINT,
                                              DXGI_FORMAT) override;
    void STDMETHODCALLTYPE ClearRenderTargetView(ID3D11RenderTargetView*, const FLOAT*) override;
    void STDMETHODCALLTYPE ClearDepthStencilView(ID3D11DepthStencilView*, UINT, FLOAT,
                                                 UINT8) override;
    HRESULT STDMETHODCALLTYPE FinishCommandList(BOOL, ID3D11CommandList**) override;
    void STDMETHODCALLTYPE ExecuteCommandList(ID3D11CommandList*, BOOL) override;
    void STDMETHODCALLTYPE ClearState() override;
    void STDMETHODCALLTYPE Flush() override;
    D3D11_DEVICE_CONTEXT_TYPE STDMETHODCALLTYPE GetType() override;

    void die() override { commands_.clear(); }

private:
    bool quiet() const { return !world().recording(); }
    void log(const char* method, std::string arguments);
    void carryOut(std::function<void()> command);
    std::string arrayText(UINT count, const void* const* pointers) const;
    template <class Interface>
    void logArray(const char* method, UINT start, UINT count, Interface* const* pointers);
    HRESULT quietMap(ID3D11Resource* resource, D3D11_MAPPED_SUBRESOURCE* out);
    void fillMapped(ID3D11Resource* resource, D3D11_MAP kind, D3D11_MAPPED_SUBRESOURCE* out);

    Commands commands_;  // deferred context: what the next list will carry out
};

}  // namespace fake
