#include <d3d11.h>
#include <gtest/gtest.h>

#include "host/fake_host.h"
#include "model/draw_model.h"

namespace {

using host::FakeHost;
using host::Lines;
using host::Mode;

class BindTextureTest : public FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(Mode::inlined);
        world.clearCalls();
    }
    void TearDown() override {
        engine->ReleaseGpuDataMap(map);
        map.clear();
        EXPECT_EQ(Lines(), world.live());
        FakeHost::TearDown();
    }
    bool bind(const void* data, uint32_t width, uint32_t height) {
        return engine->BindTextureData(data, width, height, width * 4, &slot, map);
    }
    Lines creationOf(const char* size, const std::string& number) {
        return {std::string("device.CreateTexture2D(") + size +
                    " mips=1 array=1 format=B8G8R8A8_UNORM samples=1/0 usage=DEFAULT "
                    "bind=SHADER_RESOURCE cpu=0 misc=0) -> texture#" +
                    number,
                "device.CreateShaderResourceView(texture#" + number +
                    ", B8G8R8A8_UNORM TEXTURE2D mip=0 levels=1) -> srv#" + number,
                std::string("device.CreateSamplerState(") + model::kColourSampler +
                    ") -> sampler#" + number};
    }
    uint8_t pixels[64] = {1, 2, 3, 4, 5, 6, 7, 8};
    GpuData* slot = nullptr;
    GpuDataMap map;
};

TEST_F(BindTextureTest, AFirstCallMakesARecordAndFillsTheTexture) {
    ASSERT_TRUE(bind(pixels, 2, 1));
    Lines expected = creationOf("2x1", "1");
    expected.push_back("immediate.UpdateSubresource(texture#1, 0, all, pitch 8, 0)");
    EXPECT_EQ(expected, world.texts());
    ASSERT_NE(nullptr, slot);
    ASSERT_EQ(1u, map.size());
    EXPECT_EQ((std::vector<int32_t>{2, 1}), map[slot]);
    EXPECT_EQ("texture#1", world.nameOf(slot->texture));
    EXPECT_EQ("srv#1", world.nameOf(slot->srv));
    EXPECT_EQ("sampler#1", world.nameOf(slot->sampler));
    EXPECT_EQ((std::vector<uint8_t>{1, 2, 3, 4, 5, 6, 7, 8}), world.bytesOf(slot->texture));
}

TEST_F(BindTextureTest, TheSameSizeIsOnlyFilledAgain) {
    ASSERT_TRUE(bind(pixels, 2, 1));
    world.clearCalls();
    pixels[0] = 200;
    ASSERT_TRUE(bind(pixels, 2, 1));
    EXPECT_EQ((Lines{"immediate.UpdateSubresource(texture#1, 0, all, pitch 8, 0)"}), world.texts());
    EXPECT_EQ(200, world.bytesOf(slot->texture)[0]);
}

TEST_F(BindTextureTest, TheSameSizeWithoutPixelsChangesNothing) {
    ASSERT_TRUE(bind(pixels, 2, 1));
    world.clearCalls();
    EXPECT_TRUE(bind(nullptr, 2, 1));
    EXPECT_EQ(Lines(), world.texts());
}

TEST_F(BindTextureTest, AnotherSizeReplacesTheObjectsAndKeepsTheRecord) {
    ASSERT_TRUE(bind(pixels, 2, 1));
    GpuData* record = slot;
    world.clearCalls();
    ASSERT_TRUE(bind(pixels, 1, 2));
    Lines expected = creationOf("1x2", "2");
    expected.push_back("immediate.UpdateSubresource(texture#2, 0, all, pitch 4, 0)");
    EXPECT_EQ(expected, world.texts());
    EXPECT_EQ(record, slot);
    EXPECT_EQ((std::vector<int32_t>{1, 2}), map[slot]);
    EXPECT_EQ((Lines{"texture#2: 1", "srv#2: 1", "sampler#2: 1"}), world.live());
}

TEST_F(BindTextureTest, ASlotThatIsNoKeyOfTheMapCountsAsNew) {
    // On purpose: the library cannot know who owns such a record, so it leaves it alone.
    GpuData foreign;
    slot = &foreign;
    ASSERT_TRUE(bind(pixels, 2, 1));
    EXPECT_NE(&foreign, slot);
    EXPECT_EQ(nullptr, foreign.texture);
    EXPECT_EQ(1u, map.size());
}

TEST_F(BindTextureTest, SeveralRecordsShareAMap) {
    ASSERT_TRUE(bind(pixels, 2, 1));
    GpuData* second = nullptr;
    ASSERT_TRUE(engine->BindTextureData(pixels, 3, 1, 12, &second, map));
    EXPECT_NE(slot, second);
    EXPECT_EQ(2u, map.size());
}

struct BindFault {
    const char* method;
    const char* message;
};
void PrintTo(const BindFault& fault, std::ostream* out) {
    *out << fault.method;
}

