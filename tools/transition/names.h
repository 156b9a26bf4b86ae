#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "transition/edits.h"
#include "transition/tokens.h"

namespace transition {

/// Replaces whole words, members behind a "." excepted.
void replace_words(const std::vector<Token>& tokens,
                   const std::map<std::string, std::string, std::less<>>& words, Edits& edits);

/// Gives another name to each word that HLSL reserves and GLSL does not, and to each constant
/// global whose name the generated text uses itself: constants become macros there.
/// Appends a line to `notes` for each name.
std::string rename_reserved(std::string_view text, std::vector<std::string>& notes);

/// True for a word that names a type of a variable ("float", "vec2", ...).
bool is_type_word(std::string_view word);

}  // namespace transition
