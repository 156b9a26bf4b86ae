#pragma once

/// The fixed texts that go into every compile, byte for byte as effects and program caches know
/// them.

#include <string_view>

/// Stands in front of every fragment source. The `#define`s let sources written for other platforms
/// pass; `gl_FragCoord` is an ordinary global that the printer recognises.
inline constexpr std::string_view kFragmentPrelude =
    "\n"
    "#define __ANDROID__\n"
    "#define customize_in in\n"
    "#define highp \n"
    "#define mediump \n"
    "#define lowp \n"
    "vec2 TransTc(vec2 tc)\n"
    "{ \n"
    "    return vec2(tc.x, 1.0 - tc.y); \n"
    "}\n"
    "vec2  MovTc(vec2 tc)\n"
    "{ \n"
    "    return tc; \n"
    "}\n"
    "vec4 TransV(vec4 v)\n"
    "{ \n"
    "    v.y*=-1.0; \n"
    "    return v; \n"
    "}\n"
    "vec4 gl_FragCoord;\n";
static_assert(kFragmentPrelude.size() == 271, "hosts and caches rely on the exact text");

/// Stands in front of every vertex source that an effect brings. Its `in` and `out` names are
/// ordinary globals that the printer recognises.
inline constexpr std::string_view kVertexPrelude =
    "\n"
    "in vec4 position;\n"
    "in vec4 texcoord;\n"
    "out vec4 gl_Position;\n"
    "out vec2 tc;\n"
    "#define customize_in in\n"
    "#define customize_out out\n"
    "#define highp \n"
    "#define mediump \n"
    "#define lowp \n"
    "vec2 TransTc(vec2 tc)\n"
    "{ \n"
    "    return vec2(tc.x, 1.0 - tc.y); \n"
    "}\n"
    "vec2  MovTc(vec2 tc)\n"
    "{ \n"
    "    return tc; \n"
    "}\n"
    "vec4 TransV(vec4 v)\n"
    "{ \n"
    "    v.y*=-1.0; \n"
    "    return v; \n"
    "}\n";
static_assert(kVertexPrelude.size() == 329, "hosts and caches rely on the exact text");

/// HLSL of the vertex stage of an effect that brings no vertex source.
inline constexpr std::string_view kFixedVertexShader =
    "\n"
    "struct VertexInput\n"
    "{\n"
    "    float4 position : position;\n"
    "    float4 texcoord : texcoord;\n"
    "};\n"
    "\n"
    "struct VertexOutput\n"
    "{\n"
    "    float4 gl_Position : SV_Position;\n"
    "    float2 tc : TEXCOORD0;\n"
    "};\n"
    "\n"
    "void main(){\n"
    "    return;\n"
    "}\n"
    "\n"
    "VertexOutput mainVS(VertexInput input)\n"
    "{\n"
    "    VertexOutput output;\n"
    "    output.gl_Position = float4(input.position.xy * 2.0 - 1.0, 0.0, 1.0);\n"
    "    output.tc = (input.position.xy - 0.5) + 0.5;\n"
    "    return output;\n"
    "}\n";
static_assert(kFixedVertexShader.size() == 419, "hosts and caches rely on the exact text");
