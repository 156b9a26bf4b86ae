// Files that no author means to hand in, or means to but rarely: each ends in the right text or in
// an error that names it, never in a crash.

#include <gtest/gtest.h>

#include <filesystem>

#include "../temp_folder.h"
#include "tool_process.h"

namespace {

constexpr const char* kHalf = "vec4 FUNCNAME(vec2 tc)\n{\n    return INPUT1(tc) * 0.5;\n}\n";

class HostileFilesTest : public testing::Test {
protected:
    std::string at(const std::string& name) { return folder_.Path() + "/" + name; }
    std::string file(const std::string& name, const std::string& bytes) {
        return folder_.Write(name, bytes);
    }
    void makeFolder(const std::string& name) {
        std::filesystem::create_directories(std::filesystem::u8path(at(name)));
    }
    ToolResult run(const std::string& path) { return run_tool(folder_.Path(), {path}); }
    // What a file with these bytes translates to; it must.
    std::string textOf(const std::string& bytes) {
        const ToolResult result = run(file("any.frag", bytes));
        EXPECT_EQ(result.status, 0) << result.err;
        return result.out;
    }
    // The last line that is said about a file, which must be refused; "error: " is left out, and so
    // is the folder.
    std::string errorOf(const std::string& path) {
        const ToolResult result = run(path);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
        std::string line = result.last_err_line();
        EXPECT_EQ(line.find("error: "), 0u) << line;
        line.erase(0, 7);
        for (size_t place = line.find(at("")); place != line.npos; place = line.find(at(""))) {
            line.erase(place, at("").size());
        }
        return line;
    }

    effect_render::TempFolder folder_;
};

TEST_F(HostileFilesTest, LineEndsOfWindowsGiveTheSameText) {
    const std::string lines =
        "vec4 FUNCNAME(vec2 tc)\r\n{\r\n    return INPUT1(tc) * 0.5;\r\n}\r\n";
    EXPECT_EQ(textOf(lines), textOf(kHalf));
}

TEST_F(HostileFilesTest, ALastLineNeedsNoEnd) {
    std::string open = kHalf;
    open.pop_back();
    EXPECT_EQ(textOf(open), textOf(kHalf));
}

TEST_F(HostileFilesTest, AZeroByteEndsTheSource) {
    EXPECT_EQ(textOf(kHalf + std::string("\0 } not GLSL", 12)), textOf(kHalf));
}

TEST_F(HostileFilesTest, AControlZEndsTheFile) {
    EXPECT_EQ(textOf(kHalf + std::string("\x1A } not GLSL")), textOf(kHalf));
}

TEST_F(HostileFilesTest, AByteOrderMarkIsRefusedAtItsPlace) {
    EXPECT_EQ(errorOf(file("bom.frag", std::string("\xEF\xBB\xBF") + kHalf)).find("bom.frag:1:1: "),
              0u);
}

TEST_F(HostileFilesTest, BytesWithoutMeaningAreRefusedAtTheirPlace) {
    EXPECT_EQ(errorOf(file("bytes.frag", "float a;\n\xFF\xFE\x80\n")).find("bytes.frag:2:1: "), 0u);
}

TEST_F(HostileFilesTest, AFileOfAHundredMegabytesIsTranslated) {
    const std::string line = "// " + std::string(1020, 'x') + "\n";
    std::string text;
    text.reserve(101 << 20);
    while (text.size() < (size_t{100} << 20)) {
        text += line;
    }
    EXPECT_EQ(textOf(text + kHalf), textOf(kHalf));
}

TEST_F(HostileFilesTest, IncludesMayClimbOutOfTheFolder) {
    makeFolder("effects/mine");
    makeFolder("library");
    file("library/half.glsl", kHalf);
    const ToolResult result =
        run(file("effects/mine/e.frag", "#include \"../../library/half.glsl\"\n"));
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, textOf(std::string(kHalf) + "\n"));
}

TEST_F(HostileFilesTest, AFolderIncludedIsNamedAtItsDirective) {
    makeFolder("folder.glsl");
    EXPECT_EQ(errorOf(file("e.frag", "\n#include \"folder.glsl\"\n")),
              "e.frag:2:1: \"folder.glsl\" cannot be read");
}

TEST_F(HostileFilesTest, FilesThatIncludeEachOtherEndInAnError) {
    file("a.glsl", "#include \"b.glsl\"\n");
    file("b.glsl", "#include \"a.glsl\"\n");
    EXPECT_NE(errorOf(file("e.frag", "#include \"a.glsl\"\n")).find("is included too deep"),
              std::string::npos);
}

TEST_F(HostileFilesTest, PlacesThatAreNoneAreRefused) {
    for (const std::string& path : {std::string("Q:/none/e.frag"), at("none/none/e.frag"),
                                    at("e.frag/e.frag"), at(std::string(5000, 'x'))}) {
        const ToolResult result = run(path);
        EXPECT_EQ(result.status, 1) << path;
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.last_err_line().find("error: "), 0u) << result.err;
    }
}

}  // namespace
