#pragma once

#include <string>

#include "effect_description.h"

namespace effect_render {

/// Reads the effect.json of a folder; the fields are told in docs/effect-json.md.
///
/// @param folder  UTF-8 path of the folder
/// @returns one effect, or all effects of a chain in the order of drawing
/// Throws a ToolError that names the file and the field.
EffectChain LoadEffectFolder(const std::string& folder);

}  // namespace effect_render
