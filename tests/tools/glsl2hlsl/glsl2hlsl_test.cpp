/// glsl2hlsl from outside: arguments in; exit status, standard output and standard error out.

#include <gtest/gtest.h>

#include "../temp_folder.h"
#include "DirectXEffectMgr/Source/core/fixed_texts.h"
#include "DirectXEffectMgr/Source/core/program_source.h"
#include "DirectXEffectMgr/Source/logging/logging.h"
#include "tool_process.h"

namespace {

constexpr const char* kHalf = "vec4 FUNCNAME(vec2 tc) { return INPUT1(tc) * 0.5; }\n";
constexpr const char* kResolutions =
    "uniform vec2 iResolution;\n"
    "uniform float PLACEHOLDER_VALUE_0;\n"
    "uniform float PLACEHOLDER_VALUE_1;\n"
    "uniform vec2 iResolutionOrig;\n";

class Glsl2HlslTest : public testing::Test {
protected:
    ToolResult run(const std::vector<std::string>& arguments) {
        return run_tool(folder_.Path(), arguments);
    }
    // A file, written, and its path.
    std::string file(const std::string& name, const std::string& text) {
        return folder_.Write(name, text);
    }
    // Runs a source that must fail, and gives the last line of what is said.
    std::string error_of(const std::string& fragment, std::vector<std::string> more = {}) {
        more.insert(more.begin(), file("e.frag", fragment));
        const ToolResult result = run(more);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, "");
        return result.last_err_line();
    }
    // Of the same the place, without the folder: "e.frag:3:7".
    std::string place_of_error(const std::string& fragment, std::vector<std::string> more = {}) {
        const std::string line = error_of(fragment, std::move(more));
        const std::string head = "error: " + folder_.Path() + "/";
        EXPECT_EQ(line.substr(0, head.size()), head);
        const size_t message = line.find(": ", head.size());
        EXPECT_NE(message, std::string::npos);
        return line.substr(head.size(), message - head.size());
    }
    std::string path(const std::string& name) { return folder_.Path() + "/" + name; }

    effect_render::TempFolder folder_;
};

TEST_F(Glsl2HlslTest, SuccessPrintsBothTextsAndNothingElse) {
    const ToolResult result = run({file("half.frag", kHalf)});
    EXPECT_EQ(result.status, 0) << result.err;
    const std::string head = std::string(kFixedVertexShader) + "\n=====\n";
    EXPECT_EQ(result.out.substr(0, head.size()), head);
    EXPECT_NE(result.out.find("\nfloat4 FUNCNAME(float2 tc, VertexOutput input, "
                              "float4 gl_FragCoord) {\n"
                              "return (INPUT1.Sample(INPUT1_SAMPLER, "
                              "GLOBAL_TRANS_TC( tc)).zyxw * 0.5f);\n"
                              "return float4(gloabal_float4_Constructor(0.0f));\n}\n"),
              std::string::npos);
    const std::string tail = "    return FUNCNAME(_tc, input, gl_FragCoord).zyxw;\n}\n    ";
    EXPECT_EQ(result.out.substr(result.out.size() - tail.size()), tail);
    EXPECT_EQ(result.err.find("error:"), std::string::npos);
}

