#include "DirectXEffectMgr/Source/core/param_plan.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

namespace {

struct Node : movit::Effect {
    std::string type_name() const override { return "Node"; }
};

using Bytes = std::vector<uint8_t>;

float float_at(const Bytes& shadow, size_t place) {
    float value = 0;
    std::memcpy(&value, &shadow[place], sizeof value);
    return value;
}

class ParamPlanTest : public testing::Test {
protected:
    Node node;
    ParamPlan plan;
    Bytes shadow = Bytes(256, 0xEE);
    std::array<float, 16> numbers = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    int32_t count = 7;
};

// int 0..4, float 4..8, vec2 16..24, vec3 32..44, mat3 48..84, float[2] 84..92.
TEST_F(ParamPlanTest, ValuesAndArraysLieWhereTheLayoutSays) {
    const float pair[2] = {40, 41};
    node.register_int("i", &count);
    node.register_float("f", &numbers[4]);
    node.register_vec2("v2", &numbers[0]);
    node.register_vec3("v3", &numbers[2]);
    node.register_mat3("m", &numbers[0]);
    node.register_float_array("a", pair, 2);
    const PassLayout layout = plan.fill(node, 0, shadow);
    int32_t first = 0;
    std::memcpy(&first, shadow.data(), sizeof first);
    EXPECT_EQ(first, 7);
    EXPECT_EQ(float_at(shadow, 4), 5);
    EXPECT_EQ(float_at(shadow, 20), 2);
    EXPECT_EQ(float_at(shadow, 40), 5);
    EXPECT_EQ(float_at(shadow, 52), 4);  // the first row's second number, transposed
    EXPECT_EQ(float_at(shadow, 88), 41);
    EXPECT_EQ(shadow[8], 0xEE);
    EXPECT_EQ(shadow[92], 0xEE);
    EXPECT_EQ(layout.instance_base, 92);
    EXPECT_EQ(layout.last_padded_size, 8);
    EXPECT_EQ(layout.last_padding, 0);
}

TEST_F(ParamPlanTest, GivesWhatTheWalkOverTheTablesGives) {
    node.register_int("i", &count);
    node.register_float("f", nullptr);
    node.register_vec2("v2", &numbers[0]);
    node.register_vec3("v3", &numbers[2]);
    node.register_vec4("v4", &numbers[4]);
    node.register_mat2("m2", &numbers[8]);
    node.register_mat3("m3", &numbers[5]);
    node.register_mat4("m4", &numbers[0]);
    node.set_vec4_per_pass("v4", {&numbers[4], &numbers[7], nullptr});
    node.set_vec2_per_pass("v2", {});
    for (int32_t pass = -1; pass < 4; ++pass) {
        Bytes walked(256, 0xEE);
        const PassLayout expected = fill_pass(node, pass, walked);
        shadow.assign(256, 0xEE);
        const PassLayout layout = plan.fill(node, pass, shadow);
        EXPECT_EQ(shadow, walked) << "pass " << pass;
        EXPECT_EQ(layout.instance_base, expected.instance_base);
        EXPECT_EQ(layout.last_padded_size, expected.last_padded_size);
        EXPECT_EQ(layout.last_padding, expected.last_padding);
    }
}

TEST_F(ParamPlanTest, ANameThatIsAddedLaterMovesTheOthers) {
    node.register_float("b", &numbers[0]);
    plan.fill(node, 0, shadow);
    EXPECT_EQ(float_at(shadow, 0), 1);
    node.register_float("a", &numbers[1]);
    EXPECT_EQ(plan.fill(node, 0, shadow).instance_base, 8);
    EXPECT_EQ(float_at(shadow, 0), 2);
    EXPECT_EQ(float_at(shadow, 4), 1);
}

TEST_F(ParamPlanTest, ASecondRegistrationIsSeen) {
    node.register_float("a", &numbers[0]);
    plan.fill(node, 0, shadow);
    node.register_float("a", &numbers[9]);
    plan.fill(node, 0, shadow);
    EXPECT_EQ(float_at(shadow, 0), 10);
}

TEST_F(ParamPlanTest, AnArrayThatGrowsIsSeen) {
    node.register_float("f", &numbers[0]);
    node.register_vec2_array("v", numbers.data(), 1);
    EXPECT_EQ(plan.fill(node, 0, shadow).instance_base, 24);
    node.register_vec2_array("v", numbers.data(), 2);
    EXPECT_EQ(plan.fill(node, 0, shadow).instance_base, 40);
    EXPECT_EQ(float_at(shadow, 32), 3);
}

TEST_F(ParamPlanTest, AValueThatDoesNotFitIsLeftOut) {
    node.register_float("f", &numbers[0]);
    node.register_vec4("v", &numbers[0]);
    shadow.assign(28, 0xEE);
    plan.fill(node, 0, shadow);
    EXPECT_EQ(float_at(shadow, 0), 1);
    EXPECT_EQ(shadow[16], 0xEE);
    EXPECT_EQ(shadow[27], 0xEE);
}

TEST_F(ParamPlanTest, NoNamesGiveAnEmptyLayout) {
    const PassLayout layout = plan.fill(node, 3, shadow);
    EXPECT_EQ(layout.instance_base, 0);
    EXPECT_EQ(layout.last_padded_size, 0);
    EXPECT_EQ(shadow, Bytes(256, 0xEE));
}

}  // namespace
