#pragma once

#include <cstdint>

#include "DirectXEffectMgr/Include/IOpenGLEffectEngine.h"
#include "job.h"
#include "options.h"

namespace effect_render {

/// Draws the frames of a job, from and to where the options say. Ends between two frames once
/// WasInterrupted(). Throws a ToolError.
///
/// @returns the number of frames
int64_t DrawFrames(const Options& options, const Job& job, IOpenGLEffectEngine& engine);

}  // namespace effect_render
