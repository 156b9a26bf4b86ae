#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "glsl/source_text.h"

namespace glsl {

/// A `#define` line, as far as its uses depend on it.
struct Macro {
    std::string_view name;
    /// Text behind the name, blanks between dropped; of a function-like macro from its `(` on.
    std::string_view value;
    /// The byte right behind the name on the `#define` line was a `(`.
    bool functionLike = false;
};

/// What keeps macros from blowing up a text; shared by all macros of one source.
struct ExpansionLimits {
    std::size_t longest = 0;    // bytes that the text may come to
    std::size_t work_left = 0;  // bytes that may still be searched for parameters
};

enum class Expanded {
    nothing,  // no use was found
    uses,
    refused,  // a limit was reached
};

/// Replaces each use of `macro` in the text behind `from` by the macro's text, in one walk; what
/// is put in is not looked at again. The byte at `from` itself is passed unread. Uses in strings,
/// in comments and on the lines of conditional directives stay.
///
/// The macro's texts lie outside `source`; `scratch` is working memory to be used again.
/// With `refused` as the result `source` is as it was.
[[nodiscard]] Expanded expandMacro(SourceText& source, std::size_t from, const Macro& macro,
                                   ExpansionLimits& limits, std::string& scratch);

}  // namespace glsl
