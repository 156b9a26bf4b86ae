#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "host/fake_host.h"
#include "model/draw_model.h"

namespace {

using host::Effect;
using host::FakeHost;
using host::Lines;
using host::Mode;

/// Pictures of host memory on their way to the shader: 2 x 2 pixels of four bytes at first.
class PictureTest : public FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(Mode::inlined);
        effect = makeEffectOf(host::kPass);
        effect->AddFlatInput(2, 2, 8, false);
        ASSERT_EQ(0, init(effect)) << host::log::all();
        ASSERT_EQ(0, draw(effect));  // target, state, buffers
        world.clearCalls();
        for (size_t i = 0; i < sizeof pixels; ++i) {
            pixels[i] = static_cast<uint8_t>(i + 1);
            other[i] = static_cast<uint8_t>(200 - i);
        }
    }
    void TearDown() override {
        effect.reset();
        FakeHost::TearDown();
    }
    int32_t set(const void* data) { return effect->SetInputTexture(0, data, 2, 2, 8, 4, false, 0); }
    int32_t setStill(const void* data) {
        return effect->SetInputTextureRef(0, data, 2, 2, 8, 4, false, 0, 5, 6);
    }
    void drawOnce() {
        world.clearCalls();
        EXPECT_EQ(0, draw(effect));
    }
    /// Name of the view at a position while the pass is drawn, "" if nothing was bound.
    std::string boundAt(int position) {
        const std::string begin = std::to_string(position) + ", [";
        for (const fake::Call& call : world.callsOf("PSSetShaderResources")) {
            if (call.arguments.find(begin) == 0 &&
                call.arguments.find("null") == std::string::npos) {
                return call.arguments.substr(begin.size(),
                                             call.arguments.size() - begin.size() - 1);
            }
        }
        return "";
    }
    size_t uploads() { return world.callsOf("UpdateSubresource").size(); }
    size_t textures() { return world.callsOf("CreateTexture2D").size(); }

    Effect effect;
    uint8_t pixels[64] = {};
    uint8_t other[64] = {};
};

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

// Lists of pictures.

class PictureListTest : public PictureTest {
protected:
    InputTexture record(const void* data) {
        InputTexture made{};
        made.width = 2;
        made.height = 2;
        made.pitch = 8;
        made.depth = 1;
        made.channels = 4;
        made.filter = 9729;
        made.source_kind = 1;
        made.pixels = data;
        return made;
    }
    std::vector<const void*> sources() {
        std::vector<const void*> found;
        for (const fake::Call& call : world.callsOf("UpdateSubresource")) {
            found.push_back(call.source);
        }
        return found;
    }
};

TEST_F(PictureListTest, EachPassGetsItsPictureAndPassesPastTheEndTheFirst) {
    effect->SetVertexCounts({4, 4, 4});
    EXPECT_EQ(0, effect->SetInputTextureList(0, {record(pixels), record(other)}));
    drawOnce();
    EXPECT_EQ((std::vector<const void*>{pixels, other}), sources());
    Lines bound;
    for (const fake::Call& call : world.callsOf("PSSetShaderResources")) {
        bound.push_back(call.arguments);
    }
    EXPECT_EQ((Lines{"0, [srv#2]", "0, [srv#3]", "0, [srv#2]", "0, [null]"}), bound);
}

TEST_F(PictureListTest, ANewListRetiresTheOldPicturesWithTheNextDraw) {
    effect->SetVertexCounts({4, 4});
    EXPECT_EQ(0, effect->SetInputTextureList(0, {record(pixels), record(other)}));
    drawOnce();
    EXPECT_EQ(2u, textures());
    EXPECT_EQ(0, effect->SetInputTextureList(0, {record(other), record(pixels)}));
    drawOnce();
    EXPECT_EQ((std::vector<const void*>{other, pixels}), sources());
    EXPECT_EQ(0u, textures()) << "both came back from the pool";
}

