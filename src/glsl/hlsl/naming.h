#pragma once

/// Under which names identifiers appear in HLSL.

#include <string>
#include <string_view>

namespace glsl {

/// The name with "AVOID_KEYWORD_CONFLICTS_" in front if it would meet a word of HLSL, else the name
/// itself. Exact and case-sensitive.
///
/// @param isFunctionCall  true for the callee of a call: "cos", "sin", "max" and "min" then stay,
///                        so that calls reach the built-in function
/// @returns `name`, or a text that lives forever
std::string_view avoidKeyword(std::string_view name, bool isFunctionCall);

/// True if the name ends in a digit. Semantics count by such a digit, so a member of `VertexInput`
/// gets "_" behind it.
inline bool needsSemanticMark(std::string_view name) {
    return !name.empty() && name.back() >= '0' && name.back() <= '9';
}

/// The name as a member and semantic of `VertexInput`: "position1" gives "position1_".
std::string semanticName(std::string_view name);

/// The HLSL name of a GLSL built-in that is called differently there, else the name itself.
///
/// @returns `name`, or a text that lives forever
std::string_view renameBuiltin(std::string_view name);

/// True if `name` is `prefix` and nothing but decimal digits behind it: "INPUT", "INPUT12".
bool isNumberedName(std::string_view name, std::string_view prefix);

}  // namespace glsl
