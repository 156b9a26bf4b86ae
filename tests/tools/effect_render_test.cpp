// effect-render as its users call it: files in, files and exit status out.

#include <gtest/gtest.h>

#include "render_fixture.h"

namespace effect_render {
namespace {

class CommandLineTest : public RenderTest {};

TEST_F(CommandLineTest, PassThroughGivesTheInputBackByteForByte) {
    const Picture input = Pattern(67, 41);
    SavePicture(At("in.png"), input);
    const std::string shader = Shader("return INPUT1(tc);");
    for (const char* mode : {"threaded", "inline"}) {
        const Picture out = Render({shader, "-i", At("in.png"), "--mode", mode});
        EXPECT_EQ(out.width, 67u);
        EXPECT_EQ(out.height, 41u);
        EXPECT_EQ(out.pixels, input.pixels) << mode;
    }
}

TEST_F(CommandLineTest, TopRowIsTheTopOfThePicture) {
    const Picture out = Render({Shader("return vec4(tc.x, tc.y, 0.25, 1.0);"), "--size", "67x41"});
    // Pixel centres: 0.5/67 of 255 is 1.9, and 0.5/41 of it 3.1.
    EXPECT_TRUE(Near(PixelAt(out, 0, 0), {2, 252, 64, 255}));
    EXPECT_TRUE(Near(PixelAt(out, 66, 0), {253, 252, 64, 255}));
    EXPECT_TRUE(Near(PixelAt(out, 0, 40), {2, 3, 64, 255}));
}

TEST_F(CommandLineTest, WithoutInputsThePictureIs640By360) {
    const Picture out = Render({Shader("return vec4(1.0, 0.0, 0.0, 1.0);")});
    EXPECT_EQ(out.width, 640u);
    EXPECT_EQ(out.height, 360u);
    EXPECT_EQ(PixelAt(out, 320, 180), (Color{255, 0, 0, 255}));
}

TEST_F(CommandLineTest, ParametersAndDefinesReachTheShader) {
    const std::string shader = Shader(
        "vec4 moved = PREFIX(matrix4) * PREFIX(v);\n"
        "float k = float(PREFIX(n)) * PREFIX(f) + PREFIX(p).y + PREFIX(c).z;\n"
        "return vec4(moved.x, moved.y, k, HALF * 2.0);");
    const Picture out =
        Render({shader, "--size", "8x8", "--int", "n=2", "--float", "f=0.125", "--vec2", "p=9,0.25",
                "--vec3", "c=9,9,0.125", "--vec4", "v=0.25,0.5,0,1", "--mat4",
                // Columns, as in GLSL: x becomes 2x + 0.25, y stays.
                "matrix4=2,0,0,0,0,1,0,0,0,0,1,0,0.25,0,0,1", "--define", "HALF=0.5"});
    EXPECT_TRUE(Near(PixelAt(out, 4, 4), {191, 128, 159, 255}));
}

TEST_F(CommandLineTest, MovingParametersGoFromTheFirstFrameToTheLast) {
    const std::string shader = Shader("return vec4(PREFIX(k), PREFIX(k), PREFIX(k), 1.0);");
    const ProgramResult result = Run(
        {shader, "--size", "4x4", "--frames", "7-9", "--float", "k=0:1", "-o", At("f%03d.png")});
    ASSERT_EQ(result.status, 0) << result.message;
    EXPECT_TRUE(Near(PixelAt(LoadPicture(At("f007.png"), 4), 0, 0), {0, 0, 0, 255}));
    EXPECT_TRUE(Near(PixelAt(LoadPicture(At("f008.png"), 4), 0, 0), {128, 128, 128, 255}));
    EXPECT_TRUE(Near(PixelAt(LoadPicture(At("f009.png"), 4), 0, 0), {255, 255, 255, 255}));
}

TEST_F(CommandLineTest, PartOfAJobDrawsWhatTheWholeJobDraws) {
    const std::string shader = Shader("return vec4(PREFIX(k), 0.0, 0.0, 1.0);");
    const Picture out =
        Render({shader, "--size", "4x4", "--frames", "8-8", "--span", "7-9", "--float", "k=0:1"});
    EXPECT_TRUE(Near(PixelAt(out, 0, 0), {128, 0, 0, 255}));
}

TEST_F(CommandLineTest, OwnVertexShaderDrawsOverTheClearColor) {
    // Covers the upper half: y points up once TransV has turned it.
    const std::string vertex = Write("half.vert",
                                     "void main() {\n"
                                     "    gl_Position = TransV(vec4(position.x * 2.0 - 1.0, "
                                     "position.y, 0.0, 1.0));\n"
                                     "    tc = position.xy;\n"
                                     "}\n");
    const Picture out = Render({Shader("return vec4(0.0, 1.0, 0.0, 1.0);"), "--vertex", vertex,
                                "--size", "16x16", "--clear", "1,0.5,0,1"});
    EXPECT_EQ(PixelAt(out, 8, 2), (Color{0, 255, 0, 255}));
    EXPECT_TRUE(Near(PixelAt(out, 8, 13), {255, 128, 0, 255}));
}

TEST_F(CommandLineTest, BlendingAddsToTheClearColor) {
    const Picture out = Render({Shader("return vec4(0.25, 0.0, 0.0, 0.0);"), "--size", "4x4",
                                "--clear", "0.5,0.25,0,1", "--blend", "3"});
    EXPECT_TRUE(Near(PixelAt(out, 1, 1), {191, 64, 0, 255}));
}

TEST_F(CommandLineTest, DepthAndSamplesDrawTheSamePicture) {
    const Picture out = Render(
        {Shader("return vec4(0.0, 0.0, 1.0, 1.0);"), "--size", "31x17", "--depth", "--msaa"});
    EXPECT_EQ(PixelAt(out, 0, 0), (Color{0, 0, 255, 255}));
    EXPECT_EQ(PixelAt(out, 30, 16), (Color{0, 0, 255, 255}));
}

TEST_F(CommandLineTest, NamesOutsideTheCodePageWork) {
    SavePicture(At("\xe7\x8c\xab.png"), Pattern(5, 3));
    const std::string shader =
        Write("\xc3\xa9.frag", "vec4 FUNCNAME(vec2 tc) { return INPUT1(tc); }\n");
    const Picture out = Render({shader, "-i", At("\xe7\x8c\xab.png")});
    EXPECT_EQ(out.pixels, Pattern(5, 3).pixels);
}

TEST_F(CommandLineTest, LogIsShownOnRequest) {
    const std::string shader = Shader("return vec4(1.0);");
    const ProgramResult quiet = Run({shader, "--size", "4x4", "-o", At("o.png")});
    EXPECT_EQ(quiet.message, "");
    const ProgramResult loud = Run({shader, "--size", "4x4", "-o", At("o.png"), "--log"});
    EXPECT_NE(loud.message.find("read file:" + shader), std::string::npos) << loud.message;
}

TEST_F(CommandLineTest, AudioInputDraws) {
    const std::string audio = Write("a.f32", std::string(64, '\0'));
    const Picture out = Render({Shader("return vec4(AUDIO_INPUT1(tc).x, 1.0, 0.0, 1.0);"), "--size",
                                "4x4", "--audio", audio});
    EXPECT_EQ(PixelAt(out, 0, 0), (Color{0, 255, 0, 255}));
}

class FailureTest : public RenderTest {
protected:
    /// The lines on standard error of a run that ends with this status.
    std::string MessageOf(int status, std::vector<std::string> arguments) const {
        arguments.insert(arguments.end(), {"-o", At("out.png")});
        const ProgramResult result = Run(arguments);
        EXPECT_EQ(result.status, status) << result.message;
        return result.message;
    }

