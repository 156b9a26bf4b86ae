#pragma once

/// The effect that the command line describes, as far as its shader text depends on it.

#include <string>

#include "options.h"

namespace glsl2hlsl {

/// The declarations of all parameters and definitions, those that every effect has among them, as
/// the library makes them.
std::string declarations(const Options& options);

}  // namespace glsl2hlsl
