#include "host/fake_host.h"

#include <algorithm>

namespace host {

std::string modeName(Mode mode) {
    return mode == Mode::inlined ? "inlined" : "threaded";
}

fake::World& newWorld() {
    static std::vector<std::unique_ptr<fake::World>>* worlds =
        new std::vector<std::unique_ptr<fake::World>>;  // never freed: see the header
    worlds->push_back(std::make_unique<fake::World>());
    return *worlds->back();
}

Lines without(Lines lines, const std::string& method) {
    const std::string call = "." + method + "(";
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [&call](const std::string& line) {
                                   return line.find(call) != std::string::npos;
                               }),
                lines.end());
    return lines;
}

void FakeHost::SetUp() {
    log::clear();
}

void FakeHost::TearDown() {
    stop();
    if (!misuse_expected) {
        EXPECT_EQ(Lines(), world.errors());
    }
    if (HasFailure()) {
        std::fprintf(stderr, "%s", log::all().c_str());
    }
}

IOpenGLEffectEngine* FakeHost::start(Mode mode) {
    engine = nullptr;
    const int32_t result =
        Library::get().create(&engine, log::receive, mode == Mode::threaded, world.device());
    EXPECT_EQ(0, result);
    if (engine != nullptr) {
        engines_.push_back(engine);
    }
    return engine;
}

void FakeHost::stop() {
    for (IOpenGLEffectEngine* made : engines_) {
        Library::get().destroy(made);
    }
    engines_.clear();
    engine = nullptr;
}

Effect FakeHost::makeEffect(const EffectPlan& plan) {
    Effect effect;
    const int32_t result = engine->CreateEffect(
        plan.width, plan.height, plan.pitch, plan.with_depth, plan.fragment_path.c_str(), effect,
        plan.encoding, plan.vertex_path.c_str(), plan.fragment_segments, plan.vertex_segments);
    EXPECT_EQ(0, result);
    return effect;
}

Effect FakeHost::makeEffectOf(const char* fragment, const EffectPlan& plan) {
    Effect effect = makeEffect(plan);
    effect->SetFragmentShaderText(fragment);
    return effect;
}

Effect FakeHost::readyEffect(const char* fragment, const EffectPlan& plan) {
    Effect effect = makeEffectOf(fragment, plan);
    EXPECT_EQ(0, init(effect)) << log::all();
    world.clearCalls();
    return effect;
}

Lines FakeHost::takeCalls() {
    Lines lines = without(world.texts(), "GetImmediateContext");
    world.clearCalls();
    return lines;
}

}  // namespace host
