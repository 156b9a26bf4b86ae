#include <gtest/gtest.h>

#include "host/fake_host.h"
#include "host/temp_folder.h"

namespace {

using host::Effect;
using host::EffectPlan;
using host::FakeHost;
using host::FakeHostBothModes;
using host::Lines;
using host::Mode;
using host::TempFolder;

constexpr int32_t kFail = static_cast<int32_t>(0x80004005);

class CompileTest : public FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(Mode::inlined);
        host::log::clear();
    }
    int shaders() const { return world.created(fake::Kind::pixel_shader); }
};

TEST_F(CompileTest, ATextAndTheFixedVertexShader) {
    const Effect effect = makeEffectOf(host::kRed);
    EXPECT_EQ(0, init(effect));
    EXPECT_EQ((Lines{"the frag shader compile to DX success!"}), host::log::texts(2));
}

TEST_F(CompileTest, BothTextsVertexFirst) {
    const Effect effect = makeEffectOf(host::kRed);
    effect->SetVertexShaderText(host::kVertex);
    EXPECT_EQ(0, init(effect));
    EXPECT_EQ((Lines{"the vertex shader compile to DX success!",
                     "the frag shader compile to DX success!"}),
              host::log::texts(2));
}

TEST_F(CompileTest, FilesAreReadFragmentFirst) {
    const TempFolder folder;
    EffectPlan plan;
    plan.fragment_path = folder.write("a.frag", host::kRed);
    plan.vertex_path = folder.write("a.vert", host::kVertex);
    EXPECT_EQ(0, init(makeEffect(plan)));
    EXPECT_EQ((Lines{"read file:" + plan.fragment_path, "read file:" + plan.vertex_path,
                     "the vertex shader compile to DX success!",
                     "the frag shader compile to DX success!"}),
              host::log::texts(2));
}

TEST_F(CompileTest, APathOutsideAsciiIsRead) {
    const TempFolder folder;
    EffectPlan plan;
    plan.fragment_path = folder.write("\xC3\xA9\xE6\xB0\xB4.frag", host::kRed);
    EXPECT_EQ(0, init(makeEffect(plan))) << host::log::all();
}

TEST_F(CompileTest, AVertexTextWithoutAFragmentTextIsNotUsed) {
    // On purpose: which text is taken is decided by the fragment text alone.
    const TempFolder folder;
    EffectPlan plan;
    plan.fragment_path = folder.write("a.frag", host::kRed);
    const Effect effect = makeEffect(plan);
    effect->SetVertexShaderText(host::kBadGlsl);
    EXPECT_EQ(0, init(effect)) << host::log::all();
}

TEST_F(CompileTest, AFragmentTextWithoutAVertexTextIgnoresTheVertexFile) {
    EffectPlan plan;
    plan.vertex_path = "no_such_file.vert";
    EXPECT_EQ(0, init(makeEffectOf(host::kRed, plan)));
    EXPECT_FALSE(host::log::holds(2, "read file"));
}

TEST_F(CompileTest, AMissingFileIsReportedAndTheParserDecides) {
    EffectPlan plan;
    plan.fragment_path = "no/such/file.frag";
    EXPECT_EQ(kFail, init(makeEffect(plan)));
    EXPECT_TRUE(host::log::holds(2, "read file:no/such/file.frag"));
    EXPECT_EQ("read file error", host::log::errors().at(0));
}

TEST_F(CompileTest, AnEmptyPathIsReported) {
    EXPECT_EQ(kFail, init(makeEffect()));
    EXPECT_EQ("file path is empty", host::log::errors().at(0));
}

TEST_F(CompileTest, AFolderInPlaceOfAFileIsReported) {
    const TempFolder folder;
    folder.write("sub/a.frag", host::kRed);
    EffectPlan plan;
    plan.fragment_path = folder.path("sub");
    EXPECT_EQ(kFail, init(makeEffect(plan)));
    EXPECT_EQ("read file error", host::log::errors().at(0));
}

