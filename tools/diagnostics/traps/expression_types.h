#pragma once

/// Types of expressions: what GLSL says they are, and what the translator knows of them. Where the
/// two differ, the HLSL means something else.

#include <string_view>
#include <unordered_map>

#include "diagnostics/tree_walk.h"
#include "glsl/ast.h"
#include "glsl/hlsl/value.h"

namespace diagnostics {

struct ExpressionType {
    /// By the rules of GLSL; ValueClass::other for what is known not to be one of the others (an
    /// array, a vector of bools), ValueClass::none where it cannot be told.
    glsl::ValueClass meant = glsl::ValueClass::none;
    /// As the translator classes it; ValueClass::none where it has lost track.
    glsl::ValueClass printed = glsl::ValueClass::none;
    /// An array: `meant` is then that of its elements.
    bool is_array = false;
    const glsl::astStruct* structure = nullptr;  // the type, if it is one
};

/// Types of all expressions of a unit; lives no longer than the unit.
class ExpressionTypes {
public:
    ExpressionTypes(const glsl::astTU& unit, bool is_vertex);

    /// Nothing is known of an expression of another unit, or of null.
    ExpressionType of(const glsl::astExpression* expression) const;
    /// The author's function of that name; null if there is none.
    const glsl::astFunction* function(std::string_view name) const;

private:
    class Pass;

    std::unordered_map<const glsl::astExpression*, ExpressionType> types_;
    std::unordered_map<std::string_view, const glsl::astFunction*> functions_;
};

/// The class of a type as it is declared; ValueClass::other for a word without one.
glsl::ValueClass class_of(const glsl::astType* type);

}  // namespace diagnostics
