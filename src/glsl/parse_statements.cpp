#include <algorithm>
#include <charconv>

#include "glsl/parser_impl.h"

// Statements. On entry the current token is the statement's first, on success its last: the caller
// goes on with next().

namespace glsl {

astStatement* parser::impl::parseStatement() {
    const Level level(*this);
    height_ = 0;
    if (tooDeep()) {
        return nullptr;
    }
    if (is(TokenKind::keyword)) {
        bool known = true;
        astStatement* statement = parseKeywordStatement(known);
        if (known) {
            return statement;
        }
    } else if (is(TokenKind::scopeBegin)) {
        return parseCompound();
    } else if (is(TokenKind::semicolon)) {
        return make<astEmptyStatement>();
    }
    return parseDeclarationOrExpression(kEndSemicolon);
}

// Statements that a keyword begins; `known` becomes false for any other keyword.
astStatement* parser::impl::parseKeywordStatement(bool& known) {
    switch (static_cast<Keyword>(token_->value)) {
        case Keyword::if_:
            return parseIf();
        case Keyword::switch_:
            return parseSwitch();
        case Keyword::case_:
        case Keyword::default_:
            return parseCaseLabel();
        case Keyword::for_:
            return parseFor();
        case Keyword::do_:
            return parseDo();
        case Keyword::while_:
            return parseWhile();
        case Keyword::continue_:
            return parseContinue();
        case Keyword::break_:
            return parseJump<astBreakStatement>("expected semicolon after break statement");
        case Keyword::discard:
            return parseJump<astDiscardStatement>("expected semicolon after discard statement");
        case Keyword::return_:
            return parseReturn();
        default:
            known = false;
            return nullptr;
    }
}

// compound: "{" { statement } "}"
astStatement* parser::impl::parseCompound() {
    auto* compound = make<astCompoundStatement>();
    if (!next()) {
        return nullptr;
    }
    Collector<astStatement> statements(*this);
    while (!is(TokenKind::scopeEnd)) {
        astStatement* statement = parseStatement();
        if (statement == nullptr) {
            return nullptr;
        }
        statements.add(statement);
        if (!next()) {
            return nullptr;
        }
    }
    compound->statements = statements.take();
    return compound;
}

// if: "if" "(" expression ")" statement [ "else" statement ]
astStatement* parser::impl::parseIf() {
    auto* made = make<astIfStatement>();
    if (!openParenthesis("expected `(' after `if'")) {
        return nullptr;
    }
    made->condition = parseExpression(kEndParenthesis);
    if (made->condition == nullptr || !next()) {
        return nullptr;
    }
    // On purpose: a branch that fails is kept as null and the parse runs on, so that a source can
    // show further messages behind the first.
    made->thenStatement = parseStatement();
    const token& ahead = lexer_->peek();
    if (ahead.type == TokenKind::keyword && ahead.value == id(Keyword::else_)) {
        if (!next() || !next()) {
            return nullptr;
        }
        made->elseStatement = parseStatement();
        if (made->elseStatement == nullptr) {
            return nullptr;
        }
    }
    return made;
}

// Labels that a switch has had, signed and unsigned values apart.
struct parser::impl::SwitchLabels {
    std::vector<std::uint32_t> signedValues;
    std::vector<std::uint32_t> unsignedValues;
    bool hasDefault = false;
};

// switch: "switch" "(" expression ")" "{" { statement } "}"
astStatement* parser::impl::parseSwitch() {
    auto* made = make<astSwitchStatement>();
    if (!openParenthesis("expected `(' after `switch'")) {
        return nullptr;
    }
    made->expression = parseExpression(kEndParenthesis);
    if (made->expression == nullptr || !next()) {
        return nullptr;
    }
    if (!is(TokenKind::scopeBegin)) {
        return reportError("expected `{' after `)'");
    }
    if (!next()) {
        return nullptr;
    }
    SwitchLabels seen;
    Collector<astStatement> statements(*this);
    while (!is(TokenKind::scopeEnd)) {
        astStatement* statement = parseStatement();
        if (statement == nullptr) {
            return nullptr;
        }
        if (statement->kind == StatementKind::caseLabel &&
            !checkLabel(*as<astCaseLabelStatement>(statement), seen)) {
            return nullptr;
        }
        statements.add(statement);
        if (!next()) {
            return nullptr;
        }
    }
    made->statements = statements.take();
    return made;
}

bool parser::impl::checkLabel(const astCaseLabelStatement& label, SwitchLabels& seen) {
    if (label.isDefault) {
        if (seen.hasDefault) {
            return reportError("duplicate `default' case label");
        }
        seen.hasDefault = true;
        return true;
    }
    if (!isConstant(label.condition)) {
        return reportError("case label is not a valid constant expression");
    }
    const astExpression* folded = evaluate(label.condition);
    if (folded == nullptr) {
        return false;
    }
    const bool is_signed = folded->kind == ExpressionKind::intConstant;
    if (!is_signed && folded->kind != ExpressionKind::uintConstant) {
        return reportError("case label must be scalar `int' or `uint'");
    }
    const std::uint32_t value = is_signed
                                    ? static_cast<std::uint32_t>(as<astIntConstant>(folded)->value)
                                    : as<astUIntConstant>(folded)->value;
    std::vector<std::uint32_t>& values = is_signed ? seen.signedValues : seen.unsignedValues;
    const auto place = std::lower_bound(values.begin(), values.end(), value);
    if (place == values.end() || *place != value) {
        values.insert(place, value);
        return true;
    }
    char digits[16];
    const std::int64_t shown =
        is_signed ? std::int64_t{static_cast<std::int32_t>(value)} : std::int64_t{value};
    const auto end = std::to_chars(digits, digits + sizeof(digits), shown).ptr;
    return reportError("duplicate case label `%s'",
                       std::string_view(digits, static_cast<std::size_t>(end - digits)));
}

// label: "case" expression ":" | "default" ":"
astStatement* parser::impl::parseCaseLabel() {
    auto* label = make<astCaseLabelStatement>();
    label->isDefault = isKeyword(Keyword::default_);
    if (!next()) {
        return nullptr;
    }
    if (!label->isDefault) {
        label->condition = parseExpression(kEndColon);  // null is kept; the switch refuses it
    } else if (!isOperator(Operator::colon)) {
        return reportError("expected `:' after `default' in case label");
    }
    return label;
}

// for: "for" "(" [ init ] ";" [ condition ] ";" [ loop ] ")" statement
astStatement* parser::impl::parseFor() {
    auto* made = make<astForStatement>();
    if (!openParenthesis("expected `(' after `for'")) {
        return nullptr;
    }
    if (!is(TokenKind::semicolon)) {
        made->init = parseDeclarationOrExpression(kEndSemicolon);
        if (made->init == nullptr) {
            return nullptr;
        }
    }
    if (!next()) {
        return nullptr;
    }
    if (!is(TokenKind::semicolon)) {
        made->condition = parseExpression(kEndSemicolon);
        if (made->condition == nullptr) {
            return nullptr;
        }
    }
    if (!next()) {
        return nullptr;
    }
    if (!isOperator(Operator::paranthesis_end)) {
        made->loop = parseExpression(kEndParenthesis);
        if (made->loop == nullptr) {
            return nullptr;
        }
    }
    if (!next()) {
        return nullptr;
    }
    made->body = parseStatement();  // On purpose: null is kept, as in an if.
    return made;
}

// while: "while" "(" ( declaration | expression ) ")" statement
astStatement* parser::impl::parseWhile() {
    auto* made = make<astWhileStatement>();
    if (!openParenthesis("expected `(' after `while'")) {
        return nullptr;
    }
    made->condition = parseDeclarationOrExpression(kEndParenthesis);
    if (made->condition == nullptr || !next()) {
        return nullptr;
    }
    made->body = parseStatement();
    return made->body == nullptr ? nullptr : made;
}

// do: "do" statement "while" "(" expression ")" ";". On purpose: the `;` is not looked at.
astStatement* parser::impl::parseDo() {
    auto* made = make<astDoStatement>();
    if (!next()) {
        return nullptr;
    }
    made->body = parseStatement();
    if (made->body == nullptr || !next()) {
        return nullptr;
    }
    if (!isKeyword(Keyword::while_)) {
        return reportError("expected `while' after `do'");
    }
    if (!openParenthesis("expected `(' after `while'")) {
        return nullptr;
    }
    made->condition = parseExpression(kEndParenthesis);
    if (made->condition == nullptr || !next()) {
        return nullptr;
    }
    return made;
}

// return: "return" [ expression ] ";"
astStatement* parser::impl::parseReturn() {
    auto* made = make<astReturnStatement>();
    if (!next()) {
        return nullptr;
    }
    if (is(TokenKind::semicolon)) {
        return made;
    }
    made->expression = parseExpression(kEndSemicolon);
    if (made->expression == nullptr) {
        return nullptr;
    }
    if (!is(TokenKind::semicolon)) {
        return reportError("expected semicolon after return statement");
    }
    return made;
}

// "break" ";" and "discard" ";"
template <class T>
astStatement* parser::impl::parseJump(const char* message) {
    auto* made = make<T>();
    if (!next()) {
        return nullptr;
    }
    if (!is(TokenKind::semicolon)) {
        return reportError(message);
    }
    return made;
}

// "continue" and whatever stands behind it. On purpose: no `;` is looked for; sources without one
// are in use.
astStatement* parser::impl::parseContinue() {
    auto* made = make<astContinueStatement>();
    return next() ? made : nullptr;
}

}  // namespace glsl
