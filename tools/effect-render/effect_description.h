#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "params.h"

namespace effect_render {

/// Where an image input gets its picture from.
enum class InputKind {
    Files,     // a file, or one file per pass
    Target,    // an extra target of the effect itself, as the last draw into it left it
    Previous,  // the output of the effect before this one in a chain
    Stream,    // a picture of its own for each frame
};

struct InputDescription {
    InputKind kind = InputKind::Files;
    std::vector<std::string> files;             // never empty for InputKind::Files
    int32_t target = 0;                         // number of the extra target
    std::pair<uint32_t, uint32_t> stream_size;  // pixels, for InputKind::Stream
    int32_t channels = 4;                       // 4, or 1 for a brightness picture
    bool nearest = false;                       // nearest instead of linear filtering
    bool still = false;                         // handed over as a picture that stays the same
};

/// Values of one vertex attribute for all vertices of a pass.
struct AttributeData {
    uint32_t components = 0;  // floats per vertex, 1 to 4
    std::vector<float> values;
};

/// A list of indices into the vertices of a pass.
struct ElementData {
    uint32_t per_unit = 3;  // indices per triangle or line
    std::vector<uint32_t> indices;
};

using ParamOverrides = std::map<std::string, std::vector<double>>;

struct PassDescription {
    int32_t vertices = 4;
    int32_t instances = 0;    // 0: drawn once, without instances
    std::string program;      // name of a further program; empty: the main one
    bool depth_write = true;  // with a depth test: whether the pass writes depth
    ParamOverrides params;    // values that hold for this pass alone
    std::map<std::string, AttributeData> attributes;
    std::optional<ElementData> elements;
};

/// A further program for single passes. An empty path stands for the main program's file.
struct ProgramDescription {
    std::string name;
    std::string fragment;
    std::string vertex;
};

/// Which variant of each segment is used, one number per segment.
struct VariantChoice {
    std::vector<int32_t> fragment;
    std::vector<int32_t> vertex;
};

/// One draw of the effect. A frame is one or more of them.
struct StepDescription {
    std::vector<int32_t> swaps;  // extra targets that change places with the target beforehand
    ParamOverrides params;       // values that hold from this step on, for this frame
    std::optional<VariantChoice> variants;
};

/// Numbers as the library takes them.
enum class BlendMode : int32_t { None = 0, Alpha = 1, Add = 3, Premultiplied = 4, Screen = 5 };
enum class PrimitiveMode : int32_t { Strip = 0, Triangles = 1, IndexedLines = 2, Lines = 3 };

/// Everything that a host sets on an effect. Paths are ready to be opened.
struct EffectDescription {
    std::string source;  // the file that describes the effect, for messages
    std::string fragment;
    std::string fragment_text;       // if not empty, read in place of the file
    std::vector<std::string> notes;  // how that text differs from the file, one line each
    std::string vertex;              // empty: the library's own
    bool base64 = false;             // the shader files are base64 text
    std::optional<std::pair<uint32_t, uint32_t>> size;
    std::vector<InputDescription> inputs;
    std::vector<std::string> audio;
    std::vector<ParamTrack> params;
    std::vector<std::pair<std::string, std::string>> defines;
    bool depth = false;
    bool msaa = false;
    bool cull_back = false;
    int32_t blend = 0;
    int32_t primitive = 0;
    bool clear = true;
    std::array<float, 4> clear_color = {0.0f, 0.0f, 0.0f, 0.0f};  // R, G, B, A of the picture
    std::vector<std::vector<std::string>> fragment_segments;
    std::vector<std::vector<std::string>> vertex_segments;
    VariantChoice variants;
    int32_t extra_targets = 0;
    std::vector<ProgramDescription> programs;
    std::vector<PassDescription> passes;  // at least one
    std::vector<StepDescription> steps;   // at least one

    ParamTrack* FindParam(const std::string& name);
    const ParamTrack* FindParam(const std::string& name) const;
};

/// A single effect, or several of which each draws over the output of the one before.
using EffectChain = std::vector<EffectDescription>;

/// The effect of a shader file without any description beside it.
EffectDescription DescribeShader(const std::string& fragment, const std::string& vertex);

}  // namespace effect_render
