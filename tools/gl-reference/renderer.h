#pragma once

#include "job.h"

namespace reference {

/// Draws all frames of a job on the current context and writes their PNG files.
///
/// Inputs are sampled with a linear filter and mirrored repeat; the target has 8 bits a channel.
/// @throws std::runtime_error naming the file, or with the driver's text for a refused shader
void render(const Job& job);

}  // namespace reference
