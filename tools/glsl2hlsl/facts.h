#pragma once

/// The effect that the command line describes.

#include "diagnostics/effect_facts.h"
#include "options.h"

namespace glsl2hlsl {

/// Files, parameters, definitions and counts, as they were given.
diagnostics::EffectFacts facts_of(const Options& options);

}  // namespace glsl2hlsl
