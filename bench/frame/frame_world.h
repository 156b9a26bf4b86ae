#pragma once

/// What several tables share: the usual effect's texts and frames timed in blocks.

#include <d3d11.h>

#include <functional>
#include <vector>

#include "effect_source.h"
#include "fake/world.h"
#include "frame/hand_frame.h"
#include "frame/host_library.h"
#include "ours.h"
#include "timing.h"

namespace bench {

/// The usual effect as the translation sees it.
EffectSource usual_source();

/// Its HLSL.
HlslTexts usual_texts();

/// A device that does nothing, for the whole process: the library's pool outlives an engine, and
/// with it what it holds of the device.
fake::World& null_world();

/// Waits until the device has done all that was given to it.
void wait_for_device(ID3D11Device* device);

/// Microseconds per call of each of `frames`, in `rounds` blocks of `count` calls. The blocks of
/// the different kinds take turns; `after_block` runs inside the time of each. A short block of a
/// short frame is seldom cut by another program's turn on the processor.
template <class AfterBlock>
Rounds block_times(int rounds, int count, const std::vector<std::function<void()>>& frames,
                   const AfterBlock& after_block) {
    return in_rotation(
        frames.size(), rounds,
        [&frames, count, &after_block](size_t i) {
            for (int n = 0; n < count; ++n) {
                frames[i]();
            }
            after_block();
        },
        static_cast<double>(count));
}

/// Blocks of frames that take a microsecond or so: many, and short.
constexpr int kShortBlock = 20;
constexpr int kShortRounds = 50;  // for each round that was asked for

inline Rounds short_block_times(int rounds, const std::vector<std::function<void()>>& frames) {
    return block_times(rounds * kShortRounds, kShortBlock, frames, [] {});
}

}  // namespace bench
