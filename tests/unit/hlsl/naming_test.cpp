#include "glsl/hlsl/naming.h"

#include <gtest/gtest.h>

namespace glsl {
namespace {

TEST(AvoidKeywordTest, RenamesWordsOfHlslEverywhere) {
    for (const char* word :
         {"point", "line", "linear", "matrix", "vector", "kernel", "interpolation", "mul",
          "triangles", "triangle", "texture", "pass", "new"}) {
        const std::string renamed = std::string("AVOID_KEYWORD_CONFLICTS_") + word;
        EXPECT_EQ(avoidKeyword(word, false), renamed);
        EXPECT_EQ(avoidKeyword(word, true), renamed);
    }
}

TEST(AvoidKeywordTest, KeepsBuiltinsAsCallees) {
    for (const char* word : {"cos", "sin", "max", "min"}) {
        EXPECT_EQ(avoidKeyword(word, false), std::string("AVOID_KEYWORD_CONFLICTS_") + word);
        EXPECT_EQ(avoidKeyword(word, true), word);
    }
}

TEST(AvoidKeywordTest, ComparesTheWholeNameExactly) {
    for (const char* name :
         {"", "Point", "POINT", "points", "poin", "lines", "line2", "mulx", "tan", "abs",
          "interpolations", "newer", "x", "a_long_name_of_a_value"}) {
        EXPECT_EQ(avoidKeyword(name, false), name);
        EXPECT_EQ(avoidKeyword(name, true), name);
    }
}

TEST(AvoidKeywordTest, HandsAnUnchangedNameBackItself) {
    const std::string name = "colour";
    EXPECT_EQ(avoidKeyword(name, false).data(), name.data());
}

TEST(SemanticNameTest, MarksNamesThatEndInADigit) {
    EXPECT_EQ(semanticName(""), "");
    EXPECT_EQ(semanticName("position"), "position");
    EXPECT_EQ(semanticName("position1"), "position1_");
    EXPECT_EQ(semanticName("a_1"), "a_1_");
    EXPECT_EQ(semanticName("a1_"), "a1_");
    EXPECT_EQ(semanticName("x0"), "x0_");
    EXPECT_EQ(semanticName("x9"), "x9_");
}

TEST(RenameBuiltinTest, KnowsFourNames) {
    EXPECT_EQ(renameBuiltin("inversesqrt"), "rsqrt");
    EXPECT_EQ(renameBuiltin("dFdx"), "ddx");
    EXPECT_EQ(renameBuiltin("dFdy"), "ddy");
    EXPECT_EQ(renameBuiltin("mod"), "fmod");
    EXPECT_EQ(renameBuiltin("fwidth"), "fwidth");
    EXPECT_EQ(renameBuiltin("Mod"), "Mod");
}

TEST(NumberedNameTest, TakesDigitsOnlyBehindThePrefix) {
    EXPECT_TRUE(isNumberedName("INPUT", "INPUT"));
    EXPECT_TRUE(isNumberedName("INPUT1", "INPUT"));
    EXPECT_TRUE(isNumberedName("INPUT0042", "INPUT"));
    EXPECT_FALSE(isNumberedName("INPUTS", "INPUT"));
    EXPECT_FALSE(isNumberedName("INPUT1a", "INPUT"));
    EXPECT_FALSE(isNumberedName("INPUT_1", "INPUT"));
    EXPECT_FALSE(isNumberedName("INPU", "INPUT"));
    EXPECT_FALSE(isNumberedName("MYINPUT1", "INPUT"));
    EXPECT_FALSE(isNumberedName("", "INPUT"));
}

}  // namespace
}  // namespace glsl
