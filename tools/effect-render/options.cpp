#include "options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cctype>
#include <charconv>
#include <functional>
#include <sstream>

#include "tool_error.h"

namespace effect_render {
namespace {

constexpr int32_t kLargestSide = 16384;  // pixels
constexpr int32_t kLastFrame = 999999999;
constexpr size_t kWidestField = 9;  // digits that a frame number is filled up to

std::optional<int32_t> WholeNumber(const std::string& text) {
    int32_t number = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (text.empty() || result.ec != std::errc() || result.ptr != end) {
        return std::nullopt;
    }
    return number;
}

// "640x360"
std::pair<uint32_t, uint32_t> ParseSize(const char* option, const std::string& text) {
    const size_t cross = text.find('x');
    if (cross != std::string::npos) {
        const auto width = WholeNumber(text.substr(0, cross));
        const auto height = WholeNumber(text.substr(cross + 1));
        const bool fits = width && height && *width > 0 && *height > 0 && *width <= kLargestSide &&
                          *height <= kLargestSide;
        if (fits) {
            return {static_cast<uint32_t>(*width), static_cast<uint32_t>(*height)};
        }
    }
    throw UsageError(std::string(option) + " '" + text + "': expected WxH, each from 1 to " +
                     std::to_string(kLargestSide));
}

// "A-B", or "A" for a single frame.
FrameRange ParseRange(const char* option, const std::string& text) {
    const size_t dash = text.find('-');
    const auto first = WholeNumber(text.substr(0, dash));
    const auto last = dash == std::string::npos ? first : WholeNumber(text.substr(dash + 1));
    const bool fits = first && last && *first >= 0 && *last >= *first && *last <= kLastFrame;
    if (!fits) {
        throw UsageError(std::string(option) + " '" + text +
                         "': expected A-B, two frame numbers in order");
    }
    return {*first, *last};
}

// "R,G,B,A"
std::array<float, 4> ParseColor(const std::string& text) {
    std::array<float, 4> color = {};
    ParamTrack track;
    try {
        track = ParseParam(ParamKind::Vec4, "clear=" + text);
    } catch (const UsageError&) {
    }
    if (track.still.size() != color.size() || !track.first.empty()) {
        throw UsageError("--clear '" + text + "': expected R,G,B,A");
    }
    std::transform(track.still.begin(), track.still.end(), color.begin(),
                   [](double number) { return static_cast<float>(number); });
    return color;
}

std::pair<std::string, std::string> ParseDefine(const std::string& text) {
    const size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw UsageError("--define '" + text + "': expected NAME=VALUE");
    }
    return {text.substr(0, equals), text.substr(equals + 1)};
}

void ParseMode(const std::string& text, Options& options) {
    if (text != "threaded" && text != "inline") {
        throw UsageError("--mode '" + text + "': expected threaded or inline");
    }
    options.mode = text == "inline" ? EngineMode::Inline : EngineMode::Threaded;
}

void ParseBlend(const std::string& text, Options& options) {
    options.blend = WholeNumber(text);
    if (!options.blend || *options.blend < 0) {
        throw UsageError("--blend '" + text + "': expected a number");
    }
}

struct ParamOption {
    const char* name;
    ParamKind kind;
    const char* shape;
};

constexpr ParamOption kParamOptions[] = {
    {"--int", ParamKind::Int, "NAME=V"},          {"--float", ParamKind::Float, "NAME=V"},
    {"--vec2", ParamKind::Vec2, "NAME=V,V"},      {"--vec3", ParamKind::Vec3, "NAME=V,V,V"},
    {"--vec4", ParamKind::Vec4, "NAME=V,V,V,V"},  {"--mat2", ParamKind::Mat2, "NAME=V[,V...]"},
    {"--mat3", ParamKind::Mat3, "NAME=V[,V...]"}, {"--mat4", ParamKind::Mat4, "NAME=V[,V...]"},
};

// An option that takes one text and may stand once or, if `repeatable`, several times. Each text
// goes to `take`; the option eats no argument that follows it.
void AddTextOption(CLI::App& app, const std::string& names, const std::string& shape,
                   const std::string& help, bool repeatable,
                   const std::function<void(const std::string&)>& take) {
    CLI::Option* option = app.add_option_function<std::vector<std::string>>(
        names,
        [take](const std::vector<std::string>& texts) {
            for (const std::string& text : texts) {
                take(text);
            }
        },
        help);
    option->type_name(shape)->type_size(1)->expected(1)->allow_extra_args(false);
    option->multi_option_policy(repeatable ? CLI::MultiOptionPolicy::TakeAll
                                           : CLI::MultiOptionPolicy::Throw);
}

void AddSourceOptions(CLI::App& app, Options& options) {
    AddTextOption(app, "-i,--input", "FILE", "an image input (PNG, JPEG); repeatable, in order",
                  true, [&options](const std::string& text) { options.inputs.push_back(text); });
    AddTextOption(app, "--audio", "FILE",
                  "an audio input: raw little-endian 32-bit floats; repeatable", true,
                  [&options](const std::string& text) { options.audio.push_back(text); });
    AddTextOption(app, "--vertex", "FILE", "the effect's own vertex shader", false,
                  [&options](const std::string& text) { options.vertex = text; });
    AddTextOption(
        app, "--define", "NAME=VALUE", "a macro for the shaders; repeatable", true,
        [&options](const std::string& text) { options.defines.push_back(ParseDefine(text)); });
    for (const ParamOption& row : kParamOptions) {
        AddTextOption(app, row.name, row.shape,
                      "a parameter; A:B in place of a value V moves it from A to B", true,
                      [&options, kind = row.kind](const std::string& text) {
                          options.params.push_back(ParseParam(kind, text));
                      });
    }
}

// Which ranges stood on the command line.
struct GivenRanges {
    bool frames = false;
    bool span = false;
};

void AddRangeOptions(CLI::App& app, Options& options, GivenRanges& given) {
    AddTextOption(app, "--frames", "A-B", "frame numbers; OUT then holds a field such as %04d",
                  false, [&options, &given](const std::string& text) {
                      options.frames = ParseRange("--frames", text);
                      given.frames = true;
                  });
    AddTextOption(app, "--span", "A-B",
                  "frames over which moving parameters move; default: those of --frames", false,
                  [&options, &given](const std::string& text) {
                      options.span = ParseRange("--span", text);
                      given.span = true;
                  });
}

void AddStreamOptions(CLI::App& app, Options& options) {
    AddTextOption(
        app, "--raw-in", "WxH",
        "the first image input: raw RGBA frames on standard input, one for each frame", false,
        [&options](const std::string& text) { options.raw_in = ParseSize("--raw-in", text); });
    app.add_flag("--raw-out", options.raw_out,
                 "raw RGBA frames on standard output in place of pictures");
    app.add_flag("--watch", options.watch,
                 "draw again whenever a file that the effect uses changes; Ctrl-C ends it");
    AddTextOption(app, "--watch-count", "N", "with --watch: end after drawing N times", false,
                  [&options](const std::string& text) {
                      options.watch_count = WholeNumber(text).value_or(0);
                      if (options.watch_count < 1) {
                          throw UsageError("--watch-count '" + text + "': expected a number");
                      }
                  });
}

void AddDrawOptions(CLI::App& app, Options& options) {
    AddTextOption(
        app, "--size", "WxH", "default: the first input's size, or 640x360", false,
        [&options](const std::string& text) { options.size = ParseSize("--size", text); });
    AddTextOption(app, "--mode", "threaded|inline", "where the device works; default: threaded",
                  false, [&options](const std::string& text) { ParseMode(text, options); });
    AddTextOption(app, "--blend", "N", "0 none, 1 alpha, 3 add, 4 premultiplied, 5 screen", false,
                  [&options](const std::string& text) { ParseBlend(text, options); });
    AddTextOption(app, "--clear", "R,G,B,A", "colour of the empty picture; default: 0,0,0,0", false,
                  [&options](const std::string& text) { options.clear_color = ParseColor(text); });
    app.add_flag("--depth", options.depth, "draw with a depth buffer and a depth test");
    app.add_flag("--msaa", options.msaa, "draw with four samples per pixel");
    app.add_flag("--log", options.log,
                 "the library's log on stderr; default: warnings and errors only");
    app.add_flag(
        "--no-warnings", [&options](int64_t) { options.warnings = false; },
        "no warnings about shaders that draw otherwise than they read, or are refused");
}

void AddTransitionOptions(CLI::App& app, Options& options) {
    AddTextOption(app, "--transition", "FILE",
                  "draws a public transition between two pictures, given in place of EFFECT", false,
                  [&options](const std::string& text) { options.transition = text; });
    app.add_flag(
        "--no-rewrites", [&options](int64_t) { options.rewrites = false; },
        "leave a transition's text as it is where it would be drawn otherwise or refused");
}

// What stands without an option's name: an effect, or the pictures of a transition.
void TakePositionals(std::vector<std::string> texts, Options& options) {
    if (options.transition.empty()) {
        if (texts.empty()) {
            throw UsageError("EFFECT is required");
        }
        if (texts.size() > 1) {
            throw UsageError("'" + texts[1] + "': only one EFFECT can be drawn");
        }
        if (!options.rewrites) {
            throw UsageError("--no-rewrites: belongs to --transition");
        }
        options.effect = std::move(texts[0]);
        return;
    }
    if (!options.vertex.empty()) {
        throw UsageError("--vertex: a transition has no vertex shader");
    }
    options.inputs.insert(options.inputs.begin(), texts.begin(), texts.end());
}

// Both ranges as they follow from what was given.
void CompleteRanges(const GivenRanges& given, Options& options) {
    if (options.raw_in && !given.frames) {
        options.until_end = true;
        options.frames.last = kLastFrame;
    }
    if (given.span) {
        return;
    }
    options.span = options.until_end ? FrameRange() : options.frames;
    const bool moves = std::any_of(options.params.begin(), options.params.end(),
                                   [](const ParamTrack& track) { return !track.first.empty(); });
    if (options.until_end && (moves || !options.transition.empty())) {
        throw UsageError("--raw-in: a parameter that moves needs --frames A-B or --span A-B");
    }
}

void CheckStreams(const Options& options) {
    if (options.raw_out != options.output.empty()) {
        throw UsageError(options.raw_out ? "-o and --raw-out exclude each other"
                                         : "-o OUT.png or --raw-out is required");
    }
    if (options.watch && (options.raw_in || options.raw_out)) {
        throw UsageError("--watch: frames of a stream cannot be drawn again");
    }
    if (options.watch_count > 0 && !options.watch) {
        throw UsageError("--watch-count: only with --watch");
    }
}

void CheckOutput(const Options& options) {
    const int fields = CountFrameFields(options.output);
    if (fields > 1) {
        throw UsageError("-o '" + options.output + "': holds more than one field");
    }
    if (fields == 0 && !options.raw_out && options.frames.first != options.frames.last) {
        throw UsageError("-o '" + options.output +
                         "': several frames need a field such as %04d in it");
    }
}

// A field "%d", "%4d" or "%04d" at `place`; `length` 0 if there is none.
struct FrameField {
    size_t length = 0;
    size_t width = 0;
    char fill = ' ';
};

FrameField FieldAt(const std::string& pattern, size_t place) {
    FrameField field;
    size_t i = place + 1;
    if (i < pattern.size() && pattern[i] == '0') {
        field.fill = '0';
        ++i;
    }
    while (i < pattern.size() && std::isdigit(static_cast<unsigned char>(pattern[i])) != 0 &&
           field.width <= kWidestField) {
        field.width = field.width * 10 + static_cast<size_t>(pattern[i] - '0');
        ++i;
    }
    if (i < pattern.size() && pattern[i] == 'd' && field.width <= kWidestField) {
        field.length = i + 1 - place;
    }
    return field;
}

std::string Padded(int32_t frame, const FrameField& field) {
    std::string digits = std::to_string(frame);
    if (digits.size() < field.width) {
        digits.insert(0, field.width - digits.size(), field.fill);
    }
    return digits;
}

// Walks over a pattern and gives the text with its fields replaced.
std::string Expand(const std::string& pattern, int32_t frame, int& fields) {
    std::string text;
    fields = 0;
    for (size_t i = 0; i < pattern.size();) {
        if (pattern[i] != '%') {
            text += pattern[i++];
            continue;
        }
        if (i + 1 < pattern.size() && pattern[i + 1] == '%') {
            text += '%';
            i += 2;
            continue;
        }
        const FrameField field = FieldAt(pattern, i);
        if (field.length == 0) {
            throw UsageError("-o '" + pattern +
                             "': only fields such as %d and %04d can stand here");
        }
        text += Padded(frame, field);
        i += field.length;
        ++fields;
    }
    return text;
}

}  // namespace

