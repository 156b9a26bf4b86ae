#pragma once

#include "glsl/source_text.h"

namespace glsl {

/// Puts parentheses around the three parts of each ternary of `source`, so that a parser that
/// binds `?` and `:` to single operands still gets whole expressions: `x = a < b ? c : d;` becomes
/// `x =( a < b )?( c ):( d);`. A scan over bytes that knows of comments but not of tokens, run once
/// over a source before anything else.
///
/// @returns false if the text would grow, or the pass take, beyond all proportion to the source;
///          the text is then of no use. No source in good order comes near.
[[nodiscard]] bool rewriteTernaries(SourceText& source);

}  // namespace glsl
