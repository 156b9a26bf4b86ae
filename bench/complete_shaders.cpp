#include "DirectXEffectMgr/Source/core/source_assembly.h"
#include "effect_source.h"

namespace bench {
namespace {

constexpr const char* kVersion = "#version 330 core\n";

constexpr const char* kHelpers =
    "vec2 TransTc(vec2 tc) { return vec2(tc.x, 1.0 - tc.y); }\n"
    "vec2 MovTc(vec2 tc) { return tc; }\n"
    "vec4 TransV(vec4 v) { v.y *= -1.0; return v; }\n";

constexpr const char* kFragmentHead =
    "#define customize_in in\n"
    "in vec2 orvane_tc;\n"
    "out vec4 orvane_color;\n";

constexpr const char* kFragmentMain =
    "\nvoid main() { orvane_color = FUNCNAME(orvane_tc).zyxw; }\n";

constexpr const char* kVertexHead =
    "#define customize_in in\n"
    "#define customize_out out\n"
    "in vec4 position;\n"
    "in vec4 texcoord;\n"
    "out vec2 tc;\n";

// "float[]" of 3 named w: "uniform float PREFIX_w[3];"
std::string declare(const Parameter& parameter) {
    std::string type = parameter.type;
    std::string size;
    if (type.rfind("instance-", 0) == 0) {
        type.erase(0, 9);
    }
    if (type.size() > 2 && type.compare(type.size() - 2, 2, "[]") == 0) {
        type.resize(type.size() - 2);
        size = "[" + std::to_string(parameter.count) + "]";
    }
    return "uniform " + type + " PREFIX_" + parameter.name + size + ";\n";
}

std::string declare_parameters(const EffectSource& effect) {
    std::string text = "uniform vec2 iResolution;\nuniform vec2 iResolutionOrig;\n";
    for (const auto& [name, value] : effect.defines) {
        text += "#define " + name + " " + value + "\n";
    }
    for (const Parameter& parameter : effect.parameters) {
        text += declare(parameter);
    }
    return text;
}

// A sampler and the function that reads it as the generated text does.
std::string declare_input(const std::string& name) {
    return "uniform sampler2D " + name + "_sampler;\nvec4 " + name + "(vec2 at) { return texture(" +
           name + "_sampler, TransTc(at)).zyxw; }\n";
}

std::string declare_inputs(const EffectSource& effect) {
    std::string text;
    for (int32_t i = 1; i <= effect.input_count; ++i) {
        text += declare_input("INPUT" + std::to_string(i));
    }
    for (int32_t i = 1; i <= effect.audio_count; ++i) {
        text += declare_input("AUDIO_INPUT" + std::to_string(i));
    }
    return text;
}

std::string expand(const std::string& text) {
    return ExpandDrawInstance(ExpandPrefix(text, kPrefixWord), kPrefixWord);
}

}  // namespace

CompleteShaders complete_shaders(const EffectSource& effect) {
    const std::string parameters = declare_parameters(effect);
    CompleteShaders shaders;
    shaders.fragment = std::string(kVersion) + kFragmentHead + kHelpers + parameters +
                       declare_inputs(effect) + expand(effect.fragment) + kFragmentMain;
    if (!effect.vertex.empty()) {
        shaders.vertex =
            std::string(kVersion) + kVertexHead + kHelpers + parameters + expand(effect.vertex);
    }
    return shaders;
}

}  // namespace bench
