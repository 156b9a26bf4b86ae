#include "transition/fixups.h"

#include <gtest/gtest.h>

namespace transition {
namespace {

using Pass = std::string (*)(std::string_view, std::vector<std::string>&);

struct FixupCase {
    Pass pass;
    const char* text;
    const char* expected;
};
void PrintTo(const FixupCase& c, std::ostream* out) {
    *out << c.text;
}

class FixupsTest : public testing::TestWithParam<FixupCase> {};

TEST_P(FixupsTest, Rewrites) {
    std::vector<std::string> notes;
    EXPECT_EQ(GetParam().pass(GetParam().text, notes), GetParam().expected);
    EXPECT_EQ(notes.empty(), std::string(GetParam().text) == GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Precision, FixupsTest,
    testing::Values(FixupCase{remove_precision, "precision highp float;\nx", "\nx"},
                    FixupCase{remove_precision, "#version 330 core\nx", "\nx"},
                    FixupCase{remove_precision, "float precise_;", "float precise_;"}));

INSTANTIATE_TEST_SUITE_P(
    Bools, FixupsTest,
    testing::Values(
        FixupCase{initialize_bools, "bool b;", "bool b = false;"},
        FixupCase{initialize_bools, "bool a, b;", "bool a = false, b = false;"},
        FixupCase{initialize_bools, "bool b = true;", "bool b = true;"},
        FixupCase{initialize_bools, "void f(bool a, bool b) {}", "void f(bool a, bool b) {}"},
        FixupCase{initialize_bools, "bool f() { return true; }", "bool f() { return true; }"}));

INSTANTIATE_TEST_SUITE_P(
    Globals, FixupsTest,
    testing::Values(FixupCase{globals_to_macros, "float s = sin(1.0);", "#define s (sin(1.0))"},
                    FixupCase{globals_to_macros, "vec2 r = vec2(1.0,\n ratio);\nx",
                              "#define r (vec2(1.0, ratio))\n\nx"},
                    FixupCase{globals_to_macros, "const float PI = 3.14;",
                              "const float PI = 3.14;"},
                    FixupCase{globals_to_macros, "const vec2 c = vec2(0.5, 0.5);",
                              "const vec2 c = vec2(0.5, 0.5);"},
                    FixupCase{globals_to_macros, "float f() { float s = sin(1.0); }",
                              "float f() { float s = sin(1.0); }"}));

INSTANTIATE_TEST_SUITE_P(Mod, FixupsTest,
                         testing::Values(FixupCase{write_out_mod, "mod(a, 2.0)",
                                                   "((a) - (2.0) * floor((a) / (2.0)))"},
                                         FixupCase{write_out_mod, "mod(f(a, b), c)",
                                                   "((f(a, b)) - (c) * floor((f(a, b)) / (c)))"},
                                         FixupCase{write_out_mod, "model(a)", "model(a)"},
                                         FixupCase{write_out_mod, "mod(a", "mod(a"}));

INSTANTIATE_TEST_SUITE_P(
    For, FixupsTest,
    testing::Values(FixupCase{split_for_headers, "for (int i = 0, j = 1; i < 3; ++i) x;",
                              "int i = 0, j = 1; for (; i < 3; ++i) x;"},
                    FixupCase{split_for_headers, "for (int i = 0; i < 3; ++i) x;",
                              "for (int i = 0; i < 3; ++i) x;"}));

TEST(FixupsTest, NestedModIsWrittenOutFromTheInside) {
    std::vector<std::string> notes;
    EXPECT_EQ(write_out_mod("mod(mod(a, b), c)", notes),
              "((((a) - (b) * floor((a) / (b)))) - (c) * floor((((a) - (b) * floor((a) / (b)))) / "
              "(c)))");
}

}  // namespace
}  // namespace transition
