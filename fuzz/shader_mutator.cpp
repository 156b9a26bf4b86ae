// The mutations of the targets that read shaders. Beside the fuzzer's own ones it writes whole
// programs from a grammar, puts lines of such programs into the input, and nests what is there, so
// that deep and valid shaders are reached and not only the lexer's first error.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <random>
#include <string>

#include "random_source.h"

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t max_size);

namespace {

// Behind an input's first zero byte stands what the targets take their choices from.
constexpr size_t kTail = 16;

constexpr const char* kDirectives[] = {
    "#ifdef QQ\n",
    "#ifndef QQ\n",
    "#if QQ\n",
    "#if QQ == 1\n",
    "#elif QQ != 2\n",
    "#else\n",
    "#endif\n",
    "#define QQ 1\n",
    "#define QQ(a, b) ((a) * (b) + a)\n",
    "#define WW a.xyz + QQ(a, b)\n",
    "#define tc WW\n",
    "#version 330 core\n",
    "#extension all : enable\n",
    "precision highp float;\n",
    "layout(location = 0, std140, r32f) uniform;\n",
    "layout(local_size_x = 4, triangles, max_vertices = 3, vertices = 2) in;\n",
    "struct Q { float a[2], b; vec4 c; } q;\n",
    "interface in Q { vec2 d[3]; } e[2];\n",
    "uniform Q { mat3 m; };\n",
    "const float KK[3] = { 1.0, 2.0, 3.0 };\n",
    "subroutine(f) uniform float g;\n",
    "switch (int(tc.x)) { case 0: break; default: discard; }\n",
    "for (int i = 0; i < 3; ++i) { if (tc.x > 0.5) continue; else break; }\n",
    "do { tc += 1.0; } while (tc.x < 0.0);\n",
    "/* a comment */ // and another\n",
    "#version 100 es\n#version 440 other\n",
    "#elifdef QQ\n",
    "precise float pp = 1e30 + 1e-40 + 123456789012345678901234567890.0 + 0x7fffffffu + 0777;\n",
    "const double dd = 1e999lf / 0.0lf;\nconst float ff = 1.0 / 0.0, gg = 3.4e38;\n",
    "invariant out vec4 ii = vec4(1.0);\n",
    "layout(location = 1) layout(location = 2, component = 1) in vec4 vv;\n",
    "layout(shared, binding = 3 + 4, offset = QQ) uniform float uu;\n",
    "layout(std140 = 1) uniform;\nlayout(location) in vec2 ll;\n",
    "flat smooth in vec4 xx;\npatch centroid out vec4 yy;\ncentroid in vec4 zz;\n",
    "noperspective out vec4 np;\nhighp lowp vec4 hl;\nflat in vec4 fl;\npatch in float pi;\n",
    "layout (location = 3) uniform vec4 lu = vec4(1.0), lv[2][3];\n",
    "vec4[2] arrays[3];\n",
    "float ini = { 1.0, 2.0 };\nint sw = \"text\";\n",
    "switch (1) { default: default: case 1.0: continue; }\n",
    "int main(int a) { return 1 / 0 + 1 % 0 + (1 << 40) + (true || false ? 1 : 2); }\n",
    "void f(void a, void) { while a; for a; while (bool b = true) { continue; } }\n",
    "layout a; buffer { int q; };\nbuffer B { int q[]; } bb;\n",
    "const int ci = -(3 - 5) * ~2 / 1 % 2 << 1 >> 1 & 7 | 8 ^ 9;\n",
    "const bool cb = !(1.0 < 2.0) && 2u >= 1u || 1 != 2 && 1.5lf <= 2.0lf ^^ true;\n",
    "const float cf = -1.0 + 2.0 * 3.0 / 4.0 - 5.0;\nfloat ca[int(3.0) + 1];\n",
    "a++; --b; a--; v.x++; (m[0])[1]--; q.a[0] += 1.0;\n",
};

struct Nesting {
    const char* open;
    const char* close;
};

constexpr Nesting kNestings[] = {
    {"(", ")"},
    {"{", "}"},
    {"-(", ")"},
    {"vec2(", ")"},
    {"mix(a,b,", ")"},
    {"fract(", ")"},
    {"a[", "]"},
    {"(a ? b : ", ")"},
    {"a = ", ""},
    {"if (a) ", ""},
    {"!", ""},
    {"INPUT1(", ")"},
    {"for(;;) ", ""},
    {"a * (", ") * m"},
    {"#ifdef QQ\n", "#endif\n"},
    {"struct A { ", " a; }"},
    {"f(a, ", ")"},
    {"mat3(", ")"},
    {"lessThan(v, ", ")"},
    {"do ", " while(a);"},
    {"(a, ", ")"},
    {"/*", "*/"},
    {"switch (a) { case 1: ", "}"},
};

// Lines of which each is made of the one before: `@` is a line's number, `^` the one before it.
struct Ladder {
    const char* first;
    const char* rung;
};

constexpr Ladder kLadders[] = {
    {"const float k0 = 1.5;\n", "const float k@ = k^ * k^;\n"},
    {"const double k0 = 1.5lf;\n", "const double k@ = -k^ - 2.0lf;\n"},
    {"const int k0 = 3;\n", "const int k@ = k^ + k^;\nfloat j@[k^];\n"},
    {"#define k0 a\n", "#define k@ k^ + k^\n"},
    {"#define k0(x) x\n", "#define k@(x) k^(x) * k^(x)\n"},
    {"float k0(float x) { return x; }\n", "float k@(float x) { return k^(k^(x)); }\n"},
    {"struct k0 { float a; };\n", "struct k@ { k^ a, b[2]; };\n"},
    {"float k0;\n", "float k@ = (k^ > 0.0 ? k^ : -k^);\n"},
    {"float k0 = 1.0;\n", "float k@ = mix(k^, mod(k^, k^), k^);\n"},
    {"#ifdef k0\n#else\n", "#ifndef k^\n#define k@ 1\n#else\n#endif\n#endif\n"},
};

class Mutator {
public:
    Mutator(std::string text, size_t max_size, uint32_t seed)
        : random_(seed), max_size_(max_size), text_(std::move(text)) {}

