#include <gtest/gtest.h>

#include <thread>

#include "DirectXEffectMgr/Source/core/fixed_texts.h"
#include "DirectXEffectMgr/Source/core/program_source.h"
#include "log_capture.h"
#include "memory_files.h"

namespace {

constexpr const char* kFragment =
    "uniform vec2 iResolution;\nvec4 FUNCNAME(vec2 tc) { return INPUT1(tc); }\n";
constexpr const char* kVertex =
    "in vec4 position;\nout vec4 gl_Position;\nout vec2 tc;\nout float shade;\n"
    "void main() { gl_Position = position; tc = position.xy; shade = 1.0; }\n";

bool contains(const std::string& text, const std::string& piece) {
    return text.find(piece) != std::string::npos;
}

class TranslateAssembledTest : public testing::Test {
protected:
    bool translate(int32_t inputs = 1, int32_t audio = 0) {
        return TranslateAssembled(program_, inputs, audio, out_, &failure_);
    }

    AssembledProgram program_{kFragment, "", false};
    ProgramText out_;
    ParseFailure failure_;
    LogCapture log_;
};

TEST_F(TranslateAssembledTest, WithoutVertexSourceTheFixedShaderIsHandedOn) {
    EXPECT_TRUE(translate());
    EXPECT_EQ(out_.vertex_hlsl, kFixedVertexShader);
    EXPECT_TRUE(contains(out_.fragment_hlsl, "return FUNCNAME(_tc, input, gl_FragCoord).zyxw;"));
    EXPECT_EQ(log_.take(), (Lines{"2|the frag shader compile to DX success!"}));
}

TEST_F(TranslateAssembledTest, TheVertexStageComesFirstAndPassesItsVariablesOn) {
    program_.vertex = kVertex;
    program_.has_vertex = true;
    EXPECT_TRUE(translate());
    EXPECT_TRUE(contains(out_.vertex_hlsl, "VertexOutput mainVS(VertexInput input)"));
    EXPECT_TRUE(contains(out_.fragment_hlsl, " : __shade;\n"));
    EXPECT_TRUE(
        contains(out_.fragment_hlsl, "return FUNCNAME(input.tc, input, gl_FragCoord).zyxw;"));
    EXPECT_EQ(log_.take(), (Lines{"2|the vertex shader compile to DX success!",
                                  "2|the frag shader compile to DX success!"}));
}

TEST_F(TranslateAssembledTest, InputsAreCounted) {
    EXPECT_TRUE(translate(2, 1));
    EXPECT_TRUE(contains(out_.fragment_hlsl, "Texture2D INPUT2 : register(t1);\n"));
    EXPECT_TRUE(contains(out_.fragment_hlsl, "Texture2D AUDIO_INPUT1 : register(t2);\n"));
    EXPECT_TRUE(translate(-1, -2147483647 - 1));
    EXPECT_FALSE(contains(out_.fragment_hlsl, "Texture2D INPUT1"));
}

TEST_F(TranslateAssembledTest, ARefusedFragmentIsDumpedAndNamed) {
    program_.fragment = "int a;\nint f() {\n  return bad;\n}\n";
    out_.fragment_hlsl = "before";
    out_.vertex_hlsl = "before";
    EXPECT_FALSE(translate());
    EXPECT_EQ(out_.fragment_hlsl + out_.vertex_hlsl, "beforebefore");
    const std::string error = "codeDX:3:13:error:`bad' was not declared in this scope\r\n";
    EXPECT_EQ(log_.take(), (Lines{"2|   1:int a;", "2|   2:int f() {", "2|   3:  return bad;",
                                  "2|   4:}", "4|" + error + "\n"}));
    EXPECT_EQ(failure_.stage, ShaderStage::kFragment);
    EXPECT_EQ(failure_.text, error);
    EXPECT_EQ(failure_.source.substr(0, failure_.offset), "int a;\nint f() {\n  return bad");
}

TEST_F(TranslateAssembledTest, ARefusedVertexStageEndsTheWork) {
    program_.vertex = "int f() { return bad; }";
    program_.has_vertex = true;
    EXPECT_FALSE(translate());
    const Lines lines = log_.take();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], "2|   1:int f() { return bad; }");
    EXPECT_EQ(failure_.stage, ShaderStage::kVertex);
}

