#include "doc_examples.h"

#include <optional>
#include <sstream>

#include "effect-render/files.h"
#include "effect-render/tool_error.h"

namespace effect_render {
namespace {

constexpr char kFence[] = "```glsl";
constexpr char kFenceEnd[] = "```";

// What stands behind `start`, if `line` begins with it.
std::optional<std::string> Behind(const std::string& line, const std::string& start) {
    if (line.rfind(start, 0) != 0) {
        return std::nullopt;
    }
    return line.substr(start.size());
}

// "V, V, V"
std::vector<double> ReadNumbers(const std::string& text) {
    std::vector<double> numbers;
    std::istringstream parts(text);
    for (std::string part; std::getline(parts, part, ',');) {
        numbers.push_back(std::stod(part));
    }
    return numbers;
}

// "TYPE NAME = V, V"
ParamTrack ReadParam(const std::string& text) {
    std::istringstream words(text);
    std::string type;
    std::string equals;
    ParamTrack track;
    words >> type >> track.name >> equals;
    const auto known = ParseType(type);
    if (!known || equals != "=") {
        throw ToolError("no parameter: " + text);
    }
    track.type = *known;
    std::getline(words, type, '\n');
    track.still = ReadNumbers(type);
    return track;
}

void ReadComment(const std::string& line, DocExample& example) {
    if (line == "// vertex shader") {
        example.is_vertex = true;
    } else if (const auto param = Behind(line, "// with ")) {
        example.params.push_back(ReadParam(*param));
    } else if (const auto words = Behind(line, "// refused: ")) {
        example.refusal = *words;
    } else if (const auto color = Behind(line, "// draws ")) {
        example.color = ReadNumbers(*color);
        if (example.color.size() != 4) {
            throw ToolError("no colour: " + line);
        }
    }
}

}  // namespace

std::vector<DocExample> LoadDocExamples(const std::string& path) {
    std::vector<DocExample> examples;
    std::istringstream page(ReadText(path));
    bool inside = false;
    int number = 0;
    for (std::string line; std::getline(page, line);) {
        ++number;
        if (!inside && line == kFence) {
            examples.emplace_back();
            examples.back().line = number + 1;
            inside = true;
        } else if (inside && line == kFenceEnd) {
            inside = false;
        } else if (inside) {
            examples.back().source += line + "\n";
            ReadComment(line, examples.back());
        }
    }
    return examples;
}

}  // namespace effect_render
