#pragma once

#include "plain_printer.h"

#include <algorithm>
#include <map>
#include <vector>

#include "DirectXEffectMgr/Source/logging/logging.h"
#include "glsl/hlsl/literals.h"
#include "glsl/hlsl/naming.h"
#include "glsl/hlsl/prelude.h"
#include "glsl/keywords.h"

/// The walker behind printPlainly(): one function per construct, in the order of the rules.
namespace glsl::plain {

using Obj = std::shared_ptr<Object>;
using Scope = std::shared_ptr<Environment>;

constexpr const char* kLevel = "env__________isTopForLevel";
constexpr const char* kSubscript = "env__________isDidMatArraySubScriptObject";

inline std::string avoided(std::string_view name) {
    return std::string(avoidKeyword(name, false));
}

inline bool isAnyVec(const Obj& o) {
    return isVec2(o) || isVec3(o) || isVec4(o);
}
inline bool isAnyIntVec(const Obj& o) {
    return isiVec2(o) || isiVec3(o) || isiVec4(o);
}
inline bool isAnyMat(const Obj& o) {
    return isMat2(o) || isMat3(o) || isMat4(o);
}
inline int sideOf(const Obj& o) {
    if (isVec2(o) || isiVec2(o) || isMat2(o)) {
        return 2;
    }
    if (isVec3(o) || isiVec3(o) || isMat3(o)) {
        return 3;
    }
    return isVec4(o) || isiVec4(o) || isMat4(o) ? 4 : 0;
}
inline Obj vecOf(size_t n) {
    return n == 1   ? makeFloat(1)
           : n == 2 ? makeVec2({1, 1})
           : n == 3 ? makeVec3({1, 1, 1})
                    : makeVec4({1, 1, 1, 1});
}
inline Obj intVecOf(size_t n) {
    return n == 1   ? makeInteger(1)
           : n == 2 ? makeiVec2({1, 1})
           : n == 3 ? makeiVec3({1, 1, 1})
                    : makeiVec4({1, 1, 1, 1});
}
inline Obj matOf(int n) {
    return n == 2   ? makeMat2({1, 0, 0, 1})
           : n == 3 ? makeMat3({1, 0, 0, 0, 1, 0, 0, 0, 1})
                    : makeMat4({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
}

inline void memoryWords(uint32_t memory, std::string& out) {
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

}  // namespace glsl::plain
