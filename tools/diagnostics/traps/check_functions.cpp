#include <algorithm>

#include "diagnostics/traps/checks.h"

// Functions of the author's own: names, results and parameters.

namespace diagnostics {

namespace {

using namespace glsl;

// A call of these is printed as the built-in one, whoever defined them.
constexpr std::string_view kBuiltins[] = {
    "sin", "cos",  "max",  "min",      "mod",         "fract", "inversesqrt",
    "mix", "atan", "dFdx", "lessThan", "greaterThan", "dFdy",
};

void look_at_parameter(const astFunctionParameter& parameter, const TrapScene& scene) {
    if (parameter.name.empty()) {
        scene.report.at(Trap::kUnnamedParameter, parameter);
    } else if (parameter.name == "gl_FragCoord") {
        scene.report.at_name(Trap::kParameterName, parameter);
    }
    const bool goes_out = parameter.storage == kStorageOut || parameter.storage == kStorageInOut;
    if (parameter.isArray && goes_out) {
        scene.report.at_name(Trap::kOutArray, parameter);
    } else if (parameter.storage == kStorageInOut) {
        scene.report.at_name(Trap::kInout, parameter);
    }
    if (parameter.isArray && std::any_of(parameter.arraySizes.begin(), parameter.arraySizes.end(),
                                         [](const auto& size) { return size == nullptr; })) {
        scene.report.at_name(Trap::kUnsizedArray, parameter);
    }
}

}  // namespace

void check_functions(const TrapScene& scene) {
    for (const auto& function : scene.unit.functions) {
        if (function == nullptr) {
            continue;
        }
        const bool is_main = scene.is_vertex && function->name == "main";
        if (is_main && function->isPrototype) {
            scene.report.at_name(Trap::kMainPrototype, *function);
        }
        if (std::find(std::begin(kBuiltins), std::end(kBuiltins), function->name) !=
            std::end(kBuiltins)) {
            scene.report.at_name(Trap::kBuiltinName, *function);
        }
        const ValueClass result = class_of(function->returnType);
        if (!function->isPrototype &&
            (result == ValueClass::struct_ || result == ValueClass::double_)) {
            scene.report.at_name(Trap::kStructReturn, *function);
        }
        for (const auto& parameter : function->parameters) {
            if (parameter != nullptr) {
                look_at_parameter(*parameter, scene);
            }
        }
    }
}

}  // namespace diagnostics
