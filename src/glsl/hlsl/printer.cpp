#include "glsl/hlsl/printer.h"

#include <algorithm>

#include "DirectXEffectMgr/Source/logging/logging.h"
#include "glsl/hlsl/literals.h"
#include "glsl/hlsl/naming.h"
#include "glsl/hlsl/prelude.h"

namespace glsl {

namespace {

constexpr std::string_view kStageKey = "isVertexShader";
constexpr std::string_view kPositionName = "gl_Position";
constexpr std::string_view kCoordinateName = "tc";
constexpr std::string_view kLoopLevelKey = "env__________isTopForLevel";
constexpr std::string_view kMatrixSubscriptKey = "env__________isDidMatArraySubScriptObject";

constexpr uint32_t kStageHash = hashName(kStageKey);
constexpr uint32_t kPositionHash = hashName(kPositionName);
constexpr uint32_t kCoordinateHash = hashName(kCoordinateName);
constexpr uint32_t kLoopLevelHash = hashName(kLoopLevelKey);
constexpr uint32_t kMatrixSubscriptHash = hashName(kMatrixSubscriptKey);

// A guess at the output's length, on the large side for usual effects.
size_t expectedSize(const astTU& unit) {
    constexpr size_t kFixed = 900;  // structs, textures, wrapper
    constexpr size_t kPerGlobal = 64;
    constexpr size_t kPerFunction = 400;
    // A long text grows once at most: growing copies, and touches memory that nothing was in yet.
    constexpr size_t kTreeBytesPerByte = 5;
    const size_t byParts = kPrelude.size() + kFixed + kPerGlobal * unit.globals.size() +
                           kPerFunction * unit.functions.size();
    return std::max(byParts, unit.home.footprint() / kTreeBytesPerByte);
}

}  // namespace

Printer::Printer(const PrintJob& job, std::string& out,
                 const std::shared_ptr<Environment>& parentScope, std::vector<LineMark>* lineMarks)
    : job_(job),
      text_(out, expectedSize(job.unit)),
      lineMarks_(lineMarks),
      scopes_(parentScope, job.unit.home),
      stage_(scopes_.intern(kStageKey, kStageHash)),
      position_(scopes_.intern(kPositionName, kPositionHash)),
      coordinate_(scopes_.intern(kCoordinateName, kCoordinateHash)),
      loopLevel_(scopes_.intern(kLoopLevelKey, kLoopLevelHash)),
      matrixSubscript_(scopes_.intern(kMatrixSubscriptKey, kMatrixSubscriptHash)) {}

void Printer::cutPiece(size_t size) {
    text_.truncate(text_.size() - size + (kPieceLimit - 1));
    if (!isMuted_) {
        log_error("printDX print size is larger than %d", static_cast<int>(kPieceLimit));
    }
}

void Printer::putNumber(int32_t number) {
    LiteralBuffer buffer;
    text_.put(intLiteral(number, buffer));
}

void Printer::complain(const char* format, const astNode& at) {
    if (!isMuted_) {
        log_error(format, static_cast<int>(at.line), static_cast<int>(at.column));
    }
}

void Printer::giveUp(const char* reason) {
    if (!hasGivenUp_) {
        hasGivenUp_ = true;
        log_error("the shader can't be printed: %s", reason);
    }
}

bool Printer::mayRepeat(size_t bytes) {
    if (bytes > kMaxRepeatedBytes - repeatedBytes_) {
        giveUp("too much text repeats");
        return false;
    }
    repeatedBytes_ += bytes;
    return true;
}

bool Printer::mayRepeatPiece(size_t bytes) {
    if (bytes > kMaxRepeatedPiece) {
        giveUp("a text that repeats is too long");
        return false;
    }
    return mayRepeat(bytes);
}

Symbol& Printer::variableSymbol(std::string_view name) {
    Symbol& symbol = scopes_.intern(name);
    if (symbol.variable == nullptr) {
        const std::string_view avoided = avoidKeyword(name, false);
        symbol.variable = avoided.data() == name.data() ? &symbol : &scopes_.intern(avoided);
    }
    return *symbol.variable;
}

Symbol& Printer::variableSymbol(const astVariable& variable) {
    const auto address = reinterpret_cast<uintptr_t>(&variable);
    KnownVariable& known = knownVariables_[(address >> 4 ^ address >> 10) & (kKnownVariables - 1)];
    if (known.variable != &variable) {
        known = {&variable, &variableSymbol(variable.name)};
    }
    return *known.symbol;
}

void Printer::cutInto(Section& section, size_t begin, size_t firstMark) {
    if (lineMarks_ != nullptr) {
        for (size_t i = firstMark; i < lineMarks_->size(); ++i) {
            const LineMark& moved = (*lineMarks_)[i];
            section.marks.push_back(
                {moved.line, moved.offset - begin + section.text.size(), moved.node});
        }
        lineMarks_->resize(firstMark);
    }
    section.text.append(text_.from(begin));
    text_.truncate(begin);
}

void Printer::paste(const Section& section) {
    pasteMarks(section, text_.size());
    text_.put(std::string_view(section.text));
}

void Printer::pasteMarks(const Section& section, size_t at) {
    for (const LineMark& moved : section.marks) {
        lineMarks_->push_back({moved.line, moved.offset + at, moved.node});
    }
}

}  // namespace glsl
