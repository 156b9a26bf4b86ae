#include "transition/tokens.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace transition {
namespace {

std::vector<std::string> texts(std::string_view text) {
    std::vector<std::string> result;
    for (const Token& token : scan(text)) {
        result.emplace_back(token.text);
    }
    return result;
}

using testing::ElementsAre;

TEST(TokensTest, WordsNumbersAndLongSymbolsAreOneTokenEach) {
    EXPECT_THAT(texts("a_1+=1.5e-3*.5<=b"),
                ElementsAre("a_1", "+=", "1.5e-3", "*", ".5", "<=", "b"));
}

TEST(TokensTest, CommentsLieBetweenTokens) {
    EXPECT_THAT(texts("a // b\n/* c */ d /"), ElementsAre("a", "d", "/"));
}

TEST(TokensTest, UnclosedCommentEndsTheText) {
    EXPECT_THAT(texts("a /* b"), ElementsAre("a"));
}

TEST(TokensTest, DirectiveIsOneTokenToTheEndOfItsLine) {
    EXPECT_THAT(texts("#ifdef GL_ES\nx"), ElementsAre("#ifdef GL_ES", "x"));
}

TEST(TokensTest, DefineGivesItsValueAsTokensAndAnEmptyOneAtTheEnd) {
    EXPECT_THAT(texts("#define N 2 + a\nx"), ElementsAre("#define N", "2", "+", "a", "", "x"));
}

TEST(TokensTest, DefineHeadHoldsTheParameters) {
    EXPECT_THAT(texts("#define F(x, y) x\nz"), ElementsAre("#define F(x, y)", "x", "", "z"));
}

TEST(TokensTest, ClosingSkipsInnerBrackets) {
    const auto tokens = scan("f(a[1], (b)) c");
    EXPECT_EQ(closing(tokens, 1), 10u);
    EXPECT_EQ(closing(scan("f(("), 1), 3u) << "an open bracket closes behind the last token";
}

}  // namespace
}  // namespace transition
