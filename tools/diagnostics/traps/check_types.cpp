#include "diagnostics/traps/checks.h"
#include "glsl/keywords.h"

// Type words that stay GLSL in the HLSL.

namespace diagnostics {

namespace {

using namespace glsl;

bool is_unknown(const astType* type) {
    return type != nullptr && type->builtin && class_of(type) == ValueClass::other &&
           as<astBuiltin>(type)->typeKeyword != id(Keyword::void_);
}

class Types : public TreeVisitor {
public:
    explicit Types(TrapReport& report) : report_(report) {}

    void enter(const astVariable& variable) override {
        if (is_unknown(variable.baseType)) {
            report_.at_name(Trap::kUnknownType, variable);
            told_line_ = variable.line;
        }
    }
    void enter(const astFunction& function) override {
        if (is_unknown(function.returnType)) {
            report_.at_name(Trap::kUnknownType, function);
        }
    }
    void enter(const astExpression& node) override {
        if (node.kind == ExpressionKind::constructorCall &&
            is_unknown(as<astConstructorCall>(&node)->type) && node.line != told_line_) {
            report_.at(Trap::kUnknownType, node);
        }
    }

private:
    TrapReport& report_;
    uint64_t told_line_ = 0;  // of the last variable; its value is of its type
};

}  // namespace

void check_types(const TrapScene& scene) {
    Types types(scene.report);
    walk(scene.unit, types);
}

}  // namespace diagnostics
