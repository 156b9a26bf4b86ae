#include <cmath>

#include "diagnostics/traps/checks.h"

// Numbers that do not arrive as they were written.

namespace diagnostics {

namespace {

using namespace glsl;

class Numbers : public TreeVisitor {
public:
    explicit Numbers(TrapReport& report) : report_(report) {}

    void enter(const astExpression& node) override {
        if (node.kind == ExpressionKind::doubleConstant) {
            report_.at(Trap::kDoubleConstant, node);
        }
        if (node.kind != ExpressionKind::floatConstant) {
            return;
        }
        constexpr float kSmallestPrinted = 5e-17F;  // half of the sixteenth digit behind the point
        const float value = std::fabs(as<astFloatConstant>(&node)->value);
        if (std::isinf(value)) {
            report_.at(Trap::kFloatRange, node);
        } else if (value > 0.0F && value < kSmallestPrinted) {
            report_.at(Trap::kFloatTiny, node);
        }
    }

private:
    TrapReport& report_;
};

}  // namespace

void check_numbers(const TrapScene& scene) {
    Numbers numbers(scene.report);
    walk(scene.unit, numbers);
}

}  // namespace diagnostics
