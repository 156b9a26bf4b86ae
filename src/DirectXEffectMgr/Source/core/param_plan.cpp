#include "DirectXEffectMgr/Source/core/param_plan.h"

#include <type_traits>

#include "DirectXEffectMgr/Source/core/param_copy.h"

namespace {

size_t arrays_of(const movit::Effect& registry) {
    return registry.params_int_array.size() + registry.params_float_array.size() +
           registry.params_vec2_array.size() + registry.params_vec3_array.size() +
           registry.params_vec4_array.size();
}

// Plain values of all types.
size_t values_of(const movit::Effect& registry) {
    return registry.params_int.size() + registry.params_float.size() + registry.params_vec2.size() +
           registry.params_vec3.size() + registry.params_vec4.size() + registry.params_mat2.size() +
           registry.params_mat3.size() + registry.params_mat4.size();
}

}  // namespace

struct ParamPlan::Builder {
    template <class Scalar>
    void value(movit::ParamType type, const std::string& /*name*/,
               const std::vector<Scalar*>& passes) {
        const int32_t begin = plan.after_values_.instance_base;
        int32_t padding = 0;
        const int32_t size = padded_size(type, 1, begin, padding);
        if (size > 0) {
            const Value<Scalar> placed = {&passes, static_cast<size_t>(begin + padding),
                                          size - padding, matrix_order(type)};
            if constexpr (std::is_same_v<Scalar, int32_t>) {
                plan.ints_.push_back(placed);
            } else {
                plan.floats_.push_back(placed);
            }
        }
        plan.after_values_ = {size, padding, begin + size};
    }

    ParamPlan& plan;
};

void ParamPlan::refresh(const movit::Effect& registry) {
    // Names are only ever added, so equal numbers mean the same names.
    const size_t names = values_of(registry);
    has_arrays_ = arrays_of(registry) > 0;
    if (names == names_) {
        return;
    }
    names_ = SIZE_MAX;  // stays so if memory runs out on the way
    ints_.clear();
    floats_.clear();
    after_values_ = {};
    Builder builder = {*this};
    movit::walk_values(registry, builder);
    names_ = names;
}

template <class Scalar>
void ParamPlan::copy(const std::vector<Value<Scalar>>& values, int32_t pass,
                     std::vector<uint8_t>& shadow) {
    for (const Value<Scalar>& value : values) {
        Scalar* const* const picked = movit::Effect::for_pass(*value.passes, pass);
        const bool fits = value.place + static_cast<size_t>(value.bytes) <= shadow.size();
        if (picked == nullptr || *picked == nullptr || !fits) {
            continue;
        }
        uint8_t* const place = shadow.data() + value.place;
        if (value.order == 1) {
            copy_value(place, *picked, value.bytes);
        } else {
            copy_transposed(place, *picked, value.order);
        }
    }
}

PassLayout ParamPlan::fill(const movit::Effect& registry, int32_t pass,
                           std::vector<uint8_t>& shadow) {
    refresh(registry);
    copy(ints_, pass, shadow);
    copy(floats_, pass, shadow);
    // The length of an array may change from frame to frame, and with it what lies behind.
    return !has_arrays_ ? after_values_ : fill_arrays(registry, pass, after_values_, shadow);
}
