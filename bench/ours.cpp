#include "ours.h"

#include <stdexcept>
#include <string_view>

#include "DirectXEffectMgr/Source/core/uniform_text.h"
#include "movit/effect.h"

namespace bench {
namespace {

class Registry : public movit::Effect {
public:
    std::string type_name() const override { return "Registry"; }
};

// A registration by its type word. Values are never read here, so none stand behind the names.
struct Registration {
    std::string_view type;
    void (*add)(movit::Effect& to, const Parameter& parameter);
};

#define ORVANE_BENCH_PLAIN(type)                                                                   \
    {                                                                                              \
#type, [](movit::Effect & to, const Parameter& p) { to.register_##type(p.name, nullptr); } \
    }
#define ORVANE_BENCH_MANY(text, kind)                                            \
    {                                                                            \
        text, [](movit::Effect& to, const Parameter& p) {                        \
            to.register_##kind(p.name, nullptr, static_cast<uint64_t>(p.count)); \
        }                                                                        \
    }

constexpr Registration kRegistrations[] = {
    ORVANE_BENCH_PLAIN(int),
    ORVANE_BENCH_PLAIN(float),
    ORVANE_BENCH_PLAIN(vec2),
    ORVANE_BENCH_PLAIN(vec3),
    ORVANE_BENCH_PLAIN(vec4),
    ORVANE_BENCH_PLAIN(mat2),
    ORVANE_BENCH_PLAIN(mat3),
    ORVANE_BENCH_PLAIN(mat4),
    ORVANE_BENCH_MANY("int[]", int_array),
    ORVANE_BENCH_MANY("float[]", float_array),
    ORVANE_BENCH_MANY("vec2[]", vec2_array),
    ORVANE_BENCH_MANY("vec3[]", vec3_array),
    ORVANE_BENCH_MANY("vec4[]", vec4_array),
    ORVANE_BENCH_MANY("instance-int", instance_int),
    ORVANE_BENCH_MANY("instance-float", instance_float),
    ORVANE_BENCH_MANY("instance-vec2", instance_vec2),
    ORVANE_BENCH_MANY("instance-vec3", instance_vec3),
    ORVANE_BENCH_MANY("instance-vec4", instance_vec4),
};

#undef ORVANE_BENCH_PLAIN
#undef ORVANE_BENCH_MANY

void add_parameter(movit::Effect& to, const Parameter& parameter) {
    for (const Registration& row : kRegistrations) {
        if (row.type == parameter.type) {
            row.add(to, parameter);
            return;
        }
    }
    throw std::runtime_error("unknown parameter type " + parameter.type);
}

}  // namespace

Subject::Subject(const EffectSource& effect)
    : registry_(std::make_unique<Registry>()),
      input_count_(effect.input_count),
      audio_count_(effect.audio_count) {
    registry_->register_vec2("iResolution", nullptr);
    registry_->register_vec2("iResolutionOrig", nullptr);
    for (const Parameter& parameter : effect.parameters) {
        add_parameter(*registry_, parameter);
    }
    for (const auto& [name, value] : effect.defines) {
        registry_->add_define(name, value);
    }
    sources_.fragment.text = effect.fragment;
    sources_.vertex.text = effect.vertex;
    std::string uniforms;
    output_uniform_declarations(*registry_, uniforms);
    if (!AssembleProgram(sources_, uniforms, assembled_)) {
        throw std::runtime_error("cannot assemble " + effect.name);
    }
}

Subject::~Subject() = default;
Subject::Subject(Subject&&) noexcept = default;

bool Subject::translate(ProgramText& out) const {
    return TranslateAssembled(assembled_, input_count_, audio_count_, out);
}

bool Subject::translate_from_source(ProgramText& out) const {
    std::string uniforms;
    output_uniform_declarations(*registry_, uniforms);
    return TranslateProgram(sources_, uniforms, input_count_, audio_count_, out);
}

std::string Subject::failure() const {
    ProgramText out;
    ParseFailure failure;
    if (TranslateAssembled(assembled_, input_count_, audio_count_, out, &failure)) {
        return {};
    }
    return failure.text.empty() ? "refused without a message" : failure.text;
}

}  // namespace bench
