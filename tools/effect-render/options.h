#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "params.h"

namespace effect_render {

enum class EngineMode { Threaded, Inline };

/// Frame numbers, both ends included.
struct FrameRange {
    int32_t first = 0;
    int32_t last = 0;
};

/// The command line.
struct Options {
    std::string effect;      // a fragment shader file, or a folder with an effect.json
    std::string transition;  // in place of `effect`: the file of a public transition
    bool rewrites = true;    // whether a transition's text may be rewritten, its meaning kept
    std::string output;  // the picture; holds a field such as %04d for several frames. Or raw_out
    std::string vertex;
    std::vector<std::string> inputs;  // with a transition, its two pictures come first
    std::vector<std::string> audio;
    std::optional<std::pair<uint32_t, uint32_t>> size;
    std::vector<ParamTrack> params;
    std::vector<std::pair<std::string, std::string>> defines;
    FrameRange frames;
    FrameRange span;  // over which moving parameters move
    EngineMode mode = EngineMode::Threaded;
    bool depth = false;
    bool msaa = false;
    std::optional<int32_t> blend;
    std::optional<std::array<float, 4>> clear_color;
    bool warnings = true;  // about shaders that draw otherwise than they read
    bool log = false;      // all of the library's messages instead of warnings and errors
    std::optional<std::pair<uint32_t, uint32_t>> raw_in;  // size of the frames on standard input
    bool raw_out = false;                                 // frames go to standard output
    bool until_end = false;   // frames.last is not known: raw_in without --frames
    bool watch = false;       // draw again whenever a file changes
    int32_t watch_count = 0;  // end after so many times; 0: never
};

/// Reads the arguments behind the program's name. Throws a UsageError.
///
/// @returns nothing if the user asked for help, which is then in `help`
std::optional<Options> ParseOptions(const std::vector<std::string>& arguments, std::string& help);

/// The file of one frame: `pattern` with its field %d, %4d or %04d replaced, and %% read as %.
std::string FramePath(const std::string& pattern, int32_t frame);

/// How many fields a pattern holds. Throws a UsageError for a field of another kind.
int CountFrameFields(const std::string& pattern);

}  // namespace effect_render
