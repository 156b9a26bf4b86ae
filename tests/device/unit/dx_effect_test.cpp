#include "DirectXEffectMgr/Source/dx_effect.h"

#include <d3d11.h>
#include <gtest/gtest.h>

#include <cstring>

#include "DirectXEffectMgr/Source/logging/logging.h"
#include "fake/world.h"
#include "host/log_capture.h"

namespace {

using Lines = std::vector<std::string>;

class DXEffectTest : public testing::Test {
protected:
    void SetUp() override {
        host::log::clear();
        set_log_callback(host::log::receive);
        ASSERT_EQ(S_OK, world.device()->CreateDeferredContext(0, &context));
        world.clearCalls();
    }
    void TearDown() override {
        effect.reset();
        if (context != nullptr) {
            context->Release();
        }
        EXPECT_EQ(Lines(), world.live());
        EXPECT_EQ(Lines(), world.errors());
    }
    void create() { effect->create_param_buffer(world.device(), &context); }
    void upload(int32_t pass = 0) { effect->upload_parameters(0, "", nullptr, pass); }
    void uploadInstance(int32_t instance, int32_t pass = 0) {
        effect->upload_instance_parameters(0, "", nullptr, instance, pass);
    }
    float floatAt(size_t offset) {
        float value = -1;
        std::memcpy(&value, effect->param_bytes.data() + offset, sizeof value);
        return value;
    }
    std::vector<float> floatsAt(size_t offset, size_t count) {
        std::vector<float> values;
        for (size_t i = 0; i < count; ++i) {
            values.push_back(floatAt(offset + i * 4));
        }
        return values;
    }
    std::string bufferCall(int bytes, const char* name) {
        return "device.CreateBuffer(" + std::to_string(bytes) +
               " bytes usage=DYNAMIC bind=CONSTANT_BUFFER cpu=WRITE misc=0 stride=0) -> " + name;
    }

