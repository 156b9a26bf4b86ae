#include "DirectXEffectMgr/Source/dx_effect.h"

#include <d3d11.h>

#include <cstring>

#include "DirectXEffectMgr/Source/core/param_layout.h"
#include "DirectXEffectMgr/Source/core/uniform_text.h"
#include "DirectXEffectMgr/Source/device_util.h"
#include "DirectXEffectMgr/Source/logging/logging.h"

namespace {

HRESULT make_constant_buffer(ID3D11Device* device, size_t byte_width, ID3D11Buffer*& buffer) {
    if (device == nullptr) {
        return E_POINTER;
    }
    D3D11_BUFFER_DESC description{};
    description.ByteWidth = static_cast<UINT>(byte_width);
    description.Usage = D3D11_USAGE_DYNAMIC;
    description.BindFlags = D3D11_BIND_CONSTANT_BUFFER;
    description.CPUAccessFlags = D3D11_CPU_ACCESS_WRITE;
    return device->CreateBuffer(&description, nullptr, &buffer);
}

}  // namespace

DXEffect::~DXEffect() {
    release(pParamBuffer);
}

void DXEffect::output_uniform_declarations(std::string& out, bool /*vertex_stage*/) const {
    ::output_uniform_declarations(*this, out);
}

void DXEffect::create_param_buffer(ID3D11Device* new_device,
                                   ID3D11DeviceContext** new_context_slot) {
    device = new_device;
    context_slot = new_context_slot;
    release(pParamBuffer);
    param_bytes.clear();
    param_bytes.resize(static_cast<size_t>(param_buffer_size(*this)));
    plan_.refresh(*this);  // now, so that the first draw need not allocate
    if (FAILED(make_constant_buffer(device, param_bytes.size(), pParamBuffer))) {
        log_error("Create pParamBuffer error!");
    }
}

void DXEffect::upload_parameters(int32_t /*reserved*/, const std::string& /*prefix*/,
                                 int32_t* /*index*/, int32_t pass) {
    const PassLayout layout = plan_.fill(*this, pass, param_bytes);
    last_padded_size = layout.last_padded_size;
    last_padding = layout.last_padding;
    instance_base = layout.instance_base;
    send_to_device();
}

void DXEffect::upload_instance_parameters(int32_t /*reserved*/, const std::string& /*prefix*/,
                                          int32_t* /*index*/, int32_t instance, int32_t pass) {
    fill_instance(*this, instance, pass, instance_base, param_bytes);
    send_to_device();
}

void DXEffect::send_to_device() {
    ID3D11DeviceContext* const context = context_slot == nullptr ? nullptr : *context_slot;
    if (context == nullptr || pParamBuffer == nullptr) {
        return;
    }
    D3D11_MAPPED_SUBRESOURCE mapped{};
    if (FAILED(context->Map(pParamBuffer, 0, D3D11_MAP_WRITE_DISCARD, 0, &mapped))) {
        log_error("Map pParamBuffer error!");
        mapped.pData = nullptr;
    }
    if (mapped.pData != nullptr) {
        std::memcpy(mapped.pData, param_bytes.data(), param_bytes.size());
    }
    // A failed map goes on: the shaders read the buffer as it was.
    context->Unmap(pParamBuffer, 0);
    context->PSSetConstantBuffers(0, 1, &pParamBuffer);
    context->VSSetConstantBuffers(0, 1, &pParamBuffer);
}
