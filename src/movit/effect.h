#pragma once

/// The registry of an effect's named parameters, and base of every node of an effect.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "DirectXEffectMgr/Include/OpenGLEffectTypes.h"

namespace movit {

/// Parameters of one type by name, each with an entry per pass. Walks go in the byte order of the
/// names, so the order of registration shows nowhere.
template <class Value>
using ParamTable = std::map<std::string, std::vector<Value>>;

/// Named parameters, registered as pointers to storage that somebody else owns and keeps alive. The
/// registry copies no value: it is read through the pointer whenever it is needed.
///
/// A table's entry is a vector by pass. Whoever reads takes the element of the current pass, or
/// element 0 if there are fewer; a name that was registered once thus serves all passes. The tables
/// know nothing of one another: a name may stand in several. No name is ever taken away, and an
/// entry stays where it is.
///
/// Not thread-safe. Nodes are made once and stay where they are; they are not copied.
class Effect {
public:
    /// Element `pass` of a table's entry, or element 0 if there is none. Null if `passes` is empty.
    template <class Value>
    static const Value* for_pass(const std::vector<Value>& passes, int32_t pass) {
        if (passes.empty()) {
            return nullptr;
        }
        const bool known = pass >= 0 && static_cast<size_t>(pass) < passes.size();
        return &passes[known ? static_cast<size_t>(pass) : 0];
    }

    ParamTable<int32_t*> params_int;
    std::map<std::string, std::string> defines;  // name to replacement text
    ParamTable<float*> params_float;
    ParamTable<float*> params_vec2;  // 2 floats at the pointer
    ParamTable<float*> params_vec3;  // 3
    ParamTable<float*> params_vec4;  // 4
    ParamTable<float*> params_mat2;  // 4
    ParamTable<float*> params_mat3;  // 9
    ParamTable<float*> params_mat4;  // 16
    ParamTable<ParamArray> params_int_array;
    ParamTable<ParamArray> params_float_array;
    ParamTable<ParamArray> params_vec2_array;  // 2 floats per element, without gaps
    ParamTable<ParamArray> params_vec3_array;
    ParamTable<ParamArray> params_vec4_array;
    ParamTable<ParamArray> params_instance_int;  // one element per drawn instance
    ParamTable<ParamArray> params_instance_float;
    ParamTable<ParamArray> params_instance_vec2;
    ParamTable<ParamArray> params_instance_vec3;
    ParamTable<ParamArray> params_instance_vec4;
    bool instanced_attributes = false;  // declares instance parameters as vertex attributes

    Effect() = default;
    Effect(const Effect&) = delete;
    Effect& operator=(const Effect&) = delete;

    // Registration. Each call makes the entry a vector of exactly this one element: a second
    // registration forgets the earlier pointers, those of other passes too. Null is stored as is.

    void register_int(const std::string& name, int32_t* value);
    void register_float(const std::string& name, float* value);
    void register_vec2(const std::string& name, float* values);
    void register_vec3(const std::string& name, float* values);
    void register_vec4(const std::string& name, float* values);
    void register_mat2(const std::string& name, float* values);
    void register_mat3(const std::string& name, float* values);
    void register_mat4(const std::string& name, float* values);
    void register_int_array(const std::string& name, const void* data, uint64_t count);
    void register_float_array(const std::string& name, const void* data, uint64_t count);
    void register_vec2_array(const std::string& name, const void* data, uint64_t count);
    void register_vec3_array(const std::string& name, const void* data, uint64_t count);
    void register_vec4_array(const std::string& name, const void* data, uint64_t count);
    void register_instance_int(const std::string& name, const void* data, uint64_t count);
    void register_instance_float(const std::string& name, const void* data, uint64_t count);
    void register_instance_vec2(const std::string& name, const void* data, uint64_t count);
    void register_instance_vec3(const std::string& name, const void* data, uint64_t count);
    void register_instance_vec4(const std::string& name, const void* data, uint64_t count);

    /// Defines `name` as `value` for the shader text, in place of an earlier definition.
    void add_define(const std::string& name, const std::string& value);

    // The virtual operations, in the order of their slots: the order is a contract.

    virtual ~Effect() = default;
    /// The class's name.
    virtual std::string type_name() const = 0;

    // Slots that every node answers and that nothing in this library asks for.
    virtual bool capability_a() const;
    virtual bool capability_b() const;
    virtual int32_t alpha_mode() const;
    virtual bool capability_c() const;
    virtual bool capability_d() const;
    virtual bool capability_e() const;
    virtual bool capability_f() const;
    virtual void notify_a();
    virtual void notify_b();
    virtual int32_t output_count() const;
    virtual void notify_c();

