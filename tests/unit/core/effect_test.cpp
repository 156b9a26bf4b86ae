#include "movit/effect.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <functional>

#include "movit/input.h"

namespace {

class Node : public movit::Effect {
public:
    std::string type_name() const override { return "Node"; }
};

template <class Table>
std::vector<std::string> names(const Table& table) {
    std::vector<std::string> result;
    for (const auto& entry : table) {
        result.push_back(entry.first);
    }
    return result;
}

// What must still be empty: the number of entries in all tables.
size_t entries(const movit::Effect& e) {
    return e.params_int.size() + e.defines.size() + e.params_float.size() + e.params_vec2.size() +
           e.params_vec3.size() + e.params_vec4.size() + e.params_mat2.size() +
           e.params_mat3.size() + e.params_mat4.size() + e.params_int_array.size() +
           e.params_float_array.size() + e.params_vec2_array.size() + e.params_vec3_array.size() +
           e.params_vec4_array.size() + e.params_instance_int.size() +
           e.params_instance_float.size() + e.params_instance_vec2.size() +
           e.params_instance_vec3.size() + e.params_instance_vec4.size();
}

TEST(EffectTest, StartsEmpty) {
    Node node;
    EXPECT_EQ(entries(node), 0u);
    EXPECT_FALSE(node.instanced_attributes);
}

TEST(EffectTest, SettersOfUnknownNamesReturnFalseAndCreateNothing) {
    Node node;
    const float values[16] = {};
    EXPECT_FALSE(node.set_int("a", 1));
    EXPECT_FALSE(node.set_float("a", 2.0f));
    EXPECT_FALSE(node.set_vec2("a", values));
    EXPECT_FALSE(node.set_vec3("a", values));
    EXPECT_FALSE(node.set_vec4("a", values));
    EXPECT_FALSE(node.set_mat2("a", values));
    EXPECT_FALSE(node.set_mat3("a", values));
    EXPECT_FALSE(node.set_mat4("a", values));
    EXPECT_FALSE(node.set_int_array("a", values, 1));
    EXPECT_FALSE(node.set_float_array("a", values, 1));
    EXPECT_FALSE(node.set_vec2_array("a", values, 1));
    EXPECT_FALSE(node.set_vec3_array("a", values, 1));
    EXPECT_FALSE(node.set_vec4_array("a", values, 1));
    EXPECT_FALSE(node.set_instance_int("a", values, 1));
    EXPECT_FALSE(node.set_instance_float("a", values, 1));
    EXPECT_FALSE(node.set_instance_vec2("a", values, 1));
    EXPECT_FALSE(node.set_instance_vec3("a", values, 1));
    EXPECT_FALSE(node.set_instance_vec4("a", values, 1));
    EXPECT_FALSE(node.set_int_per_pass("a", {}));
    EXPECT_FALSE(node.set_float_per_pass("a", {}));
    EXPECT_FALSE(node.set_vec2_per_pass("a", {}));
    EXPECT_FALSE(node.set_vec3_per_pass("a", {}));
    EXPECT_FALSE(node.set_vec4_per_pass("a", {}));
    EXPECT_FALSE(node.set_mat2_per_pass("a", {}));
    EXPECT_FALSE(node.set_mat3_per_pass("a", {}));
    EXPECT_FALSE(node.set_mat4_per_pass("a", {}));
    EXPECT_FALSE(node.set_int_array_per_pass("a", {}));
    EXPECT_FALSE(node.set_float_array_per_pass("a", {}));
    EXPECT_FALSE(node.set_vec2_array_per_pass("a", {}));
    EXPECT_FALSE(node.set_vec3_array_per_pass("a", {}));
    EXPECT_FALSE(node.set_vec4_array_per_pass("a", {}));
    EXPECT_FALSE(node.set_instance_int_per_pass("a", {}));
    EXPECT_FALSE(node.set_instance_float_per_pass("a", {}));
    EXPECT_FALSE(node.set_instance_vec2_per_pass("a", {}));
    EXPECT_FALSE(node.set_instance_vec3_per_pass("a", {}));
    EXPECT_FALSE(node.set_instance_vec4_per_pass("a", {}));
    EXPECT_EQ(entries(node), 0u);
}

TEST(EffectTest, ValueSetterWritesThroughThePointer) {
    Node node;
    float value = 1.0f;
    node.register_float("a", &value);
    EXPECT_TRUE(node.set_float("a", 2.0f));
    EXPECT_EQ(value, 2.0f);
    EXPECT_EQ(node.params_float.at("a"), std::vector<float*>{&value});
}

TEST(EffectTest, IntSetterWritesThroughThePointer) {
    Node node;
    int32_t value = 1;
    node.register_int("a", &value);
    EXPECT_TRUE(node.set_int("a", -7));
    EXPECT_EQ(value, -7);
}

TEST(EffectTest, RegisteringAgainForgetsTheEarlierPointers) {
    Node node;
    float p = 1.0f;
    float q = 2.0f;
    node.register_float("a", &p);
    EXPECT_TRUE(node.set_float_per_pass("a", {&p, &q}));
    node.register_float("a", &q);
    EXPECT_EQ(node.params_float.at("a"), std::vector<float*>{&q});
}

TEST(EffectTest, PerPassValuesFallBackToTheFirst) {
    Node node;
    float p = 1.0f;
    float q = 2.0f;
    node.register_float("a", &p);
    EXPECT_TRUE(node.set_float_per_pass("a", {&p, &q}));
    const std::vector<float*>& passes = node.params_float.at("a");
    EXPECT_EQ(*movit::Effect::for_pass(passes, 1), &q);
    EXPECT_EQ(*movit::Effect::for_pass(passes, 2), &p);
    EXPECT_EQ(*movit::Effect::for_pass(passes, -1), &p);
    EXPECT_TRUE(node.set_float("a", 3.0f));
    EXPECT_EQ(p, 3.0f);
    EXPECT_EQ(q, 2.0f);
}

TEST(EffectTest, AnEntryMayBeAssignedToItself) {
    Node node;
    float p = 1.0f;
    float q = 2.0f;
    node.register_float("a", &p);
    EXPECT_TRUE(node.set_float_per_pass("a", {&p, &q}));
    EXPECT_TRUE(node.set_float_per_pass("a", node.params_float.at("a")));
    EXPECT_EQ(node.params_float.at("a"), (std::vector<float*>{&p, &q}));
}

TEST(EffectTest, AnEntryWithoutPassesAndNullPointersCopyNothing) {
    Node node;
    float value = 1.0f;
    node.register_float("a", &value);
    EXPECT_TRUE(node.set_float_per_pass("a", {}));
    EXPECT_EQ(movit::Effect::for_pass(node.params_float.at("a"), 0), nullptr);
    EXPECT_TRUE(node.set_float("a", 5.0f));
    node.register_vec3("v", nullptr);
    const float three[3] = {1, 2, 3};
    EXPECT_TRUE(node.set_vec3("v", three));
    float four[4] = {1, 2, 3, 4};
    node.register_vec4("w", four);
    EXPECT_TRUE(node.set_vec4("w", nullptr));
    EXPECT_EQ(four[0], 1.0f);
    node.register_int_array("n", nullptr, 0);
    EXPECT_TRUE(node.set_int_array_per_pass("n", {}));
    EXPECT_TRUE(node.set_int_array("n", four, 4));
    EXPECT_TRUE(node.params_int_array.at("n").empty());
    EXPECT_EQ(value, 1.0f);
}

struct ValueSetterCase {
    const char* name;
    size_t floats;
    std::function<void(movit::Effect&, float*)> add;
    std::function<bool(movit::Effect&, const float*)> set;
};

TEST(EffectTest, EachValueSetterWritesExactlyItsType) {
    const std::string n = "p";
    using E = movit::Effect;
    const ValueSetterCase cases[] = {
        {"vec2", 2, [&](E& e, float* p) { e.register_vec2(n, p); },
         [&](E& e, const float* v) { return e.set_vec2(n, v); }},
        {"vec3", 3, [&](E& e, float* p) { e.register_vec3(n, p); },
         [&](E& e, const float* v) { return e.set_vec3(n, v); }},
        {"vec4", 4, [&](E& e, float* p) { e.register_vec4(n, p); },
         [&](E& e, const float* v) { return e.set_vec4(n, v); }},
        {"mat2", 4, [&](E& e, float* p) { e.register_mat2(n, p); },
         [&](E& e, const float* v) { return e.set_mat2(n, v); }},
        {"mat3", 9, [&](E& e, float* p) { e.register_mat3(n, p); },
         [&](E& e, const float* v) { return e.set_mat3(n, v); }},
        {"mat4", 16, [&](E& e, float* p) { e.register_mat4(n, p); },
         [&](E& e, const float* v) { return e.set_mat4(n, v); }},
    };
    for (const ValueSetterCase& row : cases) {
        Node node;
        std::array<float, 17> storage{};
        std::array<float, 17> values;
        values.fill(1.0f);
        row.add(node, storage.data());
        EXPECT_TRUE(row.set(node, values.data())) << row.name;
        EXPECT_EQ(entries(node), 1u) << row.name;
        for (size_t i = 0; i < storage.size(); ++i) {
            EXPECT_EQ(storage[i], i < row.floats ? 1.0f : 0.0f) << row.name << " at " << i;
        }
    }
}

TEST(EffectTest, ArraySetterReplacesDataAndCountOfTheFirstPass) {
    Node node;
    const float first[2] = {};
    const float second[3] = {};
    node.register_float_array("a", first, 2);
    EXPECT_TRUE(node.set_float_array_per_pass("a", {{first, 2}, {first, 1}}));
    EXPECT_TRUE(node.set_float_array("a", second, 3));
    const std::vector<ParamArray>& passes = node.params_float_array.at("a");
    EXPECT_EQ(passes[0].data, second);
    EXPECT_EQ(passes[0].count, 3u);
    EXPECT_EQ(passes[1].data, first);
    EXPECT_EQ(passes[1].count, 1u);
}

TEST(EffectTest, ZeroCountAndNullDataAreStored) {
    Node node;
    node.register_instance_vec4("a", nullptr, 0);
    EXPECT_EQ(node.params_instance_vec4.at("a").size(), 1u);
    EXPECT_EQ(node.params_instance_vec4.at("a")[0].data, nullptr);
    EXPECT_TRUE(node.set_instance_vec4("a", nullptr, uint64_t{1} << 40));
    EXPECT_EQ(node.params_instance_vec4.at("a")[0].count, uint64_t{1} << 40);
}

TEST(EffectTest, EachRegistrationHasItsOwnTable) {
    Node node;
    float f[16] = {};
    int32_t i = 0;
    node.register_int("n", &i);
    node.register_float("n", f);
    node.register_vec2("n", f);
    node.register_vec3("n", f);
    node.register_vec4("n", f);
    node.register_mat2("n", f);
    node.register_mat3("n", f);
    node.register_mat4("n", f);
    node.register_int_array("n", f, 1);
    node.register_float_array("n", f, 2);
    node.register_vec2_array("n", f, 3);
    node.register_vec3_array("n", f, 4);
    node.register_vec4_array("n", f, 5);
    node.register_instance_int("n", f, 6);
    node.register_instance_float("n", f, 7);
    node.register_instance_vec2("n", f, 8);
    node.register_instance_vec3("n", f, 9);
    node.register_instance_vec4("n", f, 10);
    node.add_define("n", "1");
    EXPECT_EQ(entries(node), 19u);
    EXPECT_EQ(node.params_vec4_array.at("n")[0].count, 5u);
    EXPECT_EQ(node.params_instance_int.at("n")[0].count, 6u);
    EXPECT_EQ(node.params_instance_vec4.at("n")[0].count, 10u);
}

TEST(EffectTest, ADefineReplacesTheEarlierOne) {
    Node node;
    node.add_define("X", "1");
    node.add_define("X", "2");
    EXPECT_EQ(node.defines, (std::map<std::string, std::string>{{"X", "2"}}));
}

TEST(EffectTest, NamesWalkInByteOrder) {
    Node node;
    float f = 0;
    for (const char* name : {"b", "a", "aa", "B", "\xC3\xA4", "~", "_"}) {
        node.register_float(name, &f);
    }
    EXPECT_EQ(names(node.params_float),
              (std::vector<std::string>{"B", "_", "a", "aa", "b", "~", "\xC3\xA4"}));
}

TEST(EffectTest, BaseAnswersOfTheSlots) {
    Node node;
    EXPECT_TRUE(node.capability_a());
    EXPECT_TRUE(node.capability_b());
    EXPECT_EQ(node.alpha_mode(), 2);
    EXPECT_FALSE(node.capability_c());
    EXPECT_FALSE(node.capability_d());
    EXPECT_FALSE(node.capability_e());
    EXPECT_FALSE(node.capability_f());
    EXPECT_EQ(node.output_count(), 1);
    EXPECT_EQ(node.extra_text_a() + node.extra_text_b(), "");
    EXPECT_EQ(node.extra_text_c({"x"}) + node.extra_text_d({"y"}), "");
    EXPECT_EQ(node.count_a(), 0);
    EXPECT_EQ(node.count_b(), 0);
    node.notify_a();
    node.notify_b();
    node.notify_c();
    node.notify_d();
    node.notify_e();
    node.upload_parameters(0, "", nullptr, 0);
    node.upload_instance_parameters(0, "", nullptr, 0, 0);
    EXPECT_EQ(entries(node), 0u);
}

#ifdef __GNUC__
// In the platform's ABI a pointer to a virtual member holds its place in the table, in bytes, plus
// one; the destructor has two places there, so slot n stands at n + 1.
template <class Member>
size_t slot(Member member) {
    size_t words[2] = {};
    static_assert(sizeof member == sizeof words);
    std::memcpy(words, &member, sizeof words);
    return (words[0] - 1) / sizeof(void*) - 1;
}

TEST(EffectTest, SlotsHaveTheirNumbers) {
    using E = movit::Effect;
    using I = movit::Input;
    EXPECT_EQ(slot(&E::type_name), 1u);
    EXPECT_EQ(slot(&E::alpha_mode), 4u);
    EXPECT_EQ(slot(&E::capability_f), 8u);
    EXPECT_EQ(slot(&E::output_count), 11u);
    EXPECT_EQ(slot(&E::output_uniform_declarations), 13u);
    EXPECT_EQ(slot(&E::extra_text_d), 17u);
    EXPECT_EQ(slot(&E::upload_parameters), 20u);
    EXPECT_EQ(slot(&E::upload_instance_parameters), 21u);
    EXPECT_EQ(slot(&E::notify_e), 23u);
    EXPECT_EQ(slot(&E::set_int_per_pass), 24u);
    EXPECT_EQ(slot(&E::set_int), 25u);
    EXPECT_EQ(slot(&E::set_vec2), 29u);
    EXPECT_EQ(slot(&E::set_mat4), 39u);
    EXPECT_EQ(slot(&E::set_int_array_per_pass), 40u);
    EXPECT_EQ(slot(&E::set_vec4_array), 49u);
    EXPECT_EQ(slot(&E::set_instance_int_per_pass), 50u);
    EXPECT_EQ(slot(&E::set_instance_vec4), 59u);
    EXPECT_EQ(slot(&I::is_audio_input), 60u);
    EXPECT_EQ(slot(&I::get_depth), 66u);
}
#endif

}  // namespace
