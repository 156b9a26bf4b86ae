#include <algorithm>
#include <charconv>

#include "diagnostics/traps/checks.h"

// Calls of built-in functions and of inputs.

namespace diagnostics {

namespace {

using namespace glsl;

// Built-ins of GLSL that HLSL lacks; so it does all that begin with "texture".
constexpr std::string_view kUnknown[] = {
    "lessThanEqual",
    "greaterThanEqual",
    "equal",
    "notEqual",
    "not",
    "matrixCompMult",
    "inverse",
    "outerProduct",
    "roundEven",
    "asinh",
    "acosh",
    "atanh",
    "floatBitsToInt",
    "floatBitsToUint",
    "intBitsToFloat",
    "uintBitsToFloat",
    "bitCount",
    "texelFetch",
    "fma",
};
constexpr std::string_view kTexture = "texture";

bool is_unknown(std::string_view name) {
    return name.substr(0, kTexture.size()) == kTexture ||
           std::find(std::begin(kUnknown), std::end(kUnknown), name) != std::end(kUnknown);
}

class Calls : public TreeVisitor {
public:
    explicit Calls(const TrapScene& scene) : scene_(scene) {}

    void enter(const astExpression& node) override {
        if (node.kind != ExpressionKind::functionCall) {
            return;
        }
        const auto& call = *as<astFunctionCall>(&node);
        if (call.name == "mix" && call.parameters.size() != 3 && !holds_ternary(call)) {
            scene_.report.at(Trap::kMixArguments, node);
        }
        look_at_input(call, "INPUT", scene_.facts.inputs, true);
        look_at_input(call, "AUDIO_INPUT", scene_.facts.audio, false);
        if (scene_.types.function(call.name) != nullptr) {
            return;
        }
        if (is_unknown(call.name)) {
            scene_.report.at(Trap::kUnknownFunction, node);
        } else if (call.name == "lessThan" || call.name == "greaterThan") {
            look_at_comparison(call);
        } else if (call.name == "mod" && call.parameters.size() == 2 &&
                   may_be_negative(call.parameters[0])) {
            scene_.report.at(Trap::kModNegative, node);
        }
    }

private:
    // Arguments that were swallowed have a warning of their own.
    static bool holds_ternary(const astFunctionCall& call) {
        return std::any_of(call.parameters.begin(), call.parameters.end(), [](const auto& node) {
            return node != nullptr && node->kind == ExpressionKind::ternary;
        });
    }

    static bool may_be_negative(const astExpression* node) {
        if (node != nullptr && node->kind == ExpressionKind::operation) {
            return as<astOperationExpression>(node)->operation == Operator::minus;
        }
        return node != nullptr && node->kind == ExpressionKind::unaryMinus;
    }

    void look_at_comparison(const astFunctionCall& call) {
        for (const auto& argument : call.parameters) {
            const ValueClass kind = scene_.types.of(argument).printed;
            if (!isFloatVector(kind) && kind != ValueClass::float_) {
                scene_.report.at(Trap::kIntComparison, call);
                return;
            }
        }
    }

    // On a bare word the first input is read, of the kind that has a first without a number.
    void look_at_input(const astFunctionCall& call, std::string_view word, int32_t count,
                       bool has_bare) {
        if (call.name.substr(0, word.size()) != word) {
            return;
        }
        const std::string_view digits = call.name.substr(word.size());
        int32_t number = has_bare ? 1 : 0;
        if (!digits.empty()) {
            const char* const end = digits.data() + digits.size();
            const auto result = std::from_chars(digits.data(), end, number);
            if (result.ec != std::errc() || result.ptr != end) {
                return;
            }
        }
        if (number < 1 || number > count) {
            scene_.report.at(Trap::kInputNumber, call);
        } else if (!has_bare) {
            scene_.report.at(Trap::kAudioRead, call);
        }
    }

    const TrapScene& scene_;
};

}  // namespace

void check_calls(const TrapScene& scene) {
    Calls calls(scene);
    walk(scene.unit, calls);
}

}  // namespace diagnostics
