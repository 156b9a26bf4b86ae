#include "contract/picture_host.h"

#include <vector>

namespace {

using contract::PictureTest;
using host::Effect;
using host::FakeHost;
using host::Mode;

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
