#include <gtest/gtest.h>

#include "host/fake_host.h"

namespace {

using host::Effect;
using host::EffectPlan;
using host::FakeHost;
using host::Lines;
using host::Mode;

constexpr int32_t kFail = static_cast<int32_t>(0x80004005);

/// One creation of a draw that fails, and what the library says about it.
struct Fault {
    const char* name;
    const char* method;
    int nth;
    const char* message;
    bool draw_fails;
};

/// An effect with depth and four samples: everything that a draw can make.
class DrawFaultTest : public FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(Mode::inlined);
        EffectPlan plan;
        plan.with_depth = true;
        effect = makeEffectOf(host::kRed, plan);
        effect->SetDepthTest(true);
    }
    void TearDown() override {
        effect.reset();
        stop();
        start(Mode::inlined);  // the former pool goes
        EXPECT_EQ(Lines(), world.live()) << "an earlier failure leaks nothing in the end";
        FakeHost::TearDown();
    }
    void expectFault(const Fault& fault) {
        ASSERT_EQ(0, init(effect)) << host::log::all();
        host::log::clear();
        world.failNth(fault.method, fault.nth);
        EXPECT_EQ(fault.draw_fails ? kFail : 0, draw(effect));
        EXPECT_TRUE(world.faultStruck());
        EXPECT_EQ((Lines{fault.message}), host::log::errors());
        world.clearFaults();
        host::log::clear();
        EXPECT_EQ(0, draw(effect)) << "the next draw fills the gap";
        EXPECT_EQ(0, draw(effect));
        EXPECT_EQ(Lines(), host::log::errors());
    }
    Effect effect;
};

class FlatDrawFaultTest : public DrawFaultTest, public testing::WithParamInterface<Fault> {};

TEST_P(FlatDrawFaultTest, IsReportedAndTheNextDrawWorks) {
    expectFault(GetParam());
}

std::string faultName(const testing::TestParamInfo<Fault>& info) {
    return info.param.name;
}

// The counts follow the order of making: colour, then depth; the first two buffers of a draw are
// those of the quad.
INSTANTIATE_TEST_SUITE_P(
    Single, FlatDrawFaultTest,
    testing::Values(Fault{"ColourTexture", "CreateTexture2D", 1,
                          "CreateFboTexture CreateTexture2D failed!", false},
                    Fault{"ColourView", "CreateShaderResourceView", 1,
                          "CreateFboTexture CreateShaderResourceView failed!", false},
                    Fault{"ColourSampler", "CreateSamplerState", 1,
                          "CreateFboTexture CreateSamplerState failed!", false},
                    Fault{"TargetView", "CreateRenderTargetView", 1,
                          "CreateFboTexture CreateRenderTargetView failed!", false},
                    Fault{"DepthTexture", "CreateTexture2D", 2,
                          "CreateFboDepth CreateTexture2D failed!", false},
                    Fault{"DepthTargetView", "CreateDepthStencilView", 1,
                          "CreateFboDepth CreateDepthStencilView failed!", false},
                    Fault{"DepthView", "CreateShaderResourceView", 2,
                          "CreateFboDepth CreateShaderResourceView failed!", false},
                    Fault{"DepthSampler", "CreateSamplerState", 2,
                          "CreateFboDepth CreateSamplerState failed!", false},
                    Fault{"WriteState", "CreateDepthStencilState", 1,
                          "CreateDepthStencilState depthStencilWriteMaskState failed", true},
                    Fault{"NoWriteState", "CreateDepthStencilState", 2,
                          "CreateDepthStencilState depthStencilNoWriteMaskState failed", true},
                    Fault{"RasterizerState", "CreateRasterizerState", 1,
                          "CreateRasterizerState failed", true},
                    Fault{"FirstVertexBuffer", "CreateBuffer", 1,
                          "fill_vertex_attribute CreateBuffer failed", false},
                    Fault{"SecondVertexBuffer", "CreateBuffer", 2,
                          "fill_vertex_attribute CreateBuffer failed", false},
                    Fault{"MapOfTheConstants", "Map", 1, "Map pParamBuffer error!", false}),
    faultName);

class MsaaDrawFaultTest : public FlatDrawFaultTest {
protected:
    void SetUp() override {
        FlatDrawFaultTest::SetUp();
        effect->SetMsaa(true);
    }
};

