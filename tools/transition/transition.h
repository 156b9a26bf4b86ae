#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Turns a public transition (`vec4 transition(vec2 uv)` with `getFromColor`, `getToColor`,
/// `progress`, `ratio` and `uniform` parameters) into an effect of this library.
namespace transition {

/// A parameter of the transition, or one of the two that every transition has.
struct Param {
    std::string name;           // the author's
    std::string type;           // the author's: float int bool vec2 ... mat4 ivec2 ...
    std::string registered;     // the type to register it with: int float vec2 vec3 vec4 mat2 ...
    std::vector<float> values;  // its default, one number per element
};

struct Options {
    /// Rewrite what the dialect refuses or draws otherwise, keeping its meaning.
    bool rewrites = true;
};

/// The result. Line N of the transition is line N of `glsl`.
struct Effect {
    std::string glsl;                   // a fragment source for the library
    std::vector<Param> params;          // "progress" and "ratio" first
    std::vector<std::string> samplers;  // `uniform sampler2D` names: inputs 3, 4, ...
    std::vector<std::string> rewrites;  // one line each: what was rewritten, for the author
    std::string error;                  // empty, or why the text is no transition
};

/// @param text     the file as it stands
/// @param options  what may be changed
Effect adapt(std::string_view text, const Options& options);

}  // namespace transition
