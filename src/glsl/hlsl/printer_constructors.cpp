#include "glsl/hlsl/printer.h"

namespace glsl {

namespace {

// The helper that spreads one scalar over a vector or a matrix, with its bracket. "gloabal" is how
// the prelude spells it.
std::string_view helperOf(ValueClass kind) {
    constexpr std::string_view kFloats[] = {"gloabal_float2_Constructor(",
                                            "gloabal_float3_Constructor(",
                                            "gloabal_float4_Constructor("};
    constexpr std::string_view kInts[] = {"gloabal_int2_Constructor(", "gloabal_int3_Constructor(",
                                          "gloabal_int4_Constructor("};
    constexpr std::string_view kMatrices[] = {"gloabal_float2x2_Constructor(",
                                              "gloabal_float3x3_Constructor(",
                                              "gloabal_float4x4_Constructor("};
    const uint32_t place = dimension(kind) - 2;
    return isMatrix(kind) ? kMatrices[place] : isIntVector(kind) ? kInts[place] : kFloats[place];
}

bool isVector(ValueClass kind) {
    return isFloatVector(kind) || isIntVector(kind);
}

}  // namespace

Value Printer::printConstructor(astType* type, const list<astExpression>& parameters,
                                const astNode& at) {
    const size_t begin = text_.size();
    const Value value = printType(type);
    if (value.kind == ValueClass::boolean) {
        if (parameters.size() == 1) {
            printExpression(parameters[0]);
        }
        text_.truncate(begin);
        text_.put("true");  // On purpose: bool(x) always was true, and effects draw with it.
        return value;
    }
    text_.put('(');
    if (isMatrix(value.kind)) {
        printMatrixArguments(value.kind, parameters, at);
    } else if (isVector(value.kind) && parameters.size() <= 1) {
        printVectorArgument(value.kind, parameters);
    } else if (parameters.size() == 1) {
        printTwofold(parameters[0]);
    } else if (!parameters.empty()) {
        printArguments(parameters);
    } else if (value.kind == ValueClass::float_) {
        text_.put("0.0f");
    } else if (value.kind == ValueClass::integer) {
        text_.put('0');
    }
    text_.put(')');
    return value;
}

void Printer::printMatrixArguments(ValueClass kind, const list<astExpression>& parameters,
                                   const astNode& at) {
    const size_t side = dimension(kind);
    const size_t count = parameters.size();
    if (count <= 1) {
        text_.put(helperOf(kind));
        if (count == 1) {
            printTwofold(parameters[0]);
        } else {
            text_.put("1.0f");
        }
        text_.put(')');
    } else if (count == side || count == side * side) {
        printArguments(parameters);
    } else {
        complain("error line :%d,%d  mat parameters's size is wrong", at);
    }
}

// Nothing, or one argument. Only an argument of the vector's own size does without the helper.
void Printer::printVectorArgument(ValueClass kind, const list<astExpression>& parameters) {
    const size_t begin = text_.size();
    const std::string_view helper = helperOf(kind);
    text_.put(helper);
    if (parameters.empty()) {
        text_.put(isIntVector(kind) ? "0" : "0.0f");
    } else {
        const ValueClass argument = printTwofold(parameters[0]).kind;
        if (isVector(argument) && dimension(argument) == dimension(kind)) {
            text_.erase(begin, helper.size());
            return;
        }
    }
    text_.put(')');
}

// An argument that is walked for its class and then for its text.
Value Printer::printTwofold(astExpression* argument) {
    const size_t begin = text_.size();
    beginTwofoldWalk();
    const Value value = printExpression(argument);
    if (needsSecondWalk(begin)) {
        printExpression(argument);
        endSecondWalk();
    }
    return value;
}

}  // namespace glsl
