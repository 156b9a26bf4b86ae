#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "glsl/operators.h"
#include "glsl/ptr.h"

/// The syntax tree of one shader. The parser makes it, whoever prints it reads the public fields.
///
/// Dispatch goes by `kind` for statements and expressions, by the dynamic type elsewhere. Every
/// node takes its line and column in the constructor: the position of the lexer when the node was
/// made, so just behind the token that was current then. Nodes lie in the arena of their tree and
/// own nothing: see ptr.h. A tree is used by one thread.
namespace glsl {

/// Bytes that live as long as the tree. Not terminated by a zero byte.
using text = std::string_view;

// Qualifiers. A field that holds one is -1 (memory: 0) where the source says nothing.
inline constexpr std::int32_t kStorageNone = -1;
inline constexpr std::int32_t kStorageConst = 0;
inline constexpr std::int32_t kStorageIn = 1;
inline constexpr std::int32_t kStorageOut = 2;
inline constexpr std::int32_t kStorageInOut = 3;
inline constexpr std::int32_t kStorageAttribute = 4;
inline constexpr std::int32_t kStorageUniform = 5;
inline constexpr std::int32_t kStorageVarying = 6;
inline constexpr std::int32_t kStorageBuffer = 7;
inline constexpr std::int32_t kStorageShared = 8;

inline constexpr std::int32_t kAuxiliaryNone = -1;
inline constexpr std::int32_t kAuxiliaryCentroid = 0;
inline constexpr std::int32_t kAuxiliaryPatch = 2;  // 1 is kept free

inline constexpr std::int32_t kInterpolationNone = -1;
inline constexpr std::int32_t kInterpolationSmooth = 0;
inline constexpr std::int32_t kInterpolationFlat = 1;
inline constexpr std::int32_t kInterpolationNoPerspective = 2;

inline constexpr std::int32_t kPrecisionNone = -1;
inline constexpr std::int32_t kPrecisionHigh = 0;
inline constexpr std::int32_t kPrecisionMedium = 1;
inline constexpr std::int32_t kPrecisionLow = 2;

inline constexpr std::uint32_t kMemoryCoherent = 1;  // flags, or-ed
inline constexpr std::uint32_t kMemoryVolatile = 2;
inline constexpr std::uint32_t kMemoryRestrict = 4;
inline constexpr std::uint32_t kMemoryReadOnly = 8;
inline constexpr std::uint32_t kMemoryWriteOnly = 16;

// Stages, as the parser and the root hold them.
inline constexpr std::uint32_t kShaderVertex = 1;
inline constexpr std::uint32_t kShaderTessellationControl = 2;
inline constexpr std::uint32_t kShaderTessellationEvaluation = 3;
inline constexpr std::uint32_t kShaderFragment = 5;

enum class VariableKind : std::uint32_t {
    function = 0,
    parameter = 1,
    global = 2,
    field = 3,
};

enum class StatementKind : std::uint32_t {
    compound = 0,
    empty = 1,
    declaration = 2,
    expression = 3,
    if_ = 4,
    switch_ = 5,
    caseLabel = 6,
    while_ = 7,
    do_ = 8,
    for_ = 9,
    continue_ = 10,
    break_ = 11,
    return_ = 12,
    discard = 13,
};

enum class ExpressionKind : std::uint32_t {
    intConstant = 0,
    uintConstant = 1,
    floatConstant = 2,
    stringConstant = 3,
    doubleConstant = 4,
    boolConstant = 5,
    variableIdentifier = 6,
    fieldOrSwizzle = 7,
    arraySubscript = 8,
    functionCall = 9,
    constructorCall = 10,
    postIncrement = 11,
    postDecrement = 12,
    unaryMinus = 13,
    unaryPlus = 14,
    unaryBitNot = 15,
    unaryLogicalNot = 16,
    prefixIncrement = 17,
    prefixDecrement = 18,
    sequence = 19,
    assignment = 20,
    operation = 21,
    ternary = 22,
};

struct astVariable;
struct astExpression;

struct astNode {
    astNode(std::uint64_t atLine, std::uint64_t atColumn)
        : line(atLine & 0xFFFFFFFFu), column(atColumn & 0xFFFFFFFFu) {}
    virtual ~astNode() = default;

