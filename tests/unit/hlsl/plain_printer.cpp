#include "plain_printer.h"

#include "plain_walker.h"

namespace glsl {

void printPlainly(astTU& unit, uint32_t inputCount, uint32_t audioInputCount,
                  bool hasCustomVertexShader, std::string& out, std::string& varyingDeclarations,
                  const std::shared_ptr<Environment>& parentScope, bool isVertexShader) {
    plain::PlainPrinter(unit).printUnit(inputCount, audioInputCount, hasCustomVertexShader, out,
                                        varyingDeclarations, parentScope, isVertexShader);
}

}  // namespace glsl
