// Parameters: the host's values get a cell each, arrays stay where the host has them, and the
// parameter node is told by name.

#include <algorithm>
#include <utility>

#include "DirectXEffectMgr/Source/DirectXEffect.h"
#include "DirectXEffectMgr/Source/dx_effect.h"

// Every operation of a parameter begins with this: a missing name is the caller's mistake, a
// missing node means that the effect is being released.
bool CDirectXEffect::AcceptsName(const char* name) const {
    return dx_effect != nullptr && name != nullptr;
}

template <class Setter, class... Values>
int32_t CDirectXEffect::SetByName(const char* name, Setter setter, const Values&... values) {
    if (!AcceptsName(name)) {
        return kResultPointer;
    }
    // A name that was never registered is no failure.
    static_cast<void>((dx_effect->*setter)(TableName(name_scratch_, name), values...));
    return kResultOk;
}

// Copies a value into a cell of its own and registers the cell. Null leaves the cell zero.
template <size_t N>
int32_t CDirectXEffect::RegisterFloats(const char* name, const float* value,
                                       Cells<std::array<float, N>>& cells, int32_t& count,
                                       RegisterFloatsCall call) {
    if (!AcceptsName(name)) {
        return kResultPointer;
    }
    std::array<float, N>& cell = cells.emplace_back();
    ++count;
    if (value != nullptr) {
        std::copy_n(value, N, cell.begin());
    }
    (dx_effect->*call)(TableName(name_scratch_, name), cell.data());
    return kResultOk;
}

int32_t CDirectXEffect::RegisterArray(const char* name, const void* data, uint64_t elements,
                                      std::vector<const void*>& noted, int32_t& count,
                                      RegisterArrayCall call) {
    if (!AcceptsName(name)) {
        return kResultPointer;
    }
    noted.push_back(data);
    ++count;
    (dx_effect->*call)(TableName(name_scratch_, name), data, elements);
    return kResultOk;
}

int32_t CDirectXEffect::RegisterParamFloat(const char* name, float value) {
    if (!AcceptsName(name)) {
        return kResultPointer;
    }
    float& cell = float_values.emplace_back(value);
    ++float_count;
    dx_effect->register_float(TableName(name_scratch_, name), &cell);
    return kResultOk;
}

int32_t CDirectXEffect::RegisterParamInt(const char* name, int32_t value) {
    if (!AcceptsName(name)) {
        return kResultPointer;
    }
    int32_t& cell = int_values.emplace_back(value);
    ++int_count;
    dx_effect->register_int(TableName(name_scratch_, name), &cell);
    return kResultOk;
}

int32_t CDirectXEffect::SetShaderDefine(const char* name, const char* value) {
    if (!AcceptsName(name) || value == nullptr) {
        return kResultPointer;
    }
    dx_effect->add_define(TableName(name_scratch_, name), value);
    return kResultOk;
}

int32_t CDirectXEffect::SetParamIntPerPass(const char* name, const std::vector<int32_t*>& values) {
    return SetByName(name, &DXEffect::set_int_per_pass, values);
}

int32_t CDirectXEffect::SetParamInt(const char* name, int32_t value) {
    return SetByName(name, &DXEffect::set_int, value);
}

int32_t CDirectXEffect::SetParamFloatPerPass(const char* name, const std::vector<float*>& values) {
    return SetByName(name, &DXEffect::set_float_per_pass, values);
}

int32_t CDirectXEffect::SetParamFloat(const char* name, float value) {
    return SetByName(name, &DXEffect::set_float, value);
}

int32_t CDirectXEffect::RegisterParamVec2(const char* name, const float* value) {
    return RegisterFloats(name, value, vec2_values, vec2_count, &DXEffect::register_vec2);
}

int32_t CDirectXEffect::SetParamVec2PerPass(const char* name, const std::vector<float*>& values) {
    return SetByName(name, &DXEffect::set_vec2_per_pass, values);
}

int32_t CDirectXEffect::SetParamVec2(const char* name, const float* value) {
    return SetByName(name, &DXEffect::set_vec2, value);
}

int32_t CDirectXEffect::RegisterParamVec3(const char* name, const float* value) {
    return RegisterFloats(name, value, vec3_values, vec3_count, &DXEffect::register_vec3);
}

int32_t CDirectXEffect::SetParamVec3PerPass(const char* name, const std::vector<float*>& values) {
    return SetByName(name, &DXEffect::set_vec3_per_pass, values);
}

