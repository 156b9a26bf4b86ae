#pragma once

/// What an author can write that is translated, and then refused by the HLSL compiler or drawn
/// otherwise than on OpenGL. Each has a name and a sentence: what happens, and what to write.

#include <cstddef>
#include <string_view>

namespace diagnostics {

enum class Trap {
    // expressions
    kChainedTernary,
    kTernaryArgument,
    kNotEqualTernary,
    kVectorTimesMatrix,
    kMatrixSum,
    kMatrixColumn,
    kMatrixScaled,
    kVectorEquality,
    kVertexOutput,
    kSwizzleLetters,
    kBoolCast,
    kVectorCut,
    kMatrixCut,
    kMat2Number,
    kMatrixArguments,
    kFloatRange,
    kFloatTiny,
    kDoubleConstant,
    kTwoSigns,
    kAssignmentOperand,
    kLogicalXor,
    // calls
    kUnknownFunction,
    kIntComparison,
    kMixArguments,
    kModNegative,
    kInputNumber,
    kAudioRead,
    // functions
    kBuiltinName,
    kInout,
    kStructReturn,
    kUnnamedParameter,
    kParameterName,
    kOutArray,
    kMainPrototype,
    // declarations
    kBoolWithoutValue,
    kStructWithoutValue,
    kUnknownType,
    kArrayOfArrays,
    kArrayCopy,
    kUnsizedArray,
    kAnonymousStruct,
    kFieldName,
    kHlslWord,
    kInputName,
    kConstantName,
    // globals
    kGlobalFragCoord,
    kBlock,
    kLayout,
    kStorageWord,
    kFragmentInput,
    kFragmentOutput,
    kVertexInputArray,
    kVertexInputAgain,
    kOutputNames,
    kOutputSize,
    // statements
    kForDeclarations,
    kWhileDeclaration,
    kFallThrough,
    kVectorIndex,
    kLoopRead,
    // parameters of the effect
    kScalarArrayParameter,
    kSmallMatrixParameter,
    // directives
    kVersion,
    kExtension,
    kIfDirective,
};
inline constexpr size_t kTrapCount = static_cast<size_t>(Trap::kIfDirective) + 1;

struct TrapRow {
    Trap trap;
    std::string_view name;      // as it stands behind the warning, in brackets
    std::string_view sentence;  // without a full stop
};

/// All rows, in the order of the enumeration.
const TrapRow (&trap_table())[kTrapCount];

}  // namespace diagnostics
