#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "host/fake_host.h"

namespace {

using host::Effect;
using host::FakeHost;
using host::Lines;
using host::Mode;

const char kPosVertex[] =
    "in vec3 pos;\nin vec2 uv2;\nin float weight;\n"
    "void main()\n{\n"
    "    gl_Position = vec4(pos.xy + uv2 * weight, pos.z, 1.0);\n"
    "    tc = uv2;\n"
    "}\n";

class VertexDataTest : public FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(Mode::inlined);
    }
    Effect customEffect() {
        Effect effect = makeEffectOf(host::kRed);
        effect->SetVertexShaderText(kPosVertex);
        EXPECT_EQ(0, init(effect)) << host::log::all();
        world.clearCalls();
        return effect;
    }
    VertexAttribute record(const char* name, uint32_t components, const void* data, bool dirty) {
        VertexAttribute made{};
        std::strncpy(made.name, name, sizeof made.name - 1);
        made.components = components;
        made.data = data;
        made.dirty = dirty;
        return made;
    }
    static std::string vertexBuffer(int bytes) {
        return std::to_string(bytes) +
               " bytes usage=DEFAULT bind=VERTEX_BUFFER cpu=0 misc=0 stride=0 data";
    }
    float values[64] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
};

TEST_F(VertexDataTest, LayoutFollowsTheShadersInputsAndTheAttributesComponents) {
    const Effect effect = customEffect();
    effect->AddVertexAttribute("pos", 3, values, false, false, 0);
    effect->AddVertexAttribute("uv2", 2, values, false, false, 0);
    effect->AddVertexAttribute("weight", 1, values, false, false, 0);
    EXPECT_EQ(0, draw(effect));
    // The preludes declare position and texcoord; a name with a digit at its end gets "_".
    ASSERT_EQ(1u, world.callsOf("CreateInputLayout").size());
    const std::string layout = world.callsOf("CreateInputLayout")[0].arguments;
    EXPECT_NE(std::string::npos, layout.find("pos/0:R32G32B32_FLOAT@"));
    EXPECT_NE(std::string::npos, layout.find("uv2_/0:R32G32_FLOAT@"));
    EXPECT_NE(std::string::npos, layout.find("weight/0:R32_FLOAT@"));
    EXPECT_EQ(
        "position/0:R32G32_FLOAT@0+0 class 0/0, texcoord/0:R32G32_FLOAT@1+0 class 0/0, "
        "pos/0:R32G32B32_FLOAT@2+0 class 0/0, uv2_/0:R32G32_FLOAT@3+0 class 0/0, "
        "weight/0:R32_FLOAT@4+0 class 0/0",
        layout);
}

TEST_F(VertexDataTest, BuffersGoToTheSlotOfTheirParameter) {
    const Effect effect = customEffect();
    effect->AddVertexAttribute("pos", 3, values, false, false, 0);
    effect->AddVertexAttribute("uv2", 2, values, false, false, 0);
    EXPECT_EQ(0, draw(effect));
    // In the order of the names: pos, position, texcoord, uv2.
    EXPECT_EQ((Lines{"deferred#1.IASetVertexBuffers(2, [buffer#2] stride 12 offset 0)",
                     "deferred#1.IASetVertexBuffers(0, [buffer#3] stride 8 offset 0)",
                     "deferred#1.IASetVertexBuffers(1, [buffer#4] stride 8 offset 0)",
                     "deferred#1.IASetVertexBuffers(3, [buffer#5] stride 8 offset 0)"}),
              world.textsOf("IASetVertexBuffers"));
}

TEST_F(VertexDataTest, AnInputWithoutAnAttributeKeepsAnElementOfUnknownFormat) {
    const Effect effect = customEffect();
    EXPECT_EQ(0, draw(effect));
    ASSERT_EQ(1u, world.textsOf("CreateInputLayout").size());
    const std::string call = world.textsOf("CreateInputLayout")[0];
    EXPECT_NE(std::string::npos, call.find("pos/0:UNKNOWN@2+0 class 0/0"));
    EXPECT_NE(std::string::npos, call.find("-> 0x80070057")) << "the device refuses it";
    EXPECT_EQ("deferred#1.IASetInputLayout(null)", world.textsOf("IASetInputLayout").at(0));
}

