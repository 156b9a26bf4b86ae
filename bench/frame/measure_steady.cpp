#include <stdexcept>

#include "frame/frame_sections.h"
#include "frame/frame_world.h"
#include "frame/heap_hook.h"
#include "frame/same_calls.h"

namespace bench {
namespace {

constexpr double kMostTimes = 1.3;
constexpr double kMostMoreUs = 3.0;
constexpr int kCountedFrames = 1000;

struct FrameCost {
    double allocations;
    double objects;
};

FrameCost cost_of_frames(const fake::World& world, const std::function<void()>& frame) {
    const uint64_t allocations = hooked_heap().allocations;
    const int objects = world.createdInAll();
    for (int i = 0; i < kCountedFrames; ++i) {
        frame();
    }
    return {static_cast<double>(hooked_heap().allocations - allocations) / kCountedFrames,
            static_cast<double>(world.createdInAll() - objects) / kCountedFrames};
}

void add_findings(Section& section, const Rounds& times, const FrameCost& cost,
                  double hand_objects) {
    const double ratio = times.ratio(0, 1);
    const double more = times.median_of(0) - times.median_of(1);
    section.findings = {
        {"steady frame on a device that does nothing: DrawEffect, inline", "the same calls by hand",
         format("%.2f times, %.2f us more (%.3f beside %.3f us)", ratio, more, times.median_of(0),
                times.median_of(1)),
         "1.3 times, 3 us more", outcome_of(ratio <= kMostTimes && more <= kMostMoreUs)},
        {"steady frame: heap allocations", "none", format("%.3f", cost.allocations), "0",
         outcome_of(cost.allocations == 0.0)},
        {"steady frame: device objects made", "the states and the command list of a draw",
         format("%.2f beside %.2f", cost.objects, hand_objects), "the same",
         outcome_of(cost.objects == hand_objects)}};
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
    const auto draw = [&effect] { effect.draw(); };
    const auto draw_by_hand = [&hand] { hand.draw(); };
    expect_same_calls(world, draw, draw_by_hand);

    const Rounds times = short_block_times(scale.rounds, {draw, draw_by_hand});
    const FrameCost cost = cost_of_frames(world, draw);
    const double hand_objects = cost_of_frames(world, draw_by_hand).objects;

    Section section;
    section.title = "steady frame: DrawEffect, inline, on a device that does nothing";
    section.columns = {"frame",          "us",      "least us",    "ratio",
                       "least to least", "us more", "allocations", "device objects"};
    section.rows = {{"by hand, same calls",
                     {times.median_of(1), 3},
                     {times.least_of(1), 3},
                     "",
                     "",
                     "",
                     "",
                     {hand_objects, 2}},
                    {"DrawEffect",
                     {times.median_of(0), 3},
                     {times.least_of(0), 3},
                     {times.ratio(0, 1), 3},
                     {times.least_of(0) / times.least_of(1), 3},
                     {times.median_of(0) - times.median_of(1), 3},
                     {cost.allocations, 3},
                     {cost.objects, 2}}};
    section.notes.push_back(
        format("medians of %d interleaved blocks of %d frames; the calls were compared one by one "
               "first, with all arguments and bytes; heap: the library and its C++ run-time",
               scale.rounds * kShortRounds, kShortBlock));
    add_findings(section, times, cost, hand_objects);
    return section;
}

}  // namespace bench
