#include "param_calls.h"

#include <cstdint>

namespace effect_render {
namespace {

// Operations of the kinds that are handed over as a pointer to floats.
struct VectorCalls {
    int32_t (IOpenGLEffect::*enroll)(const char*, const float*);
    int32_t (IOpenGLEffect::*set)(const char*, const float*);
    int32_t (IOpenGLEffect::*set_per_pass)(const char*, const std::vector<float*>&);
};

// From ParamKind::Vec2 on.
constexpr VectorCalls kVectors[] = {
    {&IOpenGLEffect::RegisterParamVec2, &IOpenGLEffect::SetParamVec2,
     &IOpenGLEffect::SetParamVec2PerPass},
    {&IOpenGLEffect::RegisterParamVec3, &IOpenGLEffect::SetParamVec3,
     &IOpenGLEffect::SetParamVec3PerPass},
    {&IOpenGLEffect::RegisterParamVec4, &IOpenGLEffect::SetParamVec4,
     &IOpenGLEffect::SetParamVec4PerPass},
    {&IOpenGLEffect::RegisterParamMat2, &IOpenGLEffect::SetParamMat2,
     &IOpenGLEffect::SetParamMat2PerPass},
    {&IOpenGLEffect::RegisterParamMat3, &IOpenGLEffect::SetParamMat3,
     &IOpenGLEffect::SetParamMat3PerPass},
    {&IOpenGLEffect::RegisterParamMat4, &IOpenGLEffect::SetParamMat4,
     &IOpenGLEffect::SetParamMat4PerPass},
};

// Operations of arrays and instance parameters.
struct ArrayCalls {
    int32_t (IOpenGLEffect::*enroll)(const char*, const void*, uint64_t);
    int32_t (IOpenGLEffect::*set)(const char*, const void*, uint64_t);
    int32_t (IOpenGLEffect::*set_per_pass)(const char*, const std::vector<ParamArray>&);
};

// From ParamKind::Int on.
constexpr ArrayCalls kArrays[] = {
    {&IOpenGLEffect::RegisterParamIntArray, &IOpenGLEffect::SetParamIntArray,
     &IOpenGLEffect::SetParamIntArrayPerPass},
    {&IOpenGLEffect::RegisterParamFloatArray, &IOpenGLEffect::SetParamFloatArray,
     &IOpenGLEffect::SetParamFloatArrayPerPass},
    {&IOpenGLEffect::RegisterParamVec2Array, &IOpenGLEffect::SetParamVec2Array,
     &IOpenGLEffect::SetParamVec2ArrayPerPass},
    {&IOpenGLEffect::RegisterParamVec3Array, &IOpenGLEffect::SetParamVec3Array,
     &IOpenGLEffect::SetParamVec3ArrayPerPass},
    {&IOpenGLEffect::RegisterParamVec4Array, &IOpenGLEffect::SetParamVec4Array,
     &IOpenGLEffect::SetParamVec4ArrayPerPass},
};

constexpr ArrayCalls kInstances[] = {
    {&IOpenGLEffect::RegisterInstanceParamInt, &IOpenGLEffect::SetInstanceParamInt,
     &IOpenGLEffect::SetInstanceParamIntPerPass},
    {&IOpenGLEffect::RegisterInstanceParamFloat, &IOpenGLEffect::SetInstanceParamFloat,
     &IOpenGLEffect::SetInstanceParamFloatPerPass},
    {&IOpenGLEffect::RegisterInstanceParamVec2, &IOpenGLEffect::SetInstanceParamVec2,
     &IOpenGLEffect::SetInstanceParamVec2PerPass},
    {&IOpenGLEffect::RegisterInstanceParamVec3, &IOpenGLEffect::SetInstanceParamVec3,
     &IOpenGLEffect::SetInstanceParamVec3PerPass},
    {&IOpenGLEffect::RegisterInstanceParamVec4, &IOpenGLEffect::SetInstanceParamVec4,
     &IOpenGLEffect::SetInstanceParamVec4PerPass},
};

const VectorCalls& VectorCallsOf(ParamKind kind) {
    return kVectors[static_cast<size_t>(kind) - static_cast<size_t>(ParamKind::Vec2)];
}

const ArrayCalls& ArrayCallsOf(ParamType type) {
    const auto row = static_cast<size_t>(type.kind);
    return type.shape == ParamShape::Array ? kArrays[row] : kInstances[row];
}

ParamArray AsArray(ParamKind kind, const PackedValues& values) {
    const size_t numbers = values.ints.size() + values.floats.size();
    return {values.Data(), numbers / Components(kind)};
}

void SetArray(IOpenGLEffect& effect, const char* name, ParamType type,
              const std::vector<PackedValues>& values) {
    const ArrayCalls& calls = ArrayCallsOf(type);
    if (values.size() == 1) {
        const ParamArray array = AsArray(type.kind, values[0]);
        (effect.*calls.set)(name, array.data, array.count);
        return;
    }
    std::vector<ParamArray> per_pass;
    per_pass.reserve(values.size());
    for (const PackedValues& value : values) {
        per_pass.push_back(AsArray(type.kind, value));
    }
    (effect.*calls.set_per_pass)(name, per_pass);
}

void SetPlain(IOpenGLEffect& effect, const char* name, ParamKind kind, const PackedValues& value) {
    if (kind == ParamKind::Int) {
        effect.SetParamInt(name, value.ints[0]);
    } else if (kind == ParamKind::Float) {
        effect.SetParamFloat(name, value.floats[0]);
    } else {
        (effect.*VectorCallsOf(kind).set)(name, value.floats.data());
    }
}

void SetPlainPerPass(IOpenGLEffect& effect, const char* name, ParamKind kind,
                     std::vector<PackedValues>& values) {
    if (kind == ParamKind::Int) {
        std::vector<int32_t*> ints;
        ints.reserve(values.size());
        for (PackedValues& value : values) {
            ints.push_back(value.ints.data());
        }
        effect.SetParamIntPerPass(name, ints);
        return;
    }
    std::vector<float*> floats;
    floats.reserve(values.size());
    for (PackedValues& value : values) {
        floats.push_back(value.floats.data());
    }
    if (kind == ParamKind::Float) {
        effect.SetParamFloatPerPass(name, floats);
    } else {
        (effect.*VectorCallsOf(kind).set_per_pass)(name, floats);
    }
}

}  // namespace

void RegisterParam(IOpenGLEffect& effect, const std::string& name, ParamType type,
                   PackedValues& values) {
    if (type.shape != ParamShape::Plain) {
        const ParamArray array = AsArray(type.kind, values);
        (effect.*ArrayCallsOf(type).enroll)(name.c_str(), array.data, array.count);
    } else if (type.kind == ParamKind::Int) {
        effect.RegisterParamInt(name.c_str(), values.ints[0]);
    } else if (type.kind == ParamKind::Float) {
        effect.RegisterParamFloat(name.c_str(), values.floats[0]);
    } else {
        (effect.*VectorCallsOf(type.kind).enroll)(name.c_str(), values.floats.data());
    }
}

void SetParam(IOpenGLEffect& effect, const std::string& name, ParamType type,
              std::vector<PackedValues>& values) {
    if (type.shape != ParamShape::Plain) {
        SetArray(effect, name.c_str(), type, values);
    } else if (values.size() == 1) {
        SetPlain(effect, name.c_str(), type.kind, values[0]);
    } else {
        SetPlainPerPass(effect, name.c_str(), type.kind, values);
    }
}

}  // namespace effect_render
