#include "glsl/hlsl/printer.h"

namespace glsl {

namespace {

constexpr std::string_view kLoopAttribute = "\n[loop]\n";

bool isKind(const astStatement* statement, StatementKind kind) {
    return statement != nullptr && statement->kind == kind;
}

}  // namespace

// The value tells how the statement ended.
Value Printer::printStatement(astStatement* statement) {
    if (statement == nullptr) {
        return {};
    }
    if (depth_ == kMaxPrintDepth) {
        giveUp("it is nested too deeply");
        return {};
    }
    ++depth_;
    mark(*statement);
    Value value{ValueClass::other};
    switch (statement->kind) {
        case StatementKind::compound:
            value = printCompound(*as<astCompoundStatement>(statement));
            break;
        case StatementKind::empty:
            text_.put(';');
            break;
        case StatementKind::declaration:
            printVariables(*as<astDeclarationStatement>(statement), kSemicolon | kLineEnd);
            break;
        case StatementKind::expression:
            printExpressionStatement(*as<astExpressionStatement>(statement), kSemicolon | kLineEnd);
            break;
        case StatementKind::if_:
            printIf(*as<astIfStatement>(statement));
            break;
        case StatementKind::switch_:
            printSwitch(*as<astSwitchStatement>(statement));
            break;
        case StatementKind::caseLabel:
            printCaseLabel(*as<astCaseLabelStatement>(statement));
            break;
        case StatementKind::while_:
            printWhile(*as<astWhileStatement>(statement));
            break;
        case StatementKind::do_:
            printDo(*as<astDoStatement>(statement));
            break;
        case StatementKind::for_:
            printFor(*as<astForStatement>(statement));
            break;
        case StatementKind::continue_:
            text_.put("continue;\n");
            value = {ValueClass::continueValue};
            break;
        case StatementKind::break_:
            text_.put("break;\n");
            value = {ValueClass::breakValue};
            break;
        case StatementKind::return_:
            value = printReturn(*as<astReturnStatement>(statement));
            break;
        case StatementKind::discard:
            text_.put("discard;\n");
            break;
        default:
            text_.put('\n');
            break;
    }
    --depth_;
    return value;
}

void Printer::printStatements(const list<astStatement>& statements) {
    for (astStatement* const statement : statements) {
        printStatement(statement);
    }
}

Value Printer::printCompound(const astCompoundStatement& node) {
    scopes_.push();
    text_.put(" {\n");
    Value value{ValueClass::other};
    for (astStatement* const statement : node.statements) {
        const Value ended = printStatement(statement);
        if (ended.kind == ValueClass::returnValue) {
            value = ended;
        }
    }
    text_.put("}\n");
    scopes_.popCarrying(matrixSubscript_);
    return value;
}

void Printer::printIf(const astIfStatement& node) {
    text_.put("if(");
    printExpression(node.condition);
    text_.put(')');
    printStatement(node.thenStatement);
    if (node.elseStatement != nullptr) {
        text_.put("else ");
        printStatement(node.elseStatement);
    }
}

void Printer::printSwitch(const astSwitchStatement& node) {
    text_.put("switch(");
    printExpression(node.expression);
    text_.put(") {\n");
    printStatements(node.statements);
    text_.put("}\n");
}

void Printer::printCaseLabel(const astCaseLabelStatement& node) {
    if (node.isDefault) {
        text_.put("default");
    } else {
        text_.put("case ");
        printExpression(node.condition);
    }
    text_.put(":\n");
}

void Printer::printWhile(const astWhileStatement& node) {
    text_.put("while(");
    if (isKind(node.condition, StatementKind::declaration)) {
        printVariables(*as<astDeclarationStatement>(node.condition), 0);
    } else if (isKind(node.condition, StatementKind::expression)) {
        printExpressionStatement(*as<astExpressionStatement>(node.condition), 0);
    }
    text_.put(')');
    printStatement(node.body);
}

void Printer::printDo(const astDoStatement& node) {
    text_.put("do");
    if (!isKind(node.body, StatementKind::compound)) {
        text_.put(' ');
    }
    printStatement(node.body);
    text_.put("while(");
    printExpression(node.condition);
    text_.put(");\n");
}

// A loop asks the compiler not to unroll it, unless a matrix was subscripted in it, or earlier
// within the same outermost loop: the compiler refuses that in a loop which it may not unroll.
void Printer::printFor(const astForStatement& node) {
    const bool isOutermost = !scopes_.has(loopLevel_);
    if (isOutermost) {
        scopes_.set(loopLevel_, {ValueClass::boolean});
    }
    const size_t begin = text_.size();
    const size_t firstMark = markCount();
    text_.put(kLoopAttribute);
    printForHeader(node);
    printStatement(node.body);
    const Value subscript = scopes_.get(matrixSubscript_);
    const bool isFalse = subscript.kind == ValueClass::boolean && !subscript.truth;
    if (subscript.kind != ValueClass::none && !isFalse) {
        dropLoopAttribute(begin, firstMark);
    }
    if (isOutermost) {
        scopes_.remove(matrixSubscript_);
        scopes_.remove(loopLevel_);
    }
}

void Printer::printForHeader(const astForStatement& node) {
    text_.put("for(");
    if (node.init == nullptr) {
        text_.put(';');
    } else if (isKind(node.init, StatementKind::declaration)) {
        printVariables(*as<astDeclarationStatement>(node.init), kSemicolon);
    } else if (isKind(node.init, StatementKind::expression)) {
        printExpressionStatement(*as<astExpressionStatement>(node.init), kSemicolon);
    }
    if (node.condition != nullptr) {
        text_.put(' ');
        printExpression(node.condition);
    }
    text_.put(';');
    if (node.loop != nullptr) {
        text_.put(' ');
        printExpression(node.loop);
    }
    text_.put(')');
}

void Printer::dropLoopAttribute(size_t begin, size_t firstMark) {
    text_.erase(begin, kLoopAttribute.size());
    for (size_t i = firstMark; i < markCount(); ++i) {
        (*lineMarks_)[i].offset -= kLoopAttribute.size();
    }
}

void Printer::printVariables(const astDeclarationStatement& node, uint32_t flags) {
    for (astFunctionVariable* const variable : node.variables) {
        if (variable != nullptr) {
            printFunctionVariable(*variable, flags);
        }
    }
}

void Printer::printExpressionStatement(const astExpressionStatement& node, uint32_t flags) {
    printExpression(node.expression);
    if ((flags & kSemicolon) != 0) {
        text_.put(';');
    }
    if ((flags & kLineEnd) != 0) {
        text_.put('\n');
    }
}

Value Printer::printReturn(const astReturnStatement& node) {
    text_.put("return");
    if (node.expression != nullptr) {
        text_.put(' ');
        printExpression(node.expression);
    }
    text_.put(";\n");
    return {ValueClass::returnValue};
}

}  // namespace glsl
