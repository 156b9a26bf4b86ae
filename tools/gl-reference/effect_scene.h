#pragma once

#include <cstdint>
#include <string>

namespace reference {

/// What to draw of a sample effect's folder.
struct EffectJob {
    std::string folder;
    std::string out;  // PNG files to write; "%d" in it stands for the frame
    int width = 0;    // pixels
    int height = 0;
    int frames = 1;  // moving parameters go from the first to the last
};

/// Draws an effect, or a chain of them, as its effect.json says: passes, programs, vertex data,
/// instances, extra targets, steps, depth, samples and blending.
///
/// @throws std::runtime_error for what is not drawn here (sound, inputs of one channel, variants
///         that change from step to step), or if a shader or a file is refused
void render_effect(const EffectJob& job);

}  // namespace reference
