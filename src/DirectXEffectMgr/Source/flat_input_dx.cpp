#include "DirectXEffectMgr/Source/flat_input_dx.h"

#include <d3d11.h>

#include <cstring>

#include "DirectXEffectMgr/Source/device_objects.h"
#include "DirectXEffectMgr/Source/expanded_picture.h"
#include "DirectXEffectMgr/Source/input_binding.h"
#include "DirectXEffectMgr/Source/logging/logging.h"
#include "DirectXEffectMgr/Source/resource_pool_dx.h"

namespace {

constexpr uint32_t kLayoutThreeChannels = 0;
constexpr uint32_t kLayoutFourChannels = 1;
constexpr uint32_t kLayoutFourChannelsOther = 2;
constexpr uint32_t kLayoutTwoChannels = 7;
constexpr uint32_t kLayoutOneChannel = 8;

constexpr uint32_t kGlLuminance = 6409;
constexpr uint32_t kGlRgba8 = 32856;
constexpr uint32_t kGlSrgb8 = 35905;
constexpr uint32_t kGlSrgb8Alpha8 = 35907;

// Internal formats of a sample type, by the pixel layout.
struct TypeFormats {
    uint32_t pixel_type;
    uint32_t one_channel, two_channels, three_channels, other;
};
constexpr TypeFormats kTypeFormats[] = {
    {kGlFloat, 33326, 33328, 34837, 34836},          // GL_R32F, RG32F, RGB32F, RGBA32F
    {kGlHalfFloat, 33325, 33327, 34843, 34842},      // GL_R16F, RG16F, RGB16F, RGBA16F
    {kGlUnsignedShort, 33331, 33337, 36233, 36232},  // codes without a byte count of their own
};
constexpr TypeFormats kByteFormats = {kGlUnsignedByte, 33321, 33323, 32849, kGlRgba8};

uint32_t format_of_layout(const TypeFormats& formats, uint32_t layout) {
    switch (layout) {
        case kLayoutOneChannel:
            return formats.one_channel;
        case kLayoutTwoChannels:
            return formats.two_channels;
        case kLayoutThreeChannels:
            return formats.three_channels;
        default:
            return formats.other;
    }
}

uint32_t linear_format(uint32_t layout) {
    switch (layout) {
        case kLayoutThreeChannels:
            return kGlSrgb8;
        case kLayoutFourChannelsOther:
            return kGlSrgb8Alpha8;
        default:
            return kGlRgba8;
    }
}

// Bytes that the device reads for one pixel of a pooled texture.
uint32_t device_pixel_bytes(uint32_t internal_format) {
    return internal_format == kGlLuminance ? 1 : 4;
}

uint32_t layout_of_code(uint32_t layout_code) {
    switch (layout_code) {
        case 3:
            return kLayoutThreeChannels;
        case 4:
            return kLayoutFourChannels;
        case 5:
            return kLayoutFourChannelsOther;
        case 6:
            return kLayoutOneChannel;
        default:
            return layout_code;
    }
}

void ensure(GpuData*& texture) {
    if (texture == nullptr) {
        texture = new GpuData();
    }
}

}  // namespace

FlatInputDX::FlatInputDX(ID3D11Device** device, ID3D11DeviceContext** context,
                         ResourcePoolDX** pool, uint32_t mode_a, uint32_t mode_b,
                         uint32_t layout_code, uint32_t type, uint32_t width, uint32_t height,
                         uint32_t pitch, uint32_t depth)
    : input_mode_a(mode_a),
      input_mode_b(mode_b),
      pixel_layout(layout_of_code(layout_code)),
      pixel_type(type),
      from_preset_layout(layout_code >= 3 && layout_code <= 5),
      one_channel_layout(layout_code == 6),
      input_textures(1),
      device_(device),
      context_(context),
      pool_(pool) {
    register_int("output_linear_gamma", &output_linear_gamma);
    InputTexture& record = input_textures.front();
    record.width = width;
    record.height = height;
    record.pitch = pitch;
    record.depth = depth;
    record.channels = 4;
    record.filter = kGlLinear;
    record.source_kind = 1;
    record.volume = depth > 1;
}

FlatInputDX::~FlatInputDX() {
    for (InputTexture& record : input_textures) {
        drop_record(record);
    }
    for (InputTexture& record : retired_textures) {
        drop_record(record);
    }
}

int32_t FlatInputDX::alpha_mode() const {
    switch (pixel_layout) {
        case kLayoutFourChannels:
            return 2;
        case kLayoutFourChannelsOther:
            return 1;
        default:
            return 0;
    }
}

const InputTexture& FlatInputDX::first() const {
    static const InputTexture kNone;
    return input_textures.empty() ? kNone : input_textures.front();
}

void FlatInputDX::upload_parameters(int32_t /*reserved*/, const std::string& /*prefix*/,
                                    int32_t* index, int32_t pass) {
    if (input_textures.empty()) {
        return;
    }
    const bool known = pass >= 0 && static_cast<size_t>(pass) < input_textures.size();
    InputTexture& record = input_textures[known ? static_cast<size_t>(pass) : 0];
    if (use_external && record.external_texture != nullptr) {
        bind_picture(*context_, *record.external_texture, *index);
    } else if (record.pixels != nullptr || record.still_pixels != nullptr) {
        if (record.channels == 1) {
            upload_and_bind_one_channel(record, *index);
        } else {
            upload_and_bind(record, *index);
        }
    }
}

