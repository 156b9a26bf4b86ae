#include "DirectXEffectMgr/Source/input_binding.h"

#include <d3d11.h>

void bind_picture(ID3D11DeviceContext* context, const GpuData& picture, int32_t slot) {
    if (context == nullptr || slot < 0 || slot >= D3D11_COMMONSHADER_INPUT_RESOURCE_SLOT_COUNT) {
        return;
    }
    const UINT position = static_cast<UINT>(slot);
    const bool has_sampler_slot = slot < D3D11_COMMONSHADER_SAMPLER_SLOT_COUNT;
    context->PSSetShaderResources(position, 1, &picture.srv);
    if (has_sampler_slot) {
        context->PSSetSamplers(position, 1, &picture.sampler);
    }
    context->VSSetShaderResources(position, 1, &picture.srv);
    if (has_sampler_slot) {
        context->VSSetSamplers(position, 1, &picture.sampler);
    }
}
