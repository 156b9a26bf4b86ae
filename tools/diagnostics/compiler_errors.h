#pragma once

/// Errors of the HLSL compiler at the GLSL that they came from.

#include <cstdint>
#include <vector>

#include "DirectXEffectMgr/Source/core/program_source.h"
#include "diagnostics/compiler_log.h"
#include "diagnostics/finding.h"

namespace diagnostics {

/// Translates both stages once more and leads each message back to the author's line. Where the
/// library's own text around the author's is refused, that is the constant that got into it, or the
/// beginning of the stage's source. Writes to the log what printing a tree writes.
///
/// @returns a finding per message; none if the stages cannot be parsed, or if the log has a dump
/// that
///          is not this program's HLSL
std::vector<Finding> compiler_errors(const AssembledProgram& program, const ProgramMaps& maps,
                                     int32_t inputs, int32_t audio, const CompilerLog& log);

}  // namespace diagnostics
