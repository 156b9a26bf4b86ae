#pragma once

#include <string>
#include <vector>

#include "effect_description.h"
#include "json_field.h"

namespace effect_render {

/// The passes that a description asks for, checked and complete: at least one, each with data for
/// all of its vertices in every attribute that any pass names, and in "position" and "texcoord".
///
/// @param root    the whole description; reads "passes", "vertices", "instances", "attributes"
///                and "elements"
/// @param folder  where files named by the description lie
/// @param effect  what is known so far: parameters and programs
std::vector<PassDescription> ReadPasses(const JsonField& root, const std::string& folder,
                                        const EffectDescription& effect);

}  // namespace effect_render
