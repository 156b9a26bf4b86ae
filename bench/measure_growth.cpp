#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string_view>

#include "ours.h"
#include "sections.h"
#include "timing.h"

namespace bench {
namespace {

// By how much a byte may cost more at the end of a row of growing sources.
constexpr double kMostGrowth = 1.5;

void translate_or_throw(const Subject& subject) {
    ProgramText text;
    if (!subject.translate(text)) {
        throw std::runtime_error("a measured source was refused: " + subject.failure());
    }
}

std::vector<Subject> make_subjects(const std::vector<EffectSource>& effects) {
    std::vector<Subject> subjects;
    for (const EffectSource& effect : effects) {
        subjects.emplace_back(effect);
        translate_or_throw(subjects.back());
    }
    return subjects;
}

Rounds times_of(const std::vector<Subject>& subjects, int rounds) {
    return in_rotation(subjects.size(), rounds,
                       [&subjects](size_t i) { translate_or_throw(subjects[i]); });
}

// Nanoseconds per byte of GLSL that goes to the parser.
double ns_per_byte(double us, const Subject& subject) {
    return us * 1000.0 / static_cast<double>(subject.assembled_bytes());
}

double bytes_of(const std::vector<Subject>& subjects) {
    double bytes = 0.0;
    for (const Subject& subject : subjects) {
        bytes += static_cast<double>(subject.assembled_bytes());
    }
    return bytes;
}

// Different sources of this size, together at least 100 KB.
std::vector<Subject> make_group(size_t bytes) {
    std::vector<EffectSource> effects;
    for (uint32_t i = 0; i < std::max<size_t>(1, 100000 / bytes); ++i) {
        effects.push_back(make_large_effect(bytes, i));
    }
    return make_subjects(effects);
}

EffectSource nested(const std::string& open, const std::string& inner, int depth) {
    EffectSource effect = make_large_effect(1000);
    effect.fragment +=
        "float keep(float x) {\n    return x * 0.5;\n}\n"
        "vec4 nested(vec2 tc) {\n    float v = ";
    for (int i = 0; i < depth; ++i) {
        effect.fragment += open;
    }
    effect.fragment += inner + std::string(static_cast<size_t>(depth), ')') + ";\n";
    effect.fragment += "    return INPUT1(tc) * v;\n}\n";
    return effect;
}

struct Nest {
    const char* name;
    const char* open;
    const char* inner;
};

constexpr Nest kNests[] = {
    {"own function", "keep(", "tc.x"},
    {"built-in", "sin(", "tc.x"},
    {"constructor", "float(", "tc.x"},
    {"parenthesis", "(0.5 + ", "tc.x"},
};

constexpr int kMostMacros = 200;

// A text of 10 KB below macro lines, of which it uses one in four. The text is equally long
// whatever `count` is: the lines that are not macros yet are comments, their uses numbers.
EffectSource with_macros(int count) {
    EffectSource effect = make_large_effect(10000);
    std::string lines;
    std::string uses;
    for (int i = 0; i < kMostMacros; ++i) {
        const std::string name = "MACRO_" + std::to_string(i);
        const std::string number = "0." + std::to_string(i + 1);
        const bool defined = i < count;
        lines.append(defined ? "#define " : "//efine ").append(name).append(" ");
        lines.append(number).append("\n");
        if (i % 4 == 0) {
            std::string value = defined ? name : number;
            value.resize(name.size(), ' ');
            uses.append("float used_").append(std::to_string(i));
            uses.append("(float x) {\n    return x * ").append(value).append(";\n}\n");
        }
    }
    effect.fragment = lines + uses + effect.fragment;
    return effect;
}

double memchr_us(std::string_view text, int rounds) {
    volatile char missing = '\x01';
    const auto search = [text, &missing](size_t) {
        if (std::memchr(text.data(), missing, text.size()) != nullptr) {
            throw std::logic_error("the byte that is searched for must not occur");
        }
    };
    return in_rotation(1, rounds, search).median_of(0);
}

}  // namespace

Section measure_growth(const Scale& scale) {
    std::vector<std::vector<Subject>> groups;
    for (const size_t kilobytes : {1u, 10u, 100u, 1000u}) {
        if (kilobytes < 1000 || scale.with_largest) {
            groups.push_back(make_group(kilobytes * 1000));
        }
    }
    const Rounds times = in_rotation(groups.size(), scale.rounds, [&groups](size_t i) {
        for (const Subject& subject : groups[i]) {
            translate_or_throw(subject);
        }
    });
    Section section;
    section.title = "growth: one stage of the same mix";
    section.columns = {"bytes",       "sources",      "us each",           "least us",
                       "ns per byte", "to the first", "least to the first"};
    const auto rate = [&groups](double us, size_t i) { return us * 1000.0 / bytes_of(groups[i]); };
    double worst = 0.0;
    for (size_t i = 0; i < groups.size(); ++i) {
        const double count = static_cast<double>(groups[i].size());
        const double us = times.median_of(i);
        const double least = times.least_of(i);
        const double to_first = rate(us, i) / rate(times.median_of(0), 0);
        worst = std::max(worst, to_first);
        section.rows.push_back({{bytes_of(groups[i]) / count, 0},
                                {count, 0},
                                {us / count, 1},
                                {least / count, 1},
                                {rate(us, i), 2},
                                {to_first, 2},
                                {rate(least, i) / rate(times.least_of(0), 0), 2}});
    }
    section.findings.push_back(
        {"translation, growth: time per byte",
         scale.with_largest ? "1 KB beside 10, 100, 1000 KB" : "1 KB beside 10, 100 KB",
         format("at most %.2f times", worst), "1.5 times", outcome_of(worst <= kMostGrowth)});
    section.notes.push_back("medians of " + std::to_string(scale.rounds) +
                            "; small sources in a run of different ones, together 100 KB");
    return section;
}

Section measure_nesting(const Scale& scale) {
    constexpr int kDepths[] = {1, 2, 4, 8, 16, 32, 64};
    Section section;
    section.title = "nesting: microseconds, and from 1 to 64 levels the cost of a byte more";
    section.columns = {"nested"};
    for (const int depth : kDepths) {
        section.columns.push_back(std::to_string(depth));
    }
    section.columns.push_back("64 to 1, per byte");
    section.columns.push_back("a late level to an early one");
    double worst = 0.0;
    double worst_level = 0.0;
    for (const Nest& nest : kNests) {
        std::vector<EffectSource> effects;
        for (const int depth : kDepths) {
            effects.push_back(nested(nest.open, nest.inner, depth));
        }
        const std::vector<Subject> subjects = make_subjects(effects);
        const size_t last = subjects.size() - 1;
        const Rounds times = times_of(subjects, scale.rounds * 5);
        std::vector<Cell> row = {nest.name};
        for (size_t i = 0; i <= last; ++i) {
            row.emplace_back(times.median_of(i), 1);
        }
        const double growth = ns_per_byte(times.median_of(last), subjects[last]) /
                              ns_per_byte(times.median_of(0), subjects[0]);
        row.emplace_back(growth, 2);
        // What a level of the outer half costs beside one of the inner half.
        const double late = (times.median_of(last) - times.median_of(last - 1)) /
                            (kDepths[last] - kDepths[last - 1]);
        const double early =
            (times.median_of(last - 1) - times.median_of(0)) / (kDepths[last - 1] - kDepths[0]);
        row.emplace_back(late / early, 2);
        section.rows.push_back(std::move(row));
        worst = std::max(worst, growth);
        worst_level = std::max(worst_level, late / early);
    }
    section.findings.push_back(
        {"translation, growth: 1 to 64 nested calls in 1 KB", "time per byte of one",
         format("at most %.2f times; the 33rd to 64th level cost %.2f times "
                "the ones inside",
                worst, worst_level),
         "1.5 times", outcome_of(std::max(worst, worst_level) <= kMostGrowth)});
    return section;
}

Section measure_macros(const Scale& scale) {
    constexpr int kCounts[] = {1, 10, 50, 100, 200};
    constexpr size_t kMiddle = 3;  // up to there the early lines, behind it the late ones
    Section section;
    section.title = "macros: #define lines above 10 KB";
    section.columns = {"lines", "bytes", "us", "us per line", "memchr us"};
    std::vector<EffectSource> effects;
    for (const int count : kCounts) {
        effects.push_back(with_macros(count));
    }
    const std::vector<Subject> subjects = make_subjects(effects);
    const Rounds times = times_of(subjects, scale.rounds * 3);
    // Of the lines from one count to another.
    const auto slope = [&times, &kCounts](size_t from, size_t to) {
        return (times.median_of(to) - times.median_of(from)) / (kCounts[to] - kCounts[from]);
    };
    double search_us = 0.0;
    for (size_t i = 0; i < subjects.size(); ++i) {
        search_us = memchr_us(subjects[i].assembled().fragment, scale.rounds * 3);
        section.rows.push_back({std::to_string(kCounts[i]),
                                {static_cast<double>(subjects[i].assembled_bytes()), 0},
                                {times.median_of(i), 1},
                                {i == 0 ? 0.0 : slope(0, i), 2},
                                {search_us, 2}});
    }
    const size_t last = subjects.size() - 1;
    section.findings.push_back(
        {"translation, macros: 1 to 200 #define lines", "memchr over the same text",
         format("%.2f us a line beside %.2f us; a late line costs %.2f times an early one",
                slope(0, last), search_us, slope(kMiddle, last) / slope(0, kMiddle)),
         "linear", outcome_of(slope(kMiddle, last) <= kMostGrowth * slope(0, kMiddle))});
    return section;
}

}  // namespace bench