class BindFaultTest : public BindTextureTest, public testing::WithParamInterface<BindFault> {};

TEST_P(BindFaultTest, ANewRecordIsFreedAndTheSlotIsNull) {
    world.failNth(GetParam().method, 1);
    EXPECT_FALSE(bind(pixels, 2, 1));
    EXPECT_EQ(nullptr, slot);
    EXPECT_TRUE(map.empty());
    EXPECT_EQ((Lines{GetParam().message}), host::log::errors());
    EXPECT_EQ(Lines(), world.live());
    EXPECT_TRUE(bind(pixels, 2, 1)) << "the next try works";
}

TEST_P(BindFaultTest, AKnownRecordIsFreedAndItsStaleKeyStays) {
    ASSERT_TRUE(bind(pixels, 2, 1));
    world.failNth(GetParam().method, 1);
    EXPECT_FALSE(bind(pixels, 1, 2));
    EXPECT_EQ(nullptr, slot);
    EXPECT_EQ(1u, map.size());
    EXPECT_EQ((Lines{GetParam().message}), host::log::errors());
    EXPECT_EQ(Lines(), world.live());
    map.clear();  // the stale key is the host's to drop
}

INSTANTIATE_TEST_SUITE_P(
    EachCreation, BindFaultTest,
    testing::Values(BindFault{"CreateTexture2D", "BindTexture CreateTexture2D failed!"},
                    BindFault{"CreateShaderResourceView",
                              "BindTexture CreateShaderResourceView failed!"},
                    BindFault{"CreateSamplerState", "CreateSamplerState failed!"}),
    [](const auto& fault) { return std::string(fault.param.method); });

TEST_F(BindTextureTest, ReleaseFreesEachKeyAndLeavesTheMapAsItIs) {
    ASSERT_TRUE(bind(pixels, 2, 1));
    map[nullptr] = {1, 1};
    engine->ReleaseGpuDataMap(map);
    EXPECT_EQ(2u, map.size());
    EXPECT_EQ(Lines(), world.live());
    map.clear();
}

TEST_F(BindTextureTest, NullSlotAndNullPixelsOfANewRecord) {
    EXPECT_FALSE(engine->BindTextureData(pixels, 2, 1, 8, nullptr, map));
    EXPECT_TRUE(bind(nullptr, 2, 1));
    EXPECT_TRUE(world.callsOf("UpdateSubresource").empty());
}

TEST_F(BindTextureTest, SizesThatTheDeviceRefuses) {
    EXPECT_FALSE(bind(nullptr, 0, 1));
    EXPECT_FALSE(bind(nullptr, 100000, 1));
    EXPECT_EQ(2u, host::log::errors().size());
    EXPECT_EQ(nullptr, slot);
}

class GpuDataTest : public FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(Mode::inlined);
        effect = makeEffect();
        GpuData* record = nullptr;
        ASSERT_TRUE(engine->BindTextureData(nullptr, 2, 2, 8, &record, map));
        texture = record->texture;
        world.clearCalls();
        before = world.live();
    }
    void TearDown() override {
        effect.reset();
        engine->ReleaseGpuDataMap(map);
        FakeHost::TearDown();
    }
    host::Effect effect;
    GpuDataMap map;
    ID3D11Texture2D* texture = nullptr;
    Lines before;
};

TEST_F(GpuDataTest, WrapsATextureWithoutAReference) {
    GpuData* data = effect->CreateGpuData(texture);
    ASSERT_NE(nullptr, data);
    EXPECT_EQ(texture, data->texture);
    EXPECT_EQ(1, world.references(texture));
    EXPECT_EQ((Lines{"device.CreateShaderResourceView(texture#1, B8G8R8A8_UNORM TEXTURE2D mip=0 "
                     "levels=1) -> srv#2",
                     std::string("device.CreateSamplerState(") + model::kColourSampler +
                         ") -> sampler#2"}),
              world.texts());
    effect->ReleaseGpuData(data);
    EXPECT_EQ(before, world.live());
    EXPECT_EQ(1, world.references(texture)) << "the host's texture is never touched";
}

TEST_F(GpuDataTest, AFailedViewGivesNull) {
    world.failNth("CreateShaderResourceView", 1);
    EXPECT_EQ(nullptr, effect->CreateGpuData(texture));
    EXPECT_EQ((Lines{"CreateGpuData CreateShaderResourceView failed!"}), host::log::errors());
    EXPECT_EQ(before, world.live());
}

TEST_F(GpuDataTest, AFailedSamplerReleasesTheView) {
    world.failNth("CreateSamplerState", 1);
    EXPECT_EQ(nullptr, effect->CreateGpuData(texture));
    EXPECT_EQ((Lines{"CreateGpuData CreateSamplerState failed!"}), host::log::errors());
    EXPECT_EQ(before, world.live());
}

}  // namespace
