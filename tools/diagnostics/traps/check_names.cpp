#include <algorithm>

#include "diagnostics/traps/checks.h"
#include "glsl/hlsl/naming.h"

// Names that mean something to HLSL or to the library.

namespace diagnostics {

namespace {

using namespace glsl;

// Sorted; those that the translator renames are not among them.
constexpr std::string_view kHlslWords[] = {
    "BlendState",
    "Buffer",
    "GeometryShader",
    "NULL",
    "PixelShader",
    "SamplerState",
    "Texture2D",
    "asm_fragment",
    "auto",
    "catch",
    "cbuffer",
    "column_major",
    "compile",
    "compile_fragment",
    "const_cast",
    "decl",
    "delete",
    "explicit",
    "export",
    "friend",
    "fxgroup",
    "groupshared",
    "lineadj",
    "mutable",
    "nointerpolation",
    "operator",
    "packoffset",
    "pixelshader",
    "private",
    "protected",
    "register",
    "row_major",
    "sampler",
    "sampler_state",
    "signed",
    "snorm",
    "stateblock",
    "static_cast",
    "tbuffer",
    "technique",
    "technique10",
    "technique11",
    "texture2D",
    "throw",
    "triangleadj",
    "try",
    "typename",
    "unorm",
    "vertexshader",
    "virtual",
};

constexpr bool is_sorted() {
    for (size_t i = 1; i < std::size(kHlslWords); ++i) {
        if (kHlslWords[i] <= kHlslWords[i - 1]) {
            return false;
        }
    }
    return true;
}
static_assert(is_sorted(), "keep kHlslWords in byte order");

bool is_hlsl_word(std::string_view name) {
    return std::binary_search(std::begin(kHlslWords), std::end(kHlslWords), name);
}

bool is_input_name(std::string_view name) {
    return name.size() > 5 && isNumberedName(name, "INPUT");
}

class Names : public TreeVisitor {
public:
    explicit Names(TrapReport& report) : report_(report) {}

    void enter(const astVariable& variable) override {
        const bool is_field = variable.variableType == VariableKind::field;
        if (is_hlsl_word(variable.name)) {
            report_.at_name(Trap::kHlslWord, variable);
        } else if (is_field && avoidKeyword(variable.name, false) != variable.name) {
            report_.at_name(Trap::kFieldName, variable);
        } else if (!is_field && is_input_name(variable.name)) {
            report_.at_name(Trap::kInputName, variable);
        }
    }
    void enter(const astFunction& function) override {
        if (is_hlsl_word(function.name)) {
            report_.at_name(Trap::kHlslWord, function);
        }
    }

private:
    TrapReport& report_;
};

}  // namespace

void check_names(const TrapScene& scene) {
    Names names(scene.report);
    walk(scene.unit, names);
    for (const auto& structure : scene.unit.structures) {
        if (structure == nullptr) {
            continue;
        }
        if (structure->name.empty()) {
            scene.report.at(Trap::kAnonymousStruct, *structure);
        } else if (is_hlsl_word(structure->name)) {
            scene.report.at(Trap::kHlslWord, *structure);
        }
    }
}

}  // namespace diagnostics
