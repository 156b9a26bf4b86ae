#pragma once

#include "job.h"

namespace reference {

/// Draws all frames of a transition's job and writes their pictures.
///
/// @throws std::runtime_error if a shader is refused, a picture cannot be read or written, or a
///         uniform is wrong
void render(const Job& job);

}  // namespace reference
