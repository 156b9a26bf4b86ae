#pragma once

/// Records of the device half that the host never sees.

#include "DirectXEffectMgr/Include/OpenGLEffectTypes.h"
#include "DirectXEffectMgr/Source/core/program_record.h"

struct ID3D11Buffer;
struct ID3D11DepthStencilView;

/// The depth buffer of a colour target. The effect owns the record and its eight objects; each is
/// made only while its field is null.
struct FboDepth {
    GpuData depth;  // single-sample texture, view for shaders and sampler
    ID3D11DepthStencilView* depth_view = nullptr;
    GpuData msaa_depth;  // the same with four samples
    ID3D11DepthStencilView* msaa_depth_view = nullptr;
    uint32_t width = 0;  // size in pixels that the objects were made at
    uint32_t height = 0;
};

/// Values of VertexAttributeSlot::vertex_input that are no position.
constexpr int32_t kNoVertexInput = -1;
constexpr int32_t kVertexInputUnknown = -2;

/// A vertex attribute of one pass with the buffer made from it.
struct VertexAttributeSlot {
    VertexAttribute attribute;
    ID3D11Buffer* buffer = nullptr;              // owned by the effect; null until the first use
    int32_t vertex_input = kVertexInputUnknown;  // found once: see FindVertexInput
};

/// The effect's flags and size as one draw sees them, from its start to its end.
struct DrawSettings {
    uint32_t width, height;  // pixels
    bool depth_test;         // depth is tested and may be written per pass
    bool has_depth;          // the target has a depth buffer
    bool extra_depths;       // so have the further targets
    bool msaa;
    int32_t primitive_mode;
};

/// What one pass draws.
struct PassDraw {
    bool indexed;
    uint32_t index_count;  // of an indexed draw
    uint32_t vertices;     // of the other kind
};
