// Pictures and samples on their way through the real device, and pictures on their way out.

#include <algorithm>
#include <cstring>
#include <thread>

#include "host/temp_folder.h"
#include "real/pixel_host.h"

namespace {

using host::Effect;
using host::Mode;
using host::Picture;
using host::PixelHost;
using host::samePicture;
using host::testPicture;
using host::uniform;

class InputTest : public PixelHost {
protected:
    Effect passEffect(uint32_t width = 67, uint32_t height = 41) {
        Effect effect = makeEffect(host::kPass, width, height);
        effect->AddFlatInput(width, height, width * 4, false);
        EXPECT_EQ(0, init(effect)) << host::log::all();
        return effect;
    }
    InputTexture record(const Picture& picture) {
        InputTexture made{};
        made.width = picture.width;
        made.height = picture.height;
        made.pitch = picture.pitch();
        made.depth = 1;
        made.channels = 4;
        made.filter = 9729;
        made.source_kind = 1;
        made.pixels = picture.bytes.data();
        return made;
    }
    int32_t setStill(const Effect& effect, const Picture& picture) {
        return effect->SetInputTextureRef(0, picture.bytes.data(), picture.width, picture.height,
                                          picture.pitch(), 4, false, 0, 0, 0);
    }
    Picture one = testPicture(67, 41, 1);
    Picture two = testPicture(67, 41, 2);
};

TEST_F(InputTest, AStreamingPictureShowsEachFrame) {
    const Effect effect = passEffect();
    for (int frame = 0; frame < 4; ++frame) {
        const Picture picture = testPicture(67, 41, frame);
        setPicture(effect, 0, picture);
        EXPECT_TRUE(samePicture(picture, render(effect))) << frame;
    }
}

TEST_F(InputTest, AStillPictureStaysWhileItsPointerStays) {
    const Effect effect = passEffect();
    Picture still = one;
    EXPECT_EQ(0, setStill(effect, still));
    EXPECT_TRUE(samePicture(one, render(effect)));
    still.bytes = two.bytes;  // the same pointer: not uploaded again
    EXPECT_EQ(0, setStill(effect, still));
    EXPECT_TRUE(samePicture(one, render(effect)));
    EXPECT_EQ(0, setStill(effect, two));
    EXPECT_TRUE(samePicture(two, render(effect)));
    setPicture(effect, 0, one);
    EXPECT_TRUE(samePicture(one, render(effect)));
    EXPECT_EQ(0, setStill(effect, two));
    EXPECT_TRUE(samePicture(two, render(effect)));
}

TEST_F(InputTest, AListGivesEachPassItsPicture) {
    const Effect effect = makeEffect("vec4 FUNCNAME(vec2 tc) { return INPUT1(tc) * 0.5; }\n");
    effect->AddFlatInput(67, 41, 268, false);
    ASSERT_EQ(0, init(effect));
    effect->SetVertexCounts({4, 4});
    effect->SetBlendMode(3);
    EXPECT_EQ(0, effect->SetInputTextureList(0, {record(one), record(two)}));
    Picture mixed(67, 41);
    for (size_t i = 0; i < mixed.bytes.size(); ++i) {
        mixed.bytes[i] = static_cast<uint8_t>((one.bytes[i] + two.bytes[i]) / 2);
    }
    EXPECT_TRUE(samePicture(mixed, render(effect), 2));
    EXPECT_EQ(0, effect->UpdateInputTextureList(0, {record(two), record(two)}));
    EXPECT_TRUE(samePicture(two, render(effect), 2));
}

TEST_F(InputTest, RowsMayBeLongerThanTheirPixels) {
    const Effect effect = passEffect(5, 3);
    const Picture picture = testPicture(5, 3);
    std::vector<uint8_t> padded(3 * 32, 0xEE);
    for (uint32_t y = 0; y < 3; ++y) {
        std::copy_n(picture.bytes.begin() + y * 20, 20, padded.begin() + y * 32);
    }
    EXPECT_EQ(0, effect->SetInputTexture(0, padded.data(), 5, 3, 32, 4, false, 0));
    EXPECT_TRUE(samePicture(picture, render(effect)));
}

TEST_F(InputTest, OneChannelShowsAsGray) {
    const Effect effect = passEffect(5, 3);
    std::vector<uint8_t> gray(3 * 7);
    for (size_t i = 0; i < gray.size(); ++i) {
        gray[i] = static_cast<uint8_t>(i * 12);
    }
    EXPECT_EQ(0, effect->SetInputTexture(0, gray.data(), 5, 3, 7, 1, false, 0));
    Picture expected(5, 3);
    for (uint32_t y = 0; y < 3; ++y) {
        for (uint32_t x = 0; x < 5; ++x) {
            std::memset(expected.at(x, y), gray[y * 7 + x], 3);
            expected.at(x, y)[3] = 255;
        }
    }
    EXPECT_TRUE(samePicture(expected, render(effect)));
}

TEST_F(InputTest, FloatRowsAreReadAsTheBytesThatTheyAre) {
    // On purpose: the texture holds four bytes per pixel whatever the samples are.
    const Effect effect = makeEffect(host::kPass, 5, 3);
    effect->AddInput(5, 3, 1, 80, 0, 1, false);
    ASSERT_EQ(0, init(effect));
    std::vector<float> samples(5 * 3 * 4);
    for (size_t i = 0; i < samples.size(); ++i) {
        samples[i] = static_cast<float>(i) * 0.37F;
    }
    EXPECT_EQ(0, effect->SetInputTexture(0, samples.data(), 5, 3, 80, 4, false, 0));
    Picture expected(5, 3);
    const auto* bytes = reinterpret_cast<const uint8_t*>(samples.data());
    for (uint32_t y = 0; y < 3; ++y) {
        std::copy_n(bytes + y * 80, 20, expected.bytes.begin() + y * 20);
    }
    EXPECT_TRUE(samePicture(expected, render(effect)));
}

TEST_F(InputTest, AudioReadsTheThirdChannelWhichARowOfFloatsDoesNotHave) {
    // On purpose: samples lie in the first channel, and effects read the third.
    const Effect effect =
        makeEffect("vec4 FUNCNAME(vec2 tc) { return AUDIO_INPUT1(tc) + vec4(0.2); }\n", 8, 2);
    effect->AddAudioInput();
    ASSERT_EQ(0, init(effect)) << host::log::all();
    const float samples[8] = {0.5F, 0.5F, 0.5F, 0.5F, 0.5F, 0.5F, 0.5F, 0.5F};
    EXPECT_EQ(0, effect->SetAudioInput(0, 8, samples));
    EXPECT_TRUE(uniform({51, 51, 51, 51}, render(effect)));
}

TEST_F(InputTest, TwoInputsKeepTheirPlaces) {
    const Effect effect =
        makeEffect("vec4 FUNCNAME(vec2 tc) { return tc.x < 0.5 ? INPUT1(tc) : INPUT2(tc); }\n");
    effect->AddFlatInput(67, 41, 268, false);
    effect->AddFlatInput(67, 41, 268, false);
    ASSERT_EQ(0, init(effect)) << host::log::all();
    setPicture(effect, 0, one);
    setPicture(effect, 1, two);
    Picture expected = two;
    for (uint32_t y = 0; y < 41; ++y) {
        // The middle column, 33, has its centre at exactly one half: the second input.
        std::copy_n(one.at(0, y), 33 * 4, expected.at(0, y));
    }
    EXPECT_TRUE(samePicture(expected, render(effect)));
}

TEST_F(InputTest, TheOutputOfOneEffectIsTheInputOfAnother) {
    const Effect source = passEffect();
    const Effect sink = passEffect();
    setPicture(source, 0, one);
    ASSERT_EQ(0, draw(source));
    EXPECT_EQ(0, sink->SetInputTextureNum(0, *source->GetOutputTexture(), 67, 41, 268));
    EXPECT_TRUE(samePicture(one, render(sink)));
}

TEST_F(InputTest, AHostsTextureMayBeDrawnIntoAndReadFrom) {
    GpuDataMap map;
    GpuData* texture = nullptr;
    ASSERT_TRUE(engine()->BindTextureData(one.bytes.data(), 67, 41, 268, &texture, map));
    const Effect sink = passEffect();
    TextureNum handle;
    handle.gpu_data = texture;
    EXPECT_EQ(0, sink->SetInputTextureNum(0, handle, 67, 41, 268));
    EXPECT_TRUE(samePicture(one, render(sink)));
    ASSERT_TRUE(engine()->BindTextureData(two.bytes.data(), 67, 41, 268, &texture, map));
    EXPECT_TRUE(samePicture(two, render(sink)));
    const Effect source = readyEffect(host::kRed);
    DrawParams params;
    params.dest_texture = texture;
    EXPECT_EQ(0, source->DrawEffect(params, source, 0));
    EXPECT_TRUE(uniform({255, 0, 0, 255}, render(sink), 0));
    engine()->ReleaseGpuDataMap(map);
}

TEST_F(InputTest, DrawingOverTheDestinationOrOverTheClearedTarget) {
    GpuDataMap map;
    GpuData* texture = nullptr;
    ASSERT_TRUE(engine()->BindTextureData(one.bytes.data(), 67, 41, 268, &texture, map));
    const Effect effect = readyEffect("vec4 FUNCNAME(vec2 tc) { return vec4(0.0); }\n");
    effect->SetBlendMode(3);  // adds nothing
    DrawParams params;
    params.dest_texture = texture;
    Picture result(67, 41);
    params.readback_buffer = result.bytes.data();
    EXPECT_EQ(0, effect->DrawEffect(params, effect, 268));
    EXPECT_TRUE(uniform({0, 0, 0, 0}, result, 0)) << "cleared";
    effect->SetClearEnabled(false);
    EXPECT_EQ(0, effect->DrawEffect(params, effect, 268));
    EXPECT_TRUE(samePicture(one, result));
    engine()->ReleaseGpuDataMap(map);
}

TEST_F(InputTest, ReadImageFromTexWithRowsOfSeveralLengths) {
    const Effect effect = passEffect(5, 3);
    const Picture picture = testPicture(5, 3);
    setPicture(effect, 0, picture);
    ASSERT_EQ(0, draw(effect));
    for (const uint32_t pitch : {20U, 24U, 64U, 256U, 300U}) {
        std::vector<uint8_t> buffer(pitch * 3, 0xEE);
        ASSERT_TRUE(
            effect->ReadImageFromTex(*effect->GetOutputTexture(), 5, 3, pitch, buffer.data()));
        for (uint32_t y = 0; y < 3; ++y) {
            EXPECT_EQ(0, std::memcmp(&buffer[y * pitch], &picture.bytes[y * 20], 20)) << pitch;
        }
    }
}

TEST_F(InputTest, SizesChangeBetweenFrames) {
    const Effect effect = passEffect();
    for (const auto& [width, height] :
         {std::pair<uint32_t, uint32_t>{67, 41}, {16, 128}, {255, 3}, {67, 41}}) {
        ASSERT_EQ(0, effect->ResizeEffect(width, height, width * 4, effect));
        const Picture picture = testPicture(width, height);
        setPicture(effect, 0, picture);
        EXPECT_TRUE(samePicture(picture, render(effect))) << width << "x" << height;
    }
}

TEST_F(InputTest, TargetsArePlayedBackAndForth) {
    // Each step adds to the picture of the step before, which the other target holds.
    const Effect effect =
        makeEffect("vec4 FUNCNAME(vec2 tc) { return INPUT1(tc) + vec4(10.0 / 255.0); }\n", 9, 7);
    effect->AddFlatInput(9, 7, 36, false);
    effect->AddFbo();
    ASSERT_EQ(0, init(effect));
    Picture black(9, 7);
    setPicture(effect, 0, black);
    ASSERT_EQ(0, draw(effect));
    for (int step = 2; step <= 5; ++step) {
        EXPECT_EQ(0, effect->SetInputTextureNum(0, *effect->GetOutputTexture(), 9, 7, 36));
        EXPECT_EQ(0, effect->SwapFbo(0));
        const int value = step * 10;
        EXPECT_TRUE(uniform({value, value, value, value}, render(effect))) << step;
    }
    EXPECT_EQ(0, effect->ResizeEffect(12, 5, 48, effect));
    black = Picture(12, 5);
    setPicture(effect, 0, black);
    EXPECT_TRUE(uniform({10, 10, 10, 10}, render(effect)));
    EXPECT_EQ(12u, effect->GetFbo(0)->width);
}

TEST_F(InputTest, VariantsChangeBetweenFrames) {
    const host::TempFolder folder;
    const SegmentList segments = {{folder.write("a.frag", "#define LEVEL 0.2\n"),
                                   folder.write("b.frag", "#define LEVEL 0.6\n")}};
    Effect effect;
    ASSERT_EQ(0, engine()->CreateEffect(9, 7, 36, false, "", effect, 0, "", segments, {}));
    effect->SetFragmentShaderText("vec4 FUNCNAME(vec2 tc) { return vec4(LEVEL); }\n");
    ASSERT_EQ(0, init(effect)) << host::log::all();
    EXPECT_TRUE(uniform({51, 51, 51, 51}, render(effect)));
    effect->SetFragmentSegmentIndices({1});
    EXPECT_TRUE(uniform({153, 153, 153, 153}, render(effect)));
    effect->SetFragmentSegmentIndices({0});
    EXPECT_TRUE(uniform({51, 51, 51, 51}, render(effect)));
}

TEST_F(InputTest, ADepthPictureFeedsAnotherEffect) {
    // The quad lies at depth 0; a depth read gives (depth + 1) / 2.
    const Effect source = makeEffect(host::kRed, 9, 7, true);
    source->SetDepthTest(true);
    ASSERT_EQ(0, init(source));
    ASSERT_EQ(0, draw(source));
    const Effect sink = makeEffect("vec4 FUNCNAME(vec2 tc) { return DEPTH_INPUT(tc); }\n", 9, 7);
    sink->AddFlatInput(9, 7, 36, false);
    ASSERT_EQ(0, init(sink)) << host::log::all();
    TextureNum handle = *source->GetOutputTexture();
    ASSERT_NE(nullptr, handle.depth_gpu_data);
    GpuData depth = *handle.depth_gpu_data;
    depth.sampler = handle.gpu_data->sampler;  // a plain read wants a plain sampler
    handle.gpu_data = &depth;
    EXPECT_EQ(0, sink->SetInputTextureNum(0, handle, 9, 7, 36));
    EXPECT_TRUE(uniform({128, 128, 128, 128}, render(sink)));
}

TEST_F(InputTest, TwoThreadsDrawTwoEffects) {
    mode = Mode::threaded;
    const Effect first = passEffect();
    const Effect second = passEffect();
    int wrong = 0;
    const auto drawMany = [](const Effect& effect, const Picture& picture, int& bad) {
        for (int frame = 0; frame < 100; ++frame) {
            Picture result(67, 41);
            DrawParams params;
            params.readback_buffer = result.bytes.data();
            effect->SetInputTexture(0, picture.bytes.data(), 67, 41, 268, 4, false, 0);
            if (effect->DrawEffect(params, effect, 268) != 0 || result.bytes != picture.bytes) {
                ++bad;
            }
        }
    };
    int wrong_too = 0;
    std::thread other([&] { drawMany(first, one, wrong_too); });
    drawMany(second, two, wrong);
    other.join();
    EXPECT_EQ(0, wrong + wrong_too);
}

TEST_F(InputTest, ATaskMayReadAndBindOnTheRenderThread) {
    mode = Mode::threaded;
    GpuDataMap map;
    GpuData* texture = nullptr;
    const Effect effect = passEffect();
    EXPECT_TRUE(effect->DoTaskPost(
        [&] { return engine()->BindTextureData(one.bytes.data(), 67, 41, 268, &texture, map); }));
    TextureNum handle;
    handle.gpu_data = texture;
    EXPECT_EQ(0, effect->SetInputTextureNum(0, handle, 67, 41, 268));
    Picture result(67, 41);
    EXPECT_TRUE(effect->DoTaskPost([&] {
        return effect->DrawEffect(DrawParams(), effect, 0) == 0 &&
               effect->ReadImageFromTex(*effect->GetOutputTexture(), 67, 41, 268,
                                        result.bytes.data());
    }));
    EXPECT_TRUE(samePicture(one, result));
    EXPECT_TRUE(effect->DoTaskPost([&] {
        engine()->ReleaseGpuDataMap(map);
        return true;
    }));
}

}  // namespace