TEST_F(VertexDataTest, AnAttributeThatNoInputTakesIsNotBound) {
    const Effect effect = readyEffect();
    effect->AddVertexAttribute("stranger", 4, values, false, false, 0);
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(2u, world.callsOf("IASetVertexBuffers").size());
    EXPECT_EQ(3, world.counts().at("CreateBuffer")) << "its buffer is made all the same";
}

TEST_F(VertexDataTest, AnOddNumberOfComponentsIsReported) {
    const Effect effect = readyEffect();
    effect->AddVertexAttribute("position", 5, values, false, false, 0);
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ("inputElementDesc length is not supported!", host::log::errors().at(0));
}

TEST_F(VertexDataTest, AnAttributeIsFilledOnceAndAgainWhenDirty) {
    const Effect effect = readyEffect();
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(2, world.counts().at("CreateBuffer"));
    values[0] = 42;
    effect->AddVertexAttribute("position", 2, values, true, false, 0);
    world.clearCalls();
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(1, world.counts().at("CreateBuffer"));
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(1, world.counts().at("CreateBuffer")) << "filled, and no longer dirty";
}

TEST_F(VertexDataTest, ABufferHoldsTheHostsBytes) {
    const Effect effect = readyEffect();
    effect->AddVertexAttribute("position", 2, values, true, false, 0);
    EXPECT_EQ(0, draw(effect));
    const std::vector<uint8_t> bytes = world.bytesOfName("buffer#2");
    ASSERT_EQ(32u, bytes.size());
    EXPECT_EQ(0, std::memcmp(bytes.data(), values, 32));
}

TEST_F(VertexDataTest, NullDataMakesNoBuffer) {
    const Effect effect = readyEffect();
    effect->AddVertexAttribute("position", 2, nullptr, true, false, 0);
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(1u, world.callsOf("IASetVertexBuffers").size());
}

TEST_F(VertexDataTest, DirtyWithNullDataReleasesTheBuffer) {
    const Effect effect = readyEffect();
    EXPECT_EQ(0, draw(effect));
    const size_t before = world.live().size();
    effect->AddVertexAttribute("position", 2, nullptr, true, false, 0);
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(before - 1, world.live().size());
}

TEST_F(VertexDataTest, AnElementListIsNamedElementWhateverItsName) {
    const Effect effect = readyEffect();
    const uint32_t indices[6] = {0, 1, 2, 2, 1, 3};
    effect->AddVertexAttribute("zzz", 3, indices, false, true, 2);
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ((Lines{"deferred#1.IASetIndexBuffer(buffer#2, R32_UINT, 0)"}),
              world.textsOf("IASetIndexBuffer"));
    EXPECT_EQ((Lines{"deferred#1.DrawIndexed(6, 0, 0)"}), world.textsOf("DrawIndexed"));
    const std::vector<uint8_t> bytes = world.bytesOfName("buffer#2");
    ASSERT_EQ(24u, bytes.size());
    EXPECT_EQ(0, std::memcmp(bytes.data(), indices, 24));
}

TEST_F(VertexDataTest, AVertexAttributeCalledElementIsSkipped) {
    const Effect effect = readyEffect();
    effect->AddVertexAttribute("element", 2, values, false, false, 0);
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(2, world.counts().at("CreateBuffer"));
    EXPECT_EQ(1u, world.callsOf("Draw").size());
}

