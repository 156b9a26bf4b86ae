// The input nodes on their own: what they tell of themselves, and which textures they ask for.

#include <d3d11.h>
#include <gtest/gtest.h>

#include "DirectXEffectMgr/Source/audio_input_dx.h"
#include "DirectXEffectMgr/Source/flat_input_dx.h"
#include "DirectXEffectMgr/Source/logging/logging.h"
#include "DirectXEffectMgr/Source/resource_pool_dx.h"
#include "fake/world.h"
#include "host/log_capture.h"

namespace {

using Lines = std::vector<std::string>;

class NodeTest : public testing::Test {
protected:
    void SetUp() override {
        host::log::clear();
        set_log_callback(host::log::receive);
    }
    std::unique_ptr<FlatInputDX> flat(uint32_t layout_code, uint32_t pixel_type = kGlUnsignedByte) {
        return std::make_unique<FlatInputDX>(&device, &context, &pool, 0, 1, layout_code,
                                             pixel_type, 4, 2, 64, 1);
    }
    void upload(movit::Input& node, int32_t slot = 3, int32_t pass = 0) {
        node.upload_parameters(0, "", &slot, pass);
    }
    /// Whether the pool has a free texture of this code and size.
    bool poolHolds(uint32_t code, uint32_t width = 4, uint32_t height = 2) {
        const int before = world.created(fake::Kind::texture);
        GpuData texture = pool->create_texture(device, code, width, height);
        const bool reused = world.created(fake::Kind::texture) == before;
        pool->release_texture(texture);
        return reused;
    }

