#pragma once

/// The declarations of an effect's parameters, laid out as the constant buffer is.

#include <string>

#include "movit/effect.h"

/// Replaces `out` by the shader text that declares all of `registry`: a line each in the order of
/// the constant buffer, with lines "uniform float PLACEHOLDER_VALUE_%d;" for each 4 bytes that the
/// buffer skips, numbered from 0. Names stand inside `PREFIX(...)`. Instance parameters are plain
/// uniforms.
void output_uniform_declarations(const movit::Effect& registry, std::string& out);
