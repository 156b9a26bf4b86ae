// Engines that make their own device. The call that makes it is caught, so that the device is a
// fake one, or none. What fails at last stays so for the process: those tests come at the end.

#include <d3d11.h>
#include <gtest/gtest.h>
#include <objbase.h>

#include <memory>
#include <thread>

#include "host/fake_host.h"
#include "start/import_patch.h"

namespace {

using host::Effect;
using host::FakeHost;
using host::Library;
using host::Lines;
using host::Mode;

constexpr int32_t kFail = static_cast<int32_t>(0x80004005);
constexpr int32_t kOutOfMemory = static_cast<int32_t>(0x8007000E);

/// What the library asked for, and what it gets.
struct Request {
    int calls = 0;
    bool plain = false;  // the arguments were those that are expected
    DWORD thread = 0;
    fake::World* world = nullptr;
};
Request request;

HRESULT WINAPI createDevice(IDXGIAdapter* adapter, D3D_DRIVER_TYPE type, HMODULE software,
                            UINT flags, const D3D_FEATURE_LEVEL* levels, UINT count, UINT sdk,
                            ID3D11Device** device, D3D_FEATURE_LEVEL* level,
                            ID3D11DeviceContext** context) {
    ++request.calls;
    request.thread = GetCurrentThreadId();
    request.plain = adapter == nullptr && type == D3D_DRIVER_TYPE_HARDWARE && software == nullptr &&
                    flags == 0 && levels == nullptr && count == 0 && sdk == 7;
    if (request.world == nullptr) {
        return DXGI_ERROR_UNSUPPORTED;
    }
    *device = request.world->device();
    (*device)->AddRef();
    request.world->device()->GetImmediateContext(context);
    *level = D3D_FEATURE_LEVEL_11_0;
    return S_OK;
}

class OwnDeviceTest : public FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        request = Request();
        request.world = &world;
        ASSERT_TRUE(patch_.active());
    }
    IOpenGLEffectEngine* startOwn(Mode mode) {
        engine = nullptr;
        result =
            Library::get().create(&engine, host::log::receive, mode == Mode::threaded, nullptr);
        return engine;
    }
    void end() { Library::get().destroy(engine); }
    int32_t result = -1;

private:
    start::ImportPatch patch_{Library::get().module, "d3d11.dll", "D3D11CreateDevice",
                              reinterpret_cast<void*>(&createDevice)};
};

TEST_F(OwnDeviceTest, InlineModeMakesItOnTheCallersThread) {
    startOwn(Mode::inlined);
    EXPECT_EQ(0, result);
    EXPECT_EQ(1, request.calls);
    EXPECT_TRUE(request.plain);
    EXPECT_EQ(GetCurrentThreadId(), request.thread);
    EXPECT_EQ(world.device(), engine->GetDevicePair()->device);
    EXPECT_EQ("Device Information : ", host::log::texts(2).at(0));
    EXPECT_EQ(0, draw(readyEffect()));
    end();
}

TEST_F(OwnDeviceTest, ThreadedModeMakesItOnTheRenderThread) {
    startOwn(Mode::threaded);
    EXPECT_EQ(0, result);
    EXPECT_EQ(1, request.calls);
    EXPECT_TRUE(request.plain);
    DWORD render_thread = 0;
    EXPECT_TRUE(engine
                    ->PostTask(
                        [&render_thread] {
                            render_thread = GetCurrentThreadId();
                            return true;
                        },
                        false)
                    .get());
    EXPECT_EQ(render_thread, request.thread);
    EXPECT_EQ(0, draw(readyEffect()));
    end();
}

TEST_F(OwnDeviceTest, EachModeMakesADeviceOfItsOwn) {
    startOwn(Mode::threaded);
    IOpenGLEffectEngine* threaded = engine;
    fake::World& other = host::newWorld();
    request.world = &other;
    startOwn(Mode::inlined);
    EXPECT_EQ(2, request.calls);
    EXPECT_EQ(world.device(), threaded->GetDevicePair()->device);
    EXPECT_EQ(other.device(), engine->GetDevicePair()->device);
    end();
    Library::get().destroy(threaded);
}

