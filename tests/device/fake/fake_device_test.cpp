#include <d3d11.h>
#include <gtest/gtest.h>
#include <wrl/client.h>

#include <algorithm>
#include <cstring>
#include <thread>

#include "fake/dxgi.h"
#include "fake/world.h"

namespace {

using Lines = std::vector<std::string>;
using Microsoft::WRL::ComPtr;

D3D11_TEXTURE2D_DESC pictureDesc(UINT width, UINT height) {
    D3D11_TEXTURE2D_DESC desc{};
    desc.Width = width;
    desc.Height = height;
    desc.MipLevels = 1;
    desc.ArraySize = 1;
    desc.Format = DXGI_FORMAT_B8G8R8A8_UNORM;
    desc.SampleDesc.Count = 1;
    desc.BindFlags = D3D11_BIND_SHADER_RESOURCE | D3D11_BIND_RENDER_TARGET;
    return desc;
}

D3D11_BUFFER_DESC constantsDesc(UINT bytes) {
    D3D11_BUFFER_DESC desc{};
    desc.ByteWidth = bytes;
    desc.Usage = D3D11_USAGE_DYNAMIC;
    desc.BindFlags = D3D11_BIND_CONSTANT_BUFFER;
    desc.CPUAccessFlags = D3D11_CPU_ACCESS_WRITE;
    return desc;
}

class FakeDeviceTest : public testing::Test {
protected:
    ComPtr<ID3D11Texture2D> texture(UINT width, UINT height) {
        ComPtr<ID3D11Texture2D> made;
        const D3D11_TEXTURE2D_DESC desc = pictureDesc(width, height);
        EXPECT_EQ(S_OK, device->CreateTexture2D(&desc, nullptr, made.GetAddressOf()));
        return made;
    }
    ComPtr<ID3D11RenderTargetView> targetOf(ID3D11Texture2D* picture) {
        D3D11_RENDER_TARGET_VIEW_DESC desc{};
        desc.Format = DXGI_FORMAT_B8G8R8A8_UNORM;
        desc.ViewDimension = D3D11_RTV_DIMENSION_TEXTURE2D;
        ComPtr<ID3D11RenderTargetView> made;
        EXPECT_EQ(S_OK, device->CreateRenderTargetView(picture, &desc, made.GetAddressOf()));
        return made;
    }
    ComPtr<ID3D11DeviceContext> deferred() {
        ComPtr<ID3D11DeviceContext> made;
        EXPECT_EQ(S_OK, device->CreateDeferredContext(0, made.GetAddressOf()));
        return made;
    }

