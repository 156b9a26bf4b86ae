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

class DirectiveTest : public testing::TestWithParam<TokensCase> {};

TEST_P(DirectiveTest, ReadsAs) {
    EXPECT_EQ(tokensOf(GetParam().source), GetParam().tokens);
}

INSTANTIATE_TEST_SUITE_P(
    Version, DirectiveTest,
    testing::Values(
        TokensCase{"#version 330", "version:330:0 end"},
        TokensCase{"#version 330 core", "version:330:0 end"},
        TokensCase{"#version 330 compatibility", "version:330:1 end"},
        TokensCase{"#version 300 es\na", "version:300:2 id:a end"},
        TokensCase{"#version\t 330\t es", "version:330:2 end"},
        TokensCase{"#version 330\ncore", "version:330:0 id:core end"},
        TokensCase{"#version 330 // es", "version:330:0 end"},
        TokensCase{"#version330", "version:330:0 end"},
        TokensCase{"#version 99999999999999", "version:2147483647:0 end"},
        TokensCase{"#version 330 foo", "!1:17:Invalid profile in #version directive"},
        TokensCase{"#version 330 corex", "!1:19:Invalid profile in #version directive"},
        TokensCase{"#version", "!1:9:Expected version number in #version directive"},
        TokensCase{"#version \n330", "!1:10:Expected version number in #version directive"},
        TokensCase{"#version es", "!1:10:Expected version number in #version directive"}));

INSTANTIATE_TEST_SUITE_P(
    Extension, DirectiveTest,
    testing::Values(
        TokensCase{"#extension all : enable", "extension:all:0 end"},
        TokensCase{"#extension foo:require", "extension:foo:1 end"},
        TokensCase{"#extension foo\t:\twarn", "extension:foo:2 end"},
        TokensCase{"#extension foo : disable x", "extension:foo:3 id:x end"},
        TokensCase{"#extension", "!1:11:Expected extension name in #extension directive"},
        TokensCase{"#extension : enable", "!1:12:Expected extension name in #extension directive"},
        TokensCase{"#extension _a : enable",
                   "!1:12:Expected extension name in #extension directive"},
        TokensCase{"#extension GL_ARB_foo : enable", "!1:14:Expected `:' in #extension directive"},
        TokensCase{"#extension foo2 : enable", "!1:15:Expected `:' in #extension directive"},
        TokensCase{"#extension foo", "!1:15:Expected `:' in #extension directive"},
        TokensCase{"#extension foo :", "!1:17:Expected behavior in #extension directive"},
        TokensCase{"#extension foo : \nenable", "!1:18:Expected behavior in #extension directive"},
        TokensCase{"#extension foo : enabled",
                   "!1:25:Unexpected behavior in #extension directive"}));

INSTANTIATE_TEST_SUITE_P(
    Define, DirectiveTest,
    testing::Values(
        TokensCase{"#define N 4\nint a = N;", "define:N=4 keyword:int id:a = int:4 ; end"},
        TokensCase{"#define N\nN a", "define:N= id:a end"},
        TokensCase{"#define N", "define:N= end"}, TokensCase{"#define N ", "define:N= end"},
        TokensCase{"#define N 4 5 \nN", "define:N=4 5  int:4 int:5 end"},
        TokensCase{"#define N 4\r\nN", "define:N=4 int:4 end"},
        TokensCase{"#define N\r\nN x", "define:N= id:x end"},
        TokensCase{"#define\t_n1\v 4\n_n1", "define:_n1=4 int:4 end"},
        TokensCase{"#define N 4// c\nN", "define:N=4 int:4 end"},
        TokensCase{"#define N 4 /* c */ 5\nN", "define:N=4  int:5 int:4 end"},
        TokensCase{"#define N a/b\n", "define:N=a/b end"},
        TokensCase{"#define N// c\nN x", "define:N= id:x end"},
        TokensCase{"#define SQ(x) ((x)*(x))\nSQ(a + 1)",
                   "define:SQ=(x) ((x)*(x)) ( ( id:a + int:1 ) * ( id:a + int:1 ) ) end"},
        TokensCase{"#define P (x)\nP", "define:P=(x) ( id:x ) end"},
        TokensCase{"#define F(a) a\nx = F\n;", "define:F=(a) a id:x = ( id:a ) id:a ; end"},
        TokensCase{"#define A 1\n#define B A\nB", "define:A=1 define:B=1 int:1 end"},
        TokensCase{"#define B A\n#define A 1\nB", "define:B=A define:A=1 int:1 end"},
        TokensCase{"#define A A A\nA", "define:A=A A id:A id:A end"},
        TokensCase{"#define A B\n#define B A\nA B", "define:A=B define:B=B id:B id:B end"},
        TokensCase{"N\n#define N 4\nN", "id:N define:N=4 int:4 end"},
        TokensCase{"#define N 1\n#define N 2",
                   "define:N=1 !2:9:Expected define name in #define directive"},
        TokensCase{"#define", "!1:8:Expected define name in #define directive"},
        TokensCase{"#define 4 5", "!1:9:Expected define name in #define directive"},
        TokensCase{"#define \nN", "!1:9:Expected define name in #define directive"},
        // A ternary in a value was rewritten on the line itself.
        TokensCase{"#define T (a ? b : c)\nT",
                   "define:T=((a )?( b ):( c)) ( ( id:a ) ? ( id:b ) : ( id:c ) ) end"},
        TokensCase{"#define G #x\n", "define:G=#x end"}));

