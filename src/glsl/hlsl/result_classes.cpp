#include "glsl/hlsl/result_classes.h"

#include <array>
#include <cstddef>
#include <iterator>

namespace glsl {

namespace {

using C = ValueClass;

// Operators whose results follow one table.
enum class Group : uint8_t {
    none,
    product,
    sum,
    quotient,  // and difference
    order,     // and inequality
    equality,
    remainder,
    logical,
    shift,
    bits,
};
constexpr size_t kGroupCount = static_cast<size_t>(Group::bits) + 1;

constexpr Group groupOf(Operator operation) {
    switch (operation) {
        case Operator::multiply:
            return Group::product;
        case Operator::plus:
            return Group::sum;
        case Operator::divide:
        case Operator::minus:
            return Group::quotient;
        case Operator::less:
        case Operator::greater:
        case Operator::less_equal:
        case Operator::greater_equal:
        case Operator::not_equal:
            return Group::order;
        case Operator::equal:
            return Group::equality;
        case Operator::modulus:
            return Group::remainder;
        case Operator::logical_and:
        case Operator::logical_or:
            return Group::logical;
        case Operator::shift_left:
        case Operator::shift_right:
            return Group::shift;
        case Operator::bit_and:
        case Operator::bit_or:
        case Operator::bit_xor:
            return Group::bits;
        default:
            return Group::none;
    }
}

struct Row {
    C left, right, result;
};

// Product, sum, quotient.
constexpr Row kArithmetic[] = {
    {C::float_, C::float_, C::float_},    {C::float_, C::integer, C::float_},
    {C::integer, C::float_, C::float_},   {C::float_, C::boolean, C::float_},
    {C::boolean, C::float_, C::float_},   {C::integer, C::integer, C::integer},
    {C::boolean, C::boolean, C::integer}, {C::integer, C::boolean, C::integer},
    {C::boolean, C::integer, C::integer}, {C::uchar, C::integer, C::integer},
    {C::integer, C::uchar, C::integer},   {C::double_, C::double_, C::double_},
    {C::double_, C::float_, C::double_},  {C::float_, C::double_, C::double_},
    {C::double_, C::integer, C::double_}, {C::integer, C::double_, C::double_},
    {C::double_, C::boolean, C::double_}, {C::boolean, C::double_, C::double_},
    {C::uchar, C::uchar, C::uchar},       {C::vec2, C::vec2, C::vec2},
    {C::vec3, C::vec3, C::vec3},          {C::vec4, C::vec4, C::vec4},
    {C::vec2, C::float_, C::vec2},        {C::float_, C::vec2, C::vec2},
    {C::vec3, C::float_, C::vec3},        {C::float_, C::vec3, C::vec3},
    {C::vec4, C::float_, C::vec4},        {C::float_, C::vec4, C::vec4},
    {C::ivec2, C::integer, C::ivec2},     {C::integer, C::ivec2, C::ivec2},
    {C::ivec3, C::integer, C::ivec3},     {C::integer, C::ivec3, C::ivec3},
    {C::ivec4, C::integer, C::ivec4},     {C::integer, C::ivec4, C::ivec4},
};

constexpr Row kMatrixProducts[] = {
    {C::mat2, C::mat2, C::mat2}, {C::mat2, C::vec2, C::vec2}, {C::vec2, C::mat2, C::vec2},
    {C::mat3, C::mat3, C::mat3}, {C::mat3, C::vec3, C::vec3}, {C::vec3, C::mat3, C::vec3},
    {C::mat4, C::mat4, C::mat4}, {C::mat4, C::vec4, C::vec4}, {C::vec4, C::mat4, C::vec4},
};

constexpr Row kStringSums[] = {
    {C::string, C::string, C::string},
    {C::string, C::integer, C::string},
    {C::integer, C::string, C::string},
};

// Order and equality.
constexpr Row kComparisons[] = {
    {C::float_, C::float_, C::boolean},   {C::integer, C::integer, C::boolean},
    {C::float_, C::integer, C::boolean},  {C::integer, C::float_, C::boolean},
    {C::double_, C::double_, C::boolean}, {C::double_, C::float_, C::boolean},
    {C::float_, C::double_, C::boolean},  {C::double_, C::integer, C::boolean},
    {C::integer, C::double_, C::boolean}, {C::boolean, C::boolean, C::boolean},
    {C::uchar, C::uchar, C::boolean},     {C::uchar, C::integer, C::boolean},
    {C::integer, C::uchar, C::boolean},
};

constexpr Row kVectorEqualities[] = {
    {C::vec2, C::vec2, C::boolean},   {C::vec3, C::vec3, C::boolean},
    {C::vec4, C::vec4, C::boolean},   {C::ivec2, C::ivec2, C::boolean},
    {C::ivec3, C::ivec3, C::boolean}, {C::ivec4, C::ivec4, C::boolean},
};

constexpr Row kRemainders[] = {
    {C::integer, C::integer, C::integer},
    {C::uchar, C::integer, C::integer},
    {C::integer, C::uchar, C::integer},
};

constexpr Row kLogicals[] = {{C::boolean, C::boolean, C::boolean}};

constexpr Row kShifts[] = {
    {C::uchar, C::integer, C::uchar},
    {C::integer, C::integer, C::integer},
};

constexpr Row kBits[] = {
    {C::uchar, C::uchar, C::uchar},
    {C::integer, C::integer, C::integer},
    {C::uchar, C::integer, C::integer},
    {C::integer, C::uchar, C::integer},
};

class ResultTable {
public:
    constexpr ResultTable() {
        for (const Group group : {Group::product, Group::sum, Group::quotient}) {
            enter(group, kArithmetic, std::size(kArithmetic));
        }
        enter(Group::product, kMatrixProducts, std::size(kMatrixProducts));
        enter(Group::sum, kStringSums, std::size(kStringSums));
        enter(Group::order, kComparisons, std::size(kComparisons));
        enter(Group::equality, kComparisons, std::size(kComparisons));
        enter(Group::equality, kVectorEqualities, std::size(kVectorEqualities));
        enter(Group::remainder, kRemainders, std::size(kRemainders));
        enter(Group::logical, kLogicals, std::size(kLogicals));
        enter(Group::shift, kShifts, std::size(kShifts));
        enter(Group::bits, kBits, std::size(kBits));
    }

