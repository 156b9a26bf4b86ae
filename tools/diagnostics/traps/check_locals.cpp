#include "diagnostics/traps/checks.h"

// Local variables: values that are missing and arrays.

namespace diagnostics {

namespace {

using namespace glsl;

class Locals : public TreeVisitor {
public:
    explicit Locals(TrapReport& report) : report_(report) {}

    void enter(const astVariable& variable) override {
        if (variable.variableType != VariableKind::function) {
            return;
        }
        const auto& local = *as<astFunctionVariable>(&variable);
        const bool has_value = local.initialValue != nullptr || !local.initialValues.empty();
        const ValueClass kind = class_of(local.baseType);
        if (!has_value && (kind == ValueClass::boolean || kind == ValueClass::double_)) {
            report_.at_name(Trap::kBoolWithoutValue, local);
        } else if (!has_value && kind == ValueClass::struct_) {
            report_.at_name(Trap::kStructWithoutValue, local);
        }
        if (local.isArray && local.initialValue != nullptr) {
            report_.at_name(Trap::kArrayCopy, local);
        } else if (local.arraySizes.size() > 1 && !has_value) {
            report_.at_name(Trap::kArrayOfArrays, local);
        }
    }

private:
    TrapReport& report_;
};

}  // namespace

void check_locals(const TrapScene& scene) {
    Locals locals(scene.report);
    walk(scene.unit, locals);
}

}  // namespace diagnostics