TEST_F(Glsl2HlslTest, TheTextsAreTheLibrarysByteForByte) {
    ProgramSources sources;
    sources.fragment.path = file("fx/f.frag",
                                 "#include \"h.glsl\"\r\nvec4 FUNCNAME(vec2 tc) "
                                 "{ return halve(INPUT1(tc)) * PREFIX(amount); }\r\n");
    sources.vertex.path =
        file("fx/v.vert", "void main() { gl_Position = position; tc = texcoord.xy; }\n");
    file("fx/h.glsl", "vec4 halve(vec4 c) { return c * 0.5; }");
    set_log_callback(nullptr);
    ProgramText text;
    EXPECT_TRUE(TranslateProgram(sources,
                                 "uniform float PREFIX(amount);\n"
                                 "uniform float PLACEHOLDER_VALUE_0;\n"
                                 "uniform float PLACEHOLDER_VALUE_1;\n"
                                 "uniform float PLACEHOLDER_VALUE_2;\n"
                                 "uniform vec2 PREFIX(iResolution);\n"
                                 "uniform float PLACEHOLDER_VALUE_3;\n"
                                 "uniform float PLACEHOLDER_VALUE_4;\n"
                                 "uniform vec2 PREFIX(iResolutionOrig);\n",
                                 2, 1, text));
    const ToolResult result = run({sources.fragment.path, "--vertex", sources.vertex.path,
                                   "--inputs", "2", "--audio", "1", "--param", "float:amount"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, text.vertex_hlsl + "\n=====\n" + text.fragment_hlsl);
    EXPECT_NE(result.out.find("Texture2D AUDIO_INPUT1 : register(t2);\n"), std::string::npos);
}

TEST_F(Glsl2HlslTest, TheLogGoesToStandardError) {
    const std::string fragment = file("half.frag", kHalf);
    const ToolResult result = run({fragment});
    EXPECT_EQ(result.err, "read file:" + fragment + "\nthe frag shader compile to DX success!\n");
}

TEST_F(Glsl2HlslTest, AssembledSourcesOnDemand) {
    const std::string fragment = file("f.frag", "F PREFIX(a)\r\n#include \"i\"\n end");
    file("i", "I\n");
    ToolResult result = run({fragment, "--emit", "glsl"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out,
              "\n=====\n" + std::string(kFragmentPrelude) + kResolutions + "F PREFIX_a\nI\n\n end");
    result = run({fragment, "--emit", "glsl", "--vertex", file("v", "V"), "--define", "N=a b"});
    EXPECT_EQ(result.out, std::string(kVertexPrelude) + "#define N a b\n" + kResolutions +
                              "V\n=====\n" + std::string(kFragmentPrelude) + "#define N a b\n" +
                              kResolutions + "F PREFIX_a\nI\n\n end");
}

TEST_F(Glsl2HlslTest, Base64Files) {
    // "F", "V" and an include of a file with "I" in it.
    const std::string fragment = file("f.frag", "I2luY2x1ZGUgImkiCkY=");
    file("i", "SQ==");
    const ToolResult result =
        run({"--base64", fragment, "--vertex", file("v", "Vg.."), "--emit", "glsl"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, std::string(kVertexPrelude) + kResolutions + "V\n=====\n" +
                              std::string(kFragmentPrelude) + kResolutions + "I\nF");
}

TEST_F(Glsl2HlslTest, NamesInOtherScripts) {
    const std::string fragment =
        file("\xC3\xA4\xE6\x97\xA5/\xC3\xB6 f.frag", "#include \"\xC3\xBC.glsl\"\n");
    file("\xC3\xA4\xE6\x97\xA5/\xC3\xBC.glsl", kHalf);
    const ToolResult result = run({fragment});
    EXPECT_EQ(result.status, 0) << result.err;
}

TEST_F(Glsl2HlslTest, WrongUsageHasStatusTwo) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{}, {"--none"}, {"a", "--param", "x:y"}}) {
        const ToolResult result = run(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_NE(result.err, "");
    }
    const ToolResult help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.out, "");
}

TEST_F(Glsl2HlslTest, AFailureIsLoggedAsByTheLibraryAndThenNamed) {
    const std::string fragment = file("e.frag", "vec4 f() {\n  return colr;\n}\n");
    const ToolResult result = run({fragment});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    const std::vector<std::string> lines = result.err_lines();
    // The prelude has 20 lines and the declarations 4: the author's second line is the 26th.
    ASSERT_GE(lines.size(), 4u);
    EXPECT_EQ(lines[0], "read file:" + fragment);
    EXPECT_EQ(lines[1], "   1:");
    EXPECT_EQ(lines[2], "   2:#define __ANDROID__");
    EXPECT_NE(result.err.find("  26:  return colr;\n  27:}\n"), std::string::npos);
    EXPECT_NE(result.err.find("codeDX:26:"), std::string::npos);
    EXPECT_EQ(result.last_err_line().substr(0, 7 + fragment.size() + 5),
              "error: " + fragment + ":2:10");
}

TEST_F(Glsl2HlslTest, ErrorsOnTheFirstMiddleAndLastLine) {
    EXPECT_EQ(place_of_error("int a = bad;\nvec4 f() { return vec4(0.0); }"), "e.frag:1:9");
    EXPECT_EQ(place_of_error("int a;\nint f() {\n  a = bad;\n}\nint b;\n"), "e.frag:3:7");
    EXPECT_EQ(place_of_error("int a;\nint f() { return bad; }"), "e.frag:2:18");
}

TEST_F(Glsl2HlslTest, ErrorsInIncludesAndNestedIncludes) {
    const std::string main = "int a;\n#include \"inc.glsl\"\nint z;\n";
    file("inc.glsl", "int b;\nint f() { return bad; }\n");
    EXPECT_EQ(place_of_error(main), "inc.glsl:2:18");
    file("inc.glsl", "int b;\n#include \"deep.glsl\"\n");
    file("deep.glsl", "int c;\n\nint g() { return bad; }");
    EXPECT_EQ(place_of_error(main), "deep.glsl:3:18");
    file("deep.glsl", "int c;");
    EXPECT_EQ(place_of_error(main + "int h() { return bad; }"), "e.frag:4:18");
}

