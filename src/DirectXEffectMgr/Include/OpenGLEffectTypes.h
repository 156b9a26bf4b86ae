#pragma once

/// Plain records and function types that cross the border between the host and the library.
///
/// A host compiled against its own declarations calls through these, so every size, offset and
/// default value is fixed; the assertions at the end hold them. Nothing here needs Windows or
/// Direct3D headers: the device types are only declared ahead.

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

struct ID3D11Device;
struct ID3D11DeviceContext;
struct ID3D11RenderTargetView;
struct ID3D11SamplerState;
struct ID3D11ShaderResourceView;
struct ID3D11Texture2D;

/// Receives every message of the library, from any of its threads, possibly while the library holds
/// a lock of its own: the function must be thread-safe and must not call back into the library.
///
/// @param level   2 information, 3 warning, 4 error
/// @param format  printf format; ends in a newline only if the message itself does
/// @param args    the arguments of `format`
using LogFunction = void (*)(int32_t level, const char* format, va_list args);

/// Values that the operations return. Success is 0.
constexpr int32_t kResultOk = 0;
/// A call with a bad index, size or list: nothing was changed.
constexpr int32_t kResultRefused = 1;
/// A null pointer where a value is needed.
constexpr int32_t kResultPointer = static_cast<int32_t>(0x80004003u);
/// The work was done and failed; the log tells why.
constexpr int32_t kResultFail = static_cast<int32_t>(0x80004005u);
/// No device: the engine cannot be used.
constexpr int32_t kResultOutOfMemory = static_cast<int32_t>(0x8007000Eu);
/// An argument names nothing that exists.
constexpr int32_t kResultInvalidArgument = static_cast<int32_t>(0x80070057u);

/// The device of an engine and its immediate context; the engine owns both.
struct DevicePair {
    ID3D11Device* device = nullptr;
    ID3D11DeviceContext* immediate_context = nullptr;
};

/// One picture as shaders see it. Whoever made the record owns its three objects.
struct GpuData {
    ID3D11Texture2D* texture = nullptr;
    ID3D11ShaderResourceView* srv = nullptr;
    ID3D11SamplerState* sampler = nullptr;
};

/// The host's textures that `BindTextureData` looks after, each with its width and height in
/// pixels. The map belongs to the host; the library fills and reads it.
using GpuDataMap = std::map<GpuData*, std::vector<int32_t>>;

/// One entry per segment of a shader, each the paths (UTF-8) of that segment's variants.
using SegmentList = std::vector<std::vector<std::string>>;

/// An array parameter's elements in memory of the caller, which must stay valid until replaced.
struct ParamArray {
    const void* data = nullptr;
    uint64_t count = 0;  // elements; the low 32 bits count
};

/// The host's handle on a colour target. The effect that made it owns it and its objects.
struct TextureNum {
    uint32_t reserved = 0;
    GpuData* gpu_data = nullptr;        // points at `colour` once the target exists
    GpuData* depth_gpu_data = nullptr;  // after a draw with depth: the depth picture
    uint32_t width = 0;                 // pixels; 0 while there are no objects
    uint32_t height = 0;
    ID3D11RenderTargetView* render_target_view = nullptr;
    GpuData colour;                           // the resolved picture
    ID3D11Texture2D* msaa_texture = nullptr;  // four samples per pixel, if asked for
};

/// Arguments of one draw. The library copies the record whole and reads two of its fields; the
/// others keep their place for hosts that fill them.
struct DrawParams {
    uint64_t reserved_0 = 0;
    GpuData* dest_texture = nullptr;  // the result is copied into its texture; null: is not
    uint64_t reserved_1 = 0;
    uint64_t reserved_2 = 0;
    uint64_t reserved_3 = 1;
    void* readback_buffer = nullptr;  // receives the picture's rows; null: no read-back
    uint32_t reserved_4 = 0;
    uint32_t reserved_5 = 0;
    uint32_t reserved_6 = 0;
    uint32_t reserved_7 = 1;
    uint64_t reserved_8 = 4;
    uint64_t reserved_9 = 0;
    uint32_t reserved_10 = 0;
    uint32_t reserved_11 = 0;
    uint32_t reserved_12 = 0;
    uint32_t reserved_13 = 0;
    uint32_t reserved_14 = 0;
    int32_t reserved_15 = -1;
};

/// Bytes of a vertex attribute's name, the terminating zero included.
constexpr size_t kVertexAttributeNameBytes = 128;

/// One vertex attribute, or one list of indices, of one pass.
struct VertexAttribute {
    char name[kVertexAttributeNameBytes] = {};  // GLSL name, or "element" for a list of indices
    uint32_t components = 0;     // floats per vertex, 1 to 4; of a list: indices per unit
    const void* data = nullptr;  // the caller's; read by the draw that makes the buffer
    bool is_element = false;     // `data` holds 32-bit indices
    uint32_t reserved = 0;
    bool dirty = false;  // the next draw makes the buffer anew
    int32_t count = 0;   // of a list: number of units; below 1: as many as vertices
};

