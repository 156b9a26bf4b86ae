#include "movit/declaration_text.h"
#include "movit/effect.h"
#include "movit/param_tables.h"

namespace movit {

namespace {

struct PlainDeclarations {
    std::string& out;
    bool instanced_attributes;
    bool vertex_stage;

    template <class Passes>
    void value(ParamType type, const std::string& name, const Passes& /*passes*/) {
        append_uniform(out, type, name);
    }

    void defines(const std::map<std::string, std::string>& table) { append_defines(out, table); }

    void array(ParamType type, const std::string& name, const std::vector<ParamArray>& passes) {
        append_uniform_array(out, type, name, array_count(passes));
    }

    void instance(ParamType type, const std::string& name,
                  const std::vector<ParamArray>& /*passes*/) {
        if (!instanced_attributes) {
            append_uniform(out, type, name);
        } else if (vertex_stage) {
            append_instance_attribute(out, type, name);
        } else {
            append_instance_varying(out, type, name);
        }
    }
};

}  // namespace

void Effect::output_uniform_declarations(std::string& out, bool vertex_stage) const {
    out.clear();
    PlainDeclarations declarations{out, instanced_attributes, vertex_stage};
    walk_parameters(*this, declarations);
    walk_instance_parameters(*this, declarations);
}

}  // namespace movit
