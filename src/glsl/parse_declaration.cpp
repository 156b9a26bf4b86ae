#include "glsl/parser_impl.h"

// Declarations of local variables.

namespace glsl {

namespace {

// On purpose: array initialisers end at `;` and `:` alone, so a list between braces reads as one
// sequence; the value is the number of the comma operator, and its third bit stands for no token.
constexpr EndCondition kEndInitialiser = 41;

}  // namespace

astStatement* parser::impl::parseDeclarationOrExpression(EndCondition end) {
    if (astDeclarationStatement* declaration = parseDeclaration(end)) {
        return declaration;
    }
    // On purpose: also behind a declaration that failed with a message, and from the token at
    // which it gave up.
    astExpression* expression = parseExpression(end);
    return expression == nullptr ? nullptr : make<astExpressionStatement>(expression);
}

failure parser::impl::giveUpDeclaration() {
    lexer_->restore();
    return {};
}

// declaration: [ "const" ] type declarator { "," declarator }. What turns out to be none fails
// without a message, with the lexer moved back but not the token.
astDeclarationStatement* parser::impl::parseDeclaration(EndCondition end) {
    lexer_->save();
    const bool is_const = isKeyword(Keyword::const_);
    if (is_const && !next()) {
        return nullptr;
    }
    astType* type = nullptr;
    if (isType()) {
        type = parseBuiltin();
    } else if (is(TokenKind::identifier)) {
        type = findStructure(*token_->name);
    }
    if (type == nullptr) {
        return giveUpDeclaration();
    }
    if (!next()) {
        return nullptr;
    }
    auto* declaration = make<astDeclarationStatement>();
    Collector<astFunctionVariable> variables(*this);
    if (!parseDeclarators(type, is_const, end, variables)) {
        return nullptr;
    }
    declaration->variables = variables.take();
    return declaration;
}

// declarator: name [ "=" value ] | name "[" size "]" { "[" size "]" } [ "=" values ]
bool parser::impl::parseDeclarators(astType* type, bool is_const, EndCondition end,
                                    Collector<astFunctionVariable>& variables) {
    for (;;) {
        symbol* name = nullptr;
        if (!parseDeclaratorName(name)) {
            return false;
        }
        if (variables.size() == 0 && !isOperator(Operator::assign) &&
            !isOperator(Operator::comma) && !isEndCondition(end) &&
            !isOperator(Operator::bracket_begin)) {
            return giveUpDeclaration();
        }
        astExpression* value = nullptr;
        if (isOperator(Operator::assign)) {
            if (!next()) {
                return false;
            }
            value = parseExpression(end | kEndComma);
            if (value == nullptr) {
                return false;
            }
        }
        auto* variable = make<astFunctionVariable>();
        variable->isConst = is_const;
        variable->baseType = type;
        variable->name = name->name;
        variable->initialValue = value;
        variables.add(variable);
        enterVariable(*name, variable);
        if (isEndCondition(end)) {
            return true;
        }
        if (isOperator(Operator::comma)) {
            if (!next()) {
                return false;
            }
            continue;
        }
        if (!isOperator(Operator::bracket_begin)) {
            return reportError("syntax error during declaration statement");
        }
        if (!parseLocalArray(*variable)) {
            return false;
        }
        if (is(TokenKind::semicolon)) {
            return true;
        }
    }
}

// { "(" } name { ")" }, as many of the one as of the other. Ends on the token behind it.
bool parser::impl::parseDeclaratorName(symbol*& name) {
    std::size_t parentheses = 0;
    for (; isOperator(Operator::paranthesis_begin); ++parentheses) {
        if (!next()) {
            return false;
        }
    }
    if (!is(TokenKind::identifier)) {
        return giveUpDeclaration();
    }
    name = token_->name;
    if (!next()) {
        return false;
    }
    for (; parentheses != 0; --parentheses) {
        if (!isOperator(Operator::paranthesis_end)) {
            return giveUpDeclaration();
        }
        if (!next()) {
            return false;
        }
    }
    return true;
}

// "[" [ size ] "]" [ "=" values ], as often as it comes. Ends on the token behind it.
bool parser::impl::parseLocalArray(astFunctionVariable& variable) {
    while (isOperator(Operator::bracket_begin)) {
        variable.isArray = true;
        if (!next()) {
            return false;
        }
        astExpression* size = parseExpression(kEndBracket);
        if (size != nullptr) {
            variable.arraySizes.push_back(*home_, size);
        }
        if (!next()) {
            return false;
        }
        if (isOperator(Operator::assign) && !parseArrayInitialiser(variable)) {
            return false;
        }
    }
    return true;
}

// "=" ( "{" values "}" | "{" "{" values "}" ... "}" | type "[" "]" "(" values ")" | expression )
bool parser::impl::parseArrayInitialiser(astFunctionVariable& variable) {
    lexer_->save();
    if (!next()) {
        return false;
    }
    Collector<astExpression> values(*this);
    if (is(TokenKind::scopeBegin)) {
        if (!parseBraces(values)) {
            return false;
        }
        for (std::size_t i = 0; i < values.size(); ++i) {
            variable.initialValues.push_back(*home_, values[i]);
        }
        return true;
    }
    if (!next()) {
        return false;
    }
    if (isOperator(Operator::bracket_begin)) {
        if (!next() || !next()) {
            return false;
        }
        astExpression* value = parseExpression(kEndInitialiser);
        if (value == nullptr) {
            return false;
        }
        variable.initialValues.push_back(*home_, value);
        return true;
    }
    lexer_->restore();
    if (!next()) {
        return false;
    }
    variable.initialValue = parseExpression(kEndInitialiser);
    return variable.initialValue != nullptr;
}

// From the first `{` on, to the token behind the last `}`.
bool parser::impl::parseBraces(Collector<astExpression>& values) {
    if (!next()) {
        return false;
    }
    if (!is(TokenKind::scopeBegin)) {
        astExpression* value = parseExpression(kEndInitialiser);
        if (value == nullptr) {
            return false;
        }
        values.add(value);
        return next();
    }
    do {
        if (!next()) {
            return false;
        }
        if (is(TokenKind::scopeBegin)) {
            continue;
        }
        astExpression* value = parseExpression(kEndInitialiser);
        if (value == nullptr) {
            return false;
        }
        values.add(value);
        while (is(TokenKind::scopeEnd)) {
            if (!next() || (isOperator(Operator::comma) && !next())) {
                return false;
            }
        }
    } while (is(TokenKind::scopeBegin));
    return true;
}

}  // namespace glsl
