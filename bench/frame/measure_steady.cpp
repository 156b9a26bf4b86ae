#include <algorithm>
#include <stdexcept>

#include "frame/frame_sections.h"
#include "frame/frame_world.h"
#include "frame/heap_hook.h"

namespace bench {
namespace {

// "deferred#2" and "deferred#1" are the same kind of thing.
std::string kind_of(const std::string& object) {
    return object.substr(0, object.find('#'));
}

// Kinds of objects and methods of one frame in their order. Who asks for the immediate context,
// and when, is left open.
std::vector<std::string> calls_of(fake::World& world, const std::function<void()>& frame) {
    frame();
    world.clearCalls();
    frame();
    std::vector<std::string> calls;
    for (const fake::Call& call : world.calls()) {
        if (call.method != "GetImmediateContext") {
            calls.push_back(kind_of(call.object) + "." + call.method);
        }
    }
    return calls;
}

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += "  " + line + "\n";
    }
    return text;
}

// The comparison says something only if both sides do the same.
void expect_same_calls(fake::World& world, Effect& effect, HandFrame& hand) {
    world.setRecording(true);
    const auto ours = calls_of(world, [&effect] { effect.draw(); });
    const auto by_hand = calls_of(world, [&hand] { hand.draw(); });
    world.setRecording(false);
    if (ours != by_hand) {
        throw std::runtime_error("the frame by hand is not the library's:\nlibrary\n" +
                                 joined(ours) + "by hand\n" + joined(by_hand));
    }
}

struct FrameCost {
    double allocations;
    double objects;
};

FrameCost cost_of_frames(const fake::World& world, Effect& effect, int frames) {
    const uint64_t allocations = hooked_heap().allocations;
    const int objects = world.createdInAll();
    for (int i = 0; i < frames; ++i) {
        effect.draw();
    }
    return {static_cast<double>(hooked_heap().allocations - allocations) / frames,
            static_cast<double>(world.createdInAll() - objects) / frames};
}

}  // namespace

Section measure_steady_frame(const FrameScale& scale) {
    fake::World& world = null_world();
    world.setRecording(true);
    const Engine engine(false, world.device());
    EffectPlan plan;
    plan.fragment = usual_fragment();
    Effect effect(engine, plan);
    HandFrame hand(world.device(), usual_texts(), plan.width, plan.height, {},
                   HandStyle::kSameCalls);
    expect_same_calls(world, effect, hand);

    const std::vector<double> times =
        block_medians(scale.rounds * 2 + 1, 1000,
                      {[&effect] { effect.draw(); }, [&hand] { hand.draw(); }}, [] {});
    const FrameCost cost = cost_of_frames(world, effect, 1000);
    const double hand_objects = [&world, &hand] {
        const int before = world.createdInAll();
        hand.draw();
        return static_cast<double>(world.createdInAll() - before);
    }();

    Section section;
    section.title = "steady frame: DrawEffect, inline, on a device that does nothing";
    section.columns = {"frame", "us", "ratio", "us more", "heap allocations", "device objects"};
    section.rows = {{"by hand, same calls", {times[1], 3}, "", "", "", {hand_objects, 2}},
                    {"DrawEffect",
                     {times[0], 3},
                     {times[0] / times[1], 3},
                     {times[0] - times[1], 3},
                     {cost.allocations, 3},
                     {cost.objects, 2}}};
    section.notes.push_back("medians of " + std::to_string(scale.rounds * 2 + 1) +
                            " interleaved blocks of 1000 frames; the calls were compared one by "
                            "one first; heap: the library and its C++ run-time");
    return section;
}

Section measure_live_effects(const FrameScale& scale) {
    fake::World& world = null_world();
    const Engine engine(false, world.device());
    EffectPlan plan;
    plan.fragment = usual_fragment();
    plan.width = plan.height = 16;
    Section section;
    section.title = "live effects: one of many drawn at a time";
    section.columns = {"alive", "us per draw", "KiB per effect"};
    std::vector<std::unique_ptr<Effect>> effects;
    const int64_t before = hooked_heap().bytes_in_use;
    for (int alive = 1; alive <= scale.live_effects; alive *= 10) {
        while (static_cast<int>(effects.size()) < alive) {
            effects.push_back(std::make_unique<Effect>(engine, plan));
            effects.back()->draw();
        }
        size_t next = 0;
        const std::vector<double> times = block_medians(scale.rounds, 1000, {[&effects, &next] {
                                                            effects[next]->draw();
                                                            next = (next + 1) % effects.size();
                                                        }},
                                                        [] {});
        const auto bytes = static_cast<double>(hooked_heap().bytes_in_use - before);
        section.rows.push_back({std::to_string(alive), {times[0], 3}, {bytes / alive / 1024.0, 2}});
    }
    section.notes.push_back(
        "heap of the library and its C++ run-time, without textures; the first "
        "row holds what the pool keeps once");
    return section;
}

Section measure_slopes(const FrameScale& scale) {
    struct Step {
        const char* what;
        int EffectPlan::*field;
        std::vector<int> counts;
    };
    const Step steps[] = {{"passes", &EffectPlan::passes, {1, 4, 16, 64}},
                          {"instances", &EffectPlan::instances, {1, 10, 100, 1000}},
                          {"parameters", &EffectPlan::floats, {2, 10, 50, 250}}};
    fake::World& world = null_world();
    const Engine engine(false, world.device());
    Section section;
    section.title = "slopes: us per frame over passes, instances, parameters";
    section.columns = {"what", "count", "us", "us for one more"};
    for (const Step& step : steps) {
        double first = 0.0;
        for (const int count : step.counts) {
            EffectPlan plan;
            plan.fragment = usual_fragment();
            plan.*step.field = count;
            Effect effect(engine, plan);
            const double us =
                block_medians(scale.rounds, 100, {[&effect] { effect.draw(); }}, [] {})[0];
            const bool is_first = count == step.counts.front();
            first = is_first ? us : first;
            const double slope = is_first ? 0.0 : (us - first) / (count - step.counts.front());
            section.rows.push_back(
                {step.what, {static_cast<double>(count), 0}, {us, 3}, {slope, 4}});
        }
    }
    return section;
}

}  // namespace bench