TEST_F(CompileTest, Base64FilesAreDecoded) {
    const TempFolder folder;
    EffectPlan plan;
    plan.encoding = 1;
    // "vec4 FUNCNAME(vec2 tc) { return vec4(1.0); }"
    plan.fragment_path =
        folder.write("a.b64", "dmVjNCBGVU5DTkFNRSh2ZWMyIHRjKSB7IHJldHVybiB2ZWM0KDEuMCk7IH0=");
    EXPECT_EQ(0, init(makeEffect(plan))) << host::log::all();
}

TEST_F(CompileTest, BadBase64IsReportedWithTheInput) {
    const TempFolder folder;
    EffectPlan plan;
    plan.encoding = 1;
    plan.fragment_path = folder.write("a.b64", "*not base64*");
    EXPECT_EQ(kFail, init(makeEffect(plan)));
    EXPECT_EQ("base64_decode error:*not base64*", host::log::errors().at(0));
}

TEST_P(FakeHostBothModes, AGlslErrorDumpsTheSourceAndLeavesTheEffectForAnotherTry) {
    const Effect effect = makeEffectOf(host::kBadGlsl);
    host::log::clear();
    EXPECT_EQ(kFail, init(effect));
    EXPECT_EQ(1u, host::log::errors().size());
    EXPECT_EQ('\n', host::log::errors().at(0).back());
    // The dump counts from 1; the first line of the prelude is empty.
    EXPECT_EQ("   1:", host::log::texts(2).at(0));
    EXPECT_EQ("   2:#define __ANDROID__", host::log::texts(2).at(1));
    EXPECT_EQ(kFail, draw(effect)) << "nothing is compiled";
    effect->SetFragmentShaderText(host::kRed);
    EXPECT_EQ(0, init(effect));
    EXPECT_EQ(0, draw(effect));
}

TEST_P(FakeHostBothModes, AnHlslErrorDumpsTheTextAndTellsTheCompilersWords) {
    const Effect effect = makeEffectOf(host::kBadHlsl);
    host::log::clear();
    EXPECT_EQ(kFail, init(effect));
    ASSERT_EQ(1u, host::log::errors().size());
    EXPECT_EQ(0u, host::log::errors()[0].find("Failed to compile frag shader: "));
    EXPECT_TRUE(host::log::holds(4, "no_such_function"));
    EXPECT_TRUE(host::log::holds(2, "   1:"));
    EXPECT_EQ(kFail, draw(effect));
    effect->SetFragmentShaderText(host::kRed);
    EXPECT_EQ(0, init(effect));
    EXPECT_EQ(0, draw(effect));
}

TEST_F(CompileTest, AVertexStageThatTheHlslCompilerRefuses) {
    const Effect effect = makeEffectOf(host::kRed);
    effect->SetVertexShaderText("void main() { gl_Position = no_such_function(position); }\n");
    EXPECT_EQ(kFail, init(effect));
    ASSERT_EQ(1u, host::log::errors().size());
    EXPECT_EQ(0u, host::log::errors()[0].find("Failed to compile vertex shader: "));
}

TEST_F(CompileTest, AVertexStageThatTheParserRefuses) {
    const Effect effect = makeEffectOf(host::kRed);
    effect->SetVertexShaderText("void main( { }\n");
    EXPECT_EQ(kFail, init(effect));
    EXPECT_FALSE(host::log::holds(2, "the frag shader compile to DX success!"));
    EXPECT_EQ(0, shaders());
}

TEST_F(CompileTest, ASourceWithoutTheEntryWarnsAndIsCompiledAllTheSame) {
    // The wrapper itself names the entry, so the text that the check reads holds the word.
    const Effect effect = makeEffectOf("vec4 other(vec2 tc) { return vec4(1.0); }\n");
    EXPECT_EQ(kFail, init(effect));
    EXPECT_EQ(Lines(), host::log::warnings());
    EXPECT_EQ(1u, host::log::errors().size());
}

