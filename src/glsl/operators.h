#pragma once

#include <cstdint>
#include <string_view>

namespace glsl {

/// Operators by their fixed numbers, as operator tokens and expression nodes hold them.
enum class Operator : std::uint32_t {
    paranthesis_begin = 0,
    paranthesis_end = 1,
    bracket_begin = 2,
    bracket_end = 3,
    dot = 4,
    increment = 5,
    decrement = 6,
    bit_not = 7,
    logical_not = 8,
    multiply = 9,
    divide = 10,
    modulus = 11,
    plus = 12,
    minus = 13,
    shift_left = 14,
    shift_right = 15,
    less = 16,
    greater = 17,
    less_equal = 18,
    greater_equal = 19,
    equal = 20,
    not_equal = 21,
    bit_and = 22,
    bit_xor = 23,
    bit_or = 24,
    logical_and = 25,
    logical_xor = 26,
    logical_or = 27,
    questionmark = 28,
    colon = 29,
    assign = 30,
    add_assign = 31,
    sub_assign = 32,
    multiply_assign = 33,
    divide_assign = 34,
    modulus_assign = 35,
    shift_left_assign = 36,
    shift_right_assign = 37,
    bit_and_assign = 38,
    bit_xor_assign = 39,
    bit_or_assign = 40,
    comma = 41,
};

inline constexpr std::uint32_t kOperatorCount = 42;

struct OperatorRow {
    std::string_view name;
    std::string_view text;
    int precedence;  // the higher binds the tighter
};

/// One row per operator, in the order of the numbers.
inline constexpr OperatorRow kOperators[] = {
    {"paranthesis_begin", "(", 17},
    {"paranthesis_end", ")", 17},
    {"bracket_begin", "[", 16},
    {"bracket_end", "]", 16},
    {"dot", ".", 16},
    {"increment", "++", 15},
    {"decrement", "--", 15},
    {"bit_not", "~", 15},
    {"logical_not", "!", 15},
    {"multiply", "*", 14},
    {"divide", "/", 14},
    {"modulus", "%", 14},
    {"plus", "+", 13},
    {"minus", "-", 13},
    {"shift_left", "<<", 12},
    {"shift_right", ">>", 12},
    {"less", "<", 11},
    {"greater", ">", 11},
    {"less_equal", "<=", 11},
    {"greater_equal", ">=", 11},
    {"equal", "==", 10},
    {"not_equal", "!=", 10},
    {"bit_and", "&", 9},
    {"bit_xor", "^", 8},
    {"bit_or", "|", 7},
    {"logical_and", "&&", 6},
    {"logical_xor", "^^", 5},
    {"logical_or", "||", 4},
    {"questionmark", "?", 3},
    {"colon", ":", 3},
    {"assign", "=", 2},
    {"add_assign", "+=", 2},
    {"sub_assign", "-=", 2},
    {"multiply_assign", "*=", 2},
    {"divide_assign", "/=", 2},
    {"modulus_assign", "%=", 2},
    {"shift_left_assign", "<<=", 2},
    {"shift_right_assign", ">>=", 2},
    {"bit_and_assign", "&=", 2},
    {"bit_xor_assign", "^=", 2},
    {"bit_or_assign", "|=", 2},
    {"comma", ",", 1},
};
static_assert(sizeof(kOperators) / sizeof(kOperators[0]) == kOperatorCount);

/// Spelling of an operator; empty for a number that is none.
constexpr std::string_view operatorText(std::uint32_t id) {
    return id < kOperatorCount ? kOperators[id].text : std::string_view{};
}
constexpr std::string_view operatorText(Operator id) {
    return operatorText(static_cast<std::uint32_t>(id));
}

/// Binary precedence, 1 to 17; -1 for a number that is no operator.
constexpr int precedence(std::uint32_t id) {
    return id < kOperatorCount ? kOperators[id].precedence : -1;
}
constexpr int precedence(Operator id) {
    return precedence(static_cast<std::uint32_t>(id));
}

}  // namespace glsl
