#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "DirectXEffectMgr/Include/OpenGLEffectTypes.h"
#include "movit/input.h"

class ResourcePoolDX;

/// OpenGL codes in which inputs speak of filters and sample types.
constexpr uint32_t kGlNearest = 9728;
constexpr uint32_t kGlLinear = 9729;
constexpr uint32_t kGlUnsignedByte = 5121;
constexpr uint32_t kGlUnsignedShort = 5123;
constexpr uint32_t kGlFloat = 5126;
constexpr uint32_t kGlHalfFloat = 5131;

/// One image input: puts the picture of the current pass on the shader slot of its position.
///
/// The effect's operations write the records in `input_textures` directly; what they wrote takes
/// effect at the next upload. A picture's pixels belong to the host and must be valid until then.
/// Textures come from the pool and go back to it at the start of the next draw. All calls run where
/// the device is used; no lock.
class FlatInputDX final : public movit::Input {
public:
    /// Makes the first record from the size: four channels, linear filter, no picture yet.
    ///
    /// @param device,context,pool  the effect's own slots, read afresh at each use; outlive the
    /// node
    /// @param layout_code  3, 4 and 5 stand for the pixel layouts 0, 1 and 2, and 6 for 8; any
    /// other
    ///                     code is the layout itself
    /// @param pixel_type   OpenGL type of a sample: kGlUnsignedByte, kGlFloat
    FlatInputDX(ID3D11Device** device, ID3D11DeviceContext** context, ResourcePoolDX** pool,
                uint32_t mode_a, uint32_t mode_b, uint32_t layout_code, uint32_t pixel_type,
                uint32_t width, uint32_t height, uint32_t pitch, uint32_t depth);
    ~FlatInputDX() override;

    std::string type_name() const override { return "FlatInputDX"; }
    int32_t alpha_mode() const override;
    bool capability_f() const override { return true; }
    int32_t output_count() const override { return 0; }
    bool is_audio_input() const override { return false; }
    uint32_t get_width() const override { return first().width; }
    uint32_t get_height() const override { return first().height; }
    uint32_t get_pitch() const override { return first().pitch; }
    int32_t get_input_mode_a() const override { return static_cast<int32_t>(input_mode_a); }
    int32_t get_input_mode_b() const override { return static_cast<int32_t>(input_mode_b); }
    uint32_t get_depth() const override { return first().depth; }

    /// Uploads the picture of `pass` if its texture is empty, and binds it at `*index` of both
    /// stages. Without a picture nothing is bound; where no texture could be made, nulls are.
    void upload_parameters(int32_t reserved, const std::string& prefix, int32_t* index,
                           int32_t pass) override;

    /// Gives back to the pool what the last frame used up: uploaded streaming pictures, still
    /// pictures that were replaced, and the textures of retired records. Runs at the start of each
    /// draw.
    void release_frame_textures();

    uint32_t input_mode_a;
    uint32_t input_mode_b;
    uint32_t pixel_layout;  // 0 three channels; 1, 2 four; 7 two; 8 one
    uint32_t pixel_type;
    uint32_t unpack_buffer = 0;       // OpenGL buffer of a volume picture; 0 after any new picture
    int32_t output_linear_gamma = 0;  // parameter of this name: non-zero asks for an sRGB format
    bool new_frames = false;          // set by the first streaming picture, never cleared
    bool from_preset_layout = false;  // which kind of layout code was given; stored and not read
    bool one_channel_layout = false;  //
    std::array<float, 4> input_rect = {0, 0, 1, 1};  // stored and not read
    bool use_external = false;                       // the picture is an `external_texture`
    std::vector<InputTexture> input_textures;        // the current pictures, by pass; never empty
    std::vector<InputTexture> retired_textures;      // replaced since the last draw

private:
    // What became of an upload.
    enum class Upload {
        kNone,      // nothing was uploaded; the target may show an older picture
        kDone,      // the target shows the picture
        kUnpooled,  // as kDone, but view or sampler are missing: the pool doesn't know the texture
    };

    const InputTexture& first() const;
    void upload_and_bind(InputTexture& record, int32_t slot);
    void upload_and_bind_one_channel(InputTexture& record, int32_t slot);
    void finish(GpuData& target, Upload result, const GpuData& shown, int32_t slot) const;
    [[nodiscard]] bool expand(InputTexture& record);
    Upload upload(const InputTexture& record, GpuData& target, const void* pixels, uint32_t pitch,
                  int32_t channels);
    Upload upload_flat(const InputTexture& record, GpuData& target, const void* pixels,
                       uint32_t pitch, int32_t channels);
    Upload upload_volume(const InputTexture& record, const GpuData& target, const void* pixels,
                         int32_t channels);
    const void* readable_rows(const void* pixels, uint32_t row_bytes, uint32_t height,
                              uint32_t pitch);
    [[nodiscard]] uint32_t internal_format(int32_t channels) const;
    void give_back(GpuData* texture) const;
    void drop(GpuData*& texture, bool has_picture) const;
    void drop_record(InputTexture& record) const;

    ID3D11Device** device_;
    ID3D11DeviceContext** context_;
    ResourcePoolDX** pool_;
    std::vector<uint8_t> padded_rows_;       // see readable_rows()
    bool volume_refusal_logged_ = false;     // one line per input, not one per frame
    bool expansion_refusal_logged_ = false;  //
};
