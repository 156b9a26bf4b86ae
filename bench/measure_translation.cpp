#include <algorithm>
#include <stdexcept>

#include "ours.h"
#include "reference.h"
#include "sections.h"
#include "timing.h"
#include "tokenizer.h"

namespace bench {
namespace {

// Median microseconds of each effect, by what was run.
struct Times {
    std::vector<double> tokens;
    std::vector<double> ours;
    std::vector<double> from_source;
    std::vector<double> reference;
};

constexpr size_t kWarmUp = 4;

// Sums up what a run did, so that no run can be left out by the compiler.
volatile size_t sink = 0;

// All four go round by round, so that a change of the machine's pace meets them alike.
Times measure(const std::vector<Pair>& pairs, const std::vector<Subject>& subjects, int rounds) {
    const ReferenceTranslator reference;
    const size_t count = pairs.size();
    std::vector<std::vector<double>> all[4];
    for (auto& of_one : all) {
        of_one.resize(count);
    }
    ProgramText text;
    std::string hlsl;
    std::string error;
    for (int round = -1; round < rounds; ++round) {
        // Each kind begins with a few runs that are not timed: the kind before it has left its own
        // code and data in the caches.
        const auto keep = [&all, count, round](size_t which, const auto& work) {
            for (size_t i = count - std::min(count, kWarmUp); i < count; ++i) {
                work(i);
            }
            for (size_t i = 0; i < count; ++i) {
                const double us = time_us([&work, i] { work(i); });
                if (round >= 0) {
                    all[which][i].push_back(us);
                }
            }
        };
        keep(0, [&subjects](size_t i) {
            const AssembledProgram& glsl = subjects[i].assembled();
            sink = sink + count_tokens(glsl.vertex) + count_tokens(glsl.fragment);
        });
        keep(1, [&subjects, &text](size_t i) {
            text = {};
            sink = sink + subjects[i].translate(text);
        });
        keep(2, [&subjects, &text](size_t i) {
            text = {};
            sink = sink + subjects[i].translate_from_source(text);
        });
        keep(3, [&reference, &pairs, &hlsl, &error](size_t i) {
            sink = sink + reference.translate(pairs[i].complete, hlsl, error);
        });
    }
    std::vector<double> medians[4];
    for (size_t which = 0; which < 4; ++which) {
        for (std::vector<double>& values : all[which]) {
            medians[which].push_back(median(std::move(values)));
        }
    }
    return {medians[0], medians[1], medians[2], medians[3]};
}

double megabytes_per_second(size_t bytes, double us) {
    return us > 0.0 ? static_cast<double>(bytes) / us : 0.0;
}

std::vector<Cell> make_row(std::string name, size_t bytes, double tokens, double ours,
                           double from_source, double reference) {
    return {std::move(name),
            {static_cast<double>(bytes), 0},
            {ours, 1},
            {megabytes_per_second(bytes, ours), 1},
            {from_source, 1},
            {reference, 1},
            {reference / ours, 1},
            {tokens, 2},
            {ours / tokens, 1}};
}

void add_each(Section& section, const std::vector<Subject>& subjects,
              const std::vector<Pair>& pairs, const Times& times) {
    for (size_t i = 0; i < pairs.size(); ++i) {
        section.rows.push_back(make_row(pairs[i].effect.name, subjects[i].assembled_bytes(),
                                        times.tokens[i], times.ours[i], times.from_source[i],
                                        times.reference[i]));
    }
}

// Positions in the order of the ratio between the two translators, the worst for us first.
std::vector<size_t> by_ratio(const Times& times) {
    std::vector<size_t> order(times.ours.size());
    for (size_t i = 0; i < order.size(); ++i) {
        order[i] = i;
    }
    std::sort(order.begin(), order.end(), [&times](size_t a, size_t b) {
        return times.reference[a] / times.ours[a] < times.reference[b] / times.ours[b];
    });
    return order;
}

void add_summary(Section& section, const std::vector<Subject>& subjects, const Times& times) {
    const std::vector<size_t> order = by_ratio(times);
    const auto add = [&section, &subjects, &times](const char* name, size_t i) {
        section.rows.push_back(make_row(name, subjects[i].assembled_bytes(), times.tokens[i],
                                        times.ours[i], times.from_source[i], times.reference[i]));
    };
    add("median ratio", order[order.size() / 2]);
    add("smallest ratio", order.front());
    const auto slowest = std::max_element(times.ours.begin(), times.ours.end());
    add("slowest of ours", static_cast<size_t>(slowest - times.ours.begin()));
}

// The summary's lines: each effect's own ratio, and the middle of them.
void add_findings(Section& section, const std::string& title, const Times& times) {
    constexpr double kWanted = 40.0;
    constexpr size_t kFewest = 100;  // effects, for a median that says something
    const bool enough = times.ours.size() >= kFewest;
    const std::vector<size_t> order = by_ratio(times);
    const auto ratio = [&times](size_t i) { return times.reference[i] / times.ours[i]; };
    const double middle = ratio(order[order.size() / 2]);
    const double slowest = *std::max_element(times.ours.begin(), times.ours.end());
    std::vector<double> floors;
    floors.reserve(order.size());
    for (size_t i = 0; i < order.size(); ++i) {
        floors.push_back(times.ours[i] / times.tokens[i]);
    }
    section.findings.push_back(
        {title, "glslang + SPIRV-Cross",
         format("1/%.1f (%.1f us beside %.0f us); the least 1/%.1f; the slowest effect %.1f us",
                middle, median(times.ours), median(times.reference), ratio(order.front()), slowest),
         enough ? "1/40 at the median" : "",
         enough ? outcome_of(middle >= kWanted) : Outcome::kStated});
    section.findings.push_back(
        {title, "a plain tokenizer (" + format("%.2f us", median(times.tokens)) + ")",
         format("%.1f times", median(floors)), "", Outcome::kStated});
}

}  // namespace

Section measure_translation(const std::string& title, const std::vector<Pair>& pairs,
                            const Scale& scale, bool each) {
    Section section;
    section.title = title;
    section.columns = {"effect",       "bytes", "ours us",  "MB/s",   "from source us",
                       "reference us", "ratio", "floor us", "x floor"};
    if (pairs.empty()) {
        section.notes.push_back("no effect that both sides take");
        return section;
    }
    std::vector<Subject> subjects;
    for (const Pair& pair : pairs) {
        subjects.emplace_back(pair.effect);
    }
    const Times times = measure(pairs, subjects, scale.rounds);
    if (each) {
        add_each(section, subjects, pairs, times);
    }
    add_summary(section, subjects, times);
    add_findings(section, title, times);
    section.notes.push_back(std::to_string(pairs.size()) + " effects in rotation, medians of " +
                            std::to_string(scale.rounds) +
                            " interleaved rounds; bytes are those of the assembled GLSL; the "
                            "reference is glslang + SPIRV-Cross on equivalent complete shaders");
    return section;
}

}  // namespace bench
