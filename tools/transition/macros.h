#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace transition {

/// Writes out each use of a function-like macro that has a comma inside an argument's own
/// parentheses: the dialect would take it for two arguments. Appends a line to `notes`.
std::string expand_nested_macros(std::string_view text, std::vector<std::string>& notes);

/// Puts the value of a macro that is defined inside a function in the place of its uses, and takes
/// the definition out: the dialect knows directives between declarations only.
std::string inline_local_macros(std::string_view text, std::vector<std::string>& notes);

}  // namespace transition
