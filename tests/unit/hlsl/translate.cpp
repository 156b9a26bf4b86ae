#include "translate.h"

#include <cstdarg>
#include <cstdio>
#include <stdexcept>

#include "DirectXEffectMgr/Source/logging/logging.h"
#include "glsl/hlsl/prelude.h"
#include "glsl/parser.h"
#include "plain_printer.h"

namespace glsl {

namespace {

std::vector<std::string>* current_log = nullptr;

void collect(int32_t level, const char* format, va_list args) {
    char message[16384];
    std::vsnprintf(message, sizeof message, format, args);
    current_log->push_back((level == kLogError ? "" : "not an error: ") + std::string(message));
}

// Sends the log to a list while it lives.
class LogCapture {
public:
    explicit LogCapture(std::vector<std::string>& log) {
        current_log = &log;
        set_log_callback(collect);
    }
    ~LogCapture() { set_log_callback(print_to_stderr); }
};

constexpr const char* kLocals =
    "struct T { float c; };\n"
    "struct S { float a; vec3 line; T inner; };\n"
    "void test(float f, float g, float h, int i, int j, uint u, double d, bool b,\n"
    "    vec2 v2, vec2 w2, vec3 v3, vec3 w3, vec4 v4, vec4 w4,\n"
    "    ivec2 i2, ivec2 k2, ivec3 i3, ivec3 k3, ivec4 i4, ivec4 k4,\n"
    "    mat2 m2, mat2 n2, mat3 m3, mat3 n3, mat4 m4, mat4 n4, S s, sampler2D t) {\n";

std::string between(const std::string& whole, const std::string& first, const std::string& last) {
    const size_t begin = whole.find(first);
    const size_t end = whole.rfind(last);
    if (begin == std::string::npos || end == std::string::npos || begin + first.size() > end) {
        throw std::runtime_error("no such text: " + first + " ... " + last + " in:\n" + whole);
    }
    return whole.substr(begin + first.size(), end - begin - first.size());
}

void requireParsed(const Translation& t) {
    if (!t.error.empty()) {
        throw std::runtime_error(t.error);
    }
}

std::string print(const std::string& source, bool isVertex) {
    Translation t;
    t.isVertex = isVertex;
    t.translate(source);
    requireParsed(t);
    return t.text;
}

}  // namespace

void Translation::translate(const std::string& source) {
    parser reader(source.c_str(), "codeDX");
    const ptr<astTU> unit = reader.parse(isVertex ? 1 : 5);
    if (unit.get() == nullptr) {
        error = reader.error() != nullptr ? reader.error() : "failed without a message";
        return;
    }
    const LogCapture capture(log);
    if (plainly) {
        printPlainly(*unit, inputs, audio, hasVertexShader, text, varyings, scope, isVertex);
    } else {
        printTU(*unit, inputs, audio, hasVertexShader, text, varyings, scope, isVertex,
                withMarks ? &marks : nullptr);
    }
}

std::string printFragment(const std::string& source) {
    return print(source, false);
}

std::string printVertex(const std::string& source) {
    return print(source, true);
}

std::string bodyOf(const std::string& hlsl) {
    const std::string wrapper = hlsl.find("\n\nVertexOutput mainVS(") != std::string::npos
                                    ? "\n\nVertexOutput mainVS("
                                    : "\n\nfloat4 mainPS(";
    const std::string rest = between(hlsl, std::string(kPrelude), wrapper);
    // The structs, the buffer and the textures end in an empty line.
    size_t end = rest.find("\n};\n", rest.find("struct VertexOutput"));
    end += 4;
    const std::string buffer = "\ncbuffer MyConstantBuffer";
    if (rest.compare(end, buffer.size(), buffer) == 0) {
        end = rest.find("\n};\n", end) + 4;
    }
    while (rest.compare(end, 10, "Texture2D ") == 0 ||
           rest.compare(end, 13, "SamplerState ") == 0) {
        end = rest.find('\n', end) + 1;
    }
    return rest.substr(end + 1);
}

std::string headOf(const std::string& hlsl) {
    return hlsl.substr(0, hlsl.find(kPrelude));
}

Translation translateStatements(const std::string& source) {
    Translation t;
    t.translate(std::string(kLocals) + "discard; " + source + "\ndiscard;\n}\n");
    requireParsed(t);
    t.text = between(t.text, "discard;\n", "discard;\n");
    return t;
}

std::string statements(const std::string& source) {
    return translateStatements(source).text;
}

std::string expression(const std::string& source) {
    const std::string line = statements("return " + source + ";");
    return between(line, "return ", ";\n");
}

std::string classOf(const std::string& source, const std::string& declarations) {
    // What is printed around the expression begins with a text.
    const auto prints = [&](const std::string& before, const std::string& after,
                            const std::string& beginning) {
        const std::string hlsl = statements(declarations + "return " + before + source + after);
        return hlsl.compare(hlsl.rfind("return ") + 7, beginning.size(), beginning) == 0;
    };
    // A call with the probed expression, or with an operation on it, reports a null argument.
    const auto isNull = [&](const std::string& operation) {
        const std::string argument = "(" + source + ")" + operation;
        for (const std::string& line :
             translateStatements(declarations + "probe(" + argument + ");").log) {
            if (line.find("function call param is empty") != std::string::npos) {
                return true;
            }
        }
        return false;
    };
    if (isNull("")) {
        return "null";
    }
    for (const char* n : {"2", "3", "4"}) {
        const std::string size(n);
        if (prints("(", ") == 0.0;", "(global_is_equal_vec" + size)) {
            return "vec" + size;
        }
        if (prints("v" + size + " * (", ");", "(mul( v" + size + ", ")) {
            return "mat" + size;
        }
        if (!prints("ivec" + size + "((", "));", "int" + size + "(gloabal_int")) {
            return "ivec" + size;
        }
    }
    if (prints("lessThan(0.0, (", "));", "gloabal_lessThan(")) {
        return "float";
    }
    if (!isNull(" && b")) {
        return "bool";
    }
    if (!isNull(" % 1")) {
        return "int";
    }
    return isNull(" + 1.0") ? "other" : "double";
}

}  // namespace glsl
