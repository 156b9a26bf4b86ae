#include "random_source.h"

#include <algorithm>
#include <initializer_list>

namespace glsl {

namespace {

constexpr const char* kTypes[] = {"float", "int",  "uint",   "bool",  "double", "vec2",
                                  "vec3",  "vec4", "ivec2",  "ivec3", "ivec4",  "mat2",
                                  "mat3",  "mat4", "mat2",   "mat3",  "mat4",   "vec2",
                                  "vec3",  "vec4", "mat2x3", "uvec2", "S"};
// Among them names that HLSL or the printer's own memory keeps for itself.
constexpr const char* kNames[] = {"a",
                                  "b",
                                  "c",
                                  "x1",
                                  "line",
                                  "max",
                                  "point",
                                  "tc",
                                  "gl_Position",
                                  "gl_FragCoord",
                                  "colour",
                                  "env__________isDidMatArraySubScriptObject",
                                  "MyConstantBuffer_a",
                                  "HAVE_FUNC_f0",
                                  "f0_RETURN_TYPE",
                                  "VertexOutput_q",
                                  "env__________isTopForLevel"};
constexpr const char* kSwizzles[] = {"x",    "r",    "s", "xy",    "rgb", "stp",
                                     "xyzw", "bgra", "h", "stpqx", "a",   "ba"};
constexpr const char* kOperators[] = {"*",  "*",  "*",  "/",  "%", "+", "-", "<<", ">>", "<", ">",
                                      "<=", ">=", "==", "!=", "&", "^", "|", "&&", "^^", "||"};
constexpr const char* kAssignments[] = {"=", "*=", "*=", "*=", "+=", "-=", "/=", "|="};
constexpr const char* kBuiltins[] = {"sin",   "max",       "dot",         "length",
                                     "mod",   "dFdx",      "inversesqrt", "texture",
                                     "clamp", "normalize", "unknown"};
constexpr const char* kInputs[] = {"INPUT",        "INPUT1",      "INPUT2",       "AUDIO_INPUT",
                                   "AUDIO_INPUT1", "DEPTH_INPUT", "DEPTH_INPUT1", "DEPTH_INPUT2",
                                   "DEPTH_INPUT2", "INPUTS"};
constexpr const char* kPrefixes[] = {"-", "+", "!", "~", "++", "--"};
constexpr const char* kStorages[] = {"uniform ",
                                     "in ",
                                     "out ",
                                     "",
                                     "",
                                     "const ",
                                     "varying ",
                                     "shared ",
                                     "flat uniform ",
                                     "layout(location = 1) in "};

// Braces fix the order in which the parts are made, which a chain of "+" does not.
std::string join(std::initializer_list<std::string> parts) {
    std::string result;
    for (const std::string& part : parts) {
        result += part;
    }
    return result;
}

}  // namespace

std::string RandomSource::source() {
    std::string result = oneIn(4) ? "#version 330\n#extension X : enable\n" : "";
    result += "struct T { float c; };\nstruct S { float a; vec3 line; mat3 m; T inner; };\n";
    result += globals();
    for (int i = 0; i < 3; ++i) {
        const std::string name = "f" + std::to_string(i);
        if (oneIn(3)) {
            result += join({"vec2 f", std::to_string(below(4)), "(float, int);\n"});
        }
        result += function(name);
    }
    if (isVertex_) {
        result += join({"void main() { ", declaration(), block(3), "}\n"});
    }
    return result;
}

std::string RandomSource::globals() {
    std::string result =
        isVertex_ ? "out vec4 gl_Position;\nout vec2 tc;\n" : "vec4 gl_FragCoord;\n";
    if (oneIn(3)) {
        result += "uniform B { vec2 in_block; mat2 mb; };\nuniform C { vec3 k; } cb;\n";
        names_.insert(names_.end(), {"in_block", "mb", "cb"});
    }
    const uint32_t count = 2 + below(6);
    for (uint32_t i = 0; i < count; ++i) {
        const std::string storage = pick(kStorages);
        const std::string name = pick(kNames) + (oneIn(2) ? "" : std::to_string(i));
        std::string line = storage + pick(kTypes) + " " + name;
        // A struct behind a storage word would open a block.
        if (line.find(" S ") != std::string::npos && !storage.empty()) {
            line = storage + "mat4 " + name;
        }
        if (storage == "const ") {
            line += " = " + std::string(oneIn(2) ? literal() : constructor(2));
        } else if (oneIn(4)) {
            line += oneIn(2) ? "[3]" : "[" + constructor(1) + "]";
        }
        result += join({line, ";\n"});
        const bool isNew = std::find(names_.begin(), names_.end(), name) == names_.end();
        names_.push_back(name);
        if (isNew && storage != "const " && storage != "in " && storage.find("layout") != 0) {
            targets_.push_back(name);
        }
    }
    return result;
}

std::string RandomSource::function(const std::string& name) {
    const size_t nameCount = names_.size();
    const size_t targetCount = targets_.size();
    std::string result = std::string(oneIn(4) ? "void" : pick(kTypes)) + " " + name + "(";
    const uint32_t count = below(4);
    for (uint32_t i = 0; i < count; ++i) {
        const std::string parameter = pick(kNames) + (oneIn(3) ? "" : "p" + std::to_string(i));
        constexpr const char* kWays[] = {"", "in ", "out ", "inout ", "highp "};
        result += join({(i > 0 ? ", " : ""), pick(kWays), pick(kTypes), " ", parameter});
        result += oneIn(6) ? "[2]" : "";
        names_.push_back(parameter);
        targets_.push_back(parameter);
    }
    result += join({") ", std::string("{ "), declaration(), block(3), block(2), "}\n"});
    names_.resize(nameCount);
    targets_.resize(targetCount);
    functions_.push_back(name);
    return result;
}

std::string RandomSource::block(int depth) {
    std::string result;
    const uint32_t count = 1 + below(4);
    for (uint32_t i = 0; i < count; ++i) {
        result += join({statement(depth), "\n"});
    }
    return result;
}

std::string RandomSource::statement(int depth) {
    if (depth == 0) {
        return join({target(), " ", pick(kAssignments), " ", expression(2), ";"});
    }
    switch (below(14)) {
        case 0:
            return join({"{ ", block(depth - 1), "}"});
        case 1:
            return join({"if (", expression(2), ") ", statement(depth - 1)});
        case 2:
            return join(
                {"if (", expression(2), ") { ", block(depth - 1), "} else ", statement(depth - 1)});
        case 3:
        case 4:
        case 5:
            return forLoop(depth);
        case 6:
            return join({"while (", expression(2), ") ", statement(depth - 1)});
        case 7:
            return join({"do ", statement(depth - 1), " while (", expression(1), ");"});
        case 8:
            return join({"switch (", expression(1), ") { case 1: ", statement(0), " break; case ",
                         "2: default: break; }"});
        case 9:
            return declaration();
        case 10:
            return oneIn(2) ? ";" : "return " + expression(3) + ";";
        default:
            return join({target(), " ", pick(kAssignments), " ", expression(3), ";"});
    }
}

std::string RandomSource::declaration() {
    const std::string name = join({pick(kNames), oneIn(3) ? "" : "l" + std::to_string(below(9))});
    std::string result = join({oneIn(6) ? "const " : "", pick(kTypes), " ", name, initialValue()});
    names_.push_back(name);  // its own initial value doesn't know it yet
    targets_.push_back(name);
    return result;
}

std::string RandomSource::initialValue() {
    switch (below(6)) {
        case 0:
            return "[2];";
        case 1:
            return "[2][3];";
        case 2:
            return join({"[2][2] = {{", expression(1), "},{", literal(), ", ", literal(), "}};"});
        case 3:
            return ";";
        default:
            return join({" = ", expression(3), ";"});
    }
}

std::string RandomSource::forLoop(int depth) {
    std::string result = "for (";
    result += oneIn(2) ? "int i = 0" : oneIn(2) ? "" : target() + " = " + expression(1);
    if (result.find("int i") != std::string::npos) {
        names_.push_back("i");
        targets_.push_back("i");
    }
    result += join({"; ", (oneIn(4) ? "" : expression(2)), "; ", (oneIn(4) ? "" : expression(1))});
    return join({result, ") ", statement(depth - 1)});
}

std::string RandomSource::target() {
    if (targets_.empty()) {
        return "gl_" + std::string(isVertex_ ? "Position" : "FragCoord");
    }
    std::string result = pick(targets_);
    if (oneIn(3)) {
        result += join({"[", expression(1), "]"});
    }
    return result;
}

std::string RandomSource::literal() {
    constexpr const char* kLiterals[] = {"1.0", "0.5", "2", "7u", "1.5lf", "true", "false", "0.1"};
    return pick(kLiterals);
}

std::string RandomSource::expression(int depth) {
    if (depth <= 0) {
        return names_.empty() || oneIn(4) ? literal() : pick(names_);
    }
    switch (below(8)) {
        case 0: {  // a chain
            std::string result = primary(depth - 1);
            const uint32_t count = 1 + below(5);
            for (uint32_t i = 0; i < count; ++i) {
                result += join({" ", pick(kOperators), " ", primary(depth - 2)});
            }
            return result;
        }
        case 1:
        case 2:
        case 3:
            return join({primary(depth - 1), " ", pick(kOperators), " ", primary(depth - 1)});
        case 4:
            // Operands are plain: the ternary pass rewrites what stands around it.
            return "((" + pick(names_) + ") ? (" + literal() + ") : (" + pick(names_) + "))";
        default:
            return primary(depth - 1);
    }
}

std::string RandomSource::primary(int depth) {
    switch (below(12)) {
        case 0:
            return join({"(", target(), " ", pick(kAssignments), " ", expression(depth - 1), " ",
                         pick(kAssignments), " ", expression(depth - 1), ")"});
        case 1:
            return join({"(", expression(depth - 1), ", ", expression(depth - 1), ")"});
        case 2:
            return join({pick(kPrefixes), primary(depth - 1)});
        case 3:
            return join(
                {"(", expression(depth - 1), ")", (oneIn(2) ? "++" : "." + pick(kSwizzles))});
        case 4:
        case 5:
            return call(depth);
        case 6:
            return constructor(depth);
        case 7:
            if (!names_.empty()) {
                return join({pick(names_), "[", expression(depth - 1), "]",
                             (oneIn(3)   ? ""
                              : oneIn(2) ? "." + pick(kSwizzles)
                                         : "[1]")});
            }
            return literal();
        case 8:
        case 9:
            return join({"(", expression(depth - 1), ")"});
        default:
            return expression(0);
    }
}

std::string RandomSource::arguments(uint32_t count, int depth) {
    std::string result = "(";
    for (uint32_t i = 0; i < count; ++i) {
        result += join({(i > 0 ? ", " : ""), primary(depth - 1)});
    }
    return join({result, ")"});
}

std::string RandomSource::call(int depth) {
    switch (below(9)) {
        case 0:
            return "mix" + arguments(oneIn(6) ? 2 : 3, depth);
        case 1:
            return join({"atan", arguments(below(4), depth)});
        case 2:
            return join({"fract", arguments(1, depth)});
        case 3:
            return (oneIn(2) ? "lessThan" : "greaterThan") + arguments(oneIn(6) ? 1 : 2, depth);
        case 4:
        case 5:
            return pick(kInputs) + arguments(oneIn(9) ? 2 : 1, depth);
        case 6:
            if (!functions_.empty()) {
                return join({pick(functions_), arguments(below(3), depth)});
            }
            return join({"f0", arguments(1, depth)});
        default:
            return join({pick(kBuiltins), arguments(1 + below(2), depth)});
    }
}

std::string RandomSource::constructor(int depth) {
    std::string type = pick(kTypes);
    if (type == "S") {  // a struct has no constructor
        type = "vec4";
    }
    return type + arguments(oneIn(2) ? 1 : below(5), depth);
}

}  // namespace glsl
