#include "frame/hand_frame.h"

#include <d3dcompiler.h>

#include <algorithm>
#include <array>
#include <cfloat>
#include <cstring>
#include <stdexcept>

namespace bench {
namespace {

constexpr UINT kConstantBytes = 48;  // iResolution, iResolutionOrig and two floats with fillers

void check(HRESULT code, const char* what) {
    if (FAILED(code)) {
        throw std::runtime_error(std::string(what) + " failed by hand");
    }
}

Microsoft::WRL::ComPtr<ID3DBlob> compile(const std::string& text, const char* entry,
                                         const char* profile) {
    Microsoft::WRL::ComPtr<ID3DBlob> code;
    Microsoft::WRL::ComPtr<ID3DBlob> errors;
    check(D3DCompile(text.data(), text.size(), nullptr, nullptr, nullptr, entry, profile, 0, 0,
                     &code, &errors),
          "D3DCompile");
    return code;
}

D3D11_TEXTURE2D_DESC texture_desc(UINT width, UINT height, D3D11_USAGE usage, UINT bind,
                                  UINT access) {
    D3D11_TEXTURE2D_DESC desc = {};
    desc.Width = width;
    desc.Height = height;
    desc.MipLevels = 1;
    desc.ArraySize = 1;
    desc.Format = DXGI_FORMAT_B8G8R8A8_UNORM;
    desc.SampleDesc.Count = 1;
    desc.Usage = usage;
    desc.BindFlags = bind;
    desc.CPUAccessFlags = access;
    return desc;
}

D3D11_SHADER_RESOURCE_VIEW_DESC view_desc() {
    D3D11_SHADER_RESOURCE_VIEW_DESC desc = {};
    desc.Format = DXGI_FORMAT_B8G8R8A8_UNORM;
    desc.ViewDimension = D3D11_SRV_DIMENSION_TEXTURE2D;
    desc.Texture2D.MipLevels = 1;
    return desc;
}

D3D11_RENDER_TARGET_VIEW_DESC target_view_desc() {
    D3D11_RENDER_TARGET_VIEW_DESC desc = {};
    desc.Format = DXGI_FORMAT_B8G8R8A8_UNORM;
    desc.ViewDimension = D3D11_RTV_DIMENSION_TEXTURE2D;
    return desc;
}

}  // namespace

HandFrame::HandFrame(ID3D11Device* device, const HlslTexts& texts, uint32_t width, uint32_t height,
                     const FrameWork& work, HandStyle style)
    : device_(device),
      width_(width),
      height_(height),
      work_(work),
      style_(style),
      pixels_(size_t{width} * height * 4, 0x40),
      result_(size_t{width} * height * 4) {
    check(device_->CreateDeferredContext(0, &deferred_), "CreateDeferredContext");
    make_shaders(texts);
    constants_ = make_buffer(kConstantBytes, D3D11_USAGE_DYNAMIC, D3D11_BIND_CONSTANT_BUFFER,
                             D3D11_CPU_ACCESS_WRITE, nullptr);
    target_ = make_picture(D3D11_BIND_SHADER_RESOURCE | D3D11_BIND_RENDER_TARGET);
    const D3D11_RENDER_TARGET_VIEW_DESC target_desc = target_view_desc();
    check(device_->CreateRenderTargetView(target_.texture.Get(), &target_desc, &target_view_),
          "CreateRenderTargetView");
    input_ = make_picture(D3D11_BIND_SHADER_RESOURCE);
    deferred_->UpdateSubresource(input_.texture.Get(), 0, nullptr, pixels_.data(), width_ * 4, 0);
    execute();
    const auto staging =
        texture_desc(width_, height_, D3D11_USAGE_STAGING, 0, D3D11_CPU_ACCESS_READ);
    check(device_->CreateTexture2D(&staging, nullptr, &staging_), "CreateTexture2D");
    raster_state_ = make_raster_state();
}

HandFrame::Picture HandFrame::make_picture(UINT bind) {
    Picture picture;
    const auto desc = texture_desc(width_, height_, D3D11_USAGE_DEFAULT, bind, 0);
    check(device_->CreateTexture2D(&desc, nullptr, &picture.texture), "CreateTexture2D");
    const D3D11_SHADER_RESOURCE_VIEW_DESC view = view_desc();
    check(device_->CreateShaderResourceView(picture.texture.Get(), &view, &picture.view),
          "CreateShaderResourceView");
    D3D11_SAMPLER_DESC sampler = {};
    sampler.Filter = D3D11_FILTER_MIN_MAG_MIP_LINEAR;
    sampler.AddressU = sampler.AddressV = sampler.AddressW = D3D11_TEXTURE_ADDRESS_MIRROR;
    sampler.ComparisonFunc = D3D11_COMPARISON_NEVER;
    sampler.MaxLOD = FLT_MAX;
    check(device_->CreateSamplerState(&sampler, &picture.sampler), "CreateSamplerState");
    return picture;
}

HandFrame::Com<ID3D11Buffer> HandFrame::make_buffer(UINT bytes, D3D11_USAGE usage, UINT bind,
                                                    UINT access, const void* data) {
    D3D11_BUFFER_DESC desc = {};
    desc.ByteWidth = bytes;
    desc.Usage = usage;
    desc.BindFlags = bind;
    desc.CPUAccessFlags = access;
    D3D11_SUBRESOURCE_DATA initial = {};
    initial.pSysMem = data;
    Com<ID3D11Buffer> buffer;
    check(device_->CreateBuffer(&desc, data == nullptr ? nullptr : &initial, &buffer),
          "CreateBuffer");
    return buffer;
}

void HandFrame::make_shaders(const HlslTexts& texts) {
    const auto vertex = compile(texts.vertex, "mainVS", "vs_5_0");
    const auto fragment = compile(texts.fragment, "mainPS", "ps_5_0");
    check(device_->CreateVertexShader(vertex->GetBufferPointer(), vertex->GetBufferSize(), nullptr,
                                      &vertex_shader_),
          "CreateVertexShader");
    check(device_->CreatePixelShader(fragment->GetBufferPointer(), fragment->GetBufferSize(),
                                     nullptr, &pixel_shader_),
          "CreatePixelShader");
    make_vertex_data(vertex.Get());
}

void HandFrame::make_vertex_data(ID3DBlob* code) {
    const std::array<D3D11_INPUT_ELEMENT_DESC, 2> elements = {{
        {"position", 0, DXGI_FORMAT_R32G32_FLOAT, 0, 0, D3D11_INPUT_PER_VERTEX_DATA, 0},
        {"texcoord", 0, DXGI_FORMAT_R32G32_FLOAT, 1, 0, D3D11_INPUT_PER_VERTEX_DATA, 0},
    }};
    check(device_->CreateInputLayout(elements.data(), elements.size(), code->GetBufferPointer(),
                                     code->GetBufferSize(), &layout_),
          "CreateInputLayout");
    constexpr std::array<float, 8> kCorners = {0, 0, 0, 1, 1, 0, 1, 1};
    position_ = make_buffer(sizeof kCorners, D3D11_USAGE_DEFAULT, D3D11_BIND_VERTEX_BUFFER, 0,
                            kCorners.data());
    texcoord_ = make_buffer(sizeof kCorners, D3D11_USAGE_DEFAULT, D3D11_BIND_VERTEX_BUFFER, 0,
                            kCorners.data());
}

HandFrame::Com<ID3D11RasterizerState> HandFrame::make_raster_state() {
    D3D11_RASTERIZER_DESC desc = {};
    desc.FillMode = D3D11_FILL_SOLID;
    desc.CullMode = D3D11_CULL_NONE;
    Com<ID3D11RasterizerState> state;
    check(device_->CreateRasterizerState(&desc, &state), "CreateRasterizerState");
    return state;
}

void HandFrame::set_pipeline() {
    constexpr float kClear[4] = {};
    constexpr float kFactors[4] = {};
    deferred_->OMSetRenderTargets(1, target_view_.GetAddressOf(), nullptr);
    const D3D11_VIEWPORT viewport = {
        0.0f, 0.0f, static_cast<float>(width_), static_cast<float>(height_), 0.0f, 1.0f};
    deferred_->RSSetViewports(1, &viewport);
    deferred_->ClearRenderTargetView(target_view_.Get(), kClear);
    if (same_calls()) {
        raster_state_ = make_raster_state();
    }
    deferred_->RSSetState(raster_state_.Get());
    deferred_->OMSetBlendState(nullptr, kFactors, 0xffffffff);
    deferred_->IASetPrimitiveTopology(D3D11_PRIMITIVE_TOPOLOGY_TRIANGLESTRIP);
    deferred_->IASetInputLayout(layout_.Get());
    deferred_->VSSetShader(vertex_shader_.Get(), nullptr, 0);
    deferred_->PSSetShader(pixel_shader_.Get(), nullptr, 0);
}

void HandFrame::set_vertex_data() {
    constexpr UINT kStride = 8;
    constexpr UINT kOffset = 0;
    deferred_->IASetVertexBuffers(0, 1, position_.GetAddressOf(), &kStride, &kOffset);
    deferred_->IASetVertexBuffers(1, 1, texcoord_.GetAddressOf(), &kStride, &kOffset);
}

void HandFrame::bind_input() {
    if (work_.upload) {
        deferred_->UpdateSubresource(input_.texture.Get(), 0, nullptr, pixels_.data(), width_ * 4,
                                     0);
    }
    deferred_->PSSetShaderResources(0, 1, input_.view.GetAddressOf());
    deferred_->PSSetSamplers(0, 1, input_.sampler.GetAddressOf());
    if (same_calls()) {
        deferred_->VSSetShaderResources(0, 1, input_.view.GetAddressOf());
        deferred_->VSSetSamplers(0, 1, input_.sampler.GetAddressOf());
    }
}

void HandFrame::fill_constants() {
    const auto width = static_cast<float>(width_);
    const auto height = static_cast<float>(height_);
    const std::array<float, kConstantBytes / 4> values = {0.5f, 0.5f, 0,     0,      width, height,
                                                          0,    0,    width, height, 0,     0};
    D3D11_MAPPED_SUBRESOURCE mapped = {};
    check(deferred_->Map(constants_.Get(), 0, D3D11_MAP_WRITE_DISCARD, 0, &mapped), "Map");
    std::memcpy(mapped.pData, values.data(), sizeof values);
    deferred_->Unmap(constants_.Get(), 0);
    deferred_->PSSetConstantBuffers(0, 1, constants_.GetAddressOf());
    deferred_->VSSetConstantBuffers(0, 1, constants_.GetAddressOf());
}

void HandFrame::check_device() {
    if (same_calls()) {
        check(device_->GetDeviceRemovedReason(), "the device");
    }
}

void HandFrame::unbind() {
    if (!same_calls()) {
        return;
    }
    constexpr float kFactors[4] = {};
    ID3D11RenderTargetView* const no_target = nullptr;
    ID3D11ShaderResourceView* const no_view = nullptr;
    deferred_->OMSetRenderTargets(1, &no_target, nullptr);
    raster_state_.Reset();
    deferred_->RSSetState(nullptr);
    deferred_->OMSetBlendState(nullptr, kFactors, 0xffffffff);
    deferred_->OMSetDepthStencilState(nullptr, 0);
    deferred_->PSSetShaderResources(0, 1, &no_view);
}

HandFrame::Executed HandFrame::execute() {
    Executed executed;
    check(deferred_->FinishCommandList(FALSE, &executed.list), "FinishCommandList");
    device_->GetImmediateContext(&executed.immediate);
    executed.immediate->ExecuteCommandList(executed.list.Get(), FALSE);
    if (!same_calls()) {
        executed.list.Reset();
    }
    return executed;
}

void HandFrame::read_back() {
    deferred_->CopyResource(staging_.Get(), target_.texture.Get());
    const Executed executed = execute();
    ID3D11DeviceContext* const immediate = executed.immediate.Get();
    D3D11_MAPPED_SUBRESOURCE mapped = {};
    HRESULT code = DXGI_ERROR_WAS_STILL_DRAWING;
    while (code == DXGI_ERROR_WAS_STILL_DRAWING) {
        code =
            immediate->Map(staging_.Get(), 0, D3D11_MAP_READ, D3D11_MAP_FLAG_DO_NOT_WAIT, &mapped);
    }
    check(code, "Map");
    const size_t row_bytes = size_t{width_} * 4;
    const auto* rows = static_cast<const uint8_t*>(mapped.pData);
    if (mapped.RowPitch == row_bytes) {
        std::memcpy(result_.data(), rows, row_bytes * height_);
    } else {
        for (size_t y = 0; y < height_; ++y) {
            std::memcpy(&result_[y * row_bytes], rows + y * mapped.RowPitch, row_bytes);
        }
    }
    immediate->Unmap(staging_.Get(), 0);
}

void HandFrame::draw() {
    set_pipeline();
    set_vertex_data();
    bind_input();
    check_device();
    fill_constants();
    check_device();
    deferred_->Draw(4, 0);
    check_device();
    unbind();
    if (work_.read_back) {
        read_back();
    } else {
        execute();
    }
}

}  // namespace bench
