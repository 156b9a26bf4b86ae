#include "DirectXEffectMgr/Source/core/uniform_text.h"

#include "DirectXEffectMgr/Source/core/param_layout.h"
#include "movit/declaration_text.h"
#include "movit/param_tables.h"

namespace {

using movit::ParamType;

struct LaidOutDeclarations {
    std::string& out;
    int32_t offset = 0;   // end of what is declared so far, in bytes
    int32_t fillers = 0;  // number of the next filler

    template <class Passes>
    void value(ParamType type, const std::string& name, const Passes& /*passes*/) {
        make_room(type, 1);
        movit::append_uniform(out, type, name);
    }

    void defines(const std::map<std::string, std::string>& table) {
        movit::append_defines(out, table);
    }

    void array(ParamType type, const std::string& name, const std::vector<ParamArray>& passes) {
        const int32_t count = movit::array_count(passes);
        make_room(type, count);
        movit::append_uniform_array(out, type, name, count);
    }

    void instance(ParamType type, const std::string& name,
                  const std::vector<ParamArray>& /*passes*/) {
        make_room(type, 1);
        movit::append_uniform(out, type, name);
    }

private:
    // Fillers for the bytes that the layout skips; without them the shader would put the next
    // member right there.
    void make_room(ParamType type, int32_t count) {
        int32_t padding = 0;
        offset += padded_size(type, count, offset, padding);
        for (; padding > 0; padding -= 4) {
            out += "uniform float PLACEHOLDER_VALUE_" + std::to_string(fillers++) + ";\n";
        }
    }
};

}  // namespace

void output_uniform_declarations(const movit::Effect& registry, std::string& out) {
    out.clear();
    LaidOutDeclarations declarations{out};
    movit::walk_parameters(registry, declarations);
    movit::walk_instance_parameters(registry, declarations);
}
