#pragma once

/// Small effects that many tests draw.
namespace host {

/// One colour, no input.
constexpr char kRed[] = "vec4 FUNCNAME(vec2 tc) { return vec4(1.0, 0.0, 0.0, 1.0); }\n";

/// The first input as it is.
constexpr char kPass[] = "vec4 FUNCNAME(vec2 tc) { return INPUT1(tc); }\n";

/// A vertex shader of the effect's own that does what the fixed one does.
constexpr char kVertex[] =
    "void main()\n{\n"
    "    gl_Position = vec4(position.xy * 2.0 - 1.0, 0.0, 1.0);\n"
    "    tc = texcoord.xy;\n"
    "}\n";

/// No GLSL: the parser refuses it.
constexpr char kBadGlsl[] = "vec4 FUNCNAME(vec2 tc) { return ; ) }\n";

/// GLSL that parses, and HLSL that the compiler refuses.
constexpr char kBadHlsl[] = "vec4 FUNCNAME(vec2 tc) { return no_such_function(tc); }\n";

}  // namespace host
