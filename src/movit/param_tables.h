#pragma once

/// The one walk over the tables of a registry. The shader text and the bytes of the constant buffer
/// agree because both are made along it.

#include <string_view>

#include "movit/effect.h"

namespace movit {

/// The type of a parameter as the shader names it.
enum class ParamType { kInt, kFloat, kVec2, kVec3, kVec4, kMat2, kMat3, kMat4 };

/// Type words, in the order of ParamType.
constexpr std::string_view kParamTypeWords[] = {"int",  "float", "vec2", "vec3",
                                                "vec4", "mat2",  "mat3", "mat4"};

/// The word of `type`, such as "vec3".
constexpr std::string_view type_word(ParamType type) {
    return kParamTypeWords[static_cast<size_t>(type)];
}

/// The number of elements of an array parameter: that of its first pass, the low 32 bits read as a
/// signed number. 0 for an entry without passes.
inline int32_t array_count(const std::vector<ParamArray>& passes) {
    return passes.empty() ? 0 : static_cast<int32_t>(static_cast<uint32_t>(passes.front().count));
}

/// Walks a table of plain values. Calls
///     visitor.value(type, name, passes)
template <class Table, class Visitor>
void walk_table(ParamType type, const Table& table, Visitor& visitor) {
    for (const auto& [name, passes] : table) {
        visitor.value(type, name, passes);
    }
}

/// Walks the vectors and matrices and the float parameters before them. Calls as walk_table().
template <class Visitor>
void walk_float_values(const Effect& effect, Visitor& visitor) {
    walk_table(ParamType::kFloat, effect.params_float, visitor);
    walk_table(ParamType::kVec2, effect.params_vec2, visitor);
    walk_table(ParamType::kVec3, effect.params_vec3, visitor);
    walk_table(ParamType::kVec4, effect.params_vec4, visitor);
    walk_table(ParamType::kMat2, effect.params_mat2, visitor);
    walk_table(ParamType::kMat3, effect.params_mat3, visitor);
    walk_table(ParamType::kMat4, effect.params_mat4, visitor);
}

/// Walks all plain values, which stand before the arrays. Calls as walk_table().
template <class Visitor>
void walk_values(const Effect& effect, Visitor& visitor) {
    walk_table(ParamType::kInt, effect.params_int, visitor);
    walk_float_values(effect, visitor);
}

/// Walks the arrays, which stand behind the plain values. Calls
///     visitor.array(type, name, passes)
template <class Visitor>
void walk_arrays(const Effect& effect, Visitor& visitor) {
    const auto arrays = [&visitor](ParamType type, const auto& table) {
        for (const auto& [name, passes] : table) {
            visitor.array(type, name, passes);
        }
    };
    arrays(ParamType::kInt, effect.params_int_array);
    arrays(ParamType::kFloat, effect.params_float_array);
    arrays(ParamType::kVec2, effect.params_vec2_array);
    arrays(ParamType::kVec3, effect.params_vec3_array);
    arrays(ParamType::kVec4, effect.params_vec4_array);
}

/// Walks everything but the instance parameters, in the order of the shader text. Calls
///     visitor.value(type, name, passes)   for scalars, vectors and matrices
///     visitor.defines(table)              once, behind the int parameters
///     visitor.array(type, name, passes)   for arrays
template <class Visitor>
void walk_parameters(const Effect& effect, Visitor& visitor) {
    walk_table(ParamType::kInt, effect.params_int, visitor);
    visitor.defines(effect.defines);
    walk_float_values(effect, visitor);
    walk_arrays(effect, visitor);
}

/// Walks the instance parameters, which stand behind all others. Calls
///     visitor.instance(type, name, passes)
template <class Visitor>
void walk_instance_parameters(const Effect& effect, Visitor& visitor) {
    const auto instances = [&visitor](ParamType type, const auto& table) {
        for (const auto& [name, passes] : table) {
            visitor.instance(type, name, passes);
        }
    };
    instances(ParamType::kInt, effect.params_instance_int);
    instances(ParamType::kFloat, effect.params_instance_float);
    instances(ParamType::kVec2, effect.params_instance_vec2);
    instances(ParamType::kVec3, effect.params_instance_vec3);
    instances(ParamType::kVec4, effect.params_instance_vec4);
}

}  // namespace movit
