#include <gtest/gtest.h>

#include <climits>
#include <cstring>

#include "host/fake_host.h"

namespace {

using host::Effect;
using host::EffectPlan;
using host::FakeHost;
using host::Mode;

constexpr int32_t kPointer = static_cast<int32_t>(0x80004003);
constexpr int32_t kInvalidArgument = static_cast<int32_t>(0x80070057);
constexpr int32_t kFail = static_cast<int32_t>(0x80004005);

/// An effect with an image input at 0, an image input at 1 and an audio input at 2.
class ArgumentTest : public FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(Mode::inlined);
        effect = makeEffectOf(host::kPass);
        EXPECT_EQ(0, effect->AddFlatInput(5, 3, 20, false));
        EXPECT_EQ(1, effect->AddFlatInput(5, 3, 20, false));
        EXPECT_EQ(2, effect->AddAudioInput());
    }
    void TearDown() override {
        effect.reset();
        FakeHost::TearDown();
    }
    Effect effect;
    float values[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    uint8_t pixels[64] = {};
};

struct NullName {
    const char* operation;
    int32_t (*call)(IOpenGLEffect& effect, const char* name);
};
void PrintTo(const NullName& row, std::ostream* out) {
    *out << row.operation;
}

const float kSixteen[16] = {};
const std::vector<float*> kNoFloats;
const std::vector<int32_t*> kNoInts;
const std::vector<ParamArray> kNoArrays;

#define CALL(operation, ...)                                                                    \
    NullName {                                                                                  \
#operation, [](IOpenGLEffect & on,                                                      \
                       const char* name) -> int32_t { return on.operation(name, __VA_ARGS__); } \
    }