    constexpr C result(Group group, C left, C right) const {
        return results_[cell(group, left, right)];
    }

private:
    static constexpr size_t cell(Group group, C left, C right) {
        const size_t row =
            static_cast<size_t>(group) * kValueClassCount + static_cast<size_t>(left);
        return row * kValueClassCount + static_cast<size_t>(right);
    }
    constexpr void enter(Group group, const Row* rows, size_t count) {
        for (size_t i = 0; i < count; ++i) {
            results_[cell(group, rows[i].left, rows[i].right)] = rows[i].result;
        }
    }

    std::array<C, kGroupCount * kValueClassCount * kValueClassCount> results_{};
};
constexpr ResultTable kResultTable;

}  // namespace

ValueClass resultClass(Operator operation, ValueClass left, ValueClass right) {
    return kResultTable.result(groupOf(operation), left, right);
}

OperationForm operationForm(Operator operation, ValueClass left, ValueClass right) {
    if (isFloatVector(left) && operation == Operator::equal) {
        return OperationForm::equal;
    }
    if (isFloatVector(left) && operation == Operator::not_equal) {
        return OperationForm::notEqual;
    }
    // On purpose: no operator is asked for below, so m1 + m2 multiplies. The shaders in use were
    // written against these pictures.
    if (dimension(left) == 0 || dimension(left) != dimension(right)) {
        return OperationForm::plain;
    }
    if (isMatrix(left) && (isFloatVector(right) || isMatrix(right))) {
        return OperationForm::mulRL;
    }
    return isFloatVector(left) && isMatrix(right) ? OperationForm::mulLR : OperationForm::plain;
}

}  // namespace glsl