void FlatInputDX::upload_and_bind(InputTexture& record, int32_t slot) {
    if (record.still_pixels != nullptr) {
        ensure(record.still_texture);
        const Upload result = upload(record, *record.still_texture, record.still_pixels,
                                     record.pitch, record.channels);
        finish(*record.still_texture, result, *record.still_texture, slot);
        return;
    }
    ensure(record.texture);
    const Upload result =
        upload(record, *record.texture, record.pixels, record.pitch, record.channels);
    record.uploaded = record.uploaded || result != Upload::kNone;
    finish(*record.texture, result, *record.texture, slot);
}

void FlatInputDX::upload_and_bind_one_channel(InputTexture& record, int32_t slot) {
    if (!use_external && !expand(record)) {
        return;
    }
    ensure(record.texture);
    const bool streaming = record.pixels != nullptr;
    if (!streaming) {
        ensure(record.still_texture);
    }
    GpuData& target = streaming ? *record.texture : *record.still_texture;
    const bool fits =
        record.expanded_width == record.width && record.expanded_height == record.height;
    const Upload result =
        upload(record, target, fits ? record.expanded_pixels : nullptr, record.width * 4, 4);
    record.uploaded = record.uploaded || (streaming && result != Upload::kNone);
    // On purpose: `texture` is bound, whichever was filled. A still picture of one channel is kept
    // in a texture of its own that no shader sees.
    finish(target, result, *record.texture, slot);
}

bool FlatInputDX::expand(InputTexture& record) {
    if (expand_one_channel(record)) {
        return true;
    }
    if (!expansion_refusal_logged_) {
        expansion_refusal_logged_ = true;
        log_error("a one-channel picture of %ux%u with %u bytes from row to row is refused",
                  record.width, record.height, record.pitch);
    }
    return false;
}

// Binds, and then lets go of a texture that the pool doesn't know: the recorded commands hold it,
// and the next upload tries again.
void FlatInputDX::finish(GpuData& target, Upload result, const GpuData& shown, int32_t slot) const {
    bind_picture(*context_, shown, slot);
    if (result == Upload::kUnpooled) {
        release_objects(target);
    }
}

FlatInputDX::Upload FlatInputDX::upload(const InputTexture& record, GpuData& target,
                                        const void* pixels, uint32_t pitch, int32_t channels) {
    return record.volume ? upload_volume(record, target, pixels, channels)
                         : upload_flat(record, target, pixels, pitch, channels);
}

FlatInputDX::Upload FlatInputDX::upload_flat(const InputTexture& record, GpuData& target,
                                             const void* pixels, uint32_t pitch, int32_t channels) {
    if (target.texture != nullptr || *pool_ == nullptr) {
        return Upload::kNone;
    }
    const uint32_t format = internal_format(channels);
    target = (*pool_)->create_texture(*device_, format, record.width, record.height);
    if (target.texture == nullptr) {
        return Upload::kNone;
    }
    if (pixels != nullptr && *context_ != nullptr) {
        const uint32_t row_bytes = record.width * device_pixel_bytes(format);
        (*context_)->UpdateSubresource(target.texture, 0, nullptr,
                                       readable_rows(pixels, row_bytes, record.height, pitch),
                                       pitch, 0);
    }
    return is_whole(target) ? Upload::kDone : Upload::kUnpooled;
}

// The device reads `row_bytes` at each row's start. Where the rows lie closer together than that
// (pictures of fewer channels than the texture), it would read past the picture's end: it gets a
// copy with room behind it instead.
const void* FlatInputDX::readable_rows(const void* pixels, uint32_t row_bytes, uint32_t height,
                                       uint32_t pitch) {
    if (pitch >= row_bytes) {
        return pixels;
    }
    const size_t picture_bytes = size_t{pitch} * height;
    padded_rows_.resize(picture_bytes + row_bytes);
    std::memcpy(padded_rows_.data(), pixels, picture_bytes);
    return padded_rows_.data();
}

uint32_t FlatInputDX::internal_format(int32_t channels) const {
    for (const TypeFormats& formats : kTypeFormats) {
        if (formats.pixel_type == pixel_type) {
            return format_of_layout(formats, pixel_layout);
        }
    }
    if (output_linear_gamma != 0) {
        return linear_format(pixel_layout);
    }
    return channels == 1 ? kGlLuminance : format_of_layout(kByteFormats, pixel_layout);
}

void FlatInputDX::release_frame_textures() {
    for (InputTexture& record : input_textures) {
        if (new_frames && record.texture != nullptr && record.uploaded) {
            give_back(record.texture);
            record.uploaded = false;
        }
    }
    for (InputTexture& record : input_textures) {
        if (record.still_stale && record.still_texture != nullptr) {
            give_back(record.still_texture);
            record.still_stale = false;
            if (record.pixels == nullptr) {
                free_expanded(record);  // shows the replaced picture
            }
        }
    }
    for (InputTexture& record : retired_textures) {
        drop_record(record);
    }
    retired_textures.clear();
}

void FlatInputDX::give_back(GpuData* texture) const {
    if (*pool_ != nullptr) {
        (*pool_)->release_texture(*texture);
    }
}

// Gives the texture back and frees the record of it.
void FlatInputDX::drop(GpuData*& texture, bool has_picture) const {
    if (texture != nullptr && has_picture) {
        give_back(texture);
    }
    delete texture;
    texture = nullptr;
}

void FlatInputDX::drop_record(InputTexture& record) const {
    drop(record.texture, record.uploaded);
    drop(record.still_texture, true);
    free_expanded(record);
}
