#include <gtest/gtest.h>

#include <string>

#include "glsl/lexer.h"
#include "token_text.h"

namespace glsl {
namespace {

using test::describe;
using test::placedTokensOf;
using test::Reader;
using test::TokensCase;
using test::tokensOf;

class BranchTest : public testing::TestWithParam<TokensCase> {};

TEST_P(BranchTest, ReadsAs) {
    EXPECT_EQ(tokensOf(GetParam().source), GetParam().tokens);
}

INSTANTIATE_TEST_SUITE_P(
    Defined, BranchTest,
    testing::Values(
        TokensCase{"#define D\n#ifdef D\na\n#endif\nb", "define:D= id:a id:b end"},
        TokensCase{"#define D\n#ifdef D\na\n#else\nb\n#endif\nc", "define:D= id:a id:c end"},
        TokensCase{"#define D\n#ifndef D\na\n#endif\nb", "define:D= id:b end"},
        TokensCase{"#define D\n#ifndef D\na\n#else\nb\n#endif\nc", "define:D= id:b id:c end"},
        TokensCase{"#ifdef D\na\n#endif\nb", "id:b end"},
        TokensCase{"#ifdef D\na\n#else\nb\n#endif\nc", "id:b id:c end"},
        TokensCase{"#ifndef D\na\n#endif\nb", "id:a id:b end"},
        TokensCase{"#ifndef D\na\n#else\nb\n#endif\nc", "id:a id:c end"},
        TokensCase{"#ifdef D // #\na\n#endif // c\nb", "id:b end"},
        TokensCase{"#ifdef D\n// #endif\n/* #else */a\n#endif\nb", "id:b end"},
        TokensCase{"#ifndef D\na\n/*#else*//*#endif*/b\n#else\nc\n#endif\nd", "id:a id:b id:d end"},
        TokensCase{"#ifndef D\na\n#else\n//#endif\n/*\n#endif*/c\n#endif\nd", "id:a id:d end"},
        // A define in a kept branch is passed on the way to the branch's end.
        TokensCase{"#ifndef D\n#define N 4\nN\n#else\nc\n#endif\nN",
                   "define:N=4 int:4 int:4 end"}));

INSTANTIATE_TEST_SUITE_P(
    Comparisons, BranchTest,
    testing::Values(
        // Nothing is computed: a plain number is no macro.
        TokensCase{"#if 1\na\n#endif\nb", "id:b end"},
        TokensCase{"#if 0\na\n#endif\nb", "id:b end"},
        TokensCase{"#if false\na\n#endif\nb", "id:b end"},
        TokensCase{"#if defined(X)\na\n#endif\nb", "id:b end"},
        TokensCase{"#define X\n#if defined(X)\na\n#endif\nb", "define:X= id:b end"},
        TokensCase{"#define X 0\n#if X\na\n#endif\nb", "define:X=0 id:a id:b end"},
        TokensCase{"#define X 3\n#if X == 3\na\n#endif\nb", "define:X=3 id:a id:b end"},
        TokensCase{"#define X 3\n#if X==3\na\n#endif\nb", "define:X=3 id:a id:b end"},
        TokensCase{"#define X 3\n#if X = = 3\na\n#endif\nb", "define:X=3 id:a id:b end"},
        TokensCase{"#define X 3\n#if X == 4\na\n#endif\nb", "define:X=3 id:b end"},
        TokensCase{"#define X 3\n#if X != 4\na\n#endif\nb", "define:X=3 id:a id:b end"},
        TokensCase{"#define X 3\n#if X != 3\na\n#endif\nb", "define:X=3 id:b end"},
        TokensCase{"#if X == X\na\n#endif\nb", "id:a id:b end"},
        TokensCase{"#if X == Y\na\n#endif\nb", "id:b end"},
        TokensCase{"#if X != Y\na\n#endif\nb", "id:a id:b end"},
        TokensCase{"#if 1 == 1\na\n#endif\nb", "id:a id:b end"},
        // Spaces go out of the line, not out of the macro's text; tabs stay in both.
        TokensCase{"#define X 1 2\n#if X == 1 2\na\n#endif\nb", "define:X=1 2 id:b end"},
        TokensCase{"#define X 3\n#if X ==\t3\na\n#endif\nb", "define:X=3 id:b end"},
        // Anything else behind the name asks only whether it is a macro.
        TokensCase{"#define X 3\n#if X > 4\na\n#endif\nb", "define:X=3 id:a id:b end"},
        TokensCase{"#define X 3\n#if X ==\na\n#endif\nb", "define:X=3 id:a id:b end"},
        TokensCase{"#define X 3\n#if X // == 4\na\n#endif\nb", "define:X=3 id:a id:b end"},
        TokensCase{"#if X > 4\na\n#endif\nb", "id:b end"}));

INSTANTIATE_TEST_SUITE_P(
    Elif, BranchTest,
    testing::Values(
        TokensCase{"#define B\n#ifdef A\na\n#elifdef B\nb\n#endif\nc", "define:B= id:b id:c end"},
        TokensCase{"#define B\n#ifdef A\na\n#elif B\nb\n#else\nc\n#endif\nd",
                   "define:B= id:b id:d end"},
        TokensCase{"#ifdef A\na\n#elif B\nb\n#else\nc\n#endif\nd", "id:c id:d end"},
        TokensCase{"#ifdef A\na\n#elif B\nb\n#endif\nd", "id:d end"},
        // With the first branch taken, #elifdef is cut like #else,
        TokensCase{"#define A\n#ifdef A\na\n#elifdef B\nb\n#endif\nc", "define:A= id:a id:c end"},
        TokensCase{"#define A\n#ifdef A\na\n#elifdef B\nb\n#else\nx\n#endif\nc",
                   "define:A= id:a id:c end"},
        // while #elif is not: it does not hold, cuts to the #endif and leaves that in place.
        TokensCase{"#define A\n#ifdef A\na\n#elif B\nb\n#endif\nc",
                   "define:A= id:a id:b !6:7:Unsupported directive"},
        TokensCase{"#define A\n#ifdef A\na\n#elif A\nb\n#endif\nc",
                   "define:A= id:a id:b id:c end"}));

INSTANTIATE_TEST_SUITE_P(
    Nested, BranchTest,
    testing::Values(TokensCase{"#ifndef A\na\n#ifndef B\nb\n#endif\nc\n#endif\nd",
                               "id:a id:b id:c !7:7:Unsupported directive"},
                    TokensCase{"#ifndef A\na\n#ifdef B\nb\n#endif\nc\n#else\nd\n#endif\ne",
                               "id:a id:c id:e end"},
                    // A nested #if ends the cut, and the scan takes the first #endif that it meets.
                    TokensCase{"#ifdef A\na\n#ifndef B\nb\n#endif\nc\n#endif\nd",
                               "id:b id:c !7:7:Unsupported directive"},
                    TokensCase{"#ifdef A\n#ifdef B\nb\n#endif\n#else\nc\n#endif\nd",
                               "id:c id:d end"},
                    TokensCase{"#ifndef A\n#else\n#ifdef B\n#endif\nx\n#endif\ny",
                               "id:x !6:7:Unsupported directive"}));

INSTANTIATE_TEST_SUITE_P(
    Stray, BranchTest,
    testing::Values(
        // Without an open conditional #else counts what was before it as not taken.
        TokensCase{"a\n#else\nb\n#endif\nc", "id:a id:b id:c end"},
        TokensCase{"#define A\n#elif A\nb\n#endif\nc", "define:A= id:b id:c end"},
        TokensCase{"#elif A\nb\n#endif\nc", "id:c end"},
        TokensCase{"#elif A\nb\n#else\nc\n#endif\nd", "id:c id:d end"},
        TokensCase{"#define A\n#elif A\nb\n#else\nc\n#endif\nd", "define:A= id:b id:c id:d end"},
        // Nothing to cut without a directive behind.
        TokensCase{"#ifdef A\na b", "id:a id:b end"}, TokensCase{"#ifdef A\n", "end"},
        TokensCase{"#ifdef A", "end"}, TokensCase{"#ifndef A\na b", "id:a id:b end"},
        TokensCase{"#ifndef A\na\n#else\nb", "id:a id:b end"},
        TokensCase{"#ifdef A\na\n#else\nb", "id:b end"},
        TokensCase{"#ifdef A #endif b", "id:b end"}, TokensCase{"#ifdef A\n#endif_x", "id:_x end"},
        TokensCase{"#ifdef A\n#endifx", "!2:8:Unsupported directive"}));

TEST(BranchesTest, LinesBehindACutAreThoseOfTheSource) {
    EXPECT_EQ(placedTokensOf("#ifdef MISSING\na\nb\n#else\nc\nd\n#endif\ne"),
              "id:c@5:2 id:d@6:2 id:e@8:2 end@8:2");
    EXPECT_EQ(placedTokensOf("#ifndef MISSING\na\nb\n#else\nc\n/*\n*/d\n#endif\ne"),
              "id:a@2:2 id:b@3:2 id:e@9:2 end@9:2");
    EXPECT_EQ(placedTokensOf("#ifdef MISSING\na\nb\n#endif e\nf"), "id:e@4:3 id:f@5:2 end@5:2");
}

TEST(BranchesTest, ColumnsBehindARemovedWordAreThoseWithoutIt) {
    // The line of an #endif that is taken away keeps its other bytes, moved up.
    EXPECT_EQ(placedTokensOf("#ifndef A\na\n#endif b\nc"), "id:a@2:2 id:b@3:3 id:c@4:2 end@4:2");
    EXPECT_EQ(placedTokensOf("#ifdef A\na\n#else b\n#endif c\nd"),
              "id:b@3:3 id:c@4:3 id:d@5:2 end@5:2");
}

TEST(BranchesTest, ACutLeavesExactlyTheNewlinesOfItsText) {
    Reader reader("#ifdef A\none\ntwo/*\n*/three // #\n#endif tail");
    EXPECT_EQ(describe(reader->peek()), "id:tail");
    reader->read();
    EXPECT_EQ(reader->line(), 5u);
    Reader kept("#ifndef A\na\n#else\nb\nc\n#endif tail");
    kept->read();
    EXPECT_EQ(kept->remaining(), "\n\n\n\n tail");
}

TEST(BranchesTest, AFalseConditionalWithoutADirectiveBehindItChangesNothing) {
    Reader reader("#ifdef A\na b");
    EXPECT_EQ(describe(reader->peek()), "id:a");
    reader->read();
    EXPECT_EQ(reader->remaining(), " b");
}

TEST(BranchesTest, ATextCutAheadJoinsWhatIsLeft) {
    EXPECT_EQ(tokensOf("#ifndef A\nab#else x #endif cd"), "id:ab id:cd end");
    EXPECT_EQ(tokensOf("#ifndef A\nab#else x #endif_cd"), "id:ab_cd end");
}

TEST(BranchesTest, PeekAcrossAConditionalWorksItOnce) {
    Reader reader("a\n#ifdef A\nb\n#else\nc\n#endif\nd\n#else\ne\n#endif\nf");
    reader->read();
    EXPECT_EQ(describe(reader->peek()), "id:c");
    EXPECT_EQ(reader->line(), 1u);
    EXPECT_EQ(describe(reader->read()), "id:c");
    EXPECT_EQ(reader->line(), 5u);
    EXPECT_EQ(describe(reader->read()), "id:d");
    EXPECT_EQ(describe(reader->read()), "id:e") << "the stray #else is met as one";
    EXPECT_EQ(describe(reader->read()), "id:f");
}

TEST(BranchesTest, AConditionalReadAgainAfterRestoreCutsNothingMore) {
    Reader reader("a\n#ifdef A\nb\n#else\nc\n#endif\n#ifndef A\nd\n#else\ne\n#endif\nf");
    reader->read();
    reader->save();
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(describe(reader->read()), "id:c");
        EXPECT_EQ(reader->line(), 5u);
        EXPECT_EQ(describe(reader->read()), "id:d");
        EXPECT_EQ(reader->line(), 8u);
        EXPECT_EQ(describe(reader->read()), "id:f");
        EXPECT_EQ(reader->line(), 12u);
        reader->restore();
    }
}

TEST(BranchesTest, ADefineInsideASavedStretchIsWorkedOnce) {
    Reader reader("a\n#ifndef A\n#define N N N\nN\n#endif\nb");
    reader->read();
    reader->save();
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(describe(reader->read()), "define:N=N N");
        EXPECT_EQ(describe(reader->read()), "id:N");
        EXPECT_EQ(describe(reader->read()), "id:N");
        EXPECT_EQ(describe(reader->read()), "id:b");
        reader->restore();
    }
}

