#include "glsl/hlsl/print_tu.h"

#include <algorithm>

#include "glsl/hlsl/naming.h"
#include "glsl/hlsl/prelude.h"
#include "glsl/hlsl/printer.h"

namespace glsl {

namespace {

constexpr std::string_view kVertexWrapper =
    "\n\nVertexOutput mainVS(VertexInput input)\n{\n    VertexOutput output;\n    main(input);\n";
constexpr std::string_view kVertexWrapperEnd =
    "\n    output.gl_Position.y *= -1.0f;\n    return output;\n}\n    ";

constexpr std::string_view kFragmentWrapper =
    "\n\nfloat4 mainPS(VertexOutput input) : SV_TARGET\n{\n"
    "    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;\n"
    "    float4 gl_FragCoord = float4(_tc * iResolution.xy, 0.0, 1.0);\n"
    "    _tc.y = 1.0 - _tc.y;\n"
    "    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;\n}\n    ";

// The effect's own vertex shader passes the coordinate and a depth on.
constexpr std::string_view kFragmentWrapperOfVertexShader =
    "\n\nfloat4 mainPS(VertexOutput input) : SV_TARGET\n{\n"
    "    float2 _tc = input.gl_Position.xy / input.gl_Position.w / iResolution.xy;\n"
    "    float4 gl_FragCoord = float4(_tc * iResolution.xy, "
    "input.gl_Position.z / input.gl_Position.w, 1.0);\n"
    "    return FUNCNAME(input.tc, input, gl_FragCoord).zyxw;\n}\n    ";

constexpr std::string_view kProfiles[] = {"core\n", "compatibility\n", "es\n"};
constexpr std::string_view kBehaviors[] = {"enable\n", "require\n", "warn\n", "disable\n"};

template <size_t kCount>
std::string_view entry(const std::string_view (&table)[kCount], int32_t number) {
    return number >= 0 && static_cast<size_t>(number) < kCount ? table[number] : std::string_view{};
}

}  // namespace

void printTU(astTU& unit, uint32_t inputCount, uint32_t audioInputCount, bool hasCustomVertexShader,
             std::string& out, std::string& varyingDeclarations,
             const std::shared_ptr<Environment>& parentScope, bool isVertexShader,
             std::vector<LineMark>* lineMarks) {
    const PrintJob job{
        unit,          inputCount, audioInputCount, hasCustomVertexShader, varyingDeclarations,
        isVertexShader};
    Printer(job, out, parentScope, lineMarks).printUnit();
}

void Printer::printUnit() {
    varyingsBegin_ = job_.isVertexShader ? job_.varyingDeclarations.size() : 0;
    if (job_.isVertexShader) {
        scopes_.set(stage_, {ValueClass::boolean});
        passVertexGlobals();
    } else {
        passFragmentGlobals();
    }
    passFileScope();
    text_.put(kPrelude);
    if (job_.isVertexShader) {
        printVertexInputStruct();
    }
    printVertexOutputStruct();
    printInputTextures();
    printDirectives();
    for (astStruct* const structure : job_.unit.structures) {
        if (structure != nullptr) {
            printStruct(*structure);
        }
    }
    paste(staticGlobals_);
    for (astInterfaceBlock* const block : job_.unit.interfaceBlocks) {
        if (block != nullptr) {
            printInterfaceBlock(*block);
        }
    }
    printFunctions();
    if (job_.isVertexShader) {
        printVertexWrapper();
    } else {
        text_.put(job_.hasCustomVertexShader ? kFragmentWrapperOfVertexShader : kFragmentWrapper);
    }
    if (hasGivenUp_) {
        text_.put("\n#error the text is incomplete\n");
    }
}

// Enters what the vertex stage takes in and hands on, and prints the variables that are handed on.
void Printer::passVertexGlobals() {
    text_.put("static float4 gl_Position;\nstatic float2 tc;\n");
    for (astGlobalVariable* const global : job_.unit.globals) {
        if (global == nullptr) {
            continue;
        }
        if (global->storage == kStorageIn) {
            scopes_.set(variableSymbol(*global), KeyFamily::vertexInput, valueOf(global->baseType));
        } else if (global->storage == kStorageOut) {
            passVertexOutput(*global);
        } else if (global->storage == kStorageUniform) {
            ++uniformCount_;
        }
    }
}

void Printer::passVertexOutput(astGlobalVariable& global) {
    Symbol& symbol = variableSymbol(global);
    if (&symbol == &position_ || &symbol == &coordinate_) {
        return;
    }
    mark(global);
    text_.put("static ");
    printDeclaration(global);
    text_.put(";\n");

    const size_t begin = text_.size();
    text_.put("    ");
    printDeclaration(global);
    text_.put(" : __");
    text_.put(symbol.name);
    text_.put(";\n");
    std::string& varyings = job_.varyingDeclarations;
    if (lineMarks_ != nullptr) {
        varyings_.marks.push_back({global.line, varyings.size() - varyingsBegin_, &global});
    }
    varyings.append(text_.from(begin));
    text_.truncate(begin);
    scopes_.set(symbol, KeyFamily::vertexOutput, valueOf(global.baseType));
}

void Printer::passFragmentGlobals() {
    for (astGlobalVariable* const global : job_.unit.globals) {
        if (global == nullptr) {
            continue;
        }
        if (global->storage == kStorageIn) {
            scopes_.set(variableSymbol(*global), KeyFamily::vertexOutput,
                        valueOf(global->baseType));
        } else if (global->storage == kStorageUniform) {
            ++uniformCount_;
        }
    }
}

// Constants become macros at once; members of the constant buffer and static variables wait for
// their place.
void Printer::passFileScope() {
    for (astGlobalVariable* const global : job_.unit.globals) {
        if (global == nullptr || global->storage == kStorageIn || global->storage == kStorageOut) {
            continue;
        }
        const size_t begin = text_.size();
        const size_t firstMark = markCount();
        if (global->storage == kStorageConst) {
            printConstant(*global);
        } else if (global->storage == kStorageUniform) {
            mark(*global);
            const Value value = printGlobalVariable(*global);
            cutInto(constantBuffer_, begin, firstMark);
            scopes_.set(variableSymbol(*global), KeyFamily::constantBuffer, value);
        } else {
            printStaticGlobal(*global);
            cutInto(staticGlobals_, begin, firstMark);
        }
    }
}

// On purpose: a constant without a value leaves the line open.
void Printer::printConstant(astGlobalVariable& global) {
    mark(global);
    Symbol& symbol = variableSymbol(global);
    piece("#define ", symbol.name);
    if (global.initialValue != nullptr) {
        text_.put(" (");
        printExpression(global.initialValue);
        text_.put(")\n");
    }
    scopes_.set(symbol, KeyFamily::constantBuffer, valueOf(global.baseType));
}

void Printer::printStaticGlobal(astGlobalVariable& global) {
    Symbol& symbol = variableSymbol(global);
    if (global.name == "gl_FragCoord") {  // every function has it as a parameter
        scopes_.set(symbol, {ValueClass::vec4});
        return;
    }
    mark(global);
    text_.put("static ");
    const Value value = printGlobalVariable(global);
    scopes_.set(symbol, KeyFamily::constantBuffer, value);
}

void Printer::printVertexInputStruct() {
    text_.put("\nstruct VertexInput\n{\n");
    for (astGlobalVariable* const global : job_.unit.globals) {
        if (global == nullptr || global->storage != kStorageIn) {
            continue;
        }
        mark(*global);
        const std::string_view name = variableSymbol(*global).name;
        const std::string_view end = needsSemanticMark(name) ? "_" : "";
        text_.put("    ");
        printType(global->baseType);
        for (const std::string_view part :
             {std::string_view(" "), name, end, std::string_view(" : "), name, end}) {
            text_.put(part);
        }
        text_.put(";\n");
    }
    text_.put("\n};\n");
}

void Printer::printVertexOutputStruct() {
    text_.put(
        "\nstruct VertexOutput\n{\n    float4 gl_Position : SV_Position;\n"
        "    float2 tc : TEXCOORD0;\n");
    pasteMarks(varyings_, text_.size());
    text_.put(std::string_view(job_.varyingDeclarations).substr(varyingsBegin_));
    text_.put("\n};\n");
    if (uniformCount_ > 0) {
        text_.put("\ncbuffer MyConstantBuffer : register(b0)\n{\n");
        paste(constantBuffer_);
        text_.put("\n};\n");
    }
}

void Printer::printInputTextures() {
    for (uint32_t i = 0; i < job_.inputCount; ++i) {
        printInputTexture("INPUT", i + 1, i);
    }
    for (uint32_t i = 0; i < job_.audioInputCount; ++i) {
        printInputTexture("AUDIO_INPUT", i + 1, job_.inputCount + i);
    }
    text_.put('\n');
}

void Printer::printInputTexture(std::string_view name, uint32_t number, uint32_t place) {
    text_.put("Texture2D ");
    text_.put(name);
    putNumber(static_cast<int32_t>(number));
    text_.put(" : register(t");
    putNumber(static_cast<int32_t>(place));
    text_.put(");\nSamplerState ");
    text_.put(name);
    putNumber(static_cast<int32_t>(number));
    text_.put("_SAMPLER : register(s");
    putNumber(static_cast<int32_t>(place));
    text_.put(");\n");
}

// On purpose: the directives go to the HLSL compiler as they stand.
void Printer::printDirectives() {
    if (const astVersionDirective* version = job_.unit.versionDirective) {
        mark(*version);
        text_.put("#version ");
        putNumber(version->number);
        text_.put(' ');
        text_.put(entry(kProfiles, version->profile));
    }
    for (const astExtensionDirective* const extension : job_.unit.extensionDirectives) {
        if (extension != nullptr) {
            mark(*extension);
            piece("#extension ", extension->name, " : ");
            text_.put(entry(kBehaviors, extension->behavior));
        }
    }
}

void Printer::printFunctions() {
    for (astFunction* const function : job_.unit.functions) {
        if (function == nullptr) {
            continue;
        }
        scopes_.push();
        if (job_.isVertexShader && function->name == "main") {
            printVertexMain(*function);
            scopes_.pop();
            continue;
        }
        printFunction(*function);
        // Known from here on: earlier calls had neither the hidden arguments nor a result type.
        Symbol& symbol = variableSymbol(function->name);
        scopes_.popCarrying(symbol, KeyFamily::returnType);
        scopes_.set(symbol, KeyFamily::haveFunction, {ValueClass::boolean});
    }
}

void Printer::printVertexMain(astFunction& function) {
    mark(function);
    text_.put("\nvoid main(VertexInput input)\n{\n");
    printStatements(function.statements);
    text_.put("\nreturn;\n}\n");
}

void Printer::printVertexWrapper() {
    text_.put(kVertexWrapper);
    text_.put("    output.gl_Position = gl_Position;\n    output.tc = tc;\n");
    for (astGlobalVariable* const global : job_.unit.globals) {
        if (global == nullptr || global->storage != kStorageOut) {
            continue;
        }
        const Symbol& symbol = variableSymbol(*global);
        if (&symbol != &position_ && &symbol != &coordinate_) {
            text_.put("    output.");
            text_.put(symbol.name);
            text_.put(" = ");
            text_.put(symbol.name);
            text_.put(";\n");
        }
    }
    text_.put(kVertexWrapperEnd);
}

}  // namespace glsl
