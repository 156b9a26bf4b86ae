#pragma once

#include <string>
#include <vector>

#include "effect-render/effect_description.h"
#include "gl_objects.h"

namespace reference {

/// Values of parameters by name, all elements in a row.
using ParamValues = effect_render::ParamOverrides;

/// Sets a uniform of floats: one to four of them are a scalar or a vector. A name that the program
/// does not use is ignored.
void set_floats(GLuint program, const std::string& name, const std::vector<double>& values);

/// Sets all parameters of an effect for one draw of the current program.
///
/// @param values     of the frame and step
/// @param overrides  of the pass, before `values`
/// @param instance   whose values the instance parameters show
void set_params(GLuint program, const std::vector<effect_render::ParamTrack>& params,
                const ParamValues& values, const ParamValues& overrides, size_t instance);

}  // namespace reference
