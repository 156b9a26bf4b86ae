#include "effect-render/raw_frames.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "expect_error.h"
#include "temp_folder.h"

namespace effect_render {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

class RawFramesTest : public testing::Test {
protected:
    // A stream of its own, to read and to write.
    File NewStream() const {
        File file(std::fopen((folder_.Path() + "/stream").c_str(), "wb+"));
        EXPECT_TRUE(file);
        return file;
    }

    // A stream that holds these bytes.
    File StreamOf(const std::string& bytes) const {
        File file = NewStream();
        std::fwrite(bytes.data(), 1, bytes.size(), file.get());
        std::rewind(file.get());
        return file;
    }

    TempFolder folder_;
};

Picture Frame(uint32_t width, uint32_t height) {
    Picture frame;
    frame.width = width;
    frame.height = height;
    frame.pixels.resize(static_cast<size_t>(width) * height * 4);
    return frame;
}

std::string Text(const Picture& frame) {
    return std::string(frame.pixels.begin(), frame.pixels.end());
}

TEST_F(RawFramesTest, ReaderGivesFrameAfterFrameUntilTheEnd) {
    const File stream = StreamOf("abcdefghABCD\r\n\x1a\xff");
    RawReader reader(stream.get());
    Picture frame = Frame(2, 1);
    ASSERT_TRUE(reader.Read(frame));
    EXPECT_EQ(Text(frame), "abcdefgh");
    ASSERT_TRUE(reader.Read(frame));
    EXPECT_EQ(Text(frame), "ABCD\r\n\x1a\xff");
    EXPECT_FALSE(reader.Read(frame));
}

TEST_F(RawFramesTest, EmptyStreamHoldsNoFrame) {
    const File stream = StreamOf("");
    Picture frame = Frame(1, 1);
    EXPECT_FALSE(RawReader(stream.get()).Read(frame));
}

TEST_F(RawFramesTest, FrameThatIsCutShortIsAnErrorWithItsNumber) {
    const File stream = StreamOf("abcdefghABC");
    RawReader reader(stream.get());
    Picture frame = Frame(2, 1);
    ASSERT_TRUE(reader.Read(frame));
    EXPECT_EQ(ErrorOf([&] { reader.Read(frame); }),
              "standard input: ends after 3 of 8 bytes of frame 2; are the frames RGBA and 2x1?");
}

TEST_F(RawFramesTest, WritingGivesTheBytesAndNothingElse) {
    const File stream = NewStream();
    Picture frame = Frame(2, 1);
    frame.pixels = {'a', '\r', '\n', 'd', 0, 'f', 0x1a, 'h'};
    WriteRawFrame(stream.get(), frame);
    WriteRawFrame(stream.get(), frame);
    std::rewind(stream.get());
    std::string bytes(64, '?');
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), stream.get()));
    EXPECT_EQ(bytes, Text(frame) + Text(frame));
}

TEST_F(RawFramesTest, StreamThatTakesNothingIsAnError) {
    const std::string path = folder_.Write("read-only", "");
    const File stream(std::fopen(path.c_str(), "rb"));
    ASSERT_TRUE(stream);
    EXPECT_EQ(ErrorOf([&] { WriteRawFrame(stream.get(), Frame(2, 1)); }),
              "standard output: was closed before the last frame, or cannot be written");
}

}  // namespace
}  // namespace effect_render
