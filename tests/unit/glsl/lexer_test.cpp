#include "glsl/lexer.h"

#include <gtest/gtest.h>

#include <string>

#include "glsl/keywords.h"
#include "token_text.h"

namespace glsl {
namespace {

using test::describe;
using test::placedTokensOf;
using test::Reader;
using test::TokensCase;
using test::tokensOf;

class TokensTest : public testing::TestWithParam<TokensCase> {};

TEST_P(TokensTest, ReadsAs) {
    EXPECT_EQ(tokensOf(GetParam().source), GetParam().tokens);
}

INSTANTIATE_TEST_SUITE_P(
    Words, TokensTest,
    testing::Values(
        TokensCase{"", "end"}, TokensCase{" \t\n\v\f\r", "end"}, TokensCase{"foo", "id:foo end"},
        TokensCase{"_a1_", "id:_a1_ end"},
        TokensCase{"float vec4", "keyword:float keyword:vec4 end"},
        TokensCase{"Float floats", "id:Float id:floats end"},
        TokensCase{"FilterData sample filter", "keyword:FilterData id:sample id:filter end"},
        TokensCase{"a$", "id:a !1:2:invalid character encountered"},
        TokensCase{"averyveryverylongidentifier another_very_long_identifier_2",
                   "id:averyveryverylongidentifier id:another_very_long_identifier_2 end"},
        TokensCase{"usamplerCubeArray usamplerCubeArray2",
                   "keyword:usamplerCubeArray id:usamplerCubeArray2 end"}));

INSTANTIATE_TEST_SUITE_P(
    Operators, TokensTest,
    testing::Values(
        TokensCase{"( ) [ ] . ++ -- ~ !", "( ) [ ] . ++ -- ~ ! end"},
        TokensCase{"* / % + - << >> < > <= >= == !=", "* / % + - << >> < > <= >= == != end"},
        TokensCase{"& ^ | && ^^ || ? : , ;", "& ^ | && ^^ || ? : , ; end"},
        TokensCase{"= += -= *= /= %= <<= >>= &= ^= |=", "= += -= *= /= %= <<= >>= &= ^= |= end"},
        TokensCase{">>=", ">>= end"}, TokensCase{">>>=", ">> >= end"},
        TokensCase{"<<<", "<< < end"}, TokensCase{"===", "== = end"}, TokensCase{"+++", "++ + end"},
        TokensCase{"---x", "-- - id:x end"}, TokensCase{"^^=", "^^ = end"},
        TokensCase{"&&=", "&& = end"}, TokensCase{"||=", "|| = end"}, TokensCase{"!==", "!= = end"},
        TokensCase{"~=", "~ = end"}, TokensCase{"+=+", "+= + end"},
        TokensCase{"a.b", "id:a . id:b end"}, TokensCase{"..", ". . end"},
        TokensCase{"{}", "{ } end"}));

INSTANTIATE_TEST_SUITE_P(
    Numbers, TokensTest,
    testing::Values(TokensCase{"1.5", "float:1.5 end"}, TokensCase{"1.5f", "float:1.5 end"},
                    TokensCase{"2E3", "float:2e3 end"}, TokensCase{"2.5E-3f", "float:2.5e-3 end"},
                    TokensCase{"3.0lf", "double:3.0 end"}, TokensCase{"1E2lf", "double:1e2 end"},
                    TokensCase{"2147483648u", "uint:2147483648 end"},
                    TokensCase{"010", "int:8 end"}, TokensCase{"09", "int:0 int:9 end"},
                    TokensCase{"a.5", "id:a float:.5 end"}, TokensCase{"0x1f", "int:31 end"},
                    TokensCase{"-1", "- int:1 end"},
                    TokensCase{"1.5u", "!1:4:invalid use of suffix on literal"},
                    TokensCase{"0x10.0", "!1:7:invalid numeric literal"},
                    TokensCase{"0x1lf", "!1:6:invalid numeric literal"},
                    TokensCase{"2147483648", "!1:11:literal needs more than 32-bits"},
                    TokensCase{"4294967296u", "!1:12:literal needs more than 32-bits"},
                    TokensCase{"1e ", "!1:3:invalid numeric literal"},
                    TokensCase{"x 1x", "id:x !1:4:invalid numeric literal"}));

INSTANTIATE_TEST_SUITE_P(Strings, TokensTest,
                         testing::Values(TokensCase{"\"abc\"d", "string:abc id:d end"},
                                         TokensCase{"\"\"", "string: end"},
                                         TokensCase{"\"abc", "string:abc end"},
                                         TokensCase{"\"", "string: end"},
                                         TokensCase{"\"a\\\"b\"", "string:a\\ id:b string: end"},
                                         TokensCase{"\"/* $ */ // #\"", "string:/* $ */ // # end"},
                                         TokensCase{"\"\xC3\xA9\"", "string:\xC3\xA9 end"}));

INSTANTIATE_TEST_SUITE_P(
    Comments, TokensTest,
    testing::Values(TokensCase{"a//b\nc", "id:a id:c end"}, TokensCase{"a//b", "id:a end"},
                    TokensCase{"a/*b*/c", "id:a id:c end"}, TokensCase{"a/**/c", "id:a id:c end"},
                    TokensCase{"a/*/b*/c", "id:a id:c end"}, TokensCase{"a/***/c", "id:a id:c end"},
                    TokensCase{"a/*b", "id:a end"}, TokensCase{"a/*/", "id:a end"},
                    TokensCase{"a/*b*", "id:a end"}, TokensCase{"/*a*//*b*/c", "id:c end"},
                    TokensCase{"a/ /b", "id:a / / id:b end"},
                    TokensCase{"a/=b", "id:a /= id:b end"},
                    TokensCase{"//$\xFF\x01\na", "id:a end"},
                    TokensCase{"/*$\xFF\x01*/a", "id:a end"},
                    TokensCase{"a//b\\\nc", "id:a id:c end"}));

INSTANTIATE_TEST_SUITE_P(
    InvalidCharacters, TokensTest,
    testing::Values(TokensCase{"$", "!1:1:invalid character encountered"},
                    TokensCase{"a @", "id:a !1:3:invalid character encountered"},
                    TokensCase{"\\", "!1:1:invalid character encountered"},
                    TokensCase{"'a'", "!1:1:invalid character encountered"},
                    TokensCase{"`", "!1:1:invalid character encountered"},
                    TokensCase{"\x7F", "!1:1:invalid character encountered"},
                    TokensCase{"\xC3\xA9", "!1:1:invalid character encountered"},
                    TokensCase{"\n \x01", "!2:2:invalid character encountered"},
                    TokensCase{"\x08", "!1:1:invalid character encountered"},
                    TokensCase{"\x0E", "!1:1:invalid character encountered"}));

TEST(LexerTest, PositionStandsJustBehindTheToken) {
    EXPECT_EQ(placedTokensOf("ab  +=c;\n  1.5f \"xy\""),
              "id:ab@1:3 +=@1:7 id:c@1:8 ;@1:9 float:1.5@2:7 string:xy@2:12 end@2:12");
}

TEST(LexerTest, EveryWhitespaceByteButTheNewlineIsAColumn) {
    EXPECT_EQ(placedTokensOf("\r\ta\r\nb\v\fc"), "id:a@1:4 id:b@2:2 id:c@2:5 end@2:5");
}

TEST(LexerTest, NewlinesInCommentsAreLines) {
    EXPECT_EQ(placedTokensOf("/*\n\n x*/a//\n/**/b"), "id:a@3:6 id:b@4:6 end@4:6");
}

TEST(LexerTest, NewlinesInStringsAreColumns) {
    EXPECT_EQ(placedTokensOf("\"a\nb\"c"), "string:a\nb@1:6 id:c@1:7 end@1:7");
}

TEST(LexerTest, StopsAtTheFirstZeroByte) {
    EXPECT_EQ(tokensOf(std::string("a\0b", 3)), "id:a end");
}

TEST(LexerTest, NullSourceIsEmpty) {
    arena* memory = arena::create(4096);
    {
        lexer reader(nullptr, *memory, *memory);
        EXPECT_EQ(reader.read().type, TokenKind::end);
        EXPECT_EQ(reader.error(), nullptr);
    }
    memory->release();
}

TEST(LexerTest, EndIsReadAgainAndAgain) {
    Reader reader("a");
    reader->read();
    EXPECT_EQ(reader->read().type, TokenKind::end);
    EXPECT_EQ(reader->read().type, TokenKind::end);
}

TEST(LexerTest, PrecedenceIsThatOfOperatorTokensAlone) {
    Reader reader("* , ; a");
    EXPECT_EQ(lexer::precedence(reader->read()), 14);
    EXPECT_EQ(lexer::precedence(reader->read()), 1);
    EXPECT_EQ(lexer::precedence(reader->read()), -1);
    EXPECT_EQ(lexer::precedence(reader->read()), -1);
}

TEST(LexerTest, PeekShowsTheNextTokenAndStays) {
    Reader reader("a  b c");
    const token& first = reader->read();
    EXPECT_EQ(describe(first), "id:a");
    EXPECT_EQ(describe(reader->peek()), "id:b");
    EXPECT_EQ(reader->column(), 2u);
    EXPECT_EQ(describe(first), "id:a") << "the current token stays as it is";
    EXPECT_EQ(describe(reader->peek()), "id:b");
    EXPECT_EQ(describe(reader->read()), "id:b");
    EXPECT_EQ(reader->column(), 5u);
    EXPECT_EQ(describe(reader->read()), "id:c");
}

TEST(LexerTest, RestoreMovesBackToTheSavedPosition) {
    Reader reader("a b c d");
    reader->read();
    reader->save();
    reader->read();
    reader->read();
    reader->restore();
    EXPECT_EQ(reader->column(), 2u);
    EXPECT_EQ(describe(reader->read()), "id:b");
    reader->restore();
    EXPECT_EQ(describe(reader->read()), "id:b") << "the slot is still there";
}

TEST(LexerTest, PeekOverwritesTheSavedPosition) {
    Reader reader("a b c d");
    reader->read();
    reader->save();
    reader->read();
    reader->peek();
    reader->read();
    reader->restore();
    EXPECT_EQ(describe(reader->read()), "id:c");
}

TEST(LexerTest, RestoreWithoutSaveGoesToTheBeginning) {
    Reader reader("\n a b");
    reader->read();
    reader->read();
    reader->restore();
    EXPECT_EQ(reader->line(), 1u);
    EXPECT_EQ(reader->column(), 1u);
    EXPECT_EQ(describe(reader->read()), "id:a");
}

TEST(LexerTest, ALookAheadIsStillGoodAfterRestore) {
    Reader reader("a b c");
    reader->read();
    reader->peek();
    reader->restore();
    EXPECT_EQ(describe(reader->read()), "id:b");
    EXPECT_EQ(describe(reader->read()), "id:c");
}

TEST(LexerTest, AfterAnErrorTheTokenKeepsItsKindWithoutItsText) {
    Reader reader("abc$");
    const token& current = reader->read();
    ASSERT_EQ(describe(current), "id:abc");
    const token& failed = reader->read();
    EXPECT_EQ(failed.type, TokenKind::identifier);
    EXPECT_EQ(failed.name->name, "");
    EXPECT_STREQ(reader->error(), "invalid character encountered");
}

TEST(LexerTest, WhitespaceReadBeforeAnErrorIsTheKindThatStays) {
    Reader reader("abc $");
    reader->read();
    EXPECT_EQ(reader->read().type, TokenKind::whitespace);
    Reader other("abc/**/$");
    other->read();
    EXPECT_EQ(other->read().type, TokenKind::comment);
}

TEST(LexerTest, AStringTokenLosesItsTextInAnError) {
    Reader reader("\"abc\"1x");
    reader->read();
    const token& failed = reader->read();
    EXPECT_EQ(failed.type, TokenKind::string);
    EXPECT_EQ(failed.text, "");
}

TEST(LexerTest, TheFirstErrorStays) {
    Reader reader("$ 1x");
    reader->read();
    EXPECT_STREQ(reader->error(), "invalid character encountered");
    reader->read();
    EXPECT_STREQ(reader->error(), "invalid character encountered");
}

TEST(LexerTest, AnErrorMetByPeekIsSetAndThePositionIsNot) {
    Reader reader("a  1x");
    reader->read();
    EXPECT_NE(reader->peek().type, TokenKind::end) << "a token that failed is not the end";
    EXPECT_STREQ(reader->error(), "invalid numeric literal");
    EXPECT_EQ(reader->column(), 2u);
}

TEST(LexerTest, WithAnErrorSetARereadGoesOneStep) {
    Reader reader("a  /**/$");
    reader->read();
    reader->peek();
    ASSERT_NE(reader->error(), nullptr);
    EXPECT_EQ(reader->read().type, TokenKind::whitespace);
    EXPECT_EQ(reader->column(), 4u);
    EXPECT_EQ(reader->read().type, TokenKind::comment);
    EXPECT_EQ(reader->column(), 8u);
}

TEST(LexerTest, KeywordTokensHoldTheirNumber) {
    Reader reader("uniform");
    const token& word = reader->read();
    EXPECT_EQ(word.type, TokenKind::keyword);
    EXPECT_EQ(word.value, id(Keyword::uniform));
}

TEST(LexerTest, TheKindsHaveTheirFixedNumbers) {
    const TokenKind kinds[] = {
        TokenKind::end,           TokenKind::whitespace,
        TokenKind::comment,       TokenKind::keyword,
        TokenKind::identifier,    TokenKind::string,
        TokenKind::intConstant,   TokenKind::uintConstant,
        TokenKind::floatConstant, TokenKind::doubleConstant,
        TokenKind::operator_,     TokenKind::semicolon,
        TokenKind::scopeBegin,    TokenKind::scopeEnd,
        TokenKind::directive,
    };
    std::uint32_t number = 0;
    for (const TokenKind kind : kinds) {
        EXPECT_EQ(static_cast<std::uint32_t>(kind), number++);
    }
}

TEST(LexerTest, TheSameNameIsOneSymbol) {
    Reader reader("abc xyz abc");
    const symbol* first = reader->read().name;
    const symbol* second = reader->read().name;
    EXPECT_NE(first, second);
    EXPECT_EQ(reader->read().name, first);
    EXPECT_EQ(reader->names().find("xyz"), second);
    EXPECT_EQ(reader->names().find("nowhere"), nullptr);
}

TEST(LexerTest, ThousandsOfNamesAreAllKept) {
    std::string source;
    for (int i = 0; i < 5000; ++i) {
        source += "name" + std::to_string(i) + " ";
    }
    Reader reader(source + source);
    std::vector<const symbol*> seen;
    for (int i = 0; i < 5000; ++i) {
        seen.push_back(reader->read().name);
        ASSERT_EQ(seen.back()->name, "name" + std::to_string(i));
    }
    for (int i = 0; i < 5000; ++i) {
        ASSERT_EQ(reader->read().name, seen[static_cast<std::size_t>(i)]);
    }
}

}  // namespace
}  // namespace glsl
