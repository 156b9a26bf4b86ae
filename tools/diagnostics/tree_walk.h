#pragma once

/// A walk over the syntax tree that takes no stack, however deep the tree is.

#include "glsl/ast.h"

namespace diagnostics {

/// What happens at each node, in the order of the source as far as the tree keeps it. A node is
/// entered before what is below it and left behind that. Nothing is done by default.
class TreeVisitor {
public:
    virtual ~TreeVisitor() = default;
    virtual void enter(const glsl::astExpression& /*expression*/) {}
    virtual void leave(const glsl::astExpression& /*expression*/) {}
    virtual void enter(const glsl::astStatement& /*statement*/) {}
    virtual void leave(const glsl::astStatement& /*statement*/) {}
    /// A global, a parameter, a local or a field, before its sizes and values.
    virtual void enter(const glsl::astVariable& /*variable*/) {}
    virtual void leave(const glsl::astVariable& /*variable*/) {}
    virtual void enter(const glsl::astFunction& /*function*/) {}
    virtual void leave(const glsl::astFunction& /*function*/) {}
};

/// Walks globals, structures, blocks and functions. Null children are passed over.
void walk(const glsl::astTU& unit, TreeVisitor& visitor);

/// Walks one node and what is below it: a statement, an expression, a variable or a function. Of
/// any other node nothing is visited.
void walk(const glsl::astNode& node, TreeVisitor& visitor);

}  // namespace diagnostics
