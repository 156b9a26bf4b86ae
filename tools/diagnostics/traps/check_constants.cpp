#include <algorithm>
#include <set>

#include "diagnostics/traps/checks.h"

// Constants at file scope become macros in front of the library's helpers and of all the rest.

namespace diagnostics {

namespace {

using namespace glsl;

// Names that the helpers and the entry points use, swizzles included.
constexpr std::string_view kHelperNames[] = {
    "_tc", "a",  "b",     "depthTex", "depthValue", "r",  "sa", "tc", "tex",
    "v0",  "v1", "value", "w",        "x",          "xy", "y",  "z",  "zyxw",
};

// Everything but constants that goes by a name: locals, parameters, fields, swizzles.
class UsedNames : public TreeVisitor {
public:
    void enter(const astVariable& variable) override {
        const bool is_global = variable.variableType == VariableKind::global;
        if (!is_global || as<astGlobalVariable>(&variable)->storage != kStorageConst) {
            names.insert(variable.name);
        }
    }
    void enter(const astExpression& node) override {
        if (node.kind == ExpressionKind::fieldOrSwizzle) {
            names.insert(as<astFieldOrSwizzle>(&node)->field);
        }
    }

    std::set<std::string_view> names;
};

}  // namespace

void check_constants(const TrapScene& scene) {
    UsedNames used;
    walk(scene.unit, used);
    for (const auto& global : scene.unit.globals) {
        if (global == nullptr || global->storage != kStorageConst) {
            continue;
        }
        const bool in_helpers = std::find(std::begin(kHelperNames), std::end(kHelperNames),
                                          global->name) != std::end(kHelperNames);
        if (in_helpers || used.names.count(global->name) != 0) {
            scene.report.at_name(Trap::kConstantName, *global);
        }
    }
}

}  // namespace diagnostics
