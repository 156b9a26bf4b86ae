#pragma once

/// The measurements of frames, one function for each table.

#include "report.h"

namespace bench {

struct FrameScale {
    int rounds = 11;          // timed blocks of frames of each kind
    int frames = 200;         // frames in a block at the smallest size
    int live_effects = 1000;  // how many effects live at once at most
};

/// Translation beside D3DCompile of the same effects, and a second InitEffect beside the first.
Section measure_compile(const FrameScale& scale);

/// DrawEffect on a device that does nothing, beside the same calls by hand; heap and objects of a
/// steady frame. Throws if the calls by hand are not the library's.
Section measure_steady_frame(const FrameScale& scale);

/// Frames on the real device beside the same calls and a careful programmer's calls by hand.
Section measure_real_frames(const FrameScale& scale);

/// Threaded beside inline mode, and a bare hand-over between two threads.
Section measure_threads(const FrameScale& scale);

/// Time per draw and memory per effect with 1 to `live_effects` effects alive, always the same one
/// drawn and each in turn.
Section measure_live_effects(const FrameScale& scale);

/// Time over passes, instances and parameters.
Section measure_slopes(const FrameScale& scale);

}  // namespace bench
