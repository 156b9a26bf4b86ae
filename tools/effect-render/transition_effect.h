#pragma once

#include <cstdint>

#include "effect_description.h"
#include "options.h"

namespace effect_render {

/// The effect that draws the public transition `options.transition`: its text turned into one of
/// ours, its parameters with their defaults, `progress` from 0 at the first frame to 1 at the last.
/// Inputs are left to the caller.
///
/// Throws a ToolError if the file cannot be read or holds no transition, and a UsageError if the
/// command line gives too few pictures or a parameter that the transition does not have.
EffectDescription DescribeTransition(const Options& options);

/// Sets the parameter `ratio` to that of the picture, in pixels, unless the command line gives it.
void SetRatio(const Options& options, uint32_t width, uint32_t height, EffectDescription& effect);

}  // namespace effect_render
