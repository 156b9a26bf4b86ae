#include "transition/ternary.h"

#include <gtest/gtest.h>

namespace transition {
namespace {

struct TernaryCase {
    const char* text;
    const char* expected;
};
void PrintTo(const TernaryCase& c, std::ostream* out) {
    *out << c.text;
}

class TernaryTest : public testing::TestWithParam<TernaryCase> {};

TEST_P(TernaryTest, GroupsAsGlslDoes) {
    std::vector<std::string> notes;
    EXPECT_EQ(parenthesize_ternaries(GetParam().text, notes), GetParam().expected);
    EXPECT_EQ(notes.empty(), std::string(GetParam().text) == GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Ternaries, TernaryTest,
    testing::Values(
        TernaryCase{"x = a ? b : c;", "x = a ? b : c;"},
        TernaryCase{"x = a ? b : c ? d : e;", "x = a ? b : (c ? d : e);"},
        TernaryCase{"x = a ? b ? c : d : e;", "x = a ? (b ? c : d) : e;"},
        TernaryCase{"x = a ? b : c ? d : e ? f : g;", "x = a ? b : (c ? d : (e ? f : g));"},
        TernaryCase{"f(a, b ? c : d);", "f(a, (b ? c : d));"},
        TernaryCase{"f(b ? c : d, a);", "f(b ? c : d, a);"},
        TernaryCase{"x = a != b ? c : d - e;", "x = (a != b) ? c : (d - e);"},
        TernaryCase{"float x = a ? 1. - p : (p);", "float x = a ? (1. - p) : (p);"},
        TernaryCase{"x = (a) + (b) ? -c : f(d);", "x = ((a) + (b)) ? (-c) : (f(d));"},
        TernaryCase{"x = a < b ? c : d > e ? f : g;", "x = (a < b) ? c : ((d > e) ? f : g);"},
        TernaryCase{"return a ? b : c;", "return a ? b : c;"},
        TernaryCase{"{ x = f(a, g(b), c < d ? 1 : 2); }", "{ x = f(a, g(b), ((c < d) ? 1 : 2)); }"},
        TernaryCase{"case 1: x = 2;", "case 1: x = 2;"}, TernaryCase{"a ?", "a ?"}));

TEST(TernaryTest, VeryDeepNestingEnds) {
    std::vector<std::string> notes;
    const std::string open(100000, '(');
    EXPECT_EQ(parenthesize_ternaries(open, notes), open);
    std::string chain = "x = a";
    for (int i = 0; i < 5000; ++i) {
        chain += " ? b : c";
    }
    EXPECT_GE(parenthesize_ternaries(chain, notes).size(), chain.size());
}

}  // namespace
}  // namespace transition