    /// Replaces `out` by the shader text that declares all parameters and definitions, a line each,
    /// table by table in the order of the members above. Names stand inside `PREFIX(...)`.
    ///
    /// @param vertex_stage  which text instance parameters get, if `instanced_attributes` is set
    virtual void output_uniform_declarations(std::string& out, bool vertex_stage) const;

    virtual std::string extra_text_a() const;
    virtual std::string extra_text_b() const;
    virtual std::string extra_text_c(std::vector<std::string> lines) const;
    virtual std::string extra_text_d(std::vector<std::string> lines) const;
    virtual int32_t count_a() const;
    virtual int32_t count_b() const;

    /// Called before each pass is drawn. What a node does not need of the arguments, it ignores.
    ///
    /// @param index  an input node's position among the inputs
    virtual void upload_parameters(int32_t reserved, const std::string& prefix, int32_t* index,
                                   int32_t pass);
    /// Called before each instance of a pass is drawn, after upload_parameters.
    virtual void upload_instance_parameters(int32_t reserved, const std::string& prefix,
                                            int32_t* index, int32_t instance, int32_t pass);

    virtual void notify_d();
    virtual void notify_e();

    // Setters, a pair per table. All return whether the name is registered in that table; if it is
    // not, nothing changes. `set_*_per_pass` replaces the entry's vector. The other of each pair
    // changes pass 0 alone: values are copied through its pointer, arrays get the new data and
    // count. An entry without elements and a null pointer on either side copy nothing.

    virtual bool set_int_per_pass(const std::string& name, const std::vector<int32_t*>& passes);
    virtual bool set_int(const std::string& name, int32_t value);
    virtual bool set_float_per_pass(const std::string& name, const std::vector<float*>& passes);
    virtual bool set_float(const std::string& name, float value);
    virtual bool set_vec2_per_pass(const std::string& name, const std::vector<float*>& passes);
    virtual bool set_vec2(const std::string& name, const float* values);
    virtual bool set_vec3_per_pass(const std::string& name, const std::vector<float*>& passes);
    virtual bool set_vec3(const std::string& name, const float* values);
    virtual bool set_vec4_per_pass(const std::string& name, const std::vector<float*>& passes);
    virtual bool set_vec4(const std::string& name, const float* values);
    virtual bool set_mat2_per_pass(const std::string& name, const std::vector<float*>& passes);
    virtual bool set_mat2(const std::string& name, const float* values);
    virtual bool set_mat3_per_pass(const std::string& name, const std::vector<float*>& passes);
    virtual bool set_mat3(const std::string& name, const float* values);
    virtual bool set_mat4_per_pass(const std::string& name, const std::vector<float*>& passes);
    virtual bool set_mat4(const std::string& name, const float* values);
    virtual bool set_int_array_per_pass(const std::string& name,
                                        const std::vector<ParamArray>& passes);
    virtual bool set_int_array(const std::string& name, const void* data, uint64_t count);
    virtual bool set_float_array_per_pass(const std::string& name,
                                          const std::vector<ParamArray>& passes);
    virtual bool set_float_array(const std::string& name, const void* data, uint64_t count);
    virtual bool set_vec2_array_per_pass(const std::string& name,
                                         const std::vector<ParamArray>& passes);
    virtual bool set_vec2_array(const std::string& name, const void* data, uint64_t count);
    virtual bool set_vec3_array_per_pass(const std::string& name,
                                         const std::vector<ParamArray>& passes);
    virtual bool set_vec3_array(const std::string& name, const void* data, uint64_t count);
    virtual bool set_vec4_array_per_pass(const std::string& name,
                                         const std::vector<ParamArray>& passes);
    virtual bool set_vec4_array(const std::string& name, const void* data, uint64_t count);
    virtual bool set_instance_int_per_pass(const std::string& name,
                                           const std::vector<ParamArray>& passes);
    virtual bool set_instance_int(const std::string& name, const void* data, uint64_t count);
    virtual bool set_instance_float_per_pass(const std::string& name,
                                             const std::vector<ParamArray>& passes);
    virtual bool set_instance_float(const std::string& name, const void* data, uint64_t count);
    virtual bool set_instance_vec2_per_pass(const std::string& name,
                                            const std::vector<ParamArray>& passes);
    virtual bool set_instance_vec2(const std::string& name, const void* data, uint64_t count);
    virtual bool set_instance_vec3_per_pass(const std::string& name,
                                            const std::vector<ParamArray>& passes);
    virtual bool set_instance_vec3(const std::string& name, const void* data, uint64_t count);
    virtual bool set_instance_vec4_per_pass(const std::string& name,
                                            const std::vector<ParamArray>& passes);
    virtual bool set_instance_vec4(const std::string& name, const void* data, uint64_t count);
};

}  // namespace movit
