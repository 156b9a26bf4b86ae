// Every device call that can fail does so in turn: the first of its kind, the second ... the last,
// over a whole life from the engine's start to its end. Nothing crashes, nothing is misused,
// nothing leaks, and the same effect works again without the fault.

#include <d3d11.h>
#include <gtest/gtest.h>

#include <set>

#include "host/fake_host.h"

namespace {

using host::Effect;
using host::FakeHost;
using host::Lines;
using host::Mode;

/// Failures that the library is meant to pass over in silence.
const std::set<std::string> kSilent = {
    "QueryInterface",        "GetAdapter",        "GetDesc",
    "CreateDeferredContext", "CreatePixelShader", "CreateVertexShader",
    "CreateBlendState",      "CreateInputLayout", "FinishCommandList",
};

const std::vector<uint8_t> kPixels(8 * 8 * 4, 9);
const float kSamples[16] = {};

class FaultSweepTest : public FakeHost, public testing::WithParamInterface<Mode> {
protected:
    /// Where the fault may strike: whatever a host does with one effect. Results are not looked
    /// at, since any of the steps may fail.
    void liveOn(Effect& effect, int32_t& number) {
        if (effect == nullptr) {
            host::EffectPlan plan;
            plan.with_depth = true;
            effect = makeEffectOf(host::kPass, plan);
            effect->SetDepthTest(true);
            effect->SetMsaa(true);
            effect->SetBlendMode(4);
            effect->AddFbo();
            effect->AddFlatInput(8, 8, 32, false);
            effect->AddAudioInput();
            effect->AddVertexAttribute("e", 3, indices_, false, true, 2);
        }
        init(effect);
        effect->AddProgram(&number, host::kRed, nullptr);
        frames(effect);
        effect->ResizeEffect(20, 10, 80, effect);
        frames(effect);
        effect->ResizeEffect(67, 41, 268, effect);
        frames(effect);
        GpuData* texture = nullptr;
        GpuDataMap map;
        effect->DoTaskPost([&] {
            engine->BindTextureData(kPixels.data(), 8, 8, 32, &texture, map);
            engine->BindTextureData(kPixels.data(), 4, 4, 32, &texture, map);
            if (texture == nullptr) {
                map.clear();  // the key of a failed change is the host's to drop
            }
            engine->ReleaseGpuDataMap(map);
            return true;
        });
        GpuData* wrapped = effect->CreateGpuData(hostTexture());
        effect->ReleaseGpuData(wrapped);
    }
    ID3D11Texture2D* hostTexture() {
        if (host_texture_ == nullptr) {
            D3D11_TEXTURE2D_DESC desc{};
            desc.Width = desc.Height = 4;
            desc.MipLevels = desc.ArraySize = 1;
            desc.Format = DXGI_FORMAT_B8G8R8A8_UNORM;
            desc.SampleDesc.Count = 1;
            desc.BindFlags = D3D11_BIND_SHADER_RESOURCE;
            world.device()->CreateTexture2D(&desc, nullptr, &host_texture_);
        }
        return host_texture_;
    }
    void releaseHostTexture() {
        if (host_texture_ != nullptr) {
            host_texture_->Release();
            host_texture_ = nullptr;
        }
    }
    void frames(const Effect& effect) {
        std::vector<uint8_t> buffer(67 * 41 * 4);
        DrawParams readback;
        readback.readback_buffer = buffer.data();
        effect->SetInputTexture(0, kPixels.data(), 8, 8, 32, 4, false, 0);
        effect->SetAudioInput(1, 16, kSamples);
        draw(effect);
        effect->SwapFbo(0);
        effect->SetInputTexture(0, kPixels.data(), 8, 8, 8, 1, false, 0);
        draw(effect, readback);
        effect->SetInputTextureRef(0, kPixels.data(), 4, 4, 16, 4, false, 0, 1, 2);
        effect->SetAudioInput(1, 8, kSamples);
        draw(effect);
    }
    /// The same effect without a fault: it must work.
    void expectWorks(const Effect& effect, const std::string& where) {
        world.clearFaults();
        host::log::clear();
        ASSERT_EQ(0, init(effect)) << where << "\n" << host::log::all();
        effect->SetInputTexture(0, kPixels.data(), 8, 8, 32, 4, false, 0);
        EXPECT_EQ(0, effect->ResizeEffect(31, 17, 124, effect));
        std::vector<uint8_t> buffer(31 * 17 * 4);
        DrawParams readback;
        readback.readback_buffer = buffer.data();
        EXPECT_EQ(0, draw(effect, readback)) << where << "\n" << host::log::all();
        host::log::clear();
        EXPECT_EQ(0, draw(effect, readback)) << where;
        EXPECT_EQ(Lines(), host::log::errors()) << where;
    }
    void endAndExpectNothingLeft(const std::string& where) {
        releaseHostTexture();
        stop();
        if (GetParam() == Mode::inlined) {
            start(Mode::inlined);  // replaces the pool of the engine that ended
            stop();
        }
        EXPECT_EQ(Lines(), world.live()) << where;
        EXPECT_EQ(Lines(), world.errors()) << where;
    }
    /// How often each method that can fail is called in a life without faults.
    std::map<std::string, int> callsOfALife() {
        hostTexture();  // the host's own calls are none of the sweep's
        world.clearCalls();
        start(GetParam());
        {
            Effect effect;
            int32_t number = 0;
            liveOn(effect, number);
            EXPECT_EQ(Lines(), host::log::errors());
        }
        const std::map<std::string, int> counts = world.counts();
        endAndExpectNothingLeft("without a fault");
        return counts;
    }
    void failOne(const std::string& method, int nth) {
        const std::string where = method + " no. " + std::to_string(nth);
        host::log::clear();
        hostTexture();
        world.clearCalls();
        world.failNth(method, nth);
        start(GetParam());
        {
            Effect effect;
            int32_t number = 0;
            liveOn(effect, number);
            EXPECT_TRUE(world.faultStruck()) << where;
            if (kSilent.count(method) == 0 && method != "GetDeviceRemovedReason") {
                EXPECT_NE(Lines(), host::log::errors()) << where;
            }
            expectWorks(effect, where);
        }
        endAndExpectNothingLeft(where);
    }

private:
    uint32_t indices_[6] = {0, 1, 2, 2, 1, 3};
    ID3D11Texture2D* host_texture_ = nullptr;
};

TEST_P(FaultSweepTest, EveryCallFailsOnce) {
    // An effect without its deferred context has no way to draw, now or later.
    const std::set<std::string> final = {"CreateDeferredContext"};
    int faults = 0;
    for (const auto& [method, count] : callsOfALife()) {
        for (int nth = 1; nth <= count && final.count(method) == 0; ++nth) {
            failOne(method, nth);
            ++faults;
            if (HasFailure()) {
                return;
            }
        }
    }
    RecordProperty("faults", faults);
}

TEST_P(FaultSweepTest, EveryCallOfAKindFails) {
    const std::map<std::string, int> methods = callsOfALife();
    for (const auto& [method, count] : methods) {
        host::log::clear();
        hostTexture();
        world.failAll(method, E_OUTOFMEMORY);
        start(GetParam());
        {
            Effect effect;
            int32_t number = 0;
            liveOn(effect, number);
            if (method == "CreateDeferredContext") {
                world.clearFaults();
            } else {
                expectWorks(effect, "all of " + method);
            }
        }
        endAndExpectNothingLeft("all of " + method);
    }
}

// From the first, the second ... the last call of a life on every call fails, and the device says
// that it is removed. Once it is back, an effect works.
TEST_P(FaultSweepTest, ADeviceIsLostAtAnyMomentAndComesBack) {
    constexpr HRESULT kRemoved = static_cast<HRESULT>(0x887A0005);
    constexpr HRESULT kReset = static_cast<HRESULT>(0x887A0007);
    int moments = 0;
    for (const auto& [method, count] : callsOfALife()) {
        moments += method == "GetDeviceRemovedReason" ? 0 : count;
    }
    EXPECT_GT(moments, 150);
    for (int moment = 1; moment <= moments && !HasFailure(); ++moment) {
        const std::string where = "lost at call " + std::to_string(moment);
        host::log::clear();
        hostTexture();
        world.clearCalls();
        world.removeAt(moment, moment % 2 == 0 ? kRemoved : kReset);
        start(GetParam());
        {
            Effect effect;
            int32_t number = 0;
            liveOn(effect, number);
            EXPECT_TRUE(world.faultStruck()) << where;
            // One that began on the lost device has perhaps no context: the host makes another.
            Effect fresh;
            liveOn(fresh, number);
            world.remove(S_OK);
            Effect later;
            liveOn(later, number);
            expectWorks(later, where);
        }
        endAndExpectNothingLeft(where);
    }
    RecordProperty("moments", moments);
}

INSTANTIATE_TEST_SUITE_P(Modes, FaultSweepTest, testing::Values(Mode::inlined, Mode::threaded),
                         host::modeParamName);

}  // namespace
