#pragma once

#include <gtest/gtest.h>

#include <string>

#include "host/fake_host.h"

namespace contract {

using host::Effect;
using host::Lines;
using host::Mode;

/// Pictures of host memory on their way to the shader: 2 x 2 pixels of four bytes at first.
class PictureTest : public host::FakeHost {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(Mode::inlined);
        effect = makeEffectOf(host::kPass);
        effect->AddFlatInput(2, 2, 8, false);
        ASSERT_EQ(0, init(effect)) << host::log::all();
        ASSERT_EQ(0, draw(effect));  // target, state, buffers
        world.clearCalls();
        for (size_t i = 0; i < sizeof pixels; ++i) {
            pixels[i] = static_cast<uint8_t>(i + 1);
            other[i] = static_cast<uint8_t>(200 - i);
        }
    }
    void TearDown() override {
        effect.reset();
        FakeHost::TearDown();
    }
    int32_t set(const void* data) { return effect->SetInputTexture(0, data, 2, 2, 8, 4, false, 0); }
    int32_t setStill(const void* data) {
        return effect->SetInputTextureRef(0, data, 2, 2, 8, 4, false, 0, 5, 6);
    }
    void drawOnce() {
        world.clearCalls();
        EXPECT_EQ(0, draw(effect));
    }
    /// Name of the view at a position while the pass is drawn, "" if nothing was bound.
    std::string boundAt(int position) {
        const std::string begin = std::to_string(position) + ", [";
        for (const fake::Call& call : world.callsOf("PSSetShaderResources")) {
            if (call.arguments.find(begin) == 0 &&
                call.arguments.find("null") == std::string::npos) {
                return call.arguments.substr(begin.size(),
                                             call.arguments.size() - begin.size() - 1);
            }
        }
        return "";
    }
    size_t uploads() { return world.callsOf("UpdateSubresource").size(); }
    size_t textures() { return world.callsOf("CreateTexture2D").size(); }

    Effect effect;
    uint8_t pixels[64] = {};
    uint8_t other[64] = {};
};

}  // namespace contract
