#include "tree_dump.h"

#include <cstdio>

#include "glsl/keywords.h"

namespace glsl::test {

namespace {

std::string real(double value, std::string_view written, const char* suffix) {
    char shown[64];
    std::snprintf(shown, sizeof(shown), "%.9g", value);
    return shown + std::string(suffix) + "'" + std::string(written);
}

std::string typeName(const astType* type) {
    if (type == nullptr) {
        return "null";
    }
    if (type->builtin) {
        return std::string(keywordText(static_cast<const astBuiltin*>(type)->typeKeyword));
    }
    if (const auto* structure = dynamic_cast<const astStruct*>(type)) {
        return "struct:" + std::string(structure->name);
    }
    return "block:" + std::string(dynamic_cast<const astInterfaceBlock&>(*type).name);
}

template <class T>
std::string joined(const list<T>& items) {
    std::string result;
    for (const auto& item : items) {
        result += " " + dump(item.get());
    }
    return result;
}

std::string unary(const char* name, const astExpression* expression) {
    return std::string("(") + name + " " + dump(as<astUnaryExpression>(expression)->operand.get()) +
           ")";
}

std::string binary(std::string_view name, const astExpression* expression) {
    const auto* node = as<astBinaryExpression>(expression);
    return "(" + std::string(name) + " " + dump(node->operand1.get()) + " " +
           dump(node->operand2.get()) + ")";
}

std::string sizes(const astVariable& variable) {
    std::string result;
    for (const auto& size : variable.arraySizes) {
        result += "[" + (size == nullptr ? std::string() : dump(size.get())) + "]";
    }
    return result + (variable.isArray ? "#" : "");
}

std::string local(const astFunctionVariable& variable) {
    std::string result = std::string(variable.name) + sizes(variable);
    if (variable.initialValue != nullptr) {
        result += "=" + dump(variable.initialValue.get());
    }
    if (!variable.initialValues.empty()) {
        result += "={" + joined(variable.initialValues) + " }";
    }
    return result;
}

std::string declaration(const astDeclarationStatement& statement) {
    std::string result = "(var";
    for (const auto& variable : statement.variables) {
        result += result.size() > 4
                      ? ""
                      : (variable->isConst ? " const " : " ") + typeName(variable->baseType);
        result += " " + local(*variable);
    }
    return result + ")";
}

std::string qualifiers(const astGlobalVariable& variable) {
    static const char* const storages[] = {"const",   "in",      "out",    "inout", "attribute",
                                           "uniform", "varying", "buffer", "shared"};
    std::string result;
    result += variable.storage >= 0 ? std::string(storages[variable.storage]) + " " : "";
    const auto number = [&](const char* name, std::int64_t value, std::int64_t unset) {
        result += value == unset ? "" : name + std::to_string(value) + " ";
    };
    number("aux", variable.auxiliary, -1);
    number("interp", variable.interpolation, -1);
    number("prec", variable.precision, -1);
    number("mem", variable.memory, 0);
    result += variable.isInvariant ? "invariant " : "";
    result += variable.isPrecise ? "precise " : "";
    for (const auto& layout : variable.layoutQualifiers) {
        result += "layout:" + std::string(layout->name);
        result +=
            layout->initialValue == nullptr ? " " : "=" + dump(layout->initialValue.get()) + " ";
    }
    return result;
}

std::string fields(const list<astVariable>& of) {
    std::string result;
    for (const auto& field : of) {
        result += " " + typeName(field->baseType) + ":" + std::string(field->name) + sizes(*field);
    }
    return result;
}

std::string parameter(const astFunctionParameter& of) {
    std::string result;
    const auto number = [&](const char* name, std::int64_t value, std::int64_t unset) {
        result += value == unset ? "" : name + std::to_string(value) + " ";
    };
    number("storage", of.storage, -1);
    number("aux", of.auxiliary, -1);
    number("mem", of.memory, 0);
    number("prec", of.precision, -1);
    return result + typeName(of.baseType) + ":" + std::string(of.name) + sizes(of);
}

}  // namespace

std::string dump(const astExpression* expression) {
    if (expression == nullptr) {
        return "null";
    }
    switch (expression->kind) {
        case ExpressionKind::intConstant:
            return std::to_string(as<astIntConstant>(expression)->value);
        case ExpressionKind::uintConstant:
            return std::to_string(as<astUIntConstant>(expression)->value) + "u";
        case ExpressionKind::floatConstant: {
            const auto* node = as<astFloatConstant>(expression);
            return real(static_cast<double>(node->value), node->text, "f");
        }
        case ExpressionKind::stringConstant:
            return "\"" + std::string(as<astStringConstant>(expression)->value) + "\"";
        case ExpressionKind::doubleConstant: {
            const auto* node = as<astDoubleConstant>(expression);
            return real(node->value, node->text, "lf");
        }
        case ExpressionKind::boolConstant:
            return as<astBoolConstant>(expression)->value ? "true" : "false";
        case ExpressionKind::variableIdentifier:
            return std::string(as<astVariableIdentifier>(expression)->variable->name);
        case ExpressionKind::fieldOrSwizzle: {
            const auto* node = as<astFieldOrSwizzle>(expression);
            return "(. " + dump(node->operand.get()) + " " + std::string(node->field) + ")";
        }
        case ExpressionKind::arraySubscript: {
            const auto* node = as<astArraySubscript>(expression);
            return "([] " + dump(node->operand.get()) + " " + dump(node->index.get()) + ")";
        }
        case ExpressionKind::functionCall: {
            const auto* node = as<astFunctionCall>(expression);
            return "(call " + std::string(node->name) + joined(node->parameters) + ")";
        }
        case ExpressionKind::constructorCall: {
            const auto* node = as<astConstructorCall>(expression);
            return "(new " + typeName(node->type) + joined(node->parameters) + ")";
        }
        case ExpressionKind::postIncrement:
            return unary("post++", expression);
        case ExpressionKind::postDecrement:
            return unary("post--", expression);
        case ExpressionKind::unaryMinus:
            return unary("neg", expression);
        case ExpressionKind::unaryPlus:
            return unary("pos", expression);
        case ExpressionKind::unaryBitNot:
            return unary("~", expression);
        case ExpressionKind::unaryLogicalNot:
            return unary("!", expression);
        case ExpressionKind::prefixIncrement:
            return unary("pre++", expression);
        case ExpressionKind::prefixDecrement:
            return unary("pre--", expression);
        case ExpressionKind::sequence:
            return binary(",", expression);
        case ExpressionKind::assignment:
            return binary(operatorText(as<astAssignmentExpression>(expression)->assignment),
                          expression);
        case ExpressionKind::operation:
            return binary(operatorText(as<astOperationExpression>(expression)->operation),
                          expression);
        case ExpressionKind::ternary: {
            const auto* node = as<astTernaryExpression>(expression);
            return "(? " + dump(node->condition.get()) + " " + dump(node->onTrue.get()) + " " +
                   dump(node->onFalse.get()) + ")";
        }
    }
    return "?";
}

std::string dump(const astStatement* statement) {
    if (statement == nullptr) {
        return "null";
    }
    switch (statement->kind) {
        case StatementKind::compound:
            return "{" + joined(as<astCompoundStatement>(statement)->statements) + " }";
        case StatementKind::empty:
            return ";";
        case StatementKind::declaration:
            return declaration(*as<astDeclarationStatement>(statement));
        case StatementKind::expression:
            return "(do " + dump(as<astExpressionStatement>(statement)->expression.get()) + ")";
        case StatementKind::if_: {
            const auto* node = as<astIfStatement>(statement);
            return "(if " + dump(node->condition.get()) + " " + dump(node->thenStatement.get()) +
                   (node->elseStatement == nullptr ? "" : " " + dump(node->elseStatement.get())) +
                   ")";
        }
        case StatementKind::switch_: {
            const auto* node = as<astSwitchStatement>(statement);
            return "(switch " + dump(node->expression.get()) + joined(node->statements) + ")";
        }
        case StatementKind::caseLabel: {
            const auto* node = as<astCaseLabelStatement>(statement);
            return node->isDefault ? "default:" : "case:" + dump(node->condition.get());
        }
        case StatementKind::while_: {
            const auto* node = as<astWhileStatement>(statement);
            return "(while " + dump(node->condition.get()) + " " + dump(node->body.get()) + ")";
        }
        case StatementKind::do_: {
            const auto* node = as<astDoStatement>(statement);
            return "(dowhile " + dump(node->body.get()) + " " + dump(node->condition.get()) + ")";
        }
        case StatementKind::for_: {
            const auto* node = as<astForStatement>(statement);
            return "(for " + dump(node->init.get()) + " " + dump(node->condition.get()) + " " +
                   dump(node->loop.get()) + " " + dump(node->body.get()) + ")";
        }
        case StatementKind::continue_:
            return "continue";
        case StatementKind::break_:
            return "break";
        case StatementKind::return_: {
            const auto* node = as<astReturnStatement>(statement);
            return node->expression == nullptr ? "return"
                                               : "(return " + dump(node->expression.get()) + ")";
        }
        case StatementKind::discard:
            return "discard";
    }
    return "?";
}

std::string dump(const astVariable& variable) {
    if (variable.variableType != VariableKind::global) {
        return typeName(variable.baseType) + ":" + std::string(variable.name) + sizes(variable);
    }
    const auto& global = static_cast<const astGlobalVariable&>(variable);
    return qualifiers(global) + typeName(global.baseType) + ":" + std::string(global.name) +
           sizes(global) +
           (global.initialValue == nullptr ? "" : "=" + dump(global.initialValue.get()));
}

std::string dump(const astFunction& function) {
    std::string result = typeName(function.returnType) + " " + std::string(function.name) + "(";
    for (std::size_t i = 0; i < function.parameters.size(); ++i) {
        result += (i == 0 ? "" : ", ") + parameter(*function.parameters[i]);
    }
    result += ")";
    return function.isPrototype ? result + ";" : result + " {" + joined(function.statements) + " }";
}

std::string dump(const astTU& unit) {
    std::string result;
    const auto add = [&](const std::string& part) {
        result += (result.empty() ? "" : " | ") + part;
    };
    if (unit.versionDirective != nullptr) {
        add("#version " + std::to_string(unit.versionDirective->number) + " " +
            std::to_string(unit.versionDirective->profile));
    }
    for (const auto& directive : unit.extensionDirectives) {
        add("#extension " + std::string(directive->name) + " " +
            std::to_string(directive->behavior));
    }
    for (const auto& directive : unit.defineDirectives) {
        add("#define " + std::string(directive->name) + " " + std::string(directive->value));
    }
    for (const auto& structure : unit.structures) {
        add("struct " + std::string(structure->name) + " {" + fields(structure->fields) + " }");
    }
    for (const auto& block : unit.interfaceBlocks) {
        add("block" + std::to_string(block->storage) + " " + std::string(block->name) + " {" +
            fields(block->fields) + " }");
    }
    for (const auto& global : unit.globals) {
        add(dump(*global));
    }
    for (const auto& function : unit.functions) {
        add(dump(*function));
    }
    return result;
}

namespace {

std::string errorLines(const parser& of) {
    if (of.error() == nullptr) {
        return "silent";
    }
    std::string text = of.error();
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text.find("\r\n", at);
        std::string line = text.substr(at, end - at);
        if (line.rfind("codeDX:", 0) != 0 || end == std::string::npos) {
            return "malformed: " + text;
        }
        const std::size_t word = line.find(":error:");
        result += (result.empty() ? "" : "|") + line.substr(7, word - 7) + line.substr(word + 6);
        at = end + 2;
    }
    return result;
}

constexpr char kDeclarations[] =
    "struct S { float p; vec2 q; }; int i; int j; float x; float y; vec4 v; vec4 w; int a[8]; S "
    "s;\n";

}  // namespace

