#include "trap_cases.h"

#include <iterator>
#include <string>

namespace diagnostics {

namespace {

using T = Trap;
constexpr TrapFate kNo = TrapFate::kRefused;
constexpr TrapFate kOther = TrapFate::kDrawnOtherwise;
constexpr TrapPlace kFile = TrapPlace::kFile;
constexpr TrapPlace kBody = TrapPlace::kBody;
constexpr TrapPlace kVertex = TrapPlace::kVertex;

// Bodies have the parameter `tc` and `float k`, `vec2 v`, `vec4 v4`, `mat2 m` and `mat3 m3`.
constexpr TrapCase kCases[] = {
    {T::kChainedTernary, kOther, kBody, "float a = k > 0.5 ? 1.0 : k > 0.2 ? 0.5 : 0.0;",
     "float a = k > 0.5 ? 1.0 : (k > 0.2 ? 0.5 : 0.0);"},
    {T::kTernaryArgument, kOther, kBody, "v = vec2(0.2, k > 0.5 ? 1.0 : 0.0);",
     "v = vec2(0.2, (k > 0.5 ? 1.0 : 0.0));"},
    {T::kTernaryArgument, kNo, kBody, "float a = max(0.2, k > 0.5 ? 1.0 : 0.0);",
     "float a = max(0.2, (k > 0.5 ? 1.0 : 0.0));"},
    {T::kTernaryArgument, kNo, kBody, "float a = mix(0.1, 0.2, k > 0.5 ? 1.0 : 0.0);",
     "float a = mix(k > 0.5 ? 1.0 : 0.0, 0.1, 0.2);"},
    {T::kNotEqualTernary, kOther, kBody, "float a = k != 0.0 ? 1.0 : 2.0;",
     "float a = (k != 0.0) ? 1.0 : 2.0;"},
    {T::kNotEqualTernary, kOther, kBody, "float a = (k != 0.0 ? 1.0 : 2.0) * 3.0;",
     "float a = (k == 0.0 ? 2.0 : 1.0) * 3.0;"},
    {T::kNotEqualTernary, kOther, kBody, "float a = (k != 0.0) ? 1.0 : k * 1e-5;",
     "float a = (k != 0.0) ? 1e-5 : (k * 3.0);"},
    {T::kNotEqualTernary, kOther, kBody, "float a = max(k != 0.0 ? 1.0 : 2.0, 0.1);",
     "bool a = k != (k > 0.5 ? 1.0 : 2.0);"},
    {T::kChainedTernary, kOther, kBody, "bool b = true; float a = b ? 1.0 : b ? 0.5 : 0.0;",
     "bool b = true; float a = b ? (b ? 1.0 : 0.5) : 0.0;"},
    {T::kVectorTimesMatrix, kOther, kBody, "vec2 a = v * m;", "vec2 a = transpose(m) * v;"},
    {T::kVectorTimesMatrix, kOther, kBody, "v *= m;", "v *= k;"},
    {T::kMatrixSum, kOther, kBody, "mat2 a = m + m;", "mat2 a = m * m;"},
    {T::kMatrixSum, kOther, kBody, "mat2 a = m - m;", "mat2 a = m * k;"},
    {T::kMatrixColumn, kOther, kBody, "vec2 a = m[0] * v;",
     "vec2 a = m[0]; a = a * v + m[0][1] * v;"},
    {T::kMatrixColumn, kOther, kBody, "v *= m[0];", "vec2 c = m[1]; v *= c;"},
    {T::kMatrixScaled, kNo, kBody, "vec3 a = m3 * 2.0 * v4.xyz;", "vec3 a = m3 * (2.0 * v4.xyz);"},
    {T::kMatrixScaled, kNo, kBody, "vec2 a = (m / k) * v;", "vec2 a = m * v / k;"},
    {T::kVectorEquality, kNo, kBody, "ivec2 i = ivec2(1, 2); if (i == ivec2(1, 2)) { k = 1.0; }",
     "ivec2 i = ivec2(1, 2); if (i.x == 1 && i.y == 2) { k = 1.0; }"},
    {T::kVectorEquality, kNo, kBody, "if (m != m) { k = 1.0; }",
     "if (v4 != v4.bgra || v == v4.xy) { k = 1.0; }"},
    {T::kVertexOutput, kNo, kVertex,
     "void main() {\n    gl_Position = position;\n    gl_Position = mat4(1.0) * gl_Position;\n}\n",
     "void main() {\n    vec4 place = mat4(1.0) * position;\n    gl_Position = place;\n}\n"},
    {T::kVertexOutput, kNo, kVertex,
     "void main() {\n    tc = position.xy;\n    gl_Position = position;\n"
     "    if (tc == position.xy) { tc = texcoord.xy; }\n}\n",
     "void main() {\n    tc = position.xy;\n    gl_Position = position;\n"
     "    if (tc.x > position.x) { tc *= 0.5; }\n}\n"},
    {T::kSwizzleLetters, kNo, kBody, "ivec2 i = ivec2(1, 2); ivec2 j = (i + i).st;",
     "ivec2 i = ivec2(1, 2); ivec2 j = (i + i).xy; v = v4.st;"},
    {T::kBoolCast, kOther, kBody, "bool a = bool(k);", "bool a = k != 0.0;"},
    {T::kVectorCut, kOther, kBody, "vec3 a = vec3(v4);", "vec3 a = v4.xyz + vec3(v, 1.0);"},
    {T::kVectorCut, kOther, kVertex,
     "void main() {\n    gl_Position = position;\n    vec2 a = vec2(tc);\n}\n",
     "void main() {\n    gl_Position = vec4(position);\n    vec2 a = tc;\n}\n"},
    {T::kMatrixCut, kOther, kBody, "mat3 a = mat3(PREFIX(m4));", "mat3 a = mat3(1.0);"},
    {T::kMat2Number, kOther, kBody, "mat2 a = mat2(1.0);", "mat2 a = mat2(1.0, 0.0, 0.0, 1.0);"},
    {T::kMatrixArguments, kNo, kBody, "mat2 a = mat2(v, 1.0, 2.0);", "mat2 a = mat2(v, v);"},
    {T::kFloatRange, kNo, kBody, "float a = 1e39;", "float a = 1e38;"},
    {T::kFloatTiny, kOther, kBody, "float a = k + 1e-17;", "float a = k + 1e-16 + 0.0;"},
    {T::kDoubleConstant, kOther, kBody, "float a = float(0.123456789lf);",
     "float a = 0.123456789;"},
    {T::kTwoSigns, kNo, kBody, "float a = - -1.0;", "float a = 1.0 - -1.0;"},
    {T::kTwoSigns, kOther, kBody, "float a = -(-k);", "float a = -(k - 1.0);"},
    {T::kAssignmentOperand, kNo, kBody, "float a; float b = -(a = k);",
     "float a; float b = (a = k);"},
    {T::kAssignmentOperand, kOther, kBody, "vec4 a; float b = (a = v4).x;",
     "vec4 a; a = v4; float b = a.x;"},
    {T::kLogicalXor, kNo, kBody, "bool a = k > 0.1 ^^ k > 0.9;", "bool a = k > 0.1 || k > 0.9;"},
    {T::kUnknownFunction, kNo, kBody, "mat2 a = inverse(m);", "mat2 a = transpose(m);"},
    {T::kUnknownFunction, kNo, kBody, "float a = asinh(k);", "float a = asin(k);"},
    {T::kIntComparison, kNo, kBody, "vec2 a = lessThan(ivec2(1, 2), ivec2(2, 1));",
     "vec2 a = lessThan(v, v4.xy);"},
    {T::kMixArguments, kNo, kFile, "float half_of(float a) { return mix(a, 0.5); }\n",
     "float half_of(float a) { return mix(a, 0.5, 0.5); }\n"},
    {T::kModNegative, kOther, kBody, "float a = mod(-k, 1.0);", "float a = mod(k, 1.0);"},
    {T::kModNegative, kOther, kBody, "float a = mod(k - 1.0, 1.0);",
     "float a = mod(k + 1.0, 1.0);"},
    {T::kInputNumber, kNo, kBody, "v4 = INPUT3(tc);", "v4 = INPUT2(tc) + INPUT(tc);"},
    {T::kInputNumber, kNo, kBody, "v4 = AUDIO_INPUT(tc);", "v4 = INPUT1(tc);"},
    {T::kAudioRead, kOther, kBody, "v4 = AUDIO_INPUT1(tc);", "v4 = INPUT1(tc);"},
    {T::kBuiltinName, kOther, kFile, "float fract(float a) {\n    return 1.0;\n}\n",
     "float fraction(float a) {\n    return 1.0;\n}\n"},
    {T::kInout, kOther, kFile, "void add(inout float a) {\n    a += 1.0;\n}\n",
     "void add(in float a, out float b) {\n    b = a + 1.0;\n}\n"},
    {T::kStructReturn, kNo, kFile,
     "struct S {\n    float a1;\n};\nS g1;\nS make() {\n    return g1;\n}\n",
     "struct S {\n    float a1;\n};\nS g1;\nvoid make(out S s) {\n    s = g1;\n}\n"},
    {T::kUnnamedParameter, kNo, kFile, "float twice(float);\n", "float twice(float number);\n"},
    {T::kParameterName, kNo, kFile, "float f(vec4 gl_FragCoord) {\n    return gl_FragCoord.x;\n}\n",
     "float f(vec4 place) {\n    return place.x + gl_FragCoord.x;\n}\n"},
    {T::kOutArray, kNo, kFile, "void f(out float a[2]) {\n    a[0] = 1.0;\n    a[1] = 1.0;\n}\n",
     "float f(in float a[2]) {\n    return a[0];\n}\n"},
    {T::kMainPrototype, kNo, kVertex,
     "void main();\nvoid main() {\n    gl_Position = position;\n}\n",
     "void set(vec4 p);\nvoid set(vec4 p) {\n    gl_Position = p;\n}\nvoid main() {\n"
     "    set(position);\n}\n"},
    {T::kBoolWithoutValue, kNo, kBody, "bool found;", "bool found = false;"},
    {T::kStructWithoutValue, kNo, kFile,
     "struct S {\n    float a1;\n};\nfloat f() {\n    S s;\n    return s.a1;\n}\n",
     "struct S {\n    float a1;\n};\nS g1;\nfloat f() {\n    S s = g1;\n    return s.a1;\n}\n"},
    {T::kUnknownType, kNo, kBody, "bvec2 a = bvec2(true, false);", "ivec2 a = ivec2(1, 0);"},
    {T::kUnknownType, kNo, kFile, "uvec2 f(float a1) {\n    return f(a1);\n}\n",
     "uint f(float a1) {\n    return 1u;\n}\n"},
    {T::kArrayOfArrays, kNo, kBody, "float a[2][3];", "float a[6];"},
    {T::kArrayCopy, kNo, kBody, "float a[2]; float b[2] = a;", "float a[2]; float b[2]; b = a;"},
    {T::kUnsizedArray, kNo, kFile, "float list[];\n", "float list[4];\n"},
    {T::kAnonymousStruct, kNo, kFile, "struct {\n    float a1;\n} s1;\n",
     "struct S {\n    float a1;\n};\nS s1;\n"},
    {T::kFieldName, kNo, kFile,
     "struct S {\n    float line;\n};\nS s1;\nfloat f() {\n    return s1.line;\n}\n",
     "struct S {\n    float lines;\n};\nS s1;\nfloat f() {\n    float line = s1.lines;\n"
     "    return line;\n}\n"},
    {T::kHlslWord, kNo, kBody, "float register = 0.5;", "float sample = 0.5; float line = 0.5;"},
    {T::kHlslWord, kNo, kFile, "float technique(float a1) {\n    return a1;\n}\n",
     "float techniques(float a1) {\n    return a1;\n}\n"},
    {T::kInputName, kNo, kBody, "float INPUT1 = 0.5; v4 = INPUT1(tc);",
     "float INPUTS = 0.5; v4 = INPUT1(tc);"},
    {T::kConstantName, kNo, kFile, "const float a = 0.5;\n", "const float AMOUNT = 0.5;\n"},
    {T::kConstantName, kNo, kFile,
     "const float speed = 0.5;\nfloat f() {\n    float speed = 1.0;\n    return speed;\n}\n",
     "const float speed = 0.5;\nfloat f() {\n    float slow = speed;\n    return slow;\n}\n"},
    {T::kGlobalFragCoord, kNo, kFile, "vec2 place = vec2(gl_FragCoord.x, 1.0);\n",
     "vec2 place = vec2(1.0, 1.0);\n"},
    {T::kBlock, kNo, kFile, "uniform Values {\n    float amount1;\n} values1;\n",
     "uniform float amount1;\n"},
    {T::kLayout, kNo, kFile, "layout(location = 1) uniform float amount1;\n",
     "uniform float amount1;\n"},
    {T::kStorageWord, kNo, kFile, "varying vec2 q1;\n", "vec2 q1;\n"},
    {T::kStorageWord, kNo, kVertex,
     "attribute vec3 normal;\nvoid main() {\n    gl_Position = vec4(normal, 1.0);\n}\n",
     "in vec3 normal;\nvoid main() {\n    gl_Position = vec4(normal, 1.0);\n}\n"},
    {T::kFragmentInput, kNo, kFile, "customize_in vec2 q1;\nfloat f() {\n    return q1.x;\n}\n",
     "vec2 q1;\nfloat f() {\n    return q1.x;\n}\n"},
    {T::kFragmentOutput, kNo, kFile, "out vec4 color;\nvoid f() {\n    color = vec4(1.0);\n}\n",
     "vec4 color;\nvoid f() {\n    color = vec4(1.0);\n}\n"},
    {T::kVertexInputArray, kNo, kVertex,
     "in float weights[2];\nvoid main() {\n    gl_Position = position * weights[1];\n}\n",
     "in float weights;\nvoid main() {\n    gl_Position = position * weights;\n}\n"},
    {T::kVertexInputAgain, kNo, kVertex,
     "in vec4 position;\nvoid main() {\n    gl_Position = position;\n}\n",
     "in vec4 place;\nvoid main() {\n    gl_Position = place;\n}\n"},
    {T::kOutputNames, kNo, kVertex,
     "out vec2 q;\nout vec2 q0;\nvoid main() {\n    gl_Position = position;\n}\n",
     "out vec2 q;\nout vec2 q1;\nvoid main() {\n    gl_Position = position;\n}\n"},
    {T::kOutputSize, kNo, kVertex,
     "const int COUNT = 2;\nout float q[COUNT];\nvoid main() {\n    gl_Position = position;\n}\n",
     "const int COUNT = 2;\nout float q[2];\nvoid main() {\n    gl_Position = position;\n}\n"},
    {T::kForDeclarations, kNo, kBody, "for (int i = 0, j = 1; i < 3; i++) { k += 1.0; }",
     "int j = 1; for (int i = 0; i < 3; i++) { k += 1.0; }"},
    {T::kWhileDeclaration, kNo, kBody, "while (bool go = k < 1.0) { k += 1.0; }",
     "while (k < 1.0) { k += 1.0; }"},
    {T::kFallThrough, kNo, kBody, "switch (PREFIX(n)) { case 1: k = 1.0; case 2: k = 2.0; break; }",
     "switch (PREFIX(n)) { case 1: case 2: k = 2.0; break; default: { k = 3.0; break; } }"},
    {T::kVectorIndex, kNo, kBody, "for (int i = 0; i < PREFIX(n); i++) { v4[i] = 0.5; }",
     "float a[4]; for (int i = 0; i < 4; i++) { a[i] = v4[i]; } v4[1] = 0.5;"},
    {T::kLoopRead, kNo, kBody,
     "int i = 0; while (i < int(INPUT1(tc).r * 8.0)) { v4 += INPUT1(tc * float(i)); i++; }",
     "for (int i = 0; i < PREFIX(n); i++) { v4 += INPUT1(tc * float(i)); }"},
    {T::kScalarArrayParameter, kOther, kBody, "k = PREFIX(w)[1];", "k = PREFIX(c)[1].x;"},
    {T::kSmallMatrixParameter, kOther, kBody, "v = PREFIX(m2) * v;", "v4 = PREFIX(m4) * v4;"},
    {T::kSmallMatrixParameter, kOther, kBody, "v = (PREFIX(m3) * v4.xyz).xy;",
     "v = (m3 * v4.xyz).xy;"},
    {T::kVersion, kNo, kFile, "#version 330 core\n", "// #version 330 core\n"},
    {T::kExtension, kNo, kFile, "#extension fancy : enable\n", "float extension;\n"},
    {T::kIfDirective, kOther, kFile, "#if 1\nfloat one;\n#endif\n",
     "#define LEVEL 2\n#if LEVEL == 2  // two\nfloat one;\n#endif\n"},
    {T::kIfDirective, kOther, kFile, "#define LEVEL 2\n#if defined(LEVEL)\nfloat one;\n#endif\n",
     "#define LEVEL 2\n#if LEVEL\nfloat one;\n#endif\n"},
};

constexpr const char* kPlainEntry = "vec4 FUNCNAME(vec2 tc) {\n    return INPUT1(tc);\n}\n";
constexpr const char* kBodyHead =
    "vec4 FUNCNAME(vec2 tc) {\n"
    "    float k = PREFIX(k); vec4 v4 = PREFIX(q); vec2 v = v4.xy;\n"
    "    mat2 m = mat2(v, v); mat3 m3 = mat3(k);\n";

}  // namespace

const TrapCase* trap_cases(size_t& count) {
    count = std::size(kCases);
    return kCases;
}

std::string source_of(const TrapCase& row, const char* text) {
    switch (row.place) {
        case TrapPlace::kFile:
            return std::string(text) + kPlainEntry;
        case TrapPlace::kBody:
            return std::string(kBodyHead) + text + "\n    return v4;\n}\n";
        case TrapPlace::kVertex:
            break;
    }
    return text;
}

EffectFacts facts_of_cases() {
    EffectFacts facts;
    facts.inputs = 2;
    facts.audio = 1;
    facts.params = {{"int", "n"},
                    {"float", "k"},
                    {"vec4", "q"},
                    {"mat2", "m2"},
                    {"mat3", "m3"},
                    {"mat4", "m4"},
                    {"float", "w", ParamShape::kArray, 5},
                    {"vec4", "c", ParamShape::kArray, 2}};
    return facts;
}

}  // namespace diagnostics
