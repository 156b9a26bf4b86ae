#include "transition_effect.h"

#include <algorithm>

#include "files.h"
#include "tool_error.h"
#include "transition/transition.h"

namespace effect_render {
namespace {

constexpr const char* kProgress = "progress";
constexpr const char* kRatio = "ratio";
constexpr size_t kOwnPictures = 2;  // the one that goes and the one that comes

ParamTrack TrackOf(const transition::Param& param) {
    ParamTrack track;
    track.name = param.name;
    track.type = ParseType(param.registered).value();
    track.still.assign(param.values.begin(), param.values.end());
    if (param.name == kProgress) {
        track.first = {0.0};
        track.last = {1.0};
    }
    return track;
}

void CheckPictures(const Options& options, const std::vector<std::string>& samplers) {
    // A stream on standard input is the first picture.
    const size_t pictures = options.inputs.size() + (options.raw_in ? 1 : 0);
    if (pictures < kOwnPictures) {
        throw UsageError("--transition '" + options.transition + "': expected two pictures");
    }
    const size_t given = pictures - kOwnPictures;
    if (given < samplers.size()) {
        throw UsageError("--transition '" + options.transition + "': its '" + samplers[given] +
                         "' needs picture " + std::to_string(pictures + 1));
    }
}

void CheckParams(const Options& options, const EffectDescription& effect) {
    for (const ParamTrack& given : options.params) {
        if (effect.FindParam(given.name) == nullptr) {
            throw UsageError("'" + given.name + "': '" + options.transition +
                             "' has no such parameter");
        }
    }
}

}  // namespace

EffectDescription DescribeTransition(const Options& options) {
    transition::Effect adapted =
        transition::adapt(ReadText(options.transition), {options.rewrites});
    if (!adapted.error.empty()) {
        throw ToolError(options.transition + ": " + adapted.error);
    }
    EffectDescription effect = DescribeShader(options.transition, "");
    effect.fragment_text = std::move(adapted.glsl);
    effect.notes = std::move(adapted.rewrites);
    std::transform(adapted.params.begin(), adapted.params.end(), std::back_inserter(effect.params),
                   TrackOf);
    CheckPictures(options, adapted.samplers);
    CheckParams(options, effect);
    return effect;
}

void SetRatio(const Options& options, uint32_t width, uint32_t height, EffectDescription& effect) {
    const bool given = std::any_of(options.params.begin(), options.params.end(),
                                   [](const ParamTrack& param) { return param.name == kRatio; });
    if (!given) {
        effect.FindParam(kRatio)->still = {static_cast<double>(width) /
                                           static_cast<double>(height)};
    }
}

}  // namespace effect_render
