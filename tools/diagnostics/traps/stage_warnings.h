#pragma once

#include <vector>

#include "diagnostics/effect_facts.h"
#include "diagnostics/finding.h"
#include "diagnostics/stage_reading.h"

namespace diagnostics {

/// All warnings about one stage, by file and place. None if the stage could not be parsed.
///
/// @param has_vertex  the effect brings a vertex source
std::vector<Finding> stage_warnings(const StageReading& reading, const EffectFacts& facts,
                                    bool has_vertex);

/// The warnings about both stages, the vertex stage first.
std::vector<Finding> program_warnings(const AssembledProgram& program, const ProgramMaps& maps,
                                      const EffectFacts& facts);

}  // namespace diagnostics
