#include <algorithm>

#include "glsl/hlsl/printer.h"

namespace glsl {

namespace {

// The size that an array's dimension has as a number. On purpose: one that isn't a plain int
// constant counts as 0, and the values then are left out.
size_t sizeOf(const astExpression* size) {
    if (size == nullptr || size->kind != ExpressionKind::intConstant) {
        return 0;
    }
    return static_cast<size_t>(std::max(0, as<astIntConstant>(size)->value));
}

}  // namespace

Value Printer::printDeclaration(astVariable& variable) {
    if (variable.isPrecise) {
        text_.put("precise ");
    }
    const Value value = printType(variable.baseType);
    piece(" ", variableSymbol(variable).name);
    if (variable.isArray) {
        if (variable.arraySizes.empty()) {
            text_.put("[]");
        }
        printArraySizes(variable.arraySizes);
    }
    return value;
}

void Printer::printArraySizes(const list<astExpression>& sizes) {
    for (astExpression* const size : sizes) {
        text_.put('[');
        printExpression(size);
        text_.put(']');
    }
}

Value Printer::printFunctionParameter(astFunctionParameter& parameter) {
    printAuxiliary(parameter.auxiliary);
    printMemory(parameter.memory);
    // On purpose: `inout` prints nothing and is by value, and an `out` array has no sizes. The
    // shaders in use draw as they do because of it.
    const bool isOut = parameter.storage == kStorageOut;
    if (isOut) {
        text_.put("inout ");
    }
    const Value value = printType(parameter.baseType);
    if (!parameter.name.empty()) {
        Symbol& symbol = variableSymbol(parameter);
        piece(" ", symbol.name);
        scopes_.set(symbol, value);
    }
    if (parameter.isArray && !isOut) {
        printArraySizes(parameter.arraySizes);
    }
    return value;
}

void Printer::printFunction(astFunction& function) {
    mark(function);
    const Value result = printType(function.returnType);
    Symbol& name = variableSymbol(function.name);
    piece(" ", name.name, "(");
    bool first = true;
    for (astFunctionParameter* const parameter : function.parameters) {
        if (!first) {
            text_.put(", ");
        }
        first = false;
        if (parameter != nullptr) {
            printFunctionParameter(*parameter);
        }
    }
    printHiddenParameter(first);
    text_.put(')');
    if (function.isPrototype) {
        text_.put(";\n");
        return;
    }
    text_.put(" {\n");
    printStatements(function.statements);
    printClosingReturn(function, result);
    scopes_.set(name, KeyFamily::returnType, result);
}

// User functions read stage inputs and the pixel's place, which HLSL knows only as parameters.
void Printer::printHiddenParameter(bool first) {
    if (!first) {
        text_.put(", ");
    }
    if (inVertexStage()) {
        text_.put("VertexInput input");
    } else {
        text_.put("VertexOutput input, float4 gl_FragCoord");
    }
}

// HLSL wants a return on every path, so each function ends in one.
void Printer::printClosingReturn(astFunction& function, const Value& result) {
    mark(function);
    text_.put("return ");
    if (result.kind != ValueClass::other) {
        printConstructor(function.returnType, {}, function);
    }
    text_.put(";\n}\n");
}

Value Printer::printFunctionVariable(astFunctionVariable& variable, uint32_t flags) {
    mark(variable);
    if (variable.isConst) {
        text_.put("const ");
    }
    const Value value = printDeclaration(variable);
    scopes_.define(variableSymbol(variable), value);
    if (variable.initialValue != nullptr) {
        text_.put(" = ");
        printExpression(variable.initialValue);
    } else if (!variable.isArray) {
        text_.put(" = ");
        printDefaultValue(variable.baseType);
    }
    if (!variable.initialValues.empty()) {
        text_.put(" = ");
        printInitialValues(variable.arraySizes, variable.initialValues);
    } else if (variable.isArray) {
        printDefaultElements(variable);
    }
    if ((flags & kSemicolon) != 0) {
        text_.put(';');
    }
    if ((flags & kLineEnd) != 0) {
        text_.put('\n');
    }
    return value;
}

void Printer::printDefaultElements(const astVariable& variable) {
    const list<astExpression>& sizes = variable.arraySizes;
    if (sizes.empty() || sizes.front() == nullptr ||
        sizes.front()->kind != ExpressionKind::intConstant) {
        return;
    }
    text_.put(" = ");
    const size_t valueSize = defaultValueSize(variable.baseType);
    bool firstList = true;
    for (const astExpression* const size : sizes) {
        text_.put(firstList ? "{" : ", {");
        firstList = false;
        const size_t count = sizeOf(size);
        if (mayRepeat(count * valueSize)) {
            for (size_t i = 0; i < count; ++i) {
                text_.put(i == 0 ? "" : ", ");
                printDefaultValue(variable.baseType);
            }
        }
        text_.put('}');
    }
}

// Braces for each dimension but the innermost, where one whole entry stands between braces however
// large the size is. The dimensions are counted like the digits of a clock: `left[d]` lists are
// still to come in dimension d.
void Printer::printInitialValues(const list<astExpression>& sizes,
                                 const list<astExpression>& values) {
    const size_t outer = sizes.empty() ? 0 : sizes.size() - 1;
    std::vector<size_t> left;
    size_t next = 0;
    bool opening = true;
    while (true) {
        while (opening && left.size() < outer) {
            left.push_back(sizeOf(sizes[left.size()]));
            text_.put('{');
            opening = left.back() > 0;
        }
        if (opening) {
            text_.put('{');
            printInitialValue(next < values.size() ? values[next].get() : nullptr);
            text_.put('}');
            ++next;
        }
        while (!left.empty() && (left.back() == 0 || --left.back() == 0)) {
            left.pop_back();
            text_.put('}');
        }
        if (left.empty() || !mayRepeat(3)) {
            return;
        }
        text_.put(',');
        opening = true;
    }
}

// A sequence is a list of elements here: no parentheses.
void Printer::printInitialValue(astExpression* value) {
    std::vector<astExpression*> rights;
    while (value != nullptr && value->kind == ExpressionKind::sequence) {
        rights.push_back(as<astSequenceExpression>(value)->operand2);
        value = as<astSequenceExpression>(value)->operand1;
    }
    printExpression(value);
    for (; !rights.empty(); rights.pop_back()) {
        text_.put(", ");
        printExpression(rights.back());
    }
}

Value Printer::printGlobalVariable(astGlobalVariable& global) {
    printLayout(global.layoutQualifiers);
    printStorage(global.storage);
    printAuxiliary(global.auxiliary);
    printMemory(global.memory);
    if (global.isInvariant) {
        text_.put("invariant ");
    }
    printInterpolation(global.interpolation);
    const Value value = printDeclaration(global);
    if (global.initialValue != nullptr) {
        text_.put(" = ");
        printExpression(global.initialValue);
    }
    text_.put(";\n");
    return value;
}

void Printer::printLayout(const list<astLayoutQualifier>& qualifiers) {
    if (qualifiers.empty()) {
        return;
    }
    text_.put("layout (");
    bool first = true;
    for (const astLayoutQualifier* const qualifier : qualifiers) {
        if (!first) {
            text_.put(", ");
        }
        first = false;
        if (qualifier != nullptr) {
            piece("", qualifier->name);
            if (qualifier->initialValue != nullptr) {
                text_.put(" = ");
                printExpression(qualifier->initialValue);
            }
        }
    }
    text_.put(") ");
}

void Printer::printStruct(astStruct& structure) {
    mark(structure);
    text_.put("struct ");
    if (!structure.name.empty()) {
        piece(structure.name, " ");
    }
    printFields(structure.fields);
}

void Printer::printInterfaceBlock(astInterfaceBlock& block) {
    mark(block);
    printStorage(static_cast<int32_t>(block.storage));
    piece(block.name, " ");
    printFields(block.fields);
}

void Printer::printFields(const list<astVariable>& fields) {
    text_.put("{\n");
    for (astVariable* const field : fields) {
        if (field != nullptr) {
            mark(*field);
            printDeclaration(*field);
            text_.put(";\n");
        }
    }
    text_.put("};\n");
}

}  // namespace glsl