int CountFrameFields(const std::string& pattern) {
    int fields = 0;
    Expand(pattern, 0, fields);
    return fields;
}

std::string FramePath(const std::string& pattern, int32_t frame) {
    int fields = 0;
    return Expand(pattern, frame, fields);
}

std::optional<Options> ParseOptions(const std::vector<std::string>& arguments, std::string& help) {
    Options options;
    std::vector<std::string> positionals;
    GivenRanges given;
    CLI::App app("Draws an effect over pictures as a video editor would.", "effect-render");
    app.allow_windows_style_options(false);  // "/home/me/out.png" is a path
    app.add_option("EFFECT", positionals,
                   "a fragment shader file, or a folder with an effect.json");
    app.add_option("-o,--output", options.output, "the PNG picture to write")->type_name("OUT.png");
    AddSourceOptions(app, options);
    AddDrawOptions(app, options);
    AddRangeOptions(app, options, given);
    AddStreamOptions(app, options);
    AddTransitionOptions(app, options);
    try {
        std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
        app.parse(std::move(reversed));
    } catch (const CLI::CallForHelp&) {
        help = app.help();
        return std::nullopt;
    } catch (const CLI::ParseError& error) {
        throw UsageError(error.what());
    }
    TakePositionals(std::move(positionals), options);
    CheckStreams(options);
    CompleteRanges(given, options);
    CheckOutput(options);
    return options;
}

}  // namespace effect_render
