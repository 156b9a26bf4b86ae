#include <gtest/gtest.h>

#include <cstring>

#include "host/fake_host.h"

namespace {

using host::FakeHost;
using host::Mode;

// With the tool chain of these tests a pointer to a virtual member holds 1 plus the byte offset
// of its entry in the virtual table, and the two destructors take two entries.
template <class Method>
int slotOf(Method method) {
    uintptr_t words[2] = {};
    static_assert(sizeof method == sizeof words, "a pointer to a member is two words");
    std::memcpy(words, &method, sizeof words);
    return static_cast<int>((words[0] - 1) / sizeof(void*)) - 1;
}

struct Slot {
    const char* name;
    int slot;
};

void expectConsecutive(const std::vector<Slot>& slots, int first) {
    for (size_t i = 0; i < slots.size(); ++i) {
        EXPECT_EQ(first + static_cast<int>(i), slots[i].slot) << slots[i].name;
    }
}

#define SLOT(interface, name)           \
    Slot {                              \
#name, slotOf(&interface::name) \
    }
#define EFFECT(name) SLOT(IOpenGLEffect, name)
#define ENGINE(name) SLOT(IOpenGLEffectEngine, name)

TEST(InterfaceTableTest, EngineOperationsStandInTheirOrder) {
    const std::vector<Slot> slots = {
        ENGINE(CreateEffect),          ENGINE(PostTask),
        ENGINE(BindTextureData),       ENGINE(ReleaseGpuDataMap),
        ENGINE(IsAutoCreateGLContext), ENGINE(SetIsAutoCreateGLContext),
        ENGINE(SetOwnerThread),        ENGINE(GetDevicePair),
        ENGINE(CleanResourcePool),
    };
    expectConsecutive(slots, 1);
    EXPECT_EQ(9u, slots.size());
}

TEST(InterfaceTableTest, EffectOperations1To50StandInTheirOrder) {
    const std::vector<Slot> slots = {
        EFFECT(AddInput),
        EFFECT(AddFlatInput),
        EFFECT(AddAudioInput),
        EFFECT(InitEffect),
        EFFECT(RegisterParamFloat),
        EFFECT(RegisterParamInt),
        EFFECT(SetShaderDefine),
        EFFECT(SetParamFloatPerPass),
        EFFECT(SetParamFloat),
        EFFECT(SetParamIntPerPass),
        EFFECT(SetParamInt),
        EFFECT(SetInputTexture),
        EFFECT(SetInputTextureList),
        EFFECT(SetInputTextureRef),
        EFFECT(UpdateInputTextureList),
        EFFECT(SetInputTextureNum),
        EFFECT(SetAudioInput),
        EFFECT(DrawEffect),
        EFFECT(ResizeEffect),
        EFFECT(ReadImageFromTex),
        EFFECT(RegisterParamVec2),
        EFFECT(RegisterParamVec3),
        EFFECT(RegisterParamVec4),
        EFFECT(SetParamVec2PerPass),
        EFFECT(SetParamVec2),
        EFFECT(SetParamVec3PerPass),
        EFFECT(SetParamVec3),
        EFFECT(SetParamVec4PerPass),
        EFFECT(SetParamVec4),
        EFFECT(RegisterParamMat2),
        EFFECT(RegisterParamMat3),
        EFFECT(RegisterParamMat4),
        EFFECT(SetParamMat2PerPass),
        EFFECT(SetParamMat2),
        EFFECT(SetParamMat3PerPass),
        EFFECT(SetParamMat3),
        EFFECT(SetParamMat4PerPass),
        EFFECT(SetParamMat4),
        EFFECT(AddFbo),
        EFFECT(SwapFbo),
        EFFECT(GetFbo),
        EFFECT(GetRenderTarget),
        EFFECT(GetOutputTexture),
        EFFECT(SetInstanceCounts),
        EFFECT(SetInstanceCount),
        EFFECT(RegisterParamIntArray),
        EFFECT(RegisterParamFloatArray),
        EFFECT(RegisterParamVec2Array),
        EFFECT(RegisterParamVec3Array),
        EFFECT(RegisterParamVec4Array),
    };
    expectConsecutive(slots, 1);
    EXPECT_EQ(50u, slots.size());
}

TEST(InterfaceTableTest, EffectOperations51To109StandInTheirOrder) {
    const std::vector<Slot> slots = {
        EFFECT(SetParamIntArrayPerPass),
        EFFECT(SetParamIntArray),
        EFFECT(SetParamFloatArrayPerPass),
        EFFECT(SetParamFloatArray),
        EFFECT(SetParamVec2ArrayPerPass),
        EFFECT(SetParamVec2Array),
        EFFECT(SetParamVec3ArrayPerPass),
        EFFECT(SetParamVec3Array),
        EFFECT(SetParamVec4ArrayPerPass),
        EFFECT(SetParamVec4Array),
        EFFECT(RegisterInstanceParamInt),
        EFFECT(RegisterInstanceParamFloat),
        EFFECT(RegisterInstanceParamVec2),
        EFFECT(RegisterInstanceParamVec3),
        EFFECT(RegisterInstanceParamVec4),
        EFFECT(SetInstanceParamIntPerPass),
        EFFECT(SetInstanceParamInt),
        EFFECT(SetInstanceParamFloatPerPass),
        EFFECT(SetInstanceParamFloat),
        EFFECT(SetInstanceParamVec2PerPass),
        EFFECT(SetInstanceParamVec2),
        EFFECT(SetInstanceParamVec3PerPass),
        EFFECT(SetInstanceParamVec3),
        EFFECT(SetInstanceParamVec4PerPass),
        EFFECT(SetInstanceParamVec4),
        EFFECT(GetWidth),
        EFFECT(GetHeight),
        EFFECT(GetPitch),
        EFFECT(SetFragmentShaderPath),
        EFFECT(SetFragmentShaderText),
        EFFECT(SetVertexShaderPath),
        EFFECT(SetVertexShaderText),
        EFFECT(SetInputRect),
        EFFECT(SetVertexAttributes),
        EFFECT(AddVertexAttribute),
        EFFECT(SetVertexCounts),
        EFFECT(SetVertexCount),
        EFFECT(MakeVertexAttribute),
        EFFECT(SetBlendMode),
        EFFECT(SetDepthTest),
        EFFECT(SetDepthWriteList),
        EFFECT(SetCullBack),
        EFFECT(SetMsaa),
        EFFECT(SetClearEnabled),
        EFFECT(SetPrimitiveMode),
        EFFECT(SetClearColor),
        EFFECT(SetFragmentSegmentIndices),
        EFFECT(SetVertexSegmentIndices),
        EFFECT(AddProgram),
        EFFECT(RemoveProgram),
        EFFECT(ConstantTrueSlot),
        EFFECT(SetPassPrograms),
        EFFECT(CreateGpuData),
        EFFECT(ReleaseGpuData),
        EFFECT(ConstantFalseSlot),
        EFFECT(DoTaskPost),
        EFFECT(PostTaskAsync),
        EFFECT(SetUseRenderThread),
        EFFECT(GetEffectDevicePair),
    };
    expectConsecutive(slots, 51);
    EXPECT_EQ(59u, slots.size());
}

// Calls the way a host compiled against its own declarations does: entry number, no names.
template <class Result, class... Args>
Result callSlot(void* object, int slot, Args... args) {
    using Function = Result (*)(void*, Args...);
    Function* table = *static_cast<Function**>(object);
    return table[slot + 1](object, args...);
}

class RawCallTest : public FakeHost {};

TEST_F(RawCallTest, EffectAnswersThroughItsTable) {
    start(Mode::inlined);
    const host::Effect effect = makeEffect();
    void* raw = effect.get();
    EXPECT_EQ(67u, callSlot<uint32_t>(raw, 76));
    EXPECT_EQ(41u, callSlot<uint32_t>(raw, 77));
    EXPECT_EQ(268u, callSlot<uint32_t>(raw, 78));
    EXPECT_EQ(1, callSlot<int32_t>(raw, 101));
    EXPECT_FALSE(callSlot<bool>(raw, 105));
    EXPECT_EQ(engine->GetDevicePair(), callSlot<DevicePair*>(raw, 109));
    EXPECT_EQ(nullptr, callSlot<TextureNum*>(raw, 43));
}

TEST_F(RawCallTest, EngineAnswersThroughItsTable) {
    start(Mode::inlined);
    EXPECT_FALSE(callSlot<bool>(engine, 5));
    EXPECT_EQ(world.device(), callSlot<DevicePair*>(engine, 8)->device);
    EXPECT_EQ(world.immediate(), callSlot<DevicePair*>(engine, 8)->immediate_context);
    EXPECT_TRUE(callSlot<bool>(engine, 9));
}

}  // namespace
