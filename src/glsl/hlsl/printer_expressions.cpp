#include "glsl/hlsl/literals.h"
#include "glsl/hlsl/naming.h"
#include "glsl/hlsl/printer.h"

namespace glsl {

namespace {

// What stands before the operand of a prefix operator; empty for every other kind.
constexpr std::string_view prefixOf(ExpressionKind kind) {
    switch (kind) {
        case ExpressionKind::unaryMinus:
            return "-";
        case ExpressionKind::unaryPlus:
            return "+";
        case ExpressionKind::unaryBitNot:
            return "~";
        case ExpressionKind::unaryLogicalNot:
            return "!";
        case ExpressionKind::prefixIncrement:
            return "++";
        case ExpressionKind::prefixDecrement:
            return "--";
        default:
            return {};
    }
}

constexpr bool isPrefix(ExpressionKind kind) {
    return kind >= ExpressionKind::unaryMinus && kind <= ExpressionKind::prefixDecrement;
}

// Kinds whose text begins with that of an operand: links of a chain.
constexpr bool isLink(ExpressionKind kind) {
    return kind == ExpressionKind::fieldOrSwizzle || kind == ExpressionKind::arraySubscript ||
           kind == ExpressionKind::postIncrement || kind == ExpressionKind::postDecrement ||
           (kind >= ExpressionKind::sequence && kind <= ExpressionKind::ternary);
}

// Every set of swizzle letters as the one that is printed; other letters stay.
constexpr char swizzleLetter(char letter) {
    switch (letter) {
        case 'r':
        case 's':
            return 'x';
        case 'g':
        case 't':
            return 'y';
        case 'b':
        case 'p':
            return 'z';
        case 'a':
        case 'q':
            return 'w';
        default:
            return letter;
    }
}

// The class of a swizzle of a vector, by its length.
ValueClass swizzleClass(ValueClass vector, size_t length) {
    constexpr ValueClass kFloats[] = {ValueClass::float_, ValueClass::vec2, ValueClass::vec3,
                                      ValueClass::vec4};
    constexpr ValueClass kInts[] = {ValueClass::integer, ValueClass::ivec2, ValueClass::ivec3,
                                    ValueClass::ivec4};
    if (length == 0 || length > 4) {
        return ValueClass::other;
    }
    return isFloatVector(vector) ? kFloats[length - 1] : kInts[length - 1];
}

const list<astVariable>* fieldsOf(const astType* type) {
    if (const auto* structure = dynamic_cast<const astStruct*>(type)) {
        return &structure->fields;
    }
    const auto* block = dynamic_cast<const astInterfaceBlock*>(type);
    return block != nullptr ? &block->fields : nullptr;
}

}  // namespace

astVariable* Printer::findField(const astType* type, std::string_view name) {
    const list<astVariable>* fields = fieldsOf(type);
    return fields == nullptr ? nullptr : field_index_.find(*fields, name);
}

Value Printer::printExpression(astExpression* expression) {
    if (depth_ == kMaxPrintDepth) {
        giveUp("it is nested too deeply");
        return {};
    }
    ++depth_;
    while (expression != nullptr && isPrefix(expression->kind)) {
        text_.put(prefixOf(expression->kind));
        expression = as<astUnaryExpression>(expression)->operand;
    }
    Value value;
    if (expression != nullptr) {
        value = isLink(expression->kind) ? printChain(expression) : printLeaf(*expression);
    }
    --depth_;
    return value;
}

Value Printer::printLeaf(astExpression& expression) {
    LiteralBuffer buffer;
    switch (expression.kind) {
        case ExpressionKind::intConstant:
            text_.put(intLiteral(as<astIntConstant>(&expression)->value, buffer));
            return {ValueClass::integer};
        case ExpressionKind::uintConstant:
            text_.put(uintLiteral(as<astUIntConstant>(&expression)->value, buffer));
            return {ValueClass::integer};
        case ExpressionKind::floatConstant:
            text_.put(floatLiteral(as<astFloatConstant>(&expression)->value, buffer));
            return {ValueClass::float_};
        case ExpressionKind::doubleConstant:
            text_.put(doubleLiteral(as<astDoubleConstant>(&expression)->value, buffer));
            return {ValueClass::double_};
        case ExpressionKind::boolConstant:
            text_.put(as<astBoolConstant>(&expression)->value ? "true" : "false");
            return {ValueClass::boolean, false};
        case ExpressionKind::variableIdentifier:
            return printVariableUse(as<astVariableIdentifier>(&expression)->variable);
        case ExpressionKind::functionCall:
            return printFunctionCall(*as<astFunctionCall>(&expression));
        case ExpressionKind::constructorCall: {
            const auto& call = *as<astConstructorCall>(&expression);
            return printConstructor(call.type, call.parameters, call);
        }
        default:
            return {};  // a string has no text in HLSL
    }
}

// Where a name lives in HLSL: bare for the two static outputs of the vertex stage, with a blank for
// what is in scope or at file scope, and as a member of `input` otherwise.
Value Printer::printVariableUse(astVariable* variable) {
    if (variable == nullptr) {
        return {};
    }
    if (variable->isPrecise) {
        text_.put("precise ");
    }
    Symbol& symbol = variableSymbol(*variable);
    isClassStale_ = isClassStale_ || &symbol == &matrixSubscript_;
    Value value;
    const bool isLocal = scopes_.read(symbol, KeyFamily::plain, value);
    if (!isLocal && (&symbol == &position_ || (&symbol == &coordinate_ && inVertexStage()))) {
        text_.put(symbol.name);
        return {};
    }
    const bool isAtFileScope = scopes_.read(symbol, KeyFamily::constantBuffer, value);
    if (isLocal || isAtFileScope) {
        piece(" ", symbol.name);
        return value;
    }
    if (!inVertexStage()) {
        piece("input.", symbol.name);
        return scopes_.get(symbol, KeyFamily::vertexOutput);
    }
    if (scopes_.read(symbol, KeyFamily::vertexInput, value)) {
        piece("input.", symbol.name, needsSemanticMark(symbol.name) ? "_" : "");
        return value;
    }
    piece("", symbol.name);
    return scopes_.get(symbol, KeyFamily::vertexOutput);
}

Value Printer::printField(const astFieldOrSwizzle& node, const Value& operand) {
    const size_t begin = text_.size();
    text_.put('.');
    if (isFloatVector(operand.kind) || isIntVector(operand.kind)) {
        for (const char letter : node.field) {
            text_.put(swizzleLetter(letter));
        }
        endPiece(begin);
        return {swizzleClass(operand.kind, node.field.size())};
    }
    text_.put(node.field);
    endPiece(begin);
    if (operand.kind == ValueClass::struct_) {
        if (const astVariable* field = findField(operand.structType, node.field)) {
            return valueOf(field->baseType);
        }
    }
    return {ValueClass::other};
}

// On purpose: the value is that of the whole operand, so m[1] * v multiplies as m * v does.
Value Printer::printSubscript(const astArraySubscript& node, const Value& operand) {
    if (isMatrix(operand.kind)) {
        scopes_.set(matrixSubscript_, {ValueClass::boolean});
    }
    text_.put('[');
    printExpression(node.index);
    text_.put(']');
    return operand;
}

}  // namespace glsl
