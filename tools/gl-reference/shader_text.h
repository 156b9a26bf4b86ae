#pragma once

#include <string>

#include "job.h"

namespace reference {

/// Complete desktop GLSL 330 texts of one program.
struct ShaderText {
    std::string vertex;
    std::string fragment;
};

/// Puts what an OpenGL host puts around an effect: the version, samplers with `INPUT1(c)` and its
/// like as macros, and a `main` that calls `FUNCNAME` (or `transition`) with the coordinate of the
/// pixel, (0, 0) at the lower left.
ShaderText complete_text(const Job& job);

}  // namespace reference
