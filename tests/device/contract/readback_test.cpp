#include <gtest/gtest.h>

#include <cstring>

#include "host/fake_host.h"
#include "model/draw_model.h"

namespace {

using host::Effect;
using host::EffectPlan;
using host::FakeHost;
using host::Lines;
using host::Mode;

constexpr int32_t kFail = static_cast<int32_t>(0x80004005);
constexpr uint8_t kUntouched = 0xEE;

/// An effect of 3 x 2 pixels, cleared to a colour whose bytes are B 255, G 128, R 0, A 255.
class ReadbackTest : public FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(Mode::inlined);
        EffectPlan plan;
        plan.width = 3;
        plan.height = 2;
        plan.pitch = 12;
        effect = readyEffect(host::kRed, plan);
        effect->SetClearColor(0, 0.5F, 1, 1);
    }
    void TearDown() override {
        effect.reset();
        FakeHost::TearDown();
    }
    int32_t drawInto(std::vector<uint8_t>& buffer, int32_t pitch) {
        DrawParams params;
        params.readback_buffer = buffer.data();
        return effect->DrawEffect(params, effect, pitch);
    }
    std::vector<uint8_t> rows(size_t pitch) {
        std::vector<uint8_t> expected(pitch * 2, kUntouched);
        const uint8_t pixel[4] = {255, 128, 0, 255};
        for (size_t row = 0; row < 2; ++row) {
            for (size_t byte = 0; byte < 12; ++byte) {
                expected[row * pitch + byte] = pixel[byte % 4];
            }
        }
        return expected;
    }
    Effect effect;
};

TEST_F(ReadbackTest, GivesTheBytesOfTheTarget) {
    std::vector<uint8_t> buffer(24, kUntouched);
    EXPECT_EQ(0, drawInto(buffer, 12));
    EXPECT_EQ(rows(12), buffer);
}

TEST_F(ReadbackTest, KeepsToTheHostsPitch) {
    std::vector<uint8_t> buffer(40, kUntouched);
    EXPECT_EQ(0, drawInto(buffer, 20));
    EXPECT_EQ(rows(20), buffer);
}

TEST_F(ReadbackTest, TakesTheDevicesPitchIntoAccount) {
    world.setRowPadding(52);
    std::vector<uint8_t> buffer(24, kUntouched);
    EXPECT_EQ(0, drawInto(buffer, 12));
    EXPECT_EQ(rows(12), buffer);
}

TEST_F(ReadbackTest, WithThePitchOfTheDeviceTheWholeBlockIsCopied) {
    world.setRowPadding(4);
    std::vector<uint8_t> buffer(32, kUntouched);
    EXPECT_EQ(0, drawInto(buffer, 16));
    // One copy of pitch times height: the padding of the device comes along.
    std::vector<uint8_t> expected = rows(16);
    for (const size_t at : {12U, 13U, 14U, 15U, 28U, 29U, 30U, 31U}) {
        expected[at] = 0xCD;
    }
    EXPECT_EQ(expected, buffer);
}

TEST_F(ReadbackTest, SpinsWhileTheDeviceIsStillDrawing) {
    world.setStillDrawing(5);
    world.clearCalls();
    std::vector<uint8_t> buffer(24, kUntouched);
    EXPECT_EQ(0, drawInto(buffer, 12));
    EXPECT_EQ(rows(12), buffer);
    Lines maps;
    for (const std::string& line : world.textsOf("Map")) {
        if (line.find("immediate.") == 0) {
            maps.push_back(line);
        }
    }
    ASSERT_EQ(6u, maps.size());
    EXPECT_EQ("immediate.Map(texture#2, 0, READ, 1048576) -> 0x887a000a", maps[0]);
    EXPECT_EQ("immediate.Map(texture#2, 0, READ, 1048576)", maps[5]);
    EXPECT_EQ(Lines(), host::log::errors());
}

TEST_F(ReadbackTest, KeepsTheStagingTextureUntilAResize) {
    std::vector<uint8_t> buffer(24);
    EXPECT_EQ(0, drawInto(buffer, 12));
    EXPECT_EQ(0, drawInto(buffer, 12));
    EXPECT_EQ(2, world.created(fake::Kind::texture));
    EXPECT_EQ(0, effect->ResizeEffect(3, 2, 12, effect));
    EXPECT_EQ(0, drawInto(buffer, 12));
    EXPECT_EQ(3, world.created(fake::Kind::texture)) << "target kept, staging made anew";
}

TEST_F(ReadbackTest, AFailedMapIsReportedAndNothingIsWritten) {
    ASSERT_EQ(0, draw(effect));
    std::vector<uint8_t> buffer(24, kUntouched);
    host::log::clear();
    world.failNth("Map", 2, E_OUTOFMEMORY);  // the first one is that of the constants
    EXPECT_EQ(kFail, drawInto(buffer, 12));
    EXPECT_EQ((Lines{"CDirectXEffect::ReadImageFromTex ERROR: Map = 0x8007000e\n",
                     "reading data from dx tex is failed! buf is null!"}),
              host::log::errors());
    EXPECT_EQ("%s ERROR: Map = 0x%08lx\n", host::log::lines().at(0).format);
    EXPECT_EQ(std::vector<uint8_t>(24, kUntouched), buffer);
    EXPECT_EQ(0, drawInto(buffer, 12));
    EXPECT_EQ(rows(12), buffer);
}

TEST_F(ReadbackTest, AMapThatGivesNullIsReported) {
    ASSERT_EQ(0, draw(effect));
    std::vector<uint8_t> buffer(24, kUntouched);
    host::log::clear();
    world.setMapGivesNull(true);
    EXPECT_EQ(kFail, drawInto(buffer, 12));
    EXPECT_TRUE(host::log::holds(4, "reading data from dx tex is failed! buf is null!"));
    EXPECT_EQ(std::vector<uint8_t>(24, kUntouched), buffer);
}