TEST(BranchesTest, ASourceWithItsBranchesCutReadsLikeOneWithoutThem) {
    const std::string with =
        "#ifdef A\nint broken = ;\n#else\nint x = 1;\n#endif\n"
        "#ifndef A\nint y = 2;\n#else\nint @;\n#endif\n";
    EXPECT_EQ(tokensOf(with), tokensOf("int x = 1; int y = 2;"));
}

TEST(BranchesTest, ThousandsOfConditionalsAreAllWorked) {
    std::string source;
    std::string expected;
    for (int i = 0; i < 3000; ++i) {
        const std::string name = "v" + std::to_string(i);
        source += "#ifdef NO\nx\n#else\n" + name + "\n#endif\n#ifndef NO\n;\n#else\ny\n#endif\n";
        expected += "id:" + name + " ; ";
    }
    EXPECT_EQ(tokensOf(source), expected + "end");
}

// What is a comment to the first search, from outside the string, is none to the second.
TEST(BranchesTest, AQuoteEndsWhatASearchSays) {
    EXPECT_EQ(tokensOf("#ifdef A\n#else\n\"/*\"\n#ifdef A\n#else\na #endif b \"*/\" #endif\nc"),
              "string:/* id:a id:b string:*/ id:c end");
    // No blanks go into a string.
    const std::string far(5000, '\n');
    EXPECT_EQ(tokensOf("#ifdef A\n#else\n" + far + "\"a\n#endif\n\""), "string:a\n\n end");
}

