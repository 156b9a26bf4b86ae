#include "options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <iostream>
#include <string_view>

namespace glsl2hlsl {

namespace {

constexpr std::string_view kInstance = "instance-";
constexpr std::string_view kArrayMark = "[]";
constexpr int kMostInputs = 128;  // as many textures as a shader can have

bool is_name(std::string_view text) {
    const auto is_letter = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
    };
    return !text.empty() && is_letter(text.front()) &&
           std::all_of(text.begin(), text.end(),
                       [&](char c) { return is_letter(c) || (c >= '0' && c <= '9'); });
}

std::vector<std::string> split_at_colons(const std::string& text) {
    std::vector<std::string> pieces;
    for (size_t start = 0, colon = 0; colon != std::string::npos; start = colon + 1) {
        colon = text.find(':', start);
        pieces.push_back(text.substr(start, colon - start));
    }
    return pieces;
}

bool is_matrix(movit::ParamType type) {
    return type == movit::ParamType::kMat2 || type == movit::ParamType::kMat3 ||
           type == movit::ParamType::kMat4;
}

// The type with what stands before and behind the word.
std::string parse_type(std::string_view text, Param& param) {
    std::string_view word = text;
    param.shape = ParamShape::kValue;
    if (word.substr(0, kInstance.size()) == kInstance) {
        param.shape = ParamShape::kInstance;
        word.remove_prefix(kInstance.size());
    } else if (word.size() > kArrayMark.size() &&
               word.substr(word.size() - kArrayMark.size()) == kArrayMark) {
        param.shape = ParamShape::kArray;
        word.remove_suffix(kArrayMark.size());
    }
    const auto found =
        std::find(std::begin(movit::kParamTypeWords), std::end(movit::kParamTypeWords), word);
    if (found == std::end(movit::kParamTypeWords)) {
        return "unknown type \"" + std::string(text) + "\"";
    }
    param.type = static_cast<movit::ParamType>(found - std::begin(movit::kParamTypeWords));
    if (param.shape != ParamShape::kValue && is_matrix(param.type)) {
        return "there are no arrays or instance parameters of type \"" + std::string(word) + "\"";
    }
    return {};
}

// The count, as far as it was given: arrays need one.
std::string parse_count(const std::string* text, Param& param) {
    if (text == nullptr) {
        return param.shape == ParamShape::kArray ? "an array needs a count: TYPE[]:NAME:COUNT" : "";
    }
    const char* const end = text->data() + text->size();
    int32_t count = 0;
    const std::from_chars_result read = std::from_chars(text->data(), end, count);
    if (read.ec != std::errc() || read.ptr != end || count < 1) {
        return "the count must be a whole number above 0, not \"" + *text + "\"";
    }
    if (param.shape == ParamShape::kValue && count != 1) {
        return "only arrays have a count";
    }
    param.count = static_cast<uint64_t>(count);
    return {};
}

// Reads each text of an option; the first that is wrong ends the program.
template <class Value, class Parse>
void read_each(const std::string& option, const std::vector<std::string>& texts,
               std::vector<Value>& values, Parse parse) {
    for (const std::string& text : texts) {
        Value value;
        const std::string wrong = parse(text, value);
        if (!wrong.empty()) {
            std::string message = "\"";
            message.append(text).append("\": ").append(wrong);
            throw CLI::ValidationError(option, message);
        }
        values.push_back(std::move(value));
    }
}

void describe(CLI::App& app, Options& options, std::vector<std::string>& params,
              std::vector<std::string>& defines, std::string& emit) {
    app.add_option("FRAGMENT", options.fragment, "the effect's fragment shader")->required();
    app.add_option("--vertex", options.vertex, "the effect's own vertex shader")->type_name("FILE");
    app.add_option("--inputs", options.inputs, "number of image inputs")
        ->check(CLI::Range(0, kMostInputs))
        ->capture_default_str();
    app.add_option("--audio", options.audio, "number of audio inputs")
        ->check(CLI::Range(0, kMostInputs))
        ->capture_default_str();
    app.add_option("--param", params,
                   "a registered parameter; TYPE is int float vec2 vec3 vec4 mat2 mat3 mat4, with "
                   "[] behind it for an array of COUNT elements, or with instance- before it for "
                   "a per-instance parameter; repeatable")
        ->type_name("TYPE:NAME[:COUNT]")
        ->allow_extra_args(false);
    app.add_option("--define", defines, "a macro; repeatable")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    app.add_flag("--base64", options.base64, "files are base64 text");
    app.add_option("--emit", emit,
                   "hlsl: the two texts as they go to the compiler; glsl: the two assembled "
                   "sources as they go to the parser")
        ->check(CLI::IsMember({"hlsl", "glsl"}))
        ->capture_default_str();
    app.add_flag(
        "--no-warnings", [&options](int64_t) { options.warnings = false; },
        "no warnings about what is drawn otherwise than it reads, or refused by the compiler");
    app.add_option("--hlsl-log", options.hlsl_log,
                   "messages of the HLSL compiler, such as a log of the library: each error is "
                   "shown at the GLSL that it came from")
        ->type_name("FILE");
}

}  // namespace

std::string parse_param(const std::string& text, Param& param) {
    const std::vector<std::string> pieces = split_at_colons(text);
    if (pieces.size() < 2 || pieces.size() > 3) {
        return "expected TYPE:NAME or TYPE:NAME:COUNT";
    }
    std::string wrong = parse_type(pieces[0], param);
    if (wrong.empty() && !is_name(pieces[1])) {
        wrong = "\"" + pieces[1] + "\" is no name";
    }
    param.name = pieces[1];
    return wrong.empty() ? parse_count(pieces.size() == 3 ? &pieces[2] : nullptr, param) : wrong;
}

std::string parse_define(const std::string& text, std::pair<std::string, std::string>& define) {
    const size_t equals = text.find('=');
    if (equals == std::string::npos) {
        return "expected NAME=VALUE";
    }
    define = {text.substr(0, equals), text.substr(equals + 1)};
    if (define.first.empty() || text.find('\n') != std::string::npos) {
        return "a definition is a line of text with a name";
    }
    return {};
}

std::optional<int> parse_options(const std::vector<std::string>& arguments, Options& options) {
    CLI::App app("Translates an effect's GLSL to the HLSL that the library hands to the compiler.",
                 "glsl2hlsl");
    app.allow_windows_style_options(false);
    std::vector<std::string> params;
    std::vector<std::string> defines;
    std::string emit = "hlsl";
    describe(app, options, params, defines, emit);
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        read_each("--param", params, options.params, parse_param);
        read_each("--define", defines, options.defines, parse_define);
    } catch (const CLI::CallForHelp&) {
        std::cout << app.help();
        return kExitOk;
    } catch (const CLI::ParseError& error) {
        std::cerr << "glsl2hlsl: " << error.what() << "\nglsl2hlsl --help tells the usage.\n";
        return kExitUsage;
    }
    options.emit = emit == "glsl" ? Emit::kGlsl : Emit::kHlsl;
    return std::nullopt;
}

}  // namespace glsl2hlsl
