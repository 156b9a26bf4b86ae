#pragma once

#include <string>

#include "effect_description.h"
#include "json_field.h"

namespace effect_render {

/// Reads the list "params" into `effect`: names, types, values and courses.
void ReadParams(const JsonField& field, EffectDescription& effect);

/// Values that replace those of registered parameters: an object of names and numbers.
ParamOverrides ReadOverrides(const JsonField& field, const EffectDescription& effect);

/// Whether the text can name a parameter or a macro in a shader.
bool IsIdentifier(const std::string& name);

}  // namespace effect_render
