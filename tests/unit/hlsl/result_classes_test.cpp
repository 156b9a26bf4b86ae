#include "glsl/hlsl/result_classes.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace glsl {
namespace {

// Classes by letter: F float, I integer, D double, B bool, U uchar, S string, 2 3 4 vectors,
// a b c integer vectors of 2, 3 and 4, p q r matrices of 2, 3 and 4, T struct, O plain, N none.
const std::map<char, ValueClass> kLetters = {
    {'F', ValueClass::float_},  {'I', ValueClass::integer}, {'D', ValueClass::double_},
    {'B', ValueClass::boolean}, {'U', ValueClass::uchar},   {'S', ValueClass::string},
    {'2', ValueClass::vec2},    {'3', ValueClass::vec3},    {'4', ValueClass::vec4},
    {'a', ValueClass::ivec2},   {'b', ValueClass::ivec3},   {'c', ValueClass::ivec4},
    {'p', ValueClass::mat2},    {'q', ValueClass::mat3},    {'r', ValueClass::mat4},
    {'T', ValueClass::struct_}, {'O', ValueClass::other},   {'N', ValueClass::none},
};

struct OperatorCase {
    const char* name;
    std::vector<Operator> operators;
    // Every triple of left, right, result; all pairs that are not named have no class.
    const char* rows;
};
void PrintTo(const OperatorCase& c, std::ostream* out) {
    *out << c.name;
}

constexpr const char* kArithmetic =
    "FFF FIF IFF FBF BFF III BBI IBI BII UII IUI DDD DFD FDD DID IDD DBD BDD UUU "
    "222 333 444 2F2 3F3 4F4 F22 F33 F44 aIa bIb cIc Iaa Ibb Icc ";
constexpr const char* kProducts =
    "FFF FIF IFF FBF BFF III BBI IBI BII UII IUI DDD DFD FDD DID IDD DBD BDD UUU "
    "222 333 444 2F2 3F3 4F4 F22 F33 F44 aIa bIb cIc Iaa Ibb Icc "
    "ppp qqq rrr p22 q33 r44 2p2 3q3 4r4 ";
constexpr const char* kSums =
    "FFF FIF IFF FBF BFF III BBI IBI BII UII IUI DDD DFD FDD DID IDD DBD BDD UUU "
    "222 333 444 2F2 3F3 4F4 F22 F33 F44 aIa bIb cIc Iaa Ibb Icc "
    "SSS SIS ISS ";
constexpr const char* kComparisons = "FFB IIB FIB IFB DDB DFB FDB DIB IDB BBB UUB UIB IUB ";
constexpr const char* kEqualities =
    "FFB IIB FIB IFB DDB DFB FDB DIB IDB BBB UUB UIB IUB 22B 33B 44B aaB bbB ccB ";

class ResultClassTest : public testing::TestWithParam<OperatorCase> {};
INSTANTIATE_TEST_SUITE_P(
    Operators, ResultClassTest,
    testing::Values(
        OperatorCase{"product", {Operator::multiply}, kProducts},
        OperatorCase{"sum", {Operator::plus}, kSums},
        OperatorCase{"difference and quotient", {Operator::minus, Operator::divide}, kArithmetic},
        OperatorCase{"order and inequality",
                     {Operator::less, Operator::less_equal, Operator::greater,
                      Operator::greater_equal, Operator::not_equal},
                     kComparisons},
        OperatorCase{"equality", {Operator::equal}, kEqualities},
        OperatorCase{"remainder", {Operator::modulus}, "III UII IUI "},
        OperatorCase{"logical", {Operator::logical_or, Operator::logical_and}, "BBB "},
        OperatorCase{"shift", {Operator::shift_left, Operator::shift_right}, "UIU III "},
        OperatorCase{
            "bits", {Operator::bit_and, Operator::bit_or, Operator::bit_xor}, "UUU III UII IUI "},
        OperatorCase{"none", {Operator::logical_xor, Operator::comma, Operator::assign}, ""}));

TEST_P(ResultClassTest, FollowsTheTableForEveryPair) {
    std::map<std::pair<char, char>, char> rows;
    const std::string_view text = GetParam().rows;
    for (size_t i = 0; i + 3 < text.size(); i += 4) {
        rows[{text[i], text[i + 1]}] = text[i + 2];
    }
    for (const Operator operation : GetParam().operators) {
        for (const auto& [left, leftClass] : kLetters) {
            for (const auto& [right, rightClass] : kLetters) {
                const auto row = rows.find({left, right});
                const char expected = row != rows.end() ? row->second : 'N';
                EXPECT_EQ(resultClass(operation, leftClass, rightClass), kLetters.at(expected))
                    << left << ' ' << operatorText(operation) << ' ' << right;
            }
        }
    }
}

TEST(OperationFormTest, EqualityOfFloatVectorsGoesByTheLeftOperand) {
    for (const char left : {'2', '3', '4'}) {
        for (const auto& [letter, right] : kLetters) {
            EXPECT_EQ(operationForm(Operator::equal, kLetters.at(left), right),
                      OperationForm::equal);
            EXPECT_EQ(operationForm(Operator::not_equal, kLetters.at(left), right),
                      OperationForm::notEqual);
        }
    }
}

// On every operator but equality of vectors, matrices multiply.
TEST(OperationFormTest, MatricesMultiplyUnderAnyOperator) {
    const std::map<std::string, OperationForm> forms = {
        {"p2", OperationForm::mulRL}, {"q3", OperationForm::mulRL}, {"r4", OperationForm::mulRL},
        {"2p", OperationForm::mulLR}, {"3q", OperationForm::mulLR}, {"4r", OperationForm::mulLR},
        {"pp", OperationForm::mulRL}, {"qq", OperationForm::mulRL}, {"rr", OperationForm::mulRL}};
    for (uint32_t number = 9; number <= 27; ++number) {
        const auto operation = static_cast<Operator>(number);
        const bool isEquality = operation == Operator::equal || operation == Operator::not_equal;
        for (const auto& [left, leftClass] : kLetters) {
            for (const auto& [right, rightClass] : kLetters) {
                if (isEquality && isFloatVector(leftClass)) {
                    continue;
                }
                const auto row = forms.find(std::string{left, right});
                EXPECT_EQ(operationForm(operation, leftClass, rightClass),
                          row != forms.end() ? row->second : OperationForm::plain)
                    << left << ' ' << operatorText(operation) << ' ' << right;
            }
        }
    }
}

}  // namespace
}  // namespace glsl
