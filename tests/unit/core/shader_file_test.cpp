#include "DirectXEffectMgr/Source/core/shader_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "log_capture.h"
#include "memory_files.h"

namespace {

using namespace std::string_literals;

struct Base64Case {
    std::string text;
    std::string bytes;
};
void PrintTo(const Base64Case& c, std::ostream* out) {
    *out << '"' << c.text << '"';
}

class Base64Test : public testing::TestWithParam<Base64Case> {};

TEST_P(Base64Test, Decodes) {
    EXPECT_EQ(DecodeBase64(GetParam().text), GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Right, Base64Test,
    testing::Values(Base64Case{"", ""}, Base64Case{"TWFu", "Man"}, Base64Case{"TWE=", "Ma"},
                    Base64Case{"TQ==", "M"}, Base64Case{"TWE.", "Ma"}, Base64Case{"TQ..", "M"},
                    Base64Case{"TQ=.", "M"}, Base64Case{"TWE", "Ma"}, Base64Case{"TQ", "M"},
                    Base64Case{"TQ=", "M"}, Base64Case{"AAAA", "\0\0\0"s},
                    Base64Case{"++//", "\xFB\xEF\xFF"}, Base64Case{"--__", "\xFB\xEF\xFF"},
                    Base64Case{"azAy", "k02"}, Base64Case{"enp6", "zzz"},
                    Base64Case{"09az", "\xD3\xD6\xB3"},
                    // Padding ends its own group alone.
                    Base64Case{"TQ==TWFu", "MMan"}, Base64Case{"TWE=TQ..TWFu", "MaMMan"},
                    // A value behind padding counts for nothing.
                    Base64Case{"TQ=A", "M"}));

INSTANTIATE_TEST_SUITE_P(Wrong, Base64Test,
                         testing::Values(Base64Case{"T", ""}, Base64Case{"TWFuT", ""},
                                         Base64Case{"=WFu", ""}, Base64Case{"T=Fu", ""},
                                         Base64Case{".WFu", ""}, Base64Case{"T.Fu", ""},
                                         Base64Case{"TW*u", ""}, Base64Case{"TWF*", ""},
                                         Base64Case{"TQ=*", ""}, Base64Case{"TWFu\n", ""},
                                         Base64Case{"TWFu\nTWFu", ""}, Base64Case{"TW u", ""},
                                         Base64Case{" TWFu", ""}, Base64Case{"TWFuTW\xC3\xA4", ""},
                                         Base64Case{"TWFu\0TWF"s, ""}, Base64Case{"====", ""},
                                         Base64Case{"TWFu====", ""}));

struct ReadCase {
    std::string file;
    std::string text;
};
void PrintTo(const ReadCase& c, std::ostream* out) {
    *out << testing::PrintToString(c.file);
}

class TextModeTest : public testing::TestWithParam<ReadCase> {};

TEST_P(TextModeTest, ReadsAsATextFile) {
    MemoryFiles files;
    files.files["f"] = GetParam().file;
    const LogCapture log;
    EXPECT_EQ(ReadShaderFile("f", false, files), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Bytes, TextModeTest,
    testing::Values(ReadCase{"", ""}, ReadCase{"a\nb", "a\nb"}, ReadCase{"a\r\nb\r\n", "a\nb\n"},
                    ReadCase{"\r\n\r\n", "\n\n"}, ReadCase{"a\rb\n\r", "a\rb\n\r"},
                    ReadCase{"a\r\r\nb", "a\r\nb"}, ReadCase{"a\x1A"s + "b", "a"},
                    ReadCase{"\x1A", ""}, ReadCase{"a\r\x1A\n", "a\r"}, ReadCase{"a\0b"s, "a\0b"s},
                    ReadCase{"\xEF\xBB\xBF#define", "\xEF\xBB\xBF#define"},
                    ReadCase{"\xFF\xFE\x80", "\xFF\xFE\x80"}));

TEST(ShaderFileTest, AnEmptyPathIsLoggedAndNothingIsOpened) {
    MemoryFiles files;
    LogCapture log;
    ReadStatus status = ReadStatus::kRead;
    EXPECT_EQ(ReadShaderFile("", false, files, &status), "");
    EXPECT_EQ(log.take(), (Lines{"4|file path is empty"}));
    EXPECT_EQ(status, ReadStatus::kEmptyPath);
    EXPECT_TRUE(files.asked.empty());
}

TEST(ShaderFileTest, AMissingFileIsLoggedBehindItsName) {
    MemoryFiles files;
    LogCapture log;
    ReadStatus status = ReadStatus::kRead;
    EXPECT_EQ(ReadShaderFile("no.frag", true, files, &status), "");
    EXPECT_EQ(log.take(), (Lines{"2|read file:no.frag", "4|read file error"}));
    EXPECT_EQ(status, ReadStatus::kUnreadable);
}

TEST(ShaderFileTest, AReadFileIsLogged) {
    MemoryFiles files;
    files.files["a.frag"] = "text";
    LogCapture log;
    ReadStatus status = ReadStatus::kUnreadable;
    EXPECT_EQ(ReadShaderFile("a.frag", false, files, &status), "text");
    EXPECT_EQ(log.take(), (Lines{"2|read file:a.frag"}));
    EXPECT_EQ(status, ReadStatus::kRead);
}

TEST(ShaderFileTest, Base64FilesAreDecodedAndNotTranslatedAgain) {
    MemoryFiles files;
    files.files["a"] = "YQ0KYg==";
    LogCapture log;
    EXPECT_EQ(ReadShaderFile("a", true, files), "a\r\nb");
    EXPECT_EQ(log.take(), (Lines{"2|read file:a"}));
}

TEST(ShaderFileTest, BadBase64IsLoggedWhole) {
    MemoryFiles files;
    files.files = {{"a", "not base64\r\n"}, {"empty", ""}};
    LogCapture log;
    ReadStatus status = ReadStatus::kRead;
    EXPECT_EQ(ReadShaderFile("a", true, files, &status), "");
    EXPECT_EQ(log.take(), (Lines{"2|read file:a", "4|base64_decode error:not base64\n"}));
    EXPECT_EQ(status, ReadStatus::kBadBase64);
    EXPECT_EQ(ReadShaderFile("empty", true, files), "");
    EXPECT_EQ(log.take(), (Lines{"2|read file:empty", "4|base64_decode error:"}));
}

// A folder of its own on the disk, gone afterwards.
class DiskFileTest : public testing::Test {
protected:
    DiskFileTest() {
        folder_ = std::filesystem::temp_directory_path() /
                  ("orvane_core_" + std::to_string(std::random_device()()));
        std::filesystem::create_directories(folder_);
    }
    ~DiskFileTest() override {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    std::string write(const std::string& name, const std::string& bytes) {
        const std::filesystem::path path = folder_ / std::filesystem::u8path(name);
        std::ofstream(path, std::ios::binary) << bytes;
        return path.u8string();
    }

    std::filesystem::path folder_;
    LogCapture log_;
};

TEST_F(DiskFileTest, ReadsBytes) {
    EXPECT_EQ(ReadShaderFile(write("a.glsl", "x\r\ny\0z"s), false), "x\ny\0z"s);
}

TEST_F(DiskFileTest, ReadsNamesInUtf8) {
    EXPECT_EQ(ReadShaderFile(write("\xC3\xA4\xE2\x82\xAC \xE6\x97\xA5.glsl", "text"), false),
              "text");
}

TEST_F(DiskFileTest, PathsMayClimb) {
    write("a.glsl", "text");
    std::filesystem::create_directories(folder_ / "sub");
    EXPECT_EQ(ReadShaderFile(folder_.u8string() + "/sub/../a.glsl", false), "text");
}

TEST_F(DiskFileTest, AFolderIsNoFile) {
    EXPECT_EQ(ReadShaderFile(folder_.u8string(), false), "");
    EXPECT_EQ(log_.take(), (Lines{"2|read file:" + folder_.u8string(), "4|read file error"}));
}

TEST_F(DiskFileTest, MissingPlacesAreNoFiles) {
    for (const std::string& path :
         {folder_.u8string() + "/none", folder_.u8string() + "/none/none"s, "Q:\\none\\none.glsl"s,
          "\xFF\xFE\x80"s, std::string(100000, 'x'), "a\"<>|*?"s}) {
        EXPECT_EQ(ReadShaderFile(path, false), "");
        EXPECT_EQ(log_.take(), (Lines{"2|read file:" + path, "4|read file error"}));
    }
}

TEST_F(DiskFileTest, LargeFilesAreReadWhole) {
    const std::string line(1023, 'x');
    std::string text;
    for (int i = 0; i < 100 * 1024; ++i) {
        text += line + '\n';
    }
    EXPECT_TRUE(ReadShaderFile(write("large", text), false) == text);
}

TEST_F(DiskFileTest, ATooLargeFileIsUnreadable) {
    const std::string path = write("huge", "");
    std::error_code error;
    std::filesystem::resize_file(std::filesystem::u8path(path), kMaxShaderFileBytes + 1, error);
    if (error) {
        GTEST_SKIP() << "no room for the file";
    }
    ReadStatus status = ReadStatus::kRead;
    EXPECT_EQ(ReadShaderFile(path, false, disk_files(), &status), "");
    EXPECT_EQ(status, ReadStatus::kUnreadable);
}

}  // namespace