    fake::World world;
    ID3D11DeviceContext* context = nullptr;
    std::unique_ptr<DXEffect> effect = std::make_unique<DXEffect>();
    float numbers[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
};

TEST_F(DXEffectTest, NamesItself) {
    EXPECT_EQ("DirectXEffect", effect->type_name());
}

TEST_F(DXEffectTest, TheBufferHasTheSizeOfTheLayout) {
    int32_t mode = 1;
    effect->register_int("mode", &mode);
    effect->add_define("USE_X", "1");
    effect->register_float("amount", numbers);
    effect->register_vec2("iResolution", numbers);
    effect->register_vec2("iResolutionOrig", numbers);
    effect->register_vec3("tint", numbers);
    effect->register_mat3("m", numbers);
    effect->register_float_array("w", numbers, 4);
    create();
    // 116 bytes of members, rounded up.
    EXPECT_EQ((Lines{bufferCall(128, "buffer#1")}), world.texts());
    EXPECT_EQ(128u, effect->param_bytes.size());
}

TEST_F(DXEffectTest, AMultipleOfSixteenIsNotPaddedFurther) {
    effect->register_vec4("v", numbers);
    create();
    EXPECT_EQ((Lines{bufferCall(16, "buffer#1")}), world.texts());
}

TEST_F(DXEffectTest, CreatingAgainReplacesTheBuffer) {
    effect->register_vec4("v", numbers);
    create();
    effect->register_mat4("m", numbers);
    create();
    EXPECT_EQ((Lines{bufferCall(16, "buffer#1"), bufferCall(80, "buffer#2")}), world.texts());
    EXPECT_EQ((Lines{"deferred#1: 1", "buffer#2: 1"}), world.live());
}

TEST_F(DXEffectTest, AFailedBufferIsReportedAndUploadsFillTheShadowAlone) {
    effect->register_vec4("v", numbers);
    world.failNth("CreateBuffer", 1);
    create();
    EXPECT_EQ((Lines{"Create pParamBuffer error!"}), host::log::errors());
    world.clearCalls();
    upload();
    EXPECT_EQ(Lines(), world.texts());
    EXPECT_EQ((std::vector<float>{1, 2, 3, 4}), floatsAt(0, 4));
}

TEST_F(DXEffectTest, NothingRegisteredGivesTheSameMessage) {
    create();
    EXPECT_EQ((Lines{"Create pParamBuffer error!"}), host::log::errors());
    upload();
}

TEST_F(DXEffectTest, WithoutAContextTheShadowAloneIsFilled) {
    effect->register_vec4("v", numbers);
    ID3D11DeviceContext* none = nullptr;
    effect->create_param_buffer(world.device(), &none);
    world.clearCalls();
    upload();
    EXPECT_EQ(Lines(), world.texts());
    EXPECT_EQ((std::vector<float>{1, 2, 3, 4}), floatsAt(0, 4));
    effect->create_param_buffer(world.device(), nullptr);
    upload();
}

TEST_F(DXEffectTest, AnUploadMapsCopiesAllAndBindsPixelStageFirst) {
    effect->register_vec4("v", numbers);
    create();
    world.clearCalls();
    upload();
    EXPECT_EQ(
        (Lines{"deferred#1.Map(buffer#1, 0, WRITE_DISCARD, 0)", "deferred#1.Unmap(buffer#1, 0)",
               "deferred#1.PSSetConstantBuffers(0, [buffer#1])",
               "deferred#1.VSSetConstantBuffers(0, [buffer#1])"}),
        world.texts());
    EXPECT_EQ(effect->param_bytes, world.callsOf("Unmap").at(0).bytes);
}

TEST_F(DXEffectTest, AFailedMapIsReportedAndGoesOnWithoutTheCopy) {
    effect->register_vec4("v", numbers);
    create();
    world.clearCalls();
    world.failNth("Map", 1);
    upload();
    EXPECT_EQ((Lines{"Map pParamBuffer error!"}), host::log::errors());
    EXPECT_EQ(1u, world.callsOf("PSSetConstantBuffers").size());
    EXPECT_EQ(1u, world.callsOf("VSSetConstantBuffers").size());
}

TEST_F(DXEffectTest, MatricesAreTransposed) {
    effect->register_mat2("a", numbers);
    effect->register_mat3("b", numbers);
    effect->register_mat4("c", numbers);
    create();
    upload();
    EXPECT_EQ((std::vector<float>{1, 3, 2, 4}), floatsAt(0, 4));
    EXPECT_EQ((std::vector<float>{1, 4, 7, 2, 5, 8, 3, 6, 9}), floatsAt(16, 9));
    // 16 + 36 is 52; the next register begins at 64.
    EXPECT_EQ((std::vector<float>{1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15, 4, 8, 12, 16}),
              floatsAt(64, 16));
}

TEST_F(DXEffectTest, ArraysKeepTheirStrides) {
    effect->register_float_array("a", numbers, 3);  // 0, 4, 8
    effect->register_vec2_array("b", numbers, 2);   // 16, 32
    effect->register_vec3_array("c", numbers, 2);   // 48, 64
    effect->register_vec4_array("d", numbers, 2);   // 80, 96
    create();
    upload();
    EXPECT_EQ(112u, effect->param_bytes.size());
    EXPECT_EQ((std::vector<float>{1, 2, 3}), floatsAt(0, 3));
    EXPECT_EQ((std::vector<float>{1, 2}), floatsAt(16, 2));
    EXPECT_EQ((std::vector<float>{3, 4}), floatsAt(32, 2));
    EXPECT_EQ((std::vector<float>{1, 2, 3}), floatsAt(48, 3));
    EXPECT_EQ((std::vector<float>{4, 5, 6}), floatsAt(64, 3));
    EXPECT_EQ((std::vector<float>{1, 2, 3, 4, 5, 6, 7, 8}), floatsAt(80, 8));
}

TEST_F(DXEffectTest, APassPastTheEndReadsTheFirstEntry) {
    float other = 9;
    effect->register_float("f", numbers);
    effect->set_float_per_pass("f", {numbers, &other});
    create();
    upload(1);
    EXPECT_EQ(9.0F, floatAt(0));
    upload(2);
    EXPECT_EQ(1.0F, floatAt(0));
}

TEST_F(DXEffectTest, InstancesChangeTheTailAlone) {
    const float per_instance[2] = {0.25F, 0.75F};
    effect->register_vec4("v", numbers);
    effect->register_instance_float("i", per_instance, 2);
    create();
    upload();
    EXPECT_EQ(16, effect->instance_base);
    uploadInstance(0);
    EXPECT_EQ(0.25F, floatAt(16));
    uploadInstance(1);
    EXPECT_EQ(0.75F, floatAt(16));
    EXPECT_EQ(16, effect->instance_base);
    EXPECT_EQ(3u, world.callsOf("Map").size());
    EXPECT_EQ(1.0F, floatAt(0));
}

TEST_F(DXEffectTest, InstanceParametersLieByTypeWithTheirPadding) {
    int32_t integer = 7;
    effect->register_instance_int("a", &integer, 1);   // 0
    effect->register_instance_float("b", numbers, 1);  // 4
    effect->register_instance_vec2("c", numbers, 1);   // 16
    effect->register_instance_vec3("d", numbers, 1);   // 32
    effect->register_instance_vec4("e", numbers, 1);   // 48
    create();
    EXPECT_EQ(64u, effect->param_bytes.size());
    upload();
    uploadInstance(0);
    int32_t stored = 0;
    std::memcpy(&stored, effect->param_bytes.data(), sizeof stored);
    EXPECT_EQ(7, stored);
    EXPECT_EQ(1.0F, floatAt(4));
    EXPECT_EQ((std::vector<float>{1, 2}), floatsAt(16, 2));
    EXPECT_EQ((std::vector<float>{1, 2, 3}), floatsAt(32, 3));
    EXPECT_EQ((std::vector<float>{1, 2, 3, 4}), floatsAt(48, 4));
}

TEST_F(DXEffectTest, AnInstanceThatTheArrayDoesNotHaveKeepsTheBytes) {
    effect->register_instance_float("i", numbers, 2);
    create();
    uploadInstance(1);
    EXPECT_EQ(2.0F, floatAt(0));
    uploadInstance(5);
    uploadInstance(-1);
    EXPECT_EQ(2.0F, floatAt(0));
}

TEST_F(DXEffectTest, ParametersRegisteredAfterTheBufferDoNotLeaveTheShadow) {
    effect->register_float("a", numbers);
    create();
    effect->register_mat4("late", numbers);
    effect->register_float_array("long", numbers, 16);
    upload();
    EXPECT_EQ(16u, effect->param_bytes.size());
    EXPECT_EQ(1.0F, floatAt(0));
}

}  // namespace
