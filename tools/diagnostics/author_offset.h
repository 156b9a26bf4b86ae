#pragma once

#include <cstddef>
#include <string_view>

#include "DirectXEffectMgr/Source/core/rewrite_alignment.h"

namespace diagnostics {

/// The place in an assembled text of the token that stands in front of a place of the text that the
/// parser made of it. A token that a macro put in is at the name of the macro's use.
///
/// @param offset  in `rewritten`, just behind a token
size_t author_offset(std::string_view assembled, std::string_view rewritten, size_t offset);

/// The same with the alignment of the two texts at hand.
size_t author_offset(std::string_view assembled, std::string_view rewritten,
                     const RewriteAlignment& alignment, size_t offset);

}  // namespace diagnostics
