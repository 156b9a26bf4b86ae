#include "params.h"

#include <cmath>
#include <cstdlib>
#include <iterator>

#include "tool_error.h"

namespace effect_render {
namespace {

struct KindRow {
    std::string_view word;
    size_t components;
    bool repeatable;  // has an array form and an instance form
};

// In the order of ParamKind.
constexpr KindRow kKinds[] = {
    {"int", 1, true},  {"float", 1, true}, {"vec2", 2, true},  {"vec3", 3, true},
    {"vec4", 4, true}, {"mat2", 4, false}, {"mat3", 9, false}, {"mat4", 16, false},
};

constexpr std::string_view kInstancePrefix = "instance-";
constexpr std::string_view kArraySuffix = "[]";

const KindRow& RowOf(ParamKind kind) {
    return kKinds[static_cast<size_t>(kind)];
}

bool TakePrefix(std::string_view& text, std::string_view prefix) {
    if (text.substr(0, prefix.size()) != prefix) {
        return false;
    }
    text.remove_prefix(prefix.size());
    return true;
}

bool TakeSuffix(std::string_view& text, std::string_view suffix) {
    if (text.size() < suffix.size() || text.substr(text.size() - suffix.size()) != suffix) {
        return false;
    }
    text.remove_suffix(suffix.size());
    return true;
}

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == separator) {
            parts.emplace_back();
        } else {
            parts.back().push_back(c);
        }
    }
    return parts;
}

double ParseNumber(ParamKind kind, const std::string& text, const std::string& whole) {
    char* end = nullptr;
    const double number = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0' || !std::isfinite(number)) {
        throw UsageError("'" + whole + "': '" + text + "' is no number");
    }
    if (kind == ParamKind::Int && (number != std::floor(number) || std::abs(number) > 2147483647)) {
        throw UsageError("'" + whole + "': '" + text + "' is no 32-bit integer");
    }
    return number;
}

}  // namespace

size_t Components(ParamKind kind) {
    return RowOf(kind).components;
}

std::string TypeText(ParamType type) {
    std::string text;
    if (type.shape == ParamShape::Instance) {
        text += kInstancePrefix;
    }
    text += RowOf(type.kind).word;
    if (type.shape == ParamShape::Array) {
        text += kArraySuffix;
    }
    return text;
}

std::optional<ParamType> ParseType(std::string_view text) {
    ParamType type;
    if (TakePrefix(text, kInstancePrefix)) {
        type.shape = ParamShape::Instance;
    } else if (TakeSuffix(text, kArraySuffix)) {
        type.shape = ParamShape::Array;
    }
    for (size_t i = 0; i < std::size(kKinds); ++i) {
        if (kKinds[i].word == text) {
            type.kind = static_cast<ParamKind>(i);
            if (type.shape != ParamShape::Plain && !kKinds[i].repeatable) {
                return std::nullopt;
            }
            return type;
        }
    }
    return std::nullopt;
}

std::vector<double> ParamTrack::At(std::optional<double> way) const {
    if (!way || first.empty()) {
        return still;
    }
    std::vector<double> values(first.size());
    for (size_t i = 0; i < values.size(); ++i) {
        values[i] = first[i] + (last[i] - first[i]) * *way;
    }
    return values;
}

ParamTrack ParseParam(ParamKind kind, const std::string& text) {
    const size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw UsageError("'" + text + "': expected NAME=VALUE");
    }
    ParamTrack track;
    track.name = text.substr(0, equals);
    track.type = {kind, ParamShape::Plain};
    bool moves = false;
    for (const std::string& value : Split(text.substr(equals + 1), ',')) {
        const size_t colon = value.find(':');
        moves = moves || colon != std::string::npos;
        const double from = ParseNumber(kind, value.substr(0, colon), text);
        track.first.push_back(from);
        track.last.push_back(
            colon == std::string::npos ? from : ParseNumber(kind, value.substr(colon + 1), text));
    }
    if (track.first.size() != Components(kind)) {
        throw UsageError("'" + text + "': a " + TypeText(track.type) + " takes " +
                         std::to_string(Components(kind)) + " number(s)");
    }
    track.still = track.first;
    if (!moves) {
        track.first.clear();
        track.last.clear();
    }
    return track;
}

const void* PackedValues::Data() const {
    return ints.empty() ? static_cast<const void*>(floats.data()) : ints.data();
}

PackedValues PackValues(ParamKind kind, const std::vector<double>& values) {
    PackedValues packed;
    for (const double value : values) {
        if (kind == ParamKind::Int) {
            packed.ints.push_back(static_cast<int32_t>(std::lround(value)));
        } else {
            packed.floats.push_back(static_cast<float>(value));
        }
    }
    return packed;
}

}  // namespace effect_render
