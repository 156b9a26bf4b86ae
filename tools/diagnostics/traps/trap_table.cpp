#include "diagnostics/traps/trap_table.h"

namespace diagnostics {

namespace {

using T = Trap;

constexpr TrapRow kTraps[] = {
    {T::kChainedTernary, "chained-ternary",
     "two ?: in a row are read as (a ? b : c) ? d : e; put parentheses around the inner one"},
    {T::kTernaryArgument, "ternary-argument",
     "a ?: behind another argument swallows the arguments in front of it; put parentheses around "
     "it"},
    {T::kNotEqualTernary, "not-equal-ternary",
     "a ?: begins behind the != in its condition, as if x != (y ? a : b) were written; put "
     "parentheses around the comparison, and around the parts if they hold operators"},
    {T::kVectorTimesMatrix, "vector-times-matrix",
     "vector * matrix draws as matrix * vector does; write transpose(m) * v"},
    {T::kMatrixSum, "matrix-sum",
     "+, - and / between two matrices multiply them; write the elements out"},
    {T::kMatrixColumn, "matrix-column",
     "a column of a matrix multiplies here as if it were the whole matrix; put it into a vector "
     "of its own first"},
    {T::kMatrixScaled, "matrix-scaled",
     "the type of this matrix is lost behind the other operator, so the product with it is "
     "refused or taken element by element; multiply the vector by the number instead"},
    {T::kVectorEquality, "vector-equality",
     "this compares component by component, of which the first alone counts or which is refused; "
     "compare the components one by one"},
    {T::kVertexOutput, "vertex-output",
     "gl_Position and tc have no type for the translator; work with a variable of your own and "
     "set them once"},
    {T::kSwizzleLetters, "swizzle-letters",
     "the letters s, t, p, q are not translated here; write x, y, z, w"},
    {T::kBoolCast, "bool-cast", "bool(x) is true for every x; write x != 0"},
    {T::kVectorCut, "vector-cut",
     "the constructor spreads the first component instead of cutting the vector; write a swizzle "
     "such as .xyz"},
    {T::kMatrixCut, "matrix-cut",
     "a matrix made of a matrix takes its first element alone; write the columns out"},
    {T::kMat2Number, "mat2-number",
     "mat2(s) is not s times the identity; write mat2(s, 0.0, 0.0, s)"},
    {T::kMatrixArguments, "matrix-arguments",
     "a matrix is made of one number, of its columns or of all its elements; other lists are left "
     "out"},
    {T::kFloatRange, "float-range",
     "the number is beyond the range of a float and is refused; write a smaller one"},
    {T::kFloatTiny, "float-tiny", "a number below 5e-17 becomes 0; write a larger one"},
    {T::kDoubleConstant, "double-constant",
     "a double constant keeps six digits behind the point; write a float"},
    {T::kTwoSigns, "two-signs",
     "two signs in a row become one operator, which is refused or changes the variable; leave "
     "both out or put the inner one into a variable"},
    {T::kAssignmentOperand, "assignment-operand",
     "an assignment in an expression loses its parentheses; make it a statement of its own"},
    {T::kLogicalXor, "logical-xor", "^^ is refused; write a != b for two bools"},
    {T::kUnknownFunction, "unknown-function",
     "HLSL has no such function, so the call is refused; write it out or define it under another "
     "name"},
    {T::kIntComparison, "int-comparison",
     "lessThan and greaterThan take float vectors; compare the components one by one"},
    {T::kMixArguments, "mix-arguments",
     "a call of mix with other than three arguments prints nothing; give the function another "
     "name"},
    {T::kModNegative, "mod-negative",
     "mod of a negative number is negative; write x - y * floor(x / y)"},
    {T::kInputNumber, "input-number",
     "the effect has no such input, so the call is refused; add the input or read another"},
    {T::kAudioRead, "audio-read",
     "this reads the third channel of a texture with one channel, which is always 0; hand the "
     "samples over as parameters or as a picture"},
    {T::kBuiltinName, "builtin-name",
     "calls reach the built-in function of that name; give the function another name"},
    {T::kInout, "inout-parameter",
     "an inout parameter is a copy, what is set in it does not come back; return the value or use "
     "out"},
    {T::kStructReturn, "struct-return",
     "a function that returns a struct or a double is refused; use an out parameter"},
    {T::kUnnamedParameter, "unnamed-parameter",
     "a parameter without a name is refused; name it, in prototypes too"},
    {T::kParameterName, "parameter-name",
     "every function has a parameter of that name already, so it is refused; choose another"},
    {T::kOutArray, "out-array",
     "an out parameter loses its array size and is refused; use a global array"},
    {T::kMainPrototype, "main-prototype", "a prototype of main is refused; leave it out"},
    {T::kBoolWithoutValue, "bool-without-value",
     "a bool or a double needs a value where it is declared, or it is refused; write = false or "
     "= 0.0"},
    {T::kStructWithoutValue, "struct-without-value",
     "a local struct needs a value where it is declared, or it is refused; give it one or make "
     "it a global"},
    {T::kUnknownType, "unknown-type",
     "HLSL does not know this type, so it is refused; use vec2 to vec4, ivec2 to ivec4 or mat2 to "
     "mat4"},
    {T::kArrayOfArrays, "array-of-arrays",
     "an array of arrays without initial values is refused; give all values or use one dimension"},
    {T::kArrayCopy, "array-copy",
     "an array made from another is refused; declare it and assign it in the next statement"},
    {T::kUnsizedArray, "unsized-array", "an array without a size is refused; write the size"},
    {T::kAnonymousStruct, "anonymous-struct", "a struct without a name is refused; name it"},
    {T::kFieldName, "field-name",
     "a member of that name is declared under another than it is used by, and refused; choose "
     "another"},
    {T::kHlslWord, "hlsl-word", "the name is a word of HLSL, so it is refused; choose another"},
    {T::kInputName, "input-name",
     "a variable with an input's name hides the input; choose another"},
    {T::kConstantName, "constant-name",
     "a const global is a macro in front of everything, and its name is used elsewhere too, by "
     "the library's helpers or in this source; choose a longer one"},
    {T::kGlobalFragCoord, "global-fragcoord",
     "gl_FragCoord is known in functions alone, so the initial value is refused; set it in "
     "FUNCNAME"},
    {T::kBlock, "block", "a uniform, buffer, in or out block is refused; use plain parameters"},
    {T::kLayout, "layout", "layout(...) is refused here; leave it out"},
    {T::kStorageWord, "storage-word",
     "the word is refused; write in or out in a vertex source, customize_in in a fragment source, "
     "and nothing for other globals"},
    {T::kFragmentInput, "fragment-input",
     "without a vertex source of the effect's own there is no such input, and it is refused; add "
     "a vertex source or work it out from tc"},
    {T::kFragmentOutput, "fragment-output",
     "a fragment source has no outputs of its own, so its use is refused; return the colour from "
     "FUNCNAME"},
    {T::kVertexInputArray, "vertex-input-array",
     "an input of the vertex stage loses its array size and is refused; use several inputs"},
    {T::kVertexInputAgain, "vertex-input-again",
     "position and texcoord are declared already, and once more is refused; leave it out"},
    {T::kOutputNames, "output-names",
     "an output and another with a 0 behind its name are the same to HLSL, so they are refused; "
     "rename one"},
    {T::kOutputSize, "output-size",
     "the size of an output is read before the constant that it names, so it is refused; write "
     "the number"},
    {T::kForDeclarations, "for-declarations",
     "two declarations in the head of a for are refused; declare one variable in front of the "
     "loop"},
    {T::kWhileDeclaration, "while-declaration",
     "a declaration as the condition of a while is refused; declare it in front of the loop"},
    {T::kFallThrough, "fall-through",
     "a non-empty case that does not end in break is refused; add break, and repeat what the next "
     "case does"},
    {T::kVectorIndex, "vector-index",
     "a component cannot be set by an index that varies; use an array, or an if for each "
     "component"},
    {T::kLoopRead, "loop-read",
     "a while or do that reads an input must have a fixed count, or it is refused; use a for"},
    {T::kScalarArrayParameter, "scalar-array-parameter",
     "of an array of int or float the shader sees the first element, and behind it every fourth "
     "one; use an array of vec4"},
    {T::kSmallMatrixParameter, "small-matrix-parameter",
     "a mat2 or mat3 parameter, and what lies behind it, arrive in the wrong places; use a mat4"},
    {T::kVersion, "version", "#version is refused by the HLSL compiler; leave it out"},
    {T::kExtension, "extension", "#extension is refused by the HLSL compiler; leave it out"},
    {T::kIfDirective, "if-directive",
     "#if knows a name, NAME == text and NAME != text; all else is not worked out; use #ifdef or "
     "such a comparison"},
};

constexpr bool is_in_order() {
    for (size_t i = 0; i < kTrapCount; ++i) {
        if (kTraps[i].trap != static_cast<Trap>(i)) {
            return false;
        }
    }
    return true;
}
static_assert(sizeof(kTraps) / sizeof(kTraps[0]) == kTrapCount && is_in_order(),
              "a row for each trap, in the order of the enumeration");

}  // namespace

const TrapRow (&trap_table())[kTrapCount] {
    return kTraps;
}

}  // namespace diagnostics
