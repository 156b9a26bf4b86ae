#pragma once

/// The working class behind printTU(). Its operations stand in the printer_*.cpp files, one for
/// each family of constructs.

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "glsl/ast.h"
#include "glsl/field_index.h"
#include "glsl/hlsl/print_tu.h"
#include "glsl/hlsl/result_classes.h"
#include "glsl/hlsl/scope_stack.h"
#include "glsl/hlsl/small_stack.h"
#include "glsl/hlsl/text_writer.h"
#include "glsl/hlsl/value.h"

namespace glsl {

/// A formatted piece holds less than this; a longer one is cut and reported.
constexpr size_t kPieceLimit = kPrintBufferSize;

/// What printTU() was asked for.
struct PrintJob {
    astTU& unit;
    uint32_t inputCount;
    uint32_t audioInputCount;
    bool hasCustomVertexShader;
    std::string& varyingDeclarations;
    bool isVertexShader;
};

/// Prints one unit, once.
///
/// Everything is printed at the end of one text, in the order in which the parts are walked. What
/// has to stand elsewhere is moved when it is complete: a rule that looks at both operands of an
/// operation rearranges them in place.
///
/// Every print operation returns the value of what it printed; a null node prints nothing and has
/// no class.
class Printer {
public:
    Printer(const PrintJob& job, std::string& out, const std::shared_ptr<Environment>& parentScope,
            std::vector<LineMark>* lineMarks);
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;

    void printUnit();

private:
    // Text that is made before its place in the output is reached, with its marks.
    struct Section {
        std::string text;
        std::vector<LineMark> marks;  // offsets from the section's beginning
    };

    // ---- translation unit (print_tu.cpp)
    void passVertexGlobals();
    void passVertexOutput(astGlobalVariable& global);
    void passFragmentGlobals();
    void passFileScope();
    void printConstant(astGlobalVariable& global);
    void printStaticGlobal(astGlobalVariable& global);
    void printVertexInputStruct();
    void printVertexOutputStruct();
    void printInputTextures();
    void printInputTexture(std::string_view name, uint32_t number, uint32_t place);
    void printDirectives();
    void printFunctions();
    void printVertexMain(astFunction& function);
    void printVertexWrapper();

    // ---- types (printer_types.cpp)
    Value printType(astType* type);
    static Value valueOf(astType* type);  // of printType(), with no text
    void printDefaultValue(astType* type);
    static size_t defaultValueSize(astType* type);
    void printStorage(int32_t storage);
    void printAuxiliary(int32_t auxiliary);
    void printMemory(uint32_t memory);
    void printInterpolation(int32_t interpolation);

    // ---- declarations (printer_declarations.cpp)
    enum Flags : uint32_t { kSemicolon = 1, kLineEnd = 2 };
    Value printDeclaration(astVariable& variable);
    Value printFunctionParameter(astFunctionParameter& parameter);
    void printFunction(astFunction& function);
    void printHiddenParameter(bool first);
    void printClosingReturn(astFunction& function, const Value& result);
    Value printFunctionVariable(astFunctionVariable& variable, uint32_t flags);
    Value printGlobalVariable(astGlobalVariable& global);
    void printLayout(const list<astLayoutQualifier>& qualifiers);
    void printArraySizes(const list<astExpression>& sizes);
    void printDefaultElements(const astVariable& variable);
    void printInitialValues(const list<astExpression>& sizes, const list<astExpression>& values);
    void printInitialValue(astExpression* value);
    void printStruct(astStruct& structure);
    void printInterfaceBlock(astInterfaceBlock& block);
    void printFields(const list<astVariable>& fields);

    // ---- expressions (printer_expressions.cpp)
    astVariable* findField(const astType* type, std::string_view name);
    Value printExpression(astExpression* expression);
    Value printLeaf(astExpression& expression);
    Value printVariableUse(astVariable* variable);
    Value printField(const astFieldOrSwizzle& node, const Value& operand);
    Value printSubscript(const astArraySubscript& node, const Value& operand);

    // ---- what hangs to the left of operators (printer_chains.cpp)
    //
    // (((a + b) * c) - d) is a chain: a leaf with links around it, each of which puts something
    // before the text of its left operand and something behind it. Sources hold chains of any
    // length, so they are walked in a loop.
    struct Link {
        astExpression* node;
        size_t left;        // where the left operand begins
        size_t leftEnd;     // and ends
        size_t operatorAt;  // of an operation: behind the ")" of a parenthesised assignment
        size_t right;       // of an operation: where the right operand begins
        size_t rightEnd;
        OperationForm form;  // of an operation
        uint8_t dimension;   // of the helper that the form names
    };
    Value printChain(astExpression* outermost);
    astExpression* openLinks(astExpression* outermost);
    Value closeLink(size_t place, const Value& left);
    Value closeSequence(const astSequenceExpression& node);
    Value closeTernary(const astTernaryExpression& node);
    Value closeAssignment(size_t place, const Value& left);
    void multiplyAssign(const Link& link, OperationForm form);
    Value closeOperation(size_t place, const Value& left);
    void rearrange(size_t first, size_t end);
    std::string_view keepText(size_t begin);

