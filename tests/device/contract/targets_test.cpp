#include <gtest/gtest.h>

#include <algorithm>

#include "host/fake_host.h"

namespace {

using host::Effect;
using host::EffectPlan;
using host::FakeHost;
using host::Lines;
using host::Mode;

class TargetsTest : public FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(Mode::inlined);
    }
    Effect effectWith(int extra, bool with_depth = false) {
        EffectPlan plan;
        plan.with_depth = with_depth;
        Effect effect = readyEffect(host::kRed, plan);
        for (int i = 0; i < extra; ++i) {
            EXPECT_EQ(0, effect->AddFbo());
        }
        return effect;
    }
    std::string textureOf(const TextureNum* record) { return world.nameOf(record->colour.texture); }
    size_t texturesMade() { return world.callsOf("CreateTexture2D").size(); }
};

TEST_F(TargetsTest, ExtraTargetsExistFromTheNextDrawOn) {
    const Effect effect = effectWith(2);
    EXPECT_EQ(nullptr, effect->GetFbo(0)->gpu_data);
    EXPECT_EQ(effect->GetFbo(0), effect->GetFbo(1)) << "one shared record of zeros";
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ("texture#2", textureOf(effect->GetFbo(0)));
    EXPECT_EQ("texture#3", textureOf(effect->GetFbo(1)));
    EXPECT_EQ(67u, effect->GetFbo(1)->width);
    EXPECT_EQ(&effect->GetFbo(1)->colour, effect->GetFbo(1)->gpu_data);
}

TEST_F(TargetsTest, SwapExchangesTheTargetOfTheNextDraw) {
    const Effect effect = effectWith(1);
    EXPECT_EQ(0, draw(effect));
    TextureNum* first = effect->GetRenderTarget();
    TextureNum* second = effect->GetFbo(0);
    EXPECT_EQ(0, effect->SwapFbo(0));
    EXPECT_EQ(second, effect->GetRenderTarget());
    EXPECT_EQ(first, effect->GetFbo(0));
    EXPECT_EQ(first, effect->GetOutputTexture()) << "the output is that of the last draw";
    world.clearCalls();
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(second, effect->GetOutputTexture());
    EXPECT_EQ("deferred#1.OMSetRenderTargets([rtv#2], null)",
              world.textsOf("OMSetRenderTargets").at(0));
    EXPECT_EQ(0u, texturesMade());
}

TEST_F(TargetsTest, SwapBeforeTheFirstDraw) {
    const Effect effect = effectWith(1);
    EXPECT_EQ(0, effect->SwapFbo(0));
    EXPECT_EQ(0, draw(effect));
    EXPECT_NE(nullptr, effect->GetOutputTexture());
    EXPECT_NE(effect->GetOutputTexture(), effect->GetFbo(0));
}

TEST_F(TargetsTest, SwapWithoutTheTestSharesOneDepthBuffer) {
    // On purpose: depth buffers are exchanged only with both the depth and its test.
    const Effect effect = effectWith(1, true);
    EXPECT_EQ(0, draw(effect));
    const std::string depth = world.nameOf(effect->GetOutputTexture()->depth_gpu_data->texture);
    EXPECT_EQ(0, effect->SwapFbo(0));
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(depth, world.nameOf(effect->GetOutputTexture()->depth_gpu_data->texture));
}

TEST_F(TargetsTest, SwapWithDepthAndItsTestExchangesTheDepthBufferToo) {
    const Effect effect = effectWith(1, true);
    effect->SetDepthTest(true);
    EXPECT_EQ(0, draw(effect));
    const std::string depth = world.nameOf(effect->GetOutputTexture()->depth_gpu_data->texture);
    EXPECT_EQ(0, effect->SwapFbo(0));
    EXPECT_EQ(0, draw(effect));
    EXPECT_NE(depth, world.nameOf(effect->GetOutputTexture()->depth_gpu_data->texture));
    EXPECT_EQ(0, effect->SwapFbo(0));
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(depth, world.nameOf(effect->GetOutputTexture()->depth_gpu_data->texture));
}

