#include "registry.h"

#include "DirectXEffectMgr/Source/core/uniform_text.h"

namespace glsl2hlsl {

namespace {

using movit::ParamType;

// Names, types and counts only: no value is ever read.
class Registry : public movit::Effect {
public:
    std::string type_name() const override { return "glsl2hlsl"; }

    void add(const Param& param) {
        switch (param.shape) {
            case ParamShape::kValue:
                return add_value(param);
            case ParamShape::kArray:
                return add_array(param);
            case ParamShape::kInstance:
                return add_instance(param);
        }
    }

private:
    void add_value(const Param& param) {
        switch (param.type) {
            case ParamType::kInt:
                return register_int(param.name, nullptr);
            case ParamType::kFloat:
                return register_float(param.name, nullptr);
            case ParamType::kVec2:
                return register_vec2(param.name, nullptr);
            case ParamType::kVec3:
                return register_vec3(param.name, nullptr);
            case ParamType::kVec4:
                return register_vec4(param.name, nullptr);
            case ParamType::kMat2:
                return register_mat2(param.name, nullptr);
            case ParamType::kMat3:
                return register_mat3(param.name, nullptr);
            case ParamType::kMat4:
                return register_mat4(param.name, nullptr);
        }
    }

    void add_array(const Param& param) {
        switch (param.type) {
            case ParamType::kInt:
                return register_int_array(param.name, nullptr, param.count);
            case ParamType::kFloat:
                return register_float_array(param.name, nullptr, param.count);
            case ParamType::kVec2:
                return register_vec2_array(param.name, nullptr, param.count);
            case ParamType::kVec3:
                return register_vec3_array(param.name, nullptr, param.count);
            case ParamType::kVec4:
                return register_vec4_array(param.name, nullptr, param.count);
            case ParamType::kMat2:
            case ParamType::kMat3:
            case ParamType::kMat4:
                return;  // the options refuse them
        }
    }

    void add_instance(const Param& param) {
        switch (param.type) {
            case ParamType::kInt:
                return register_instance_int(param.name, nullptr, param.count);
            case ParamType::kFloat:
                return register_instance_float(param.name, nullptr, param.count);
            case ParamType::kVec2:
                return register_instance_vec2(param.name, nullptr, param.count);
            case ParamType::kVec3:
                return register_instance_vec3(param.name, nullptr, param.count);
            case ParamType::kVec4:
                return register_instance_vec4(param.name, nullptr, param.count);
            case ParamType::kMat2:
            case ParamType::kMat3:
            case ParamType::kMat4:
                return;  // the options refuse them
        }
    }
};

}  // namespace

std::string declarations(const Options& options) {
    Registry registry;
    for (const Param& param : options.params) {
        registry.add(param);
    }
    for (const auto& [name, value] : options.defines) {
        registry.add_define(name, value);
    }
    registry.register_vec2("iResolution", nullptr);
    registry.register_vec2("iResolutionOrig", nullptr);
    std::string text;
    output_uniform_declarations(registry, text);
    return text;
}

}  // namespace glsl2hlsl
