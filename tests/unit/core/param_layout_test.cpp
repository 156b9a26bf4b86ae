#include "DirectXEffectMgr/Source/core/param_layout.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

namespace {

struct Node : movit::Effect {
    std::string type_name() const override { return "Node"; }
};

struct PaddingCase {
    const char* type;
    int32_t count, offset, size, padding;
};
void PrintTo(const PaddingCase& c, std::ostream* out) {
    *out << c.type << '[' << c.count << "] at " << c.offset;
}

class PaddedSizeTest : public testing::TestWithParam<PaddingCase> {};

TEST_P(PaddedSizeTest, GivesSizeAndPadding) {
    const PaddingCase& row = GetParam();
    int32_t padding = -1;
    EXPECT_EQ(padded_size(row.type, row.count, row.offset, padding), row.size);
    EXPECT_EQ(padding, row.padding);
}

INSTANTIATE_TEST_SUITE_P(
    Single, PaddedSizeTest,
    testing::Values(PaddingCase{"int", 1, 0, 4, 0}, PaddingCase{"float", 1, 4, 4, 0},
                    PaddingCase{"vec2", 1, 0, 8, 0}, PaddingCase{"vec2", 1, 4, 20, 12},
                    PaddingCase{"vec2", 1, 8, 16, 8}, PaddingCase{"vec2", 1, 12, 12, 4},
                    PaddingCase{"vec3", 1, 20, 24, 12}, PaddingCase{"vec3", 1, 16, 12, 0},
                    PaddingCase{"vec4", 1, 28, 20, 4}, PaddingCase{"mat2", 1, 8, 24, 8},
                    PaddingCase{"mat3", 1, 0, 36, 0}, PaddingCase{"mat4", 1, 36, 76, 12}));

INSTANTIATE_TEST_SUITE_P(
    Array, PaddedSizeTest,
    testing::Values(PaddingCase{"float", 5, 8, 20, 0}, PaddingCase{"int", 3, 4, 12, 0},
                    PaddingCase{"vec2", 3, 16, 40, 0}, PaddingCase{"vec2", 2, 4, 36, 12},
                    PaddingCase{"vec3", 2, 16, 28, 0}, PaddingCase{"vec4", 3, 4, 60, 12},
                    PaddingCase{"mat2", 2, 0, 32, 0}, PaddingCase{"mat3", 2, 100, 96, 12},
                    PaddingCase{"mat4", 2, 0, 128, 0}));

INSTANTIATE_TEST_SUITE_P(
    Nothing, PaddedSizeTest,
    testing::Values(PaddingCase{"double", 1, 4, 0, 0}, PaddingCase{"", 7, 4, 0, 0},
                    PaddingCase{"vec", 1, 4, 0, 0}, PaddingCase{"vec22", 1, 4, 0, 0},
                    PaddingCase{"Float", 1, 4, 0, 0}, PaddingCase{"vec2", 0, 4, 0, 0},
                    PaddingCase{"float", 0, 4, 0, 0}, PaddingCase{"mat4", -3, 4, 0, 0},
                    PaddingCase{"vec4", std::numeric_limits<int32_t>::min(), 4, 0, 0}));

constexpr int32_t kMost = std::numeric_limits<int32_t>::max();

INSTANTIATE_TEST_SUITE_P(
    TooMuch, PaddedSizeTest,
    testing::Values(PaddingCase{"mat4", kMost, 0, 0, 0}, PaddingCase{"vec2", kMost, 4, 0, 0},
                    PaddingCase{"float", kMost, 0, 0, 0},
                    PaddingCase{"vec4", kMaxParamBytes / 16, 0, kMaxParamBytes, 0},
                    PaddingCase{"vec4", kMaxParamBytes / 16, 4, 0, 0},
                    PaddingCase{"float", 1, kMaxParamBytes, 0, 0},
                    PaddingCase{"float", 1, kMaxParamBytes - 4, 4, 0}));

TEST(ParamLayoutTest, WordsAndTypesHaveTheSameRules) {
    for (size_t i = 0; i < std::size(movit::kParamTypeWords); ++i) {
        for (int32_t count = 1; count < 5; ++count) {
            for (int32_t offset = 0; offset < 32; offset += 4) {
                int32_t by_word = 0;
                int32_t by_type = 0;
                EXPECT_EQ(padded_size(movit::kParamTypeWords[i], count, offset, by_word),
                          padded_size(static_cast<movit::ParamType>(i), count, offset, by_type));
                EXPECT_EQ(by_word, by_type);
            }
        }
    }
}

TEST(ParamLayoutTest, ARunOfATypeTakesWhatItsEntriesTakeOneByOne) {
    for (const std::string_view type : movit::kParamTypeWords) {
        for (int32_t start = 0; start < 16; start += 4) {
            int32_t end = start;
            int32_t padding = 0;
            for (int32_t n = 1; n < 6; ++n) {
                end += padded_size(type, 1, end, padding);
                EXPECT_EQ(padded_size(type, n, start, padding), end - start) << type << ' ' << n;
            }
        }
    }
}

// The case that the documentation works out by hand.
struct WorkedCase : Node {
    int32_t mode = 7;
    float amount = 0.5f;
    float resolution[2] = {640, 360};
    float original[2] = {1920, 1080};
    float tint[3] = {1, 2, 3};
    float matrix[9] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    float weights[4] = {10, 20, 30, 40};

