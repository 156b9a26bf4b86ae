// Engines on one real device, one after the other: each draws, and none leaves anything. The host
// brings the device: one that an engine made for itself stays until the process ends.

#include <d3d11.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

#include "host/fake_host.h"
#include "trust/footprint.h"

namespace {

using host::Effect;
using host::Library;
using host::Mode;

constexpr uint32_t kSide = 8;
constexpr int kWarmUp = 10;  // engines until what is made once for the process is made
constexpr size_t kHeapSlack = size_t{2} << 20;

/// A run of minutes was asked for, as for the crowds.
bool isLong() {
    return std::getenv("ORVANE_STRESS_SECONDS") != nullptr;
}

void drawRed(IOpenGLEffectEngine& engine) {
    Effect effect;
    ASSERT_EQ(0, engine.CreateEffect(kSide, kSide, kSide * 4, false, "", effect, 0, "", {}, {}));
    effect->SetFragmentShaderText(host::kRed);
    ASSERT_EQ(0, effect->InitEffect(effect)) << host::log::all();
    std::vector<uint8_t> picture(kSide * kSide * 4);
    DrawParams params;
    params.readback_buffer = picture.data();
    ASSERT_EQ(0, effect->DrawEffect(params, effect, kSide * 4));
    EXPECT_EQ((std::vector<uint8_t>{255, 0, 0, 255}),
              std::vector<uint8_t>(picture.end() - 4, picture.end()));
}

ID3D11Device* makeDevice() {
    ID3D11Device* device = nullptr;
    EXPECT_EQ(S_OK, D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, 0, nullptr, 0,
                                      D3D11_SDK_VERSION, &device, nullptr, nullptr));
    return device;
}

void runEngines(Mode mode) {
    const int engines = isLong() ? 200 : 40;
    ID3D11Device* const device = makeDevice();
    ASSERT_NE(nullptr, device);
    trust::Footprint before;
    for (int i = 0; i < engines; ++i) {
        IOpenGLEffectEngine* engine = nullptr;
        ASSERT_EQ(
            0, Library::get().create(&engine, host::log::receive, mode == Mode::threaded, device));
        drawRed(*engine);
        Library::get().destroy(engine);
        host::log::clear();
        if (i == kWarmUp) {
            before = trust::footprintNow();
        }
    }
    const trust::Footprint after = trust::footprintNow();
    device->Release();
    std::printf("%d engines: %s\n", engines, change(before, after).c_str());
    EXPECT_GT(before.handles, 0u);
    EXPECT_LE(after.handles, before.handles + 10);
    EXPECT_LE(after.heap_bytes, before.heap_bytes + kHeapSlack);
}

TEST(RealEnginesTest, InlineOnesComeAndGo) {
    runEngines(Mode::inlined);
}

TEST(RealEnginesTest, ThreadedOnesComeAndGo) {
    runEngines(Mode::threaded);
}

}  // namespace