TEST_F(TargetsTest, AResizeMakesTheTargetAnewAndReleasesTheFormerObjects) {
    const Effect effect = effectWith(0);
    EXPECT_EQ(0, draw(effect));
    TextureNum* record = effect->GetOutputTexture();
    EXPECT_EQ(0, effect->ResizeEffect(10, 8, 40, effect));
    EXPECT_EQ("texture#1", textureOf(record)) << "until the next draw";
    world.clearCalls();
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(record, effect->GetOutputTexture()) << "the record stays";
    EXPECT_EQ("texture#2", textureOf(record));
    EXPECT_EQ(10u, record->width);
    EXPECT_EQ(8u, record->height);
    EXPECT_EQ("deferred#1.RSSetViewports(0,0 10x8 0..1)", world.textsOf("RSSetViewports").at(0));
    const Lines live = world.live();
    EXPECT_EQ(0, std::count(live.begin(), live.end(), "texture#1: 1"));
}

TEST_F(TargetsTest, ExtraTargetsOfAFormerSizeComeBack) {
    const Effect effect = effectWith(2);
    EXPECT_EQ(0, draw(effect));
    TextureNum* first = effect->GetFbo(0);
    TextureNum* second = effect->GetFbo(1);
    EXPECT_EQ(0, effect->ResizeEffect(10, 8, 40, effect));
    EXPECT_EQ(0, draw(effect));
    EXPECT_NE(first, effect->GetFbo(0));
    EXPECT_EQ(10u, effect->GetFbo(0)->width);
    EXPECT_EQ("texture#2", textureOf(first)) << "spare records keep their objects";
    EXPECT_EQ(0, effect->ResizeEffect(67, 41, 268, effect));
    world.clearCalls();
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(first, effect->GetFbo(0)) << "the first match in the order of the list";
    EXPECT_EQ(second, effect->GetFbo(1));
    EXPECT_EQ(1u, texturesMade()) << "only the target itself";
}

TEST_F(TargetsTest, ManySizesDoNotMixUpTheSpares) {
    const Effect effect = effectWith(1);
    for (int round = 0; round < 3; ++round) {
        for (const uint32_t side : {8U, 16U, 24U}) {
            EXPECT_EQ(0, effect->ResizeEffect(side, side, side * 4, effect));
            EXPECT_EQ(0, draw(effect));
            EXPECT_EQ(side, effect->GetFbo(0)->width);
            EXPECT_EQ(side, effect->GetOutputTexture()->width);
        }
    }
    // The target anew in each of the nine draws, one extra target per size.
    EXPECT_EQ(12u, texturesMade());
}

TEST_F(TargetsTest, DepthBuffersOfExtraTargetsComeBackToo) {
    const Effect effect = effectWith(1, true);
    effect->SetDepthTest(true);
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(0, effect->ResizeEffect(10, 8, 40, effect));
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(0, effect->ResizeEffect(67, 41, 268, effect));
    world.clearCalls();
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(2u, texturesMade()) << "the target and its depth";
}

TEST_F(TargetsTest, MoreExtraTargetsThanAnyHostAsksFor) {
    const Effect effect = effectWith(300);
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ("texture#301", textureOf(effect->GetFbo(299)));
    EXPECT_EQ(0, effect->SwapFbo(299));
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ("texture#301", textureOf(effect->GetOutputTexture()));
}

TEST_F(TargetsTest, DepthSwitchedOnLaterIsMadeThen) {
    const Effect effect = effectWith(1);
    EXPECT_EQ(0, draw(effect));
    effect->SetDepthTest(true);
    world.clearCalls();
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(1u, texturesMade());
    EXPECT_NE(nullptr, effect->GetOutputTexture()->depth_gpu_data);
}

TEST_F(TargetsTest, TheOutputOfOneEffectFeedsAnother) {
    const Effect source = effectWith(0);
    const Effect sink = makeEffectOf(host::kPass);
    sink->AddFlatInput(67, 41, 268, false);
    ASSERT_EQ(0, init(sink));
    EXPECT_EQ(0, draw(source));
    EXPECT_EQ(0, sink->SetInputTextureNum(0, *source->GetOutputTexture(), 67, 41, 268));
    world.clearCalls();
    EXPECT_EQ(0, draw(sink));
    EXPECT_EQ("deferred#2.PSSetShaderResources(0, [srv#1])",
              world.textsOf("PSSetShaderResources").at(0));
}

}  // namespace