int32_t CDirectXEffect::SetParamVec3(const char* name, const float* value) {
    return SetByName(name, &DXEffect::set_vec3, value);
}

int32_t CDirectXEffect::RegisterParamVec4(const char* name, const float* value) {
    return RegisterFloats(name, value, vec4_values, vec4_count, &DXEffect::register_vec4);
}

int32_t CDirectXEffect::SetParamVec4PerPass(const char* name, const std::vector<float*>& values) {
    return SetByName(name, &DXEffect::set_vec4_per_pass, values);
}

int32_t CDirectXEffect::SetParamVec4(const char* name, const float* value) {
    return SetByName(name, &DXEffect::set_vec4, value);
}

int32_t CDirectXEffect::RegisterParamMat2(const char* name, const float* value) {
    return RegisterFloats(name, value, mat2_values, mat2_count, &DXEffect::register_mat2);
}

int32_t CDirectXEffect::SetParamMat2PerPass(const char* name, const std::vector<float*>& values) {
    return SetByName(name, &DXEffect::set_mat2_per_pass, values);
}

int32_t CDirectXEffect::SetParamMat2(const char* name, const float* value) {
    return SetByName(name, &DXEffect::set_mat2, value);
}

int32_t CDirectXEffect::RegisterParamMat3(const char* name, const float* value) {
    return RegisterFloats(name, value, mat3_values, mat3_count, &DXEffect::register_mat3);
}

int32_t CDirectXEffect::SetParamMat3PerPass(const char* name, const std::vector<float*>& values) {
    return SetByName(name, &DXEffect::set_mat3_per_pass, values);
}

int32_t CDirectXEffect::SetParamMat3(const char* name, const float* value) {
    return SetByName(name, &DXEffect::set_mat3, value);
}

int32_t CDirectXEffect::RegisterParamMat4(const char* name, const float* value) {
    return RegisterFloats(name, value, mat4_values, mat4_count, &DXEffect::register_mat4);
}

int32_t CDirectXEffect::SetParamMat4PerPass(const char* name, const std::vector<float*>& values) {
    return SetByName(name, &DXEffect::set_mat4_per_pass, values);
}

int32_t CDirectXEffect::SetParamMat4(const char* name, const float* value) {
    return SetByName(name, &DXEffect::set_mat4, value);
}

int32_t CDirectXEffect::RegisterParamIntArray(const char* name, const void* data, uint64_t count) {
    return RegisterArray(name, data, count, int_arrays, int_array_count,
                         &DXEffect::register_int_array);
}

int32_t CDirectXEffect::SetParamIntArrayPerPass(const char* name,
                                                const std::vector<ParamArray>& values) {
    return SetByName(name, &DXEffect::set_int_array_per_pass, values);
}

int32_t CDirectXEffect::SetParamIntArray(const char* name, const void* data, uint64_t count) {
    return SetByName(name, &DXEffect::set_int_array, data, count);
}

int32_t CDirectXEffect::RegisterParamFloatArray(const char* name, const void* data,
                                                uint64_t count) {
    return RegisterArray(name, data, count, float_arrays, float_array_count,
                         &DXEffect::register_float_array);
}

int32_t CDirectXEffect::SetParamFloatArrayPerPass(const char* name,
                                                  const std::vector<ParamArray>& values) {
    return SetByName(name, &DXEffect::set_float_array_per_pass, values);
}

int32_t CDirectXEffect::SetParamFloatArray(const char* name, const void* data, uint64_t count) {
    return SetByName(name, &DXEffect::set_float_array, data, count);
}

int32_t CDirectXEffect::RegisterParamVec2Array(const char* name, const void* data, uint64_t count) {
    return RegisterArray(name, data, count, vec2_arrays, vec2_array_count,
                         &DXEffect::register_vec2_array);
}

int32_t CDirectXEffect::SetParamVec2ArrayPerPass(const char* name,
                                                 const std::vector<ParamArray>& values) {
    return SetByName(name, &DXEffect::set_vec2_array_per_pass, values);
}

int32_t CDirectXEffect::SetParamVec2Array(const char* name, const void* data, uint64_t count) {
    return SetByName(name, &DXEffect::set_vec2_array, data, count);
}

int32_t CDirectXEffect::RegisterParamVec3Array(const char* name, const void* data, uint64_t count) {
    return RegisterArray(name, data, count, vec3_arrays, vec3_array_count,
                         &DXEffect::register_vec3_array);
}

