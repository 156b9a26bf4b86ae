#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "glsl/field_index.h"
#include "glsl/keywords.h"
#include "glsl/lexer.h"
#include "glsl/parser.h"

namespace glsl {

/// Tokens that end an expression, as flags.
using EndCondition = std::uint32_t;
inline constexpr EndCondition kEndSemicolon = 1;
inline constexpr EndCondition kEndParenthesis = 2;
inline constexpr EndCondition kEndBracket = 4;
inline constexpr EndCondition kEndColon = 8;
inline constexpr EndCondition kEndComma = 16;

/// What a rule returns that has reported an error: no node, or false.
struct failure {
    template <class T>
    operator T*() const {  // NOLINT(google-explicit-constructor)
        return nullptr;
    }
    operator bool() const { return false; }  // NOLINT(google-explicit-constructor)
};

/// Qualifier words of a declaration.
struct Qualifiers {
    std::int32_t storage = kStorageNone;
    std::int32_t auxiliary = kAuxiliaryNone;
    std::int32_t interpolation = kInterpolationNone;
    std::int32_t precision = kPrecisionNone;
    std::uint32_t memory = 0;
    list<astLayoutQualifier> layoutQualifiers;
};

/// What a declaration has collected before it is known to be a variable or a function.
struct TopLevel : Qualifiers {
    astType* type = nullptr;
    astExpression* initialValue = nullptr;
    list<astExpression> arraySizes;
    std::uint32_t arrayOnType = 0;  // leading arraySizes that stood on the type
    bool isInvariant = false;
    bool isPrecise = false;
    bool isArray = false;
    symbol* name = nullptr;  // null until the name is read
};

/// The recursive descent parser. One token is current; a rule that succeeds leaves the token that
/// its comment names as current, a rule that fails has reported the error unless its comment says
/// otherwise. Every rule gives up at the first failure of another, where nothing else is said.
class parser::impl {
public:
    impl(const char* source, const char* fileName);
    ~impl();
    impl(const impl&) = delete;
    impl& operator=(const impl&) = delete;

    ptr<astTU> parse(std::uint32_t shaderType, FailurePlace* place, std::string* read);
    const char* error() const;
    std::uint64_t errorLine() const { return error_line_; }
    std::uint64_t errorColumn() const { return error_column_; }

private:
    // A level of nesting, as long as it lives.
    class Level {
    public:
        explicit Level(impl& of) : of_(of) { ++of_.depth_; }
        ~Level() { --of_.depth_; }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;

    private:
        impl& of_;
    };
    // Nodes that are being collected for one list. Lists that are collected inside it are done
    // before it goes on, so all share one stack.
    template <class T>
    class Collector {
    public:
        explicit Collector(impl& of) : of_(of), first_(of.collected_.size()) {}
        ~Collector() { of_.collected_.resize(first_); }
        Collector(const Collector&) = delete;
        Collector& operator=(const Collector&) = delete;
        void add(T* node) { of_.collected_.push_back(node); }
        std::size_t size() const { return of_.collected_.size() - first_; }
        T* operator[](std::size_t i) const { return static_cast<T*>(of_.collected_[first_ + i]); }
        list<T> take() const;

    private:
        impl& of_;
        std::size_t first_;
    };

    // parser.cpp: tokens, messages, names
    bool next();
    failure reportError(std::string_view format, std::string_view first = {},
                        std::string_view second = {});
    failure reportLexerError();
    failure reportSyntaxErrorAtTopLevel();
    bool tooDeep();
    // Steps from a keyword over its `(`; reports `message` where there is none.
    bool openParenthesis(const char* message);
    bool isKeyword(Keyword keyword) const {
        return token_->type == TokenKind::keyword && token_->value == id(keyword);
    }
    bool isOperator(Operator id) const {
        return token_->type == TokenKind::operator_ &&
               token_->value == static_cast<std::uint32_t>(id);
    }
    bool is(TokenKind kind) const { return token_->type == kind; }
    bool isType() const {
        return token_->type == TokenKind::keyword && isTypeKeyword(token_->value);
    }
    bool isEndCondition(EndCondition flags) const;
    astBuiltin* parseBuiltin();
    astStruct* findStructure(const symbol& name) const { return name.structure; }
    astVariable* findVariable(const symbol& name) const;
    void enterVariable(symbol& name, astVariable* variable);
    template <class T, class... Arguments>
    T* make(Arguments... arguments) {
        return home_->make<T>(arguments..., lexer_->line(), lexer_->column());
    }
    astTU* parseUnit(std::uint32_t shaderType);
    bool parseDirective();
    bool parseExternal();
    bool addGlobals(std::size_t first_record);
    void addFunction(astFunction* function, symbol& name);

    // parse_toplevel.cpp: declarations outside functions
    bool parseTopLevel();
    bool parseTopLevelItem(TopLevel& level, const TopLevel* continuation);
    bool parseQualifiers(TopLevel& level, const TopLevel* continuation, bool& complete);
    bool takeQualifierWords(Qualifiers& into, bool& consumed);
    template <std::size_t kSize>
    bool takeWord(const struct QualifierWord (&words)[kSize], std::int32_t& value, bool& consumed);
    bool mergeQualifiers(TopLevel& level, std::size_t first_record);
    bool mergeRecord(TopLevel& level, const Qualifiers& record);
    bool checkStage(const Qualifiers& level, const Qualifiers& record);
    bool parseTopLevelType(TopLevel& level);
    bool parseTopLevelArray(TopLevel& level);
    bool parseTopLevelInitialiser(TopLevel& level);
    bool parseLayout(Qualifiers& into, bool& consumed);
    bool parseLayoutQualifier(Qualifiers& into);

