#pragma once

#include <string>
#include <vector>

#include "diagnostics/effect_facts.h"
#include "effect_description.h"

namespace effect_render {

/// What the shader texts of an effect depend on: one entry for each program that the library
/// compiles for it, in the order in which it does so. Variants that only a later step uses make
/// entries of their own.
std::vector<diagnostics::EffectFacts> FactsOf(const EffectDescription& effect);

/// Prints a warning for each place of the authors' files that is drawn otherwise than it reads, or
/// that the HLSL compiler will refuse. A file that cannot be read has none.
void PrintWarnings(const EffectChain& effects);

/// Prints where in the authors' files a failure comes from, if the shaders are the cause: each
/// error with its line and a caret. Prints nothing otherwise.
///
/// @param log  what the library logged since its last success
void ExplainFailure(const EffectChain& effects, const std::string& log);

}  // namespace effect_render