    static bool Holds(const std::string& text, const std::string& part) {
        return text.find(part) != std::string::npos;
    }
};

TEST_F(FailureTest, ErrorInTheGlslIsShownAndEndsWithOne) {
    const std::string shader = Shader("return vec4(1.0)");
    const std::string message = MessageOf(1, {shader, "--size", "4x4"});
    EXPECT_TRUE(Holds(message, "error")) << message;
    EXPECT_TRUE(Holds(message, shader + ": the effect does not compile")) << message;
}

TEST_F(FailureTest, ErrorOfTheHlslCompilerIsShownAndEndsWithOne) {
    const std::string shader = Shader("return unknownFunction(tc);");
    const std::string message = MessageOf(1, {shader, "--size", "4x4"});
    EXPECT_TRUE(Holds(message, "X3004")) << message;
    EXPECT_TRUE(Holds(message, shader + ": the effect does not compile")) << message;
}

TEST_F(FailureTest, ErrorsOfTheParserAreShownInTheAuthorsFile) {
    Write("lib.glsl", "float a;\nfloat half_of(float x) {\n    return x * hafl;\n}\n");
    const std::string shader =
        Write("effect.frag",
              "#include \"lib.glsl\"\nvec4 FUNCNAME(vec2 tc) { return vec4(half_of(1.0)); }\n");
    const std::string message = MessageOf(1, {shader, "--size", "4x4"});
    EXPECT_TRUE(Holds(message, At("lib.glsl") +
                                   ":3:16: error: `hafl' was not declared in this scope\n"
                                   "        return x * hafl;\n"
                                   "                   ^\n"
                                   "effect-render: error: " +
                                   shader + ": the effect does not compile\n"))
        << message;
}

TEST_F(FailureTest, ErrorsOfTheHlslCompilerAreShownInTheAuthorsFile) {
    const std::string shader = Write(
        "effect.frag",
        "#define SUM asinh(1.0)\n"
        "vec4 FUNCNAME(vec2 tc) {\n    float k = 1.0\n        + SUM;\n    return vec4(k);\n}\n");
    const std::string message = MessageOf(1, {shader, "--size", "4x4"});
    EXPECT_TRUE(Holds(message, shader + ":4:11: error: X3004: undeclared identifier 'asinh'\n"
                                        "            + SUM;\n"
                                        "              ^\n"))
        << message;
}

TEST_F(FailureTest, ErrorsOfTheHlslCompilerInTheVertexStage) {
    const std::string vertex = Write("own.vert",
                                     "void main() {\n    gl_Position = position;\n"
                                     "    tc = cosinus(position.xy);\n}\n");
    const std::string message =
        MessageOf(1, {Shader("return vec4(1.0);"), "--vertex", vertex, "--size", "4x4"});
    EXPECT_TRUE(Holds(message, vertex + ":3:10: error: X3004: undeclared identifier 'cosinus'\n"))
        << message;
}

TEST_F(FailureTest, ErrorsInSegmentsAndFurtherProgramsNameTheirFile) {
    Write("main.frag", "vec4 FUNCNAME(vec2 tc) { return vec4(1.0); }\n");
    Write("more.frag", "vec4 FUNCNAME(vec2 tc) {\n    return vec4(acosh(2.0));\n}\n");
    Write("good.glsl", "float s;\n");
    Write("bad.glsl", "float s;\n\nfloat t() { return u; }\n");
    const std::string head = R"({"fragment": "main.frag", "size": [4, 4], )";
    Write("effect.json", head + R"("programs": [{"name": "more", "fragment": "more.frag"}],
                                   "passes": [{"program": "more"}]})");
    std::string message = MessageOf(1, {folder_.Path()});
    EXPECT_TRUE(Holds(message, At("more.frag") + ":2:17: error: X3004: ")) << message;
    Write("effect.json", head + R"("segments": {"fragment": [["good.glsl", "bad.glsl"]]},
                                   "variants": {"fragment": [1]}})");
    message = MessageOf(1, {folder_.Path()});
    EXPECT_TRUE(Holds(message, At("bad.glsl") + ":3:20: error: `u' was not declared")) << message;
}

