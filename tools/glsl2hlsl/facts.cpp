#include "facts.h"

namespace glsl2hlsl {

diagnostics::EffectFacts facts_of(const Options& options) {
    diagnostics::EffectFacts facts;
    facts.fragment.path = options.fragment;
    facts.vertex.path = options.vertex;
    facts.base64 = options.base64;
    for (const Param& param : options.params) {
        facts.params.push_back(
            {std::string(movit::type_word(param.type)), param.name, param.shape, param.count});
    }
    facts.defines = options.defines;
    facts.inputs = options.inputs;
    facts.audio = options.audio;
    return facts;
}

}  // namespace glsl2hlsl
