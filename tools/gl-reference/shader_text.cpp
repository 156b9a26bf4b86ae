#include "shader_text.h"

#include <string_view>

namespace reference {

namespace {

constexpr std::string_view kVersion = "#version 330 core\n";

constexpr std::string_view kQuadVertex =
    "in vec4 position;\nout vec2 tc;\nvoid main() {\n    tc = position.xy;\n"
    "    gl_Position = vec4(position.xy * 2.0 - 1.0, 0.0, 1.0);\n}\n";

// Globals of the assembled texts that desktop GLSL declares by itself.
constexpr std::string_view kPredeclared[] = {"vec4 gl_FragCoord;\n", "out vec4 gl_Position;\n"};

std::string without_predeclared(std::string text) {
    for (const std::string_view line : kPredeclared) {
        const size_t at = text.find(line);
        if (at != std::string::npos) {
            text.replace(at, line.size() - 1, "");
        }
    }
    return text;
}

std::string sampler_macros(size_t count) {
    std::string text;
    for (size_t i = 1; i <= count; ++i) {
        const std::string number = std::to_string(i);
        text.append("uniform sampler2D reference_input").append(number);
        text.append(";\n#define INPUT").append(number);
        text.append("(c) texture(reference_input").append(number).append(", (c))\n");
    }
    return text + "#define INPUT(c) INPUT1(c)\n";
}

std::string effect_fragment(const Job& job) {
    // With a vertex shader of its own the fragment text may read `tc` as an ordinary name.
    return std::string(kVersion) + sampler_macros(job.inputs.size()) +
           without_predeclared(job.fragment) +
           "\nin vec2 tc;\nout vec4 reference_color;\nvoid main() {\n    reference_color = "
           "FUNCNAME(tc);\n}\n";
}

std::string transition_fragment(const Job& job) {
    return std::string(kVersion) + sampler_macros(job.inputs.size()) +
           "uniform float progress;\nuniform float ratio;\nin vec2 tc;\nout vec4 "
           "reference_color;\nvec4 getFromColor(vec2 c) { return INPUT1(c); }\nvec4 "
           "getToColor(vec2 c) { return INPUT2(c); }\n#line 1\n" +
           job.fragment + "\nvoid main() {\n    reference_color = transition(tc);\n}\n";
}

}  // namespace

ShaderText complete_text(const Job& job) {
    ShaderText text;
    text.vertex = std::string(kVersion);
    text.vertex += job.vertex.empty() ? std::string(kQuadVertex) : without_predeclared(job.vertex);
    text.fragment = job.transition ? transition_fragment(job) : effect_fragment(job);
    return text;
}

}  // namespace reference
