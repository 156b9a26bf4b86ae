#include <algorithm>

#include "frame/frame_sections.h"
#include "frame/frame_world.h"
#include "frame/same_calls.h"

namespace bench {
namespace {

struct Kind {
    const char* name;
    FrameWork work;
};

constexpr Kind kKinds[] = {
    {"draw", {false, false}},
    {"draw, upload", {true, false}},
    {"draw, upload, read-back", {true, true}},
};

struct Size {
    uint32_t width;
    uint32_t height;
};

constexpr Size kSizes[] = {{64, 64}, {640, 360}, {1920, 1080}};

constexpr double kMostToSame = 1.05;
constexpr double kMostToCareful = 1.25;

struct RealRow {
    Size size;
    const char* kind;
    double us[3];  // the library, the same calls by hand, the careful programmer
    double to_same;
    double to_careful;
};

// Fewer frames where each takes longer. A block lasts a tenth of a second or more: the wait for its
// end may take a turn of the system's scheduler, some milliseconds.
int frames_of(const Size& size, const FrameScale& scale) {
    const double pixels = static_cast<double>(size.width) * size.height;
    const int fitting = static_cast<int>(scale.frames * 64.0 * 64.0 / pixels * 8.0);
    return std::min(scale.frames * 5, std::max(5, fitting));
}

// Both sides of a comparison give the device the same work.
void expect_same_work(const Kind& kind) {
    fake::World& world = null_world();
    world.setRecording(true);
    const Engine engine(false, world.device());
    EffectPlan plan;
    plan.fragment = usual_fragment();
    Effect effect(engine, plan);
    HandFrame hand(world.device(), usual_texts(), plan.width, plan.height, kind.work,
                   HandStyle::kSameCalls);
    std::vector<uint8_t> result(size_t{plan.width} * plan.height * 4);
    DrawParams params;
    params.readback_buffer = kind.work.read_back ? result.data() : nullptr;
    const auto draw = [&effect, &params, &kind] {
        if (kind.work.upload) {
            effect.set_streaming_picture();
        }
        effect.draw(params);
    };
    expect_same_calls(world, draw, [&hand] { hand.draw(); });
}

RealRow measure_row(const Engine& engine, const Size& size, const Kind& kind,
                    const FrameScale& scale) {
    EffectPlan plan;
    plan.fragment = usual_fragment();
    plan.width = size.width;
    plan.height = size.height;
    Effect effect(engine, plan);
    const HlslTexts texts = usual_texts();
    HandFrame same(engine.device(), texts, size.width, size.height, kind.work,
                   HandStyle::kSameCalls);
    HandFrame careful(engine.device(), texts, size.width, size.height, kind.work,
                      HandStyle::kCareful);
    std::vector<uint8_t> result(size_t{size.width} * size.height * 4);
    DrawParams params;
    params.readback_buffer = kind.work.read_back ? result.data() : nullptr;
    ID3D11DeviceContext* immediate = engine.immediate();

    const Rounds times = block_times(scale.rounds, frames_of(size, scale),
                                     {[&effect, &params, &kind, immediate] {
                                          if (kind.work.upload) {
                                              effect.set_streaming_picture();
                                          }
                                          effect.draw(params);
                                          immediate->Flush();
                                      },
                                      [&same, immediate] {
                                          same.draw();
                                          immediate->Flush();
                                      },
                                      [&careful, immediate] {
                                          careful.draw();
                                          immediate->Flush();
                                      }},
                                     [&engine] { wait_for_device(engine.device()); });
    return {size,
            kind.name,
            {times.median_of(0), times.median_of(1), times.median_of(2)},
            times.ratio(0, 1),
            times.ratio(0, 2)};
}

Finding finding_of(const RealRow& row, const char* against, double us, double ratio, double most) {
    const char* const unit = row.us[0] < 1000.0 ? "us" : "ms";
    const double scale = row.us[0] < 1000.0 ? 1.0 : 1000.0;
    return {format("real device, %ux%u: %s", row.size.width, row.size.height, row.kind), against,
            format("%.2f times (%.2f beside %.2f %s)", ratio, row.us[0] / scale, us / scale, unit),
            most > 0.0 ? format("%.2f times", most) : "",
            most > 0.0 ? outcome_of(ratio <= most) : Outcome::kStated};
}

void add(Section& section, const RealRow& row) {
    section.rows.push_back({format("%ux%u", row.size.width, row.size.height),
                            row.kind,
                            {row.us[0], 1},
                            {row.us[1], 1},
                            {row.to_same, 3},
                            {row.us[2], 1},
                            {row.to_careful, 3}});
    section.findings.push_back(
        finding_of(row, "the same calls by hand", row.us[1], row.to_same, kMostToSame));
    const bool smallest = row.size.width == kSizes[0].width;
    section.findings.push_back(finding_of(row, "a careful programmer's fewer calls", row.us[2],
                                          row.to_careful, smallest ? kMostToCareful : 0.0));
}

}  // namespace

Section measure_real_frames(const FrameScale& scale) {
    for (const Kind& kind : kKinds) {
        expect_same_work(kind);
    }
    const Engine engine(false, nullptr);
    Section section;
    section.title = "steady frame on the real device";
    section.columns = {"size",  "frame",      "DrawEffect us",   "same calls us",
                       "ratio", "careful us", "ratio to careful"};
    for (const Size& size : kSizes) {
        for (const Kind& kind : kKinds) {
            add(section, measure_row(engine, size, kind, scale));
        }
    }
    section.notes.push_back("medians of " + std::to_string(scale.rounds) +
                            " interleaved blocks; each frame is flushed, each block waits for its "
                            "last frame; ratios are the medians over the rounds");
    return section;
}

}  // namespace bench
