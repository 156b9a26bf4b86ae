// What the library takes for granted of the machine that the Windows tests run on. If one of these
// fails, the set-up is broken, and the other device tests say nothing about the library.

#include <GL/glew.h>
#include <d3d11.h>
#include <d3dcompiler.h>
#include <gtest/gtest.h>
#include <wrl/client.h>

#include <cstring>
#include <future>
#include <opencv2/imgproc.hpp>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

using Microsoft::WRL::ComPtr;

class PlatformProbe : public testing::Test {
protected:
    void SetUp() override {
        const D3D_FEATURE_LEVEL wanted = D3D_FEATURE_LEVEL_11_0;
        ASSERT_EQ(S_OK, D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, 0, &wanted, 1,
                                          D3D11_SDK_VERSION, &device_, &level_, &context_));
    }

    ComPtr<ID3D11Device> device_;
    ComPtr<ID3D11DeviceContext> context_;
    D3D_FEATURE_LEVEL level_ = D3D_FEATURE_LEVEL_9_1;
};

D3D11_TEXTURE2D_DESC OneByOne(D3D11_USAGE usage, UINT bind, UINT access) {
    D3D11_TEXTURE2D_DESC desc = {};
    desc.Width = desc.Height = desc.MipLevels = desc.ArraySize = 1;
    desc.Format = DXGI_FORMAT_B8G8R8A8_UNORM;
    desc.SampleDesc.Count = 1;
    desc.Usage = usage;
    desc.BindFlags = bind;
    desc.CPUAccessFlags = access;
    return desc;
}

TEST_F(PlatformProbe, TheHardwareDriverGivesFeatureLevel11) {
    EXPECT_EQ(D3D_FEATURE_LEVEL_11_0, level_);
}

TEST_F(PlatformProbe, ADeferredClearReachesMappedBytes) {
    ComPtr<ID3D11Texture2D> target;
    ComPtr<ID3D11Texture2D> staging;
    const auto target_desc = OneByOne(D3D11_USAGE_DEFAULT, D3D11_BIND_RENDER_TARGET, 0);
    const auto staging_desc = OneByOne(D3D11_USAGE_STAGING, 0, D3D11_CPU_ACCESS_READ);
    ASSERT_EQ(S_OK, device_->CreateTexture2D(&target_desc, nullptr, &target));
    ASSERT_EQ(S_OK, device_->CreateTexture2D(&staging_desc, nullptr, &staging));
    ComPtr<ID3D11RenderTargetView> view;
    ASSERT_EQ(S_OK, device_->CreateRenderTargetView(target.Get(), nullptr, &view));

    ComPtr<ID3D11DeviceContext> deferred;
    ASSERT_EQ(S_OK, device_->CreateDeferredContext(0, &deferred));
    const float colour[4] = {1.0f, 0.0f, 0.2f, 1.0f};
    deferred->ClearRenderTargetView(view.Get(), colour);
    ComPtr<ID3D11CommandList> list;
    ASSERT_EQ(S_OK, deferred->FinishCommandList(FALSE, &list));
    context_->ExecuteCommandList(list.Get(), FALSE);
    context_->CopyResource(staging.Get(), target.Get());

    D3D11_MAPPED_SUBRESOURCE mapped = {};
    ASSERT_EQ(S_OK, context_->Map(staging.Get(), 0, D3D11_MAP_READ, 0, &mapped));
    const unsigned char expected[4] = {51, 0, 255, 255};
    EXPECT_EQ(0, std::memcmp(expected, mapped.pData, 4));
    context_->Unmap(staging.Get(), 0);
}

TEST(HlslCompilerProbe, ItIsTheRealOne) {
    const std::string text =
        "cbuffer B : register(b0) { float4 shade[3]; };\n"
        "float4 mainPS(float2 tc : TEXCOORD0) : SV_TARGET {\n"
        "    float4 sum = 0;\n"
        "    [loop] for (int i = 0; i < 3; ++i) sum += shade[i] * tc.x;\n"
        "    return sum;\n"
        "}\n";
    ComPtr<ID3DBlob> code;
    ComPtr<ID3DBlob> errors;
    EXPECT_EQ(S_OK, D3DCompile(text.data(), text.size(), nullptr, nullptr, nullptr, "mainPS",
                               "ps_5_0", 0, 0, &code, &errors));
    ComPtr<ID3DBlob> no_code;
    EXPECT_NE(S_OK, D3DCompile("nonsense", 8, nullptr, nullptr, nullptr, "mainPS", "ps_5_0", 0, 0,
                               &no_code, &errors));
    ASSERT_TRUE(errors);
    const std::string message(static_cast<const char*>(errors->GetBufferPointer()));
    EXPECT_NE(std::string::npos, message.find("error X3000")) << message;
}

TEST(LibrariesProbe, OpenCvTurnsGreyIntoFourChannels) {
    unsigned char grey[2] = {7, 200};
    const cv::Mat source(1, 2, CV_8UC1, grey);
    cv::Mat expanded;
    cv::cvtColor(source, expanded, cv::COLOR_GRAY2BGRA);
    const unsigned char expected[8] = {7, 7, 7, 255, 200, 200, 200, 255};
    EXPECT_EQ(0, std::memcmp(expected, expanded.data, 8));
}

TEST(LibrariesProbe, GlewIsSharedAndHasNoFunctionBeforeAContext) {
    EXPECT_NE(nullptr, GetModuleHandleA("glew32.dll"));
    EXPECT_EQ(nullptr, glBindBuffer);
}

TEST(RuntimeProbe, AFutureCarriesAnExceptionAcrossThreads) {
    std::promise<bool> promise;
    std::thread worker([&promise] {
        promise.set_exception(std::make_exception_ptr(std::runtime_error("carried")));
    });
    EXPECT_THROW(promise.get_future().get(), std::runtime_error);
    worker.join();
}

}  // namespace