TEST_F(FailureTest, WarningsStandAtTheAuthorsLineAndCanBeSilenced) {
    const std::string shader = Shader("    return vec4(bool(tc.x) ? 1.0 : 0.0);");
    const std::string message = MessageOf(0, {shader, "--size", "4x4"});
    EXPECT_EQ(message, shader +
                           ":2:17: warning: bool(x) is true for every x; write x != 0 [bool-cast]\n"
                           "        return vec4(bool(tc.x) ? 1.0 : 0.0);\n"
                           "                    ^\n");
    EXPECT_EQ(MessageOf(0, {shader, "--size", "4x4", "--no-warnings"}), "");
}

TEST_F(FailureTest, MissingFilesAreNamed) {
    const std::string shader = Shader("return INPUT1(tc);");
    EXPECT_EQ(MessageOf(1, {At("no.frag")}),
              "effect-render: error: " + At("no.frag") + ": there is no such effect\n");
    EXPECT_EQ(MessageOf(1, {shader, "-i", At("no.png")}),
              "effect-render: error: " + At("no.png") + ": cannot be read\n");
    EXPECT_TRUE(Holds(MessageOf(1, {shader, "--vertex", At("no.vert")}), "read file error"));
}

TEST_F(FailureTest, PictureThatCannotBeWrittenIsNamed) {
    const ProgramResult result =
        Run({Shader("return vec4(1.0);"), "--size", "4x4", "-o", At("no/out.png")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.message,
              "effect-render: error: " + At("no/out.png") + ": cannot be written\n");
}

TEST_F(FailureTest, MistakesInTheDescriptionAreNamed) {
    Write("effect.json", R"({"fragment": "a.frag", "size": "large"})");
    EXPECT_EQ(MessageOf(1, {folder_.Path()}),
              "effect-render: error: " + At("effect.json") + ": size: expected a list\n");
}

TEST_F(FailureTest, WrongUsageEndsWithTwo) {
    EXPECT_TRUE(Holds(MessageOf(2, {"--size", "4x4"}), "EFFECT is required"));
    EXPECT_TRUE(Holds(MessageOf(2, {"a.frag", "--size", "4"}), "--size '4': expected WxH"));
    EXPECT_TRUE(Holds(MessageOf(2, {"a.frag", "--nonsense"}), "--nonsense"));
}

TEST_F(FailureTest, HelpEndsWithNought) {
    const ProgramResult result = Run({"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(Holds(result.output, "--frames A-B"));
}

TEST_F(CommandLineTest, ExampleOfTheReadmeTurnsBrightnessRound) {
    Picture dark = Pattern(4, 4);
    for (size_t i = 0; i < dark.pixels.size(); i += 4) {
        dark.pixels[i] = 51;
        dark.pixels[i + 1] = 0;
        dark.pixels[i + 2] = 255;
        dark.pixels[i + 3] = 255;
    }
    SavePicture(At("in.png"), dark);
    const Picture out = Render(
        {ORVANE_DOCS_FOLDER "/examples/negative.frag", "-i", At("in.png"), "--float", "amount=1"});
    EXPECT_TRUE(Near(PixelAt(out, 1, 1), {204, 255, 0, 255}));
}

TEST(HostExampleTest, DrawsTheNegative) {
    const ProgramResult result = RunProgram("host_example.exe", {});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.message, "");
    EXPECT_EQ(result.output, "amount 0: 255 255 255 255\namount 1: 0 0 0 255\n");
}

}  // namespace
}  // namespace effect_render