#define ARRAY_CALLS(type)                                                                          \
    CALL(RegisterParam##type##Array, kSixteen, 1), CALL(SetParam##type##Array, kSixteen, 1),       \
        CALL(SetParam##type##ArrayPerPass, kNoArrays),                                             \
        CALL(RegisterInstanceParam##type, kSixteen, 1), CALL(SetInstanceParam##type, kSixteen, 1), \
        CALL(SetInstanceParam##type##PerPass, kNoArrays)
#define FLOAT_CALLS(type)                                                \
    CALL(RegisterParam##type, kSixteen), CALL(SetParam##type, kSixteen), \
        CALL(SetParam##type##PerPass, kNoFloats)

const NullName kNamedOperations[] = {
    CALL(RegisterParamFloat, 1.0F),
    CALL(RegisterParamInt, 1),
    CALL(SetShaderDefine, "1"),
    CALL(SetParamFloat, 1.0F),
    CALL(SetParamInt, 1),
    CALL(SetParamFloatPerPass, kNoFloats),
    CALL(SetParamIntPerPass, kNoInts),
    FLOAT_CALLS(Vec2),
    FLOAT_CALLS(Vec3),
    FLOAT_CALLS(Vec4),
    FLOAT_CALLS(Mat2),
    FLOAT_CALLS(Mat3),
    FLOAT_CALLS(Mat4),
    ARRAY_CALLS(Int),
    ARRAY_CALLS(Float),
    ARRAY_CALLS(Vec2),
    ARRAY_CALLS(Vec3),
    ARRAY_CALLS(Vec4),
};

class NamedOperationTest : public ArgumentTest, public testing::WithParamInterface<NullName> {};

TEST_P(NamedOperationTest, NullNameIsRefused) {
    EXPECT_EQ(kPointer, GetParam().call(*effect, nullptr));
}

TEST_P(NamedOperationTest, UnknownEmptyAndLongNamesAreAccepted) {
    EXPECT_EQ(0, GetParam().call(*effect, "never_registered"));
    EXPECT_EQ(0, GetParam().call(*effect, std::string(5000, 'n').c_str()));
}

INSTANTIATE_TEST_SUITE_P(All, NamedOperationTest, testing::ValuesIn(kNamedOperations),
                         [](const testing::TestParamInfo<NullName>& row) {
                             return std::string(row.param.operation);
                         });

TEST_F(ArgumentTest, NullValuesAreRegisteredAndSetWithoutACrash) {
    EXPECT_EQ(0, effect->RegisterParamVec2("v", nullptr));
    EXPECT_EQ(0, effect->RegisterParamMat4("m", nullptr));
    EXPECT_EQ(0, effect->SetParamVec2("v", nullptr));
    EXPECT_EQ(0, effect->SetParamMat4("m", nullptr));
    EXPECT_EQ(0, effect->RegisterParamFloatArray("a", nullptr, 4));
    EXPECT_EQ(0, effect->RegisterInstanceParamVec3("i", nullptr, 4));
    EXPECT_EQ(0, effect->SetParamFloatPerPass("f", {nullptr, nullptr}));
    effect->SetInstanceCount(2);
    EXPECT_EQ(0, init(effect)) << host::log::all();
    EXPECT_EQ(0, draw(effect));
}

TEST_F(ArgumentTest, NullPointersInAPerPassListAreNotRead) {
    effect->RegisterParamFloat("f", 1);
    effect->RegisterParamVec4("v", values);
    effect->RegisterParamIntArray("a", values, 2);
    EXPECT_EQ(0, init(effect)) << host::log::all();
    EXPECT_EQ(0, effect->SetParamFloatPerPass("f", {nullptr}));
    EXPECT_EQ(0, effect->SetParamVec4PerPass("v", {}));
    EXPECT_EQ(0, effect->SetParamIntArrayPerPass("a", {}));
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(0, effect->SetParamFloat("f", 2));
    EXPECT_EQ(0, effect->SetParamVec4("v", values));
    EXPECT_EQ(0, effect->SetParamIntArray("a", values, 2));
    EXPECT_EQ(0, draw(effect));
}

class BadIndexTest : public ArgumentTest, public testing::WithParamInterface<int32_t> {};

TEST_P(BadIndexTest, ImageOperationsRefuse) {
    const int32_t index = GetParam();
    EXPECT_EQ(1, effect->SetInputTexture(index, pixels, 2, 2, 8, 4, false, 0));
    EXPECT_EQ(1, effect->SetInputTextureRef(index, pixels, 2, 2, 8, 4, false, 0, 0, 0));
    EXPECT_EQ(1, effect->SetInputTextureList(index, std::vector<InputTexture>(1)));
    EXPECT_EQ(1, effect->UpdateInputTextureList(index, std::vector<InputTexture>(1)));
    GpuData data;
    TextureNum texture;
    texture.gpu_data = &data;
    EXPECT_EQ(1, effect->SetInputTextureNum(index, texture, 2, 2, 8));
    EXPECT_EQ(kInvalidArgument, effect->SetInputRect(index, values));
}

// -1, one past the end, far out, and the audio input: no image input stands at any of them.
INSTANTIATE_TEST_SUITE_P(Indices, BadIndexTest, testing::Values(-1, 2, 3, INT_MAX, INT_MIN));

class BadAudioIndexTest : public ArgumentTest, public testing::WithParamInterface<int32_t> {};

TEST_P(BadAudioIndexTest, SetAudioInputRefuses) {
    EXPECT_EQ(1, effect->SetAudioInput(GetParam(), 4, values));
}

INSTANTIATE_TEST_SUITE_P(Indices, BadAudioIndexTest,
                         testing::Values(-1, 0, 1, 3, INT_MAX, INT_MIN));

TEST_F(ArgumentTest, GoodIndicesAreAccepted) {
    EXPECT_EQ(0, effect->SetInputTexture(1, pixels, 2, 2, 8, 4, false, 0));
    EXPECT_EQ(0, effect->SetInputTextureRef(0, pixels, 2, 2, 8, 4, false, 0, 7, 8));
    EXPECT_EQ(0, effect->SetInputRect(0, values));
    EXPECT_EQ(0, effect->SetAudioInput(2, 4, values));
    EXPECT_EQ(0, effect->SetAudioInput(2, 0, nullptr));
}

TEST_F(ArgumentTest, NullPicturesAndEmptyListsAreRefused) {
    EXPECT_EQ(1, effect->SetInputTexture(0, nullptr, 2, 2, 8, 4, false, 0));
    EXPECT_EQ(1, effect->SetInputTextureRef(0, nullptr, 2, 2, 8, 4, false, 0, 0, 0));
    EXPECT_EQ(1, effect->SetInputTextureList(0, {}));
    EXPECT_EQ(1, effect->UpdateInputTextureList(0, {}));
    EXPECT_EQ(1, effect->SetInputTextureNum(0, TextureNum(), 2, 2, 8));
    EXPECT_TRUE(host::log::errors().empty()) << "refused without a message";
    EXPECT_EQ(kInvalidArgument, effect->SetInputRect(0, nullptr));
}

TEST_F(ArgumentTest, AHandleWithZeroInItsLowHalfIsRefusedWithoutAMessage) {
    // On purpose: hosts keep a 32-bit texture name in that place, and 0 means none.
    TextureNum texture;
    const uint64_t address = uint64_t{1} << 32;
    std::memcpy(&texture.gpu_data, &address, sizeof address);
    EXPECT_EQ(1, effect->SetInputTextureNum(0, texture, 2, 2, 8));
    EXPECT_TRUE(host::log::errors().empty());
}

TEST_F(ArgumentTest, AnAudioInputFirstMakesTheIndexOfAnImageOneTooSmall) {
    // On purpose: AddFlatInput counts image inputs alone.
    const Effect other = makeEffectOf(host::kPass);
    EXPECT_EQ(0, other->AddAudioInput());
    EXPECT_EQ(0, other->AddFlatInput(5, 3, 20, false));
    EXPECT_EQ(2, other->AddAudioInput());
    EXPECT_EQ(1, other->SetInputTexture(0, pixels, 2, 2, 8, 4, false, 0));
    EXPECT_EQ(0, other->SetInputTexture(1, pixels, 2, 2, 8, 4, false, 0));
}

TEST_F(ArgumentTest, ConstantSlotsAndEmptyLists) {
    EXPECT_EQ(1, effect->ConstantTrueSlot());
    EXPECT_FALSE(effect->ConstantFalseSlot());
    EXPECT_EQ(1, effect->SetVertexAttributes({}));
    EXPECT_EQ(0, effect->SetVertexCounts({}));
    EXPECT_EQ(0, effect->SetInstanceCounts({}));
    EXPECT_EQ(0, effect->SetDepthWriteList({}));
    effect->SetDepthTest(true);
    EXPECT_EQ(0, init(effect));
    EXPECT_EQ(0, draw(effect)) << "no passes: targets and state only";
    EXPECT_TRUE(world.callsOf("Draw").empty());
}

TEST_F(ArgumentTest, EmptyListsBesidePassesStandForTheirDefaults) {
    effect->SetInstanceCounts({});
    effect->SetDepthWriteList({});
    effect->SetDepthTest(true);
    EXPECT_EQ(0, init(effect));
    EXPECT_EQ(0, draw(effect));
    EXPECT_EQ(1u, world.callsOf("Draw").size());
}

TEST_F(ArgumentTest, NumbersOfExtraTargetsOutOfRange) {
    for (const int32_t number : {-1, 0, 1, 256, INT_MAX, INT_MIN}) {
        EXPECT_EQ(1, effect->SwapFbo(number)) << number;
        TextureNum* record = effect->GetFbo(number);
        ASSERT_NE(nullptr, record) << number;
        EXPECT_EQ(nullptr, record->gpu_data);
        EXPECT_EQ(0u, record->width);
    }
    effect->AddFbo();
    EXPECT_EQ(0, effect->SwapFbo(0));
    EXPECT_EQ(1, effect->SwapFbo(1));
    EXPECT_EQ(1, effect->SwapFbo(-1));
}

TEST_F(ArgumentTest, NullsOfTheGpuDataOperations) {
    EXPECT_EQ(nullptr, effect->CreateGpuData(nullptr));
    effect->ReleaseGpuData(nullptr);
    EXPECT_FALSE(effect->ReadImageFromTex(TextureNum(), 67, 41, 268, pixels));
    EXPECT_FALSE(effect->AddProgram(nullptr, nullptr, nullptr));
    EXPECT_FALSE(effect->RemoveProgram(nullptr));
}

TEST_F(ArgumentTest, NumbersOfPrograms) {
    int32_t number = 1;
    EXPECT_FALSE(effect->AddProgram(&number, host::kRed, nullptr));
    EXPECT_EQ(1, number);
    for (const int32_t bad : {1, 0, -1, INT_MIN}) {
        number = bad;
        EXPECT_FALSE(effect->RemoveProgram(&number));
        EXPECT_EQ(bad, number);
    }
    number = 77;
    EXPECT_TRUE(effect->RemoveProgram(&number));
    EXPECT_EQ(0, number);
}

TEST_F(ArgumentTest, TheQueryOfAnEffectThatIsNoEffectIsRefused) {
    EXPECT_EQ(kFail, effect->InitEffect(nullptr));
    EXPECT_EQ(kFail, effect->DrawEffect(DrawParams(), nullptr, 0));
    EXPECT_NE(0, effect->ResizeEffect(10, 10, 40, nullptr));
}

TEST_F(ArgumentTest, MakeVertexAttributeFillsTheRecordAndCutsTheName) {
    const VertexAttribute plain = effect->MakeVertexAttribute("pos", 3, values, true, false, 9);
    EXPECT_STREQ("pos", plain.name);
    EXPECT_EQ(3u, plain.components);
    EXPECT_EQ(values, plain.data);
    EXPECT_TRUE(plain.dirty);
    EXPECT_FALSE(plain.is_element);
    EXPECT_EQ(9, plain.count);
    EXPECT_EQ(0u, plain.reserved);
    const VertexAttribute list = effect->MakeVertexAttribute("pos", 3, values, false, true, 2);
    EXPECT_STREQ("element", list.name);
    const std::string longer(300, 'x');
    const VertexAttribute cut =
        effect->MakeVertexAttribute(longer.c_str(), 3, values, false, false, 2);
    EXPECT_EQ(std::string(127, 'x'), cut.name);
    EXPECT_STREQ("", effect->MakeVertexAttribute(nullptr, 1, nullptr, false, false, 0).name);
}

TEST_F(ArgumentTest, NullPathsTextsAndOwnersOfCreateEffect) {
    Effect other;
    EXPECT_EQ(0, engine->CreateEffect(8, 8, 32, false, nullptr, other, 0, nullptr, {}, {}));
    ASSERT_NE(nullptr, other);
    EXPECT_EQ(0, other->SetFragmentShaderPath(nullptr));
    EXPECT_EQ(0, other->SetFragmentShaderText(nullptr));
    EXPECT_EQ(0, other->SetVertexShaderPath(nullptr));
    EXPECT_EQ(0, other->SetVertexShaderText(nullptr));
    EXPECT_EQ(kFail, init(other));
}

TEST_F(ArgumentTest, CreateEffectReleasesWhatItsOutPointerHeld) {
    Effect other = makeEffect();
    const std::weak_ptr<IOpenGLEffect> former = other;
    EXPECT_EQ(0, engine->CreateEffect(8, 8, 32, false, "", other, 0, "", {}, {}));
    EXPECT_TRUE(former.expired());
}

TEST_F(ArgumentTest, SizesOfNothingAndOfEverything) {
    for (const uint32_t side : {0U, 20000U, UINT_MAX}) {
        EffectPlan plan;
        plan.width = plan.height = side;
        const Effect odd = makeEffectOf(host::kRed, plan);
        EXPECT_EQ(0, init(odd));
        uint32_t one_pixel[4] = {};
        DrawParams params;
        draw(odd, params);
        params.readback_buffer = one_pixel;
        EXPECT_EQ(kFail, draw(odd, params)) << side;
        EXPECT_EQ(0, odd->ResizeEffect(2, 1, 8, odd));
        EXPECT_EQ(0, draw(odd)) << "works once the size is a size";
    }
}

TEST_F(ArgumentTest, BlendModesPrimitiveModesAndCountsOutOfRange) {
    EXPECT_EQ(0, init(effect));
    for (const int32_t mode : {-1, 6, INT_MAX, INT_MIN}) {
        effect->SetBlendMode(mode);
        EXPECT_EQ(0, draw(effect)) << mode;
    }
    EXPECT_TRUE(world.callsOf("CreateBlendState").empty());
    for (const int32_t mode : {-1, 4, INT_MAX, INT_MIN}) {
        host::log::clear();
        effect->SetPrimitiveMode(mode);
        draw(effect);
        EXPECT_EQ(1u, host::log::errors().size()) << mode;
    }
    effect->SetPrimitiveMode(0);
    EXPECT_EQ(0, draw(effect));
}

TEST_F(ArgumentTest, VertexCountsBelowOneDrawNothingWorse) {
    EXPECT_EQ(0, init(effect));
    effect->SetVertexCount(0);
    draw(effect);
    effect->SetVertexCount(-5);
    draw(effect);
    effect->SetVertexCount(4);
    EXPECT_EQ(0, draw(effect));
}

}  // namespace