    fake::World world;
    ID3D11Device* device = world.device();
};

TEST_F(FakeDeviceTest, RecordsEveryFieldOfATexture) {
    const ComPtr<ID3D11Texture2D> made = texture(67, 41);
    EXPECT_EQ((Lines{"device.CreateTexture2D(67x41 mips=1 array=1 format=B8G8R8A8_UNORM "
                     "samples=1/0 usage=DEFAULT bind=SHADER_RESOURCE|RENDER_TARGET cpu=0 misc=0) "
                     "-> texture#1"}),
              world.texts());
}

TEST_F(FakeDeviceTest, CountsReferencesAndListsWhatIsAlive) {
    ComPtr<ID3D11Texture2D> first = texture(4, 4);
    const ComPtr<ID3D11Texture2D> second = texture(4, 4);
    const ComPtr<ID3D11Texture2D> again = second;
    first.Reset();
    EXPECT_EQ((Lines{"texture#2: 2"}), world.live());
    EXPECT_EQ(2, world.references(second.Get()));
    EXPECT_TRUE(world.errors().empty());
}

TEST_F(FakeDeviceTest, ReportsAReleaseTooMany) {
    ID3D11Texture2D* raw = texture(4, 4).Detach();
    raw->Release();
    raw->Release();
    EXPECT_EQ((Lines{"Release of texture#1 once too often"}), world.errors());
}

TEST_F(FakeDeviceTest, ReportsTheUseOfADeadObject) {
    ID3D11Texture2D* raw = texture(4, 4).Detach();
    raw->Release();
    world.immediate()->CopyResource(raw, raw);
    EXPECT_EQ("use of dead texture#1", world.errors().at(0));
}

TEST_F(FakeDeviceTest, AViewKeepsItsTextureAlive) {
    ComPtr<ID3D11Texture2D> picture = texture(4, 4);
    const ComPtr<ID3D11RenderTargetView> view = targetOf(picture.Get());
    picture.Reset();
    ComPtr<ID3D11Resource> resource;
    view->GetResource(resource.GetAddressOf());
    EXPECT_EQ("texture#1", world.nameOf(resource.Get()));
    EXPECT_TRUE(world.errors().empty());
}

TEST_F(FakeDeviceTest, FailsTheNthCallAndLeavesTheOutPointerAlone) {
    world.failNth("CreateTexture2D", 2, E_OUTOFMEMORY);
    const ComPtr<ID3D11Texture2D> first = texture(4, 4);
    const D3D11_TEXTURE2D_DESC desc = pictureDesc(4, 4);
    auto* untouched = reinterpret_cast<ID3D11Texture2D*>(0x10);
    EXPECT_EQ(E_OUTOFMEMORY, device->CreateTexture2D(&desc, nullptr, &untouched));
    EXPECT_EQ(reinterpret_cast<ID3D11Texture2D*>(0x10), untouched);
    EXPECT_TRUE(world.faultStruck());
    const ComPtr<ID3D11Texture2D> third = texture(4, 4);
    EXPECT_EQ("texture#2", world.nameOf(third.Get()));
}

TEST_F(FakeDeviceTest, ARemovedDeviceRefusesToCreateUntilItIsBack) {
    world.remove(DXGI_ERROR_DEVICE_REMOVED);
    EXPECT_EQ(DXGI_ERROR_DEVICE_REMOVED, device->GetDeviceRemovedReason());
    const D3D11_TEXTURE2D_DESC desc = pictureDesc(4, 4);
    ID3D11Texture2D* made = nullptr;
    EXPECT_EQ(DXGI_ERROR_DEVICE_REMOVED, device->CreateTexture2D(&desc, nullptr, &made));
    world.remove(S_OK);
    EXPECT_EQ(S_OK, device->GetDeviceRemovedReason());
    EXPECT_NE(nullptr, texture(4, 4).Get());
}

TEST_F(FakeDeviceTest, MapsAConstantBufferAndKeepsTheBytes) {
    ComPtr<ID3D11Buffer> buffer;
    const D3D11_BUFFER_DESC desc = constantsDesc(16);
    ASSERT_EQ(S_OK, device->CreateBuffer(&desc, nullptr, buffer.GetAddressOf()));
    D3D11_MAPPED_SUBRESOURCE mapped{};
    ID3D11DeviceContext* context = world.immediate();
    ASSERT_EQ(S_OK, context->Map(buffer.Get(), 0, D3D11_MAP_WRITE_DISCARD, 0, &mapped));
    std::memcpy(mapped.pData, "0123456789abcdef", 16);
    context->Unmap(buffer.Get(), 0);
    const std::vector<uint8_t> bytes = world.bytesOf(buffer.Get());
    EXPECT_EQ("0123456789abcdef", std::string(bytes.begin(), bytes.end()));
    EXPECT_EQ(bytes, world.callsOf("Unmap").at(0).bytes);
}

TEST_F(FakeDeviceTest, RefusesAConstantBufferOfAnOddSize) {
    const D3D11_BUFFER_DESC desc = constantsDesc(20);
    ID3D11Buffer* made = nullptr;
    EXPECT_EQ(E_INVALIDARG, device->CreateBuffer(&desc, nullptr, &made));
}

TEST_F(FakeDeviceTest, DeferredWorkHappensWhenTheListIsExecuted) {
    const ComPtr<ID3D11Texture2D> picture = texture(1, 1);
    const ComPtr<ID3D11RenderTargetView> view = targetOf(picture.Get());
    const ComPtr<ID3D11DeviceContext> context = deferred();
    const FLOAT red[4] = {1, 0, 0.5F, 1};
    context->ClearRenderTargetView(view.Get(), red);
    EXPECT_EQ((std::vector<uint8_t>{0, 0, 0, 0}), world.bytesOf(picture.Get()));
    ComPtr<ID3D11CommandList> list;
    ASSERT_EQ(S_OK, context->FinishCommandList(FALSE, list.GetAddressOf()));
    world.immediate()->ExecuteCommandList(list.Get(), FALSE);
    EXPECT_EQ((std::vector<uint8_t>{128, 0, 255, 255}), world.bytesOf(picture.Get()));
}

TEST_F(FakeDeviceTest, ReadsBackRowsWithTheirPadding) {
    const ComPtr<ID3D11Texture2D> picture = texture(1, 2);
    const uint8_t rows[] = {1, 2, 3, 4, 99, 99, 5, 6, 7, 8};
    ID3D11DeviceContext* context = world.immediate();
    context->UpdateSubresource(picture.Get(), 0, nullptr, rows, 6, 0);
    world.setRowPadding(12);
    D3D11_MAPPED_SUBRESOURCE mapped{};
    ASSERT_EQ(S_OK, context->Map(picture.Get(), 0, D3D11_MAP_READ, 0, &mapped));
    EXPECT_EQ(16u, mapped.RowPitch);
    const auto* bytes = static_cast<const uint8_t*>(mapped.pData);
    EXPECT_EQ(4, bytes[3]);
    EXPECT_EQ(5, bytes[16]);
    context->Unmap(picture.Get(), 0);
}

TEST_F(FakeDeviceTest, ANonBlockingMapIsStillDrawingAsOftenAsTold) {
    const ComPtr<ID3D11Texture2D> picture = texture(1, 1);
    world.setStillDrawing(2);
    D3D11_MAPPED_SUBRESOURCE mapped{};
    ID3D11DeviceContext* context = world.immediate();
    const auto map = [&] {
        return context->Map(picture.Get(), 0, D3D11_MAP_READ, D3D11_MAP_FLAG_DO_NOT_WAIT, &mapped);
    };
    EXPECT_EQ(DXGI_ERROR_WAS_STILL_DRAWING, map());
    EXPECT_EQ(DXGI_ERROR_WAS_STILL_DRAWING, map());
    EXPECT_EQ(S_OK, map());
    context->Unmap(picture.Get(), 0);
}

TEST_F(FakeDeviceTest, CopyBetweenDifferentSizesDoesNothing) {
    const ComPtr<ID3D11Texture2D> small = texture(1, 1);
    const ComPtr<ID3D11Texture2D> large = texture(2, 2);
    const uint8_t pixel[] = {1, 2, 3, 4};
    world.immediate()->UpdateSubresource(small.Get(), 0, nullptr, pixel, 4, 0);
    world.immediate()->CopyResource(large.Get(), small.Get());
    EXPECT_EQ(std::vector<uint8_t>(16, 0), world.bytesOf(large.Get()));
}

TEST_F(FakeDeviceTest, AnswersWithItsAdapter) {
    ComPtr<IDXGIDevice> dxgi;
    ASSERT_EQ(S_OK, device->QueryInterface(__uuidof(IDXGIDevice),
                                           reinterpret_cast<void**>(dxgi.GetAddressOf())));
    ComPtr<IDXGIAdapter> adapter;
    ASSERT_EQ(S_OK, dxgi->GetAdapter(adapter.GetAddressOf()));
    DXGI_ADAPTER_DESC desc{};
    ASSERT_EQ(S_OK, adapter->GetDesc(&desc));
    EXPECT_EQ(fake::adapterDescription().DeviceId, desc.DeviceId);
}

TEST_F(FakeDeviceTest, AMethodThatIsNotServedIsRecordedAsSuch) {
    world.immediate()->DrawAuto();
    EXPECT_EQ((Lines{"immediate.DrawAuto() -> not served"}), world.texts());
}

TEST_F(FakeDeviceTest, WithoutRecordingNothingIsKeptAndCreationsAreStillCounted) {
    world.setRecording(false);
    {
        const ComPtr<ID3D11Texture2D> picture = texture(8, 8);
        const ComPtr<ID3D11DeviceContext> context = deferred();
        context->Draw(4, 0);
        ComPtr<ID3D11CommandList> list;
        ASSERT_EQ(S_OK, context->FinishCommandList(FALSE, list.GetAddressOf()));
        world.immediate()->ExecuteCommandList(list.Get(), FALSE);
    }
    EXPECT_TRUE(world.calls().empty());
    EXPECT_TRUE(world.live().empty());
    EXPECT_EQ(1, world.created(fake::Kind::texture));
    EXPECT_EQ(1, world.created(fake::Kind::command_list));
}

TEST_F(FakeDeviceTest, CountsEachMethodThatCanFail) {
    const ComPtr<ID3D11Texture2D> first = texture(4, 4);
    const ComPtr<ID3D11Texture2D> second = texture(4, 4);
    EXPECT_EQ(2, world.counts().at("CreateTexture2D"));
    world.clearCalls();
    EXPECT_TRUE(world.counts().empty());
}

TEST_F(FakeDeviceTest, SeveralThreadsMayUseIt) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([this] {
            for (int i = 0; i < 200; ++i) {
                texture(4, 4);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(800, world.created(fake::Kind::texture));
    EXPECT_TRUE(world.live().empty());
    EXPECT_TRUE(world.errors().empty());
}

}  // namespace
