#pragma once

#include <map>
#include <string>
#include <vector>

#include "transition/edits.h"
#include "transition/tokens.h"

namespace transition {

/// Replaces the uses of the transition's global names. A local variable or a parameter of a
/// function that bears such a name hides it, from behind its own declaration to the end of its
/// block.
void replace_globals(const std::vector<Token>& tokens,
                     const std::map<std::string, std::string, std::less<>>& words, Edits& edits);

}  // namespace transition
