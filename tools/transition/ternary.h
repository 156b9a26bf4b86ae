#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace transition {

/// Puts parentheses around each conditional expression that is a further argument of a call or a
/// part of another conditional expression, and around each of its parts that is more than one word
/// or number: without them the dialect groups them otherwise.
/// Appends a line to `notes` if anything changed.
std::string parenthesize_ternaries(std::string_view text, std::vector<std::string>& notes);

}  // namespace transition
