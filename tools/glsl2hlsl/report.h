#pragma once

/// What the user is told about sources that could not be translated.

#include <string>
#include <vector>

#include "DirectXEffectMgr/Source/core/program_source.h"

namespace glsl2hlsl {

/// A line "error: ..." for each file that could not be used; empty if all could. Where an
/// `#include` asked for the file, the line begins with that place: "error: FILE:LINE:COLUMN:
/// message".
std::vector<std::string> problem_lines(const ProgramMaps& maps);

/// The line for a source that the parser refused: "error: FILE:LINE:COLUMN: message", with the
/// author's own file and line, and the column of the word at which the parser stopped. Without a
/// message from the parser the place is the end of the source.
///
/// @param program    what was parsed
/// @param main_file  the stage's file as the user named it, if the map knows nothing
std::string failure_line(const ParseFailure& failure, const AssembledProgram& program,
                         const ProgramMaps& maps, const std::string& main_file);

}  // namespace glsl2hlsl
