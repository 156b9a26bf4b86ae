#include "random_registry.h"

#include <iterator>

namespace fuzz {
namespace {

using movit::Effect;

constexpr const char* kNames[] = {"a",
                                  "b",
                                  "amount",
                                  "iResolution",
                                  "z",
                                  "A",
                                  "line",
                                  "max",
                                  "a_name_that_is_longer_than_a_short_string_can_hold",
                                  "iResolutionOrig"};

using RegisterFloats = void (Effect::*)(const std::string&, float*);
using RegisterArray = void (Effect::*)(const std::string&, const void*, uint64_t);
using SetFloats = bool (Effect::*)(const std::string&, const float*);
using SetFloatsPerPass = bool (Effect::*)(const std::string&, const std::vector<float*>&);
using SetArray = bool (Effect::*)(const std::string&, const void*, uint64_t);
using SetArrayPerPass = bool (Effect::*)(const std::string&, const std::vector<ParamArray>&);

struct FloatsRow {
    RegisterFloats enter;
    SetFloats set;
    SetFloatsPerPass set_per_pass;
};
constexpr FloatsRow kFloatTables[] = {
    {&Effect::register_vec2, &Effect::set_vec2, &Effect::set_vec2_per_pass},
    {&Effect::register_vec3, &Effect::set_vec3, &Effect::set_vec3_per_pass},
    {&Effect::register_vec4, &Effect::set_vec4, &Effect::set_vec4_per_pass},
    {&Effect::register_mat2, &Effect::set_mat2, &Effect::set_mat2_per_pass},
    {&Effect::register_mat3, &Effect::set_mat3, &Effect::set_mat3_per_pass},
    {&Effect::register_mat4, &Effect::set_mat4, &Effect::set_mat4_per_pass},
};

struct ArrayRow {
    RegisterArray enter;
    SetArray set;
    SetArrayPerPass set_per_pass;
};
constexpr ArrayRow kArrayTables[] = {
    {&Effect::register_int_array, &Effect::set_int_array, &Effect::set_int_array_per_pass},
    {&Effect::register_float_array, &Effect::set_float_array, &Effect::set_float_array_per_pass},
    {&Effect::register_vec2_array, &Effect::set_vec2_array, &Effect::set_vec2_array_per_pass},
    {&Effect::register_vec3_array, &Effect::set_vec3_array, &Effect::set_vec3_array_per_pass},
    {&Effect::register_vec4_array, &Effect::set_vec4_array, &Effect::set_vec4_array_per_pass},
    {&Effect::register_instance_int, &Effect::set_instance_int, &Effect::set_instance_int_per_pass},
    {&Effect::register_instance_float, &Effect::set_instance_float,
     &Effect::set_instance_float_per_pass},
    {&Effect::register_instance_vec2, &Effect::set_instance_vec2,
     &Effect::set_instance_vec2_per_pass},
    {&Effect::register_instance_vec3, &Effect::set_instance_vec3,
     &Effect::set_instance_vec3_per_pass},
    {&Effect::register_instance_vec4, &Effect::set_instance_vec4,
     &Effect::set_instance_vec4_per_pass},
};

template <class Row, size_t kSize>
const Row& pick(FuzzedDataProvider& choices, const Row (&table)[kSize]) {
    return table[choices.ConsumeIntegralInRange<size_t>(0, kSize - 1)];
}

}  // namespace

std::string RandomRegistry::name(FuzzedDataProvider& choices) const {
    if (!plain_names && choices.ConsumeIntegralInRange<int>(0, 9) == 0) {
        return choices.ConsumeRandomLengthString(40);
    }
    return kNames[choices.ConsumeIntegralInRange<size_t>(0, std::size(kNames) - 1)];
}

void RandomRegistry::step(FuzzedDataProvider& choices) {
    const int choice = choices.ConsumeIntegralInRange<int>(0, 9);
    const std::string chosen = name(choices);
    if (choice < 3) {
        registerValue(choices, chosen);
    } else if (choice < 6) {
        registerArray(choices, chosen);
    } else if (choice < 7) {
        setValue(choices, chosen);
    } else if (choice < 9) {
        setArray(choices, chosen);
    } else if (!plain_names) {
        add_define(chosen, choices.ConsumeRandomLengthString(30));
    }
}

// Null now and then.
float* RandomRegistry::values(FuzzedDataProvider& choices) {
    return choices.ConsumeIntegralInRange<int>(0, 5) == 0 ? nullptr : written_.data();
}

ParamArray RandomRegistry::array(FuzzedDataProvider& choices) {
    if (choices.ConsumeIntegralInRange<int>(0, 5) == 0) {
        return {nullptr, choices.ConsumeIntegral<uint64_t>()};
    }
    return {floats_.data(), choices.ConsumeIntegralInRange<uint64_t>(0, kMaxElements)};
}

void RandomRegistry::registerValue(FuzzedDataProvider& choices, const std::string& name) {
    switch (choices.ConsumeIntegralInRange<int>(0, 3)) {
        case 0:
            return register_int(name, choices.ConsumeBool() ? &int_ : nullptr);
        case 1:
            return register_float(name, values(choices));
        default:
            return (this->*pick(choices, kFloatTables).enter)(name, values(choices));
    }
}

void RandomRegistry::registerArray(FuzzedDataProvider& choices, const std::string& name) {
    const ParamArray given = array(choices);
    (this->*pick(choices, kArrayTables).enter)(name, given.data, given.count);
}

void RandomRegistry::setValue(FuzzedDataProvider& choices, const std::string& name) {
    std::vector<float*> passes;
    std::vector<int32_t*> int_passes;
    for (int i = choices.ConsumeIntegralInRange<int>(0, 3); i > 0; --i) {
        passes.push_back(values(choices));
        int_passes.push_back(&int_);
    }
    switch (choices.ConsumeIntegralInRange<int>(0, 5)) {
        case 0:
            set_int(name, choices.ConsumeIntegral<int32_t>());
            return;
        case 1:
            set_int_per_pass(name, int_passes);
            return;
        case 2:
            set_float(name, 1.5f);
            return;
        case 3:
            set_float_per_pass(name, passes);
            return;
        case 4:
            (this->*pick(choices, kFloatTables).set)(
                name, choices.ConsumeBool() ? floats_.data() : nullptr);
            return;
        default:
            (this->*pick(choices, kFloatTables).set_per_pass)(name, passes);
    }
}

void RandomRegistry::setArray(FuzzedDataProvider& choices, const std::string& name) {
    const ArrayRow& table = pick(choices, kArrayTables);
    if (choices.ConsumeBool()) {
        const ParamArray given = array(choices);
        (this->*table.set)(name, given.data, given.count);
        return;
    }
    std::vector<ParamArray> passes;
    for (int i = choices.ConsumeIntegralInRange<int>(0, 3); i > 0; --i) {
        passes.push_back(array(choices));
    }
    (this->*table.set_per_pass)(name, passes);
}

}  // namespace fuzz