    WorkedCase() {
        register_int("mode", &mode);
        add_define("USE_X", "1");
        register_float("amount", &amount);
        register_vec2("iResolution", resolution);
        register_vec2("iResolutionOrig", original);
        register_vec3("tint", tint);
        register_mat3("m", matrix);
        register_float_array("w", weights, 4);
    }
};

std::vector<uint8_t> shadow_of(const movit::Effect& node) {
    return std::vector<uint8_t>(static_cast<size_t>(param_buffer_size(node)), 0xEE);
}

float float_at(const std::vector<uint8_t>& shadow, size_t offset) {
    float value;
    std::memcpy(&value, shadow.data() + offset, sizeof value);
    return value;
}

std::vector<float> floats_at(const std::vector<uint8_t>& shadow, size_t offset, size_t count) {
    std::vector<float> values;
    for (size_t i = 0; i < count; ++i) {
        values.push_back(float_at(shadow, offset + 4 * i));
    }
    return values;
}

using Floats = std::vector<float>;

TEST(ParamLayoutTest, TheWorkedCaseTakes128Bytes) {
    EXPECT_EQ(param_buffer_size(WorkedCase()), 128);
}

TEST(ParamLayoutTest, TheWorkedCaseLiesWhereItShould) {
    WorkedCase node;
    std::vector<uint8_t> shadow = shadow_of(node);
    const PassLayout layout = fill_pass(node, 0, shadow);
    EXPECT_EQ(layout.instance_base, 116);
    EXPECT_EQ(layout.last_padded_size, 16);
    EXPECT_EQ(layout.last_padding, 0);
    int32_t mode;
    std::memcpy(&mode, shadow.data(), 4);
    EXPECT_EQ(mode, 7);
    EXPECT_EQ(float_at(shadow, 4), 0.5f);
    EXPECT_EQ(floats_at(shadow, 16, 2), (Floats{640, 360}));
    EXPECT_EQ(floats_at(shadow, 32, 2), (Floats{1920, 1080}));
    EXPECT_EQ(floats_at(shadow, 48, 3), (Floats{1, 2, 3}));
    EXPECT_EQ(floats_at(shadow, 64, 9), (Floats{1, 4, 7, 2, 5, 8, 3, 6, 9}));
    EXPECT_EQ(floats_at(shadow, 100, 4), (Floats{10, 20, 30, 40}));
    // Padding is never written.
    for (const size_t gap : {8, 9, 15, 24, 31, 40, 47, 60, 63, 116, 127}) {
        EXPECT_EQ(shadow[gap], 0xEE) << gap;
    }
}

TEST(ParamLayoutTest, SizesAreRoundedUpToSixteenAndNotFurther) {
    Node node;
    EXPECT_EQ(param_buffer_size(node), 0);
    float f[4] = {};
    node.register_float("a", f);
    EXPECT_EQ(param_buffer_size(node), 16);
    node.register_float_array("b", f, 3);
    EXPECT_EQ(param_buffer_size(node), 16);
    node.register_instance_float("c", f, 4);
    EXPECT_EQ(param_buffer_size(node), 32);
    node.register_instance_vec4("d", f, 1);
    EXPECT_EQ(param_buffer_size(node), 48);
}

TEST(ParamLayoutTest, MatricesAreTransposed) {
    Node node;
    float two[4] = {1, 2, 3, 4};
    float four[16];
    for (int i = 0; i < 16; ++i) {
        four[i] = static_cast<float>(i);
    }
    node.register_mat2("a", two);
    node.register_mat4("b", four);
    std::vector<uint8_t> shadow = shadow_of(node);
    fill_pass(node, 0, shadow);
    EXPECT_EQ(floats_at(shadow, 0, 4), (Floats{1, 3, 2, 4}));
    EXPECT_EQ(floats_at(shadow, 16, 16),
              (Floats{0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15}));
}

TEST(ParamLayoutTest, ArraysOfVectorsHaveAStrideOfSixteen) {
    Node node;
    const float v[12] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    const int32_t ints[3] = {1, -2, 3};
    node.register_int_array("i", ints, 3);
    node.register_vec2_array("v2", v, 3);
    node.register_vec3_array("v3", v, 2);
    node.register_vec4_array("v4", v, 3);
    std::vector<uint8_t> shadow = shadow_of(node);
    EXPECT_EQ(shadow.size(), 16u + 48 + 32 + 48);
    fill_pass(node, 0, shadow);
    EXPECT_EQ(std::memcmp(shadow.data(), ints, sizeof ints), 0);
    EXPECT_EQ(floats_at(shadow, 16, 2), (Floats{1, 2}));
    EXPECT_EQ(floats_at(shadow, 32, 2), (Floats{3, 4}));
    EXPECT_EQ(floats_at(shadow, 48, 2), (Floats{5, 6}));
    EXPECT_EQ(floats_at(shadow, 64, 3), (Floats{1, 2, 3}));
    EXPECT_EQ(floats_at(shadow, 80, 3), (Floats{4, 5, 6}));
    EXPECT_EQ(std::memcmp(shadow.data() + 96, v, sizeof v), 0);
    EXPECT_EQ(shadow[24], 0xEE);
    EXPECT_EQ(shadow[76], 0xEE);
}

TEST(ParamLayoutTest, EachPassReadsItsOwnElementOrTheFirst) {
    Node node;
    float p = 1, q = 2, only = 3;
    const float first[2] = {4, 5};
    const float second[2] = {6, 7};
    node.register_float("a", &p);
    EXPECT_TRUE(node.set_float_per_pass("a", {&p, &q}));
    node.register_float("b", &only);
    node.register_float_array("c", first, 2);
    EXPECT_TRUE(node.set_float_array_per_pass("c", {{first, 2}, {second, 2}}));
    std::vector<uint8_t> shadow = shadow_of(node);
    fill_pass(node, 0, shadow);
    EXPECT_EQ(floats_at(shadow, 0, 4), (Floats{1, 3, 4, 5}));
    fill_pass(node, 1, shadow);
    EXPECT_EQ(floats_at(shadow, 0, 4), (Floats{2, 3, 6, 7}));
    fill_pass(node, 2, shadow);
    EXPECT_EQ(floats_at(shadow, 0, 4), (Floats{1, 3, 4, 5}));
}

TEST(ParamLayoutTest, ValuesAreCopiedAsBytes) {
    Node node;
    const uint32_t quiet = 0x7FC12345u, signalling = 0x7F812345u, negative_zero = 0x80000000u;
    float f[4];
    std::memcpy(&f[0], &quiet, 4);
    std::memcpy(&f[1], &signalling, 4);
    std::memcpy(&f[2], &negative_zero, 4);
    std::memcpy(&f[3], &signalling, 4);
    node.register_vec4("a", f);
    node.register_mat2("b", f);
    std::vector<uint8_t> shadow = shadow_of(node);
    fill_pass(node, 0, shadow);
    EXPECT_EQ(std::memcmp(shadow.data(), f, 16), 0);
    EXPECT_EQ(std::memcmp(shadow.data() + 20, f + 2, 4), 0);
    EXPECT_EQ(std::memcmp(shadow.data() + 24, f + 1, 4), 0);
}

TEST(ParamLayoutTest, NullDataKeepsTheBytes) {
    Node node;
    float f = 1;
    node.register_float("a", nullptr);
    node.register_float("b", &f);
    node.register_vec2("c", nullptr);
    node.register_mat3("d", nullptr);
    node.register_float_array("e", nullptr, 3);
    node.register_vec2_array("f", nullptr, 3);
    node.register_float("g", &f);
    EXPECT_TRUE(node.set_float_per_pass("g", {}));
    std::vector<uint8_t> shadow = shadow_of(node);
    std::vector<uint8_t> expected = shadow;
    std::memcpy(expected.data() + 4, &f, 4);
    fill_pass(node, 0, shadow);
    EXPECT_EQ(shadow, expected);
}

TEST(ParamLayoutTest, AnArrayWithoutElementsTakesNoBytes) {
    Node node;
    float f[2] = {1, 2};
    node.register_float("a", f);
    node.register_vec2_array("b", f, 0);
    node.register_float_array("c", f, uint64_t{0xFFFFFFFF});  // -1 as a signed number
    node.register_float_array("d", f, (uint64_t{1} << 32) + 2);
    EXPECT_EQ(param_buffer_size(node), 16);
    std::vector<uint8_t> shadow = shadow_of(node);
    EXPECT_EQ(fill_pass(node, 0, shadow).instance_base, 12);
    EXPECT_EQ(floats_at(shadow, 0, 3), (Floats{1, 1, 2}));
}

TEST(ParamLayoutTest, LayoutAndCopyUseTheFirstPassesCount) {
    Node node;
    const float f[6] = {1, 2, 3, 4, 5, 6};
    node.register_float_array("a", f, 2);
    node.register_vec2_array("b", f, 2);
    EXPECT_TRUE(node.set_float_array_per_pass("a", {{f, 2}, {f + 2, 4}, {f + 5, 1}}));
    EXPECT_TRUE(node.set_vec2_array_per_pass("b", {{f, 2}, {f, 3}, {f, 1}}));
    std::vector<uint8_t> shadow = shadow_of(node);
    fill_pass(node, 1, shadow);
    EXPECT_EQ(floats_at(shadow, 0, 2), (Floats{3, 4}));
    EXPECT_EQ(shadow[8], 0xEE);
    // A pass that has fewer elements than the first brings only those.
    fill_pass(node, 2, shadow);
    EXPECT_EQ(floats_at(shadow, 0, 2), (Floats{6, 4}));
    EXPECT_EQ(floats_at(shadow, 32, 2), (Floats{3, 4}));
}

TEST(ParamLayoutTest, NoCopyLeavesTheShadow) {
    Node node;
    float f[16] = {1, 2, 3, 4};
    node.register_float("a", f);
    std::vector<uint8_t> shadow = shadow_of(node);
    // Registered behind the buffer's making: such values have no place until it is made again.
    node.register_vec4("b", f);
    node.register_mat4("c", f);
    node.register_vec3_array("d", f, 5);
    node.register_instance_vec4("e", f, 4);
    node.register_float_array("w", f, 3);
    const PassLayout layout = fill_pass(node, 0, shadow);
    fill_instance(node, 0, 0, layout.instance_base, shadow);
    EXPECT_EQ(float_at(shadow, 0), 1.0f);
    std::vector<uint8_t> none;
    fill_pass(node, 0, none);
    fill_instance(node, 3, 0, 0, none);
    EXPECT_TRUE(none.empty());
}

TEST(ParamLayoutTest, InstancesFillTheTail) {
    Node node;
    float amount = 9;
    const float values[2] = {0.25f, 0.75f};
    const float places[4] = {1, 2, 3, 4};
    node.register_float("amount", &amount);
    node.register_instance_float("f", values, 2);
    node.register_instance_vec2("v", places, 2);
    std::vector<uint8_t> shadow = shadow_of(node);
    EXPECT_EQ(shadow.size(), 32u);
    const PassLayout layout = fill_pass(node, 0, shadow);
    EXPECT_EQ(layout.instance_base, 4);
    fill_instance(node, 0, 0, layout.instance_base, shadow);
    EXPECT_EQ(floats_at(shadow, 4, 1), (Floats{0.25f}));
    EXPECT_EQ(floats_at(shadow, 16, 2), (Floats{1, 2}));
    fill_instance(node, 1, 0, layout.instance_base, shadow);
    EXPECT_EQ(floats_at(shadow, 4, 1), (Floats{0.75f}));
    EXPECT_EQ(floats_at(shadow, 16, 2), (Floats{3, 4}));
    // Where there is no such instance the bytes stay.
    fill_instance(node, 2, 0, layout.instance_base, shadow);
    fill_instance(node, -1, 0, layout.instance_base, shadow);
    EXPECT_EQ(floats_at(shadow, 4, 1), (Floats{0.75f}));
    EXPECT_EQ(float_at(shadow, 0), 9.0f);
}

TEST(ParamLayoutTest, InstanceTablesStandInOrderAndByPass) {
    Node node;
    const int32_t i[2] = {11, 12};
    const float f[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    node.register_instance_vec4("a", f, 2);
    node.register_instance_vec3("b", f, 2);
    node.register_instance_vec2("c", f, 2);
    node.register_instance_float("d", f, 2);
    node.register_instance_int("e", i, 2);
    EXPECT_TRUE(node.set_instance_float_per_pass("d", {{f, 2}, {f + 4, 2}}));
    std::vector<uint8_t> shadow = shadow_of(node);
    EXPECT_EQ(shadow.size(), 64u);
    fill_instance(node, 1, 1, 0, shadow);
    int32_t number;
    std::memcpy(&number, shadow.data(), 4);
    EXPECT_EQ(number, 12);
    EXPECT_EQ(floats_at(shadow, 4, 1), (Floats{6}));
    EXPECT_EQ(floats_at(shadow, 16, 2), (Floats{3, 4}));
    EXPECT_EQ(floats_at(shadow, 32, 3), (Floats{4, 5, 6}));
    EXPECT_EQ(floats_at(shadow, 48, 4), (Floats{5, 6, 7, 8}));
}

}  // namespace