    std::string mutated() {
        const size_t length = std::min(text_.find('\0'), text_.size());
        const std::string tail = text_.substr(length, kTail);
        text_.resize(length);
        switch (below(6)) {
            case 0:
                text_ = program();
                break;
            case 1:
                insert(line_of(program()));
                break;
            case 2:
                insert(kDirectives[below(std::size(kDirectives))]);
                break;
            case 3:
                nest();
                break;
            case 4:
                insert(ladder());
                break;
            default:
                repeat();
                break;
        }
        return text_ + (tail.empty() ? std::string(1, '\0') : tail);
    }

private:
    size_t below(size_t count) { return count == 0 ? 0 : random_() % count; }

    std::string program() {
        return glsl::RandomSource(static_cast<uint32_t>(random_()), below(3) == 0).source();
    }

    static std::string replaced(const char* form, size_t number) {
        std::string result;
        for (const char* at = form; *at != '\0'; ++at) {
            if (*at == '@' || *at == '^') {
                result += std::to_string(*at == '@' ? number : number - 1);
            } else {
                result += *at;
            }
        }
        return result;
    }

    std::string ladder() {
        const Ladder& form = kLadders[below(std::size(kLadders))];
        std::string result = form.first;
        const size_t rungs = 1 + below(below(3) == 0 ? 100 : 10);
        for (size_t i = 1; i <= rungs; ++i) {
            result += replaced(form.rung, i);
        }
        return result;
    }

    std::string line_of(const std::string& lines) {
        const size_t at = below(lines.size());
        const size_t newline = lines.rfind('\n', at);
        const size_t begin = newline == std::string::npos ? 0 : newline + 1;
        return lines.substr(begin, lines.find('\n', begin) + 1 - begin);
    }

    // A place where something may stand: behind one of the bytes that end things.
    size_t seam() {
        const size_t from = below(text_.size() + 1);
        const size_t at = text_.find_first_of(";{}(,\n=", from);
        return at == std::string::npos ? from : at + 1;
    }

    void insert(const std::string& piece) {
        if (text_.size() + piece.size() + kTail <= max_size_) {
            text_.insert(seam(), piece);
        }
    }

    // Puts a word of the text, or nothing, deep into the same form again and again.
    void nest() {
        const Nesting& form = kNestings[below(std::size(kNestings))];
        const size_t one = std::strlen(form.open) + std::strlen(form.close);
        const size_t room = max_size_ > text_.size() + kTail ? max_size_ - text_.size() - kTail : 0;
        const size_t wanted = below(4) == 0 ? 1 + below(1500) : 1 + below(6);
        const size_t count = std::min(wanted, room / one);
        const size_t begin = seam();
        const size_t end = std::min(text_.find_first_of(";{}(),\n=", begin), text_.size());
        std::string opened;
        std::string closed;
        for (size_t i = 0; i < count; ++i) {
            opened += form.open;
            closed += form.close;
        }
        text_.insert(end, closed);
        text_.insert(begin, opened);
    }

    // Copies a stretch from one line or statement to another, perhaps many times.
    void repeat() {
        const size_t begin = seam();
        const size_t end = std::min(text_.find_first_of(";}\n", begin), text_.size());
        const std::string piece = text_.substr(begin, end + 1 - begin);
        const size_t times = below(6) == 0 ? 1 + below(100) : 1;
        const size_t at = seam();
        for (size_t i = 0; i < times && text_.size() + piece.size() + kTail <= max_size_; ++i) {
            text_.insert(at, piece);
        }
    }

    std::mt19937 random_;
    size_t max_size_;
    std::string text_;
};

}  // namespace

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t max_size,
                                          unsigned int seed) {
    if (seed % 3 == 0) {
        return LLVMFuzzerMutate(data, size, max_size);
    }
    Mutator mutator(std::string(reinterpret_cast<const char*>(data), size), max_size, seed);
    const std::string result = mutator.mutated();
    const size_t length = std::min(result.size(), max_size);
    std::memcpy(data, result.data(), length);
    return length;
}
