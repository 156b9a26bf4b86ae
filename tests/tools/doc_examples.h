#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "effect-render/params.h"

namespace effect_render {

/// One example of docs/effects.md: a block of GLSL with comments that tell what it needs and does.
///
///     // vertex shader            the block is one; otherwise it is a fragment shader
///     // with mat2 m = 1, 0, 0, 1   registers a parameter; repeatable
///     // draws 0.25, 0.5, 0.75, 1   colour in the middle of the picture
///     // refused: X3004             words of the message
struct DocExample {
    int line = 0;        // of its first line on the page, from 1
    std::string source;  // the whole block
    bool is_vertex = false;
    std::vector<ParamTrack> params;
    std::vector<double> color;  // R, G, B, A in the middle of the picture, 0 to 1; or empty
    std::string refusal;        // words of the message; empty: it compiles
};

/// A failing example prints as its place on the page.
inline void PrintTo(const DocExample& example, std::ostream* out) {
    *out << "docs/effects.md:" << example.line;
}

/// Reads all examples of a page. Throws a ToolError for a comment that it cannot read.
std::vector<DocExample> LoadDocExamples(const std::string& path);

}  // namespace effect_render
