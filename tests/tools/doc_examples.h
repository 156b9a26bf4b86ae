#pragma once

#include <array>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "effect-render/params.h"

namespace effect_render {

/// One example of docs/effects.md: a fenced block whose first line is
/// "```glsl [vertex] [param=TYPE:NAME=V[,V...]] [draws R G B A | refused WORDS]".
struct DocExample {
    int line = 0;  // of the fence, from 1
    std::string source;
    bool is_vertex = false;
    std::vector<ParamTrack> params;
    std::optional<std::array<double, 4>> color;  // in the middle of the picture, 0 to 1
    std::string refusal;                         // words of the message; empty: it compiles
};

/// A failing example prints as its place on the page.
inline void PrintTo(const DocExample& example, std::ostream* out) {
    *out << "docs/effects.md:" << example.line;
}

/// Reads all examples of a page. Throws a ToolError for a fence that it cannot read.
std::vector<DocExample> LoadDocExamples(const std::string& path);

}  // namespace effect_render
