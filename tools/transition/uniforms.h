#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "transition/edits.h"
#include "transition/tokens.h"
#include "transition/transition.h"

namespace transition {

/// The `uniform` declarations of a transition.
struct Uniforms {
    std::vector<Param> params;
    std::vector<std::string> samplers;
};

/// Reads all global `uniform` declarations and notes their removal in `edits`.
///
/// The default of a parameter stands in a comment on its line ("// = 0.2", "/* = 0.2 */") or as
/// an initialiser. A parameter without one is 0.
Uniforms take_uniforms(std::string_view text, const std::vector<Token>& tokens, Edits& edits);

/// The numbers of a default such as "vec2(0.5, 1)", "true", "-1" or "1.0/3.0"; a single number for
/// a vector stands for all elements.
std::vector<float> default_values(std::string_view text, size_t elements);

}  // namespace transition
