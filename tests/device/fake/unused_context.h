#pragma once

#include "fake/object.h"

namespace fake {

/// The methods of a context that the library has no use for: a call is recorded as not served.
class UnusedContext : public Child<ID3D11DeviceContext> {
public:
    using Child<ID3D11DeviceContext>::Child;

    void STDMETHODCALLTYPE DrawIndexedInstanced(UINT, UINT, UINT, INT, UINT) override {
        unused("DrawIndexedInstanced");
    }
    void STDMETHODCALLTYPE DrawInstanced(UINT, UINT, UINT, UINT) override {
        unused("DrawInstanced");
    }
    void STDMETHODCALLTYPE GSSetConstantBuffers(UINT, UINT, ID3D11Buffer* const*) override {
        unused("GSSetConstantBuffers");
    }
    void STDMETHODCALLTYPE GSSetShader(ID3D11GeometryShader*, ID3D11ClassInstance* const*,
                                       UINT) override {
        unused("GSSetShader");
    }
    void STDMETHODCALLTYPE Begin(ID3D11Asynchronous*) override { unused("Begin"); }
    void STDMETHODCALLTYPE End(ID3D11Asynchronous*) override { unused("End"); }
    HRESULT STDMETHODCALLTYPE GetData(ID3D11Asynchronous*, void*, UINT, UINT) override {
        unused("GetData");
        return E_NOTIMPL;
    }
    void STDMETHODCALLTYPE SetPredication(ID3D11Predicate*, BOOL) override {
        unused("SetPredication");
    }
    void STDMETHODCALLTYPE GSSetShaderResources(UINT, UINT,
                                                ID3D11ShaderResourceView* const*) override {
        unused("GSSetShaderResources");
    }
    void STDMETHODCALLTYPE GSSetSamplers(UINT, UINT, ID3D11SamplerState* const*) override {
        unused("GSSetSamplers");
    }
    void STDMETHODCALLTYPE OMSetRenderTargetsAndUnorderedAccessViews(
        UINT, ID3D11RenderTargetView* const*, ID3D11DepthStencilView*, UINT, UINT,
        ID3D11UnorderedAccessView* const*, const UINT*) override {
        unused("OMSetRenderTargetsAndUnorderedAccessViews");
    }
    void STDMETHODCALLTYPE SOSetTargets(UINT, ID3D11Buffer* const*, const UINT*) override {
        unused("SOSetTargets");
    }
    void STDMETHODCALLTYPE DrawAuto() override { unused("DrawAuto"); }
    void STDMETHODCALLTYPE DrawIndexedInstancedIndirect(ID3D11Buffer*, UINT) override {
        unused("DrawIndexedInstancedIndirect");
    }
    void STDMETHODCALLTYPE DrawInstancedIndirect(ID3D11Buffer*, UINT) override {
        unused("DrawInstancedIndirect");
    }
    void STDMETHODCALLTYPE Dispatch(UINT, UINT, UINT) override { unused("Dispatch"); }
    void STDMETHODCALLTYPE DispatchIndirect(ID3D11Buffer*, UINT) override {
        unused("DispatchIndirect");
    }
    void STDMETHODCALLTYPE RSSetScissorRects(UINT, const D3D11_RECT*) override {
        unused("RSSetScissorRects");
    }
    void STDMETHODCALLTYPE CopySubresourceRegion(ID3D11Resource*, UINT, UINT, UINT, UINT,
                                                 ID3D11Resource*, UINT, const D3D11_BOX*) override {
        unused("CopySubresourceRegion");
    }
    void STDMETHODCALLTYPE CopyStructureCount(ID3D11Buffer*, UINT,
                                              ID3D11UnorderedAccessView*) override {
        unused("CopyStructureCount");
    }
    void STDMETHODCALLTYPE ClearUnorderedAccessViewUint(ID3D11UnorderedAccessView*,
                                                        const UINT*) override {
        unused("ClearUnorderedAccessViewUint");
    }
    void STDMETHODCALLTYPE ClearUnorderedAccessViewFloat(ID3D11UnorderedAccessView*,
                                                         const FLOAT*) override {
        unused("ClearUnorderedAccessViewFloat");
    }
    void STDMETHODCALLTYPE GenerateMips(ID3D11ShaderResourceView*) override {
        unused("GenerateMips");
    }
    void STDMETHODCALLTYPE SetResourceMinLOD(ID3D11Resource*, FLOAT) override {
        unused("SetResourceMinLOD");
    }
    FLOAT STDMETHODCALLTYPE GetResourceMinLOD(ID3D11Resource*) override {
        unused("GetResourceMinLOD");
        return {};
    }
    void STDMETHODCALLTYPE HSSetShaderResources(UINT, UINT,
                                                ID3D11ShaderResourceView* const*) override {
        unused("HSSetShaderResources");
    }
    void STDMETHODCALLTYPE HSSetShader(ID3D11HullShader*, ID3D11ClassInstance* const*,
                                       UINT) override {
        unused("HSSetShader");
    }
    void STDMETHODCALLTYPE HSSetSamplers(UINT, UINT, ID3D11SamplerState* const*) override {
        unused("HSSetSamplers");
    }
    void STDMETHODCALLTYPE HSSetConstantBuffers(UINT, UINT, ID3D11Buffer* const*) override {
        unused("HSSetConstantBuffers");
    }
    void STDMETHODCALLTYPE DSSetShaderResources(UINT, UINT,
                                                ID3D11ShaderResourceView* const*) override {
        unused("DSSetShaderResources");
    }
    void STDMETHODCALLTYPE DSSetShader(ID3D11DomainShader*, ID3D11ClassInstance* const*,
                                       UINT) override {
        unused("DSSetShader");
    }
    void STDMETHODCALLTYPE DSSetSamplers(UINT, UINT, ID3D11SamplerState* const*) override {
        unused("DSSetSamplers");
    }
    void STDMETHODCALLTYPE DSSetConstantBuffers(UINT, UINT, ID3D11Buffer* const*) override {
        unused("DSSetConstantBuffers");
    }
    void STDMETHODCALLTYPE CSSetShaderResources(UINT, UINT,
                                                ID3D11ShaderResourceView* const*) override {
        unused("CSSetShaderResources");
    }
    void STDMETHODCALLTYPE CSSetUnorderedAccessViews(UINT, UINT, ID3D11UnorderedAccessView* const*,
                                                     const UINT*) override {
        unused("CSSetUnorderedAccessViews");
    }
    void STDMETHODCALLTYPE CSSetShader(ID3D11ComputeShader*, ID3D11ClassInstance* const*,
                                       UINT) override {
        unused("CSSetShader");
    }
    void STDMETHODCALLTYPE CSSetSamplers(UINT, UINT, ID3D11SamplerState* const*) override {
        unused("CSSetSamplers");
    }
    void STDMETHODCALLTYPE CSSetConstantBuffers(UINT, UINT, ID3D11Buffer* const*) override {
        unused("CSSetConstantBuffers");
    }
    void STDMETHODCALLTYPE VSGetConstantBuffers(UINT, UINT, ID3D11Buffer**) override {
        unused("VSGetConstantBuffers");
    }
    void STDMETHODCALLTYPE PSGetShaderResources(UINT, UINT, ID3D11ShaderResourceView**) override {
        unused("PSGetShaderResources");
    }
    void STDMETHODCALLTYPE PSGetShader(ID3D11PixelShader**, ID3D11ClassInstance**, UINT*) override {
        unused("PSGetShader");
    }
    void STDMETHODCALLTYPE PSGetSamplers(UINT, UINT, ID3D11SamplerState**) override {
        unused("PSGetSamplers");
    }
    void STDMETHODCALLTYPE VSGetShader(ID3D11VertexShader**, ID3D11ClassInstance**,
                                       UINT*) override {
        unused("VSGetShader");
    }
    void STDMETHODCALLTYPE PSGetConstantBuffers(UINT, UINT, ID3D11Buffer**) override {
        unused("PSGetConstantBuffers");
    }
    void STDMETHODCALLTYPE IAGetInputLayout(ID3D11InputLayout**) override {
        unused("IAGetInputLayout");
    }
    void STDMETHODCALLTYPE IAGetVertexBuffers(UINT, UINT, ID3D11Buffer**, UINT*, UINT*) override {
        unused("IAGetVertexBuffers");
    }
    void STDMETHODCALLTYPE IAGetIndexBuffer(ID3D11Buffer**, DXGI_FORMAT*, UINT*) override {
        unused("IAGetIndexBuffer");
    }
    void STDMETHODCALLTYPE GSGetConstantBuffers(UINT, UINT, ID3D11Buffer**) override {
        unused("GSGetConstantBuffers");
    }
    void STDMETHODCALLTYPE GSGetShader(ID3D11GeometryShader**, ID3D11ClassInstance**,
                                       UINT*) override {
        unused("GSGetShader");
    }
    void STDMETHODCALLTYPE IAGetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY*) override {
        unused("IAGetPrimitiveTopology");
    }
    void STDMETHODCALLTYPE VSGetShaderResources(UINT, UINT, ID3D11ShaderResourceView**) override {
        unused("VSGetShaderResources");
    }
    void STDMETHODCALLTYPE VSGetSamplers(UINT, UINT, ID3D11SamplerState**) override {
        unused("VSGetSamplers");
    }
    void STDMETHODCALLTYPE GetPredication(ID3D11Predicate**, WINBOOL*) override {
        unused("GetPredication");
    }
    void STDMETHODCALLTYPE GSGetShaderResources(UINT, UINT, ID3D11ShaderResourceView**) override {
        unused("GSGetShaderResources");
    }
    void STDMETHODCALLTYPE GSGetSamplers(UINT, UINT, ID3D11SamplerState**) override {
        unused("GSGetSamplers");
    }
    void STDMETHODCALLTYPE OMGetRenderTargets(UINT, ID3D11RenderTargetView**,
                                              ID3D11DepthStencilView**) override {
        unused("OMGetRenderTargets");
    }
    void STDMETHODCALLTYPE OMGetRenderTargetsAndUnorderedAccessViews(
        UINT, ID3D11RenderTargetView**, ID3D11DepthStencilView**, UINT, UINT,
        ID3D11UnorderedAccessView**) override {
        unused("OMGetRenderTargetsAndUnorderedAccessViews");
    }
    void STDMETHODCALLTYPE OMGetBlendState(ID3D11BlendState**, FLOAT*, UINT*) override {
        unused("OMGetBlendState");
    }
    void STDMETHODCALLTYPE OMGetDepthStencilState(ID3D11DepthStencilState**, UINT*) override {
        unused("OMGetDepthStencilState");
    }
    void STDMETHODCALLTYPE SOGetTargets(UINT, ID3D11Buffer**) override { unused("SOGetTargets"); }
    void STDMETHODCALLTYPE RSGetState(ID3D11RasterizerState**) override { unused("RSGetState"); }
    void STDMETHODCALLTYPE RSGetViewports(UINT*, D3D11_VIEWPORT*) override {
        unused("RSGetViewports");
    }
    void STDMETHODCALLTYPE RSGetScissorRects(UINT*, D3D11_RECT*) override {
        unused("RSGetScissorRects");
    }
    void STDMETHODCALLTYPE HSGetShaderResources(UINT, UINT, ID3D11ShaderResourceView**) override {
        unused("HSGetShaderResources");
    }
    void STDMETHODCALLTYPE HSGetShader(ID3D11HullShader**, ID3D11ClassInstance**, UINT*) override {
        unused("HSGetShader");
    }
    void STDMETHODCALLTYPE HSGetSamplers(UINT, UINT, ID3D11SamplerState**) override {
        unused("HSGetSamplers");
    }
    void STDMETHODCALLTYPE HSGetConstantBuffers(UINT, UINT, ID3D11Buffer**) override {
        unused("HSGetConstantBuffers");
    }
    void STDMETHODCALLTYPE DSGetShaderResources(UINT, UINT, ID3D11ShaderResourceView**) override {
        unused("DSGetShaderResources");
    }
    void STDMETHODCALLTYPE DSGetShader(ID3D11DomainShader**, ID3D11ClassInstance**,
                                       UINT*) override {
        unused("DSGetShader");
    }
    void STDMETHODCALLTYPE DSGetSamplers(UINT, UINT, ID3D11SamplerState**) override {
        unused("DSGetSamplers");
    }
    void STDMETHODCALLTYPE DSGetConstantBuffers(UINT, UINT, ID3D11Buffer**) override {
        unused("DSGetConstantBuffers");
    }
    void STDMETHODCALLTYPE CSGetShaderResources(UINT, UINT, ID3D11ShaderResourceView**) override {
        unused("CSGetShaderResources");
    }
    void STDMETHODCALLTYPE CSGetUnorderedAccessViews(UINT, UINT,
                                                     ID3D11UnorderedAccessView**) override {
        unused("CSGetUnorderedAccessViews");
    }
    void STDMETHODCALLTYPE CSGetShader(ID3D11ComputeShader**, ID3D11ClassInstance**,
                                       UINT*) override {
        unused("CSGetShader");
    }
    void STDMETHODCALLTYPE CSGetSamplers(UINT, UINT, ID3D11SamplerState**) override {
        unused("CSGetSamplers");
    }
    void STDMETHODCALLTYPE CSGetConstantBuffers(UINT, UINT, ID3D11Buffer**) override {
        unused("CSGetConstantBuffers");
    }
    UINT STDMETHODCALLTYPE GetContextFlags() override {
        unused("GetContextFlags");
        return {};
    }

private:
    void unused(const char* method) {
        world().record({name(), method, "", "not served", {}, nullptr});
    }
};

}  // namespace fake