TEST_P(MsaaDrawFaultTest, IsReportedAndTheNextDrawWorks) {
    expectFault(GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    FourSamples, MsaaDrawFaultTest,
    testing::Values(Fault{"ColourTexture", "CreateTexture2D", 1,
                          "CreateFboTexture CreateTexture2D failed!", false},
                    Fault{"MsaaTexture", "CreateTexture2D", 2,
                          "CreateFboMsaa CreateTexture2D failed!", false},
                    Fault{"MsaaTargetView", "CreateRenderTargetView", 1,
                          "CreateFboMsaa CreateRenderTargetView failed!", false},
                    Fault{"MsaaDepthTexture", "CreateTexture2D", 3,
                          "fboDepth msaa CreateTexture2D failed!", false},
                    Fault{"MsaaDepthTargetView", "CreateDepthStencilView", 1,
                          "fboDepth msaa CreateDepthStencilView failed!", false},
                    Fault{"MsaaDepthView", "CreateShaderResourceView", 2,
                          "CreateFboDepth msaa CreateShaderResourceView failed!", false},
                    Fault{"MsaaDepthSampler", "CreateSamplerState", 2,
                          "CreateFboDepth msaa CreateSamplerState failed!", false},
                    Fault{"DepthTexture", "CreateTexture2D", 4,
                          "CreateFboDepth CreateTexture2D failed!", false},
                    Fault{"DepthTargetView", "CreateDepthStencilView", 2,
                          "CreateFboDepth CreateDepthStencilView failed!", false},
                    Fault{"DepthView", "CreateShaderResourceView", 3,
                          "CreateFboDepth CreateShaderResourceView failed!", false},
                    Fault{"DepthSampler", "CreateSamplerState", 3,
                          "CreateFboDepth CreateSamplerState failed!", false}),
    faultName);

TEST_F(DrawFaultTest, AFailedStateLeavesTheTargetBound) {
    ASSERT_EQ(0, init(effect));
    world.clearCalls();
    world.failNth("CreateRasterizerState", 1);
    EXPECT_EQ(kFail, draw(effect));
    ASSERT_EQ(1u, world.callsOf("OMSetRenderTargets").size()) << "it is not unbound";
    EXPECT_TRUE(world.callsOf("Draw").empty());
    EXPECT_TRUE(world.callsOf("FinishCommandList").empty());
}

TEST_F(DrawFaultTest, AFailedBlendStateDrawsWithoutOne) {
    effect->SetBlendMode(1);
    ASSERT_EQ(0, init(effect));
    world.clearCalls();
    world.failNth("CreateBlendState", 1);
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(Lines(), host::log::errors());
    EXPECT_EQ("deferred#1.OMSetBlendState(null, 0/0/0/0, 0xffffffff)",
              world.textsOf("OMSetBlendState").at(0));
    EXPECT_EQ(1u, world.callsOf("Draw").size());
}

TEST_F(DrawFaultTest, AFailedLayoutDrawsWithNoneAndIsTriedAgain) {
    ASSERT_EQ(0, init(effect));
    world.clearCalls();
    world.failNth("CreateInputLayout", 1);
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ("deferred#1.IASetInputLayout(null)", world.textsOf("IASetInputLayout").at(0));
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ("deferred#1.IASetInputLayout(layout#1)", world.textsOf("IASetInputLayout").at(1));
}

TEST_F(DrawFaultTest, AFailedElementBufferIsReported) {
    const uint32_t indices[6] = {0, 1, 2, 2, 1, 3};
    effect->AddVertexAttribute("e", 3, indices, false, true, 2);
    ASSERT_EQ(0, init(effect));
    world.clearCalls();
    world.failNth("CreateBuffer", 1);  // "element" comes before "position"
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ((Lines{"fill_element_attribute CreateBuffer failed"}), host::log::errors());
    EXPECT_TRUE(world.callsOf("IASetIndexBuffer").empty());
    EXPECT_EQ("deferred#1.DrawIndexed(6, 0, 0)", world.textsOf("DrawIndexed").at(0));
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(1u, world.callsOf("IASetIndexBuffer").size());
}

TEST_F(DrawFaultTest, AFailedMapOfTheConstantsStillDraws) {
    ASSERT_EQ(0, init(effect));
    world.clearCalls();
    world.failNth("Map", 1);
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ((Lines{"Map pParamBuffer error!"}), host::log::errors());
    EXPECT_EQ(1u, world.callsOf("Draw").size());
    EXPECT_EQ(1u, world.callsOf("PSSetConstantBuffers").size());
}

TEST_F(DrawFaultTest, AMapThatGivesNullIsNotWrittenTo) {
    ASSERT_EQ(0, init(effect));
    world.setMapGivesNull(true);
    EXPECT_EQ(0, draw(effect));
    world.setMapGivesNull(false);
    EXPECT_EQ(0, draw(effect));
}

TEST_F(DrawFaultTest, AFailedCommandListDoesNotCrash) {
    ASSERT_EQ(0, init(effect));
    world.failNth("FinishCommandList", 1);
    draw(effect);
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(1u, world.callsOf("ExecuteCommandList").size());
}

TEST_F(DrawFaultTest, ARemovedDeviceIsReportedAtEachCheckOfAPass) {
    ASSERT_EQ(0, init(effect));
    ASSERT_EQ(0, draw(effect));
    world.setRemovedReason(static_cast<HRESULT>(0x887A0005));
    host::log::clear();
    EXPECT_EQ(0, draw(effect)) << "the check only reports";
    ASSERT_EQ(3u, host::log::errors().size());
    for (const host::LogLine& line : host::log::lines()) {
        EXPECT_EQ("DX error 0x%x %s at %s:%d\n", line.format);
        EXPECT_EQ(0u, line.text.find("DX error 0x887a0005 DXGI_ERROR_DEVICE_REMOVED at "
                                     "src/DirectXEffectMgr/Source/DirectXEffect"));
        EXPECT_EQ('\n', line.text.back());
    }
    effect->SetVertexCounts({4, 4});
    effect->SetInstanceCount(3);
    host::log::clear();
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(6u, host::log::errors().size()) << "three per pass, whatever the instances";
    world.setRemovedReason(S_OK);
}

struct RemovedCode {
    uint32_t code;
    const char* name;
};

TEST_F(DrawFaultTest, EachCodeOfALostDeviceHasItsName) {
    const RemovedCode codes[] = {
        {0x887A0001, "0x887a0001 DXGI_ERROR_INVALID_CALL"},
        {0x887A0005, "0x887a0005 DXGI_ERROR_DEVICE_REMOVED"},
        {0x887A0006, "0x887a0006 DXGI_ERROR_DEVICE_HUNG"},
        {0x887A0007, "0x887a0007 DXGI_ERROR_DEVICE_RESET"},
        {0x887A0020, "0x887a0020 DXGI_ERROR_DRIVER_INTERNAL_ERROR"},
        {0x80004005, "0x80004005 SOMETHING_WRONG"},
    };
    ASSERT_EQ(0, init(effect));
    for (const RemovedCode& code : codes) {
        world.setRemovedReason(static_cast<HRESULT>(code.code));
        host::log::clear();
        draw(effect);
        EXPECT_TRUE(host::log::holds(4, std::string("DX error ") + code.name + " at "));
    }
    world.setRemovedReason(S_OK);
}

TEST_F(DrawFaultTest, ADeviceThatRefusesEverythingEndsInErrorsAndNotInACrash) {
    ASSERT_EQ(0, init(effect));
    ASSERT_EQ(0, draw(effect));
    world.remove(static_cast<HRESULT>(0x887A0005));
    EXPECT_EQ(kFail, draw(effect));
    EXPECT_EQ(0, effect->ResizeEffect(20, 20, 80, effect));
    EXPECT_EQ(kFail, draw(effect));
    std::vector<uint8_t> buffer(20 * 20 * 4);
    DrawParams params;
    params.readback_buffer = buffer.data();
    EXPECT_EQ(kFail, draw(effect, params));
    EXPECT_NE(0, init(makeEffectOf("vec4 FUNCNAME(vec2 tc) { return vec4(0.1); }\n")));
    world.remove(S_OK);
    EXPECT_EQ(0, init(effect));
    EXPECT_EQ(0, draw(effect));
}

}  // namespace