TEST_F(ReadbackTest, AFailedStagingTextureGivesFalse) {
    ASSERT_EQ(0, draw(effect));
    std::vector<uint8_t> buffer(24, kUntouched);
    world.failNth("CreateTexture2D", 1);
    EXPECT_EQ(kFail, drawInto(buffer, 12));
    EXPECT_EQ(std::vector<uint8_t>(24, kUntouched), buffer);
    EXPECT_EQ(0, drawInto(buffer, 12));
    EXPECT_EQ(rows(12), buffer);
}

TEST_F(ReadbackTest, AFailedCommandListGivesFalseAndDoesNotCrash) {
    ASSERT_EQ(0, draw(effect));
    std::vector<uint8_t> buffer(24, kUntouched);
    world.failNth("FinishCommandList", 1);
    drawInto(buffer, 12);
    EXPECT_EQ(0, drawInto(buffer, 12));
    EXPECT_EQ(rows(12), buffer);
}

TEST_F(ReadbackTest, FailuresOfAllKindsLeakNothing) {
    std::vector<uint8_t> buffer(24);
    ASSERT_EQ(0, drawInto(buffer, 12));
    const Lines before = world.live();
    world.failNth("Map", 2);
    drawInto(buffer, 12);
    world.failNth("FinishCommandList", 1);
    drawInto(buffer, 12);
    world.setMapGivesNull(true);
    drawInto(buffer, 12);
    world.setMapGivesNull(false);
    // What a failed read-back took hold of stays until the next draw begins.
    EXPECT_EQ(0, drawInto(buffer, 12));
    EXPECT_EQ(before, world.live());
}

TEST_F(ReadbackTest, ReadImageFromTexReadsATarget) {
    ASSERT_EQ(0, draw(effect));
    std::vector<uint8_t> buffer(24, kUntouched);
    EXPECT_TRUE(effect->ReadImageFromTex(*effect->GetOutputTexture(), 3, 2, 12, buffer.data()));
    EXPECT_EQ(rows(12), buffer);
}

TEST_F(ReadbackTest, AnotherSizeGoesThroughATemporaryTexture) {
    ASSERT_EQ(0, draw(effect));
    world.clearCalls();
    std::vector<uint8_t> buffer(24, kUntouched);
    EXPECT_TRUE(effect->ReadImageFromTex(*effect->GetOutputTexture(), 2, 2, 8, buffer.data()));
    // The effect's own staging texture is made first, then the temporary one.
    EXPECT_EQ((Lines{"device.CreateTexture2D(" + model::stagingTexture(3, 2) + ") -> texture#2",
                     "device.CreateTexture2D(" + model::stagingTexture(2, 2) + ") -> texture#3"}),
              world.textsOf("CreateTexture2D"));
    EXPECT_EQ("deferred#1.CopyResource(texture#3, texture#1)", world.textsOf("CopyResource").at(0));
    EXPECT_EQ(0, world.references(effect->GetOutputTexture()->gpu_data->texture) - 1);
    for (const std::string& line : world.live()) {
        EXPECT_EQ(std::string::npos, line.find("texture#3")) << "released again";
    }
}

TEST_F(ReadbackTest, NothingToReadOrToWriteToIsRefused) {
    ASSERT_EQ(0, draw(effect));
    std::vector<uint8_t> buffer(24);
    EXPECT_FALSE(effect->ReadImageFromTex(TextureNum(), 3, 2, 12, buffer.data()));
    TextureNum empty;
    GpuData nothing;
    empty.gpu_data = &nothing;
    EXPECT_FALSE(effect->ReadImageFromTex(empty, 3, 2, 12, buffer.data()));
    EXPECT_FALSE(effect->ReadImageFromTex(*effect->GetOutputTexture(), 3, 2, 12, nullptr));
}

TEST_F(ReadbackTest, TheDestinationTextureIsFilledWithoutAReadback) {
    GpuDataMap map;
    GpuData* dest = nullptr;
    ASSERT_TRUE(engine->BindTextureData(nullptr, 3, 2, 12, &dest, map));
    DrawParams params;
    params.dest_texture = dest;
    EXPECT_EQ(0, draw(effect, params));
    EXPECT_EQ(rows(12), world.bytesOf(dest->texture));
    engine->ReleaseGpuDataMap(map);
}

TEST_F(ReadbackTest, ADestinationWithoutATextureIsSkipped) {
    GpuData nothing;
    DrawParams params;
    params.dest_texture = &nothing;
    EXPECT_EQ(0, draw(effect, params));
    effect->SetClearEnabled(false);
    EXPECT_EQ(0, draw(effect, params));
}

TEST_F(ReadbackTest, DrawingOverTheDestinationKeepsItsPicture) {
    GpuDataMap map;
    GpuData* dest = nullptr;
    std::vector<uint8_t> picture(24);
    for (size_t i = 0; i < picture.size(); ++i) {
        picture[i] = static_cast<uint8_t>(i);
    }
    ASSERT_TRUE(engine->BindTextureData(picture.data(), 3, 2, 12, &dest, map));
    effect->SetClearEnabled(false);
    DrawParams params;
    params.dest_texture = dest;
    std::vector<uint8_t> buffer(24, kUntouched);
    params.readback_buffer = buffer.data();
    EXPECT_EQ(0, draw(effect, params));
    EXPECT_EQ(picture, buffer);
    engine->ReleaseGpuDataMap(map);
}

}  // namespace
