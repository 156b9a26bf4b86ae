#pragma once

/// The stock that generated effects are put together from. A `@` in a text stands for a number that
/// differs from effect to effect, a `$` for the number of the repetition in a large source.

namespace bench {

/// A helper function and statements that use it. The statements see `tc` (vec2), `uv` (vec2) and
/// `color` (vec4).
struct Snippet {
    const char* function;
    const char* statements;
};

constexpr Snippet kSnippets[] = {
    {"float hash$(vec2 p) {\n    vec3 q = fract(vec3(p.xyx) * @);\n"
     "    q += dot(q, q.yzx + 33.33);\n    return fract((q.x + q.y) * q.z);\n}\n",
     "    color.rgb += (hash$(uv * 640.0) - 0.5) * GRAIN;\n"},
    {"vec2 turn$(vec2 p, float angle) {\n    float s = sin(angle);\n    float c = cos(angle);\n"
     "    return mat2(c, -s, s, c) * (p - 0.5) + 0.5;\n}\n",
     "    uv = turn$(uv, PREFIX(progress) * @);\n    color = mix(color, INPUT1(uv), @);\n"},
    {"float luma$(vec3 c) {\n    return dot(c, vec3(0.2126, 0.7152, 0.0722));\n}\n",
     "    float grey$ = luma$(color.rgb);\n"
     "    color.rgb = mix(vec3(grey$, grey$, grey$), color.rgb, 1.0 + PREFIX(amount) * @);\n"},
    {"vec3 screen$(vec3 under, vec3 over) {\n"
     "    return vec3(1.0, 1.0, 1.0) - (1.0 - under) * (1.0 - over);\n}\n",
     "    color.rgb = screen$(color.rgb, PREFIX(tint) * @);\n"},
    {"vec4 blur$(vec2 at, vec2 step) {\n    vec4 sum = vec4(0.0, 0.0, 0.0, 0.0);\n"
     "    for (int i = -4; i <= 4; i++) {\n        float w = exp(-float(i * i) * @);\n"
     "        sum += INPUT1(at + step * float(i)) * w;\n    }\n    return sum / 4.5;\n}\n",
     "    color = mix(color, blur$(uv, vec2(@ / 640.0, 0.0)), PREFIX(amount));\n"},
    {"float box$(vec2 p, vec2 low, vec2 high) {\n    vec2 a = step(low, p);\n"
     "    vec2 b = step(p, high);\n    return a.x * a.y * b.x * b.y;\n}\n",
     "    if (box$(uv, vec2(0.1, @), vec2(0.9, 0.95)) > 0.5) {\n"
     "        color.rgb *= PREFIX(tint);\n    } else {\n        color.a = 1.0;\n    }\n"},
    {"float wave$(float x, float phase) {\n    float y = sin(x * TAU + phase);\n"
     "    y += sin(x * TAU * 2.0 + phase * @) * 0.5;\n    return y / 1.5;\n}\n",
     "    uv.y += wave$(uv.x, PREFIX(progress) * TAU) * @ * 0.01;\n"
     "    color = max(color, INPUT1(uv));\n"},
    {"vec3 curve$(vec3 c, float lift, float gain) {\n    c = clamp(c * gain + lift, 0.0, 1.0);\n"
     "    return pow(c, vec3(@, 1.1, 0.9));\n}\n",
     "    color.rgb = curve$(color.rgb, PREFIX(amount) * 0.1, 1.05);\n"},
    {"vec2 polar$(vec2 p) {\n    p -= vec2(0.5, 0.5);\n    float r = length(p);\n"
     "    float a = atan(p.y, p.x) / TAU;\n    return vec2(fract(a + @), r * 2.0);\n}\n",
     "    vec2 bent$ = polar$(uv);\n    color = mix(color, INPUT1(bent$), smoothstep(0.2, 0.8, "
     "bent$.y));\n"},
    {"float edge$(vec2 at) {\n    vec2 px = 1.0 / PREFIX(iResolution);\n"
     "    vec3 l = INPUT1(at - vec2(px.x, 0.0)).rgb;\n"
     "    vec3 r = INPUT1(at + vec2(px.x, 0.0)).rgb;\n    return length(l - r) * @;\n}\n",
     "    color.rgb += PREFIX(tint) * edge$(uv);\n"},
};

constexpr const char* kFragmentHead =
    "#define TAU 6.28318531\n#define GRAIN 0.04\n"
    "customize_in vec4 shade;\n\n";

constexpr const char* kFragmentEntry =
    "vec4 FUNCNAME(vec2 tc) {\n    vec2 uv = tc;\n    vec4 color = INPUT1(uv);\n";

constexpr const char* kFragmentEnd =
    "#ifdef KEEP_ALPHA\n    color.a = 1.0;\n#endif\n"
    "    return color * shade;\n}\n";

constexpr const char* kVertexText =
    "#define TURN 6.28318531\ncustomize_out vec4 shade;\n\n"
    "void main() {\n    vec2 corner = position.xy * 2.0 - 1.0;\n"
    "    float bend = sin(corner.x * TURN * @ + PREFIX(progress)) * 0.05;\n"
    "    gl_Position = vec4(corner.x, corner.y + bend, 0.0, 1.0);\n"
    "    shade = vec4(1.0, 1.0 - bend, 1.0, 1.0);\n    tc = texcoord.xy;\n}\n";

}  // namespace bench