TEST_F(PictureListTest, UpdateTakesThePicturesAsStillOnes) {
    effect->SetVertexCounts({4, 4});
    EXPECT_EQ(0, effect->UpdateInputTextureList(0, {record(pixels), record(other)}));
    drawOnce();
    EXPECT_EQ(2u, uploads());
    EXPECT_EQ(0, effect->UpdateInputTextureList(0, {record(pixels), record(other)}));
    drawOnce();
    drawOnce();
    EXPECT_EQ(0u, uploads());
    EXPECT_EQ(0, effect->UpdateInputTextureList(0, {record(pixels), record(pixels)}));
    drawOnce();
    EXPECT_EQ((std::vector<const void*>{pixels}), sources()) << "the one that changed";
}

TEST_F(PictureListTest, AStaleMarkOfTheHostForcesAnUpload) {
    EXPECT_EQ(0, effect->UpdateInputTextureList(0, {record(pixels)}));
    drawOnce();
    InputTexture stale = record(pixels);
    stale.still_stale = true;
    EXPECT_EQ(0, effect->UpdateInputTextureList(0, {stale}));
    drawOnce();
    EXPECT_EQ(1u, uploads());
}

TEST_F(PictureListTest, UpdateTakesAReadyTextureAway) {
    const Effect source = makeEffectOf(host::kRed);
    ASSERT_EQ(0, init(source));
    ASSERT_EQ(0, draw(source));
    EXPECT_EQ(0, effect->SetInputTextureNum(0, *source->GetOutputTexture(), 67, 41, 268));
    EXPECT_EQ(0, effect->UpdateInputTextureList(0, {record(pixels)}));
    drawOnce();
    EXPECT_EQ(1u, uploads());
}

TEST_F(PictureListTest, FieldsOfTheLibraryInAHostsRecordAreNotTrusted) {
    InputTexture wild = record(pixels);
    wild.texture = reinterpret_cast<GpuData*>(0x10);
    wild.still_texture = reinterpret_cast<GpuData*>(0x10);
    wild.expanded_pixels = reinterpret_cast<uint8_t*>(0x10);
    wild.expanded_width = wild.expanded_height = 2;
    wild.uploaded = true;
    EXPECT_EQ(0, effect->SetInputTextureList(0, {wild}));
    drawOnce();
    EXPECT_EQ(1u, uploads());
    EXPECT_EQ(0, effect->UpdateInputTextureList(0, {wild}));
    drawOnce();
    EXPECT_EQ(0, effect->UpdateInputTextureList(0, {wild, wild}));
    drawOnce();
}

// One channel.

TEST_F(PictureTest, OneChannelIsExpandedToFour) {
    EXPECT_EQ(0, effect->SetInputTexture(0, pixels, 2, 2, 3, 1, false, 0));
    drawOnce();
    // Rows of two bytes, three apart: 1 2, 4 5; gray to blue, green, red, and full alpha.
    EXPECT_EQ((std::vector<uint8_t>{1, 1, 1, 255, 2, 2, 2, 255, 4, 4, 4, 255, 5, 5, 5, 255}),
              world.callsOf("UpdateSubresource").at(0).bytes);
    EXPECT_EQ("deferred#1.UpdateSubresource(texture#2, 0, all, pitch 8, 0)",
              world.textsOf("UpdateSubresource").at(0));
    EXPECT_EQ(0u, world.callsOf("CreateTexture2D")[0].arguments.find("2x2 mips=1 array=1 "
                                                                     "format=B8G8R8A8_UNORM"));
    EXPECT_EQ("srv#2", boundAt(0));
}

TEST_F(PictureTest, OneChannelFramesReuseBufferAndTexture) {
    for (int frame = 0; frame < 3; ++frame) {
        pixels[0] = static_cast<uint8_t>(100 + frame);
        EXPECT_EQ(0, effect->SetInputTexture(0, pixels, 2, 2, 3, 1, false, 0));
        drawOnce();
        EXPECT_EQ(100 + frame, world.callsOf("UpdateSubresource").at(0).bytes.at(0));
        EXPECT_EQ(frame == 0 ? 1u : 0u, textures());
    }
}

