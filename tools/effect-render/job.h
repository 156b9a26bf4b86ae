#pragma once

#include <cstdint>
#include <optional>

#include "effect_description.h"
#include "options.h"

namespace effect_render {

/// All that is to be drawn: the effects as described and as the command line changes them.
struct Job {
    EffectChain effects;  // at least one; each but the first may read the one before
    uint32_t width = 0;   // pixels, the same for all effects
    uint32_t height = 0;
};

/// Brings a command line and the effect that it names together. Reads the description and the
/// header of the first picture, but no shader. Throws a ToolError or UsageError.
Job MakeJob(const Options& options);

/// How far moving parameters have come at a frame: 0 at the first of `span`, 1 at the last;
/// nothing for a span of one frame, where parameters show their still values.
std::optional<double> WayAt(int32_t frame, const FrameRange& span);

}  // namespace effect_render
