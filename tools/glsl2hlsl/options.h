#pragma once

/// The command line of glsl2hlsl.

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "diagnostics/effect_facts.h"
#include "movit/param_tables.h"

namespace glsl2hlsl {

using diagnostics::ParamShape;

/// A parameter to register.
struct Param {
    movit::ParamType type = movit::ParamType::kFloat;
    ParamShape shape = ParamShape::kValue;
    std::string name;
    uint64_t count = 1;  // elements of an array; 1 otherwise
};

/// Which texts to print.
enum class Emit { kHlsl, kGlsl };

/// What the user asked for.
struct Options {
    std::string fragment;  // path, UTF-8
    std::string vertex;    // path, UTF-8; empty: the effect brings no vertex shader
    int32_t inputs = 1;
    int32_t audio = 0;
    std::vector<Param> params;
    std::vector<std::pair<std::string, std::string>> defines;
    bool base64 = false;
    Emit emit = Emit::kHlsl;
    std::string hlsl_log;  // path of the HLSL compiler's messages, UTF-8; empty: none
    bool warnings = true;
};

/// Exit statuses of the program.
constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

/// Reads the arguments, the program's name not among them. What is wrong with them goes to standard
/// error, help to standard output.
///
/// @returns the status to exit with at once, or nothing to go on
std::optional<int> parse_options(const std::vector<std::string>& arguments, Options& options);

/// Reads "TYPE:NAME[:COUNT]".
/// @returns what is wrong with it; empty if nothing is
std::string parse_param(const std::string& text, Param& param);

/// Reads "NAME=VALUE"; the value may be empty.
/// @returns what is wrong with it; empty if nothing is
std::string parse_define(const std::string& text, std::pair<std::string, std::string>& define);

}  // namespace glsl2hlsl