TEST_F(PictureTest, OneChannelOfAnotherSizeIsExpandedAnew) {
    EXPECT_EQ(0, effect->SetInputTexture(0, pixels, 2, 2, 3, 1, false, 0));
    drawOnce();
    EXPECT_EQ(0, effect->SetInputTexture(0, pixels, 3, 1, 3, 1, false, 0));
    drawOnce();
    EXPECT_EQ((std::vector<uint8_t>{1, 1, 1, 255, 2, 2, 2, 255, 3, 3, 3, 255}),
              world.callsOf("UpdateSubresource").at(0).bytes);
}

TEST_F(PictureTest, AOneChannelStillPictureGoesToATextureOfItsOwn) {
    EXPECT_EQ(0, effect->SetInputTextureRef(0, pixels, 2, 2, 2, 1, false, 0, 0, 0));
    drawOnce();
    EXPECT_EQ(1u, uploads());
    // On purpose: what is bound is the streaming texture, which is empty here.
    EXPECT_EQ("", boundAt(0));
    drawOnce();
    EXPECT_EQ(0u, uploads());
}

TEST_F(PictureTest, OneChannelPicturesThatAreNone) {
    EXPECT_EQ(0, effect->SetInputTexture(0, pixels, 0, 2, 0, 1, false, 0));
    EXPECT_NO_THROW(draw(effect));
    EXPECT_EQ(0, effect->SetInputTexture(0, pixels, 2, 2, 1, 1, false, 0));
    EXPECT_NO_THROW(draw(effect)) << "a pitch shorter than the row";
    EXPECT_EQ(0, set(pixels));
    drawOnce();
    EXPECT_EQ(1u, uploads());
}

// Formats.

struct FormatCase {
    const char* name;
    int32_t layout;
    int32_t data_type;
    int32_t channels;
    const char* format;
};

class PictureFormatTest : public FakeHost, public testing::WithParamInterface<FormatCase> {};

TEST_P(PictureFormatTest, TextureHasTheFormat) {
    start(Mode::inlined);
    const FormatCase& row = GetParam();
    const Effect effect = makeEffectOf(host::kPass);
    EXPECT_EQ(0, effect->AddInput(2, 2, 1, 32, row.layout, row.data_type, false));
    ASSERT_EQ(0, init(effect));
    const std::vector<uint8_t> pixels(256, 1);
    EXPECT_EQ(0, effect->SetInputTexture(0, pixels.data(), 2, 2, 32, row.channels, false, 1));
    EXPECT_EQ(0, draw(effect));
    EXPECT_NE(std::string::npos,
              world.textsOf("CreateTexture2D").at(1).find(std::string("format=") + row.format));
}

// Every code but those of one channel gives four bytes per pixel. A one-channel picture has been
// expanded before its format is chosen.
INSTANTIATE_TEST_SUITE_P(Rows, PictureFormatTest,
                         testing::Values(FormatCase{"FourBytes", 0, 0, 4, "B8G8R8A8_UNORM"},
                                         FormatCase{"ThreeBytes", 3, 0, 3, "B8G8R8A8_UNORM"},
                                         FormatCase{"FourFloats", 0, 1, 4, "B8G8R8A8_UNORM"},
                                         FormatCase{"ThreeFloats", 3, 1, 3, "B8G8R8A8_UNORM"},
                                         FormatCase{"OneByteExpanded", 0, 0, 1, "B8G8R8A8_UNORM"}),
                         [](const auto& row) { return std::string(row.param.name); });

// Audio.

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

// Volumes.

TEST_F(PictureTest, AVolumeWithoutOpenGlIsRefusedWithOneError) {
    const Effect volume = makeEffectOf(host::kPass);
    volume->AddInput(2, 2, 4, 8, 0, 0, false);
    ASSERT_EQ(0, init(volume));
    InputTexture record{};
    record.width = record.height = 2;
    record.depth = 4;
    record.pitch = 8;
    record.channels = 4;
    record.filter = 9729;
    record.source_kind = 1;
    record.volume = true;
    record.pixels = pixels;
    host::log::clear();
    EXPECT_EQ(0, volume->SetInputTextureList(0, {record}));
    EXPECT_EQ(0, draw(volume));
    EXPECT_EQ(1u, host::log::errors().size());
}

}  // namespace