TEST_F(TranslateAssembledTest, AParserWithoutAMessageIsLoggedAsAnEmptyLine) {
    program_.fragment = "}";
    EXPECT_FALSE(translate());
    EXPECT_EQ(log_.take(), (Lines{"2|   1:}", "4|\n"}));
    EXPECT_EQ(failure_.text, "");
}

TEST_F(TranslateAssembledTest, TheReportMayBeLeftOut) {
    program_.fragment = "}";
    EXPECT_FALSE(TranslateAssembled(program_, 1, 0, out_));
}

TEST_F(TranslateAssembledTest, AnEmptySourceIsTranslated) {
    program_.fragment = "";
    EXPECT_TRUE(translate());
}

TEST_F(TranslateAssembledTest, ThePreludesAreTranslated) {
    program_.fragment = kFragmentPrelude;
    program_.vertex = kVertexPrelude;
    program_.has_vertex = true;
    EXPECT_TRUE(translate());
    EXPECT_TRUE(contains(out_.fragment_hlsl, "float2 TransTc(float2 tc"));
    EXPECT_FALSE(contains(out_.fragment_hlsl, "static float4 gl_FragCoord"));
    EXPECT_TRUE(contains(out_.vertex_hlsl, "    float4 position : position;\n"));
}

TEST(TranslateProgramTest, FromFilesToHlsl) {
    MemoryFiles files({{"fx/f",
                        "#include \"i\"\nvec4 FUNCNAME(vec2 tc) "
                        "{ return tint(INPUT1(tc)) * PREFIX(amount); }\n"},
                       {"fx/i", "vec4 tint(vec4 c) { return c; }"}});
    ProgramSources sources;
    sources.files = &files;
    sources.fragment.path = "fx/f";
    ProgramText out;
    LogCapture log;
    EXPECT_TRUE(TranslateProgram(
        sources, "uniform vec2 PREFIX(iResolution);\nuniform float PREFIX(amount);\n", 1, 0, out));
    EXPECT_EQ(out.vertex_hlsl, kFixedVertexShader);
    EXPECT_TRUE(contains(out.fragment_hlsl, "cbuffer MyConstantBuffer : register(b0)\n{\n"));
    EXPECT_TRUE(contains(out.fragment_hlsl, "PREFIX_amount"));
    EXPECT_EQ(log.take(), (Lines{"2|read file:fx/f", "2|read file:fx/i",
                                 "2|the frag shader compile to DX success!"}));
}

TEST(TranslateProgramTest, AMissingFragmentFileIsAnEmptySource) {
    MemoryFiles files;
    ProgramSources sources;
    sources.files = &files;
    sources.fragment.path = "none";
    ProgramText out;
    LogCapture log;
    EXPECT_TRUE(TranslateProgram(sources, "", 1, 0, out));
    EXPECT_EQ(log.take(), (Lines{"2|read file:none", "4|read file error",
                                 "2|the frag shader compile to DX success!"}));
}

TEST(TranslateProgramTest, ManyThreadsTranslateAtOnce) {
    MemoryFiles files;
    ProgramSources sources;
    sources.fragment.text = kFragment;
    LogCapture log;
    ProgramText expected;
    EXPECT_TRUE(TranslateProgram(sources, "", 1, 0, expected));
    std::vector<ProgramText> results(4);
    std::vector<std::thread> threads;
    for (ProgramText& result : results) {
        threads.emplace_back([&sources, &result] {
            for (int i = 0; i < 20; ++i) {
                result = ProgramText();
                EXPECT_TRUE(TranslateProgram(sources, "", 1, 0, result));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const ProgramText& result : results) {
        EXPECT_EQ(result.fragment_hlsl, expected.fragment_hlsl);
    }
}

}  // namespace
