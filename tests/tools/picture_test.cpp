#include "effect-render/picture.h"

#include <gtest/gtest.h>

#include "effect-render/files.h"
#include "expect_error.h"
#include "temp_folder.h"

namespace effect_render {
namespace {

Picture Sample() {
    Picture picture;
    picture.width = 3;
    picture.height = 2;
    for (int i = 0; i < 24; ++i) {
        picture.pixels.push_back(static_cast<uint8_t>(i * 10));
    }
    return picture;
}

TEST(PictureTest, WrittenPictureReadsBackByteForByte) {
    const TempFolder folder;
    const std::string path = folder.Path() + "/p.png";
    SavePicture(path, Sample());
    const Picture back = LoadPicture(path, 4);
    EXPECT_EQ(back.width, 3u);
    EXPECT_EQ(back.height, 2u);
    EXPECT_EQ(back.pixels, Sample().pixels);
}

TEST(PictureTest, OneChannelPictureHoldsOneBytePerPixel) {
    const TempFolder folder;
    Picture grey = Sample();
    grey.pixels.assign(24, 200);
    const std::string path = folder.Path() + "/p.png";
    SavePicture(path, grey);
    const Picture back = LoadPicture(path, 1);
    EXPECT_EQ(back.channels, 1);
    EXPECT_EQ(back.RowPitch(), 3u);
    EXPECT_EQ(back.pixels, std::vector<uint8_t>(6, 200));
}

TEST(PictureTest, NameOutsideTheCodePageWorks) {
    const TempFolder folder;
    const std::string path = folder.Path() + "/\xe7\x8c\xab.png";
    SavePicture(path, Sample());
    EXPECT_EQ(LoadPicture(path, 4).pixels, Sample().pixels);
}

TEST(PictureTest, MissingFileIsNamed) {
    EXPECT_EQ(ErrorOf([] { LoadPicture("no/such.png", 4); }), "no/such.png: cannot be read");
}

TEST(PictureTest, FileThatIsNoPictureIsNamed) {
    const TempFolder folder;
    const std::string path = folder.Write("p.png", "no picture");
    const std::string error = ErrorOf([&path] { LoadPicture(path, 4); });
    EXPECT_EQ(error.rfind(path + ": is no PNG or JPEG picture", 0), 0u) << error;
}

TEST(PictureTest, FolderThatIsMissingIsNamed) {
    const TempFolder folder;
    const std::string path = folder.Path() + "/no/p.png";
    EXPECT_EQ(ErrorOf([&path] { SavePicture(path, Sample()); }), path + ": cannot be written");
}

TEST(FilesTest, TextReadsWithPlainLineEnds) {
    const TempFolder folder;
    EXPECT_EQ(ReadText(folder.Write("t", "a\r\nb\rc\n")), "a\nb\rc\n");
}

TEST(FilesTest, FloatsAreReadAsTheyStand) {
    const TempFolder folder;
    const std::string path = folder.Write("a.f32", std::string("\0\0\x80\x3f\0\0\0\xc0", 8));
    EXPECT_EQ(ReadFloats(path), (std::vector<float>{1.0f, -2.0f}));
}

TEST(FilesTest, HalfAFloatIsNamed) {
    const TempFolder folder;
    const std::string path = folder.Write("a.f32", "12345");
    EXPECT_EQ(ErrorOf([&path] { ReadFloats(path); }),
              path + ": holds no whole number of 32-bit floats");
}

TEST(FilesTest, PathInAFolderIsMadePlain) {
    EXPECT_EQ(PathIn("effects/glow", "../lib/a.png"), "effects/lib/a.png");
    EXPECT_EQ(PathIn("", "a.png"), "a.png");
}

}  // namespace
}  // namespace effect_render
