#include "plain_printer.h"

#include <algorithm>
#include <map>
#include <vector>

#include "DirectXEffectMgr/Source/logging/logging.h"
#include "glsl/hlsl/literals.h"
#include "glsl/hlsl/naming.h"
#include "glsl/hlsl/prelude.h"
#include "glsl/keywords.h"

namespace glsl {

namespace {

using Obj = std::shared_ptr<Object>;
using Scope = std::shared_ptr<Environment>;

constexpr const char* kLevel = "env__________isTopForLevel";
constexpr const char* kSubscript = "env__________isDidMatArraySubScriptObject";

std::string avoided(std::string_view name) {
    return std::string(avoidKeyword(name, false));
}

bool isAnyVec(const Obj& o) {
    return isVec2(o) || isVec3(o) || isVec4(o);
}
bool isAnyIntVec(const Obj& o) {
    return isiVec2(o) || isiVec3(o) || isiVec4(o);
}
bool isAnyMat(const Obj& o) {
    return isMat2(o) || isMat3(o) || isMat4(o);
}
int sideOf(const Obj& o) {
    if (isVec2(o) || isiVec2(o) || isMat2(o)) {
        return 2;
    }
    if (isVec3(o) || isiVec3(o) || isMat3(o)) {
        return 3;
    }
    return isVec4(o) || isiVec4(o) || isMat4(o) ? 4 : 0;
}
Obj vecOf(size_t n) {
    return n == 1   ? makeFloat(1)
           : n == 2 ? makeVec2({1, 1})
           : n == 3 ? makeVec3({1, 1, 1})
                    : makeVec4({1, 1, 1, 1});
}
Obj intVecOf(size_t n) {
    return n == 1   ? makeInteger(1)
           : n == 2 ? makeiVec2({1, 1})
           : n == 3 ? makeiVec3({1, 1, 1})
                    : makeiVec4({1, 1, 1, 1});
}
Obj matOf(int n) {
    return n == 2   ? makeMat2({1, 0, 0, 1})
           : n == 3 ? makeMat3({1, 0, 0, 0, 1, 0, 0, 0, 1})
                    : makeMat4({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
}

void memoryWords(uint32_t memory, std::string& out) {
    static const char* const kWords[] = {"coherent ", "volatile ", "restrict ", "readonly ",
                                         "writeonly "};
    for (unsigned i = 0; i < 5; ++i) {
        out += (memory >> i & 1) != 0 ? kWords[i] : "";
    }
}

class PlainPrinter {
public:
    explicit PlainPrinter(astTU& unit) : unit_(unit) {}
    void printUnit(uint32_t inputs, uint32_t audio, bool custom, std::string& out,
                   std::string& varyings, const Scope& parent, bool vertex);

private:
    static void formatted(std::string& out, const std::string& piece) {
        if (piece.size() >= 4096) {
            log_error("printDX print size is larger than %d", 4096);
        }
        out += piece.substr(0, 4095);
    }
    static void error(const char* format, const astNode& at) {
        log_error(format, static_cast<int>(at.line), static_cast<int>(at.column));
    }
    static bool isVertex(const Scope& scope) { return scope->has("isVertexShader"); }

    Obj type(astType* t, std::string& out);
    Obj declaration(astVariable& v, std::string& out, const Scope& scope);
    Obj use(astVariable& v, std::string& out, const Scope& scope);
    void sizes(const list<astExpression>& list, std::string& out, const Scope& scope);
    void defaultValue(const astVariable& v, std::string& out);
    void function(astFunction& f, std::string& out, const Scope& scope);
    void parameter(astFunctionParameter& p, std::string& out, const Scope& scope);
    void localVariable(astFunctionVariable& v, std::string& out, const Scope& scope, int flags);
    void initialValues(std::vector<int> dims, const list<astExpression>& values, size_t& next,
                       std::string& out, const Scope& scope);
    void flattened(astExpression* e, std::string& out, const Scope& scope);
    Obj global(astGlobalVariable& g, std::string& out, const Scope& scope);
    void fields(const list<astVariable>& list, std::string& out, const Scope& scope);

    Obj expression(astExpression* e, std::string& out, const Scope& scope);
    Obj constant(astExpression& e, std::string& out);
    Obj unary(astUnaryExpression& e, const char* before, const char* after, std::string& out,
              const Scope& scope);
    Obj assignment(astAssignmentExpression& e, std::string& out, const Scope& scope);
    Obj operation(astOperationExpression& e, std::string& out, const Scope& scope);
    static Obj result(const std::string& op, const Obj& l, const Obj& r);
    Obj field(astFieldOrSwizzle& e, std::string& out, const Scope& scope);
    Obj subscript(astArraySubscript& e, std::string& out, const Scope& scope);
    Obj call(astFunctionCall& e, std::string& out, const Scope& scope);
    Obj comparison(astFunctionCall& e, const std::string& name, std::string& out,
                   const Scope& scope);
    Obj input(astFunctionCall& e, std::string& out, const Scope& scope);
    Obj generalCall(astFunctionCall& e, std::string& out, const Scope& scope);
    Obj constructor(astType* t, const list<astExpression>& parameters, const astNode& at,
                    std::string& out, const Scope& scope);
    void arguments(const list<astExpression>& list, std::string& out, const Scope& scope);

    Obj statement(astStatement* s, std::string& out, const Scope& scope);
    void statements(const list<astStatement>& list, std::string& out, const Scope& scope);
    void forLoop(astForStatement& s, std::string& out, const Scope& scope);
    void simple(astStatement* s, int flags, std::string& out, const Scope& scope);

    astTU& unit_;
};

Obj PlainPrinter::type(astType* t, std::string& out) {
    if (t == nullptr) {
        return nullptr;
    }
    if (!t->builtin) {
        const auto* s = dynamic_cast<astStruct*>(t);
        const auto* b = dynamic_cast<astInterfaceBlock*>(t);
        const std::string_view name = s != nullptr ? s->name : b != nullptr ? b->name : "";
        formatted(out, "struct " + std::string(name));
        return makeStructObject(ptr<astType>(t, &unit_.home));
    }
    const std::string word(keywordText(as<astBuiltin>(t)->typeKeyword));
    static const std::map<std::string, std::pair<std::string, Obj>> kWords = {
        {"mat2", {"float2x2", matOf(2)}},      {"mat3", {"float3x3", matOf(3)}},
        {"mat4", {"float4x4", matOf(4)}},      {"vec2", {"float2", vecOf(2)}},
        {"vec3", {"float3", vecOf(3)}},        {"vec4", {"float4", vecOf(4)}},
        {"ivec2", {"int2", intVecOf(2)}},      {"ivec3", {"int3", intVecOf(3)}},
        {"ivec4", {"int4", intVecOf(4)}},      {"int", {"int", makeInteger(1)}},
        {"uint", {"uint", makeInteger(1)}},    {"float", {"float", makeFloat(1)}},
        {"double", {"double", makeDouble(1)}}, {"bool", {"bool", makeBoolean(true)}}};
    const auto row = kWords.find(word);
    formatted(out, row != kWords.end() ? row->second.first : word);
    return row != kWords.end() ? row->second.second : makeObject(0);
}

void PlainPrinter::sizes(const list<astExpression>& sizeList, std::string& out,
                         const Scope& scope) {
    for (astExpression* size : sizeList) {
        out += "[";
        expression(size, out, scope);
        out += "]";
    }
}

Obj PlainPrinter::declaration(astVariable& v, std::string& out, const Scope& scope) {
    if (v.isPrecise) {
        out += "precise ";
    }
    Obj o = type(v.baseType, out);
    formatted(out, " " + avoided(v.name));
    if (v.isArray) {
        if (v.arraySizes.empty()) {
            out += "[]";
        } else {
            sizes(v.arraySizes, out, scope);
        }
    }
    return o;
}

Obj PlainPrinter::use(astVariable& v, std::string& out, const Scope& scope) {
    if (v.isPrecise) {
        out += "precise ";
    }
    const std::string name = avoided(v.name);
    if (!scope->has(name) && (name == "gl_Position" || (name == "tc" && isVertex(scope)))) {
        formatted(out, name);
        return scope->get(name);
    }
    if (scope->has(name) || scope->has("MyConstantBuffer_" + name)) {
        formatted(out, " " + name);
        return scope->has("MyConstantBuffer_" + name) ? scope->get("MyConstantBuffer_" + name)
                                                      : scope->get(name);
    }
    if (!isVertex(scope)) {
        formatted(out, "input." + name);
        return scope->get("VertexOutput_" + name);
    }
    const std::string sem = semanticName(name);
    if (scope->has("VertexInput_" + sem)) {
        formatted(out, "input." + sem);
        return scope->get("VertexInput_" + sem);
    }
    formatted(out, name);
    return scope->get("VertexOutput_" + name);
}

void PlainPrinter::parameter(astFunctionParameter& p, std::string& out, const Scope& scope) {
    std::string t;
    memoryWords(p.memory, out);
    const Obj o = type(p.baseType, t);
    out += (p.storage == 2 ? "inout " : "") + t;
    if (!p.name.empty()) {
        formatted(out, " " + avoided(p.name));
        scope->set(avoided(p.name), o);
    }
    if (p.isArray && !p.arraySizes.empty() && p.storage != 2) {
        sizes(p.arraySizes, out, scope);
    }
}

void PlainPrinter::function(astFunction& f, std::string& out, const Scope& scope) {
    const Obj o = type(f.returnType, out);
    formatted(out, " " + avoided(f.name) + "(");
    bool any = false;
    for (astFunctionParameter* p : f.parameters) {
        out += any ? ", " : "";
        any = true;
        parameter(*p, out, scope);
    }
    out += any ? ", " : "";
    out += isVertex(scope) ? "VertexInput input" : "VertexOutput input, float4 gl_FragCoord";
    out += ")";
    if (f.isPrototype) {
        out += ";\n";
        return;
    }
    out += " {\n";
    statements(f.statements, out, scope);
    out += "return ";
    if (!(o != nullptr && typeid(*o) == typeid(Object))) {
        constructor(f.returnType, {}, f, out, scope);
    }
    out += ";\n}\n";
    scope->set(avoided(f.name) + "_RETURN_TYPE", o);
}

void PlainPrinter::defaultValue(const astVariable& v, std::string& out) {
    const Obj o = type(v.baseType, out);
    const bool ints = isAnyIntVec(o) || isInteger(o);
    int count = isAnyMat(o) ? sideOf(o) * sideOf(o) : sideOf(o);
    if (isFloat(o) || isInteger(o)) {
        count = 1;
    }
    out += "(";
    for (int i = 0; i < count; ++i) {
        out += i > 0 ? ", " : "";
        out += ints ? "0" : "0.0f";
    }
    out += ")";
}

void PlainPrinter::localVariable(astFunctionVariable& v, std::string& out, const Scope& scope,
                                 int flags) {
    out += v.isConst ? "const " : "";
    const Obj o = declaration(v, out, scope);
    scope->define(avoided(v.name), o);
    if (v.initialValue != nullptr) {
        out += " = ";
        expression(v.initialValue, out, scope);
    } else if (!v.isArray) {
        out += " = ";
        defaultValue(v, out);
    }
    std::vector<int> dims;
    for (astExpression* size : v.arraySizes) {
        const bool isInt = size != nullptr && size->kind == ExpressionKind::intConstant;
        dims.push_back(isInt ? as<astIntConstant>(size)->value : 0);
    }
    if (!v.initialValues.empty()) {
        out += " = ";
        size_t next = 0;
        initialValues(dims, v.initialValues, next, out, scope);
    } else if (v.isArray && !v.arraySizes.empty() && v.arraySizes[0] != nullptr &&
               v.arraySizes[0]->kind == ExpressionKind::intConstant) {
        out += " = ";
        for (size_t d = 0; d < dims.size(); ++d) {
            out += d > 0 ? ", {" : "{";
            for (int i = 0; i < dims[d]; ++i) {
                out += i > 0 ? ", " : "";
                defaultValue(v, out);
            }
            out += "}";
        }
    }
    out += (flags & 1) != 0 ? ";" : "";
    out += (flags & 2) != 0 ? "\n" : "";
}

void PlainPrinter::initialValues(std::vector<int> dims, const list<astExpression>& values,
                                 size_t& next, std::string& out, const Scope& scope) {
    out += "{";
    if (dims.size() > 1) {
        const int count = dims.front();
        dims.erase(dims.begin());
        for (int i = 0; i < count; ++i) {
            out += i > 0 ? "," : "";
            initialValues(dims, values, next, out, scope);
        }
    } else {
        flattened(next < values.size() ? values[next].get() : nullptr, out, scope);
        ++next;
    }
    out += "}";
}

void PlainPrinter::flattened(astExpression* e, std::string& out, const Scope& scope) {
    if (e == nullptr || e->kind != ExpressionKind::sequence) {
        expression(e, out, scope);
        return;
    }
    flattened(as<astSequenceExpression>(e)->operand1, out, scope);
    out += ", ";
    expression(as<astSequenceExpression>(e)->operand2, out, scope);
}

Obj PlainPrinter::global(astGlobalVariable& g, std::string& out, const Scope& scope) {
    static const std::map<int, std::string> kStorage = {
        {0, "const "},   {1, "in "},     {2, "out "},   {4, "attribute "},
        {6, "varying "}, {7, "buffer "}, {8, "shared "}};
    if (!g.layoutQualifiers.empty()) {
        out += "layout (";
        bool any = false;
        for (astLayoutQualifier* q : g.layoutQualifiers) {
            out += any ? ", " : "";
            any = true;
            formatted(out, std::string(q->name));
            if (q->initialValue != nullptr) {
                out += " = ";
                expression(q->initialValue, out, scope);
            }
        }
        out += ") ";
    }
    out += kStorage.count(g.storage) != 0 ? kStorage.at(g.storage) : "";
    out += g.auxiliary == 0 ? "centroid " : g.auxiliary == 2 ? "patch " : "";
    memoryWords(g.memory, out);
    out += g.isInvariant ? "invariant " : "";
    out += g.interpolation == 0   ? "smooth "
           : g.interpolation == 1 ? "flat "
           : g.interpolation == 2 ? "noperspective "
                                  : "";
    Obj o = declaration(g, out, scope);
    if (g.initialValue != nullptr) {
        out += " = ";
        expression(g.initialValue, out, scope);
    }
    out += ";\n";
    return o;
}

void PlainPrinter::fields(const list<astVariable>& fieldList, std::string& out,
                          const Scope& scope) {
    out += "{\n";
    for (astVariable* f : fieldList) {
        declaration(*f, out, scope);
        out += ";\n";
    }
    out += "};\n";
}

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

// A declaration or an expression with flags.
void PlainPrinter::simple(astStatement* s, int flags, std::string& out, const Scope& scope) {
    if (s->kind == StatementKind::declaration) {
        for (astFunctionVariable* v : as<astDeclarationStatement>(s)->variables) {
            localVariable(*v, out, scope, flags);
        }
    } else if (s->kind == StatementKind::expression) {
        expression(as<astExpressionStatement>(s)->expression, out, scope);
        out += (flags & 1) != 0 ? ";" : "";
        out += (flags & 2) != 0 ? "\n" : "";
    }
}

Obj PlainPrinter::statement(astStatement* s, std::string& out, const Scope& scope) {
    if (s == nullptr) {
        return nullptr;
    }
    switch (s->kind) {
        case StatementKind::compound: {
            const auto inner = std::make_shared<Environment>(scope);
            out += " {\n";
            statements(as<astCompoundStatement>(s)->statements, out, inner);
            out += "}\n";
            if (inner->has(kSubscript)) {
                scope->set(kSubscript, inner->get(kSubscript));
            }
            break;
        }
        case StatementKind::empty:
            out += ";";
            break;
        case StatementKind::declaration:
        case StatementKind::expression:
            simple(s, 3, out, scope);
            break;
        case StatementKind::if_: {
            const auto& i = *as<astIfStatement>(s);
            out += "if(";
            expression(i.condition, out, scope);
            out += ")";
            statement(i.thenStatement, out, scope);
            if (i.elseStatement != nullptr) {
                out += "else ";
                statement(i.elseStatement, out, scope);
            }
            break;
        }
        case StatementKind::switch_:
            out += "switch(";
            expression(as<astSwitchStatement>(s)->expression, out, scope);
            out += ") {\n";
            statements(as<astSwitchStatement>(s)->statements, out, scope);
            out += "}\n";
            break;
        case StatementKind::caseLabel:
            if (as<astCaseLabelStatement>(s)->isDefault) {
                out += "default";
            } else {
                out += "case ";
                expression(as<astCaseLabelStatement>(s)->condition, out, scope);
            }
            out += ":\n";
            break;
        case StatementKind::while_:
            out += "while(";
            simple(as<astWhileStatement>(s)->condition, 0, out, scope);
            out += ")";
            statement(as<astWhileStatement>(s)->body, out, scope);
            break;
        case StatementKind::do_: {
            const auto& d = *as<astDoStatement>(s);
            out += d.body->kind == StatementKind::compound ? "do" : "do ";
            statement(d.body, out, scope);
            out += "while(";
            expression(d.condition, out, scope);
            out += ");\n";
            break;
        }
        case StatementKind::for_:
            forLoop(*as<astForStatement>(s), out, scope);
            break;
        case StatementKind::continue_:
            out += "continue;\n";
            break;
        case StatementKind::break_:
            out += "break;\n";
            break;
        case StatementKind::return_:
            out += "return";
            if (as<astReturnStatement>(s)->expression != nullptr) {
                out += " ";
                expression(as<astReturnStatement>(s)->expression, out, scope);
            }
            out += ";\n";
            break;
        case StatementKind::discard:
            out += "discard;\n";
            break;
    }
    return makeObject(0);
}

void PlainPrinter::forLoop(astForStatement& s, std::string& out, const Scope& scope) {
    const bool top = !scope->has(kLevel);
    if (top) {
        scope->set(kLevel, makeBoolean(true));
    }
    std::string t = "for(";
    if (s.init == nullptr) {
        t += ";";
    } else {
        simple(s.init, 1, t, scope);
    }
    if (s.condition != nullptr) {
        t += " ";
        expression(s.condition, t, scope);
    }
    t += ";";
    if (s.loop != nullptr) {
        t += " ";
        expression(s.loop, t, scope);
    }
    t += ")";
    statement(s.body, t, scope);
    const Obj mark = scope->get(kSubscript);
    if (mark == nullptr || (isBoolean(mark) && !static_cast<const Boolean&>(*mark).value)) {
        out += "\n[loop]\n";
    }
    out += t;
    if (top) {
        scope->remove(kSubscript);
        scope->remove(kLevel);
    }
}

void PlainPrinter::printUnit(uint32_t inputs, uint32_t audio, bool custom, std::string& out,
                             std::string& varyings, const Scope& parent, bool vertex) {
    std::string outputStruct =
        "\nstruct VertexOutput\n{\n    float4 gl_Position : SV_Position;\n    float2 tc : "
        "TEXCOORD0;\n";
    std::string inputStruct = vertex ? "\nstruct VertexInput\n{\n" : "";
    std::string copies;
    std::string cbufferBody;
    std::string statics;
    std::string dropped;
    const auto scope = std::make_shared<Environment>(parent);
    int uniforms = 0;
    if (vertex) {
        scope->set("isVertexShader", makeBoolean(true));
        out += "static float4 gl_Position;\nstatic float2 tc;\n";
        copies = "    output.gl_Position = gl_Position;\n    output.tc = tc;\n";
    }
    for (astGlobalVariable* g : unit_.globals) {
        const std::string name = avoided(g->name);
        if (g->storage == 5) {
            ++uniforms;
        } else if (g->storage == 1 && vertex) {
            inputStruct += "    ";
            const Obj o = type(g->baseType, inputStruct);
            inputStruct += " " + semanticName(name) + " : " + semanticName(name) + ";\n";
            scope->set("VertexInput_" + semanticName(name), o);
        } else if (g->storage == 1) {
            scope->set("VertexOutput_" + name, type(g->baseType, dropped));
        } else if (g->storage == 2 && vertex && name != "gl_Position" && name != "tc") {
            out += "static ";
            declaration(*g, out, scope);
            out += ";\n";
            copies += "    output." + name + " = " + name + ";\n";
            std::string line = "    ";
            declaration(*g, line, scope);
            line += " : __" + name + ";\n";
            outputStruct += line;
            varyings += line;
            scope->set("VertexOutput_" + name, type(g->baseType, dropped));
        }
    }
    inputStruct += vertex ? "\n};\n" : "";
    outputStruct += (vertex ? "" : varyings) + "\n};\n";
    for (astGlobalVariable* g : unit_.globals) {
        const std::string name = avoided(g->name);
        if (g->storage == 5) {
            const Obj o = global(*g, cbufferBody, scope);
            scope->set("MyConstantBuffer_" + name, o);
        } else if (g->storage == 0) {
            formatted(out, "#define " + name);
            const Obj o = type(g->baseType, dropped);
            if (g->initialValue != nullptr) {
                out += " (";
                expression(g->initialValue, out, scope);
                out += ")\n";
            }
            scope->set("MyConstantBuffer_" + name, o);
        } else if (g->storage != 1 && g->storage != 2) {
            if (g->name == "gl_FragCoord") {
                scope->set("gl_FragCoord", vecOf(4));
            } else {
                statics += "static ";
                const Obj o = global(*g, statics, scope);
                scope->set("MyConstantBuffer_" + name, o);
            }
        }
    }
    if (uniforms > 0) {
        outputStruct += "\ncbuffer MyConstantBuffer : register(b0)\n{\n" + cbufferBody + "\n};\n";
    }
    out += std::string(kPrelude) + inputStruct + outputStruct;
    const auto texture = [&out](const std::string& name, uint32_t place) {
        const std::string n = std::to_string(place);
        out += "Texture2D " + name + " : register(t" + n + ");\n";
        out += "SamplerState " + name + "_SAMPLER : register(s" + n + ");\n";
    };
    for (uint32_t i = 0; i < inputs; ++i) {
        texture("INPUT" + std::to_string(i + 1), i);
    }
    for (uint32_t k = 1; k <= audio; ++k) {
        texture("AUDIO_INPUT" + std::to_string(k), inputs + k - 1);
    }
    out += "\n";
    if (unit_.versionDirective != nullptr) {
        static const char* const kProfiles[] = {"core\n", "compatibility\n", "es\n"};
        const int profile = unit_.versionDirective->profile;
        out += "#version " + std::to_string(unit_.versionDirective->number) + " ";
        out += profile >= 0 && profile < 3 ? kProfiles[profile] : "";
    }
    for (astExtensionDirective* e : unit_.extensionDirectives) {
        static const char* const kBehaviors[] = {"enable\n", "require\n", "warn\n", "disable\n"};
        formatted(out, "#extension " + std::string(e->name) + " : ");
        out += e->behavior >= 0 && e->behavior < 4 ? kBehaviors[e->behavior] : "";
    }
    for (astStruct* s : unit_.structures) {
        out += "struct ";
        if (!s->name.empty()) {
            formatted(out, std::string(s->name) + " ");
        }
        fields(s->fields, out, scope);
    }
    out += statics;
    for (astInterfaceBlock* b : unit_.interfaceBlocks) {
        out += b->storage == 1   ? "in "
               : b->storage == 2 ? "out "
               : b->storage == 7 ? "buffer "
                                 : "";
        formatted(out, std::string(b->name) + " ");
        fields(b->fields, out, scope);
    }
    for (astFunction* f : unit_.functions) {
        const auto child = std::make_shared<Environment>(scope);
        if (vertex && f->name == "main") {
            out += "\nvoid main(VertexInput input)\n{\n";
            statements(f->statements, out, child);
            out += "\nreturn;\n}\n";
            continue;
        }
        function(*f, out, child);
        const std::string name = avoided(f->name);
        scope->set("HAVE_FUNC_" + name, makeBoolean(true));
        if (child->has(name + "_RETURN_TYPE")) {
            scope->set(name + "_RETURN_TYPE", child->get(name + "_RETURN_TYPE"));
        }
    }
    const std::string top =
        "\n\nfloat4 mainPS(VertexOutput input) : SV_TARGET\n{\n    float2 _tc = "
        "input.gl_Position.xy / input.gl_Position.w / iResolution.xy;\n    float4 gl_FragCoord = "
        "float4(_tc * iResolution.xy, ";
    if (vertex) {
        out +=
            "\n\nVertexOutput mainVS(VertexInput input)\n{\n    VertexOutput output;\n    "
            "main(input);\n" +
            copies + "\n    output.gl_Position.y *= -1.0f;\n    return output;\n}\n    ";
    } else if (custom) {
        out += top +
               "input.gl_Position.z / input.gl_Position.w, 1.0);\n    return FUNCNAME(input.tc, "
               "input, gl_FragCoord).zyxw;\n}\n    ";
    } else {
        out += top +
               "0.0, 1.0);\n    _tc.y = 1.0 - _tc.y;\n    return FUNCNAME(_tc, input, "
               "gl_FragCoord).zyxw;\n}\n    ";
    }
}

}  // namespace

void printPlainly(astTU& unit, uint32_t inputCount, uint32_t audioInputCount,
                  bool hasCustomVertexShader, std::string& out, std::string& varyingDeclarations,
                  const std::shared_ptr<Environment>& parentScope, bool isVertexShader) {
    PlainPrinter(unit).printUnit(inputCount, audioInputCount, hasCustomVertexShader, out,
                                 varyingDeclarations, parentScope, isVertexShader);
}

}  // namespace glsl
