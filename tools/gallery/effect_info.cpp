// effect-info FOLDER
// effect-info [--no-rewrites] --transition FILE
//
// Tells as JSON on standard output what there is to know of a sample effect or a public transition
// without drawing it: its parameters, inputs, sources and the HLSL they become. A chain gives one
// entry of "effects" for each of its effects. Exit status 0; 1 and a line on stderr if it cannot be
// read; 2 for wrong usage.

#include <cstdio>
#include <exception>
#include <nlohmann/json.hpp>

#include "DirectXEffectMgr/Source/logging/logging.h"
#include "effect-render/effect_json.h"
#include "effect-render/files.h"
#include "effect-render/transition_effect.h"
#include "gallery/programs.h"
#include "transition/transition.h"

namespace {

using effect_render::EffectDescription;
using nlohmann::ordered_json;

constexpr size_t kShownValues = 16;  // of a parameter; one with more shows their number only
constexpr size_t kTransitionPictures = 2;

ordered_json param_json(const effect_render::ParamTrack& track) {
    ordered_json json = {{"name", track.name}, {"type", TypeText(track.type)}};
    if (track.still.size() <= kShownValues) {
        json["default"] = track.still;
    } else {
        json["count"] = track.Count();
    }
    if (!track.first.empty()) {
        json["from"] = track.first;
        json["to"] = track.last;
    }
    return json;
}

ordered_json input_json(const effect_render::InputDescription& input) {
    switch (input.kind) {
        case effect_render::InputKind::Files:
            return input.files;
        case effect_render::InputKind::Target:
            return {{"target", input.target}};
        case effect_render::InputKind::Previous:
            return "previous";
        case effect_render::InputKind::Stream:
            return "stream";
    }
    return nullptr;
}

void add_source(const std::string& path, ordered_json& sources) {
    if (path.empty()) {
        return;
    }
    const std::string name = path.substr(path.find_last_of('/') + 1);
    for (const ordered_json& source : sources) {
        if (source["file"] == name) {
            return;
        }
    }
    sources.push_back({{"file", name}, {"text", effect_render::ReadText(path)}});
}

ordered_json sources_json(const EffectDescription& effect) {
    ordered_json sources = ordered_json::array();
    add_source(effect.fragment, sources);
    add_source(effect.vertex, sources);
    for (const auto& program : effect.programs) {
        add_source(program.fragment, sources);
        add_source(program.vertex, sources);
    }
    for (const auto* segments : {&effect.fragment_segments, &effect.vertex_segments}) {
        for (const std::vector<std::string>& variants : *segments) {
            for (const std::string& variant : variants) {
                add_source(variant, sources);
            }
        }
    }
    return sources;
}

ordered_json programs_json(const EffectDescription& effect) {
    ordered_json programs = ordered_json::array();
    for (const gallery::Program& program : gallery::translate(effect)) {
        programs.push_back({{"name", program.name},
                            {"vertex", program.hlsl.vertex_hlsl},
                            {"fragment", program.hlsl.fragment_hlsl}});
    }
    return programs;
}

ordered_json effect_json(const EffectDescription& effect) {
    ordered_json json;
    json["params"] = ordered_json::array();
    for (const effect_render::ParamTrack& track : effect.params) {
        json["params"].push_back(param_json(track));
    }
    json["inputs"] = ordered_json::array();
    for (const effect_render::InputDescription& input : effect.inputs) {
        json["inputs"].push_back(input_json(input));
    }
    json["sources"] = sources_json(effect);
    json["programs"] = programs_json(effect);
    return json;
}

ordered_json folder_json(const std::string& folder) {
    const auto description =
        nlohmann::json::parse(effect_render::ReadText(folder + "/effect.json"));
    ordered_json json = {{"description", description.value("description", "")}};
    json["effects"] = ordered_json::array();
    for (const EffectDescription& effect : effect_render::LoadEffectFolder(folder)) {
        json["effects"].push_back(effect_json(effect));
    }
    return json;
}

ordered_json transition_json(const std::string& file, bool rewrites) {
    const transition::Effect adapted = transition::adapt(effect_render::ReadText(file), {rewrites});
    effect_render::Options options;
    options.transition = file;
    options.rewrites = rewrites;
    options.inputs.resize(kTransitionPictures + adapted.samplers.size());
    EffectDescription effect = effect_render::DescribeTransition(options);
    effect.inputs.resize(options.inputs.size());
    ordered_json json = effect_json(effect);
    for (size_t i = 0; i < adapted.params.size(); ++i) {
        json["params"][i]["declared"] = adapted.params[i].type;
    }
    return {{"notes", adapted.rewrites}, {"samplers", adapted.samplers}, {"effects", {json}}};
}

int run(const std::vector<std::string>& arguments) {
    set_log_callback([](int32_t, const char*, va_list) {});
    const bool rewrites = arguments.empty() || arguments[0] != "--no-rewrites";
    const std::vector<std::string> rest(arguments.begin() + (rewrites ? 0 : 1), arguments.end());
    const bool folder = rest.size() == 1 && rewrites;
    if (!folder && (rest.size() != 2 || rest[0] != "--transition")) {
        std::fputs("usage: effect-info FOLDER | [--no-rewrites] --transition FILE\n", stderr);
        return 2;
    }
    const ordered_json json = folder ? folder_json(rest[0]) : transition_json(rest[1], rewrites);
    // A source may hold bytes that are no UTF-8.
    std::puts(json.dump(1, ' ', false, ordered_json::error_handler_t::replace).c_str());
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "effect-info: error: %s\n", error.what());
        return 1;
    }
}
