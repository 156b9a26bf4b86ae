#pragma once

#include <cstdint>
#include <string>

#include "DirectXEffectMgr/Include/OpenGLEffectTypes.h"
#include "movit/input.h"

class ResourcePoolDX;

/// One audio input: a texture one sample high, filled anew at each upload and bound at the shader
/// slot of the input's position. All calls run where the device is used, but for set_samples(),
/// which the host's setter makes between draws; no lock.
class AudioInputDX final : public movit::Input {
public:
    /// @param device,context,pool  the effect's own slots, read afresh at each use; outlive the
    /// node
    AudioInputDX(ID3D11Device** device, ID3D11DeviceContext** context, ResourcePoolDX** pool);
    ~AudioInputDX() override;

    std::string type_name() const override { return "AudioInputDX"; }
    int32_t alpha_mode() const override { return 0; }
    int32_t output_count() const override { return 0; }
    bool is_audio_input() const override { return true; }
    uint32_t get_width() const override { return sample_count; }
    uint32_t get_height() const override { return 1; }
    uint32_t get_pitch() const override { return sample_count; }
    int32_t get_input_mode_a() const override { return 0; }
    int32_t get_input_mode_b() const override { return 1; }
    uint32_t get_depth() const override { return 1; }

    /// Copies the samples to the texture, makes it first if there is none, and binds it at `*index`
    /// of both stages. Nothing is made or bound while the count is 0.
    void upload_parameters(int32_t reserved, const std::string& prefix, int32_t* index,
                           int32_t pass) override;

    /// Takes the samples that the next uploads copy; another count gives the texture back.
    ///
    /// @param new_samples  the host's, valid until the next call; null leaves the texture as it is
    void set_samples(uint32_t count, const float* new_samples);

    uint32_t sample_count = 0;
    const float* samples = nullptr;
    GpuData texture;  // owned, `sample_count` wide

private:
    void give_back();

    ID3D11Device** device_;
    ID3D11DeviceContext** context_;
    ResourcePoolDX** pool_;
};
