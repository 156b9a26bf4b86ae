#include <algorithm>

#include "frame/frame_sections.h"
#include "frame/frame_world.h"

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

// Fewer frames where each takes longer.
int frames_of(const Size& size, const FrameScale& scale) {
    const double pixels = static_cast<double>(size.width) * size.height;
    return std::max(5, static_cast<int>(scale.frames * 64.0 * 64.0 / pixels * 8.0));
}

std::vector<Cell> measure_row(const Engine& engine, const Size& size, const Kind& kind,
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

    const std::vector<double> times =
        block_medians(scale.rounds, std::min(scale.frames, frames_of(size, scale)),
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
    return {std::to_string(size.width) + "x" + std::to_string(size.height),
            kind.name,
            {times[0], 1},
            {times[1], 1},
            {times[0] / times[1], 3},
            {times[2], 1},
            {times[0] / times[2], 3}};
}

}  // namespace

Section measure_real_frames(const FrameScale& scale) {
    const Engine engine(false, nullptr);
    Section section;
    section.title = "steady frame on the real device";
    section.columns = {"size",  "frame",      "DrawEffect us",   "same calls us",
                       "ratio", "careful us", "ratio to careful"};
    for (const Size& size : kSizes) {
        for (const Kind& kind : kKinds) {
            section.rows.push_back(measure_row(engine, size, kind, scale));
        }
    }
    section.notes.push_back("medians of " + std::to_string(scale.rounds) +
                            " interleaved blocks; each frame is flushed, each block waits for its "
                            "last frame");
    return section;
}

}  // namespace bench
