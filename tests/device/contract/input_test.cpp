#include "contract/picture_host.h"

#include <algorithm>

#include "model/draw_model.h"

namespace {

using contract::PictureTest;
using host::Effect;
using host::Lines;

TEST_F(PictureTest, NoPictureBindsNothing) {
    drawOnce();
    EXPECT_EQ("", boundAt(0));
    EXPECT_EQ((Lines{"deferred#1.PSSetShaderResources(0, [null])"}),
              world.textsOf("PSSetShaderResources"));
}

TEST_F(PictureTest, AStreamingPictureIsUploadedInEachFrameToTheSameTexture) {
    for (int frame = 0; frame < 3; ++frame) {
        EXPECT_EQ(0, set(frame % 2 == 0 ? pixels : other));
        drawOnce();
        EXPECT_EQ(1u, uploads());
        EXPECT_EQ(frame == 0 ? 1u : 0u, textures());
        EXPECT_EQ("srv#2", boundAt(0));
        EXPECT_EQ(frame % 2 == 0 ? pixels : other, world.callsOf("UpdateSubresource").at(0).source);
    }
    EXPECT_EQ(std::vector<uint8_t>(pixels, pixels + 16), world.bytesOfName("texture#2"));
}

TEST_F(PictureTest, ThePictureStaysSetAndIsUploadedAgainByTheNextDraw) {
    EXPECT_EQ(0, set(pixels));
    drawOnce();
    drawOnce();
    EXPECT_EQ(1u, uploads()) << "its texture went back to the pool in between";
}

TEST_F(PictureTest, TheTextureIsDescribedFieldByField) {
    EXPECT_EQ(0, set(pixels));
    drawOnce();
    EXPECT_EQ((Lines{"device.CreateTexture2D(2x2 mips=1 array=1 format=B8G8R8A8_UNORM "
                     "samples=1/0 usage=DEFAULT bind=SHADER_RESOURCE cpu=0 misc=0) -> texture#2"}),
              world.textsOf("CreateTexture2D"));
    EXPECT_EQ((Lines{"device.CreateShaderResourceView(texture#2, B8G8R8A8_UNORM TEXTURE2D mip=0 "
                     "levels=1) -> srv#2"}),
              world.textsOf("CreateShaderResourceView"));
    EXPECT_EQ((Lines{std::string("device.CreateSamplerState(") + model::kColourSampler +
                     ") -> sampler#2"}),
              world.textsOf("CreateSamplerState"));
}

TEST_F(PictureTest, ARowPitchLargerThanTheRow) {
    EXPECT_EQ(0, effect->SetInputTexture(0, pixels, 2, 2, 12, 4, false, 0));
    drawOnce();
    EXPECT_EQ("deferred#1.UpdateSubresource(texture#2, 0, all, pitch 12, 0)",
              world.textsOf("UpdateSubresource").at(0));
    const std::vector<uint8_t> expected = {1, 2, 3, 4, 5, 6, 7, 8, 13, 14, 15, 16, 17, 18, 19, 20};
    EXPECT_EQ(expected, world.bytesOfName("texture#2"));
}

TEST_F(PictureTest, AnotherSizeTakesAnotherTextureAndAReturnTheFormerOne) {
    EXPECT_EQ(0, set(pixels));
    drawOnce();
    EXPECT_EQ(0, effect->SetInputTexture(0, pixels, 1, 2, 4, 4, false, 0));
    drawOnce();
    EXPECT_EQ("srv#3", boundAt(0));
    EXPECT_EQ(0, set(pixels));
    drawOnce();
    EXPECT_EQ("srv#2", boundAt(0));
    EXPECT_EQ(0u, textures());
}

TEST_F(PictureTest, SeveralPassesUploadOnceAndBindInEach) {
    effect->SetVertexCounts({4, 4});
    EXPECT_EQ(0, set(pixels));
    drawOnce();
    EXPECT_EQ(1u, uploads());
    EXPECT_EQ(3u, world.callsOf("PSSetShaderResources").size());
}

TEST_F(PictureTest, AStillPictureIsUploadedOnce) {
    EXPECT_EQ(0, setStill(pixels));
    drawOnce();
    EXPECT_EQ(1u, uploads());
    for (int frame = 0; frame < 3; ++frame) {
        EXPECT_EQ(0, setStill(pixels));
        drawOnce();
        EXPECT_EQ(0u, uploads());
        EXPECT_EQ("srv#2", boundAt(0));
    }
}

TEST_F(PictureTest, AnotherStillPictureIsUploadedAnew) {
    EXPECT_EQ(0, setStill(pixels));
    drawOnce();
    EXPECT_EQ(0, setStill(other));
    drawOnce();
    EXPECT_EQ(1u, uploads());
    EXPECT_EQ(other, world.callsOf("UpdateSubresource").at(0).source);
    drawOnce();
    EXPECT_EQ(0u, uploads());
}

TEST_F(PictureTest, AStillPictureAfterAStreamingOne) {
    EXPECT_EQ(0, set(pixels));
    drawOnce();
    EXPECT_EQ(0, setStill(other));
    drawOnce();
    EXPECT_EQ(1u, uploads());
    EXPECT_EQ(other, world.callsOf("UpdateSubresource").at(0).source);
    // The change left the stale mark: it gives the picture back once more, then it stays.
    drawOnce();
    EXPECT_EQ(1u, uploads());
    drawOnce();
    EXPECT_EQ(0u, uploads());
}

TEST_F(PictureTest, AStreamingPictureAfterAStillOne) {
    EXPECT_EQ(0, setStill(other));
    drawOnce();
    EXPECT_EQ(0, set(pixels));
    drawOnce();
    EXPECT_EQ(pixels, world.callsOf("UpdateSubresource").at(0).source);
    EXPECT_EQ("srv#3", boundAt(0));
}

TEST_F(PictureTest, AReadyTextureIsBoundAsItIs) {
    const Effect source = makeEffectOf(host::kRed);
    ASSERT_EQ(0, init(source));
    ASSERT_EQ(0, draw(source));
    const TextureNum* picture = source->GetOutputTexture();
    EXPECT_EQ(0, effect->SetInputTextureNum(0, *picture, 67, 41, 268));
    drawOnce();
    EXPECT_EQ(0u, uploads());
    EXPECT_EQ(world.nameOf(picture->colour.srv), boundAt(0));
    EXPECT_EQ("deferred#1.PSSetSamplers(0, [" + world.nameOf(picture->colour.sampler) + "])",
              world.textsOf("PSSetSamplers").at(0));
    EXPECT_EQ(0, set(pixels));
    drawOnce();
    EXPECT_EQ(1u, uploads()) << "a picture of memory takes its place";
}

TEST_F(PictureTest, BindingGoesPixelStageFirstViewBeforeSampler) {
    EXPECT_EQ(0, set(pixels));
    drawOnce();
    const Lines calls = world.texts();
    const auto first =
        std::find(calls.begin(), calls.end(), "deferred#1.PSSetShaderResources(0, [srv#2])");
    ASSERT_NE(calls.end(), first);
    EXPECT_EQ((Lines{"deferred#1.PSSetShaderResources(0, [srv#2])",
                     "deferred#1.PSSetSamplers(0, [sampler#2])",
                     "deferred#1.VSSetShaderResources(0, [srv#2])",
                     "deferred#1.VSSetSamplers(0, [sampler#2])"}),
              Lines(first, first + 4));
}

TEST_F(PictureTest, AFailedTextureIsReportedAndBindsNull) {
    EXPECT_EQ(0, set(pixels));
    world.failNth("CreateTexture2D", 1);
    drawOnce();
    EXPECT_EQ((Lines{"CreateTexture2D failed!"}), host::log::errors());
    EXPECT_EQ("", boundAt(0));
    EXPECT_EQ(2u, world.callsOf("PSSetShaderResources").size()) << "null in its place";
    EXPECT_EQ(0, set(pixels));
    drawOnce();
    EXPECT_EQ("srv#2", boundAt(0));
}

TEST_F(PictureTest, AFailedViewOrSamplerIsReportedAndLeaksNothing) {
    const Lines before = world.live();
    EXPECT_EQ(0, set(pixels));
    world.failNth("CreateShaderResourceView", 1);
    drawOnce();
    EXPECT_EQ((Lines{"CreateShaderResourceView failed!"}), host::log::errors());
    EXPECT_EQ(0, set(pixels));
    world.failNth("CreateSamplerState", 1);
    drawOnce();
    EXPECT_EQ("CreateSamplerState failed!", host::log::errors().back());
    EXPECT_EQ(0, set(pixels));
    drawOnce();
    EXPECT_NE("", boundAt(0));
}

}  // namespace
