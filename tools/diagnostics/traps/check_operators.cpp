#include "diagnostics/traps/checks.h"

// Operators that print as something else, whatever the types of the matrices are.

namespace diagnostics {

namespace {

using namespace glsl;

// What an operand's text begins with: fields and subscripts put nothing in front.
const astExpression* first_part(const astExpression* node) {
    while (node != nullptr) {
        if (node->kind == ExpressionKind::fieldOrSwizzle) {
            node = as<astFieldOrSwizzle>(node)->operand;
        } else if (node->kind == ExpressionKind::arraySubscript) {
            node = as<astArraySubscript>(node)->operand;
        } else {
            return node;
        }
    }
    return nullptr;
}

bool is_kind(const astExpression* node, ExpressionKind kind) {
    return node != nullptr && node->kind == kind;
}

class Operators : public TreeVisitor {
public:
    explicit Operators(const TrapScene& scene) : scene_(scene) {}

    void enter(const astExpression& node) override {
        switch (node.kind) {
            case ExpressionKind::unaryMinus:
                look_at_sign(*as<astUnaryExpression>(&node), ExpressionKind::prefixDecrement);
                break;
            case ExpressionKind::unaryPlus:
                look_at_sign(*as<astUnaryExpression>(&node), ExpressionKind::prefixIncrement);
                break;
            case ExpressionKind::unaryLogicalNot:
            case ExpressionKind::unaryBitNot:
                look_for_assignment(node, as<astUnaryExpression>(&node)->operand);
                break;
            case ExpressionKind::fieldOrSwizzle:
                look_at_field(*as<astFieldOrSwizzle>(&node));
                break;
            case ExpressionKind::ternary:
                look_for_assignment(node, as<astTernaryExpression>(&node)->onFalse);
                break;
            case ExpressionKind::operation:
                look_at_operation(*as<astOperationExpression>(&node));
                break;
            default:
                break;
        }
    }

private:
    void look_at_sign(const astUnaryExpression& node, ExpressionKind twice) {
        const astExpression* const inner = first_part(node.operand);
        if (is_kind(inner, node.kind) || is_kind(inner, twice)) {
            scene_.report.at(Trap::kTwoSigns, node);
        }
        look_for_assignment(node, node.operand);
    }

    void look_for_assignment(const astExpression& node, const astExpression* operand) {
        if (is_kind(operand, ExpressionKind::assignment)) {
            scene_.report.at(Trap::kAssignmentOperand, node);
        }
    }

    void look_at_field(const astFieldOrSwizzle& node) {
        look_for_assignment(node, node.operand);
        const ExpressionType operand = scene_.types.of(node.operand);
        const auto is_vector = [](ValueClass kind) {
            return isFloatVector(kind) || isIntVector(kind);
        };
        if (!operand.is_array && is_vector(operand.meant) && !is_vector(operand.printed) &&
            node.field.find_first_of("stpq") != text::npos) {
            scene_.report.at(Trap::kSwizzleLetters, node);
        }
    }

    void look_at_operation(const astOperationExpression& node) {
        if (node.operation == Operator::logical_xor) {
            scene_.report.at(Trap::kLogicalXor, node);
        }
        if (node.operation != Operator::equal && node.operation != Operator::not_equal) {
            return;
        }
        const ExpressionType left = scene_.types.of(node.operand1);
        if (isIntVector(left.meant) || isMatrix(left.meant) ||
            (isFloatVector(left.meant) && !isFloatVector(left.printed))) {
            const bool lost =
                scene_.is_vertex && left.printed == ValueClass::none && isFloatVector(left.meant);
            scene_.report.at(lost ? Trap::kVertexOutput : Trap::kVectorEquality, node);
        }
    }

    const TrapScene& scene_;
};

}  // namespace

void check_operators(const TrapScene& scene) {
    Operators operators(scene);
    walk(scene.unit, operators);
}

}  // namespace diagnostics
