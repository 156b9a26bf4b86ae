#pragma once

/// Reading what the HLSL compiler said, as it stands in the library's log.

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "DirectXEffectMgr/Source/core/program_source.h"

namespace diagnostics {

/// A message "...(LINE,COLUMN[-COLUMN]): error X3004: text" of the compiler.
struct CompilerMessage {
    ShaderStage stage = ShaderStage::kFragment;
    size_t line = 0;    // of the HLSL, from 1
    size_t column = 0;  // from 1; 0 if the message has none
    std::string code;   // "X3004"
    std::string text;
};

struct CompilerLog {
    std::vector<CompilerMessage> errors;
    std::map<size_t, std::string> dump;  // lines of the refused HLSL by number, as far as logged
};

/// Finds the compiler's errors and the last numbered dump of an HLSL text in a log. An error
/// belongs to the stage that the last "Failed to compile vertex shader" or "... frag shader" in
/// front of it named, without one to the fragment stage. Everything else in the log is passed over.
CompilerLog read_compiler_log(std::string_view log);

}  // namespace diagnostics
