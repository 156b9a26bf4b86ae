#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

#include "DirectXEffectMgr/Include/OpenGLEffectMgr.h"

namespace {

// Bytes as a host that was compiled on its own lays them out; worked out by hand.

TEST(RecordLayoutTest, GpuDataIsThreePointers) {
    EXPECT_EQ(24u, sizeof(GpuData));
    EXPECT_EQ(0u, offsetof(GpuData, texture));
    EXPECT_EQ(8u, offsetof(GpuData, srv));
    EXPECT_EQ(16u, offsetof(GpuData, sampler));
}

TEST(RecordLayoutTest, DevicePairIsTwoPointers) {
    EXPECT_EQ(16u, sizeof(DevicePair));
    EXPECT_EQ(0u, offsetof(DevicePair, device));
    EXPECT_EQ(8u, offsetof(DevicePair, immediate_context));
}

TEST(RecordLayoutTest, ParamArrayIsPointerAndCount) {
    EXPECT_EQ(16u, sizeof(ParamArray));
    EXPECT_EQ(8u, offsetof(ParamArray, count));
    EXPECT_TRUE((std::is_same_v<decltype(ParamArray::count), uint64_t>));
}

TEST(RecordLayoutTest, TextureNum) {
    EXPECT_EQ(72u, sizeof(TextureNum));
    EXPECT_EQ(0u, offsetof(TextureNum, reserved));
    EXPECT_EQ(8u, offsetof(TextureNum, gpu_data));
    EXPECT_EQ(16u, offsetof(TextureNum, depth_gpu_data));
    EXPECT_EQ(24u, offsetof(TextureNum, width));
    EXPECT_EQ(28u, offsetof(TextureNum, height));
    EXPECT_EQ(32u, offsetof(TextureNum, render_target_view));
    EXPECT_EQ(40u, offsetof(TextureNum, colour));
    EXPECT_EQ(64u, offsetof(TextureNum, msaa_texture));
}

TEST(RecordLayoutTest, DrawParams) {
    EXPECT_EQ(104u, sizeof(DrawParams));
    EXPECT_EQ(0u, offsetof(DrawParams, reserved_0));
    EXPECT_EQ(8u, offsetof(DrawParams, dest_texture));
    EXPECT_EQ(16u, offsetof(DrawParams, reserved_1));
    EXPECT_EQ(24u, offsetof(DrawParams, reserved_2));
    EXPECT_EQ(32u, offsetof(DrawParams, reserved_3));
    EXPECT_EQ(40u, offsetof(DrawParams, readback_buffer));
    EXPECT_EQ(48u, offsetof(DrawParams, reserved_4));
    EXPECT_EQ(60u, offsetof(DrawParams, reserved_7));
    EXPECT_EQ(64u, offsetof(DrawParams, reserved_8));
    EXPECT_EQ(72u, offsetof(DrawParams, reserved_9));
    EXPECT_EQ(80u, offsetof(DrawParams, reserved_10));
    EXPECT_EQ(96u, offsetof(DrawParams, reserved_14));
    EXPECT_EQ(100u, offsetof(DrawParams, reserved_15));
}

TEST(RecordLayoutTest, DrawParamsDefaults) {
    const DrawParams params;
    EXPECT_EQ(nullptr, params.dest_texture);
    EXPECT_EQ(nullptr, params.readback_buffer);
    EXPECT_EQ(0u, params.reserved_0);
    EXPECT_EQ(1u, params.reserved_3);
    EXPECT_EQ(1u, params.reserved_7);
    EXPECT_EQ(4u, params.reserved_8);
    EXPECT_EQ(0u, params.reserved_9);
    EXPECT_EQ(-1, params.reserved_15);
}

TEST(RecordLayoutTest, VertexAttribute) {
    EXPECT_EQ(160u, sizeof(VertexAttribute));
    EXPECT_EQ(128u, sizeof(VertexAttribute::name));
    EXPECT_EQ(128u, offsetof(VertexAttribute, components));
    EXPECT_EQ(136u, offsetof(VertexAttribute, data));
    EXPECT_EQ(144u, offsetof(VertexAttribute, is_element));
    EXPECT_EQ(148u, offsetof(VertexAttribute, reserved));
    EXPECT_EQ(152u, offsetof(VertexAttribute, dirty));
    EXPECT_EQ(156u, offsetof(VertexAttribute, count));
}

TEST(RecordLayoutTest, InputTexture) {
    EXPECT_EQ(112u, sizeof(InputTexture));
    EXPECT_EQ(0u, offsetof(InputTexture, width));
    EXPECT_EQ(8u, offsetof(InputTexture, pitch));
    EXPECT_EQ(12u, offsetof(InputTexture, depth));
    EXPECT_EQ(16u, offsetof(InputTexture, channels));
    EXPECT_EQ(20u, offsetof(InputTexture, generate_mipmap));
    EXPECT_EQ(24u, offsetof(InputTexture, filter));
    EXPECT_EQ(32u, offsetof(InputTexture, pixels));
    EXPECT_EQ(40u, offsetof(InputTexture, still_pixels));
    EXPECT_EQ(48u, offsetof(InputTexture, texture));
    EXPECT_EQ(56u, offsetof(InputTexture, external_texture));
    EXPECT_EQ(64u, offsetof(InputTexture, still_texture));
    EXPECT_EQ(72u, offsetof(InputTexture, still_stale));
    EXPECT_EQ(76u, offsetof(InputTexture, still_tag_a));
    EXPECT_EQ(80u, offsetof(InputTexture, still_tag_b));
    EXPECT_EQ(84u, offsetof(InputTexture, source_kind));
    EXPECT_EQ(88u, offsetof(InputTexture, volume));
    EXPECT_EQ(89u, offsetof(InputTexture, uploaded));
    EXPECT_EQ(96u, offsetof(InputTexture, expanded_pixels));
    EXPECT_EQ(104u, offsetof(InputTexture, expanded_width));
    EXPECT_EQ(108u, offsetof(InputTexture, expanded_height));
}

TEST(RecordLayoutTest, InputTextureIsPlainAndZero) {
    EXPECT_TRUE(std::is_trivially_copyable_v<InputTexture>);
    const InputTexture record{};
    EXPECT_EQ(0u, record.width);
    EXPECT_EQ(nullptr, record.pixels);
    EXPECT_EQ(nullptr, record.expanded_pixels);
    EXPECT_FALSE(record.uploaded);
}

}  // namespace
