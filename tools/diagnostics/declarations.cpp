#include "diagnostics/declarations.h"

#include <algorithm>

#include "DirectXEffectMgr/Source/core/uniform_text.h"
#include "movit/param_tables.h"

namespace diagnostics {

namespace {

using movit::ParamType;

// Names, types and counts only: no value is ever read.
class Registry : public movit::Effect {
public:
    std::string type_name() const override { return "diagnostics"; }

    void add(const Param& param) {
        const auto* const word = std::find(std::begin(movit::kParamTypeWords),
                                           std::end(movit::kParamTypeWords), param.type);
        if (word == std::end(movit::kParamTypeWords)) {
            return;
        }
        const auto type = static_cast<ParamType>(word - std::begin(movit::kParamTypeWords));
        switch (param.shape) {
            case ParamShape::kValue:
                return add_value(type, param.name);
            case ParamShape::kArray:
                return add_array(type, param.name, param.count);
            case ParamShape::kInstance:
                return add_instance(type, param.name, param.count);
        }
    }

private:
    void add_value(ParamType type, const std::string& name) {
        switch (type) {
            case ParamType::kInt:
                return register_int(name, nullptr);
            case ParamType::kFloat:
                return register_float(name, nullptr);
            case ParamType::kVec2:
                return register_vec2(name, nullptr);
            case ParamType::kVec3:
                return register_vec3(name, nullptr);
            case ParamType::kVec4:
                return register_vec4(name, nullptr);
            case ParamType::kMat2:
                return register_mat2(name, nullptr);
            case ParamType::kMat3:
                return register_mat3(name, nullptr);
            case ParamType::kMat4:
                return register_mat4(name, nullptr);
        }
    }

    void add_array(ParamType type, const std::string& name, uint64_t count) {
        switch (type) {
            case ParamType::kInt:
                return register_int_array(name, nullptr, count);
            case ParamType::kFloat:
                return register_float_array(name, nullptr, count);
            case ParamType::kVec2:
                return register_vec2_array(name, nullptr, count);
            case ParamType::kVec3:
                return register_vec3_array(name, nullptr, count);
            case ParamType::kVec4:
                return register_vec4_array(name, nullptr, count);
            case ParamType::kMat2:
            case ParamType::kMat3:
            case ParamType::kMat4:
                return;  // there are none
        }
    }

    void add_instance(ParamType type, const std::string& name, uint64_t count) {
        switch (type) {
            case ParamType::kInt:
                return register_instance_int(name, nullptr, count);
            case ParamType::kFloat:
                return register_instance_float(name, nullptr, count);
            case ParamType::kVec2:
                return register_instance_vec2(name, nullptr, count);
            case ParamType::kVec3:
                return register_instance_vec3(name, nullptr, count);
            case ParamType::kVec4:
                return register_instance_vec4(name, nullptr, count);
            case ParamType::kMat2:
            case ParamType::kMat3:
            case ParamType::kMat4:
                return;  // there are none
        }
    }
};

}  // namespace

std::string declarations(const EffectFacts& facts) {
    Registry registry;
    for (const Param& param : facts.params) {
        registry.add(param);
    }
    for (const auto& [name, value] : facts.defines) {
        registry.add_define(name, value);
    }
    registry.register_vec2("iResolution", nullptr);
    registry.register_vec2("iResolutionOrig", nullptr);
    std::string text;
    output_uniform_declarations(registry, text);
    return text;
}

}  // namespace diagnostics