    // ---- calls (printer_calls.cpp)
    Value printFunctionCall(astFunctionCall& call);
    Value printMix(const astFunctionCall& call);
    Value printAtan(const astFunctionCall& call);
    Value printFract(const astFunctionCall& call);
    Value printComparison(const astFunctionCall& call, std::string_view helper,
                          const char* sizeMessage, const char* classMessage);
    Value printInputCall(astFunctionCall& call);
    Value printAudioInput(const astFunctionCall& call);
    Value printDepthInput(astFunctionCall& call);
    Value printImageInput(const astFunctionCall& call);
    void printFirstArgument(const astFunctionCall& call);
    Value printGeneralCall(const astFunctionCall& call);
    ValueClass printCheckedArguments(const astFunctionCall& call);
    void printArguments(const list<astExpression>& arguments);
    Symbol& calleeSymbol(std::string_view name);

    // Some arguments are walked twice, once for their classes and once for their text. One walk
    // does where the second would print the same; it would not if a depth input's name was
    // shortened, or if the arguments name the very variable that a matrix subscript marks. Then
    // the outermost such list is printed once more. Only the latter can change a class and with it
    // the messages; otherwise they are not given again.
    void beginTwofoldWalk();
    [[nodiscard]] bool needsSecondWalk(size_t begin);
    void endSecondWalk();

    // ---- constructors (printer_constructors.cpp)
    Value printConstructor(astType* type, const list<astExpression>& parameters, const astNode& at);
    void printMatrixArguments(ValueClass kind, const list<astExpression>& parameters,
                              const astNode& at);
    void printVectorArgument(ValueClass kind, const list<astExpression>& parameters);
    Value printTwofold(astExpression* argument);

    // ---- statements (printer_statements.cpp)
    Value printStatement(astStatement* statement);
    void printStatements(const list<astStatement>& statements);
    Value printCompound(const astCompoundStatement& node);
    void printIf(const astIfStatement& node);
    void printSwitch(const astSwitchStatement& node);
    void printCaseLabel(const astCaseLabelStatement& node);
    void printWhile(const astWhileStatement& node);
    void printDo(const astDoStatement& node);
    void printFor(const astForStatement& node);
    void printForHeader(const astForStatement& node);
    void dropLoopAttribute(size_t begin, size_t firstMark);
    void printVariables(const astDeclarationStatement& node, uint32_t flags);
    void printExpressionStatement(const astExpressionStatement& node, uint32_t flags);
    Value printReturn(const astReturnStatement& node);

    // ---- common (printer.cpp)
    // Appends a formatted piece; one of kPieceLimit bytes or more is cut.
    void piece(std::string_view a, std::string_view b) {
        text_.put(a, b);
        if (a.size() + b.size() >= kPieceLimit) {
            cutPiece(a.size() + b.size());
        }
    }
    void piece(std::string_view a, std::string_view b, std::string_view c, std::string_view d = {},
               std::string_view e = {}) {
        const size_t begin = text_.size();
        text_.put(a, b);
        text_.put(c, d);
        text_.put(e);
        endPiece(begin);
    }
    // The same for a piece that stands at the end of the text already.
    void endPiece(size_t begin) {
        if (text_.size() - begin >= kPieceLimit) {
            cutPiece(text_.size() - begin);
        }
    }
    void cutPiece(size_t size);
    void putNumber(int32_t number);
    // Reports a message whose format takes line and column.
    void complain(const char* format, const astNode& at);
    void giveUp(const char* reason);
    [[nodiscard]] bool mayRepeat(size_t bytes);
    [[nodiscard]] bool mayRepeatPiece(size_t bytes);

    Symbol& variableSymbol(const astVariable& variable);
    Symbol& variableSymbol(std::string_view name);
    [[nodiscard]] bool inVertexStage() { return scopes_.has(stage_); }

    void mark(const astNode& node) {
        if (lineMarks_ != nullptr &&
            (lineMarks_->empty() || lineMarks_->back().offset != text_.size())) {
            lineMarks_->push_back({node.line, text_.size(), &node});
        }
    }
    [[nodiscard]] size_t markCount() const {
        return lineMarks_ != nullptr ? lineMarks_->size() : 0;
    }
    // Moves the text from `begin` on, with its marks, to the end of a section, and back.
    void cutInto(Section& section, size_t begin, size_t firstMark);
    void paste(const Section& section);
    void pasteMarks(const Section& section, size_t at);

    // A variable's symbol is asked for at each use; the slot follows from the node's address.
    struct KnownVariable {
        const astVariable* variable;
        Symbol* symbol;
    };
    static constexpr size_t kKnownVariables = 64;  // a power of two

    const PrintJob job_;
    TextWriter text_;
    std::vector<LineMark>* const lineMarks_;  // null if nobody asks
    ScopeStack scopes_;
    Symbol& stage_;            // has an entry while a vertex stage is printed
    Symbol& position_;         // gl_Position
    Symbol& coordinate_;       // tc
    Symbol& loopLevel_;        // has an entry while a `for` is open
    Symbol& matrixSubscript_;  // has an entry once a matrix was subscripted

    std::array<KnownVariable, kKnownVariables> knownVariables_{};
    SmallStack<Link, 16> links_;
    std::string kept_;  // keepText() of more than the unit's buffer holds

    Section constantBuffer_;
    Section staticGlobals_;
    Section varyings_;  // marks only: the text stands in the job's varyingDeclarations
    size_t varyingsBegin_ = 0;
    uint32_t uniformCount_ = 0;

    FieldIndex field_index_;
    uint32_t depth_ = 0;         // nested expressions and statements
    uint32_t twofoldDepth_ = 0;  // nested walks whose text may be dropped
    bool isTextStale_ = false;   // since the outermost of them began
    bool isClassStale_ = false;  // likewise
    bool isMuted_ = false;       // in a second walk: its messages are known already
    bool hasGivenUp_ = false;
    size_t repeatedBytes_ = 0;
};

}  // namespace glsl