    std::uint64_t line : 32;    // 1-based; a source is shorter than 2^31 bytes
    std::uint64_t column : 32;  // 1-based
};

// ---- types and directives

struct astType : astNode {
    astType(std::uint64_t atLine, std::uint64_t atColumn) : astNode(atLine, atColumn) {}
    bool builtin = false;  // true in astBuiltin alone
};

/// A type that a keyword names. One parser makes one node per keyword, so comparing pointers
/// compares types.
struct astBuiltin : astType {
    astBuiltin(std::uint32_t keyword, std::uint64_t atLine, std::uint64_t atColumn)
        : astType(atLine, atColumn), typeKeyword(keyword) {
        builtin = true;
    }
    std::uint32_t typeKeyword;  // keywords.h
};

struct astStruct : astType {
    astStruct(std::uint64_t atLine, std::uint64_t atColumn) : astType(atLine, atColumn) {}
    text name;  // empty if anonymous
    list<astVariable> fields;
};

struct astInterfaceBlock : astType {
    astInterfaceBlock(std::uint64_t atLine, std::uint64_t atColumn) : astType(atLine, atColumn) {}
    text name;
    std::uint32_t storage = 0;
    list<astVariable> fields;
};

struct astVersionDirective : astType {
    astVersionDirective(std::uint64_t atLine, std::uint64_t atColumn) : astType(atLine, atColumn) {}
    std::int32_t number = -1;
    std::int32_t profile = -1;  // 0 core, 1 compatibility, 2 es
};

struct astExtensionDirective : astType {
    astExtensionDirective(std::uint64_t atLine, std::uint64_t atColumn)
        : astType(atLine, atColumn) {}
    text name;
    std::int32_t behavior = -1;  // 0 enable, 1 require, 2 warn, 3 disable
};

struct astDefineDirective : astType {
    astDefineDirective(std::uint64_t atLine, std::uint64_t atColumn) : astType(atLine, atColumn) {}
    text name;
    text value;
};

// ---- variables and functions

/// Itself a field of a structure or block; the derived classes are the other kinds.
struct astVariable : astNode {
    astVariable(std::uint64_t atLine, std::uint64_t atColumn)
        : astVariable(VariableKind::field, atLine, atColumn) {}

