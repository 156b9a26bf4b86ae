#include "frame/frame_sections.h"
#include "frame/frame_world.h"

namespace bench {
namespace {

constexpr double kMostGrowth = 1.5;  // of what one more costs, late beside early

struct Step {
    const char* what;
    int EffectPlan::*field;
    std::vector<int> counts;
};

// What one more costs between two counts.
double slope(const std::vector<int>& counts, const std::vector<double>& us, size_t from,
             size_t to) {
    return (us[to] - us[from]) / (counts[to] - counts[from]);
}

Finding finding_of(const Step& step, const std::vector<double>& us) {
    const size_t last = us.size() - 1;
    const double early = slope(step.counts, us, 0, last - 1);
    const double late = slope(step.counts, us, last - 1, last);
    return {
        format("%s %d to %d: time of one more", step.what, step.counts.front(), step.counts.back()),
        format("late (from %d on) beside early", step.counts[last - 1]),
        format("%.1f ns; late %.2f times early", slope(step.counts, us, 0, last) * 1000.0,
               late / early),
        "linear", outcome_of(late <= kMostGrowth * early)};
}

}  // namespace

Section measure_slopes(const FrameScale& scale) {
    const Step steps[] = {{"passes", &EffectPlan::passes, {1, 4, 16, 64}},
                          {"instances", &EffectPlan::instances, {1, 10, 100, 1000}},
                          {"parameters", &EffectPlan::floats, {2, 10, 50, 250}}};
    const Engine engine(false, null_world().device());
    Section section;
    section.title = "slopes: us per frame over passes, instances, parameters";
    section.columns = {"what", "count", "us", "us for one more"};
    for (const Step& step : steps) {
        std::vector<std::unique_ptr<Effect>> effects;
        std::vector<std::function<void()>> frames;
        for (const int count : step.counts) {
            EffectPlan plan;
            plan.fragment = usual_fragment();
            plan.*step.field = count;
            effects.push_back(std::make_unique<Effect>(engine, plan));
            frames.push_back([effect = effects.back().get()] { effect->draw(); });
        }
        const Rounds times = short_block_times(scale.rounds, frames);
        std::vector<double> us;
        for (size_t i = 0; i < step.counts.size(); ++i) {
            us.push_back(times.median_of(i));
            section.rows.push_back({step.what,
                                    {static_cast<double>(step.counts[i]), 0},
                                    {us[i], 3},
                                    {i == 0 ? 0.0 : slope(step.counts, us, 0, i), 4}});
        }
        section.findings.push_back(finding_of(step, us));
    }
    section.notes.push_back(format("medians of %d interleaved blocks of %d frames",
                                   scale.rounds * kShortRounds, kShortBlock));
    return section;
}

}  // namespace bench