std::string parsed(const std::string& source, std::uint32_t stage) {
    parser reader(source.c_str(), "codeDX");
    const ptr<astTU> unit = reader.parse(stage);
    return unit == nullptr ? errorLines(reader) : dump(*unit);
}

std::string body(const std::string& statements) {
    parser reader((kDeclarations + ("void f() { " + statements) + " }").c_str(), "codeDX");
    const ptr<astTU> unit = reader.parse(kShaderFragment);
    if (unit == nullptr) {
        return errorLines(reader);
    }
    const std::string all = joined(unit->functions.back()->statements);
    return (all.empty() ? all : all.substr(1)) +
           (reader.error() == nullptr ? "" : " !" + errorLines(reader));
}

std::string expression(const std::string& text) {
    const std::string all = body(text + ";");
    const bool one = all.rfind("(do ", 0) == 0 && all.back() == ')';
    return one ? all.substr(4, all.size() - 5) : all;
}

std::string firstError(const std::string& source, std::uint32_t stage) {
    parser reader(source.c_str(), "codeDX");
    const ptr<astTU> unit = reader.parse(stage);
    if (reader.error() == nullptr) {
        return unit == nullptr ? "silent" : "none";
    }
    const std::string lines = errorLines(reader);
    return lines.substr(0, lines.find('|'));
}

}  // namespace glsl::test