// The bytes around an #endif that is gone may begin a comment.
TEST(BranchesTest, ATextJoinedByACutIsSearchedAnew) {
    EXPECT_EQ(tokensOf("#ifdef A\n#else\n#ifdef A\n#else\na /#endif* #endif */ b #endif c"),
              "id:a id:b id:c end");
}

TEST(BranchesTest, AnEndifFarAheadGoesLikeANearOne) {
    const std::string far(5000, '\n');
    const std::string source = "#ifdef NO\n#else" + far;
    EXPECT_EQ(placedTokensOf(source + "#endif\na"), "id:a@5003:2 end@5003:2");
    EXPECT_EQ(placedTokensOf(source + "  #endif\t \n a"), "id:a@5003:3 end@5003:3");
    EXPECT_EQ(placedTokensOf(source + "#endif a"), "id:a@5002:3 end@5002:3");
    EXPECT_EQ(placedTokensOf(source + "b #endif"), "id:b@5002:2 end@5002:3");
    EXPECT_EQ(tokensOf(source + "b#endif_c"), "id:b_c end");
    // Blanks at the end of the line would become the macro's.
    EXPECT_EQ(tokensOf(source + "#endif #define X 1\n#if X == 1\nb\n#endif\n"),
              "define:X=1 id:b end");
    EXPECT_EQ(tokensOf(source + "#endif\n#endif"), "!5003:7:Unsupported directive");
}

// Each #else takes the first #endif that is left, all of them behind all of the #else.
TEST(BranchesTest, ThousandsOfConditionalsInEachOthersElseAreAllWorked) {
    std::string source;
    std::string expected;
    for (int i = 0; i < 40000; ++i) {
        source += "#ifdef NO\n#else\n;";
        expected += "; ";
    }
    for (int i = 0; i < 40000; ++i) {
        source += "#endif\nv\n";
        expected += "id:v ";
    }
    EXPECT_EQ(tokensOf(source), expected + "end");
    EXPECT_EQ(tokensOf(source + "#endif"), expected + "!160001:7:Unsupported directive");
}

}  // namespace
}  // namespace glsl
