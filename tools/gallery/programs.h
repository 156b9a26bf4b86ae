#pragma once

#include <string>
#include <vector>

#include "DirectXEffectMgr/Source/core/program_source.h"
#include "effect-render/effect_description.h"

namespace gallery {

/// One of an effect's programs on its way through the library.
struct Program {
    std::string name;       // empty for the main one
    AssembledProgram glsl;  // as the parser gets it
    ProgramText hlsl;       // as the compiler gets it; both empty if the parser refuses a stage
};

/// All programs of an effect, the main one first, with its own segment variants. Needs no device.
/// Throws a ToolError for a file that cannot be read, or sources that cannot be put together.
std::vector<Program> translate(const effect_render::EffectDescription& effect);

}  // namespace gallery
