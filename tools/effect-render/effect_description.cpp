#include "effect_description.h"

#include <algorithm>

namespace effect_render {

ParamTrack* EffectDescription::FindParam(const std::string& name) {
    const auto found = std::find_if(params.begin(), params.end(), [&name](const ParamTrack& track) {
        return track.name == name;
    });
    return found == params.end() ? nullptr : &*found;
}

const ParamTrack* EffectDescription::FindParam(const std::string& name) const {
    return const_cast<EffectDescription*>(this)->FindParam(name);
}

EffectDescription DescribeShader(const std::string& fragment, const std::string& vertex) {
    EffectDescription effect;
    effect.source = fragment;
    effect.fragment = fragment;
    effect.vertex = vertex;
    effect.passes.resize(1);
    effect.steps.resize(1);
    return effect;
}

}  // namespace effect_render
