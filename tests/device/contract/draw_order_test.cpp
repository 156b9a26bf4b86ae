#include <gtest/gtest.h>

#include <tuple>

#include "host/fake_host.h"
#include "host/model_host.h"

namespace {

using host::Effect;
using host::Lines;
using host::Mode;
using host::ModelHost;
using model::DrawShape;

class DrawOrderTest : public ModelHost {};

// Every combination of what decides the order of a draw; each is drawn twice, since the first
// draw also makes what the second one finds.
using Flags = std::tuple<bool, bool, bool, int32_t, bool, bool, bool>;

class DrawCombinationTest : public ModelHost, public testing::WithParamInterface<Flags> {};

TEST_P(DrawCombinationTest, CallsTheDeviceInOrder) {
    DrawShape shape;
    std::tie(shape.depth_test, shape.with_depth, shape.msaa, shape.blend_mode, shape.clear,
             shape.dest, shape.readback) = GetParam();
    shape.clear_color = {0.25F, 0.5F, 0.75F, 1};
    expectDraws(shape, 2);
}

std::string flagsName(const testing::TestParamInfo<Flags>& info) {
    const auto [depth_test, with_depth, msaa, blend, clear, dest, readback] = info.param;
    return std::string(depth_test ? "Tested" : "") + (with_depth ? "WithDepth" : "") +
           (msaa ? "Msaa" : "") + "Blend" + std::to_string(blend) + (clear ? "Clear" : "Keep") +
           (dest ? "Dest" : "") + (readback ? "Readback" : "");
}

INSTANTIATE_TEST_SUITE_P(All, DrawCombinationTest,
                         testing::Combine(testing::Bool(), testing::Bool(), testing::Bool(),
                                          testing::Values(0, 1, 2, 3, 4, 5), testing::Bool(),
                                          testing::Bool(), testing::Bool()),
                         flagsName);

TEST_F(DrawOrderTest, SeveralPassesUseTheSameBuffersAndTheirOwnDepthWrite) {
    DrawShape shape;
    shape.depth_test = true;
    shape.vertex_counts = {4, 4, 3};
    shape.depth_write = {true, false};
    expectDraws(shape, 2);
}

TEST_F(DrawOrderTest, InstancesUploadAndDrawInTurn) {
    DrawShape shape;
    shape.instance_counts = {3};
    expectDraws(shape, 2);
}

TEST_F(DrawOrderTest, InstancesPerPassAndTheFirstEntryForTheRest) {
    DrawShape shape;
    shape.vertex_counts = {4, 4, 4};
    shape.instance_counts = {2, -1};
    expectDraws(shape, 1);
}

TEST_F(DrawOrderTest, AnElementListWithACountOfItsOwn) {
    DrawShape shape;
    shape.element = true;
    shape.element_count = 2;
    shape.primitive_mode = 1;
    expectDraws(shape, 2);
}

TEST_F(DrawOrderTest, AnElementListWithoutACountFollowsTheVertices) {
    DrawShape shape;
    shape.element = true;
    shape.element_components = 1;
    shape.element_count = 0;
    expectDraws(shape, 1);
}

TEST_F(DrawOrderTest, ModeTwoWithoutAnElementListDrawsNoIndices) {
    // On purpose: mode 2 always draws by indices, hosts that give none see nothing.
    DrawShape shape;
    shape.primitive_mode = 2;
    expectDraws(shape, 1);
}

TEST_F(DrawOrderTest, ModesOneAndThreeDrawByVertices) {
    DrawShape shape;
    shape.primitive_mode = 1;
    expectDraws(shape, 1);
    shape.primitive_mode = 3;
    expectDrawsOfNewEffect(shape, 1);
}

TEST_F(DrawOrderTest, CullingChangesTheRasterizerStateOnly) {
    DrawShape shape;
    shape.cull_back = true;
    expectDraws(shape, 1);
}

TEST_F(DrawOrderTest, InputsGoToTheirPositionsAndAreUnboundBehindThePasses) {
    DrawShape shape;
    shape.inputs = {{false, 5, 3, 20}, {false, 9, 2, 40}, {true, 7, 1, 7}};
    expectDraws(shape, 3);
}

TEST_F(DrawOrderTest, ExtraTargetsAreMadeBehindTheFirstAndWithoutDepthUnlessBothAskForIt) {
    DrawShape shape;
    shape.extra_targets = 2;
    shape.depth_test = true;
    expectDraws(shape, 2);
}

TEST_F(DrawOrderTest, ExtraTargetsWithDepthAndMsaa) {
    DrawShape shape;
    shape.extra_targets = 2;
    shape.depth_test = true;
    shape.with_depth = true;
    shape.msaa = true;
    expectDraws(shape, 2);
}

TEST_F(DrawOrderTest, WithExtraTargetsTheDestinationIsNotDrawnOver) {
    DrawShape shape;
    shape.extra_targets = 1;
    shape.clear = false;
    shape.dest = true;
    expectDraws(shape, 1);
}

TEST_F(DrawOrderTest, EverythingAtOnce) {
    DrawShape shape;
    shape.depth_test = true;
    shape.with_depth = true;
    shape.msaa = true;
    shape.blend_mode = 4;
    shape.cull_back = true;
    shape.primitive_mode = 1;
    shape.vertex_counts = {4, 4};
    shape.instance_counts = {2, 0};
    shape.depth_write = {false, true};
    shape.element = true;
    shape.element_count = 1;
    shape.extra_targets = 1;
    shape.inputs = {{false, 5, 3, 20}};
    shape.dest = true;
    shape.readback = true;
    expectDraws(shape, 3);
}

TEST_F(DrawOrderTest, ThreadedModeMakesTheSameCalls) {
    mode = Mode::threaded;
    DrawShape shape;
    shape.with_depth = true;
    shape.readback = true;
    expectDraws(shape, 2);
}

}  // namespace
