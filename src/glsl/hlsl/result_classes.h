#pragma once

/// The class of an operation's result.

#include <cstdint>

#include "glsl/hlsl/value.h"
#include "glsl/operators.h"

namespace glsl {

/// Gives the class that a binary operation has for two operand classes; None for every pair and
/// operator without a rule, such as a matrix with a scalar, or "^^".
ValueClass resultClass(Operator operation, ValueClass left, ValueClass right);

/// How the text of a binary operation is put together from those of its operands.
enum class OperationForm : uint8_t {
    plain,     // L op R
    mulLR,     // mul(L, R)
    mulRL,     // mul(R, L)
    equal,     // global_is_equal_vecN(L, R)
    notEqual,  // global_is_not_equal_vecN(L, R)
};

/// The form that operator and operand classes ask for. The dimension of a vector helper is that of
/// the left operand.

OperationForm operationForm(Operator operation, ValueClass left, ValueClass right);

}  // namespace glsl
