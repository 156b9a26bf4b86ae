#include "movit/effect.h"

namespace movit {

namespace {

// A single element, whatever the entry held before.
template <class Value>
void register_value(ParamTable<Value>& table, const std::string& name, Value value) {
    table[name].assign(1, value);
}

}  // namespace

void Effect::register_int(const std::string& name, int32_t* value) {
    register_value(params_int, name, value);
}

void Effect::register_float(const std::string& name, float* value) {
    register_value(params_float, name, value);
}

void Effect::register_vec2(const std::string& name, float* values) {
    register_value(params_vec2, name, values);
}

void Effect::register_vec3(const std::string& name, float* values) {
    register_value(params_vec3, name, values);
}

void Effect::register_vec4(const std::string& name, float* values) {
    register_value(params_vec4, name, values);
}

void Effect::register_mat2(const std::string& name, float* values) {
    register_value(params_mat2, name, values);
}

void Effect::register_mat3(const std::string& name, float* values) {
    register_value(params_mat3, name, values);
}

void Effect::register_mat4(const std::string& name, float* values) {
    register_value(params_mat4, name, values);
}

void Effect::register_int_array(const std::string& name, const void* data, uint64_t count) {
    register_value(params_int_array, name, ParamArray{data, count});
}

void Effect::register_float_array(const std::string& name, const void* data, uint64_t count) {
    register_value(params_float_array, name, ParamArray{data, count});
}

void Effect::register_vec2_array(const std::string& name, const void* data, uint64_t count) {
    register_value(params_vec2_array, name, ParamArray{data, count});
}

void Effect::register_vec3_array(const std::string& name, const void* data, uint64_t count) {
    register_value(params_vec3_array, name, ParamArray{data, count});
}

void Effect::register_vec4_array(const std::string& name, const void* data, uint64_t count) {
    register_value(params_vec4_array, name, ParamArray{data, count});
}

void Effect::register_instance_int(const std::string& name, const void* data, uint64_t count) {
    register_value(params_instance_int, name, ParamArray{data, count});
}

void Effect::register_instance_float(const std::string& name, const void* data, uint64_t count) {
    register_value(params_instance_float, name, ParamArray{data, count});
}

void Effect::register_instance_vec2(const std::string& name, const void* data, uint64_t count) {
    register_value(params_instance_vec2, name, ParamArray{data, count});
}

void Effect::register_instance_vec3(const std::string& name, const void* data, uint64_t count) {
    register_value(params_instance_vec3, name, ParamArray{data, count});
}

void Effect::register_instance_vec4(const std::string& name, const void* data, uint64_t count) {
    register_value(params_instance_vec4, name, ParamArray{data, count});
}

void Effect::add_define(const std::string& name, const std::string& value) {
    defines[name] = value;
}

bool Effect::capability_a() const {
    return true;
}

bool Effect::capability_b() const {
    return true;
}

int32_t Effect::alpha_mode() const {
    return 2;
}

bool Effect::capability_c() const {
    return false;
}

bool Effect::capability_d() const {
    return false;
}

bool Effect::capability_e() const {
    return false;
}

bool Effect::capability_f() const {
    return false;
}

void Effect::notify_a() {}

void Effect::notify_b() {}

int32_t Effect::output_count() const {
    return 1;
}

void Effect::notify_c() {}

std::string Effect::extra_text_a() const {
    return {};
}

std::string Effect::extra_text_b() const {
    return {};
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the slot takes its argument over.
std::string Effect::extra_text_c(std::vector<std::string> /*lines*/) const {
    return {};
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the slot takes its argument over.
std::string Effect::extra_text_d(std::vector<std::string> /*lines*/) const {
    return {};
}

int32_t Effect::count_a() const {
    return 0;
}

int32_t Effect::count_b() const {
    return 0;
}

void Effect::upload_parameters(int32_t /*reserved*/, const std::string& /*prefix*/,
                               int32_t* /*index*/, int32_t /*pass*/) {}

void Effect::upload_instance_parameters(int32_t /*reserved*/, const std::string& /*prefix*/,
                                        int32_t* /*index*/, int32_t /*instance*/,
                                        int32_t /*pass*/) {}

void Effect::notify_d() {}

void Effect::notify_e() {}

}  // namespace movit
