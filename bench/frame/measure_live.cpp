#include <memory>

#include "frame/frame_sections.h"
#include "frame/frame_world.h"
#include "frame/heap_hook.h"

namespace bench {
namespace {

constexpr double kMostKib = 32.0;
constexpr double kFlat = 1.1;  // one of many may cost this much more than a lone one

// Effects, and as many frames by hand, of which the first or each in turn is drawn.
class Crowd {
public:
    explicit Crowd(const Engine& engine) : engine_(engine), texts_(usual_texts()) {
        plan_.fragment = usual_fragment();
        plan_.width = plan_.height = 16;
    }

    // Each is drawn once, so that it has all that it keeps.
    void grow_to(int count) {
        while (static_cast<int>(effects_.size()) < count) {
            effects_.push_back(std::make_unique<Effect>(engine_, plan_));
            effects_.back()->draw();
        }
    }
    void grow_hands_to(int count) {
        while (static_cast<int>(hands_.size()) < count) {
            hands_.push_back(std::make_unique<HandFrame>(engine_.device(), texts_, plan_.width,
                                                         plan_.height, FrameWork{},
                                                         HandStyle::kSameCalls));
            hands_.back()->draw();
        }
    }

    void draw_first() { effects_.front()->draw(); }
    void draw_next() { effects_[next(next_effect_, effects_.size())]->draw(); }
    void draw_next_by_hand() { hands_[next(next_hand_, hands_.size())]->draw(); }

private:
    static size_t next(size_t& position, size_t count) {
        position = (position + 1) % count;
        return position;
    }

    const Engine& engine_;
    HlslTexts texts_;
    EffectPlan plan_;
    std::vector<std::unique_ptr<Effect>> effects_;
    std::vector<std::unique_ptr<HandFrame>> hands_;
    size_t next_effect_ = 0;
    size_t next_hand_ = 0;
};

struct LiveRow {
    int alive;
    double first_us, next_us, hand_us, kib;
};

void add_findings(Section& section, const std::vector<LiveRow>& rows) {
    const LiveRow& one = rows.front();
    const LiveRow& many = rows.back();
    const double growth = many.first_us / one.first_us;
    section.findings = {
        {format("1 to %d live effects: time per draw of one", many.alive), "one live effect",
         format("%.2f times (%.3f beside %.3f us)", growth, many.first_us, one.first_us), "flat",
         outcome_of(growth <= kFlat)},
        {format("%d live effects drawn in turn: time per draw", many.alive),
         "as many frames by hand in turn",
         format("%.3f us beside %.3f us; one of each: %.3f beside %.3f us", many.next_us,
                many.hand_us, one.next_us, one.hand_us),
         "", Outcome::kStated},
        {format("memory per live effect, %d alive", many.alive), "without its textures",
         format("%.1f KiB", many.kib), "32 KiB", outcome_of(many.kib <= kMostKib)}};
}

}  // namespace

Section measure_live_effects(const FrameScale& scale) {
    const Engine engine(false, null_world().device());
    Crowd crowd(engine);
    std::vector<LiveRow> found;
    const int64_t before = hooked_heap().bytes_in_use;
    for (int alive = 1; alive <= scale.live_effects; alive *= 10) {
        crowd.grow_to(alive);
        const auto bytes = static_cast<double>(hooked_heap().bytes_in_use - before);
        crowd.grow_hands_to(alive);
        // The lone one by itself: in turns with the others it would find its data gone each time.
        const Rounds lone = short_block_times(scale.rounds, {[&crowd] { crowd.draw_first(); }});
        const Rounds all = short_block_times(
            scale.rounds,
            {[&crowd] { crowd.draw_next(); }, [&crowd] { crowd.draw_next_by_hand(); }});
        found.push_back(
            {alive, lone.median_of(0), all.median_of(0), all.median_of(1), bytes / alive / 1024.0});
    }
    Section section;
    section.title = "live effects";
    section.columns = {"alive", "us, always the first", "us, each in turn", "by hand, each in turn",
                       "KiB per effect"};
    for (const LiveRow& row : found) {
        section.rows.push_back({std::to_string(row.alive),
                                {row.first_us, 3},
                                {row.next_us, 3},
                                {row.hand_us, 3},
                                {row.kib, 2}});
    }
    section.notes.push_back(
        "heap of the library and its C++ run-time, without textures; the first "
        "row holds what the pool keeps once");
    add_findings(section, found);
    return section;
}

}  // namespace bench
