#include <algorithm>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

#include "DirectXEffectMgr/Source/core/source_assembly.h"
#include "effect_source.h"

namespace bench {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

std::string read_file(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path.string());
    }
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// A shader file with its includes in place.
std::string read_shader(const fs::path& path) {
    std::string text = read_file(path);
    if (!ExpandIncludes(path.string(), text, AssemblyContext{})) {
        throw std::runtime_error("includes of " + path.string() + " do not end");
    }
    return text;
}

// The chosen variant of each segment of a stage, joined.
std::string read_segments(const fs::path& folder, const json& effect, const char* stage) {
    std::string text;
    const json segments = effect.value("segments", json::object()).value(stage, json::array());
    const json variants = effect.value("variants", json::object()).value(stage, json::array());
    for (size_t i = 0; i < segments.size(); ++i) {
        const size_t chosen = i < variants.size() ? variants[i].get<size_t>() : 0;
        text += read_shader(folder / segments[i].at(chosen).get<std::string>());
    }
    return text;
}

// How many elements a parameter with this default has: arrays give a list of values, or say how
// many random ones they want.
int element_count(const Parameter& parameter, const json& value) {
    if (value.is_object()) {
        return value.value("random", 1);
    }
    const bool many =
        parameter.type.find("[]") != std::string::npos || parameter.type.rfind("instance-", 0) == 0;
    return many ? std::max<int>(1, static_cast<int>(value.size())) : 1;
}

std::vector<Parameter> read_parameters(const json& effect) {
    std::vector<Parameter> parameters;
    for (const json& entry : effect.value("params", json::array())) {
        Parameter parameter{entry.at("type"), entry.at("name"), 1};
        parameter.count = element_count(parameter, entry.value("default", json()));
        parameters.push_back(std::move(parameter));
    }
    return parameters;
}

// The part of an effect that its programs share.
EffectSource read_common(const fs::path& folder, const json& effect) {
    EffectSource common;
    common.name = folder.filename().string();
    common.parameters = read_parameters(effect);
    const json defines = effect.value("defines", json::object());
    for (const auto& [name, value] : defines.items()) {
        common.defines.emplace_back(name,
                                    value.is_string() ? value.get<std::string>() : value.dump());
    }
    common.input_count = static_cast<int32_t>(effect.value("inputs", json::array()).size());
    common.audio_count = static_cast<int32_t>(effect.value("audio", json::array()).size());
    return common;
}

// Sets the texts from the fields "fragment" and "vertex" of `program`.
void read_texts(const fs::path& folder, const json& program, const json& effect,
                EffectSource& out) {
    out.fragment = read_segments(folder, effect, "fragment") +
                   read_shader(folder / program.at("fragment").get<std::string>());
    out.vertex.clear();
    if (program.contains("vertex")) {
        out.vertex = read_segments(folder, effect, "vertex") +
                     read_shader(folder / program.at("vertex").get<std::string>());
    }
}

void load_effect(const fs::path& folder, std::vector<EffectSource>& out) {
    const json effect = json::parse(read_file(folder / "effect.json"));
    if (!effect.contains("fragment")) {
        return;
    }
    EffectSource source = read_common(folder, effect);
    const std::string name = source.name;
    read_texts(folder, effect, effect, source);
    out.push_back(source);
    for (const json& program : effect.value("programs", json::array())) {
        source.name = name + "/" + program.value("name", "program");
        read_texts(folder, program, json::object(), source);
        out.push_back(source);
    }
}

}  // namespace

std::vector<EffectSource> load_samples(const std::string& folder) {
    std::vector<fs::path> folders;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (fs::exists(entry.path() / "effect.json")) {
            folders.push_back(entry.path());
        }
    }
    std::sort(folders.begin(), folders.end());
    std::vector<EffectSource> effects;
    for (const fs::path& path : folders) {
        load_effect(path, effects);
    }
    return effects;
}

}  // namespace bench
