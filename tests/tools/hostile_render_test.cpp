// Files that no author means to hand in, drawn on the real device: the right picture or an error
// that names the file, and always an orderly end.

#include <gtest/gtest.h>

#include <filesystem>

#include "render_fixture.h"

namespace effect_render {
namespace {

constexpr const char* kGrey = "vec4 FUNCNAME(vec2 tc)\n{\n    return vec4(0.5);\n}\n";

class HostileRenderTest : public RenderTest {
protected:
    // The middle of the picture that a shader of these bytes draws.
    Color ColorOf(const std::string& bytes) {
        return PixelAt(Render({Write("any.frag", bytes), "--size", "8x8"}), 4, 4);
    }

    // What is said about an effect that must be refused.
    std::string ErrorOf(std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), {"--size", "8x8", "-o", At("none.png")});
        const ProgramResult result = Run(arguments);
        EXPECT_EQ(result.status, 1) << result.message;
        EXPECT_NE(result.message.find("error: "), std::string::npos) << result.message;
        EXPECT_FALSE(std::filesystem::exists(std::filesystem::u8path(At("none.png"))));
        return result.message;
    }

    void MakeFolder(const std::string& name) {
        std::filesystem::create_directories(std::filesystem::u8path(At(name)));
    }
};

TEST_F(HostileRenderTest, OddEndsOfLinesAndFilesDrawTheSame) {
    const std::string open = std::string(kGrey).substr(0, std::string(kGrey).size() - 1);
    const std::string texts[] = {
        kGrey,
        "vec4 FUNCNAME(vec2 tc)\r\n{\r\n    return vec4(0.5);\r\n}\r\n",
        open,
        kGrey + std::string("\0 } not GLSL", 12),
        kGrey + std::string("\x1A } not GLSL"),
        std::string(1 << 20, '\n') + kGrey,
    };
    for (const std::string& text : texts) {
        EXPECT_TRUE(Near(ColorOf(text), {128, 128, 128, 128})) << text.substr(0, 60);
    }
}

TEST_F(HostileRenderTest, AFileOfAHundredMegabytesDraws) {
    const std::string line = "// " + std::string(1020, 'x') + "\n";
    std::string text;
    text.reserve(size_t{101} << 20);
    while (text.size() < (size_t{100} << 20)) {
        text += line;
    }
    EXPECT_TRUE(Near(ColorOf(text + kGrey), {128, 128, 128, 128}));
}

TEST_F(HostileRenderTest, BytesThatAreNoGlslAreRefusedAtTheirPlace) {
    EXPECT_NE(
        ErrorOf({Write("bom.frag", std::string("\xEF\xBB\xBF") + kGrey)}).find("bom.frag:1:1"),
        std::string::npos);
    EXPECT_NE(ErrorOf({Write("bytes.frag", "float a;\n\xFF\xFE\x80\n")}).find("bytes.frag:2:1"),
              std::string::npos);
    ErrorOf({Write("empty.frag", "")});
}

TEST_F(HostileRenderTest, PlacesThatAreNoneAreNamed) {
    MakeFolder("folder.frag");
    MakeFolder("no_json");
    for (const std::string& path : {std::string("Q:/none/e.frag"), At("none/none/e.frag"),
                                    At("folder.frag"), At("no_json"), At(std::string(300, 'x'))}) {
        ErrorOf({path});
    }
    ErrorOf({Write("loop.frag", "#include \"loop.frag\"\n")});
    EXPECT_NE(ErrorOf({Write("e.frag", "\n#include \"folder.frag\"\n")}).find("e.frag:2:1"),
              std::string::npos);
}

TEST_F(HostileRenderTest, PicturesAndDescriptionsThatAreNoneAreNamed) {
    const std::string shader = Shader("return INPUT1(tc);");
    MakeFolder("folder.png");
    for (const std::string& picture :
         {Write("empty.png", ""), Write("text.png", kGrey), At("folder.png"), At("none.png"),
          Write("cut.png", std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\x7F\xFF", 18))}) {
        EXPECT_NE(ErrorOf({shader, "-i", picture})
                      .find(std::filesystem::u8path(picture).filename().u8string()),
                  std::string::npos);
    }
    for (const std::string& json :
         {std::string(), std::string("{"), std::string("[[[[[[1]]]]]]"), std::string(100000, '['),
          std::string("\xFF\xFE{}"), std::string("{\"fragment\": \"effect.json\"}")}) {
        Write("effect.json", json);
        ErrorOf({folder_.Path()});
    }
}

// Each constant's text is twice as long as the one before.
TEST_F(HostileRenderTest, ConstantsThatDoubleAreRefused) {
    std::string text = "const float c0 = 1.0;\n";
    for (int i = 1; i <= 64; ++i) {
        const std::string before = "c" + std::to_string(i - 1);
        text += "const float c" + std::to_string(i) + " = " + before + " * " + before + ";\n";
    }
    EXPECT_NE(ErrorOf({Write("doubles.frag", text + kGrey)}).find("Out of memory"),
              std::string::npos);
}

}  // namespace
}  // namespace effect_render