TEST_F(OwnDeviceTest, InlineTasksAndDrawsRunAtOnceWhateverTheFlag) {
    // Without a device of the host's nothing is queued in inline mode.
    startOwn(Mode::inlined);
    bool ran = false;
    EXPECT_TRUE(engine->PostTask([&ran] { return ran = true; }, true).get());
    EXPECT_TRUE(ran);
    {
        const Effect effect = readyEffect();
        effect->SetUseRenderThread(true);
        EXPECT_EQ(0, draw(effect));
        EXPECT_TRUE(effect->PostTaskAsync([] { return true; }, true).get());
    }
    Lines live = world.live();
    EXPECT_EQ((Lines{"pixel_shader#1: 1", "vertex_shader#1: 1"}), live) << "released at once too";
    end();
}

TEST_F(OwnDeviceTest, SetOwnerThreadTakesADeviceAndNullLeavesIt) {
    startOwn(Mode::inlined);
    engine->SetOwnerThread(nullptr);
    EXPECT_TRUE(engine->PostTask([] { return true; }, true).get());
    engine->SetOwnerThread(world.device());
    std::future<bool> queued = engine->PostTask([] { return true; }, true);
    EXPECT_EQ(std::future_status::timeout, queued.wait_for(std::chrono::milliseconds(20)));
    engine->SetOwnerThread(nullptr);
    std::future<bool> still = engine->PostTask([] { return true; }, true);
    EXPECT_EQ(std::future_status::timeout, still.wait_for(std::chrono::milliseconds(20)));
    end();
}

TEST_F(OwnDeviceTest, WithoutComTheEngineExistsAndItsInitsAreRefused) {
    // A thread of the other apartment kind cannot take the one that the library wants.
    std::thread([this] {
        ASSERT_EQ(S_OK, CoInitializeEx(nullptr, COINIT_MULTITHREADED));
        startOwn(Mode::inlined);
        EXPECT_EQ(0, result);
        EXPECT_EQ((Lines{"Failed to initialize COM library"}), host::log::errors());
        EXPECT_EQ(Lines(), host::log::texts(2)) << "no report";
        {
            const Effect effect = makeEffectOf(host::kRed);
            EXPECT_EQ(1, init(effect));
            EXPECT_EQ(1, effect->ResizeEffect(8, 8, 32, effect));
            EXPECT_EQ(kFail, draw(effect)) << "an inline draw does not ask";
        }
        end();
        CoUninitialize();
    }).join();
}

TEST_F(OwnDeviceTest, ComThatIsThereAlreadyIsSuccess) {
    ASSERT_TRUE(SUCCEEDED(CoInitialize(nullptr)));
    startOwn(Mode::inlined);
    EXPECT_EQ(0, result);
    EXPECT_EQ(Lines(), host::log::errors());
    EXPECT_EQ(0, draw(readyEffect()));
    end();
    CoUninitialize();
}

class NoDeviceTest : public OwnDeviceTest, public testing::WithParamInterface<Mode> {};

TEST_P(NoDeviceTest, EveryCreateFailsAndLeavesItsOutPointer) {
    request.world = nullptr;
    auto* untouched = reinterpret_cast<IOpenGLEffectEngine*>(0x10);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(kOutOfMemory, Library::get().create(&untouched, host::log::receive,
                                                      GetParam() == Mode::threaded, nullptr));
        EXPECT_EQ(reinterpret_cast<IOpenGLEffectEngine*>(0x10), untouched);
    }
    EXPECT_EQ(1, request.calls) << "tried once";
    EXPECT_TRUE(host::log::lines().empty()) << host::log::all();
    // Nor with a device of the host's: the failed engine stays.
    EXPECT_EQ(kOutOfMemory, Library::get().create(&untouched, host::log::receive,
                                                  GetParam() == Mode::threaded, world.device()));
}

INSTANTIATE_TEST_SUITE_P(Modes, NoDeviceTest, testing::Values(Mode::inlined, Mode::threaded),
                         host::modeParamName);

}  // namespace
