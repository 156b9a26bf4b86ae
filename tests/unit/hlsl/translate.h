#pragma once

/// Parses a source and prints it, for tests.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "glsl/hlsl/environment.h"
#include "glsl/hlsl/print_tu.h"

namespace glsl {

/// What a stage is translated with, and what came of it.
struct Translation {
    // to be set before translate()
    bool isVertex = false;
    uint32_t inputs = 0;
    uint32_t audio = 0;
    bool hasVertexShader = false;
    bool plainly = false;  // by the slow printer
    std::string varyings;
    std::shared_ptr<Environment> scope;
    bool withMarks = false;

    // set by translate()
    std::string error;  // of the parser; the text is then empty
    std::string text;
    std::vector<std::string> log;  // messages of the printer, formatted
    std::vector<LineMark> marks;

    void translate(const std::string& source);
};

/// The text of a fragment stage.
std::string printFragment(const std::string& source);
/// The text of a vertex stage.
std::string printVertex(const std::string& source);

/// What of a text stands behind the fixed prelude and structs and before the wrapper: structures,
/// static globals, blocks and functions.
std::string bodyOf(const std::string& hlsl);

/// What stands before the prelude.
std::string headOf(const std::string& hlsl);

/// The text of statements alone, and what the log had to say.
Translation translateStatements(const std::string& source);

/// The text alone. The statements stand in a function that has one local of each common type:
/// f g h (float), i j (int), u (uint), d (double), b (bool), v2 w2 v3 w3 v4 w4, i2 k2 i3 k3 i4 k4,
/// m2 n2 m3 n3 m4 n4, s (struct S, with fields a (float), line (vec3), inner (struct T)).
std::string statements(const std::string& source);

/// The text of one expression with the same locals.
std::string expression(const std::string& source);

/// The class of an expression with the same locals, found out by what is printed around it:
/// "float", "int", "bool", "double", "vec2" ... "mat4", "null", or "other" (struct included).
///
/// @param declarations  further locals
std::string classOf(const std::string& source, const std::string& declarations = "");

}  // namespace glsl
