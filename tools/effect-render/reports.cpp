#include "reports.h"

#include <algorithm>

#include "console.h"
#include "diagnostics/second_look.h"
#include "files.h"
#include "tool_error.h"

namespace effect_render {
namespace {

using diagnostics::EffectFacts;

diagnostics::ParamShape ShapeOf(ParamShape shape) {
    switch (shape) {
        case ParamShape::Array:
            return diagnostics::ParamShape::kArray;
        case ParamShape::Instance:
            return diagnostics::ParamShape::kInstance;
        case ParamShape::Plain:
            break;
    }
    return diagnostics::ParamShape::kValue;
}

// The library takes the first variant of each segment where none are chosen.
void SetVariants(const std::vector<int32_t>& chosen, diagnostics::StageFacts& stage) {
    stage.variants = chosen;
    if (chosen.empty()) {
        stage.variants.assign(stage.segments.size(), 0);
    }
}

EffectFacts MainFacts(const EffectDescription& effect) {
    EffectFacts facts;
    facts.fragment.path = effect.fragment;
    facts.fragment.text = effect.fragment_text;
    facts.fragment.named = effect.fragment;
    facts.fragment.segments = effect.fragment_segments;
    facts.vertex.path = effect.vertex;
    facts.vertex.segments = effect.vertex_segments;
    SetVariants(effect.variants.fragment, facts.fragment);
    SetVariants(effect.variants.vertex, facts.vertex);
    facts.base64 = effect.base64;
    for (const ParamTrack& param : effect.params) {
        facts.params.push_back({TypeText({param.type.kind, ParamShape::Plain}), param.name,
                                ShapeOf(param.type.shape), param.Count()});
    }
    facts.defines = effect.defines;
    facts.inputs = static_cast<int32_t>(effect.inputs.size());
    facts.audio = static_cast<int32_t>(effect.audio.size());
    return facts;
}

// A program's file goes to the library as a text; includes are still looked for beside the main
// one.
void SetFile(const std::string& file, diagnostics::StageFacts& stage) {
    if (!file.empty()) {
        stage.text = ReadText(file);
        stage.named = file;
    }
}

// Those of a whole chain; none if a file that the library is handed as a text cannot be read, which
// is then the failure itself.
std::vector<EffectFacts> ProgramsOf(const EffectChain& effects) {
    std::vector<EffectFacts> programs;
    try {
        for (const EffectDescription& effect : effects) {
            const std::vector<EffectFacts> more = FactsOf(effect);
            programs.insert(programs.end(), more.begin(), more.end());
        }
    } catch (const ToolError&) {
        programs.clear();
    }
    return programs;
}

}  // namespace

std::vector<EffectFacts> FactsOf(const EffectDescription& effect) {
    const EffectFacts main = MainFacts(effect);
    std::vector<EffectFacts> programs{main};
    for (const ProgramDescription& program : effect.programs) {
        programs.push_back(main);
        SetFile(program.fragment, programs.back().fragment);
        SetFile(program.vertex, programs.back().vertex);
    }
    for (const StepDescription& step : effect.steps) {
        if (step.variants) {
            programs.push_back(main);
            SetVariants(step.variants->fragment, programs.back().fragment);
            SetVariants(step.variants->vertex, programs.back().vertex);
        }
    }
    return programs;
}

void PrintWarnings(const EffectChain& effects) {
    for (const diagnostics::Finding& finding : diagnostics::find_warnings(ProgramsOf(effects))) {
        PrintLine(diagnostics::full_text(finding));
    }
}

void ExplainFailure(const EffectChain& effects, const std::string& log) {
    const std::vector<EffectFacts> programs = ProgramsOf(effects);
    for (const diagnostics::Finding& finding : diagnostics::explain_failure(programs, log)) {
        PrintLine(diagnostics::full_text(finding));
    }
}

}  // namespace effect_render