TEST_F(Glsl2HlslTest, ErrorsBehindRewrittenText) {
    // A ternary, a macro's use and what it brought, a cut branch, a parameter, and a macro's use
    // over two lines.
    EXPECT_EQ(place_of_error("int f(int a) {\n  int b = a ? 1 : 2; return bad;\n}\n"),
              "e.frag:2:29");
    EXPECT_EQ(place_of_error("#define N 4 + 5\nint f() {\n  int b = N; return bad;\n}\n"),
              "e.frag:3:21");
    EXPECT_EQ(place_of_error("#define N bad\nint f() {\n  return 1 + N;\n}\n"), "e.frag:3:14");
    EXPECT_EQ(place_of_error("#ifdef NO\nint a;\nint b;\n#endif\nint f() { return bad; }\n"),
              "e.frag:5:18");
    EXPECT_EQ(place_of_error("float f() {\n  return PREFIX(p) + bad;\n}\n", {"--param", "float:p"}),
              "e.frag:2:22");
    EXPECT_EQ(place_of_error(
                  "#define S(a, b) a\nint f(int x) {\n  int b = S(x,\n1);\n  return bad;\n}\n"),
              "e.frag:5:10");
}

TEST_F(Glsl2HlslTest, ErrorsInTheVertexStageNameItsFile) {
    const std::string vertex = file("v.vert", "void main() {\n gl_Position = positio;\n}\n");
    EXPECT_EQ(place_of_error(kHalf, {"--vertex", vertex}), "v.vert:2:16");
}

TEST_F(Glsl2HlslTest, AnErrorInWhatWasGivenWithTheCommandNamesItsText) {
    const std::string line = error_of(kHalf, {"--define", "float=3"});
    EXPECT_EQ(line.find("error: <parameters>:"), 0u) << line;
}

TEST_F(Glsl2HlslTest, ASilentParserStillHasAPlace) {
    EXPECT_EQ(place_of_error("int a;\nint b;\n}"), "e.frag:3:1");
}

TEST_F(Glsl2HlslTest, AFailureShowsTheSourceLineAndACaret) {
    const std::string fragment = file("e.frag", "vec4 f() {\n\treturn colr;\n}\n");
    const ToolResult result = run({fragment});
    const std::string message = "`colr' was not declared in this scope\n";
    EXPECT_NE(result.err.find("\n" + fragment + ":2:9: error: " + message +
                              "    \treturn colr;\n"
                              "    \t       ^\n"
                              "error: " +
                              fragment + ":2:9: " + message),
              std::string::npos)
        << result.err;
}

TEST_F(Glsl2HlslTest, AnErrorInAMacroNamesItsUse) {
    EXPECT_EQ(place_of_error("#define TWICE(x) (x * bad)\n"
                             "float f() {\n  return 1.0 + TWICE(2.0);\n}\n"),
              "e.frag:3:16");
}

TEST_F(Glsl2HlslTest, WarningsStandAtTheAuthorsLineAndCanBeSilenced) {
    file("inc.glsl", "bool truth(float x) {\n    return bool(x);\n}\n");
    const std::string fragment = file("f.frag", std::string("#include \"inc.glsl\"\n") + kHalf);
    const std::string warning = path("inc.glsl") +
                                ":2:12: warning: bool(x) is true for every x; write x != 0 "
                                "[bool-cast]\n        return bool(x);\n               ^\n";
    const ToolResult loud = run({fragment});
    EXPECT_EQ(loud.status, 0);
    EXPECT_NE(loud.err.find(warning), std::string::npos) << loud.err;
    const ToolResult quiet = run({fragment, "--no-warnings"});
    EXPECT_EQ(quiet.err.find("warning"), std::string::npos) << quiet.err;
    EXPECT_EQ(quiet.out, loud.out);
}

