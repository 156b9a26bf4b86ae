#include <algorithm>
#include <cstring>

#include "glsl/parser_impl.h"

// Expressions: precedence climbing over operands with their prefix and postfix forms.

namespace glsl {

namespace {

// Down through fields and subscripts to what they are taken of.
const astExpression* withoutAccess(const astExpression* expression) {
    for (;;) {
        if (expression->kind == ExpressionKind::fieldOrSwizzle) {
            expression = as<astFieldOrSwizzle>(expression)->operand;
        } else if (expression->kind == ExpressionKind::arraySubscript) {
            expression = as<astArraySubscript>(expression)->operand;
        } else {
            return expression;
        }
    }
}

const astExpression* withoutSubscripts(const astExpression* expression) {
    while (expression->kind == ExpressionKind::arraySubscript) {
        expression = as<astArraySubscript>(expression)->operand;
    }
    return expression;
}

const list<astVariable>& fieldsOf(const astType* type, std::string_view& name) {
    if (const auto* structure = dynamic_cast<const astStruct*>(type)) {
        name = structure->name;
        return structure->fields;
    }
    const auto* block = static_cast<const astInterfaceBlock*>(type);
    name = block->name;
    return block->fields;
}

}  // namespace

// expression: unary { operator unary }. Ends on the token that cannot go on with it.
astExpression* parser::impl::parseExpression(EndCondition end) {
    astExpression* operand = parseUnary(end);
    if (operand == nullptr || !next()) {
        return nullptr;
    }
    return parseBinary(0, operand, end);
}

// On purpose: all operators hang to the left, assignment included.
astExpression* parser::impl::parseBinary(int minimum, astExpression* left, EndCondition end) {
    const Level level(*this);
    if (tooDeep()) {
        return nullptr;
    }
    std::uint32_t height = height_;  // of `left`, whose chain a walker follows in a loop
    while (!isEndCondition(end)) {
        const int precedence = lexer::precedence(*token_);
        if (precedence < minimum) {
            break;
        }
        astBinaryExpression* node = parseBinaryOperator();
        if (node == nullptr || !next()) {
            return nullptr;
        }
        astExpression* right = parseUnary(end);
        if (right == nullptr || !next()) {
            return nullptr;
        }
        if (node->kind == ExpressionKind::assignment && !checkLvalue(left)) {
            return nullptr;
        }
        if (precedence < lexer::precedence(*token_) && !isEndCondition(end)) {
            right = parseBinary(precedence + 1, right, end);
            if (right == nullptr) {
                return nullptr;
            }
        }
        height = std::max(height, height_ + 1);
        node->operand1 = left;
        node->operand2 = right;
        left = node;
    }
    height_ = height;
    return left;
}

// The node for the current token. Ends on the same token.
astBinaryExpression* parser::impl::parseBinaryOperator() {
    if (!is(TokenKind::operator_)) {
        return reportError(
            "internal compiler error: attempted to create binary expression in wrong context");
    }
    const auto id = static_cast<Operator>(token_->value);
    if (id >= Operator::multiply && id <= Operator::logical_or) {
        return make<astOperationExpression>(id);
    }
    if (id >= Operator::assign && id <= Operator::bit_or_assign) {
        return make<astAssignmentExpression>(id);
    }
    if (id == Operator::comma) {
        return make<astSequenceExpression>();
    }
    return reportError("internal compiler error: operator is wrong");
}

bool parser::impl::checkLvalue(const astExpression* target) {
    target = withoutAccess(target);
    if (target->kind == ExpressionKind::assignment) {
        return true;  // `a = b = c` is read as `(a = b) = c`
    }
    if (target->kind != ExpressionKind::variableIdentifier) {
        return reportError("not a valid lvalue");
    }
    const astVariable* variable = as<astVariableIdentifier>(target)->variable;
    if (variable->variableType != VariableKind::global) {
        return true;
    }
    const std::int32_t storage = as<astGlobalVariable>(variable)->storage;
    if (storage == kStorageIn) {
        return reportError("cannot write to a variable declared as input");
    }
    if (storage == kStorageConst) {
        return reportError("cannot write to a const variable outside of its declaration");
    }
    return true;
}

// unary: primary { postfix }. Ends on the operand's last token.
astExpression* parser::impl::parseUnary(EndCondition end) {
    const Level level(*this);
    height_ = 0;
    if (tooDeep()) {
        return nullptr;
    }
    astExpression* operand = parsePrimary(end);
    return operand == nullptr ? nullptr : parsePostfix(operand, end);
}

// What a chain of postfix forms stands on; null until it is asked for.
struct parser::impl::Postfix {
    const astExpression* typed = nullptr;        // below fields and subscripts
    const astExpression* subscripted = nullptr;  // below subscripts alone
};

// { "." name | "++" | "--" | "[" expression "]" | "?" expression ":" unary }
astExpression* parser::impl::parsePostfix(astExpression* operand, EndCondition end) {
    Postfix chain;
    for (;;) {
        const token& ahead = lexer_->peek();
        if (ahead.type != TokenKind::operator_) {
            return operand;
        }
        const auto id = static_cast<Operator>(ahead.value);
        switch (id) {
            case Operator::dot:
                operand = parseField(operand, chain);
                break;
            case Operator::bracket_begin:
                operand = parseSubscript(operand, chain);
                break;
            case Operator::increment:
            case Operator::decrement:
                if (!next()) {
                    return nullptr;
                }
                operand =
                    id == Operator::increment
                        ? static_cast<astExpression*>(make<astPostIncrementExpression>(operand))
                        : make<astPostDecrementExpression>(operand);
                chain = Postfix();
                break;
            case Operator::questionmark:
                operand = parseTernary(operand, end);
                chain = Postfix();
                break;
            default:
                return operand;
        }
        ++height_;
        if (operand == nullptr || tooDeep()) {
            return nullptr;
        }
    }
}

// "." name, from the token before it on
astExpression* parser::impl::parseField(astExpression* operand, Postfix& chain) {
    if (!next() || !next()) {
        return nullptr;
    }
    if (!is(TokenKind::identifier)) {
        return reportError("expected field identifier or swizzle after `.'");
    }
    if (chain.typed == nullptr) {
        chain.typed = withoutAccess(operand);
    }
    const text field = token_->name->name;
    // On purpose: the type is that of the chain's beginning, so a field of a field is looked up in
    // the outer structure and fails; effects do not nest structures.
    const astType* type = baseType(chain.typed);
    if (type != nullptr && !type->builtin) {
        text structure;
        const list<astVariable>& fields = fieldsOf(type, structure);
        if (field_index_.find(fields, field) == nullptr) {
            return reportError("field `%s' does not exist in structure `%s'", field, structure);
        }
    }
    auto* made = make<astFieldOrSwizzle>();
    made->operand = operand;
    made->field = field;
    chain.subscripted = made;
    return made;
}

// "[" expression "]", from the token before it on. Ends on the `]`.
astExpression* parser::impl::parseSubscript(astExpression* operand, Postfix& chain) {
    if (!next() || !next()) {
        return nullptr;
    }
    if (chain.subscripted == nullptr) {
        chain.subscripted = withoutSubscripts(operand);
    }
    const ExpressionKind bottom = chain.subscripted->kind;
    if (bottom != ExpressionKind::variableIdentifier && bottom != ExpressionKind::functionCall) {
        return reportError("cannot be subscripted");
    }
    auto* made = make<astArraySubscript>();
    made->operand = operand;
    const std::uint32_t height = height_;
    made->index = parseExpression(kEndBracket);
    height_ = std::max(height_, height);
    if (made->index == nullptr) {
        return nullptr;
    }
    if (isConstant(made->index)) {
        made->index = evaluate(made->index);
        if (made->index == nullptr) {
            return nullptr;
        }
    }
    return made;
}

// "?" expression ":" unary, from the token before it on. The source has parentheses around the
// three parts by now, so single operands are whole expressions.
astExpression* parser::impl::parseTernary(astExpression* condition, EndCondition end) {
    if (!next() || !next()) {
        return nullptr;
    }
    auto* made = make<astTernaryExpression>();
    made->condition = condition;
    std::uint32_t height = height_;
    made->onTrue = parseExpression(kEndColon);
    height = std::max(height_, height);
    if (!isOperator(Operator::colon)) {
        return reportError("expected `:' for else case in ternary statement");
    }
    if (!next()) {
        return nullptr;
    }
    made->onFalse = parseUnary(end);
    if (made->onFalse == nullptr) {
        return reportError("expected expression after `:' in ternary statement");
    }
    height_ = std::max(height_, height);
    return made;
}

astExpression* parser::impl::parsePrimary(EndCondition end) {
    height_ = 1;
    switch (token_->type) {
        case TokenKind::string:
            return make<astStringConstant>(token_->text);
        case TokenKind::operator_:
            return parseOperatorPrimary(end);
        case TokenKind::keyword:
            return parseKeywordPrimary(end);
        case TokenKind::identifier:
            return parseIdentifier();
        case TokenKind::intConstant:
            return make<astIntConstant>(static_cast<std::int32_t>(token_->value));
        case TokenKind::uintConstant:
            return make<astUIntConstant>(token_->value);
        case TokenKind::floatConstant: {
            float value = 0.0f;
            std::memcpy(&value, &token_->value, sizeof(value));
            return make<astFloatConstant>(value, token_->text);
        }
        case TokenKind::doubleConstant:
            return make<astDoubleConstant>(token_->doubleValue, token_->text);
        case TokenKind::end:
        case TokenKind::whitespace:
        case TokenKind::comment:
        case TokenKind::semicolon:
        case TokenKind::scopeBegin:
        case TokenKind::scopeEnd:
        case TokenKind::directive:
            break;
    }
    return reportPrimary(end);
}

// "(" expression ")", which leaves no node, or a prefix operator with its operand
astExpression* parser::impl::parseOperatorPrimary(EndCondition end) {
    switch (static_cast<Operator>(token_->value)) {
        case Operator::paranthesis_begin:
            return next() ? parseExpression(kEndParenthesis) : nullptr;
        case Operator::logical_not:
            return parsePrefix<astUnaryLogicalNotExpression>(end);
        case Operator::bit_not:
            return parsePrefix<astUnaryBitNotExpression>(end);
        case Operator::plus:
            return parsePrefix<astUnaryPlusExpression>(end);
        case Operator::minus:
            return parsePrefix<astUnaryMinusExpression>(end);
        case Operator::increment:
            return parsePrefix<astPrefixIncrementExpression>(end);
        case Operator::decrement:
            return parsePrefix<astPrefixDecrementExpression>(end);
        default:
            return reportPrimary(end);
    }
}

// The node carries the position behind the operand's first token; an operand that failed is null.
template <class T>
astExpression* parser::impl::parsePrefix(EndCondition end) {
    if (!next()) {
        return nullptr;
    }
    const std::uint64_t line = lexer_->line();
    const std::uint64_t column = lexer_->column();
    astExpression* operand = parseUnary(end);
    ++height_;
    return home_->make<T>(operand, line, column);
}

astExpression* parser::impl::parseKeywordPrimary(EndCondition end) {
    if (isType()) {
        return parseConstructorCall();
    }
    if (isKeyword(Keyword::true_) || isKeyword(Keyword::false_)) {
        return make<astBoolConstant>(isKeyword(Keyword::true_));
    }
    return reportPrimary(end);
}

// A variable, or a call if a `(` follows.
astExpression* parser::impl::parseIdentifier() {
    const symbol& name = *token_->name;
    const token& ahead = lexer_->peek();
    if (ahead.type == TokenKind::operator_ &&
        ahead.value == static_cast<std::uint32_t>(Operator::paranthesis_begin)) {
        return findStructure(name) != nullptr ? parseConstructorCall() : parseFunctionCall();
    }
    astVariable* variable = findVariable(name);
    if (variable == nullptr) {
        return reportError("`%s' was not declared in this scope", name.name);
    }
    return make<astVariableIdentifier>(variable);
}

// Nothing that begins an operand. The empty `[]` of a declaration gets here too and is no error.
failure parser::impl::reportPrimary(EndCondition end) {
    if (end == kEndBracket) {
        return {};
    }
    if (is(TokenKind::keyword)) {
        return reportError("syntax error during unary prefix:%s is keyword",
                           keywordText(token_->value));
    }
    return reportError("syntax error during unary prefix");
}

// constructor: type "(" arguments ")". On purpose: a structure's name comes here and is refused;
// there are no structure constructors.
astExpression* parser::impl::parseConstructorCall() {
    auto* call = make<astConstructorCall>();
    call->type = parseBuiltin();
    if (call->type == nullptr || !next()) {
        return nullptr;
    }
    if (!isOperator(Operator::paranthesis_begin)) {
        return reportError("expected `(' for constructor call");
    }
    return parseArguments(call->parameters) ? call : nullptr;
}

// call: name "(" arguments ")"
astExpression* parser::impl::parseFunctionCall() {
    auto* call = make<astFunctionCall>();
    call->name = token_->name->name;
    if (!next()) {
        return nullptr;
    }
    if (!isOperator(Operator::paranthesis_begin)) {
        return reportError("expected `(' for function call");
    }
    if (!parseArguments(call->parameters)) {
        return nullptr;
    }
    unit_->functionCalls.push_back(*home_, call);
    return call;
}

// { expression [ "," ] } ")", from the `(` on. Ends on the `)`.
bool parser::impl::parseArguments(list<astExpression>& arguments) {
    if (!next()) {
        return false;
    }
    Collector<astExpression> collected(*this);
    std::uint32_t height = 0;
    while (!isOperator(Operator::paranthesis_end)) {
        astExpression* argument = parseExpression(kEndComma | kEndParenthesis);
        if (argument == nullptr) {
            return false;
        }
        collected.add(argument);
        height = std::max(height_, height);
        if (isOperator(Operator::comma) && !next()) {
            return false;
        }
    }
    arguments = collected.take();
    height_ = height + 1;
    return true;
}

// Type of an expression that is no field and no subscript, as far as it is known; else null.
const astType* parser::impl::baseType(const astExpression* bottom) const {
    switch (bottom->kind) {
        case ExpressionKind::variableIdentifier:
            return as<astVariableIdentifier>(bottom)->variable->baseType;
        case ExpressionKind::constructorCall:
            return as<astConstructorCall>(bottom)->type;
        case ExpressionKind::functionCall: {
            const symbol* name = lexer_->names().find(as<astFunctionCall>(bottom)->name);
            return name->function == nullptr ? nullptr : name->function->returnType.get();
        }
        default:
            return nullptr;
    }
}

}  // namespace glsl
