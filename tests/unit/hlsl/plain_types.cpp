#include "plain_walker.h"

namespace glsl::plain {

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

}  // namespace glsl::plain