/// One pass's picture of an image input. The pixels stay the host's and must be valid until the
/// draw that uploads them; the textures belong to the input, but for `external_texture`.
struct InputTexture {
    uint32_t width = 0;  // pixels
    uint32_t height = 0;
    uint32_t pitch = 0;  // bytes from row to row
    uint32_t depth = 0;  // 1 for a flat picture
    int32_t channels = 0;
    bool generate_mipmap = false;
    uint32_t filter = 0;                  // 9728 nearest, 9729 linear
    const void* pixels = nullptr;         // streaming picture: uploaded for each frame
    const void* still_pixels = nullptr;   // still picture: uploaded once while the pointer stays
    GpuData* texture = nullptr;           // what `pixels` went to
    GpuData* external_texture = nullptr;  // a ready picture, not owned
    GpuData* still_texture = nullptr;     // what `still_pixels` went to
    bool still_stale = false;             // `still_texture` shows an older picture
    uint32_t still_tag_a = 0;
    uint32_t still_tag_b = 0;
    int32_t source_kind = 0;
    bool volume = false;                 // depth above 1
    bool uploaded = false;               // `texture` holds this frame's pixels
    uint8_t* expanded_pixels = nullptr;  // four-channel copy of a one-channel picture, owned
    uint32_t expanded_width = 0;         // pixels
    uint32_t expanded_height = 0;
};

static_assert(sizeof(void*) == 8 && sizeof(bool) == 1, "the border is 64-bit, with one-byte bool");

static_assert(sizeof(DevicePair) == 16, "fixed");
static_assert(sizeof(GpuData) == 24, "fixed");
static_assert(offsetof(GpuData, srv) == 8 && offsetof(GpuData, sampler) == 16, "fixed");
static_assert(sizeof(ParamArray) == 16 && offsetof(ParamArray, count) == 8, "fixed");

static_assert(sizeof(TextureNum) == 72, "fixed");
static_assert(offsetof(TextureNum, gpu_data) == 8, "fixed");
static_assert(offsetof(TextureNum, depth_gpu_data) == 16, "fixed");
static_assert(offsetof(TextureNum, width) == 24 && offsetof(TextureNum, height) == 28, "fixed");
static_assert(offsetof(TextureNum, render_target_view) == 32, "fixed");
static_assert(offsetof(TextureNum, colour) == 40, "fixed");
static_assert(offsetof(TextureNum, msaa_texture) == 64, "fixed");

static_assert(sizeof(DrawParams) == 104, "fixed");
static_assert(offsetof(DrawParams, dest_texture) == 8, "fixed");
static_assert(offsetof(DrawParams, reserved_3) == 32, "fixed");
static_assert(offsetof(DrawParams, readback_buffer) == 40, "fixed");
static_assert(offsetof(DrawParams, reserved_4) == 48, "fixed");
static_assert(offsetof(DrawParams, reserved_8) == 64, "fixed");
static_assert(offsetof(DrawParams, reserved_10) == 80, "fixed");
static_assert(offsetof(DrawParams, reserved_15) == 100, "fixed");

static_assert(sizeof(VertexAttribute) == 160, "fixed");
static_assert(offsetof(VertexAttribute, components) == 128, "fixed");
static_assert(offsetof(VertexAttribute, data) == 136, "fixed");
static_assert(offsetof(VertexAttribute, is_element) == 144, "fixed");
static_assert(offsetof(VertexAttribute, reserved) == 148, "fixed");
static_assert(offsetof(VertexAttribute, dirty) == 152, "fixed");
static_assert(offsetof(VertexAttribute, count) == 156, "fixed");

static_assert(sizeof(InputTexture) == 112, "fixed");
static_assert(offsetof(InputTexture, channels) == 16, "fixed");
static_assert(offsetof(InputTexture, generate_mipmap) == 20, "fixed");
static_assert(offsetof(InputTexture, filter) == 24, "fixed");
static_assert(offsetof(InputTexture, pixels) == 32, "fixed");
static_assert(offsetof(InputTexture, still_pixels) == 40, "fixed");
static_assert(offsetof(InputTexture, texture) == 48, "fixed");
static_assert(offsetof(InputTexture, external_texture) == 56, "fixed");
static_assert(offsetof(InputTexture, still_texture) == 64, "fixed");
static_assert(offsetof(InputTexture, still_stale) == 72, "fixed");
static_assert(offsetof(InputTexture, still_tag_a) == 76, "fixed");
static_assert(offsetof(InputTexture, still_tag_b) == 80, "fixed");
static_assert(offsetof(InputTexture, source_kind) == 84, "fixed");
static_assert(offsetof(InputTexture, volume) == 88, "fixed");
static_assert(offsetof(InputTexture, uploaded) == 89, "fixed");
static_assert(offsetof(InputTexture, expanded_pixels) == 96, "fixed");
static_assert(offsetof(InputTexture, expanded_width) == 104, "fixed");
static_assert(offsetof(InputTexture, expanded_height) == 108, "fixed");
