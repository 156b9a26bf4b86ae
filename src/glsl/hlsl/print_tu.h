#pragma once

/// From tree to text: the HLSL source of one shader stage.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "glsl/ast.h"
#include "glsl/hlsl/environment.h"

namespace glsl {

/// Where a declaration, a function or a statement of the tree begins in the text.
struct LineMark {
    uint64_t line;        // of the tree's node
    size_t offset;        // in the output string
    const astNode* node;  // never null; lives as long as the tree
};

/// Text that is written a second time because HLSL needs it twice (the argument of `fract`, the
/// target of a matrix `*=`, the default values of an array) may add this much to one output, and a
/// single argument or target this much. Beyond it, or where a tree is nested deeper than
/// kMaxPrintDepth, one message goes to the log, the text in question is left out, and the output
/// ends in an `#error` line, so that no compiler takes it.
constexpr size_t kMaxRepeatedBytes = size_t{16} << 20;
constexpr size_t kMaxRepeatedPiece = size_t{64} << 10;
constexpr uint32_t kMaxPrintDepth = 2000;

/// Appends the complete HLSL source of a stage to `out`; its entry point is `mainVS` or `mainPS`.
///
/// Nothing is refused: what has no known type is printed in the plainest form, the few errors go to
/// the log, and the HLSL compiler judges the result. Null children print nothing.
///
/// @param unit                   the parsed stage. The names of numbered depth inputs in it may be
///                               shortened, so print a tree once.
/// @param inputCount             image inputs: textures INPUT1 and up, registers from 0
/// @param audioInputCount        audio inputs: textures AUDIO_INPUT1 and up, registers behind those
/// @param hasCustomVertexShader  fragment stage: the effect brought its own vertex shader
/// @param varyingDeclarations    the vertex stage appends a line per variable that it passes on;
/// the
///                               fragment stage reads them. Print the vertex stage first, or, with
///                               no vertex shader of one's own, hand in an empty string.
/// @param parentScope            scope around the unit's; may be null. Entries that the unit writes
///                               and that stand there already are changed there.
/// @param isVertexShader         the stage
/// @param lineMarks              null, or receives the beginnings of what was printed, in the order
///                               of the text. Fixed texts have none.
void printTU(astTU& unit, uint32_t inputCount, uint32_t audioInputCount, bool hasCustomVertexShader,
             std::string& out, std::string& varyingDeclarations,
             const std::shared_ptr<Environment>& parentScope, bool isVertexShader,
             std::vector<LineMark>* lineMarks = nullptr);

}  // namespace glsl
