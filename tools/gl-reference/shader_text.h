#pragma once

#include <cstddef>
#include <string>

#include "DirectXEffectMgr/Source/core/program_source.h"

namespace reference {

/// Complete desktop GLSL 330 texts of one program.
struct ShaderText {
    std::string vertex;
    std::string fragment;
};

/// Puts what an OpenGL host puts around a transition: the version, the uniforms, `getFromColor` and
/// `getToColor`, and a `main` that calls `transition` with the place of the pixel, (0, 0) at the
/// lower left. The size in pixels is the uniform `reference_size`, input N `reference_inputN`.
ShaderText transition_text(const std::string& fragment, size_t inputs);

/// The same around the assembled texts of an effect's program, with `INPUT1(c)` and its like as
/// macros. A vertex shader of its own gets OpenGL's depth, from -1 to 1, and y upwards.
ShaderText effect_text(const AssembledProgram& program, size_t inputs);

}  // namespace reference
