#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace transition {

/// Each takes a text, returns it with the same lines, and appends to `notes` if anything changed.

/// Removes `precision` statements and `#version` lines: both are refused.
std::string remove_precision(std::string_view text, std::vector<std::string>& notes);

/// Gives each `bool` without a value the value false.
std::string initialize_bools(std::string_view text, std::vector<std::string>& notes);

/// Turns each global whose initialiser is no constant expression into a macro of that expression.
std::string globals_to_macros(std::string_view text, std::vector<std::string>& notes);

/// Writes `mod(x, y)` out as `x - y * floor(x / y)`, which rounds down as GLSL's does.
std::string write_out_mod(std::string_view text, std::vector<std::string>& notes);

/// Takes the second and further declarations of a `for` header out in front of the loop.
std::string split_for_headers(std::string_view text, std::vector<std::string>& notes);

}  // namespace transition
