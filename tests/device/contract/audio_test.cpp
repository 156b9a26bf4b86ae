#include "contract/picture_host.h"

#include <cstring>
#include <vector>

namespace {

using contract::PictureTest;
using host::FakeHost;
using host::Mode;

class AudioTest : public PictureTest {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(Mode::inlined);
        effect = makeEffectOf("vec4 FUNCNAME(vec2 tc) { return vec4(AUDIO_INPUT1(tc).r); }\n");
        effect->AddAudioInput();
        ASSERT_EQ(0, init(effect)) << host::log::all();
        ASSERT_EQ(0, draw(effect));
        world.clearCalls();
    }
    float samples[8] = {0.5F, 1, 1.5F, 2, 3, 4, 5, 6};
};

TEST_F(AudioTest, SamplesFillARowOfFloats) {
    EXPECT_EQ(0, effect->SetAudioInput(0, 4, samples));
    drawOnce();
    EXPECT_EQ(
        "device.CreateTexture2D(4x1 mips=1 array=1 format=R32_FLOAT samples=1/0 "
        "usage=DEFAULT bind=SHADER_RESOURCE cpu=0 misc=0) -> texture#2",
        world.textsOf("CreateTexture2D").at(0));
    EXPECT_EQ(
        "device.CreateShaderResourceView(texture#2, R32_FLOAT TEXTURE2D mip=0 levels=1) -> "
        "srv#2",
        world.textsOf("CreateShaderResourceView").at(0));
    // The pitch is the count: with one row it does not matter.
    EXPECT_EQ("deferred#1.UpdateSubresource(texture#2, 0, all, pitch 4, 0)",
              world.textsOf("UpdateSubresource").at(0));
    const std::vector<uint8_t> bytes = world.bytesOfName("texture#2");
    ASSERT_EQ(16u, bytes.size());
    EXPECT_EQ(0, std::memcmp(bytes.data(), samples, 16));
    EXPECT_EQ("srv#2", boundAt(0));
}

TEST_F(AudioTest, SamplesAreCopiedInEachDrawIntoTheSameTexture) {
    EXPECT_EQ(0, effect->SetAudioInput(0, 4, samples));
    drawOnce();
    EXPECT_EQ(0, effect->SetAudioInput(0, 4, samples + 4));
    drawOnce();
    EXPECT_EQ(1u, uploads());
    EXPECT_EQ(0u, textures());
    drawOnce();
    EXPECT_EQ(1u, uploads());
}

TEST_F(AudioTest, AnotherCountTakesAnotherTexture) {
    EXPECT_EQ(0, effect->SetAudioInput(0, 4, samples));
    drawOnce();
    EXPECT_EQ(0, effect->SetAudioInput(0, 8, samples));
    drawOnce();
    EXPECT_EQ(0u, world.callsOf("CreateTexture2D").at(0).arguments.find("8x1"));
}

TEST_F(AudioTest, NoSamplesBindNothing) {
    EXPECT_EQ(0, effect->SetAudioInput(0, 0, nullptr));
    drawOnce();
    EXPECT_EQ("", boundAt(0));
    EXPECT_EQ(0u, textures());
}

TEST_F(AudioTest, ACountWithoutDataBindsAnUnfilledTexture) {
    EXPECT_EQ(0, effect->SetAudioInput(0, 4, nullptr));
    drawOnce();
    EXPECT_EQ(0u, uploads());
    EXPECT_EQ("srv#2", boundAt(0));
}

TEST_F(AudioTest, MoreSamplesThanATextureIsWide) {
    const std::vector<float> many(20000);
    EXPECT_EQ(0, effect->SetAudioInput(0, 20000, many.data()));
    drawOnce();
    EXPECT_EQ("CreateTexture2D failed!", host::log::errors().at(0));
    EXPECT_EQ(0, effect->SetAudioInput(0, 4, samples));
    drawOnce();
    EXPECT_NE("", boundAt(0));
}

}  // namespace
