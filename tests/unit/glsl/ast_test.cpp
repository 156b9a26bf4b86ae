#include "glsl/ast.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <type_traits>

namespace glsl {
namespace {

class TreeTest : public testing::Test {
protected:
    ~TreeTest() override { home_->release(); }
    arena* home_ = arena::create(256);
};

template <class T>
std::uint32_t number(T value) {
    return static_cast<std::uint32_t>(value);
}

TEST_F(TreeTest, ExpressionKindsHaveTheirNumbersAndClasses) {
    astExpression* leaf = home_->make<astIntConstant>(7, 1, 2);
    astExpression* const nodes[] = {
        leaf,
        home_->make<astUIntConstant>(7u, 1, 2),
        home_->make<astFloatConstant>(1.5f, "1.5", 1, 2),
        home_->make<astStringConstant>("s", 1, 2),
        home_->make<astDoubleConstant>(1.5, "1.5", 1, 2),
        home_->make<astBoolConstant>(true, 1, 2),
        home_->make<astVariableIdentifier>(nullptr, 1, 2),
        home_->make<astFieldOrSwizzle>(1, 2),
        home_->make<astArraySubscript>(1, 2),
        home_->make<astFunctionCall>(1, 2),
        home_->make<astConstructorCall>(1, 2),
        home_->make<astPostIncrementExpression>(leaf, 1, 2),
        home_->make<astPostDecrementExpression>(leaf, 1, 2),
        home_->make<astUnaryMinusExpression>(leaf, 1, 2),
        home_->make<astUnaryPlusExpression>(leaf, 1, 2),
        home_->make<astUnaryBitNotExpression>(leaf, 1, 2),
        home_->make<astUnaryLogicalNotExpression>(leaf, 1, 2),
        home_->make<astPrefixIncrementExpression>(leaf, 1, 2),
        home_->make<astPrefixDecrementExpression>(leaf, 1, 2),
        home_->make<astSequenceExpression>(1, 2),
        home_->make<astAssignmentExpression>(Operator::assign, 1, 2),
        home_->make<astOperationExpression>(Operator::plus, 1, 2),
        home_->make<astTernaryExpression>(1, 2),
    };
    std::uint32_t expected = 0;
    for (const astExpression* node : nodes) {
        EXPECT_EQ(number(node->kind), expected++);
        EXPECT_EQ(node->line, 1u);
        EXPECT_EQ(node->column, 2u);
    }
    for (std::size_t i = 11; i <= 18; ++i) {
        EXPECT_EQ(as<astUnaryExpression>(nodes[i])->operand, leaf);
    }
}

TEST_F(TreeTest, StatementKindsHaveTheirNumbersAndClasses) {
    const astStatement* const nodes[] = {
        home_->make<astCompoundStatement>(3, 4),
        home_->make<astEmptyStatement>(3, 4),
        home_->make<astDeclarationStatement>(3, 4),
        home_->make<astExpressionStatement>(nullptr, 3, 4),
        home_->make<astIfStatement>(3, 4),
        home_->make<astSwitchStatement>(3, 4),
        home_->make<astCaseLabelStatement>(3, 4),
        home_->make<astWhileStatement>(3, 4),
        home_->make<astDoStatement>(3, 4),
        home_->make<astForStatement>(3, 4),
        home_->make<astContinueStatement>(3, 4),
        home_->make<astBreakStatement>(3, 4),
        home_->make<astReturnStatement>(3, 4),
        home_->make<astDiscardStatement>(3, 4),
    };
    std::uint32_t expected = 0;
    for (const astStatement* node : nodes) {
        EXPECT_EQ(number(node->kind), expected++);
        EXPECT_EQ(node->line, 3u);
        EXPECT_EQ(node->column, 4u);
    }
}

TEST_F(TreeTest, NodesBeginWithTheirDefaults) {
    const auto* version = home_->make<astVersionDirective>(1, 1);
    EXPECT_EQ(version->number, -1);
    EXPECT_EQ(version->profile, -1);
    EXPECT_EQ(home_->make<astExtensionDirective>(1, 1)->behavior, -1);
    const auto* global = home_->make<astGlobalVariable>(1, 1);
    EXPECT_EQ(global->variableType, VariableKind::global);
    EXPECT_EQ(global->storage, -1);
    EXPECT_EQ(global->auxiliary, -1);
    EXPECT_EQ(global->memory, 0u);
    EXPECT_EQ(global->precision, -1);
    EXPECT_EQ(global->interpolation, -1);
    EXPECT_FALSE(global->isInvariant);
    EXPECT_EQ(global->initialValue, nullptr);
    const auto* parameter = home_->make<astFunctionParameter>(1, 1);
    EXPECT_EQ(parameter->variableType, VariableKind::parameter);
    EXPECT_EQ(parameter->storage, -1);
    EXPECT_EQ(home_->make<astFunctionVariable>(1, 1)->variableType, VariableKind::function);
    EXPECT_EQ(home_->make<astVariable>(1, 1)->variableType, VariableKind::field);
    EXPECT_TRUE(home_->make<astBuiltin>(32u, 1, 1)->builtin);
    EXPECT_FALSE(home_->make<astStruct>(1, 1)->builtin);
    const auto* unit = home_->make<astTU>(*home_, 5u);
    EXPECT_EQ(unit->shaderType, 5u);
    EXPECT_EQ(unit->reserved, 0u);
    EXPECT_EQ(sizeof(unit->printBuffer), 4096u);
}

TEST(TreeNumbersTest, VariableKindsAndQualifiersAreFixed) {
    EXPECT_EQ(number(VariableKind::function), 0u);
    EXPECT_EQ(number(VariableKind::parameter), 1u);
    EXPECT_EQ(number(VariableKind::global), 2u);
    EXPECT_EQ(number(VariableKind::field), 3u);
    const std::int32_t storages[] = {kStorageConst,   kStorageIn,        kStorageOut,
                                     kStorageInOut,   kStorageAttribute, kStorageUniform,
                                     kStorageVarying, kStorageBuffer,    kStorageShared};
    for (std::int32_t i = 0; i < 9; ++i) {
        EXPECT_EQ(storages[i], i);
    }
    EXPECT_EQ(kAuxiliaryCentroid, 0);
    EXPECT_EQ(kAuxiliaryPatch, 2);
    EXPECT_EQ(kInterpolationSmooth, 0);
    EXPECT_EQ(kInterpolationFlat, 1);
    EXPECT_EQ(kInterpolationNoPerspective, 2);
    EXPECT_EQ(kPrecisionHigh, 0);
    EXPECT_EQ(kPrecisionMedium, 1);
    EXPECT_EQ(kPrecisionLow, 2);
    EXPECT_EQ(kMemoryCoherent, 1u);
    EXPECT_EQ(kMemoryWriteOnly, 16u);
}

TEST(TreeClassesTest, HangTogether) {
    EXPECT_TRUE((std::is_base_of_v<astNode, astType>));
    EXPECT_TRUE((std::is_base_of_v<astType, astVersionDirective>));
    EXPECT_TRUE((std::is_base_of_v<astType, astExtensionDirective>));
    EXPECT_TRUE((std::is_base_of_v<astType, astDefineDirective>));
    EXPECT_TRUE((std::is_base_of_v<astType, astInterfaceBlock>));
    EXPECT_TRUE((std::is_base_of_v<astVariable, astGlobalVariable>));
    EXPECT_TRUE((std::is_base_of_v<astSimpleStatement, astIfStatement>));
    EXPECT_TRUE((std::is_base_of_v<astIterationStatement, astForStatement>));
    EXPECT_TRUE((std::is_base_of_v<astJumpStatement, astReturnStatement>));
    EXPECT_FALSE((std::is_base_of_v<astSimpleStatement, astCompoundStatement>));
    EXPECT_FALSE((std::is_base_of_v<astNode, astTU>));
    EXPECT_TRUE(std::has_virtual_destructor_v<astNode>);
}

TEST_F(TreeTest, ListsGrowAndCopiesStayApart) {
    list<astNode> numbers;
    EXPECT_TRUE(numbers.empty());
    for (int i = 0; i < 5; ++i) {
        numbers.push_back(*home_, home_->make<astIntConstant>(i, 1, 1));
    }
    list<astNode> copy = numbers;
    copy.push_back(*home_, nullptr);
    numbers.push_back(*home_, home_->make<astIntConstant>(5, 1, 1));
    EXPECT_EQ(copy.back(), nullptr);
    EXPECT_EQ(as<astIntConstant>(numbers.back())->value, 5);
    EXPECT_EQ(copy.size(), 6u);
    copy.erase(*home_, 0);
    EXPECT_EQ(as<astIntConstant>(copy.front())->value, 1);
    EXPECT_EQ(as<astIntConstant>(numbers.front())->value, 0) << "erasing touches the copy alone";
    copy.insert(*home_, 1, home_->make<astIntConstant>(9, 1, 1));
    EXPECT_EQ(as<astIntConstant>(copy[1])->value, 9);
    EXPECT_EQ(as<astIntConstant>(copy[2])->value, 2);
    copy.truncate(2);
    EXPECT_EQ(copy.size(), 2u);
    copy.truncate(7);
    EXPECT_EQ(copy.size(), 2u);
    int sum = 0;
    for (const auto& node : numbers) {
        sum += as<astIntConstant>(node)->value;
    }
    EXPECT_EQ(sum, 15);
}

TEST_F(TreeTest, ATruncatedCopyThatGrowsLeavesTheOriginal) {
    list<astNode> numbers;
    for (int i = 0; i < 4; ++i) {
        numbers.push_back(*home_, home_->make<astIntConstant>(i, 1, 1));
    }
    list<astNode> copy = numbers;
    copy.truncate(1);
    copy.push_back(*home_, nullptr);
    EXPECT_EQ(as<astIntConstant>(numbers[1])->value, 1);
}

TEST(PtrTest, TheLastReferenceGivesTheArenaBack) {
    arena* home = arena::create(64);
    ptr<astNode> kept;
    {
        const ptr<astIntConstant> node(home->make<astIntConstant>(7, 1, 1), home);
        home->release();
        ptr<astExpression> base = node;
        EXPECT_TRUE(base == node);
        ptr<astExpression> moved = std::move(base);
        EXPECT_TRUE(base == nullptr);
        kept = moved;
        kept = kept;
        moved = nullptr;
        EXPECT_FALSE(moved);
    }
    EXPECT_EQ(static_cast<astIntConstant&>(*kept).value, 7);
    EXPECT_EQ(kept->line, 1u);
}

TEST(LinkTest, ConvertsAndComparesLikeAPointer) {
    astIntConstant node(7, 1, 1);
    link<astIntConstant> first = &node;
    link<astExpression> second = first;
    link<astExpression> none;
    EXPECT_EQ(second, &node);
    EXPECT_TRUE(second);
    EXPECT_FALSE(none);
    EXPECT_EQ(none, nullptr);
    EXPECT_EQ(as<astIntConstant>(second)->value, 7);
    EXPECT_EQ(second.get(), first.get());
}

TEST(ArenaTest, HandsOutAlignedMemoryOfEverySize) {
    arena* home = arena::create(0);
    for (std::size_t size = 0; size < 20000; size = size * 2 + 1) {
        auto* bytes = static_cast<char*>(home->allocate(size));
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(bytes) % 8, 0u);
        std::memset(bytes, 0x5A, size);
    }
    EXPECT_GE(home->footprint(), 20000u);
    EXPECT_EQ(home->copy(""), "");
    EXPECT_EQ(home->copy("abc"), "abc");
    home->release();
}

}  // namespace
}  // namespace glsl
