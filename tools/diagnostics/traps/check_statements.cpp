#include "diagnostics/traps/checks.h"
#include "glsl/hlsl/naming.h"

// Loops, switches and components that are set by an index.

namespace diagnostics {

namespace {

using namespace glsl;

bool is_kind(const astStatement* node, StatementKind kind) {
    return node != nullptr && node->kind == kind;
}

// Whether the end of a statement cannot be reached.
bool leaves(const astStatement* node) {
    while (is_kind(node, StatementKind::compound)) {
        const auto& statements = as<astCompoundStatement>(node)->statements;
        node = statements.empty() ? nullptr : statements.back().get();
    }
    return is_kind(node, StatementKind::break_) || is_kind(node, StatementKind::return_) ||
           is_kind(node, StatementKind::continue_) || is_kind(node, StatementKind::discard);
}

bool is_input(std::string_view name) {
    return isNumberedName(name, "INPUT") || isNumberedName(name, "AUDIO_INPUT");
}

class InputReads : public TreeVisitor {
public:
    void enter(const astExpression& node) override {
        found = found || (node.kind == ExpressionKind::functionCall &&
                          is_input(as<astFunctionCall>(&node)->name));
    }
    bool found = false;
};

class Statements : public TreeVisitor {
public:
    explicit Statements(const TrapScene& scene) : scene_(scene) {}

    void enter(const astStatement& node) override {
        if (node.kind == StatementKind::for_) {
            const astStatement* const init = as<astForStatement>(&node)->init;
            if (is_kind(init, StatementKind::declaration) &&
                as<astDeclarationStatement>(init)->variables.size() > 1) {
                scene_.report.at(Trap::kForDeclarations, node);
            }
        } else if (node.kind == StatementKind::while_) {
            const auto& loop = *as<astWhileStatement>(&node);
            if (is_kind(loop.condition, StatementKind::declaration)) {
                scene_.report.at(Trap::kWhileDeclaration, node);
            }
            look_for_reads(node, loop.body);
        } else if (node.kind == StatementKind::do_) {
            look_for_reads(node, as<astDoStatement>(&node)->body);
        } else if (node.kind == StatementKind::switch_) {
            look_at_cases(*as<astSwitchStatement>(&node));
        }
    }

    void enter(const astExpression& node) override {
        switch (node.kind) {
            case ExpressionKind::assignment:
                return look_at_target(as<astAssignmentExpression>(&node)->operand1);
            case ExpressionKind::postIncrement:
            case ExpressionKind::postDecrement:
            case ExpressionKind::prefixIncrement:
            case ExpressionKind::prefixDecrement:
                return look_at_target(as<astUnaryExpression>(&node)->operand);
            default:
                return;
        }
    }

private:
    void look_for_reads(const astStatement& loop, const astStatement* body) {
        InputReads reads;
        if (body != nullptr) {
            walk(*body, reads);
        }
        if (reads.found) {
            scene_.report.at(Trap::kLoopRead, loop);
        }
    }

    void look_at_cases(const astSwitchStatement& node) {
        const astStatement* last = nullptr;  // of the case so far; null if it is empty
        for (const auto& statement : node.statements) {
            if (is_kind(statement, StatementKind::caseLabel)) {
                end_case(last);
                last = nullptr;
            } else {
                last = statement;
            }
        }
        end_case(last);
    }

    void end_case(const astStatement* last) {
        if (last != nullptr && !leaves(last)) {
            scene_.report.at(Trap::kFallThrough, *last);
        }
    }

    void look_at_target(const astExpression* target) {
        while (target != nullptr) {
            if (target->kind == ExpressionKind::fieldOrSwizzle) {
                target = as<astFieldOrSwizzle>(target)->operand;
            } else if (target->kind == ExpressionKind::arraySubscript) {
                const auto& subscript = *as<astArraySubscript>(target);
                look_at_index(subscript);
                target = subscript.operand;
            } else {
                return;
            }
        }
    }

    void look_at_index(const astArraySubscript& node) {
        const ExpressionType operand = scene_.types.of(node.operand);
        const bool is_vector = !operand.is_array &&
                               (isFloatVector(operand.meant) || isIntVector(operand.meant)) &&
                               !isMatrix(operand.printed);
        const bool is_fixed =
            node.index != nullptr && (node.index->kind == ExpressionKind::intConstant ||
                                      node.index->kind == ExpressionKind::uintConstant);
        if (is_vector && !is_fixed) {
            scene_.report.at(Trap::kVectorIndex, node);
        }
    }

    const TrapScene& scene_;
};

}  // namespace

void check_statements(const TrapScene& scene) {
    Statements statements(scene);
    walk(scene.unit, statements);
}

}  // namespace diagnostics
