#include <algorithm>

#include "heap_count.h"
#include "ours.h"
#include "reference.h"
#include "sections.h"
#include "timing.h"

namespace bench {
namespace {

// The second run is counted: the first one may fill tables that stay for the process.
template <class Work>
HeapUse count_second(const Work& work) {
    work();
    start_counting();
    work();
    return stop_counting();
}

struct Uses {
    std::vector<double> allocations;
    std::vector<double> peaks;

    void add(const HeapUse& use) {
        allocations.push_back(static_cast<double>(use.allocations));
        peaks.push_back(static_cast<double>(use.peak_bytes) / 1024.0);
    }
};

double largest(const std::vector<double>& values) {
    return *std::max_element(values.begin(), values.end());
}

}  // namespace

Section measure_memory(const std::string& title, const std::vector<Pair>& pairs) {
    Section section;
    section.title = title;
    section.columns = {"translator", "allocations", "most", "peak KiB", "most KiB"};
    if (pairs.empty()) {
        section.notes.push_back("no effect that both sides take");
        return section;
    }
    const ReferenceTranslator reference;
    Uses ours;
    Uses theirs;
    for (const Pair& pair : pairs) {
        const Subject subject(pair.effect);
        ours.add(count_second([&subject] {
            ProgramText text;
            (void)subject.translate(text);
        }));
        theirs.add(count_second([&reference, &pair] {
            std::string hlsl;
            std::string error;
            (void)reference.translate(pair.complete, hlsl, error);
        }));
    }
    const auto row = [&section](const char* name, const Uses& uses) {
        section.rows.push_back({name,
                                {median(uses.allocations), 0},
                                {largest(uses.allocations), 0},
                                {median(uses.peaks), 1},
                                {largest(uses.peaks), 1}});
    };
    row("ours", ours);
    row("reference", theirs);
    section.rows.push_back({"reference / ours",
                            {median(theirs.allocations) / median(ours.allocations), 1},
                            "",
                            {median(theirs.peaks) / median(ours.peaks), 1},
                            ""});
    const auto find = [&section, &title](const char* what, const char* unit, double mine,
                                         double other) {
        section.findings.push_back(
            {title + ": " + what, "glslang + SPIRV-Cross",
             format("1/%.0f (%.0f beside %.0f%s)", other / mine, mine, other, unit), "1/10",
             outcome_of(mine * 10.0 <= other)});
    };
    find("allocations", "", median(ours.allocations), median(theirs.allocations));
    find("peak heap", " KiB", median(ours.peaks), median(theirs.peaks));
    section.notes.push_back("medians over " + std::to_string(pairs.size()) +
                            " effects; every call of malloc, calloc, realloc and operator new in "
                            "the process counts, the result's own text included");
    return section;
}

}  // namespace bench
