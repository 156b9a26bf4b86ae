#pragma once

#include <string>

#include "glsl/parser.h"

namespace glsl::test {

/// A tree, or a part of it, as nested lists. Null reads `null`.
///
/// Expressions: `4`, `4u`, `1.5f'1.5`, `1.5lf'1.5` (value, then text), `true`, `"s"`, a variable's
/// name, `(. v xy)`, `([] a 1)`, `(call f a b)`, `(new vec4 a)`, `(+ a b)`, `(= a b)`, `(, a b)`,
/// `(post++ a)`, `(pre++ a)`, `(neg a)`, `(pos a)`, `(~ a)`, `(! a)`, `(? c a b)`.
/// Statements: `{a b}`, `;`, `(var float a=1 b[2])`, `(do expression)`, `(if c a b)`, ...
std::string dump(const astExpression* expression);
std::string dump(const astStatement* statement);
std::string dump(const astVariable& variable);
std::string dump(const astFunction& function);
/// Everything but the calls, part by part, a blank between two.
std::string dump(const astTU& unit);

/// What a source parses to: the dump of the unit, or the error lines, each as
/// "line:column:message" and a "|" between two, or "silent".
std::string parsed(const std::string& source, std::uint32_t stage = kShaderFragment);

/// The statements of `void f() { BODY }` behind some declarations: int i, j; float x, y; vec4 v, w;
/// int a[8]; S s with the fields p (float) and q (vec2).
std::string body(const std::string& statements);
/// The one expression of such a body.
std::string expression(const std::string& text);

/// The first error line of a source as "line:column:message"; "none" or "silent" without one.
std::string firstError(const std::string& source, std::uint32_t stage = kShaderFragment);

}  // namespace glsl::test
