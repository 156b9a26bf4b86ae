#include "job.h"

#include <algorithm>
#include <tuple>

#include "effect_json.h"
#include "files.h"
#include "files_read.h"
#include "picture.h"
#include "tool_error.h"
#include "transition_effect.h"

namespace effect_render {
namespace {

constexpr uint32_t kDefaultWidth = 640;
constexpr uint32_t kDefaultHeight = 360;

// The stream becomes the first input; whatever the description says of its filter holds.
void ApplyStream(const std::pair<uint32_t, uint32_t>& size, EffectDescription& effect) {
    if (effect.inputs.empty()) {
        effect.inputs.emplace_back();
    }
    InputDescription& input = effect.inputs[0];
    if (input.kind != InputKind::Files) {
        throw UsageError("--raw-in: input 1 of this effect takes no picture from outside");
    }
    if (input.channels != 4 || input.still) {
        throw UsageError("--raw-in: input 1 of this effect takes " +
                         std::string(input.still ? "a still picture" : "a brightness picture"));
    }
    input.kind = InputKind::Stream;
    input.files.clear();
    input.stream_size = size;
}

void ApplyInputs(const Options& options, EffectDescription& effect) {
    const size_t streams = options.raw_in ? 1 : 0;
    if (options.raw_in) {
        ApplyStream(*options.raw_in, effect);
    }
    for (size_t i = 0; i < options.inputs.size(); ++i) {
        const size_t index = streams + i;
        if (index >= effect.inputs.size()) {
            effect.inputs.emplace_back();
        }
        InputDescription& input = effect.inputs[index];
        if (input.kind != InputKind::Files) {
            throw UsageError("--input '" + options.inputs[i] + "': input " +
                             std::to_string(index + 1) + " of this effect takes no file");
        }
        input.files = {options.inputs[i]};
    }
    for (size_t i = 0; i < options.audio.size(); ++i) {
        if (i >= effect.audio.size()) {
            effect.audio.emplace_back();
        }
        effect.audio[i] = options.audio[i];
    }
}

// A parameter that an effect of the chain knows gets the new course; any other is registered with
// the first effect.
void ApplyParam(const ParamTrack& given, EffectChain& effects) {
    bool known = false;
    for (EffectDescription& effect : effects) {
        ParamTrack* track = effect.FindParam(given.name);
        if (track == nullptr) {
            continue;
        }
        if (!(track->type == given.type)) {
            throw UsageError("'" + given.name + "' is a " + TypeText(track->type) + ", not a " +
                             TypeText(given.type));
        }
        *track = given;
        known = true;
    }
    if (!known) {
        effects.front().params.push_back(given);
    }
}

void ApplyDefine(const std::pair<std::string, std::string>& given, EffectDescription& effect) {
    const auto found =
        std::find_if(effect.defines.begin(), effect.defines.end(),
                     [&given](const auto& define) { return define.first == given.first; });
    if (found != effect.defines.end()) {
        found->second = given.second;
    } else {
        effect.defines.push_back(given);
    }
}

void ApplyFlags(const Options& options, EffectDescription& effect) {
    effect.depth = effect.depth || options.depth;
    effect.msaa = effect.msaa || options.msaa;
    effect.blend = options.blend.value_or(effect.blend);
    if (options.clear_color) {
        effect.clear = true;
        effect.clear_color = *options.clear_color;
    }
}

void ChooseSize(const Options& options, Job& job) {
    const EffectDescription& effect = job.effects.front();
    job.width = kDefaultWidth;
    job.height = kDefaultHeight;
    if (options.size) {
        std::tie(job.width, job.height) = *options.size;
    } else if (effect.size) {
        std::tie(job.width, job.height) = *effect.size;
    } else if (options.raw_in) {
        std::tie(job.width, job.height) = *options.raw_in;
    } else if (!effect.inputs.empty() && effect.inputs[0].kind == InputKind::Files) {
        const Picture picture = LoadPicture(effect.inputs[0].files[0], 4);
        job.width = picture.width;
        job.height = picture.height;
    }
}

EffectChain FindEffects(const Options& options) {
    if (!options.transition.empty()) {
        return {DescribeTransition(options)};
    }
    if (IsFolder(options.effect)) {
        return LoadEffectFolder(options.effect);
    }
    if (!IsFile(options.effect)) {
        NoteFileRead(options.effect);
        throw ToolError(options.effect + ": there is no such effect");
    }
    return {DescribeShader(options.effect, "")};
}

}  // namespace

Job MakeJob(const Options& options) {
    Job job;
    job.effects = FindEffects(options);
    EffectDescription& first = job.effects.front();
    if (!options.vertex.empty()) {
        first.vertex = options.vertex;
    }
    ApplyInputs(options, first);
    for (const ParamTrack& param : options.params) {
        ApplyParam(param, job.effects);
    }
    for (EffectDescription& effect : job.effects) {
        for (const auto& define : options.defines) {
            ApplyDefine(define, effect);
        }
        ApplyFlags(options, effect);
    }
    ChooseSize(options, job);
    if (!options.transition.empty()) {
        SetRatio(options, job.width, job.height, first);
    }
    return job;
}

std::optional<double> WayAt(int32_t frame, const FrameRange& span) {
    if (span.last == span.first) {
        return std::nullopt;
    }
    const double way =
        static_cast<double>(frame - span.first) / static_cast<double>(span.last - span.first);
    return std::clamp(way, 0.0, 1.0);
}

}  // namespace effect_render
