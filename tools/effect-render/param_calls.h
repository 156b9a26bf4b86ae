#pragma once

#include <string>
#include <vector>

#include "DirectXEffectMgr/Include/IOpenGLEffect.h"
#include "params.h"

namespace effect_render {

/// Registers a parameter of any type. For arrays and instance parameters the library keeps the
/// address of `values`, which must then stay as they are until replaced.
void RegisterParam(IOpenGLEffect& effect, const std::string& name, ParamType type,
                   PackedValues& values);

/// Sets a registered parameter for all passes (one entry) or for each pass (one entry per pass).
/// The library keeps addresses of arrays and of what is given per pass.
void SetParam(IOpenGLEffect& effect, const std::string& name, ParamType type,
              std::vector<PackedValues>& values);

}  // namespace effect_render
