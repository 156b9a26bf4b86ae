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

/// A vertex attribute of one pass with the buffer made from it.
struct VertexAttributeSlot {
    VertexAttribute attribute;
    ID3D11Buffer* buffer = nullptr;  // owned by the effect; null until the first use
};
