#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace transition {

/// Writes a vector times a matrix, `v * m` and `v *= m`, as `transpose(m) * v`: the library draws
/// both orders as `m * v`. Only where the types are plain to see: names declared once or always
/// alike, swizzles, constructors and calls of functions of the text. Appends a line to `notes`.
std::string transpose_right_matrices(std::string_view text, std::vector<std::string>& notes);

}  // namespace transition
