#pragma once

#include <cstdint>

#include "DirectXEffectMgr/Include/OpenGLEffectTypes.h"

struct ID3D11DeviceContext;

/// Puts a picture's view and sampler on a slot of both stages, nulls included. A slot that the
/// device doesn't have is left out; there are more for views than for samplers.
///
/// @param context  may be null: nothing is bound then
void bind_picture(ID3D11DeviceContext* context, const GpuData& picture, int32_t slot);
