#include "param_json.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <utility>

namespace effect_render {
namespace {

constexpr int32_t kMostElements = 1 << 20;  // of an array or instance parameter

// Even numbers between 0 and 1 from a fixed row, the same on every machine.
std::vector<double> RandomValues(size_t count, uint32_t seed) {
    std::vector<double> values(count);
    uint64_t state = seed * 2654435769u + 1u;
    for (double& value : values) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        value = static_cast<double>(state >> 40) / static_cast<double>(1 << 24);
    }
    return values;
}

std::vector<double> ReadParamValues(const JsonField& field, ParamType type) {
    if (type.shape != ParamShape::Plain && field.IsObject()) {
        field.AllowOnly({"random", "seed"});
        const int32_t count = field.At("random").Integer(1, kMostElements);
        const int32_t seed = field.Has("seed") ? field.At("seed").Integer(0, kMostElements) : 0;
        return RandomValues(static_cast<size_t>(count) * Components(type.kind),
                            static_cast<uint32_t>(seed));
    }
    std::vector<double> values = field.Numbers();
    if (type.kind == ParamKind::Int) {
        for (const double value : values) {
            if (value != static_cast<double>(static_cast<int64_t>(value)) ||
                value < -2147483648.0 || value > 2147483647.0) {
                field.Fail("expected 32-bit integers");
            }
        }
    }
    const size_t components = Components(type.kind);
    if (type.shape == ParamShape::Plain && values.size() != components) {
        field.Fail("expected " + std::to_string(components) + " number(s), found " +
                   std::to_string(values.size()));
    }
    if (values.empty() || values.size() % components != 0) {
        field.Fail("expected whole elements of " + std::to_string(components) +
                   " number(s), found " + std::to_string(values.size()));
    }
    return values;
}

ParamTrack ReadParam(const JsonField& field) {
    field.AllowOnly({"name", "type", "default", "from", "to", "description"});
    ParamTrack track;
    track.name = field.At("name").Text();
    if (!IsIdentifier(track.name) || track.name == "iResolution" ||
        track.name == "iResolutionOrig") {
        field.At("name").Fail("'" + track.name + "' cannot be the name of a parameter");
    }
    const std::optional<ParamType> type = ParseType(field.At("type").Text());
    if (!type) {
        field.At("type").Fail("'" + field.At("type").Text() + "' is no parameter type");
    }
    track.type = *type;
    if (field.Has("from") != field.Has("to")) {
        field.Fail("'from' and 'to' go together");
    }
    if (field.Has("from")) {
        track.first = ReadParamValues(field.At("from"), *type);
        track.last = ReadParamValues(field.At("to"), *type);
    }
    track.still = field.Has("default") || track.first.empty()
                      ? ReadParamValues(field.At("default"), *type)
                      : track.first;
    if (track.first.size() != track.last.size() ||
        (!track.first.empty() && track.first.size() != track.still.size())) {
        field.Fail("'default', 'from' and 'to' differ in length");
    }
    return track;
}

}  // namespace

bool IsIdentifier(const std::string& name) {
    const auto is_word = [](unsigned char c) { return std::isalnum(c) != 0 || c == '_'; };
    return !name.empty() && std::isdigit(static_cast<unsigned char>(name[0])) == 0 &&
           std::all_of(name.begin(), name.end(), is_word);
}

void ReadParams(const JsonField& field, EffectDescription& effect) {
    for (const JsonField& item : field.Items()) {
        ParamTrack track = ReadParam(item);
        if (effect.FindParam(track.name) != nullptr) {
            item.At("name").Fail("'" + track.name + "' is already there");
        }
        effect.params.push_back(std::move(track));
    }
}

ParamOverrides ReadOverrides(const JsonField& field, const EffectDescription& effect) {
    ParamOverrides overrides;
    for (const auto& [name, value] : field.Members()) {
        const ParamTrack* track = effect.FindParam(name);
        if (track == nullptr) {
            value.Fail("there is no parameter '" + name + "'");
        }
        std::vector<double> numbers = value.Numbers();
        if (numbers.size() != track->still.size()) {
            value.Fail("expected " + std::to_string(track->still.size()) + " number(s), found " +
                       std::to_string(numbers.size()));
        }
        overrides[name] = std::move(numbers);
    }
    return overrides;
}

}  // namespace effect_render