INSTANTIATE_TEST_SUITE_P(
    Others, DirectiveTest,
    testing::Values(TokensCase{"# version 330", "!1:2:Expected directive"},
                    TokensCase{"#", "!1:2:Expected directive"},
                    TokensCase{"#1", "!1:2:Expected directive"},
                    TokensCase{"#_a", "!1:2:Expected directive"},
                    TokensCase{"a #\n", "id:a !1:4:Expected directive"},
                    TokensCase{"#pragma x", "!1:8:Unsupported directive"},
                    TokensCase{"#include \"a\"", "!1:9:Unsupported directive"},
                    TokensCase{"#endif", "!1:7:Unsupported directive"},
                    TokensCase{"#undef N", "!1:7:Unsupported directive"},
                    TokensCase{"#line 3", "!1:6:Unsupported directive"},
                    TokensCase{"#defined N", "!1:9:Unsupported directive"},
                    TokensCase{"#ifdef", "!1:7:Expected define name in #ifdef directive"},
                    TokensCase{"#ifdef \nN", "!1:8:Expected define name in #ifdef directive"},
                    TokensCase{"#ifndef +", "!1:9:Expected define name in #ifdef directive"},
                    TokensCase{"#if !defined(X)", "!1:5:Expected define name in #ifdef directive"},
                    TokensCase{"#if (1)", "!1:5:Expected define name in #ifdef directive"},
                    TokensCase{"#elif", "!1:6:Expected define name in #ifdef directive"},
                    TokensCase{"#elifdef", "!1:9:Expected define name in #ifdef directive"}));

TEST(DirectivesTest, PositionsBehindADefineAreThoseOfTheRewrittenText) {
    EXPECT_EQ(placedTokensOf("#define LONGER x\nLONGER y\nz"),
              "define:LONGER=x@1:17 id:x@2:2 id:y@2:4 id:z@3:2 end@3:2");
}

TEST(DirectivesTest, ANameTokenHoldsTheMacrosSymbol) {
    Reader reader("#define N 4\n");
    const token& define = reader->read();
    ASSERT_TRUE(define.isDirective(DirectiveKind::define));
    ASSERT_NE(define.name->macro, nullptr);
    EXPECT_EQ(*define.name->macro, "4");
}

TEST(DirectivesTest, PeekAcrossADefineWorksItOnce) {
    Reader reader("a\n#define N N N\nN b");
    reader->read();
    EXPECT_EQ(describe(reader->peek()), "define:N=N N");
    EXPECT_EQ(describe(reader->read()), "define:N=N N");
    EXPECT_EQ(reader->remaining(), "\nN N b") << "replaced once, although it holds its own name";
}

TEST(DirectivesTest, ADefineReadAgainAfterRestoreIsWorkedOnce) {
    Reader reader("a\n#define N N N\nN b");
    reader->read();
    reader->save();
    EXPECT_EQ(describe(reader->read()), "define:N=N N");
    reader->restore();
    EXPECT_EQ(describe(reader->read()), "define:N=N N");
    EXPECT_EQ(reader->remaining(), "\nN N b");
}

TEST(DirectivesTest, AMacroServesBeforeInsideAndBehindConditionals) {
    EXPECT_EQ(tokensOf("N\n#define N 4\nN\n#ifdef N\nN\n#else\nN a\n#endif\nN"),
              "id:N define:N=4 int:4 int:4 int:4 end");
    EXPECT_EQ(tokensOf("#define N 4\n#ifndef N\nN\n#else\nN a\n#endif\nN"),
              "define:N=4 int:4 id:a int:4 end");
    EXPECT_EQ(tokensOf("#define A\n#ifdef A\n#define N 4\nN\n#endif\nN"),
              "define:A= define:N=4 int:4 int:4 end");
    EXPECT_EQ(tokensOf("#ifdef A\n#define N 4\nN\n#endif\nN"),
              "define:N=4 int:4 !4:7:Unsupported directive")
        << "a cut ends at the first directive, so the define stays";
}

TEST(DirectivesTest, GrowthWithoutEndIsRefused) {
    std::string source;
    for (char c = 'A'; c < 'Z'; ++c) {
        source += std::string("#define ") + c + " " + static_cast<char>(c + 1) + " " +
                  static_cast<char>(c + 1) + " " + static_cast<char>(c + 1) + "\n";
    }
    // The values are expanded as well, so reverse the order to let the use grow at the end.
    std::string reversed;
    for (char c = 'Y'; c >= 'A'; --c) {
        reversed += std::string("#define ") + c + " " + static_cast<char>(c + 1) + " " +
                    static_cast<char>(c + 1) + " " + static_cast<char>(c + 1) + "\n";
    }
    for (const std::string& text : {source, reversed}) {
        const std::string tokens = tokensOf(text + "A A A");
        EXPECT_NE(tokens.find(":Out of memory"), std::string::npos);
        EXPECT_LT(tokens.size(), 1000000u);
    }
}

}  // namespace
}  // namespace glsl
