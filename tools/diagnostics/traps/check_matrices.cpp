#include "diagnostics/traps/checks.h"
#include "glsl/hlsl/result_classes.h"

// Operators next to matrices.

namespace diagnostics {

namespace {

using namespace glsl;

bool is_output(const astExpression* node) {
    if (node == nullptr || node->kind != ExpressionKind::variableIdentifier) {
        return false;
    }
    const astVariable& variable = *as<astVariableIdentifier>(node)->variable;
    return variable.variableType == VariableKind::global &&
           (variable.name == "gl_Position" || variable.name == "tc");
}

bool is_linear(const ExpressionType& type) {
    return !type.is_array && (isMatrix(type.meant) || isFloatVector(type.meant));
}

// A matrix with a vector or another matrix.
bool is_matrix_product(const ExpressionType& left, const ExpressionType& right) {
    return is_linear(left) && is_linear(right) && (isMatrix(left.meant) || isMatrix(right.meant));
}

class Matrices : public TreeVisitor {
public:
    explicit Matrices(const TrapScene& scene) : scene_(scene) {}

    void enter(const astExpression& node) override {
        if (node.kind == ExpressionKind::operation) {
            const auto& operation = *as<astOperationExpression>(&node);
            look_at(operation, operation.operation,
                    operationForm(operation.operation, printed(operation.operand1),
                                  printed(operation.operand2)));
        } else if (node.kind == ExpressionKind::assignment) {
            const auto& assignment = *as<astAssignmentExpression>(&node);
            if (assignment.assignment == Operator::multiply_assign) {
                const ValueClass right = printed(assignment.operand2);
                look_at(assignment, Operator::multiply,
                        isMatrix(right)
                            ? operationForm(Operator::multiply, printed(assignment.operand1), right)
                            : OperationForm::plain);
            }
        }
    }

private:
    ValueClass printed(const astExpression* node) const { return scene_.types.of(node).printed; }

    void look_at(const astBinaryExpression& node, Operator operation, OperationForm form) {
        const ExpressionType left = scene_.types.of(node.operand1);
        const ExpressionType right = scene_.types.of(node.operand2);
        if (operation == Operator::equal || operation == Operator::not_equal) {
            return;
        }
        if (form == OperationForm::mulRL || form == OperationForm::mulLR) {
            return look_at_product(node, operation, left, right);
        }
        if (operation != Operator::multiply || !is_matrix_product(left, right)) {
            return;
        }
        const bool outputs =
            scene_.is_vertex && (is_output(node.operand1) || is_output(node.operand2));
        scene_.report.at(outputs ? Trap::kVertexOutput : Trap::kMatrixScaled, node);
    }

    // What is printed as mul().
    void look_at_product(const astBinaryExpression& node, Operator operation,
                         const ExpressionType& left, const ExpressionType& right) {
        if (isMatrix(left.meant) && isMatrix(right.meant)) {
            if (operation != Operator::multiply) {
                scene_.report.at(Trap::kMatrixSum, node);
            }
        } else if (isFloatVector(left.meant) && isFloatVector(right.meant)) {
            scene_.report.at(Trap::kMatrixColumn, node);
        } else if (isFloatVector(left.meant) && isMatrix(right.meant) &&
                   operation == Operator::multiply) {
            scene_.report.at(Trap::kVectorTimesMatrix, node);
        }
    }

    const TrapScene& scene_;
};

}  // namespace

void check_matrices(const TrapScene& scene) {
    Matrices matrices(scene);
    walk(scene.unit, matrices);
}

}  // namespace diagnostics
