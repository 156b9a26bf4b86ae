#include "glsl/keywords.h"

#include <gtest/gtest.h>

#include <string>

#include "glsl/operators.h"
#include "glsl/word.h"

namespace glsl {
namespace {

TEST(KeywordsTest, EachWordIsFoundUnderItsOwnNumber) {
    for (std::uint32_t i = 0; i < kKeywordCount; ++i) {
        EXPECT_EQ(findKeyword(keywordText(i)), static_cast<std::int32_t>(i)) << keywordText(i);
    }
}

struct WordCase {
    std::uint32_t id;
    const char* text;
};

TEST(KeywordsTest, NumbersAreThePlacesInTheTable) {
    const WordCase cases[] = {
        {0, "attribute"},
        {1, "const"},
        {11, "atomic_uint"},
        {12, "layout"},
        {29, "in"},
        {32, "float"},
        {36, "bool"},
        {37, "true"},
        {42, "return"},
        {43, "FilterData"},
        {46, "string"},
        {60, "GLProgram"},
        {61, "mat2"},
        {64, "dmat2"},
        {67, "mat2x2"},
        {84, "dmat4x4"},
        {85, "vec2"},
        {97, "uint"},
        {100, "uvec4"},
        {101, "lowp"},
        {104, "precision"},
        {105, "sampler1D"},
        {144, "usamplerCubeArray"},
        {145, "image1D"},
        {177, "uimage2DMSArray"},
        {178, "struct"},
        {179, "common"},
        {183, "class"},
        {216, "using"},
    };
    for (const WordCase& c : cases) {
        EXPECT_EQ(keywordText(c.id), c.text);
    }
}

TEST(KeywordsTest, NamedNumbersSpellTheirWord) {
    EXPECT_EQ(keywordText(id(Keyword::const_)), "const");
    EXPECT_EQ(keywordText(id(Keyword::else_)), "else");
    EXPECT_EQ(keywordText(id(Keyword::mat2)), "mat2");
    EXPECT_EQ(keywordText(id(Keyword::vec4)), "vec4");
    EXPECT_EQ(keywordText(id(Keyword::ivec2)), "ivec2");
    EXPECT_EQ(keywordText(id(Keyword::bvec4)), "bvec4");
    EXPECT_EQ(keywordText(id(Keyword::dvec4)), "dvec4");
    EXPECT_EQ(keywordText(id(Keyword::uint_)), "uint");
    EXPECT_EQ(keywordText(id(Keyword::highp)), "highp");
    EXPECT_EQ(keywordText(id(Keyword::sampler2D)), "sampler2D");
    EXPECT_EQ(keywordText(id(Keyword::uimage2DMSArray)), "uimage2DMSArray");
    EXPECT_EQ(keywordText(id(Keyword::struct_)), "struct");
    EXPECT_EQ(keywordText(id(Keyword::using_)), "using");
}

TEST(KeywordsTest, OtherWordsAreNone) {
    for (const char* word : {"", "sample", "filter", "Float", "floa", "floats", "VEC4", "main",
                             "usamplerCubeArra", "usamplerCubeArrays"}) {
        EXPECT_EQ(findKeyword(word), -1) << word;
    }
    EXPECT_EQ(keywordText(kKeywordCount), "");
}

TEST(KeywordsTest, TypeWordsAreThoseOfTheFourRanges) {
    const auto inRanges = [](std::uint32_t i) {
        return i == 11 || (i >= 32 && i <= 36) || (i >= 43 && i <= 100) || (i >= 105 && i <= 177);
    };
    for (std::uint32_t i = 0; i < kKeywordCount + 2; ++i) {
        EXPECT_EQ(isTypeKeyword(i), inRanges(i)) << keywordText(i);
        EXPECT_EQ(isReservedKeyword(i), i >= 179 && i <= 216) << keywordText(i);
    }
}

struct OperatorCase {
    Operator id;
    std::uint32_t number;
    const char* name;
    const char* text;
    int precedence;
};

TEST(OperatorsTest, RowsHaveNumberSpellingAndPrecedence) {
    const OperatorCase cases[] = {
        {Operator::paranthesis_begin, 0, "paranthesis_begin", "(", 17},
        {Operator::paranthesis_end, 1, "paranthesis_end", ")", 17},
        {Operator::bracket_begin, 2, "bracket_begin", "[", 16},
        {Operator::bracket_end, 3, "bracket_end", "]", 16},
        {Operator::dot, 4, "dot", ".", 16},
        {Operator::increment, 5, "increment", "++", 15},
        {Operator::decrement, 6, "decrement", "--", 15},
        {Operator::bit_not, 7, "bit_not", "~", 15},
        {Operator::logical_not, 8, "logical_not", "!", 15},
        {Operator::multiply, 9, "multiply", "*", 14},
        {Operator::divide, 10, "divide", "/", 14},
        {Operator::modulus, 11, "modulus", "%", 14},
        {Operator::plus, 12, "plus", "+", 13},
        {Operator::minus, 13, "minus", "-", 13},
        {Operator::shift_left, 14, "shift_left", "<<", 12},
        {Operator::shift_right, 15, "shift_right", ">>", 12},
        {Operator::less, 16, "less", "<", 11},
        {Operator::greater, 17, "greater", ">", 11},
        {Operator::less_equal, 18, "less_equal", "<=", 11},
        {Operator::greater_equal, 19, "greater_equal", ">=", 11},
        {Operator::equal, 20, "equal", "==", 10},
        {Operator::not_equal, 21, "not_equal", "!=", 10},
        {Operator::bit_and, 22, "bit_and", "&", 9},
        {Operator::bit_xor, 23, "bit_xor", "^", 8},
        {Operator::bit_or, 24, "bit_or", "|", 7},
        {Operator::logical_and, 25, "logical_and", "&&", 6},
        {Operator::logical_xor, 26, "logical_xor", "^^", 5},
        {Operator::logical_or, 27, "logical_or", "||", 4},
        {Operator::questionmark, 28, "questionmark", "?", 3},
        {Operator::colon, 29, "colon", ":", 3},
        {Operator::assign, 30, "assign", "=", 2},
        {Operator::add_assign, 31, "add_assign", "+=", 2},
        {Operator::sub_assign, 32, "sub_assign", "-=", 2},
        {Operator::multiply_assign, 33, "multiply_assign", "*=", 2},
        {Operator::divide_assign, 34, "divide_assign", "/=", 2},
        {Operator::modulus_assign, 35, "modulus_assign", "%=", 2},
        {Operator::shift_left_assign, 36, "shift_left_assign", "<<=", 2},
        {Operator::shift_right_assign, 37, "shift_right_assign", ">>=", 2},
        {Operator::bit_and_assign, 38, "bit_and_assign", "&=", 2},
        {Operator::bit_xor_assign, 39, "bit_xor_assign", "^=", 2},
        {Operator::bit_or_assign, 40, "bit_or_assign", "|=", 2},
        {Operator::comma, 41, "comma", ",", 1},
    };
    ASSERT_EQ(sizeof(cases) / sizeof(cases[0]), kOperatorCount);
    for (const OperatorCase& c : cases) {
        EXPECT_EQ(static_cast<std::uint32_t>(c.id), c.number);
        EXPECT_EQ(kOperators[c.number].name, c.name);
        EXPECT_EQ(operatorText(c.id), c.text);
        EXPECT_EQ(precedence(c.id), c.precedence) << c.text;
    }
    EXPECT_EQ(operatorText(kOperatorCount), "");
    EXPECT_EQ(precedence(kOperatorCount), -1);
}

TEST(WordTest, HeadHoldsTheFirstBytesAndHashAllOfThem) {
    EXPECT_EQ(wordKey("ab", 2).head, 0x6261u);
    EXPECT_EQ(wordKey("abcdefgh", 8).head, wordKey("abcdefghi", 9).head);
    EXPECT_NE(wordKey("abcdefgh", 8).hash, wordKey("abcdefghi", 9).hash);
    EXPECT_NE(wordKey("abcdefghi", 9).hash, wordKey("abcdefghj", 9).hash);
    EXPECT_NE(wordKey("abcdefghiabcdefgh", 17).hash, wordKey("abcdefghiabcdefgi", 17).hash);
}

}  // namespace
}  // namespace glsl
