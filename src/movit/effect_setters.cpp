#include <cstring>

#include "movit/effect.h"

namespace movit {

namespace {

template <class Value>
bool replace_passes(ParamTable<Value>& table, const std::string& name,
                    const std::vector<Value>& passes) {
    const auto entry = table.find(name);
    if (entry == table.end()) {
        return false;
    }
    entry->second = passes;
    return true;
}

// Copies `count` scalars through the pointer of pass 0.
template <class Scalar>
bool write_values(const ParamTable<Scalar*>& table, const std::string& name, const Scalar* values,
                  size_t count) {
    const auto entry = table.find(name);
    if (entry == table.end()) {
        return false;
    }
    Scalar* const target = entry->second.empty() ? nullptr : entry->second.front();
    if (target != nullptr && values != nullptr) {
        std::memmove(target, values, count * sizeof(Scalar));
    }
    return true;
}

bool replace_array(ParamTable<ParamArray>& table, const std::string& name, const void* data,
                   uint64_t count) {
    const auto entry = table.find(name);
    if (entry == table.end()) {
        return false;
    }
    if (!entry->second.empty()) {
        entry->second.front() = ParamArray{data, count};
    }
    return true;
}

}  // namespace

bool Effect::set_int_per_pass(const std::string& name, const std::vector<int32_t*>& passes) {
    return replace_passes(params_int, name, passes);
}

bool Effect::set_int(const std::string& name, int32_t value) {
    return write_values(params_int, name, &value, 1);
}

bool Effect::set_float_per_pass(const std::string& name, const std::vector<float*>& passes) {
    return replace_passes(params_float, name, passes);
}

bool Effect::set_float(const std::string& name, float value) {
    return write_values(params_float, name, &value, 1);
}

bool Effect::set_vec2_per_pass(const std::string& name, const std::vector<float*>& passes) {
    return replace_passes(params_vec2, name, passes);
}

bool Effect::set_vec2(const std::string& name, const float* values) {
    return write_values(params_vec2, name, values, 2);
}

bool Effect::set_vec3_per_pass(const std::string& name, const std::vector<float*>& passes) {
    return replace_passes(params_vec3, name, passes);
}

bool Effect::set_vec3(const std::string& name, const float* values) {
    return write_values(params_vec3, name, values, 3);
}

bool Effect::set_vec4_per_pass(const std::string& name, const std::vector<float*>& passes) {
    return replace_passes(params_vec4, name, passes);
}

bool Effect::set_vec4(const std::string& name, const float* values) {
    return write_values(params_vec4, name, values, 4);
}

bool Effect::set_mat2_per_pass(const std::string& name, const std::vector<float*>& passes) {
    return replace_passes(params_mat2, name, passes);
}

bool Effect::set_mat2(const std::string& name, const float* values) {
    return write_values(params_mat2, name, values, 4);
}

bool Effect::set_mat3_per_pass(const std::string& name, const std::vector<float*>& passes) {
    return replace_passes(params_mat3, name, passes);
}

bool Effect::set_mat3(const std::string& name, const float* values) {
    return write_values(params_mat3, name, values, 9);
}

bool Effect::set_mat4_per_pass(const std::string& name, const std::vector<float*>& passes) {
    return replace_passes(params_mat4, name, passes);
}

bool Effect::set_mat4(const std::string& name, const float* values) {
    return write_values(params_mat4, name, values, 16);
}

bool Effect::set_int_array_per_pass(const std::string& name,
                                    const std::vector<ParamArray>& passes) {
    return replace_passes(params_int_array, name, passes);
}

bool Effect::set_int_array(const std::string& name, const void* data, uint64_t count) {
    return replace_array(params_int_array, name, data, count);
}

bool Effect::set_float_array_per_pass(const std::string& name,
                                      const std::vector<ParamArray>& passes) {
    return replace_passes(params_float_array, name, passes);
}

bool Effect::set_float_array(const std::string& name, const void* data, uint64_t count) {
    return replace_array(params_float_array, name, data, count);
}

bool Effect::set_vec2_array_per_pass(const std::string& name,
                                     const std::vector<ParamArray>& passes) {
    return replace_passes(params_vec2_array, name, passes);
}

bool Effect::set_vec2_array(const std::string& name, const void* data, uint64_t count) {
    return replace_array(params_vec2_array, name, data, count);
}

bool Effect::set_vec3_array_per_pass(const std::string& name,
                                     const std::vector<ParamArray>& passes) {
    return replace_passes(params_vec3_array, name, passes);
}

bool Effect::set_vec3_array(const std::string& name, const void* data, uint64_t count) {
    return replace_array(params_vec3_array, name, data, count);
}

bool Effect::set_vec4_array_per_pass(const std::string& name,
                                     const std::vector<ParamArray>& passes) {
    return replace_passes(params_vec4_array, name, passes);
}

bool Effect::set_vec4_array(const std::string& name, const void* data, uint64_t count) {
    return replace_array(params_vec4_array, name, data, count);
}

bool Effect::set_instance_int_per_pass(const std::string& name,
                                       const std::vector<ParamArray>& passes) {
    return replace_passes(params_instance_int, name, passes);
}

bool Effect::set_instance_int(const std::string& name, const void* data, uint64_t count) {
    return replace_array(params_instance_int, name, data, count);
}

bool Effect::set_instance_float_per_pass(const std::string& name,
                                         const std::vector<ParamArray>& passes) {
    return replace_passes(params_instance_float, name, passes);
}

bool Effect::set_instance_float(const std::string& name, const void* data, uint64_t count) {
    return replace_array(params_instance_float, name, data, count);
}

bool Effect::set_instance_vec2_per_pass(const std::string& name,
                                        const std::vector<ParamArray>& passes) {
    return replace_passes(params_instance_vec2, name, passes);
}

bool Effect::set_instance_vec2(const std::string& name, const void* data, uint64_t count) {
    return replace_array(params_instance_vec2, name, data, count);
}

bool Effect::set_instance_vec3_per_pass(const std::string& name,
                                        const std::vector<ParamArray>& passes) {
    return replace_passes(params_instance_vec3, name, passes);
}

bool Effect::set_instance_vec3(const std::string& name, const void* data, uint64_t count) {
    return replace_array(params_instance_vec3, name, data, count);
}

bool Effect::set_instance_vec4_per_pass(const std::string& name,
                                        const std::vector<ParamArray>& passes) {
    return replace_passes(params_instance_vec4, name, passes);
}

bool Effect::set_instance_vec4(const std::string& name, const void* data, uint64_t count) {
    return replace_array(params_instance_vec4, name, data, count);
}

}  // namespace movit
