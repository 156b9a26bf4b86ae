#pragma once

/// The printer's rules once more, word for word and with no regard to speed: operands go into
/// strings that are copied per level, arguments are walked twice, values are shared objects in
/// nested environments. Random sources are printed both ways and compared.

#include <cstdint>
#include <memory>
#include <string>

#include "glsl/ast.h"
#include "glsl/hlsl/environment.h"

namespace glsl {

/// As printTU(), without its limits: keep sources small.
void printPlainly(astTU& unit, uint32_t inputCount, uint32_t audioInputCount,
                  bool hasCustomVertexShader, std::string& out, std::string& varyingDeclarations,
                  const std::shared_ptr<Environment>& parentScope, bool isVertexShader);

}  // namespace glsl
