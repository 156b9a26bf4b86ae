#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "tree_dump.h"

#if !defined(_WIN32)
#include <pthread.h>
#endif

namespace glsl {
namespace {

using test::firstError;
using test::parsed;

std::string repeated(const std::string& text, std::size_t count) {
    std::string result;
    result.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

// The message of a source's first error, without its place.
std::string message(const std::string& source) {
    const std::string line = firstError(source);
    const std::size_t colon = line.find(':', line.find(':') + 1);
    return colon == std::string::npos ? line : line.substr(colon + 1);
}

struct NestingCase {
    const char* name;
    const char* head;
    const char* open;
    const char* core;
    const char* close;
    const char* tail;
};
void PrintTo(const NestingCase& c, std::ostream* out) {
    *out << c.name;
}

constexpr char kBody[] = "int a[9]; float x; void f() { x = ";
constexpr char kStatement[] = "int x; void f() { ";

class NestingTest : public testing::TestWithParam<NestingCase> {
protected:
    static std::size_t ordinary() {
        return std::string(GetParam().name) == "ternaries" ? 120 : 250;  // four levels each
    }
    static std::string source(std::size_t depth) {
        const NestingCase& c = GetParam();
        return c.head + repeated(c.open, depth) + c.core + repeated(c.close, depth) + c.tail;
    }
};

TEST_P(NestingTest, OrdinaryDepthWorks) {
    EXPECT_EQ(message(source(ordinary())), "none");
}

TEST_P(NestingTest, TenThousandLevelsAreRefused) {
    EXPECT_EQ(message(source(10000)), "nesting too deep");
    const std::string text = source(10000);
    parser reader(text.c_str(), "codeDX");
    EXPECT_EQ(reader.parse(kShaderFragment), nullptr) << "nothing recovers from it";
    EXPECT_EQ(std::string(reader.error()).find("\r\n"), std::string(reader.error()).size() - 2);
}

INSTANTIATE_TEST_SUITE_P(
    All, NestingTest,
    testing::Values(NestingCase{"parentheses", kBody, "(", "1", ")", "; }"},
                    NestingCase{"calls", kBody, "g(", "1", ")", "; }"},
                    NestingCase{"calls in sums", kBody, "1 + g(2, ", "1", ")", "; }"},
                    NestingCase{"parentheses in sums", kBody, "1 + (", "1", ")", "; }"},
                    NestingCase{"parentheses in products", kBody, "x * (", "1", ")", "; }"},
                    NestingCase{"constructors", kBody, "vec2(", "1", ")", "; }"},
                    NestingCase{"subscripts", kBody, "a[", "1", "]", "; }"},
                    NestingCase{"minus", kBody, "- ", "1", "", "; }"},
                    NestingCase{"not", kBody, "!", "x", "", "; }"},
                    NestingCase{"ternaries", kBody, "(x ? x : ", "1", ")", "; }"},
                    NestingCase{"bare ternaries", "void f(int x) { ", "x ? x : ", "x", "", "; }"},
                    NestingCase{"swizzles", "void f(vec4 x) { x", ".x", "", "", "; }"},
                    NestingCase{"increments", "void f(int x) { x", "++ ", "", "", "; }"},
                    NestingCase{"array subscripts", "void f(int x) { x", "[1]", "", "", "; }"},
                    NestingCase{"blocks", kStatement, "{", "", "}", "}"},
                    NestingCase{"ifs", kStatement, "if (x) ", ";", "", "}"},
                    NestingCase{"else ifs", kStatement, "if (x) ; else ", ";", "", "}"},
                    NestingCase{"loops", kStatement, "for (;;) while (x) ", ";", "", "}"},
                    NestingCase{"dos", kStatement, "do ", "x;", " while (x);", "}"},
                    NestingCase{"switches", kStatement, "switch (x) { case 1: ", ";", "}", "}"},
                    NestingCase{"structures", "", "struct S { ", "int a;", "} s;", ""},
                    NestingCase{"sizes", "int a[9]; int b[", "a[", "1", "]", "];"},
                    NestingCase{"constant sums", "const float x = ", "1.0 + (", "1.0", ")", ";"}));

TEST(LimitsTest, UnclosedNestingIsRefusedToo) {
    for (const char* open : {"(", "g(", "vec2(", "-", "!", "++", "~", "f(1 + ", "a ? "}) {
        const std::string source = "int a; void f() { " + repeated(open, 100000);
        EXPECT_EQ(message(source), "nesting too deep") << open;
    }
    for (const char* open : {"{", "if (1) ", "do ", "while (1) ", "switch (1) { "}) {
        EXPECT_EQ(message("void f() { " + repeated(open, 100000)), "nesting too deep") << open;
    }
    EXPECT_EQ(message(repeated("struct { ", 100000)), "nesting too deep");
    EXPECT_EQ(message(repeated("int a[", 100000)), "expected `(' for constructor call");
}

TEST(LimitsTest, ChainsMayBeAsLongAsTheSource) {
    const std::string sum = "1" + repeated(" + 1", 100000);
    EXPECT_EQ(parsed("const int x = " + sum + ";"), "const int:x=100001");
    EXPECT_EQ(message("void f(int x) { x = " + sum + "; }"), "none");
    EXPECT_EQ(message("void f(int x) { x" + repeated(" = x", 100000) + "; }"), "none");
    EXPECT_EQ(message("void f(int x) { x" + repeated(", x", 100000) + "; }"), "none");
    EXPECT_EQ(message("int x; int y[" + sum + "];"), "none");
    EXPECT_EQ(message("void f(int x) { x[" + sum + " + x]; }"), "none");
    EXPECT_EQ(message("void f() { switch (1) { case " + sum + ": } }"), "none");
    EXPECT_EQ(message("void f() { g(1" + repeated(", 1", 100000) + "); }"), "none");
}

TEST(LimitsTest, TheTextOfALongConstantIsBuiltInOneGo) {
    const std::string result = parsed("const float x = 1.0" + repeated(" + 1.0", 100000) + ";");
    EXPECT_EQ(result.size(), std::string("const float:x=100001f'").size() + 3 + 400000);
}

TEST(LimitsTest, ConstantsOfConstantsAreFoldedOnce) {
    std::string source = "const int c0 = 1;\n";
    for (int i = 1; i < 5000; ++i) {
        const std::string before = "c" + std::to_string(i - 1);
        source += "const int c" + std::to_string(i) + " = " + before + " + " + before + ";\n";
    }
    EXPECT_EQ(message(source), "none");
}

TEST(LimitsTest, LongListsOfEverythingWork) {
    EXPECT_EQ(message(repeated("float a;", 50000)), "none");
    EXPECT_EQ(message("float a" + repeated(", a", 50000) + ";"), "none");
    EXPECT_EQ(message("struct S { " + repeated("int a; ", 50000) + "};"), "none");
    EXPECT_EQ(message("void f(" + repeated("int a, ", 50000) + "int b);"), "none");
    EXPECT_EQ(message(repeated("void f() {}", 20000)), "none");
    EXPECT_EQ(message("void f() {" + repeated(";", 200000) + "}"), "none");
    EXPECT_EQ(message("void f() {" + repeated("int a;", 50000) + "}"), "none");
    EXPECT_EQ(message(std::string(1000000, '\n') + "float a;"), "none");
    EXPECT_EQ(firstError(std::string(1000000, '\n') + "$"),
              "1000001:1:invalid character encountered");
    EXPECT_EQ(message(repeated("layout(location = 1) ", 2000) + "in int a;"), "none");
}

TEST(LimitsTest, LongWordsWork) {
    const std::string name(100000, 'n');
    EXPECT_EQ(parsed("float " + name + ";"), "float:" + name);
    EXPECT_EQ(message("int a = " + std::string(100000, '1') + ";"),
              "literal needs more than 32-bits");
    EXPECT_EQ(message("float a = " + std::string(100000, '1') + ".0;"), "none");
    EXPECT_EQ(message("float a = 1e" + std::string(100000, '1') + ";"), "none");
    EXPECT_EQ(message("#" + name), "Unsupported directive");
    EXPECT_EQ(message("#define " + name + " " + name + "\nfloat " + name + ";"), "none");
}

TEST(LimitsTest, EverythingUnterminatedEnds) {
    for (const char* source : {"/*",
                               "//",
                               "\"",
                               "#",
                               "#define",
                               "#define A",
                               "#define A(",
                               "#define A(x",
                               "#if",
                               "#if A",
                               "#if A ==",
                               "#ifdef",
                               "#ifdef A",
                               "#else",
                               "#elif A",
                               "#version",
                               "#extension",
                               "float",
                               "float a",
                               "float a[",
                               "float a[1",
                               "float a =",
                               "float a = 1",
                               "struct",
                               "struct S",
                               "struct S {",
                               "uniform",
                               "uniform B",
                               "uniform B {",
                               "layout",
                               "layout(",
                               "layout(location",
                               "layout(location =",
                               "void f",
                               "void f(",
                               "void f(int",
                               "void f()",
                               "void f() {",
                               "void f() { if",
                               "void f() { if (",
                               "void f() { if (1",
                               "void f() { if (1)",
                               "void f() { if (1) ; else",
                               "void f() { for",
                               "void f() { for (",
                               "void f() { for (;",
                               "void f() { for (;;",
                               "void f() { for (;;)",
                               "void f() { while",
                               "void f() { while (",
                               "void f() { do",
                               "void f() { do ;",
                               "void f() { do ; while",
                               "void f() { do ; while (1",
                               "void f() { switch",
                               "void f() { switch (1) {",
                               "void f() { switch (1) { case",
                               "void f() { return",
                               "void f() { return 1",
                               "void f() { break",
                               "void f() { continue",
                               "void f() { discard",
                               "void f() { int",
                               "void f() { int a",
                               "void f() { int a =",
                               "void f() { int a[",
                               "void f() { int a[1] =",
                               "void f() { int a[1] = {",
                               "void f() { int a[1] = { {",
                               "void f() { int a[1] = { { 1 }",
                               "void f() { int a[1] = int",
                               "void f() { int a[1] = int[",
                               "void f() { int a[1] = int[]",
                               "void f() { int (",
                               "void f() { int (a",
                               "void f() { 1 +",
                               "void f() { 1 ?",
                               "void f() { 1 ? 2",
                               "void f() { 1 ? 2 :",
                               "void f() { g(",
                               "void f() { g(1,",
                               "void f() { vec2",
                               "void f() { vec2(",
                               "void f() { -",
                               "void f() { (",
                               "void f() { 1 .",
                               "#define F(x) x\nF(",
                               "#define F(x) x\nF",
                               "1e",
                               "0x",
                               "in",
                               "const int a = 1 /"}) {
        parser reader(source, "codeDX");
        EXPECT_TRUE(reader.parse(kShaderFragment) == nullptr || reader.error() == nullptr)
            << source;
    }
}

TEST(LimitsTest, EveryCutOfASourceEnds) {
    const std::string source =
        "#version 330 core\n#define F(x, y) (x ? y : \"s\")\n#if F == 1\n#else\nlayout(location = "
        "1) "
        "in highp vec4 p[2];\n#endif\nstruct S { float a; } s;\nuniform B { int b; };\n"
        "const float c = -1.5 * 2.0 + float;\nvoid f(inout S s, int a[3]) {\n  float x[2] = { { "
        "1.0 },"
        " { .5e3 } }, y = s.a ? x[1] : F(1, 2);\n  for (int i = 0; i < 3; i++) { if (!x) "
        "continue; else discard; }\n  switch (b) { case 0x1Fu: do --b; while (true); default: "
        "return; }\n}\n";
    for (std::size_t length = 0; length <= source.size(); ++length) {
        firstError(source.substr(0, length));
        firstError(source.substr(length));
    }
    for (std::size_t at = 0; at < source.size(); ++at) {
        std::string changed = source;
        changed[at] = "{}()[];,#\"/$?:=-1a\n"[at % 19];
        firstError(changed);
    }
}

TEST(LimitsTest, MacrosOfThemselvesEnd) {
    EXPECT_EQ(parsed("#define A A\nfloat A;"), "#define A A | float:A");
    EXPECT_EQ(parsed("#define A B\n#define B A\nfloat A;"), "#define A B | #define B B | float:B");
    EXPECT_EQ(message("#define F(x) F(x) F(x)\nint F(1);"), "expected keyword");
}

TEST(LimitsTest, MacrosThatGrowWithoutEndAreRefused) {
    std::string source;
    for (char c = 'y'; c >= 'a'; --c) {
        source += std::string("#define ") + c + " ";
        source += repeated(std::string(1, static_cast<char>(c + 1)) + " ", 9) + "\n";
    }
    EXPECT_EQ(message(source + repeated("a ", 100)), "Out of memory");
}

// `form` again and again with the number of the round, from 1 on, for `@` and the one before for
// `^`.
std::string numbered(const std::string& form, std::size_t bytes) {
    std::string result;
    for (std::size_t i = 1; result.size() < bytes; ++i) {
        for (const char c : form) {
            if (c == '@' || c == '^') {
                result += std::to_string(c == '@' ? i : i - 1);
            } else {
                result += c;
            }
        }
    }
    return result;
}

// Texts that each cost time in a way of their own. Nothing is timed here: one that were read again
// from its beginning for each of its parts would run into the program's time limit.
TEST(LimitsTest, ALongTextOfTroubleEnds) {
    constexpr std::size_t kBytes = std::size_t{1} << 18;
    const auto fill = [](const std::string& text) { return repeated(text, kBytes / text.size()); };
    const std::string sources[] = {
        fill("a"),
        fill("("),
        fill("#define a\n"),
        fill("#if A\n"),
        fill("#ifdef A\n#else\n"),
        fill("#ifdef A\n#endif\n"),
        fill("#elif A\n#else\n"),
        "#define A\n" + fill("#elifdef A\n#else\n"),
        fill("#ifdef A\n#else\n") + "#endif",
        repeated("#ifdef A\n#else\n", kBytes / 32) + repeated("#endif\n", kBytes / 32),
        "#define F(x) x\n" + fill("F "),
        "#define F(x) x\n" + fill("F("),
        "#define F(x) x\n" + fill("F(1) "),
        "#define A B\n" + fill("A "),
        fill("/"),
        fill("/*"),
        fill("/* */"),
        fill("\""),
        fill("x = a ? b : c;"),
        fill("?"),
        fill("(;?:"),
        repeated("(;", kBytes / 5) + repeated("?:)", kBytes / 5),
        repeated("(a?b:", kBytes / 6) + repeated(")", kBytes / 6),
        "void f(int x) { " + fill("x = x + 1;"),
        "void f(int x) { x" + fill(".x"),
        "void f(int x) { " + fill("if (x) $"),
        "void f(int x) { switch (x) { " + fill("case 1+1:"),
        "const int x = " + fill("(1|1)+") + "1;",
        "void f(int x) { switch (x) { " + numbered("case @: ;", kBytes) + "}}",
        "struct S { " + numbered("float a@;", kBytes / 2) + "}; void f() { S s; " +
            numbered("s.a@;", kBytes / 3) + "}",
        "const float k0 = 1.0;" + numbered("const float k@ = k^ * 2.0;", kBytes),
    };
    for (const std::string& source : sources) {
        SCOPED_TRACE(source.substr(0, 40));
        EXPECT_EQ(firstError(source), firstError(source));
    }
}

#if !defined(_WIN32)
void* parseNested(void* result) {
    std::string& messages = *static_cast<std::string*>(result);
    for (const char* open : {"(", "1 + f(2 * ", "-", "a ? "}) {
        messages += message("int a; void f() { " + repeated(open, 100000)) + "|";
    }
    messages += message("void f() { " + repeated("if (1) { ", 100000)) + "|";
    messages += message("void f() { " + repeated("x = (", 250) + "1" + repeated(")", 250) + "; }");
    return nullptr;
}

// Half of the stack that a thread has on Windows leaves the other half to the caller.
TEST(LimitsTest, NestingEndsBeforeHalfAMegabyteOfStack) {
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
#if defined(__SANITIZE_ADDRESS__)
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, std::size_t{4} << 20), 0);
#else
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, std::size_t{512} << 10), 0);
#endif
    pthread_t thread;
    std::string messages;
    ASSERT_EQ(pthread_create(&thread, &attributes, parseNested, &messages), 0);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
    pthread_attr_destroy(&attributes);
    EXPECT_EQ(messages, repeated("nesting too deep|", 5) + "`x' was not declared in this scope");
}
#endif

}  // namespace
}  // namespace glsl
