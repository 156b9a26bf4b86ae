#include "shader_text.h"

#include <string_view>

namespace reference {

namespace {

constexpr std::string_view kVersion = "#version 330 core\n";

constexpr std::string_view kQuadVertex =
    "in vec4 position;\nvoid main() {\n"
    "    gl_Position = vec4(position.xy * 2.0 - 1.0, 0.0, 1.0);\n}\n";

// The place in the picture, worked out as the library works it out: from the top, then turned over.
// A bit more or less here would be another grain in everything that draws noise.
constexpr std::string_view kPlace =
    "vec2(gl_FragCoord.x / reference_size.x, "
    "1.0 - (reference_size.y - gl_FragCoord.y) / reference_size.y)";

constexpr std::string_view kOutputs = "uniform vec2 reference_size;\nout vec4 reference_color;\n";

// What the library does behind an effect's own vertex shader, and OpenGL's range of depth.
constexpr std::string_view kVertexEnd =
    "\n#undef main\nvoid main() {\n    effect_main();\n    gl_Position.y = -gl_Position.y;\n"
    "    gl_Position.z = 2.0 * gl_Position.z - gl_Position.w;\n}\n";

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

std::string main_calling(std::string_view function, std::string_view place) {
    std::string text = "\nvoid main() {\n    reference_color = ";
    text.append(function).append("(").append(place).append(");\n}\n");
    return text;
}

}  // namespace

ShaderText transition_text(const std::string& fragment, size_t inputs) {
    ShaderText text;
    text.vertex = std::string(kVersion).append(kQuadVertex);
    text.fragment = std::string(kVersion) + sampler_macros(inputs);
    text.fragment.append(kOutputs);
    text.fragment +=
        "uniform float progress;\nuniform float ratio;\n"
        "vec4 getFromColor(vec2 c) { return INPUT1(c); }\n"
        "vec4 getToColor(vec2 c) { return INPUT2(c); }\n"
        "#define texture2D texture\n#line 1\n";
    text.fragment += fragment + main_calling("transition", kPlace);
    return text;
}

ShaderText effect_text(const AssembledProgram& program, size_t inputs) {
    ShaderText text;
    text.vertex = std::string(kVersion);
    if (program.has_vertex) {
        text.vertex += "#define main effect_main\n" + without_predeclared(program.vertex);
        text.vertex += kVertexEnd;
    } else {
        text.vertex += kQuadVertex;
    }
    text.fragment = std::string(kVersion) + sampler_macros(inputs);
    text.fragment.append(kOutputs).append(program.has_vertex ? "in vec2 tc;\n" : "");
    text.fragment += without_predeclared(program.fragment);
    text.fragment += main_calling("FUNCNAME", program.has_vertex ? "tc" : kPlace);
    return text;
}

}  // namespace reference
