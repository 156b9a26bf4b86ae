#include "transition/params.h"

#include <gtest/gtest.h>

namespace transition {
namespace {

struct ScopeCase {
    const char* text;
    const char* expected;
};
void PrintTo(const ScopeCase& c, std::ostream* out) {
    *out << c.text;
}

class ParamsTest : public testing::TestWithParam<ScopeCase> {};

TEST_P(ParamsTest, HiddenNamesStay) {
    Edits edits;
    const std::string text = GetParam().text;
    replace_globals(scan(text), {{"size", "G"}}, edits);
    EXPECT_EQ(edits.apply(text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Scopes, ParamsTest,
    testing::Values(ScopeCase{"void f() { x = size; }", "void f() { x = G; }"},
                    ScopeCase{"void f() { x = p.size; }", "void f() { x = p.size; }"},
                    ScopeCase{"void f() { float size = 2.0 * size; x = size; }",
                              "void f() { float size = 2.0 * G; x = size; }"},
                    ScopeCase{"void f() { { float size = 1.0; } x = size; }",
                              "void f() { { float size = 1.0; } x = G; }"},
                    ScopeCase{"float f(float size) { return size; } float g() { return size; }",
                              "float f(float size) { return size; } float g() { return G; }"},
                    ScopeCase{"float f(float size); float g() { return size; }",
                              "float f(float size); float g() { return G; }"},
                    ScopeCase{"void f() { float size = g(size, size), y = size; }",
                              "void f() { float size = g(G, G), y = size; }"},
                    ScopeCase{"} } size {", "} } G {"}));

}  // namespace
}  // namespace transition