    text name;
    link<astType> baseType;
    bool isArray = false;
    bool isPrecise = false;
    VariableKind variableType;
    list<astExpression> arraySizes;  // an element is null for an empty `[]`

protected:
    astVariable(VariableKind kind, std::uint64_t atLine, std::uint64_t atColumn)
        : astNode(atLine, atColumn), variableType(kind) {}
};

struct astFunctionVariable : astVariable {
    astFunctionVariable(std::uint64_t atLine, std::uint64_t atColumn)
        : astVariable(VariableKind::function, atLine, atColumn) {}
    bool isConst = false;
    link<astExpression> initialValue;   // may be null
    list<astExpression> initialValues;  // brace or array-constructor form
};

struct astFunctionParameter : astVariable {
    astFunctionParameter(std::uint64_t atLine, std::uint64_t atColumn)
        : astVariable(VariableKind::parameter, atLine, atColumn) {}
    std::int32_t storage = kStorageNone;
    std::int32_t auxiliary = kAuxiliaryNone;
    std::uint32_t memory = 0;
    std::int32_t precision = kPrecisionNone;
};

struct astLayoutQualifier : astNode {
    astLayoutQualifier(std::uint64_t atLine, std::uint64_t atColumn) : astNode(atLine, atColumn) {}
    text name;
    link<astExpression> initialValue;  // a folded constant; null for a qualifier without a value
};

struct astGlobalVariable : astVariable {
    astGlobalVariable(std::uint64_t atLine, std::uint64_t atColumn)
        : astVariable(VariableKind::global, atLine, atColumn) {}
    std::int32_t storage = kStorageNone;
    std::int32_t auxiliary = kAuxiliaryNone;
    std::uint32_t memory = 0;
    std::int32_t precision = kPrecisionNone;
    std::int32_t interpolation = kInterpolationNone;
    bool isInvariant = false;
    link<astExpression> initialValue;  // may be null
    list<astLayoutQualifier> layoutQualifiers;
};

struct astStatement : astNode {
    astStatement(StatementKind what, std::uint64_t atLine, std::uint64_t atColumn)
        : astNode(atLine, atColumn), kind(what) {}
    StatementKind kind;
};

struct astFunction : astNode {
    astFunction(std::uint64_t atLine, std::uint64_t atColumn) : astNode(atLine, atColumn) {}
    link<astType> returnType;
    text name;
    list<astFunctionParameter> parameters;
    list<astStatement> statements;
    bool isPrototype = false;
};

// ---- expressions; parentheses leave no node

struct astExpression : astNode {
    astExpression(ExpressionKind what, std::uint64_t atLine, std::uint64_t atColumn)
        : astNode(atLine, atColumn), kind(what) {}
    ExpressionKind kind;
};

struct astIntConstant : astExpression {
    astIntConstant(std::int32_t constant, std::uint64_t atLine, std::uint64_t atColumn)
        : astExpression(ExpressionKind::intConstant, atLine, atColumn), value(constant) {}
    std::int32_t value;
};

struct astUIntConstant : astExpression {
    astUIntConstant(std::uint32_t constant, std::uint64_t atLine, std::uint64_t atColumn)
        : astExpression(ExpressionKind::uintConstant, atLine, atColumn), value(constant) {}
    std::uint32_t value;
};

struct astFloatConstant : astExpression {
    astFloatConstant(float constant, text written, std::uint64_t atLine, std::uint64_t atColumn)
        : astExpression(ExpressionKind::floatConstant, atLine, atColumn),
          value(constant),
          text(written) {}
    float value;
    glsl::text text;  // as written; of a folded constant the texts and operators joined
};

struct astStringConstant : astExpression {
    astStringConstant(text constant, std::uint64_t atLine, std::uint64_t atColumn)
        : astExpression(ExpressionKind::stringConstant, atLine, atColumn), value(constant) {}
    text value;
};

struct astDoubleConstant : astExpression {
    astDoubleConstant(double constant, text written, std::uint64_t atLine, std::uint64_t atColumn)
        : astExpression(ExpressionKind::doubleConstant, atLine, atColumn),
          value(constant),
          text(written) {}
    double value;
    glsl::text text;  // as for astFloatConstant
};

struct astBoolConstant : astExpression {
    astBoolConstant(bool constant, std::uint64_t atLine, std::uint64_t atColumn)
        : astExpression(ExpressionKind::boolConstant, atLine, atColumn), value(constant) {}
    bool value;
};

struct astVariableIdentifier : astExpression {
    astVariableIdentifier(astVariable* named, std::uint64_t atLine, std::uint64_t atColumn)
        : astExpression(ExpressionKind::variableIdentifier, atLine, atColumn), variable(named) {}
    link<astVariable> variable;  // never null
};

struct astFieldOrSwizzle : astExpression {
    astFieldOrSwizzle(std::uint64_t atLine, std::uint64_t atColumn)
        : astExpression(ExpressionKind::fieldOrSwizzle, atLine, atColumn) {}
    link<astExpression> operand;
    text field;  // a structure's field or a swizzle; nothing tells the two apart
};

struct astArraySubscript : astExpression {
    astArraySubscript(std::uint64_t atLine, std::uint64_t atColumn)
        : astExpression(ExpressionKind::arraySubscript, atLine, atColumn) {}
    link<astExpression> operand;
    link<astExpression> index;  // folded where it is constant
};

struct astFunctionCall : astExpression {
    astFunctionCall(std::uint64_t atLine, std::uint64_t atColumn)
        : astExpression(ExpressionKind::functionCall, atLine, atColumn) {}
    text name;  // the printer may shorten it in place
    list<astExpression> parameters;
};

struct astConstructorCall : astExpression {
    astConstructorCall(std::uint64_t atLine, std::uint64_t atColumn)
        : astExpression(ExpressionKind::constructorCall, atLine, atColumn) {}
    link<astType> type;  // an astBuiltin where the parser made the node
    list<astExpression> parameters;
};

/// A null operand belongs to a source whose error is already reported.
struct astUnaryExpression : astExpression {
    link<astExpression> operand;

protected:
    astUnaryExpression(ExpressionKind what, astExpression* of, std::uint64_t atLine,
                       std::uint64_t atColumn)
        : astExpression(what, atLine, atColumn), operand(of) {}
};

struct astPostIncrementExpression : astUnaryExpression {
    astPostIncrementExpression(astExpression* of, std::uint64_t atLine, std::uint64_t atColumn)
        : astUnaryExpression(ExpressionKind::postIncrement, of, atLine, atColumn) {}
};

struct astPostDecrementExpression : astUnaryExpression {
    astPostDecrementExpression(astExpression* of, std::uint64_t atLine, std::uint64_t atColumn)
        : astUnaryExpression(ExpressionKind::postDecrement, of, atLine, atColumn) {}
};

struct astUnaryMinusExpression : astUnaryExpression {
    astUnaryMinusExpression(astExpression* of, std::uint64_t atLine, std::uint64_t atColumn)
        : astUnaryExpression(ExpressionKind::unaryMinus, of, atLine, atColumn) {}
};

struct astUnaryPlusExpression : astUnaryExpression {
    astUnaryPlusExpression(astExpression* of, std::uint64_t atLine, std::uint64_t atColumn)
        : astUnaryExpression(ExpressionKind::unaryPlus, of, atLine, atColumn) {}
};

struct astUnaryBitNotExpression : astUnaryExpression {
    astUnaryBitNotExpression(astExpression* of, std::uint64_t atLine, std::uint64_t atColumn)
        : astUnaryExpression(ExpressionKind::unaryBitNot, of, atLine, atColumn) {}
};

struct astUnaryLogicalNotExpression : astUnaryExpression {
    astUnaryLogicalNotExpression(astExpression* of, std::uint64_t atLine, std::uint64_t atColumn)
        : astUnaryExpression(ExpressionKind::unaryLogicalNot, of, atLine, atColumn) {}
};

struct astPrefixIncrementExpression : astUnaryExpression {
    astPrefixIncrementExpression(astExpression* of, std::uint64_t atLine, std::uint64_t atColumn)
        : astUnaryExpression(ExpressionKind::prefixIncrement, of, atLine, atColumn) {}
};

struct astPrefixDecrementExpression : astUnaryExpression {
    astPrefixDecrementExpression(astExpression* of, std::uint64_t atLine, std::uint64_t atColumn)
        : astUnaryExpression(ExpressionKind::prefixDecrement, of, atLine, atColumn) {}
};

/// Chains of binary operators hang to the left and may be as long as the source: walk `operand1`
/// in a loop, not by recursion.
struct astBinaryExpression : astExpression {
    link<astExpression> operand1;
    link<astExpression> operand2;

protected:
    astBinaryExpression(ExpressionKind what, std::uint64_t atLine, std::uint64_t atColumn)
        : astExpression(what, atLine, atColumn) {}
};

/// The comma operator.
struct astSequenceExpression : astBinaryExpression {
    astSequenceExpression(std::uint64_t atLine, std::uint64_t atColumn)
        : astBinaryExpression(ExpressionKind::sequence, atLine, atColumn) {}
};

struct astAssignmentExpression : astBinaryExpression {
    astAssignmentExpression(Operator id, std::uint64_t atLine, std::uint64_t atColumn)
        : astBinaryExpression(ExpressionKind::assignment, atLine, atColumn), assignment(id) {}
    Operator assignment;  // assign to bit_or_assign
};

struct astOperationExpression : astBinaryExpression {
    astOperationExpression(Operator id, std::uint64_t atLine, std::uint64_t atColumn)
        : astBinaryExpression(ExpressionKind::operation, atLine, atColumn), operation(id) {}
    Operator operation;  // multiply to logical_or
};

struct astTernaryExpression : astExpression {
    astTernaryExpression(std::uint64_t atLine, std::uint64_t atColumn)
        : astExpression(ExpressionKind::ternary, atLine, atColumn) {}
    link<astExpression> condition;
    link<astExpression> onTrue;
    link<astExpression> onFalse;
};

// ---- statements

struct astCompoundStatement : astStatement {
    astCompoundStatement(std::uint64_t atLine, std::uint64_t atColumn)
        : astStatement(StatementKind::compound, atLine, atColumn) {}
    list<astStatement> statements;
};

struct astSimpleStatement : astStatement {
protected:
    using astStatement::astStatement;
};

struct astIterationStatement : astSimpleStatement {
protected:
    using astSimpleStatement::astSimpleStatement;
};

struct astJumpStatement : astStatement {
protected:
    using astStatement::astStatement;
};

struct astEmptyStatement : astSimpleStatement {
    astEmptyStatement(std::uint64_t atLine, std::uint64_t atColumn)
        : astSimpleStatement(StatementKind::empty, atLine, atColumn) {}
};

struct astDeclarationStatement : astSimpleStatement {
    astDeclarationStatement(std::uint64_t atLine, std::uint64_t atColumn)
        : astSimpleStatement(StatementKind::declaration, atLine, atColumn) {}
    list<astFunctionVariable> variables;
};

struct astExpressionStatement : astSimpleStatement {
    astExpressionStatement(astExpression* wrapped, std::uint64_t atLine, std::uint64_t atColumn)
        : astSimpleStatement(StatementKind::expression, atLine, atColumn), expression(wrapped) {}
    link<astExpression> expression;
};

struct astIfStatement : astSimpleStatement {
    astIfStatement(std::uint64_t atLine, std::uint64_t atColumn)
        : astSimpleStatement(StatementKind::if_, atLine, atColumn) {}
    link<astExpression> condition;
    link<astStatement> thenStatement;
    link<astStatement> elseStatement;  // may be null
};

struct astSwitchStatement : astSimpleStatement {
    astSwitchStatement(std::uint64_t atLine, std::uint64_t atColumn)
        : astSimpleStatement(StatementKind::switch_, atLine, atColumn) {}
    link<astExpression> expression;
    list<astStatement> statements;  // flat, the labels among them
};

struct astCaseLabelStatement : astSimpleStatement {
    astCaseLabelStatement(std::uint64_t atLine, std::uint64_t atColumn)
        : astSimpleStatement(StatementKind::caseLabel, atLine, atColumn) {}
    link<astExpression> condition;  // as written, not folded; null for default
    bool isDefault = false;
};

struct astWhileStatement : astIterationStatement {
    astWhileStatement(std::uint64_t atLine, std::uint64_t atColumn)
        : astIterationStatement(StatementKind::while_, atLine, atColumn) {}
    link<astStatement> condition;  // a declaration statement or an expression statement
    link<astStatement> body;
};

struct astDoStatement : astIterationStatement {
    astDoStatement(std::uint64_t atLine, std::uint64_t atColumn)
        : astIterationStatement(StatementKind::do_, atLine, atColumn) {}
    link<astStatement> body;
    link<astExpression> condition;
};

struct astForStatement : astIterationStatement {
    astForStatement(std::uint64_t atLine, std::uint64_t atColumn)
        : astIterationStatement(StatementKind::for_, atLine, atColumn) {}
    link<astStatement> init;        // may be null
    link<astExpression> condition;  // may be null
    link<astExpression> loop;       // may be null
    link<astStatement> body;
};

struct astContinueStatement : astJumpStatement {
    astContinueStatement(std::uint64_t atLine, std::uint64_t atColumn)
        : astJumpStatement(StatementKind::continue_, atLine, atColumn) {}
};

struct astBreakStatement : astJumpStatement {
    astBreakStatement(std::uint64_t atLine, std::uint64_t atColumn)
        : astJumpStatement(StatementKind::break_, atLine, atColumn) {}
};

struct astReturnStatement : astJumpStatement {
    astReturnStatement(std::uint64_t atLine, std::uint64_t atColumn)
        : astJumpStatement(StatementKind::return_, atLine, atColumn) {}
    link<astExpression> expression;  // may be null
};

struct astDiscardStatement : astJumpStatement {
    astDiscardStatement(std::uint64_t atLine, std::uint64_t atColumn)
        : astJumpStatement(StatementKind::discard, atLine, atColumn) {}
};

// ---- the root

inline constexpr std::size_t kPrintBufferSize = 4096;

/// The root of a parsed shader; no node itself. It lies in the tree's arena, so new nodes for the
/// tree are made with `unit.home.make<astX>(...)`.
struct astTU {
    // cppcheck-suppress uninitMemberVar ; printBuffer is scratch, written before it is read
    astTU(arena& memory, std::uint32_t stage) : shaderType(stage), home(memory) {}
    astTU(const astTU&) = delete;
    astTU& operator=(const astTU&) = delete;

    std::uint32_t shaderType;  // kShader...; two more numbers, 0 and 4, are stages without a rule
    link<astVersionDirective> versionDirective;  // null without #version
    list<astExtensionDirective> extensionDirectives;
    list<astDefineDirective> defineDirectives;
    list<astFunction> functions;          // definitions and prototypes, in source order
    list<astFunctionCall> functionCalls;  // as the parser finished them: inner before outer
    list<astGlobalVariable> globals;
    list<astStruct> structures;
    list<astInterfaceBlock> interfaceBlocks;
    std::uint32_t reserved = 0;
    arena& home;
    char printBuffer[kPrintBufferSize];  // belongs to the printer; not initialised
};

}  // namespace glsl