int32_t CDirectXEffect::SetParamVec3ArrayPerPass(const char* name,
                                                 const std::vector<ParamArray>& values) {
    return SetByName(name, &DXEffect::set_vec3_array_per_pass, values);
}

int32_t CDirectXEffect::SetParamVec3Array(const char* name, const void* data, uint64_t count) {
    return SetByName(name, &DXEffect::set_vec3_array, data, count);
}

int32_t CDirectXEffect::RegisterParamVec4Array(const char* name, const void* data, uint64_t count) {
    return RegisterArray(name, data, count, vec4_arrays, vec4_array_count,
                         &DXEffect::register_vec4_array);
}

int32_t CDirectXEffect::SetParamVec4ArrayPerPass(const char* name,
                                                 const std::vector<ParamArray>& values) {
    return SetByName(name, &DXEffect::set_vec4_array_per_pass, values);
}

int32_t CDirectXEffect::SetParamVec4Array(const char* name, const void* data, uint64_t count) {
    return SetByName(name, &DXEffect::set_vec4_array, data, count);
}

int32_t CDirectXEffect::RegisterInstanceParamInt(const char* name, const void* data,
                                                 uint64_t count) {
    return RegisterArray(name, data, count, instance_int_arrays, instance_int_count,
                         &DXEffect::register_instance_int);
}

int32_t CDirectXEffect::SetInstanceParamIntPerPass(const char* name,
                                                   const std::vector<ParamArray>& values) {
    return SetByName(name, &DXEffect::set_instance_int_per_pass, values);
}

int32_t CDirectXEffect::SetInstanceParamInt(const char* name, const void* data, uint64_t count) {
    return SetByName(name, &DXEffect::set_instance_int, data, count);
}

int32_t CDirectXEffect::RegisterInstanceParamFloat(const char* name, const void* data,
                                                   uint64_t count) {
    return RegisterArray(name, data, count, instance_float_arrays, instance_float_count,
                         &DXEffect::register_instance_float);
}

int32_t CDirectXEffect::SetInstanceParamFloatPerPass(const char* name,
                                                     const std::vector<ParamArray>& values) {
    return SetByName(name, &DXEffect::set_instance_float_per_pass, values);
}

int32_t CDirectXEffect::SetInstanceParamFloat(const char* name, const void* data, uint64_t count) {
    return SetByName(name, &DXEffect::set_instance_float, data, count);
}

int32_t CDirectXEffect::RegisterInstanceParamVec2(const char* name, const void* data,
                                                  uint64_t count) {
    return RegisterArray(name, data, count, instance_vec2_arrays, instance_vec2_count,
                         &DXEffect::register_instance_vec2);
}

int32_t CDirectXEffect::SetInstanceParamVec2PerPass(const char* name,
                                                    const std::vector<ParamArray>& values) {
    return SetByName(name, &DXEffect::set_instance_vec2_per_pass, values);
}

int32_t CDirectXEffect::SetInstanceParamVec2(const char* name, const void* data, uint64_t count) {
    return SetByName(name, &DXEffect::set_instance_vec2, data, count);
}

int32_t CDirectXEffect::RegisterInstanceParamVec3(const char* name, const void* data,
                                                  uint64_t count) {
    return RegisterArray(name, data, count, instance_vec3_arrays, instance_vec3_count,
                         &DXEffect::register_instance_vec3);
}

int32_t CDirectXEffect::SetInstanceParamVec3PerPass(const char* name,
                                                    const std::vector<ParamArray>& values) {
    return SetByName(name, &DXEffect::set_instance_vec3_per_pass, values);
}

int32_t CDirectXEffect::SetInstanceParamVec3(const char* name, const void* data, uint64_t count) {
    return SetByName(name, &DXEffect::set_instance_vec3, data, count);
}

int32_t CDirectXEffect::RegisterInstanceParamVec4(const char* name, const void* data,
                                                  uint64_t count) {
    return RegisterArray(name, data, count, instance_vec4_arrays, instance_vec4_count,
                         &DXEffect::register_instance_vec4);
}

int32_t CDirectXEffect::SetInstanceParamVec4PerPass(const char* name,
                                                    const std::vector<ParamArray>& values) {
    return SetByName(name, &DXEffect::set_instance_vec4_per_pass, values);
}

int32_t CDirectXEffect::SetInstanceParamVec4(const char* name, const void* data, uint64_t count) {
    return SetByName(name, &DXEffect::set_instance_vec4, data, count);
}
