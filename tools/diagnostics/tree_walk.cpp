#include "diagnostics/tree_walk.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace diagnostics {

namespace {

using namespace glsl;

enum class Family { kExpression, kStatement, kVariable, kFunction };

// A node that is still to be entered, or to be left.
struct Step {
    const astNode* node;
    Family family;
    bool entered;
};

class Walk {
public:
    explicit Walk(TreeVisitor& visitor) : visitor_(visitor) {}

    void run(const astNode& node, Family family) {
        steps_.push_back({&node, family, false});
        while (!steps_.empty()) {
            Step step = steps_.back();
            if (step.entered) {
                steps_.pop_back();
                visit(step, false);
                continue;
            }
            steps_.back().entered = true;
            visit(step, true);
            const size_t first = steps_.size();
            add_children(step);
            std::reverse(steps_.begin() + static_cast<std::ptrdiff_t>(first), steps_.end());
        }
    }

private:
    template <class T>
    void tell(const T& node, bool entering) {
        if (entering) {
            visitor_.enter(node);
        } else {
            visitor_.leave(node);
        }
    }

    void visit(const Step& step, bool entering) {
        switch (step.family) {
            case Family::kExpression:
                return tell(*as<astExpression>(step.node), entering);
            case Family::kStatement:
                return tell(*as<astStatement>(step.node), entering);
            case Family::kVariable:
                return tell(*as<astVariable>(step.node), entering);
            case Family::kFunction:
                return tell(*as<astFunction>(step.node), entering);
        }
    }

    void add(const astNode* node, Family family) {
        if (node != nullptr) {
            steps_.push_back({node, family, false});
        }
    }
    void add(const astExpression* node) { add(node, Family::kExpression); }
    void add(const astStatement* node) { add(node, Family::kStatement); }
    template <class T>
    void add_all(const list<T>& nodes, Family family) {
        for (const auto& node : nodes) {
            add(node.get(), family);
        }
    }

    void add_children(const Step& step) {
        switch (step.family) {
            case Family::kExpression:
                return add_operands(*as<astExpression>(step.node));
            case Family::kStatement:
                return add_parts(*as<astStatement>(step.node));
            case Family::kVariable:
                return add_values(*as<astVariable>(step.node));
            case Family::kFunction: {
                const auto& function = *as<astFunction>(step.node);
                add_all(function.parameters, Family::kVariable);
                return add_all(function.statements, Family::kStatement);
            }
        }
    }

    void add_operands(const astExpression& node) {
        switch (node.kind) {
            case ExpressionKind::fieldOrSwizzle:
                return add(as<astFieldOrSwizzle>(&node)->operand);
            case ExpressionKind::arraySubscript:
                add(as<astArraySubscript>(&node)->operand);
                return add(as<astArraySubscript>(&node)->index);
            case ExpressionKind::functionCall:
                return add_all(as<astFunctionCall>(&node)->parameters, Family::kExpression);
            case ExpressionKind::constructorCall:
                return add_all(as<astConstructorCall>(&node)->parameters, Family::kExpression);
            case ExpressionKind::postIncrement:
            case ExpressionKind::postDecrement:
            case ExpressionKind::unaryMinus:
            case ExpressionKind::unaryPlus:
            case ExpressionKind::unaryBitNot:
            case ExpressionKind::unaryLogicalNot:
            case ExpressionKind::prefixIncrement:
            case ExpressionKind::prefixDecrement:
                return add(as<astUnaryExpression>(&node)->operand);
            case ExpressionKind::sequence:
            case ExpressionKind::assignment:
            case ExpressionKind::operation:
                add(as<astBinaryExpression>(&node)->operand1);
                return add(as<astBinaryExpression>(&node)->operand2);
            case ExpressionKind::ternary:
                add(as<astTernaryExpression>(&node)->condition);
                add(as<astTernaryExpression>(&node)->onTrue);
                return add(as<astTernaryExpression>(&node)->onFalse);
            case ExpressionKind::intConstant:
            case ExpressionKind::uintConstant:
            case ExpressionKind::floatConstant:
            case ExpressionKind::stringConstant:
            case ExpressionKind::doubleConstant:
            case ExpressionKind::boolConstant:
            case ExpressionKind::variableIdentifier:
                return;
        }
    }