    // parse_types.cpp: structures, blocks, functions
    astStruct* parseStruct();
    astInterfaceBlock* parseInterfaceBlock(std::int32_t storage);
    template <class T>
    T* parseFields(std::string_view what);
    bool declareFields(const astInterfaceBlock& block);
    astFunction* parseFunction(const TopLevel& record);
    bool parseParameters(astFunction& function);
    bool parseParameter(Collector<astFunctionParameter>& parameters);
    bool parseParameterToken(astFunctionParameter& parameter);
    bool parseParameterArray(astFunctionParameter& parameter);
    bool parseBody(astFunction& function);

    // parse_statements.cpp
    astStatement* parseStatement();
    astStatement* parseKeywordStatement(bool& known);
    astStatement* parseCompound();
    astStatement* parseIf();
    astStatement* parseSwitch();
    struct SwitchLabels;
    bool checkLabel(const astCaseLabelStatement& label, SwitchLabels& seen);
    astStatement* parseCaseLabel();
    astStatement* parseFor();
    astStatement* parseWhile();
    astStatement* parseDo();
    astStatement* parseReturn();
    template <class T>
    astStatement* parseJump(const char* message);
    astStatement* parseContinue();

    // parse_declaration.cpp: local variables
    astStatement* parseDeclarationOrExpression(EndCondition end);
    astDeclarationStatement* parseDeclaration(EndCondition end);
    bool parseDeclarators(astType* type, bool is_const, EndCondition end,
                          Collector<astFunctionVariable>& variables);
    bool parseDeclaratorName(symbol*& name);
    bool parseLocalArray(astFunctionVariable& variable);
    bool parseArrayInitialiser(astFunctionVariable& variable);
    bool parseBraces(Collector<astExpression>& values);
    failure giveUpDeclaration();

    // parse_expressions.cpp
    struct Postfix;
    astExpression* parseExpression(EndCondition end);
    astExpression* parseBinary(int minimum, astExpression* left, EndCondition end);
    astBinaryExpression* parseBinaryOperator();
    bool checkLvalue(const astExpression* target);
    astExpression* parseUnary(EndCondition end);
    astExpression* parsePostfix(astExpression* operand, EndCondition end);
    astExpression* parseField(astExpression* operand, Postfix& chain);
    astExpression* parseSubscript(astExpression* operand, Postfix& chain);
    astExpression* parseTernary(astExpression* condition, EndCondition end);
    astExpression* parsePrimary(EndCondition end);
    astExpression* parseOperatorPrimary(EndCondition end);
    template <class T>
    astExpression* parsePrefix(EndCondition end);
    astExpression* parseKeywordPrimary(EndCondition end);
    astExpression* parseIdentifier();
    failure reportPrimary(EndCondition end);
    astExpression* parseConstructorCall();
    astExpression* parseFunctionCall();
    bool parseArguments(list<astExpression>& arguments);
    const astType* baseType(const astExpression* bottom) const;

    // evaluator.cpp: constants
    static bool isConstant(const astExpression* expression);
    astExpression* evaluate(astExpression* expression);
    struct Constant;
    class Evaluator;

    arena* home_;     // of the tree; one reference is ours
    arena* scratch_;  // of the lexer and what only the parser needs; freed when the parse is over
    lexer* lexer_;    // in scratch_
    const token* token_ = nullptr;
    astTU* unit_ = nullptr;
    astBuiltin* builtins_[kKeywordCount] = {};
    std::uint32_t scope_ = 0;  // number of the innermost scope; 0 for the global one
    std::uint32_t scopes_made_ = 0;
    std::uint32_t depth_ = 0;             // levels that the parser is in
    std::uint32_t height_ = 0;            // levels in the expression parsed last
    std::size_t constant_text_left_ = 0;  // bytes that the texts of folded constants may yet take
    bool too_deep_ = false;
    FieldIndex field_index_;
    std::vector<astNode*> collected_;
    std::vector<TopLevel> records_;       // declarations of the lists in progress
    std::vector<Qualifiers> qualifiers_;  // qualifier groups of the items in progress
    std::string error_text_;
    std::string out_of_memory_text_;  // made ahead, for when there is no memory
    bool out_of_memory_ = false;
    std::string file_name_;
    std::uint64_t error_line_ = 0;
    std::uint64_t error_column_ = 0;
    std::size_t error_offset_ = 0;
};

template <class T>
list<T> parser::impl::Collector<T>::take() const {
    const std::size_t count = size();
    if (count == 0) {
        return {};
    }
    auto* cells = static_cast<link<T>*>(of_.home_->allocate(count * sizeof(link<T>)));
    for (std::size_t i = 0; i < count; ++i) {
        cells[i] = (*this)[i];
    }
    return {cells, count};
}

}  // namespace glsl
