#pragma once

/// A second look at an effect that the library has refused, or is about to draw: what is wrong with
/// it, at the places where its author wrote it. Plain types only, and no device.

#include <string_view>
#include <vector>

#include "diagnostics/effect_facts.h"
#include "diagnostics/finding.h"

namespace diagnostics {

/// Reads the programs' files and finds what will be drawn otherwise than its author meant, or
/// refused by the HLSL compiler although the parser takes it. Each place is told of once, also if
/// several programs share it. What cannot be read or parsed has no warnings. Silences the log as
/// explain_failure() does.
std::vector<Finding> find_warnings(const std::vector<EffectFacts>& programs);

/// Reads the programs' files again and finds why the library refused one of them.
///
/// Silences this program's own copy of the log for good; a library that was loaded by name has
/// another.
///
/// @param programs  what may have been refused, in the order in which the library compiled them
/// @param log       what the library logged since its last success, one message per line; the HLSL
///                  compiler's errors are taken from there
/// @returns the errors of the first program that explains the failure; empty if none does
std::vector<Finding> explain_failure(const std::vector<EffectFacts>& programs,
                                     std::string_view log);

}  // namespace diagnostics