    void add_parts(const astStatement& node) {
        switch (node.kind) {
            case StatementKind::compound:
                return add_all(as<astCompoundStatement>(&node)->statements, Family::kStatement);
            case StatementKind::declaration:
                return add_all(as<astDeclarationStatement>(&node)->variables, Family::kVariable);
            case StatementKind::expression:
                return add(as<astExpressionStatement>(&node)->expression);
            case StatementKind::if_:
                add(as<astIfStatement>(&node)->condition);
                add(as<astIfStatement>(&node)->thenStatement);
                return add(as<astIfStatement>(&node)->elseStatement);
            case StatementKind::switch_:
                add(as<astSwitchStatement>(&node)->expression);
                return add_all(as<astSwitchStatement>(&node)->statements, Family::kStatement);
            case StatementKind::caseLabel:
                return add(as<astCaseLabelStatement>(&node)->condition);
            case StatementKind::while_:
                add(as<astWhileStatement>(&node)->condition);
                return add(as<astWhileStatement>(&node)->body);
            case StatementKind::do_:
                add(as<astDoStatement>(&node)->body);
                return add(as<astDoStatement>(&node)->condition);
            case StatementKind::for_:
                add(as<astForStatement>(&node)->init);
                add(as<astForStatement>(&node)->condition);
                add(as<astForStatement>(&node)->loop);
                return add(as<astForStatement>(&node)->body);
            case StatementKind::return_:
                return add(as<astReturnStatement>(&node)->expression);
            case StatementKind::empty:
            case StatementKind::continue_:
            case StatementKind::break_:
            case StatementKind::discard:
                return;
        }
    }

    void add_values(const astVariable& node) {
        add_all(node.arraySizes, Family::kExpression);
        if (node.variableType == VariableKind::function) {
            add(as<astFunctionVariable>(&node)->initialValue);
            add_all(as<astFunctionVariable>(&node)->initialValues, Family::kExpression);
        } else if (node.variableType == VariableKind::global) {
            add(as<astGlobalVariable>(&node)->initialValue);
        }
    }

    TreeVisitor& visitor_;
    std::vector<Step> steps_;
};

template <class T>
void walk_all(const list<T>& nodes, Family family, TreeVisitor& visitor) {
    for (const auto& node : nodes) {
        if (node != nullptr) {
            Walk(visitor).run(*node, family);
        }
    }
}

}  // namespace

void walk(const astTU& unit, TreeVisitor& visitor) {
    for (const auto& structure : unit.structures) {
        if (structure != nullptr) {
            walk_all(structure->fields, Family::kVariable, visitor);
        }
    }
    for (const auto& block : unit.interfaceBlocks) {
        if (block != nullptr) {
            walk_all(block->fields, Family::kVariable, visitor);
        }
    }
    walk_all(unit.globals, Family::kVariable, visitor);
    walk_all(unit.functions, Family::kFunction, visitor);
}

void walk(const astNode& node, TreeVisitor& visitor) {
    if (dynamic_cast<const astExpression*>(&node) != nullptr) {
        Walk(visitor).run(node, Family::kExpression);
    } else if (dynamic_cast<const astStatement*>(&node) != nullptr) {
        Walk(visitor).run(node, Family::kStatement);
    } else if (dynamic_cast<const astVariable*>(&node) != nullptr) {
        Walk(visitor).run(node, Family::kVariable);
    } else if (dynamic_cast<const astFunction*>(&node) != nullptr) {
        Walk(visitor).run(node, Family::kFunction);
    }
}

}  // namespace diagnostics
