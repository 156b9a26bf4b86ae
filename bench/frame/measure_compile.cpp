#include <d3dcompiler.h>
#include <wrl/client.h>

#include <stdexcept>

#include "frame/frame_sections.h"
#include "frame/frame_world.h"

namespace bench {
namespace {

void compile_stage(const std::string& text, const char* entry, const char* profile) {
    Microsoft::WRL::ComPtr<ID3DBlob> code;
    Microsoft::WRL::ComPtr<ID3DBlob> errors;
    if (FAILED(D3DCompile(text.data(), text.size(), nullptr, nullptr, nullptr, entry, profile, 0, 0,
                          &code, &errors))) {
        throw std::runtime_error("the HLSL compiler refused a generated effect");
    }
}

struct CompileTimes {
    std::vector<double> translate, compile, first, second;
};

// An effect of the library with the texts and parameters of `source`, not initialised.
std::shared_ptr<IOpenGLEffect> make_effect(const Engine& engine, const EffectSource& source) {
    static const float kValues[16] = {};
    std::shared_ptr<IOpenGLEffect> effect;
    engine->CreateEffect(64, 64, 256, false, "", effect, 0, "", {}, {});
    effect->SetFragmentShaderText(source.fragment.c_str());
    effect->SetVertexShaderText(source.vertex.c_str());
    for (const Parameter& parameter : source.parameters) {
        if (parameter.type == "vec3") {
            effect->RegisterParamVec3(parameter.name.c_str(), kValues);
        } else {
            effect->RegisterParamFloat(parameter.name.c_str(), 0.0f);
        }
    }
    effect->AddFlatInput(64, 64, 256, true);
    return effect;
}

double init_us(const std::shared_ptr<IOpenGLEffect>& effect) {
    return time_us([&effect] {
        if (effect->InitEffect(effect) != 0) {
            throw std::runtime_error("a generated effect does not compile");
        }
    });
}

// Each effect once: the very first InitEffect of a text, and that of a second effect of the same.
void time_effect(const Engine& engine, const EffectSource& source, CompileTimes& times) {
    const Subject subject(source);
    ProgramText text;
    times.translate.push_back(median({time_us([&] { (void)subject.translate(text); }),
                                      time_us([&] { (void)subject.translate(text); }),
                                      time_us([&] { (void)subject.translate(text); })}));
    times.compile.push_back(time_us([&text] {
        compile_stage(text.vertex_hlsl, "mainVS", "vs_5_0");
        compile_stage(text.fragment_hlsl, "mainPS", "ps_5_0");
    }));
    const auto first = make_effect(engine, source);
    times.first.push_back(init_us(first));
    const auto second = make_effect(engine, source);
    times.second.push_back(init_us(second));
}

}  // namespace

Section measure_compile(const FrameScale& scale) {
    fake::World& world = null_world();
    const Engine engine(false, world.device());
    CompileTimes times;
    const std::vector<EffectSource> effects = make_effects(scale.rounds * 4);
    for (const EffectSource& effect : effects) {
        time_effect(engine, effect, times);
    }
    Section section;
    section.title = "first frame: what one effect's compile consists of";
    section.columns = {"step", "us", "beside", "ratio"};
    const double compile = median(times.compile);
    const double translate = median(times.translate);
    const double first = median(times.first);
    const double second = median(times.second);
    section.rows = {{"D3DCompile, both stages", {compile, 1}, "", ""},
                    {"translation", {translate, 1}, "D3DCompile", {compile / translate, 1}},
                    {"first InitEffect", {first, 1}, "", ""},
                    {"second InitEffect", {second, 1}, "the first", {first / second, 1}}};
    section.notes.push_back("medians over " + std::to_string(effects.size()) +
                            " generated effects, each compiled once, on a device that does "
                            "nothing");
    section.findings = {
        {"translation in proportion", "D3DCompile of the same effect",
         format("1/%.0f (%.1f us beside %.2f ms)", compile / translate, translate,
                compile / 1000.0),
         "1/150", outcome_of(translate * 150.0 <= compile)},
        {"a second InitEffect with known texts", "the first one",
         format("1/%.0f (%.0f us beside %.2f ms)", first / second, second, first / 1000.0), "1/20",
         outcome_of(second * 20.0 <= first)}};
    return section;
}

}  // namespace bench
