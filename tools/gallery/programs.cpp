#include "gallery/programs.h"

#include "diagnostics/declarations.h"
#include "effect-render/reports.h"
#include "effect-render/tool_error.h"

namespace gallery {
namespace {

using diagnostics::EffectFacts;
using effect_render::EffectDescription;

void set_stage(const diagnostics::StageFacts& facts, StageSources& stage) {
    stage.path = facts.path;
    stage.given = facts.text;
    stage.segments = facts.segments;
    stage.segment_indices = facts.variants;
}

Program translate_one(const std::string& source, const std::string& name,
                      const EffectFacts& facts) {
    ProgramSources sources;
    set_stage(facts.fragment, sources.fragment);
    set_stage(facts.vertex, sources.vertex);
    sources.use_given = true;
    sources.base64 = facts.base64;
    Program program;
    program.name = name;
    if (!AssembleProgram(sources, diagnostics::declarations(facts), program.glsl)) {
        throw effect_render::ToolError(source + ": the sources cannot be put together");
    }
    if (!TranslateAssembled(program.glsl, facts.inputs, facts.audio, program.hlsl)) {
        program.hlsl = {};
    }
    return program;
}

}  // namespace

std::vector<Program> translate(const EffectDescription& effect) {
    const std::vector<EffectFacts> facts = effect_render::FactsOf(effect);
    std::vector<Program> programs = {translate_one(effect.source, "", facts.at(0))};
    for (size_t i = 0; i < effect.programs.size(); ++i) {
        programs.push_back(translate_one(effect.source, effect.programs[i].name, facts.at(i + 1)));
    }
    return programs;
}

}  // namespace gallery