TEST_F(VertexDataTest, SetVertexAttributesGivesEachPassItsData) {
    const Effect effect = readyEffect();
    effect->SetVertexCounts({4, 3});
    EXPECT_EQ(0, effect->SetVertexAttributes({record("position", 2, values, true),
                                              record("position", 2, values + 8, true)}));
    EXPECT_EQ(0, draw(effect));
    Lines made;
    for (const fake::Call& call : world.callsOf("CreateBuffer")) {
        made.push_back(call.arguments);
    }
    // position and texcoord of the first pass, position of the second.
    EXPECT_EQ((Lines{vertexBuffer(32), vertexBuffer(32), vertexBuffer(24)}), made);
    EXPECT_EQ((Lines{"deferred#1.IASetVertexBuffers(0, [buffer#2] stride 8 offset 0)",
                     "deferred#1.IASetVertexBuffers(1, [buffer#3] stride 8 offset 0)",
                     "deferred#1.IASetVertexBuffers(0, [buffer#4] stride 8 offset 0)",
                     "deferred#1.IASetVertexBuffers(1, [buffer#3] stride 8 offset 0)"}),
              world.textsOf("IASetVertexBuffers"))
        << "an attribute with fewer entries than passes keeps its first";
}

TEST_F(VertexDataTest, AListAsLongTakesTheBuffersOver) {
    const Effect effect = readyEffect();
    EXPECT_EQ(0, draw(effect));
    world.clearCalls();
    EXPECT_EQ(0, effect->SetVertexAttributes({record("position", 2, values, false)}));
    EXPECT_EQ(0, draw(effect));
    EXPECT_TRUE(world.callsOf("CreateBuffer").empty());
    EXPECT_EQ("deferred#1.IASetVertexBuffers(0, [buffer#2] stride 8 offset 0)",
              world.textsOf("IASetVertexBuffers").at(0));
}

TEST_F(VertexDataTest, AShorterListRetiresTheRestUntilADrawOfSeveralPasses) {
    const Effect effect = readyEffect();
    effect->SetVertexCounts({4, 4});
    effect->SetVertexAttributes(
        {record("position", 2, values, true), record("position", 2, values, true)});
    EXPECT_EQ(0, draw(effect));  // buffers 2 (position), 3 (texcoord), 4 (position of pass 1)
    EXPECT_EQ(0, effect->SetVertexAttributes({record("position", 2, values, false)}));
    effect->SetVertexCounts({4});
    EXPECT_EQ(0, draw(effect));
    const auto holds = [this](const char* name) {
        const Lines live = world.live();
        return std::find(live.begin(), live.end(), std::string(name) + ": 1") != live.end();
    };
    EXPECT_TRUE(holds("buffer#4")) << "a draw of one pass leaves it";
    effect->SetVertexCounts({4, 4});
    EXPECT_EQ(0, draw(effect));
    EXPECT_FALSE(holds("buffer#4"));
    EXPECT_TRUE(holds("buffer#2"));
}

TEST_F(VertexDataTest, AnElementListPerPass) {
    const Effect effect = readyEffect();
    const uint32_t indices[12] = {0, 1, 2, 2, 1, 3, 0, 1, 2};
    VertexAttribute first = record("element", 3, indices, false);
    first.is_element = true;
    first.count = 2;
    VertexAttribute second = first;
    second.count = 1;
    effect->SetVertexCounts({4, 4});
    EXPECT_EQ(0, effect->SetVertexAttributes({first, second}));
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ((Lines{"deferred#1.DrawIndexed(6, 0, 0)", "deferred#1.DrawIndexed(3, 0, 0)"}),
              world.textsOf("DrawIndexed"));
}

TEST_F(VertexDataTest, ANameWithoutATerminatorIsCut) {
    const Effect effect = readyEffect();
    VertexAttribute bad{};
    std::memset(bad.name, 'x', sizeof bad.name);
    bad.components = 2;
    EXPECT_EQ(0, effect->SetVertexAttributes({bad}));
    EXPECT_EQ(0, draw(effect));
}

TEST_F(VertexDataTest, FiveCountsDrawFivePasses) {
    const Effect effect = readyEffect();
    effect->SetVertexCounts({4, 3, 2, 1, 0});
    draw(effect);
    EXPECT_EQ("deferred#1.Draw(4, 0)", world.textsOf("Draw").at(0));
    EXPECT_EQ("deferred#1.Draw(1, 0)", world.textsOf("Draw").at(3));
    effect->SetVertexCount(3);
    world.clearCalls();
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ((Lines{"deferred#1.Draw(3, 0)"}), world.textsOf("Draw"));
}

}  // namespace
