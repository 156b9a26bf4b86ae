#include "doc_examples.h"

#include <sstream>

#include "effect-render/files.h"
#include "effect-render/tool_error.h"

namespace effect_render {
namespace {

constexpr char kFence[] = "```glsl";
constexpr char kFenceEnd[] = "```";
constexpr char kParamWord[] = "param=";

// "TYPE:NAME=V[,V...]"
ParamTrack ReadParam(const std::string& text) {
    const size_t colon = text.find(':');
    const size_t equals = text.find('=');
    const auto type = ParseType(text.substr(0, colon));
    if (!type || equals == std::string::npos) {
        throw ToolError("no parameter: " + text);
    }
    ParamTrack track;
    track.type = *type;
    track.name = text.substr(colon + 1, equals - colon - 1);
    std::istringstream numbers(text.substr(equals + 1));
    for (std::string number; std::getline(numbers, number, ',');) {
        track.still.push_back(std::stod(number));
    }
    return track;
}

DocExample ReadFence(const std::string& rest, int line) {
    DocExample example;
    example.line = line;
    std::istringstream words(rest);
    for (std::string word; words >> word;) {
        if (word == "vertex") {
            example.is_vertex = true;
        } else if (word.rfind(kParamWord, 0) == 0) {
            example.params.push_back(ReadParam(word.substr(sizeof(kParamWord) - 1)));
        } else if (word == "draws") {
            std::array<double, 4> color = {};
            words >> color[0] >> color[1] >> color[2] >> color[3];
            example.color = color;
        } else if (word == "refused") {
            std::getline(words >> std::ws, example.refusal);
        } else {
            throw ToolError("line " + std::to_string(line) + ": unknown word '" + word + "'");
        }
        if (words.fail()) {
            throw ToolError("line " + std::to_string(line) + ": '" + word + "' lacks something");
        }
    }
    return example;
}

}  // namespace

std::vector<DocExample> LoadDocExamples(const std::string& path) {
    std::vector<DocExample> examples;
    std::istringstream page(ReadText(path));
    bool inside = false;
    int number = 0;
    for (std::string line; std::getline(page, line);) {
        ++number;
        if (!inside && line.rfind(kFence, 0) == 0) {
            examples.push_back(ReadFence(line.substr(sizeof(kFence) - 1), number));
            inside = true;
        } else if (inside && line == kFenceEnd) {
            inside = false;
        } else if (inside) {
            examples.back().source += line + "\n";
        }
    }
    return examples;
}

}  // namespace effect_render
