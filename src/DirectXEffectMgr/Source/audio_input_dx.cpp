#include "DirectXEffectMgr/Source/audio_input_dx.h"

#include <d3d11.h>

#include "DirectXEffectMgr/Source/device_objects.h"
#include "DirectXEffectMgr/Source/input_binding.h"
#include "DirectXEffectMgr/Source/resource_pool_dx.h"

namespace {

constexpr uint32_t kGlR32F = 33326;

}  // namespace

AudioInputDX::AudioInputDX(ID3D11Device** device, ID3D11DeviceContext** context,
                           ResourcePoolDX** pool)
    : device_(device), context_(context), pool_(pool) {}

AudioInputDX::~AudioInputDX() {
    give_back();
}

void AudioInputDX::upload_parameters(int32_t /*reserved*/, const std::string& /*prefix*/,
                                     int32_t* index, int32_t /*pass*/) {
    if (texture.texture == nullptr) {
        if (sample_count == 0 || *pool_ == nullptr) {
            return;
        }
        texture = (*pool_)->create_texture(*device_, kGlR32F, sample_count, 1);
        if (texture.texture == nullptr) {
            return;
        }
    }
    ID3D11DeviceContext* const context = *context_;
    if (context != nullptr && samples != nullptr) {
        // The count as row pitch: with a single row nothing reads it.
        context->UpdateSubresource(texture.texture, 0, nullptr, samples, sample_count, 0);
    }
    bind_picture(context, texture, *index);
    if (!is_whole(texture)) {
        release_objects(texture);  // the pool doesn't know it; the next upload tries again
    }
}

void AudioInputDX::set_samples(uint32_t count, const float* new_samples) {
    if (count != sample_count) {
        give_back();
    }
    sample_count = count;
    samples = new_samples;
}

void AudioInputDX::give_back() {
    if (texture.texture != nullptr && *pool_ != nullptr) {
        (*pool_)->release_texture(texture);
    }
}