TEST_F(Glsl2HlslTest, WarningsKnowWhatTheEffectHas) {
    const std::string fragment =
        file("f.frag", "vec4 FUNCNAME(vec2 tc) { return INPUT2(tc) * PREFIX(w)[1]; }\n");
    const auto names = [this, &fragment](const std::vector<std::string>& more) {
        std::vector<std::string> arguments{fragment};
        arguments.insert(arguments.end(), more.begin(), more.end());
        std::string found;
        for (const std::string& line : run(arguments).err_lines()) {
            found +=
                line.find(": warning: ") != std::string::npos ? line.substr(line.rfind('[')) : "";
        }
        return found;
    };
    EXPECT_EQ(names({"--param", "float[]:w:4"}), "[input-number][scalar-array-parameter]");
    EXPECT_EQ(names({"--param", "vec4[]:w:4", "--inputs", "2"}), "");
}

TEST_F(Glsl2HlslTest, MessagesOfTheHlslCompilerAreLedBack) {
    const std::string source = "vec4 FUNCNAME(vec2 tc) {\n  float k = asinh(tc.x);\n}\n";
    const std::string fragment = file("e.frag", source);
    const std::string hlsl = run({fragment}).out;
    const size_t body = hlsl.find("=====\n") + 6;
    const size_t word = hlsl.find("asinh");
    ASSERT_NE(word, std::string::npos);
    const auto line = 1 + std::count(hlsl.begin() + static_cast<std::ptrdiff_t>(body),
                                     hlsl.begin() + static_cast<std::ptrdiff_t>(word), '\n');
    const std::string column = std::to_string(word - hlsl.rfind('\n', word));
    const std::string log =
        file("log", "Failed to compile frag shader: Shader@0x1(" + std::to_string(line) + "," +
                        column + "-99): error X3004: undeclared identifier 'asinh'\n");
    const ToolResult result = run({fragment, "--hlsl-log", log});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    const std::string message = "X3004: undeclared identifier 'asinh'";
    EXPECT_NE(result.err.find(fragment + ":2:13: error: " + message +
                              "\n      float k = asinh(tc.x);\n                ^\n"),
              std::string::npos)
        << result.err;
    EXPECT_EQ(result.last_err_line(), "error: " + fragment + ":2:13: " + message);
}

TEST_F(Glsl2HlslTest, ALogWithoutErrorsIsOne) {
    const std::string half = file("half.frag", kHalf);
    const std::string log = file("log", "all is well\n");
    EXPECT_EQ(run({half, "--hlsl-log", log}).last_err_line(),
              "error: " + log + ": no error of the HLSL compiler about this effect");
    const ToolResult none = run({half, "--hlsl-log", path("none")});
    EXPECT_EQ(none.status, 1);
    EXPECT_EQ(none.last_err_line(), "error: " + path("none") + ": cannot be read");
}

TEST_F(Glsl2HlslTest, FilesThatCannotBeUsed) {
    const std::string none = path("none.frag");
    ToolResult result = run({none});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.last_err_line(), "error: " + none + ": \"" + none + "\" cannot be read");
    result = run({folder_.Path()});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.last_err_line().find("error: " + folder_.Path() + ": "), 0u);
    const std::string half = file("half.frag", kHalf);
    result = run({half, "--vertex", none});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    result = run({half, "--base64"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.last_err_line(), "error: " + half + ": \"" + half + "\" holds no base64 text");
}

TEST_F(Glsl2HlslTest, AMissingIncludeNamesItsDirective) {
    EXPECT_EQ(error_of("int a;\n  #include \"none.glsl\"\n"),
              "error: " + path("e.frag") + ":2:3: \"" + path("none.glsl") + "\" cannot be read");
}

TEST_F(Glsl2HlslTest, AnIncludeLoopEndsInAnError) {
    file("loop.glsl", "#include \"loop.glsl\"\n");
    EXPECT_EQ(error_of("\n#include \"loop.glsl\"\n"),
              "error: " + path("loop.glsl") + ":1:1: \"" + path("loop.glsl") +
                  "\" is included too deep, too often, or brings too much");
}

TEST_F(Glsl2HlslTest, HostileSourcesEndInAResult) {
    std::string nested = "int f() { return ";
    nested += std::string(10000, '(') + "1" + std::string(10000, ')') + "; }\n";
    const ToolResult deep = run({file("deep.frag", nested)});
    EXPECT_TRUE(deep.status == 0 || deep.status == 1) << deep.status;
    std::string sum = "float f() { return 1.0";
    for (int i = 0; i < 100000; ++i) {
        sum += " + 1.0";
    }
    const ToolResult long_sum = run({file("sum.frag", sum + "; }\n")});
    EXPECT_EQ(long_sum.status, 0) << long_sum.last_err_line();
    const ToolResult zero = run({file("zero.frag", std::string("int a;\0 ?? (", 12))});
    EXPECT_EQ(zero.status, 0) << zero.last_err_line();
}

}  // namespace
