#include "transition/macros.h"

#include <gtest/gtest.h>

namespace transition {
namespace {

TEST(MacrosTest, UseWithANestedCommaIsWrittenOut) {
    std::vector<std::string> notes;
    EXPECT_EQ(expand_nested_macros("#define twice(x) (x + x)\ny = twice(f(a, b));", notes),
              "#define twice(x) (x + x)\ny =  (f(a, b) + f(a, b));");
    EXPECT_EQ(notes.size(), 1u);
}

TEST(MacrosTest, UseWithoutOneStays) {
    std::vector<std::string> notes;
    const char* text = "#define sum(x, y) (x + y)\nz = sum(a, b);";
    EXPECT_EQ(expand_nested_macros(text, notes), text);
    EXPECT_TRUE(notes.empty());
}

TEST(MacrosTest, MacroThatUsesItselfEnds) {
    std::vector<std::string> notes;
    const std::string grown =
        expand_nested_macros("#define f(x) f(f(g(x, x)))\ny = f(g(a, b));", notes);
    EXPECT_LT(grown.size(), size_t{1} << 26);
}

TEST(MacrosTest, MacroOfAFunctionBodyIsPutInPlace) {
    std::vector<std::string> notes;
    EXPECT_EQ(inline_local_macros("void f() {\n#define N 4.0 // four\n  x = N * NN;\n}", notes),
              "void f() {\n\n  x =  4.0  * NN;\n}");
    EXPECT_EQ(notes.size(), 1u);
}

TEST(MacrosTest, MacroBetweenFunctionsStays) {
    std::vector<std::string> notes;
    const char* text = "#define N 4.0\nfloat f() { return N; }";
    EXPECT_EQ(inline_local_macros(text, notes), text);
}

}  // namespace
}  // namespace transition
