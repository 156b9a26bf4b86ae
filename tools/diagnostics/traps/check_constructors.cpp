#include "diagnostics/traps/checks.h"

// Constructors that make something else of their arguments.

namespace diagnostics {

namespace {

using namespace glsl;

bool is_vector(ValueClass kind) {
    return isFloatVector(kind) || isIntVector(kind);
}

class Constructors : public TreeVisitor {
public:
    explicit Constructors(const TrapScene& scene) : scene_(scene) {}

    void enter(const astExpression& node) override {
        if (node.kind != ExpressionKind::constructorCall) {
            return;
        }
        const auto& call = *as<astConstructorCall>(&node);
        const ValueClass made = class_of(call.type);
        if (made == ValueClass::boolean) {
            scene_.report.at(Trap::kBoolCast, node);
        } else if (isMatrix(made)) {
            look_at_matrix(call, made);
        } else if (is_vector(made) && call.parameters.size() == 1) {
            look_at_vector(call, made);
        }
    }

private:
    void look_at_vector(const astConstructorCall& call, ValueClass made) {
        const ExpressionType argument = scene_.types.of(call.parameters[0]);
        const bool keeps =
            is_vector(argument.printed) && dimension(argument.printed) == dimension(made);
        if (!argument.is_array && is_vector(argument.meant) && !keeps) {
            scene_.report.at(Trap::kVectorCut, call);
        }
    }

    void look_at_matrix(const astConstructorCall& call, ValueClass made) {
        const size_t side = dimension(made);
        const size_t count = call.parameters.size();
        if (count == 1 && isMatrix(scene_.types.of(call.parameters[0]).meant)) {
            scene_.report.at(Trap::kMatrixCut, call);
        } else if (count <= 1 && made == ValueClass::mat2) {
            scene_.report.at(Trap::kMat2Number, call);
        } else if (count > 1 && count != side && count != side * side) {
            scene_.report.at(Trap::kMatrixArguments, call);
        }
    }

    const TrapScene& scene_;
};

}  // namespace

void check_constructors(const TrapScene& scene) {
    Constructors constructors(scene);
    walk(scene.unit, constructors);
}

}  // namespace diagnostics