    fake::World world;
    ID3D11Device* device = world.device();
    ID3D11DeviceContext* context = world.immediate();
    ResourcePoolDX pool_itself{&device, &context, 100, 26214400, 25};
    ResourcePoolDX* pool = &pool_itself;
    std::vector<uint8_t> pixels = std::vector<uint8_t>(1024, 9);
};

struct LayoutCase {
    uint32_t code;
    uint32_t layout;
    int32_t alpha;
    bool preset;
    bool one_channel;
};

TEST_F(NodeTest, LayoutCodesBecomeLayouts) {
    const LayoutCase cases[] = {{0, 0, 0, false, false}, {1, 1, 2, false, false},
                                {2, 2, 1, false, false}, {3, 0, 0, true, false},
                                {4, 1, 2, true, false},  {5, 2, 1, true, false},
                                {6, 8, 0, false, true},  {7, 7, 0, false, false},
                                {8, 8, 0, false, false}, {99, 99, 0, false, false}};
    for (const LayoutCase& one : cases) {
        const auto node = flat(one.code);
        EXPECT_EQ(one.layout, node->pixel_layout) << one.code;
        EXPECT_EQ(one.alpha, node->alpha_mode()) << one.code;
        EXPECT_EQ(one.preset, node->from_preset_layout) << one.code;
        EXPECT_EQ(one.one_channel, node->one_channel_layout) << one.code;
    }
}

TEST_F(NodeTest, AnImageTellsOfItself) {
    const FlatInputDX node(&device, &context, &pool, 0, 1, 2, kGlFloat, 40, 30, 170, 2);
    EXPECT_EQ("FlatInputDX", node.type_name());
    EXPECT_FALSE(node.is_audio_input());
    EXPECT_TRUE(node.capability_f());
    EXPECT_EQ(0, node.output_count());
    EXPECT_EQ(40u, node.get_width());
    EXPECT_EQ(30u, node.get_height());
    EXPECT_EQ(170u, node.get_pitch());
    EXPECT_EQ(0, node.get_input_mode_a());
    EXPECT_EQ(1, node.get_input_mode_b());
    EXPECT_EQ(2u, node.get_depth());
    EXPECT_EQ((std::array<float, 4>{0, 0, 1, 1}), node.input_rect);
    ASSERT_EQ(1u, node.input_textures.size());
    const InputTexture& first = node.input_textures[0];
    EXPECT_EQ(4, first.channels);
    EXPECT_EQ(9729u, first.filter);
    EXPECT_EQ(1, first.source_kind);
    EXPECT_TRUE(first.volume);
    EXPECT_FALSE(first.generate_mipmap);
    EXPECT_EQ(nullptr, first.pixels);
}

TEST_F(NodeTest, AnAudioInputTellsOfItself) {
    AudioInputDX node(&device, &context, &pool);
    node.set_samples(17, nullptr);
    EXPECT_EQ("AudioInputDX", node.type_name());
    EXPECT_TRUE(node.is_audio_input());
    EXPECT_FALSE(node.capability_f());
    EXPECT_EQ(0, node.alpha_mode());
    EXPECT_EQ(0, node.output_count());
    EXPECT_EQ(17u, node.get_width());
    EXPECT_EQ(1u, node.get_height());
    EXPECT_EQ(17u, node.get_pitch());
    EXPECT_EQ(0, node.get_input_mode_a());
    EXPECT_EQ(1, node.get_input_mode_b());
    EXPECT_EQ(1u, node.get_depth());
}

struct FormatCase {
    uint32_t pixel_type;
    uint32_t layout;
    int32_t gamma;
    int32_t channels;
    uint32_t code;
};

TEST_F(NodeTest, TheTextureIsAskedForByItsOpenGlCode) {
    // What was asked for shows in the pool: only the same code gives the texture back.
    const FormatCase cases[] = {
        {5126, 8, 0, 4, 33326}, {5126, 7, 0, 4, 33328}, {5126, 0, 0, 4, 34837},
        {5126, 2, 0, 4, 34836}, {5131, 8, 0, 4, 33325}, {5131, 7, 0, 4, 33327},
        {5131, 0, 0, 4, 34843}, {5131, 1, 0, 4, 34842}, {5123, 8, 0, 4, 33331},
        {5123, 7, 0, 4, 33337}, {5123, 0, 0, 4, 36233}, {5123, 2, 0, 4, 36232},
        {5121, 0, 1, 4, 35905}, {5121, 2, 1, 4, 35907}, {5121, 1, 1, 4, 32856},
        {5121, 8, 0, 4, 33321}, {5121, 7, 0, 4, 33323}, {5121, 0, 0, 4, 32849},
        {5121, 2, 0, 4, 32856}, {5121, 1, 0, 4, 32856}, {4711, 2, 0, 4, 32856},
        {5126, 2, 1, 4, 34836},
    };
    for (const FormatCase& one : cases) {
        const auto node = flat(one.layout, one.pixel_type);
        EXPECT_TRUE(node->set_int("output_linear_gamma", one.gamma));
        EXPECT_EQ(one.gamma, node->output_linear_gamma);
        node->input_textures[0].pixels = pixels.data();
        node->new_frames = true;
        upload(*node);
        node->release_frame_textures();
        EXPECT_TRUE(poolHolds(one.code)) << one.pixel_type << ", layout " << one.layout;
        // Nothing of this case is left for the next.
        pool_itself.~ResourcePoolDX();
        new (&pool_itself) ResourcePoolDX(&device, &context, 100, 26214400, 25);
    }
}

TEST_F(NodeTest, ASecondUploadWithoutAReleaseCopiesNothing) {
    const auto node = flat(2);
    node->input_textures[0].pixels = pixels.data();
    node->new_frames = true;
    upload(*node);
    upload(*node);
    EXPECT_EQ(1u, world.callsOf("UpdateSubresource").size());
    EXPECT_EQ(2u, world.callsOf("PSSetShaderResources").size());
    node->release_frame_textures();
    upload(*node);
    EXPECT_EQ(2u, world.callsOf("UpdateSubresource").size());
}

TEST_F(NodeTest, BindsAtTheGivenSlot) {
    const auto node = flat(2);
    node->input_textures[0].pixels = pixels.data();
    upload(*node, 7);
    EXPECT_EQ("immediate.PSSetShaderResources(7, [srv#1])",
              world.textsOf("PSSetShaderResources").at(0));
}

TEST_F(NodeTest, APictureThatNeverStreamedIsKept) {
    // On purpose: textures go back only once a streaming picture was set through the effect.
    const auto node = flat(2);
    node->input_textures[0].pixels = pixels.data();
    upload(*node);
    node->release_frame_textures();
    EXPECT_FALSE(poolHolds(32856));
}

TEST_F(NodeTest, TheEndGivesEverythingBack) {
    {
        const auto node = flat(2);
        node->input_textures[0].pixels = pixels.data();
        upload(*node);
        AudioInputDX audio(&device, &context, &pool);
        const float samples[4] = {};
        audio.set_samples(4, samples);
        upload(audio);
    }
    EXPECT_TRUE(poolHolds(32856));
    EXPECT_TRUE(poolHolds(33326, 4, 1));
}

TEST_F(NodeTest, WithoutPoolDeviceOrContextNothingHappens) {
    const auto node = flat(2);
    node->input_textures[0].pixels = pixels.data();
    AudioInputDX audio(&device, &context, &pool);
    const float samples[4] = {};
    audio.set_samples(4, samples);
    pool = nullptr;
    upload(*node);
    upload(audio);
    pool = &pool_itself;
    device = nullptr;
    upload(*node);
    upload(audio);
    device = world.device();
    context = nullptr;
    upload(*node);
    upload(audio);
    context = world.immediate();
    EXPECT_EQ(Lines(), world.errors());
}

}  // namespace
