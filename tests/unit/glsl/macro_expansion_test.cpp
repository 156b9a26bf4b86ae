#include "glsl/macro_expansion.h"

#include <gtest/gtest.h>

#include <string>

namespace glsl {
namespace {

// The text behind a `#define` line, the byte at which the line ends included, after the macro's
// uses have been replaced. A `value` that begins with `(` makes the macro function-like.
std::string expanded(const std::string& name, const std::string& value, const std::string& behind) {
    SourceText source;
    source.assign(behind.data(), behind.size(), 0);
    const Macro macro{name, value, !value.empty() && value.front() == '('};
    ExpansionLimits limits{100000, 1000000};
    std::string scratch;
    return expandMacro(source, 0, macro, limits, scratch) == Expanded::refused
               ? "refused"
               : std::string(source.view());
}

struct ExpandCase {
    const char* name;
    const char* value;
    const char* before;
    const char* after;
};
void PrintTo(const ExpandCase& c, std::ostream* out) {
    *out << c.name << "=" << c.value << " in " << c.before;
}

class ExpandTest : public testing::TestWithParam<ExpandCase> {};

TEST_P(ExpandTest, Becomes) {
    EXPECT_EQ(expanded(GetParam().name, GetParam().value, GetParam().before), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    Names, ExpandTest,
    testing::Values(ExpandCase{"N", "4", "\nint a = N;", "\nint a = 4;"},
                    ExpandCase{"N", "4", "\nN", "\n4"},
                    ExpandCase{"N", "4", "N", "N"},  // the byte at the line's end is passed
                    ExpandCase{"N", "4", "", ""},
                    ExpandCase{"N", "4", "\nfloat NN = N_ + N1 + aN + _N;",
                               "\nfloat NN = N_ + N1 + aN + _N;"},
                    ExpandCase{"N", "4", "\nN N;N+N", "\n4 4;4+4"},
                    ExpandCase{"highp", "", "\nhighp float a;", "\n float a;"},
                    ExpandCase{"N", "M", "\nN M", "\nM M"},
                    ExpandCase{"N", "N N", "\nN;", "\nN N;"},  // not looked at again
                    ExpandCase{"LONG_NAME_X", "y", "\nLONG_NAME_X LONG_NAME_Y LONG_NAME_",
                               "\ny LONG_NAME_Y LONG_NAME_"},
                    ExpandCase{"a", "bb", "\na.a a[a]a", "\nbb.bb bb[bb]bb"}));

INSTANTIATE_TEST_SUITE_P(
    CommentsStringsDirectives, ExpandTest,
    testing::Values(
        ExpandCase{"N", "4", "\n// N\nN", "\n// N\n4"},
        ExpandCase{"N", "4", "\n/* N */N", "\n/* N */4"},
        ExpandCase{"N", "4", "\n/*N*//*N*/N", "\n/*N*//*N*/4"},
        ExpandCase{"N", "4", "\n/*N*///N\nN", "\n/*N*///N\n4"},
        ExpandCase{"N", "4", "\n/*/N*/N", "\n/*/N*/4"}, ExpandCase{"N", "4", "\n/* N", "\n/* N"},
        ExpandCase{"N", "4", "\n// N", "\n// N"}, ExpandCase{"N", "4", "\n\"N\"N", "\n\"N\"4"},
        ExpandCase{"N", "4", "\n\"N", "\n\"N"}, ExpandCase{"N", "4", "\na/N", "\na/4"},
        // What follows a string at once is neither a comment nor a string to this scan.
        ExpandCase{"N", "4", "\n\"\"/*N*/", "\n\"\"/*4*/"},
        // The byte behind a use is passed unread: here the comment's slash.
        ExpandCase{"N", "4", "\nN/*N*/", "\n4/*4*/"}, ExpandCase{"N", "4", "\nN\"N\"", "\n4\"4\""},
        // The line's own comment is met behind its first byte, so it is read like text.
        ExpandCase{"N", "4", "// N\nN", "// 4\n4"},
        ExpandCase{"N", "4", "\n#ifdef N\nN", "\n#ifdef N\n4"},
        ExpandCase{"N", "4", "\n#ifndef N\n#if N\n#elif N\n#elifdef N\n#else N\nN",
                   "\n#ifndef N\n#if N\n#elif N\n#elifdef N\n#else N\n4"},
        ExpandCase{"N", "4", "\n#define M N\n#define N 5", "\n#define M 4\n#define 4 5"},
        ExpandCase{"N", "4", "\n#endif N\n#extension N : N", "\n#endif 4\n#extension 4 : 4"},
        ExpandCase{"N", "4", "\n#ifdef N", "\n#ifdef N"},
        ExpandCase{"else", "4", "\n#else else\nelse", "\n#else else\n4"}));

INSTANTIATE_TEST_SUITE_P(
    Calls, ExpandTest,
    testing::Values(
        ExpandCase{"SQ", "(x) ((x)*(x))", "\nSQ(a + 1);", "\n((a+1)*(a+1));"},
        ExpandCase{"SQ", "(x) ((x)*(x))", "\nSQ (a) SQ( b )", "\n((a)*(a)) ((b)*(b))"},
        ExpandCase{"F", "(a,b) a-b", "\nF(1,2);F(x , y)", "\n1-2;x-y"},
        ExpandCase{"F", "( a , b ) a-b", "\nF(1,2)", "\n1-2"},
        ExpandCase{"F", "(a) a+aa+_a+a1", "\nF(x)", "\nx+aa+_a+a1"},
        // The byte behind the parameters is dropped, whatever it is.
        ExpandCase{"F", "(a)xa", "\nF(1)", "\n1"}, ExpandCase{"F", "(a)", "\nF(1);", "\n;"},
        // Parameters one after the other: the first argument can be taken for the second one.
        ExpandCase{"F", "(x,y) x+y", "\nF(y,1)", "\n1+1"},
        ExpandCase{"F", "(x,y) x+y", "\nF(2,x)", "\n2+x"},
        // A comma inside parentheses splits too, and unequal counts replace nothing.
        ExpandCase{"F", "(x) g(x)", "\nF(h(1,2))", "\ng(x)"},
        ExpandCase{"F", "(x,y) x*y", "\nF(h(1,2))", "\nh(1*2)"},
        ExpandCase{"F", "(x) g(x)", "\nF()", "\ng(x)"}, ExpandCase{"F", "() g", "\nF()", "\ng"},
        ExpandCase{"F", "() g", "\nF(1)", "\ng"}, ExpandCase{"F", "(x,) x", "\nF(1,)", "\n1"},
        ExpandCase{"F", "(x) x", "\nF((1)+(2))", "\n(1)+(2)"},
        ExpandCase{"F", "(x) x;", "\nF(a)F(b)", "\na;F(b)"},  // the F behind `)` is passed unread
        ExpandCase{"F", "(x) x", "\nF(F(1))", "\nF(1)"},
        ExpandCase{"F", "(x) x", "\nF(a\n+b)c", "\na\n+bc"},
        ExpandCase{"F", "(x) [x]", "\nF + 1 (2) 3", "\n[2] 3"},
        ExpandCase{"F", "(x) [x]", "\nF(1, 2", "\n[x]"},
        ExpandCase{"F", "(x) [x]", "\nF(1+2", "\n[1+2]"},
        ExpandCase{"F", "(x [x]", "\nF(1);", "\n;"}));

INSTANTIATE_TEST_SUITE_P(CallsWithoutParentheses, ExpandTest,
                         testing::Values(ExpandCase{"F", "(a) a", "\nx = F\n;", "\nx = (a) a\n;"},
                                         ExpandCase{"F", "(a) a", "\nx =   F ;\n(1)",
                                                    "\nx =   (a) a ;\n(1)"},
                                         ExpandCase{"F", "(F) F", "\nF\nF(2)", "\n(F) F\n2"},
                                         ExpandCase{"F", "(a) a", "\nx F", "\nx (a) a"},
                                         ExpandCase{"F", "(a) a", "\nF}", "\n(a) a}"},
                                         ExpandCase{"F", "(a", "\nF;\n", "\n(a;\n"}));

TEST(MacroExpansionTest, LeavesATextWithoutTheNameAlone) {
    const std::string text(5000, 'x');
    EXPECT_EQ(expanded("y", "z", text), text);
    EXPECT_EQ(expanded("xx", "z", text), text);
}

TEST(MacroExpansionTest, FindsNamesAtEveryPlaceOfABlock) {
    for (std::size_t at = 1; at < 40; ++at) {
        const std::string before = std::string(at, ' ') + "name" + std::string(40, ' ');
        const std::string after = std::string(at, ' ') + "v" + std::string(40, ' ');
        EXPECT_EQ(expanded("name", "v", before), after) << at;
        EXPECT_EQ(expanded("name", "v", before.substr(0, at + 4)), after.substr(0, at + 1)) << at;
    }
}

TEST(MacroExpansionTest, TextThatWouldGrowBeyondTheLimitIsRefusedAndStays) {
    const std::string text = "\n" + std::string(200, 'N') + " N N N";
    SourceText source;
    source.assign(text.data(), text.size(), 0);
    const std::string value(100, 'v');
    const Macro macro{"N", value, false};
    ExpansionLimits limits{400, 1000};
    std::string scratch;
    EXPECT_EQ(expandMacro(source, 0, macro, limits, scratch), Expanded::refused);
    EXPECT_EQ(source.view(), text);
}

TEST(MacroExpansionTest, ABodyThatGrowsWithEachParameterIsRefused) {
    std::string parameters = "(a";
    std::string arguments = "b b";
    for (char c = 'b'; c <= 'z'; ++c) {
        parameters += std::string(",") + c;
        arguments +=
            c == 'z' ? ",z"
                     : std::string(",") + static_cast<char>(c + 1) + " " + static_cast<char>(c + 1);
    }
    // Each parameter stands for the next one twice; spaces go, so use a separator that stays.
    for (char& c : arguments) {
        c = c == ' ' ? '+' : c;
    }
    EXPECT_EQ(expanded("F", parameters + ") a", "\nF(" + arguments + ")"), "refused");
}

}  // namespace
}  // namespace glsl
