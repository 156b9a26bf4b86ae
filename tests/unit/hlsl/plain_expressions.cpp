#include "plain_walker.h"

namespace glsl::plain {

Obj PlainPrinter::constant(astExpression& e, std::string& out) {
    LiteralBuffer buffer;
    switch (e.kind) {
        case ExpressionKind::intConstant:
            out += intLiteral(as<astIntConstant>(&e)->value, buffer);
            return makeInteger(1);
        case ExpressionKind::uintConstant:
            out += uintLiteral(as<astUIntConstant>(&e)->value, buffer);
            return makeInteger(1);
        case ExpressionKind::floatConstant:
            out += floatLiteral(as<astFloatConstant>(&e)->value, buffer);
            return makeFloat(1);
        case ExpressionKind::doubleConstant:
            out += doubleLiteral(as<astDoubleConstant>(&e)->value, buffer);
            return makeDouble(1);
        case ExpressionKind::boolConstant:
            out += as<astBoolConstant>(&e)->value ? "true" : "false";
            return makeBoolean(false);
        default:
            return nullptr;
    }
}

Obj PlainPrinter::unary(astUnaryExpression& e, const char* before, const char* after,
                        std::string& out, const Scope& scope) {
    out += before;
    Obj o = expression(e.operand, out, scope);
    out += after;
    return o;
}

Obj PlainPrinter::expression(astExpression* e, std::string& out, const Scope& scope) {
    if (e == nullptr) {
        return nullptr;
    }
    const auto one = [&](const char* before, const char* after) {
        return unary(*as<astUnaryExpression>(e), before, after, out, scope);
    };
    switch (e->kind) {
        case ExpressionKind::variableIdentifier:
            return use(*as<astVariableIdentifier>(e)->variable, out, scope);
        case ExpressionKind::fieldOrSwizzle:
            return field(*as<astFieldOrSwizzle>(e), out, scope);
        case ExpressionKind::arraySubscript:
            return subscript(*as<astArraySubscript>(e), out, scope);
        case ExpressionKind::functionCall:
            return call(*as<astFunctionCall>(e), out, scope);
        case ExpressionKind::constructorCall:
            return constructor(as<astConstructorCall>(e)->type,
                               as<astConstructorCall>(e)->parameters, *e, out, scope);
        case ExpressionKind::postIncrement:
            return one("", "++");
        case ExpressionKind::postDecrement:
            return one("", "--");
        case ExpressionKind::unaryMinus:
            return one("-", "");
        case ExpressionKind::unaryPlus:
            return one("+", "");
        case ExpressionKind::unaryBitNot:
            return one("~", "");
        case ExpressionKind::unaryLogicalNot:
            return one("!", "");
        case ExpressionKind::prefixIncrement:
            return one("++", "");
        case ExpressionKind::prefixDecrement:
            return one("--", "");
        case ExpressionKind::sequence: {
            out += "(";
            expression(as<astBinaryExpression>(e)->operand1, out, scope);
            out += ", ";
            expression(as<astBinaryExpression>(e)->operand2, out, scope);
            out += ")";
            return makeObject(0);
        }
        case ExpressionKind::assignment:
            return assignment(*as<astAssignmentExpression>(e), out, scope);
        case ExpressionKind::operation:
            return operation(*as<astOperationExpression>(e), out, scope);
        case ExpressionKind::ternary: {
            auto& t = *as<astTernaryExpression>(e);
            out += "(";
            expression(t.condition, out, scope);
            out += " ? ";
            expression(t.onTrue, out, scope);
            out += " : ";
            Obj o = expression(t.onFalse, out, scope);
            out += ")";
            return o;
        }
        default:
            return constant(*e, out);
    }
}

Obj PlainPrinter::assignment(astAssignmentExpression& e, std::string& out, const Scope& scope) {
    std::string l;
    std::string r;
    Obj lo = expression(e.operand1, l, scope);
    const Obj ro = expression(e.operand2, r, scope);
    const std::string op(operatorText(e.assignment));
    if (op == "*=" && isAnyMat(ro) && isAnyVec(lo) && sideOf(lo) == sideOf(ro)) {
        out += l + " = mul(" + l + ", " + r + ")";
    } else if (op == "*=" && isAnyMat(ro) && isAnyMat(lo) && sideOf(lo) == sideOf(ro)) {
        out += l + " = mul(" + r + ", " + l + ")";
    } else {
        out += l + " " + op + " " + r;
    }
    return lo;
}

Obj PlainPrinter::operation(astOperationExpression& e, std::string& out, const Scope& scope) {
    std::string l;
    std::string r;
    const Obj lo = expression(e.operand1, l, scope);
    const Obj ro = expression(e.operand2, r, scope);
    const auto isAssignment = [](astExpression* x) {
        return x != nullptr && x->kind == ExpressionKind::assignment;
    };
    l = isAssignment(e.operand1) ? "(" + l + ")" : l;
    r = isAssignment(e.operand2) ? "(" + r + ")" : r;
    const std::string op(operatorText(e.operation));
    const std::string side = std::to_string(sideOf(lo));
    const bool sameSide = sideOf(lo) != 0 && sideOf(lo) == sideOf(ro);
    out += "(";
    if (op == "==" && isAnyVec(lo)) {
        out += "global_is_equal_vec" + side + "(" + l + ", " + r + ")";
    } else if (op == "!=" && isAnyVec(lo)) {
        out += "global_is_not_equal_vec" + side + "(" + l + ", " + r + ")";
    } else if (sameSide && isAnyMat(lo) && isAnyVec(ro)) {
        out += "mul(" + r + ", " + l + ")";
    } else if (sameSide && isAnyVec(lo) && isAnyMat(ro)) {
        out += "mul(" + l + ", " + r + ")";
    } else if (sameSide && isAnyMat(lo) && isAnyMat(ro)) {
        out += "mul(" + r + ", " + l + ")";
    } else {
        out += l + " " + op + " " + r;
    }
    out += ")";
    return result(op, lo, ro);
}

Obj PlainPrinter::result(const std::string& op, const Obj& l, const Obj& r) {
    const bool li = isInteger(l);
    const bool ri = isInteger(r);
    const bool lf = isFloat(l);
    const bool rf = isFloat(r);
    const bool ld = isDouble(l);
    const bool rd = isDouble(r);
    const bool lb = isBoolean(l);
    const bool rb = isBoolean(r);
    const bool sameSide = sideOf(l) != 0 && sideOf(l) == sideOf(r);
    if (op == "*" || op == "+" || op == "-" || op == "/") {
        if (op == "*" && sameSide && (isAnyMat(l) || isAnyMat(r)) && !isAnyIntVec(l) &&
            !isAnyIntVec(r)) {
            return isAnyMat(l) && isAnyMat(r) ? matOf(sideOf(l))
                                              : vecOf(static_cast<size_t>(sideOf(l)));
        }
        if ((lf && (rf || ri || rb)) || (rf && (li || lb))) {
            return makeFloat(1);
        }
        if ((li || lb) && (ri || rb)) {
            return makeInteger(1);
        }
        if ((ld && (rd || rf || ri || rb)) || (rd && (lf || li || lb))) {
            return makeDouble(1);
        }
        if (isAnyVec(l) && ((isAnyVec(r) && sameSide) || rf)) {
            return vecOf(static_cast<size_t>(sideOf(l)));
        }
        if (isAnyVec(r) && lf) {
            return vecOf(static_cast<size_t>(sideOf(r)));
        }
        if (isAnyIntVec(l) && ri) {
            return intVecOf(static_cast<size_t>(sideOf(l)));
        }
        return isAnyIntVec(r) && li ? intVecOf(static_cast<size_t>(sideOf(r))) : nullptr;
    }
    if (op == "<" || op == "<=" || op == ">" || op == ">=" || op == "==" || op == "!=") {
        const bool numbers = (lf || li || ld) && (rf || ri || rd);
        const bool vectors = op == "==" && sameSide &&
                             ((isAnyVec(l) && isAnyVec(r)) || (isAnyIntVec(l) && isAnyIntVec(r)));
        return numbers || (lb && rb) || vectors ? makeBoolean(true) : nullptr;
    }
    if (op == "||" || op == "&&") {
        return lb && rb ? makeBoolean(true) : nullptr;
    }
    if (op == "%" || op == "<<" || op == ">>" || op == "&" || op == "|" || op == "^") {
        return li && ri ? makeInteger(1) : nullptr;
    }
    return nullptr;
}

Obj PlainPrinter::field(astFieldOrSwizzle& e, std::string& out, const Scope& scope) {
    std::string operand;
    const Obj o = expression(e.operand, operand, scope);
    out += operand;
    std::string name(e.field);
    if (isAnyVec(o) || isAnyIntVec(o)) {
        const std::string pairs = "rxgybzawsxtypzqw";
        for (size_t i = 0; i < pairs.size(); i += 2) {
            std::replace(name.begin(), name.end(), pairs[i], pairs[i + 1]);
        }
        formatted(out, "." + name);
        if (name.size() <= 4) {
            return isAnyVec(o) ? vecOf(name.size()) : intVecOf(name.size());
        }
        return makeObject(0);
    }
    formatted(out, "." + name);
    if (isStructObject(o)) {
        astType* const t = static_cast<const StructObject&>(*o).type.get();
        const auto* s = dynamic_cast<astStruct*>(t);
        const auto* b = dynamic_cast<astInterfaceBlock*>(t);
        const list<astVariable> all = s != nullptr   ? s->fields
                                      : b != nullptr ? b->fields
                                                     : list<astVariable>{};
        for (astVariable* f : all) {
            if (f->name == e.field) {
                std::string dropped;
                return type(f->baseType, dropped);
            }
        }
    }
    return makeObject(0);
}

Obj PlainPrinter::subscript(astArraySubscript& e, std::string& out, const Scope& scope) {
    Obj o = expression(e.operand, out, scope);
    if (isAnyMat(o)) {
        scope->set(kSubscript, makeBoolean(true));
    }
    out += "[";
    expression(e.index, out, scope);
    out += "]";
    return o;
}

void PlainPrinter::arguments(const list<astExpression>& argumentList, std::string& out,
                             const Scope& scope) {
    bool any = false;
    for (astExpression* e : argumentList) {
        out += any ? ", " : "";
        any = true;
        expression(e, out, scope);
    }
}

Obj PlainPrinter::call(astFunctionCall& e, std::string& out, const Scope& scope) {
    const auto& p = e.parameters;
    if (e.name == "mix") {
        if (p.size() != 3) {
            return makeFloat(1);
        }
        std::string t[3];
        Obj first = expression(p[0], t[0], scope);
        expression(p[1], t[1], scope);
        expression(p[2], t[2], scope);
        formatted(out, "(lerp(" + t[0] + ", " + t[1] + ", " + t[2] + "))");
        return first;
    }
    if (e.name == "atan") {
        out += p.size() == 1 ? "atan(" : p.size() == 2 ? "atan2(" : "";
        Obj remembered = makeFloat(1);
        bool any = false;
        for (astExpression* a : p) {
            out += any ? ", " : "";
            any = true;
            Obj o = expression(a, out, scope);
            if (!isFloat(o)) {
                remembered = o;
            }
        }
        out += ")";
        return remembered != nullptr ? remembered : makeFloat(1);
    }
    if (e.name == "fract") {
        std::string x;
        Obj o = expression(p.empty() ? nullptr : p[0].get(), x, scope);
        out += "((" + x + ") - floor(" + x + "))";
        return o;
    }
    if (e.name == "lessThan" || e.name == "greaterThan") {
        return comparison(e, std::string(e.name), out, scope);
    }
    for (const char* prefix : {"AUDIO_INPUT", "DEPTH_INPUT", "INPUT"}) {
        if (isNumberedName(e.name, prefix)) {
            return input(e, out, scope);
        }
    }
    return generalCall(e, out, scope);
}

Obj PlainPrinter::comparison(astFunctionCall& e, const std::string& name, std::string& out,
                             const Scope& scope) {
    const bool less = name == "lessThan";
    if (e.parameters.size() != 2) {
        error(less ? "error line :%d,%d  lessThan parameters size is wrong"
                   : "error line :%d,%d  greaterThan parameters size is wrong",
              e);
        return makeFloat(1);
    }
    std::string a;
    expression(e.parameters[0], a, scope);
    a += ", ";
    Obj o = expression(e.parameters[1], a, scope);
    if (isFloat(o)) {
        formatted(out, "gloabal_" + name + "(" + a + ")");
    } else if (isAnyVec(o)) {
        formatted(out, "gloabal_" + name + std::to_string(sideOf(o)) + "(" + a + ")");
    } else {
        error(less ? "error line :%d,%d  lessThan is wrong"
                   : "error line :%d,%d  greaterThan is wrong",
              e);
    }
    return o;
}

Obj PlainPrinter::input(astFunctionCall& e, std::string& out, const Scope& scope) {
    const bool vertex = isVertex(scope);
    std::string n(e.name);
    std::string tail = vertex ? "), 0.0f).zyxw" : ")).zyxw";
    std::string head;
    if (n[0] == 'D') {
        if (n == "DEPTH_INPUT") {
            n = "INPUT1";
        } else {
            e.name.remove_prefix(6);
            n = std::string(e.name);
        }
        head = vertex ? "global_depth_input_level(" : "global_depth_input(";
        head += n + ", " + n + "_SAMPLER, GLOBAL_TRANS_TC(";
        tail = "))";
    } else {
        n = n == "INPUT" ? "INPUT1" : n;
        head = n + (vertex ? ".SampleLevel(" : ".Sample(") + n + "_SAMPLER, GLOBAL_TRANS_TC(";
        if (n[0] == 'A') {
            tail = vertex ? "), 0.0f).zzzz" : ")).zzzz";
        }
    }
    formatted(out, head);
    expression(e.parameters.empty() ? nullptr : e.parameters[0].get(), out, scope);
    out += tail;
    return vecOf(4);
}

Obj PlainPrinter::generalCall(astFunctionCall& e, std::string& out, const Scope& scope) {
    static const std::map<std::string, std::string> kRenamed = {
        {"inversesqrt", "rsqrt"}, {"dFdx", "ddx"}, {"dFdy", "ddy"}, {"mod", "fmod"}};
    std::string callee(avoidKeyword(e.name, true));
    callee = kRenamed.count(callee) != 0 ? kRenamed.at(callee) : callee;
    std::vector<Obj> objects;
    for (astExpression* a : e.parameters) {
        std::string dropped;
        objects.push_back(expression(a, dropped, scope));
        if (objects.back() == nullptr) {
            error("error line :%d,%d  function call param is empty", e);
        }
    }
    formatted(out, callee + "(");
    arguments(e.parameters, out, scope);
    if (scope->has("HAVE_FUNC_" + callee)) {
        out += e.parameters.empty() ? "input" : ", input";
        out += isVertex(scope) ? "" : ", gl_FragCoord";
    }
    out += ")";
    if (scope->has(callee + "_RETURN_TYPE")) {
        return scope->get(callee + "_RETURN_TYPE");
    }
    Obj widest = makeFloat(1);
    if (callee == "distance" || callee == "length" || callee == "dot") {
        return widest;
    }
    const auto rank = [](const Obj& o) {
        if (isFloat(o) || isInteger(o) || isDouble(o)) {
            return isFloat(o) ? 1 : isInteger(o) ? 2 : 3;
        }
        const int base = isAnyVec(o) ? 2 : isAnyIntVec(o) ? 5 : 8;
        return sideOf(o) != 0 ? base + sideOf(o) : 0;
    };
    for (const Obj& o : objects) {
        if (rank(o) > rank(widest)) {
            widest = o;
        }
    }
    return widest;
}

Obj PlainPrinter::constructor(astType* t, const list<astExpression>& p, const astNode& at,
                              std::string& out, const Scope& scope) {
    std::string text;
    Obj c = type(t, text);
    Obj a;
    if (p.size() == 1) {
        std::string dropped;
        a = expression(p[0], dropped, scope);
    }
    if (isBoolean(c)) {
        out += "true";
        return c;
    }
    const std::string side = std::to_string(sideOf(c));
    const auto n = static_cast<size_t>(sideOf(c));
    out += text + "(";
    if (isAnyMat(c)) {
        if (p.size() <= 1) {
            out += "gloabal_float" + side + "x" + side + "_Constructor(";
            if (p.empty()) {
                out += "1.0f";
            }
            arguments(p, out, scope);
            out += ")";
        } else if (p.size() == n || p.size() == n * n) {
            arguments(p, out, scope);
        } else {
            error("error line :%d,%d  mat parameters's size is wrong", at);
        }
    } else if ((isAnyVec(c) || isAnyIntVec(c)) && p.size() <= 1 &&
               !((isAnyVec(a) || isAnyIntVec(a)) && sideOf(a) == sideOf(c))) {
        out += isAnyVec(c) ? "gloabal_float" : "gloabal_int";
        out += side + "_Constructor(";
        if (p.empty()) {
            out += isAnyVec(c) ? "0.0f" : "0";
        }
        arguments(p, out, scope);
        out += ")";
    } else {
        arguments(p, out, scope);
        if (p.empty()) {
            out += isFloat(c) ? "0.0f" : isInteger(c) ? "0" : "";
        }
    }
    out += ")";
    return c;
}

void PlainPrinter::statements(const list<astStatement>& statementList, std::string& out,
                              const Scope& scope) {
    for (astStatement* s : statementList) {
        statement(s, out, scope);
    }
}

}  // namespace glsl::plain
