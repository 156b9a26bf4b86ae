#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "fake/world.h"
#include "host/library.h"
#include "host/log_capture.h"
#include "host/shaders.h"

namespace host {

using Lines = std::vector<std::string>;
using Effect = std::shared_ptr<IOpenGLEffect>;

enum class Mode { inlined, threaded };
std::string modeName(Mode mode);

/// What CreateEffect takes, with values that most tests leave alone.
struct EffectPlan {
    uint32_t width = 67;
    uint32_t height = 41;
    uint32_t pitch = 67 * 4;
    bool with_depth = false;
    std::string fragment_path;
    std::string vertex_path;
    uint32_t encoding = 0;
    SegmentList fragment_segments;
    SegmentList vertex_segments;
};

/// A fake device that stays valid until the process ends: what an engine keeps of it may outlive
/// the test.
fake::World& newWorld();

/// Lines without the calls of one method, whose place among the others is free.
Lines without(Lines lines, const std::string& method);

/// A test that hosts the library on the fake device.
class FakeHost : public testing::Test {
protected:
    void SetUp() override;
    /// Destroys the engines that are left and looks for misuse of the device.
    void TearDown() override;

    /// Makes the mode's engine on the fake device and makes it the one that effects come from.
    IOpenGLEffectEngine* start(Mode mode);
    void stop();

    Effect makeEffect(const EffectPlan& plan = {});
    /// An effect with its fragment text given, not initialised.
    Effect makeEffectOf(const char* fragment, const EffectPlan& plan = {});
    /// The same, initialised; the calls so far are forgotten.
    Effect readyEffect(const char* fragment = kRed, const EffectPlan& plan = {});

    int32_t init(const Effect& effect) { return effect->InitEffect(effect); }
    int32_t draw(const Effect& effect) { return draw(effect, DrawParams()); }
    int32_t draw(const Effect& effect, const DrawParams& params) {
        return effect->DrawEffect(params, effect, 0);
    }

    /// The device's calls since the last call of this, GetImmediateContext left out.
    Lines takeCalls();

    fake::World& world = newWorld();
    IOpenGLEffectEngine* engine = nullptr;
    bool misuse_expected = false;

private:
    std::vector<IOpenGLEffectEngine*> engines_;
};

/// The same in both modes.
class FakeHostBothModes : public FakeHost, public testing::WithParamInterface<Mode> {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        start(GetParam());
    }
};

inline std::string modeParamName(const testing::TestParamInfo<Mode>& info) {
    return modeName(info.param);
}

}  // namespace host
