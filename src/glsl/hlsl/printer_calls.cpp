#include <algorithm>

#include "glsl/hlsl/naming.h"
#include "glsl/hlsl/printer.h"

namespace glsl {

namespace {

constexpr std::string_view kAudioPrefix = "AUDIO_INPUT";
constexpr std::string_view kDepthPrefix = "DEPTH_INPUT";
constexpr std::string_view kImagePrefix = "INPUT";
constexpr std::string_view kFirstImage = "INPUT1";

// What a call turns into.
enum class Callee {
    general,
    mix,
    atan,
    fract,
    lessThan,
    greaterThan,
    audioInput,
    depthInput,
    imageInput,
};

struct MappedName {
    std::string_view name;
    Callee callee;
};
constexpr MappedName kMappedNames[] = {
    {"mix", Callee::mix},
    {"atan", Callee::atan},
    {"fract", Callee::fract},
    {"lessThan", Callee::lessThan},
    {"greaterThan", Callee::greaterThan},
};

struct InputPrefix {
    std::string_view prefix;
    Callee callee;
};
constexpr InputPrefix kInputPrefixes[] = {
    {kAudioPrefix, Callee::audioInput},
    {kDepthPrefix, Callee::depthInput},
    {kImagePrefix, Callee::imageInput},
};

Callee calleeOf(std::string_view name) {
    constexpr InitialSet kInitials("mafglADI");  // of all names and prefixes above
    if (!kInitials.hasInitialOf(name)) {
        return Callee::general;
    }
    for (const MappedName& row : kMappedNames) {
        if (row.name == name) {
            return row.callee;
        }
    }
    for (const InputPrefix& row : kInputPrefixes) {
        if (isNumberedName(name, row.prefix)) {
            return row.callee;
        }
    }
    return Callee::general;
}

// Built-ins whose result is a float whatever they are called with.
bool givesFloat(std::string_view callee) {
    return callee == "distance" || callee == "length" || callee == "dot";
}

// The widest argument decides the class of a call: 1 is the narrowest, 0 takes no part.
constexpr uint32_t rank(ValueClass kind) {
    constexpr ValueClass kOrder[] = {
        ValueClass::float_, ValueClass::integer, ValueClass::double_, ValueClass::vec2,
        ValueClass::vec3,   ValueClass::vec4,    ValueClass::ivec2,   ValueClass::ivec3,
        ValueClass::ivec4,  ValueClass::mat2,    ValueClass::mat3,    ValueClass::mat4,
    };
    uint32_t place = 0;
    for (const ValueClass ranked : kOrder) {
        ++place;
        if (ranked == kind) {
            return place;
        }
    }
    return 0;
}

constexpr auto ranks() {
    std::array<uint8_t, kValueClassCount> table{};
    for (size_t i = 0; i < kValueClassCount; ++i) {
        table[i] = static_cast<uint8_t>(rank(static_cast<ValueClass>(i)));
    }
    return table;
}
constexpr auto kRanks = ranks();

ValueClass wider(ValueClass a, ValueClass b) {
    return kRanks[static_cast<size_t>(b)] > kRanks[static_cast<size_t>(a)] ? b : a;
}

constexpr Value kVec4{ValueClass::vec4};
constexpr Value kFloat{ValueClass::float_};

}  // namespace

Value Printer::printFunctionCall(astFunctionCall& call) {
    switch (calleeOf(call.name)) {
        case Callee::general:
            return printGeneralCall(call);
        case Callee::mix:
            return printMix(call);
        case Callee::atan:
            return printAtan(call);
        case Callee::fract:
            return printFract(call);
        case Callee::lessThan:
            return printComparison(call, "gloabal_lessThan",
                                   "error line :%d,%d  lessThan parameters size is wrong",
                                   "error line :%d,%d  lessThan is wrong");
        case Callee::greaterThan:
            return printComparison(call, "gloabal_greaterThan",
                                   "error line :%d,%d  greaterThan parameters size is wrong",
                                   "error line :%d,%d  greaterThan is wrong");
        case Callee::audioInput:
        case Callee::depthInput:
        case Callee::imageInput:
            return printInputCall(call);
    }
    return {};
}

// On purpose: the finished text is one piece, so very long arguments are cut with all that follows.
Value Printer::printMix(const astFunctionCall& call) {
    if (call.parameters.size() != 3) {
        return kFloat;
    }
    const size_t begin = text_.size();
    text_.put("(lerp(");
    const Value value = printExpression(call.parameters[0]);
    text_.put(", ");
    printExpression(call.parameters[1]);
    text_.put(", ");
    printExpression(call.parameters[2]);
    text_.put("))");
    endPiece(begin);
    return value;
}

Value Printer::printAtan(const astFunctionCall& call) {
    const size_t count = call.parameters.size();
    if (count == 1) {
        text_.put("atan(");
    } else if (count == 2) {
        text_.put("atan2(");
    }
    Value result = kFloat;
    for (size_t i = 0; i < count; ++i) {
        if (i > 0) {
            text_.put(", ");
        }
        const Value value = printExpression(call.parameters[i]);
        if (value.kind == ValueClass::none) {
            result = kFloat;  // the last argument that is no float counts, and it has no class
        } else if (value.kind != ValueClass::float_) {
            result = value;
        }
    }
    text_.put(')');
    return result;
}

Value Printer::printFract(const astFunctionCall& call) {
    text_.put("((");
    const size_t begin = text_.size();
    const Value value =
        printExpression(call.parameters.empty() ? nullptr : call.parameters[0].get());
    const size_t end = text_.size();
    text_.put(") - floor(");
    if (mayRepeatPiece(end - begin)) {
        text_.repeat(begin, end);
    }
    text_.put("))");
    return value;
}

// The helpers are called NAME, NAME2, NAME3 and NAME4: the digit is known behind the arguments.
Value Printer::printComparison(const astFunctionCall& call, std::string_view helper,
                               const char* sizeMessage, const char* classMessage) {
    if (call.parameters.size() != 2) {
        complain(sizeMessage, call);
        return kFloat;
    }
    const size_t begin = text_.size();
    text_.put(helper);
    const size_t digit = text_.size();
    text_.put("?(");
    printExpression(call.parameters[0]);
    text_.put(", ");
    const Value value = printExpression(call.parameters[1]);
    text_.put(')');
    if (isFloatVector(value.kind)) {
        text_.overwrite(digit, static_cast<char>('0' + dimension(value.kind)));
    } else if (value.kind == ValueClass::float_) {
        text_.erase(digit, 1);
    } else {
        text_.truncate(begin);
        complain(classMessage, call);
    }
    endPiece(begin);
    return value;
}

Value Printer::printInputCall(astFunctionCall& call) {
    switch (call.name.front()) {
        case 'A':
            return printAudioInput(call);
        case 'D':
            return printDepthInput(call);
        default:
            return printImageInput(call);
    }
}

Value Printer::printAudioInput(const astFunctionCall& call) {
    const bool isVertex = inVertexStage();
    piece(call.name, isVertex ? ".SampleLevel(" : ".Sample(", call.name,
          "_SAMPLER, GLOBAL_TRANS_TC(");
    printFirstArgument(call);
    text_.put(isVertex ? "), 0.0f).zzzz" : ")).zzzz");
    return kVec4;
}

Value Printer::printImageInput(const astFunctionCall& call) {
    const std::string_view name = call.name == kImagePrefix ? kFirstImage : call.name;
    const bool isVertex = inVertexStage();
    piece(name, isVertex ? ".SampleLevel(" : ".Sample(", name, "_SAMPLER, GLOBAL_TRANS_TC(");
    printFirstArgument(call);
    text_.put(isVertex ? "), 0.0f).zyxw" : ")).zyxw");
    return kVec4;
}

// On purpose: a numbered depth input becomes an image input in the tree, so a call of it that is
// printed twice reads the picture. Effects rely on DEPTH_INPUT2(tc) inside other calls being that.
Value Printer::printDepthInput(astFunctionCall& call) {
    constexpr size_t kShortening = kDepthPrefix.size() - kImagePrefix.size();
    std::string_view name = kFirstImage;
    if (call.name != kDepthPrefix) {
        call.name.remove_prefix(kShortening);
        name = call.name;
        isTextStale_ = true;
    }
    piece(inVertexStage() ? "global_depth_input_level(" : "global_depth_input(", name, ", ", name,
          "_SAMPLER, GLOBAL_TRANS_TC(");
    printFirstArgument(call);
    text_.put("))");
    return kVec4;
}

void Printer::printFirstArgument(const astFunctionCall& call) {
    if (!call.parameters.empty()) {
        printExpression(call.parameters[0]);
    }
}

Value Printer::printGeneralCall(const astFunctionCall& call) {
    Symbol& callee = calleeSymbol(call.name);
    piece(callee.name, "(");
    const size_t begin = text_.size();
    beginTwofoldWalk();
    const ValueClass widest = printCheckedArguments(call);
    if (needsSecondWalk(begin)) {
        printArguments(call.parameters);
        endSecondWalk();
    }
    if (scopes_.has(callee, KeyFamily::haveFunction)) {
        text_.put(call.parameters.empty() ? "input" : ", input");
        text_.put(inVertexStage() ? "" : ", gl_FragCoord");
    }
    text_.put(')');
    if (scopes_.has(callee, KeyFamily::returnType)) {
        return scopes_.get(callee, KeyFamily::returnType);
    }
    return {givesFloat(callee.name) ? ValueClass::float_ : widest};
}

// The arguments, a message for each that has no class, and the widest class of all.
ValueClass Printer::printCheckedArguments(const astFunctionCall& call) {
    ValueClass widest = ValueClass::float_;
    bool first = true;
    for (astExpression* const argument : call.parameters) {
        if (!first) {
            text_.put(", ");
        }
        first = false;
        const ValueClass kind = printExpression(argument).kind;
        if (kind == ValueClass::none) {
            complain("error line :%d,%d  function call param is empty", call);
        }
        widest = wider(widest, kind);
    }
    return widest;
}

void Printer::printArguments(const list<astExpression>& arguments) {
    bool first = true;
    for (astExpression* const argument : arguments) {
        if (!first) {
            text_.put(", ");
        }
        first = false;
        printExpression(argument);
    }
}

// On purpose: a definition is renamed like a variable and a call is not, so a call of the author's
// own `max` reaches the built-in one.
Symbol& Printer::calleeSymbol(std::string_view name) {
    Symbol& symbol = scopes_.intern(name);
    if (symbol.callee == nullptr) {
        const std::string_view callee = renameBuiltin(avoidKeyword(name, true));
        symbol.callee = callee.data() == name.data() ? &symbol : &scopes_.intern(callee);
    }
    return *symbol.callee;
}

void Printer::beginTwofoldWalk() {
    if (twofoldDepth_++ == 0) {
        isTextStale_ = false;
        isClassStale_ = false;
    }
}

bool Printer::needsSecondWalk(size_t begin) {
    if (--twofoldDepth_ > 0 || !(isTextStale_ || isClassStale_)) {
        return false;
    }
    text_.truncate(begin);
    ++twofoldDepth_;
    isMuted_ = !isClassStale_;
    return true;
}

void Printer::endSecondWalk() {
    --twofoldDepth_;
    isMuted_ = false;
}

}  // namespace glsl