TEST_P(FakeHostBothModes, TwoEffectsWithTheSameTextShareOneProgram) {
    const Effect first = makeEffectOf(host::kRed);
    const Effect second = makeEffectOf(host::kRed);
    EXPECT_EQ(0, init(first));
    EXPECT_EQ(0, init(second));
    EXPECT_EQ(1, world.created(fake::Kind::pixel_shader));
    EXPECT_EQ(1, world.created(fake::Kind::vertex_shader));
}

TEST_P(FakeHostBothModes, OneByteMoreIsAnotherProgram) {
    EXPECT_EQ(0, init(makeEffectOf(host::kRed)));
    EXPECT_EQ(0, init(makeEffectOf("vec4 FUNCNAME(vec2 tc) { return vec4(0.5); }\n")));
    EXPECT_EQ(2, world.created(fake::Kind::pixel_shader));
}

TEST_P(FakeHostBothModes, AnUnusedProgramIsRevivedWithoutCompiling) {
    EXPECT_EQ(0, init(makeEffectOf(host::kRed)));  // released again at once
    const Effect again = makeEffectOf(host::kRed);
    EXPECT_EQ(0, init(again));
    EXPECT_EQ(1, world.created(fake::Kind::pixel_shader));
    EXPECT_EQ(0, draw(again));
}

TEST_F(CompileTest, InitAgainMakesTheConstantBufferAnew) {
    const Effect effect = makeEffectOf(host::kRed);
    EXPECT_EQ(0, init(effect));
    effect->RegisterParamMat4("late", nullptr);
    world.clearCalls();
    EXPECT_EQ(0, init(effect));
    ASSERT_EQ(1u, world.callsOf("CreateBuffer").size());
    // Two vec2 of 8 bytes at 0 and 16, then 64 bytes at 32.
    EXPECT_EQ(0u, world.callsOf("CreateBuffer")[0].arguments.find("96 bytes"));
}

TEST_F(CompileTest, AFailedConstantBufferIsReportedAndTheEffectDrawsWithoutOne) {
    const Effect effect = makeEffectOf(host::kRed);
    world.failNth("CreateBuffer", 1);
    EXPECT_EQ(0, init(effect));
    EXPECT_EQ((Lines{"Create pParamBuffer error!"}), host::log::errors());
    EXPECT_EQ(0, draw(effect));
    EXPECT_TRUE(world.callsOf("Map").empty());
    EXPECT_TRUE(world.callsOf("PSSetConstantBuffers").empty());
}

class ShaderFaultTest : public CompileTest, public testing::WithParamInterface<const char*> {};

TEST_P(ShaderFaultTest, ARefusedShaderFailsSilentlyAndLeavesNothing) {
    const Effect effect = makeEffectOf(host::kRed);
    world.failNth(GetParam(), 1);
    EXPECT_EQ(kFail, init(effect));
    EXPECT_EQ(Lines(), host::log::errors());
    EXPECT_EQ((Lines{"deferred#1: 1", "buffer#1: 1"}), world.live());
    EXPECT_EQ(kFail, draw(effect));
    EXPECT_EQ(0, init(effect)) << "nothing of it is in the cache";
    EXPECT_EQ(0, draw(effect));
}

INSTANTIATE_TEST_SUITE_P(EachShader, ShaderFaultTest,
                         testing::Values("CreatePixelShader", "CreateVertexShader"));

TEST_F(CompileTest, WithoutADeferredContextTheEffectStillCompiles) {
    world.failNth("CreateDeferredContext", 1);
    const Effect effect = makeEffectOf(host::kRed);
    EXPECT_EQ(0, init(effect));
    EXPECT_EQ(kFail, draw(effect));
}

TEST_F(CompileTest, DefinesReachTheSource) {
    const Effect effect =
        makeEffectOf("#ifdef LEVEL\nvec4 FUNCNAME(vec2 tc) { return vec4(LEVEL); }\n#endif\n");
    EXPECT_EQ(kFail, init(effect));
    EXPECT_EQ(0, effect->SetShaderDefine("LEVEL", "0.5"));
    EXPECT_EQ(0, init(effect)) << host::log::all();
}

}  // namespace
