#pragma once

/// Errors of an effect's files and of the parser, at the author's place.

#include <string>
#include <vector>

#include "DirectXEffectMgr/Source/core/program_source.h"
#include "diagnostics/finding.h"

namespace diagnostics {

/// A finding with the author's place and no message yet.
Finding finding_at(const SourceLocation& location, Severity severity);

/// An error for each file that could not be used; empty if all could. Where an `#include` asked for
/// the file, that is its place.
std::vector<Finding> file_errors(const ProgramMaps& maps);

/// The error for which the parser refused a source. Without a message from the parser the place is
/// where it stopped.
///
/// @param program    what was parsed
/// @param main_file  the stage's file as the user named it, if the map knows nothing
Finding parser_error(const ParseFailure& failure, const AssembledProgram& program,
                     const ProgramMaps& maps, const std::string& main_file);

}  // namespace diagnostics
