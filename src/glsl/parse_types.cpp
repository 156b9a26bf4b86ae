#include "glsl/parser_impl.h"

// Structures, interface blocks and functions.

namespace glsl {

namespace {

std::string_view blockWord(std::int32_t storage) {
    switch (storage) {
        case kStorageIn:
            return "input block";
        case kStorageOut:
            return "outout block";  // On purpose: hosts match on the message as it always was.
        case kStorageUniform:
            return "uniform block";
        default:
            return "buffer block";
    }
}

bool isVoid(const astType* type) {
    return type->builtin && as<astBuiltin>(type)->typeKeyword == id(Keyword::void_);
}

struct ParameterWord {
    Keyword keyword;
    std::int32_t value;
    std::int32_t astFunctionParameter::*field;
};

constexpr ParameterWord kParameterWords[] = {
    {Keyword::in, kStorageIn, &astFunctionParameter::storage},
    {Keyword::out, kStorageOut, &astFunctionParameter::storage},
    {Keyword::inout, kStorageInOut, &astFunctionParameter::storage},
    {Keyword::highp, kPrecisionHigh, &astFunctionParameter::precision},
    {Keyword::mediump, kPrecisionMedium, &astFunctionParameter::precision},
    {Keyword::lowp, kPrecisionLow, &astFunctionParameter::precision},
};

struct MemoryWord {
    Keyword keyword;
    std::uint32_t value;
};

constexpr MemoryWord kMemoryWords[] = {
    {Keyword::coherent, kMemoryCoherent},   {Keyword::volatile_, kMemoryVolatile},
    {Keyword::restrict_, kMemoryRestrict},  {Keyword::readonly, kMemoryReadOnly},
    {Keyword::writeonly, kMemoryWriteOnly},
};

// Enters a qualifier word of a parameter; false if `keyword` is none.
bool takeParameterWord(astFunctionParameter& parameter, std::uint32_t keyword) {
    for (const ParameterWord& word : kParameterWords) {
        if (keyword == id(word.keyword)) {
            parameter.*word.field = word.value;
            return true;
        }
    }
    for (const MemoryWord& word : kMemoryWords) {
        if (keyword == id(word.keyword)) {
            parameter.memory = word.value;  // On purpose: the last word stands, none are or-ed.
            return true;
        }
    }
    return false;
}

}  // namespace

// struct: "struct" [ name ] "{" { list ";" } "}". Ends on the token behind the `}`.
astStruct* parser::impl::parseStruct() {
    if (!next()) {
        return nullptr;
    }
    symbol* name = is(TokenKind::identifier) ? token_->name : nullptr;
    auto* structure = parseFields<astStruct>("structure");
    if (structure != nullptr && name != nullptr && name->structure == nullptr) {
        name->structure = structure;
    }
    return structure;
}

// block: name "{" { list ";" } "}". Ends on the token behind the `}`: an instance name, or what
// makes the fields global names.
astInterfaceBlock* parser::impl::parseInterfaceBlock(std::int32_t storage) {
    auto* block = parseFields<astInterfaceBlock>(blockWord(storage));
    if (block == nullptr || (!is(TokenKind::identifier) && !declareFields(*block))) {
        return nullptr;
    }
    block->storage = static_cast<std::uint32_t>(storage);
    return block;
}

// What structures and blocks share: [ name ] "{" { list ";" } "}".
template <class T>
T* parser::impl::parseFields(std::string_view what) {
    const Level level(*this);
    height_ = 0;
    if (tooDeep()) {
        return nullptr;
    }
    auto* made = make<T>();
    if (is(TokenKind::identifier)) {
        made->name = token_->name->name;
        if (!next()) {
            return nullptr;
        }
    }
    if (!is(TokenKind::scopeBegin)) {
        return reportError("expected '{' for %s definition", what);
    }
    if (!next()) {
        return nullptr;
    }
    const std::size_t first = records_.size();
    while (!is(TokenKind::scopeEnd)) {
        if (!parseTopLevel() || !next()) {
            return nullptr;
        }
    }
    Collector<astVariable> fields(*this);
    for (std::size_t i = first; i < records_.size(); ++i) {
        const TopLevel& record = records_[i];
        auto* field = make<astVariable>();
        field->baseType = record.type;
        field->name = record.name->name;
        field->isPrecise = record.isPrecise;
        field->isArray = record.isArray;
        field->arraySizes = record.arraySizes;
        fields.add(field);
    }
    made->fields = fields.take();
    records_.resize(first);
    return next() ? made : nullptr;
}

// The fields of a block without an instance name are global names.
bool parser::impl::declareFields(const astInterfaceBlock& block) {
    for (const auto& field : block.fields) {
        const std::string_view name = field->name;
        symbol* entry = lexer_->names().find(name);
        if (findVariable(*entry) != nullptr) {
            return reportError("'%s` is already declared in this scope", name);
        }
        enterVariable(*entry, field);
    }
    return true;
}

// function: type name "(" parameters ")" ( ";" | "{" { statement } "}" ), from the `(` on. Ends on
// the `;` or `}`.
astFunction* parser::impl::parseFunction(const TopLevel& record) {
    auto* function = make<astFunction>();
    function->returnType = record.type;
    function->name = record.name->name;
    if (!next() || !parseParameters(*function)) {
        return nullptr;
    }
    if (function->name == "main") {
        if (!function->parameters.empty()) {
            return reportError("`main' cannot have parameters");
        }
        if (!isVoid(function->returnType)) {
            return reportError("`main' must be declared to return void");
        }
    }
    if (is(TokenKind::semicolon)) {
        function->isPrototype = true;
        return function;
    }
    if (!is(TokenKind::scopeBegin)) {
        return reportError("expected `{' or `;'");
    }
    return parseBody(*function) ? function : nullptr;
}

// { parameter [ "," ] } ")". Ends on the token behind the `)`.
bool parser::impl::parseParameters(astFunction& function) {
    Collector<astFunctionParameter> parameters(*this);
    while (!isOperator(Operator::paranthesis_end)) {
        if (!parseParameter(parameters)) {
            return false;
        }
    }
    if (!next()) {
        return false;
    }
    const bool none = parameters.size() == 1 && isVoid(parameters[0]->baseType);
    function.parameters = none ? list<astFunctionParameter>() : parameters.take();
    return true;
}

// parameter: words, type, name and sizes in any order, up to the `,`, which is taken, or the `)`.
bool parser::impl::parseParameter(Collector<astFunctionParameter>& parameters) {
    auto* parameter = make<astFunctionParameter>();
    while (!isOperator(Operator::comma) && !isOperator(Operator::paranthesis_end)) {
        if (!parseParameterToken(*parameter) || !next()) {
            return false;
        }
    }
    if (parameter->baseType == nullptr) {
        return reportError("expected type");
    }
    parameters.add(parameter);
    return !isOperator(Operator::comma) || next();
}

bool parser::impl::parseParameterToken(astFunctionParameter& parameter) {
    if (is(TokenKind::keyword) && takeParameterWord(parameter, token_->value)) {
        return true;
    }
    if (is(TokenKind::identifier)) {
        if (astStruct* structure = findStructure(*token_->name)) {
            parameter.baseType = structure;
        } else {
            parameter.name = token_->name->name;
        }
        return true;
    }
    if (isOperator(Operator::bracket_begin)) {
        return parseParameterArray(parameter);
    }
    parameter.baseType = parseBuiltin();
    if (parameter.baseType == nullptr) {
        return false;
    }
    if (isVoid(parameter.baseType) && !parameter.name.empty()) {
        return reportError("`void' parameter cannot be named");
    }
    return true;
}

// "[" [ size ] "]". Ends on the `]`.
bool parser::impl::parseParameterArray(astFunctionParameter& parameter) {
    parameter.isArray = true;
    if (!next()) {
        return false;
    }
    astExpression* size = parseExpression(kEndBracket);
    if (size != nullptr) {
        parameter.arraySizes.push_back(*home_, size);
    }
    return true;
}

// "{" { statement } "}". On purpose: one scope for the whole body, as nested blocks open none.
bool parser::impl::parseBody(astFunction& function) {
    if (!next()) {
        return false;
    }
    scope_ = ++scopes_made_;
    for (const auto& parameter : function.parameters) {
        if (!parameter->name.empty()) {
            enterVariable(*lexer_->names().find(parameter->name), parameter);
        }
    }
    Collector<astStatement> statements(*this);
    while (!is(TokenKind::scopeEnd)) {
        astStatement* statement = parseStatement();
        if (statement == nullptr) {
            return false;
        }
        statements.add(statement);
        if (!next()) {
            return false;
        }
    }
    function.statements = statements.take();
    scope_ = 0;
    return true;
}

}  // namespace glsl
