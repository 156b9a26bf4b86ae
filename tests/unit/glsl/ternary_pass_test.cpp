#include "glsl/ternary_pass.h"

#include <gtest/gtest.h>

#include <string>

namespace glsl {
namespace {

std::string rewritten(const std::string& text) {
    SourceText source;
    source.assign(text.data(), text.size(), 0);
    return rewriteTernaries(source) ? std::string(source.view()) : "refused";
}

struct RewriteCase {
    const char* before;
    const char* after;
};
void PrintTo(const RewriteCase& c, std::ostream* out) {
    *out << c.before;
}

class RewriteTest : public testing::TestWithParam<RewriteCase> {};

TEST_P(RewriteTest, Becomes) {
    EXPECT_EQ(rewritten(GetParam().before), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    Plain, RewriteTest,
    testing::Values(
        RewriteCase{"", ""}, RewriteCase{"x = a;", "x = a;"},
        RewriteCase{"x = a < b ? c : d;", "x =( a < b )?( c ):( d);"},
        RewriteCase{"x = a ? b : c;", "x =( a )?( b ):( c);"},
        RewriteCase{" x=a?b:c;", " x=(a)?(b):(c);"},
        RewriteCase{"f(a ? b : c, d)", "f((a )?( b ):( c), d)"},
        RewriteCase{"return a ? b : c;", "return( a )?( b ):( c);"},
        RewriteCase{"(true ? 1 : 2)", "((true )?( 1 ):( 2))"},
        RewriteCase{"x = a ? b : c; y = d ? e : f;", "x =( a )?( b ):( c); y =( d )?( e ):( f);"},
        RewriteCase{"x = a ? b : c, y = d ? e : f;", "x =( a )?( b ):( c), y =( d )?( e ):( f);"}));

INSTANTIATE_TEST_SUITE_P(
    NestedAndCommas, RewriteTest,
    testing::Values(
        // Without parentheses of its own a second ternary takes over the first one's places.
        RewriteCase{"x = a ? b : c ? d : e;", "x =( a ? b : c )?( d ):( e);"},
        RewriteCase{"x = a ? b : (c ? d : e);", "x =( a )?( b ):( ((c )?( d ):( e)));"},
        RewriteCase{"x = (a ? b : c) ? d : e;", "x =( ((a )?( b ):( c)) )?( d ):( e);"},
        RewriteCase{"x = a ? (b ? c : d) : e;", "x =( a )?( ((b )?( c ):( d)) ):( e);"},
        // A comma ends a ternary only behind its colon; in front it belongs to the condition.
        RewriteCase{"f(a, b ? c : d)", "f((a, b )?( c ):( d))"},
        RewriteCase{"f(a ? b, c : d)", "f((a )?( b, c ):( d))"},
        RewriteCase{"f(a ? b : c, d ? e : g)", "f((a )?( b ):( c),( d )?( e ):( g))"},
        RewriteCase{"f(g(a ? b : c), d ? e : h)", "f((g((a )?( b ):( c)), d )?( e ):( h))"},
        RewriteCase{"x = f(a) ? g(b) : h(c);", "x =( f(a) )?( g(b) ):( h(c));"},
        RewriteCase{"x = v[a ? 1 : 2];", "x =( v[a )?( 1 ):( 2]);"}));

INSTANTIATE_TEST_SUITE_P(
    WhatBeginsAnExpression, RewriteTest,
    testing::Values(
        // `return` counts inside a word; with fewer than seven bytes left it does not.
        RewriteCase{"myreturnx ? b : c;", "myreturn(x )?( b ):( c);"},
        RewriteCase{"a ? b : c;", "a ? b : c;"},
        // Comparisons open nothing, other assignments do.
        RewriteCase{"a == b ? c : d;", "a == b ? c : d;"},
        RewriteCase{"a <= b ? c : d;", "a <= b ? c : d;"},
        RewriteCase{"a >= b ? c : d;", "a >= b ? c : d;"},
        RewriteCase{"a != b ? c : d;", "a !=( b )?( c ):( d);"},
        RewriteCase{"a += b ? c : d;", "a +=( b )?( c ):( d);"},
        RewriteCase{"a *= b == c ? d : e;", "a *=( b == c )?( d ):( e);"},
        RewriteCase{"= a ? b : c;", "= a ? b : c;"}, RewriteCase{"x= a ? b : c;", "x= a ? b : c;"},
        RewriteCase{" x= a ? b : c;", " x=( a )?( b ):( c);"},
        RewriteCase{"a, b ? c : d;", "a,( b )?( c ):( d);"}));

INSTANTIATE_TEST_SUITE_P(
    CommentsAndStrings, RewriteTest,
    testing::Values(RewriteCase{"x = a // ? : ;\n ? b : c;", "x =( a // ? : ;\n )?( b ):( c);"},
                    RewriteCase{"x = a /* ? : ; */ ? b : c;", "x =( a /* ? : ; */ )?( b ):( c);"},
                    RewriteCase{"x = a /*;*//*;*/ ? b : c;", "x =( a /*;*//*;*/ )?( b ):( c);"},
                    RewriteCase{"x = a /*;*///;\n ? b : c;", "x =( a /*;*///;\n )?( b ):( c);"},
                    // `/*/` closes at once here.
                    RewriteCase{"x = a /*/ ? b : c; /**/", "x =( a /*/ )?( b ):( c); /**/"},
                    RewriteCase{"x = a ? b /* : c;", "x = a ? b /* : c;"},
                    RewriteCase{"x = a ? b : c // ;", "x = a ? b : c // ;"},
                    // A string is code, but for its quotes.
                    RewriteCase{"x = a ? \"b:\" : c;", "x =( a )?( \"b:\" ):( c);"},
                    RewriteCase{"x = a ? \"b;\" : c;", "x =( a )?( \"b):();\" : c;"},
                    RewriteCase{"x = a ? \"//\" : c;", "x =( a )?( \"//\" ):( c);"},
                    RewriteCase{"x = a ? \" // \" : c;\n : d;",
                                "x =( a )?( \" // \" : c;\n ):( d);"}));

TEST(TernaryPassTest, APositionOutOfOrderFiresWithClampedPieces) {
    // end, question, colon: the record of `=` ends at the first `;`, and the rest lies behind it.
    EXPECT_EQ(rewritten("x = 1; b ? c : d;"), "x =( 1)?():(); b ? c : d;");
    // colon, question, end
    EXPECT_EQ(rewritten("(a : b ? c)"), "((a : b )?():( b ? c))");
    // colon, end, question
    EXPECT_EQ(rewritten("x = a : b; c ? d;"), "x =( a : b)?():( b); c ? d;");
    // question, end, colon
    EXPECT_EQ(rewritten("x = a ? b; c : d;"), "x =( a )?( b):(); c : d;");
}

TEST(TernaryPassTest, ACaseLabelBehindAnAssignmentLeavesItsColon) {
    EXPECT_EQ(rewritten("y = 1; case 2: f(b ? c : d);"), "y = 1; case 2: f((b )?( c ):( d));");
}

TEST(TernaryPassTest, AForHeaderEndsTheAssignmentInIt) {
    EXPECT_EQ(rewritten("for (i = 0; a ? b : c; ++i)"), "for (i =( 0)?():(); a ? b : c; ++i)");
}

TEST(TernaryPassTest, AClosedTernaryIsScannedNoFurther) {
    EXPECT_EQ(rewritten("x = a ? b : c ; ? d : e ;"), "x =( a )?( b ):( c ); ? d : e ;");
}

TEST(TernaryPassTest, ALaterMarkOverwritesAnEarlierOne) {
    EXPECT_EQ(rewritten("x = a ? b ? c : d;"), "x =( a ? b )?( c ):( d);");
    EXPECT_EQ(rewritten("x = a ? b : c : d;"), "x =( a )?( b : c ):( d);");
}

TEST(TernaryPassTest, ManyTernariesInALongTextAreAllRewritten) {
    std::string before = "/* filler so that blocks of sixteen bytes do not line up */";
    std::string after = before;
    for (int i = 0; i < 3000; ++i) {
        const std::string name = "v" + std::to_string(i);
        before += name + " = a ? " + name + " : (b ? 1 : 2) + retry;\n";
        after += name + " =( a )?( " + name + " ):( ((b )?( 1 ):( 2)) + retry);\n";
    }
    EXPECT_EQ(rewritten(before), after);
}

TEST(TernaryPassTest, DeepParenthesesAreRewrittenFromTheInside) {
    std::string before = "x = ";
    for (int i = 0; i < 200; ++i) {
        before += "(a ? b : ";
    }
    before += "c" + std::string(200, ')') + ";";
    const std::string result = rewritten(before);
    EXPECT_EQ(result.size(), before.size() + 200 * 6);
    EXPECT_EQ(result.substr(0, 30), "x = ((a )?( b ):( ((a )?( b ):");
}

TEST(TernaryPassTest, TextsThatFireWithoutEndAreRefused) {
    std::string before;
    for (int i = 0; i < 3000; ++i) {
        before += "(;";
    }
    for (int i = 0; i < 3000; ++i) {
        before += " ? : )";
    }
    EXPECT_EQ(rewritten(before), "refused");
}

}  // namespace
}  // namespace glsl
