#include "glsl/ternary_pass.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <string>
#include <vector>

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

// The pass in its plainest form: one string, each rewrite in place, no limits but on its length.
struct Record {
    long start = -1, question = -1, colon = -1, end = -1;
};

std::string piece(const std::string& whole, long from, long to) {
    const long size = static_cast<long>(whole.size());
    from = std::min(std::max(from, 0L), size);
    to = std::min(std::max(to, from), size);
    return whole.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from));
}

std::string plainlyRewritten(std::string text) {
    std::vector<Record> stack;
    const auto at = [&](long k) {
        return k >= 0 && k < static_cast<long>(text.size()) ? text[static_cast<std::size_t>(k)]
                                                            : '\0';
    };
    const auto restart = [&](long k) {
        stack.assign(1, Record());
        stack.back().start = k;
    };
    for (long i = 0; i < static_cast<long>(text.size()) && text.size() < 5000; ++i) {
        while (at(i) == '/' && (at(i + 1) == '/' || at(i + 1) == '*')) {
            const std::size_t end = at(i + 1) == '/' ? text.find('\n', static_cast<std::size_t>(i))
                                                     : text.find("*/", static_cast<std::size_t>(i));
            const long length = at(i + 1) == '/' ? 1 : 2;
            i = end == std::string::npos ? static_cast<long>(text.size())
                                         : static_cast<long>(end) + length;
        }
        i += at(i) == '"' ? 1 : 0;
        const char c = at(i);
        if (c == 'r' && i < static_cast<long>(text.size()) - 6 &&
            text.substr(static_cast<std::size_t>(i), 6) == "return") {
            restart(i + 5);
        }
        if (c == '=' && i >= 2 && at(i - 1) != '<' && at(i - 1) != '=' && at(i - 1) != '>' &&
            at(i + 1) != '=') {
            restart(i);
        }
        if (c == ',' && stack.empty()) {
            restart(i);
        }
        if (c == '(') {
            stack.emplace_back();
            stack.back().start = i;
        }
        if (stack.empty()) {
            continue;
        }
        Record& top = stack.back();
        top.question = c == '?' ? i : top.question;
        top.colon = c == ':' ? i : top.colon;
        if (c == ';' || c == ')' ||
            (c == ',' && i != top.start && top.question >= 1 && top.colon > top.question)) {
            top.end = i;
        }
        if (top.start >= 0 && top.question >= 0 && top.colon >= 0 && top.end >= 0) {
            const long first = top.start + 1;
            const std::string whole = piece(text, first, top.end);
            const std::string made =
                "(" + piece(whole, 0, top.question - first) + ")?(" +
                piece(whole, top.question + 1 - first, top.colon - first) + "):(" +
                piece(whole, top.colon + 1 - first, static_cast<long>(whole.size())) + ")";
            text.replace(static_cast<std::size_t>(first), whole.size(), made);
            i = top.start + static_cast<long>(made.size()) + 1;
            top = Record();
            if (at(i) == ',') {
                restart(i);
            }
        }
        if (at(i) == ')') {
            stack.pop_back();
        }
    }
    return text;
}

TEST(TernaryPassTest, LeavesTheTextThatThePlainestFormLeaves) {
    static const char* const pieces[] = {"?",  ":",  ";",    ",",  "(",     ")",        "=",
                                         "==", "<=", "a",    "b ", " ",     "return",   " return ",
                                         "r",  "re", "/",    "//", "/*",    "*/",       "/*/",
                                         "\n", "\"", "x = ", "f(", "? b :", "a ? b : c"};
    std::mt19937 random(3);
    for (int i = 0; i < 60000 && !testing::Test::HasFailure(); ++i) {
        std::string source;
        for (std::size_t count = random() % 40; count != 0; --count) {
            source += pieces[random() % std::size(pieces)];
        }
        const std::string expected = plainlyRewritten(source);
        if (expected.size() < 5000) {
            ASSERT_EQ(rewritten(source), expected) << source;
        }
    }
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
