#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "ours.h"
#include "sections.h"
#include "timing.h"

namespace bench {
namespace {

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

std::vector<double> medians_of(const std::vector<Subject>& subjects, int rounds) {
    return medians_in_rotation(subjects.size(), rounds,
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
    EffectSource effect;
    effect.fragment =
        "float keep(float x) {\n    return x * 0.5;\n}\n"
        "vec4 FUNCNAME(vec2 tc) {\n    float v = ";
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

// Macro lines, each with a name of its own, of which a text of 10 KB uses one in a few.
EffectSource with_macros(int count) {
    EffectSource effect = make_large_effect(10000);
    std::string lines;
    std::string uses;
    for (int i = 0; i < count; ++i) {
        const std::string name = "MACRO_" + std::to_string(i);
        lines += "#define " + name + " 0." + std::to_string(i + 1) + "\n";
        if (i % 4 == 0) {
            uses += "float used_" + std::to_string(i) + "(float x) {\n    return x * " + name +
                    ";\n}\n";
        }
    }
    effect.fragment = lines + uses + effect.fragment;
    return effect;
}

double memchr_us(const std::string& text, int rounds) {
    volatile char missing = '\x01';
    return medians_in_rotation(1, rounds, [&text, &missing](size_t) {
        if (std::memchr(text.data(), missing, text.size()) != nullptr) {
            throw std::logic_error("the byte that is searched for must not occur");
        }
    })[0];
}

}  // namespace

Section measure_growth(const Scale& scale) {
    std::vector<std::vector<Subject>> groups;
    for (const size_t kilobytes : {1u, 10u, 100u, 1000u}) {
        if (kilobytes < 1000 || scale.with_largest) {
            groups.push_back(make_group(kilobytes * 1000));
        }
    }
    const std::vector<double> times =
        medians_in_rotation(groups.size(), scale.rounds, [&groups](size_t i) {
            for (const Subject& subject : groups[i]) {
                translate_or_throw(subject);
            }
        });
    Section section;
    section.title = "growth: one stage of the same mix";
    section.columns = {"bytes", "sources", "us each", "ns per byte", "to the first"};
    double first = 0.0;
    for (size_t i = 0; i < groups.size(); ++i) {
        const double count = static_cast<double>(groups[i].size());
        const double rate = times[i] * 1000.0 / bytes_of(groups[i]);
        first = i == 0 ? rate : first;
        section.rows.push_back({{bytes_of(groups[i]) / count, 0},
                                {count, 0},
                                {times[i] / count, 1},
                                {rate, 2},
                                {rate / first, 2}});
    }
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
    for (const Nest& nest : kNests) {
        std::vector<EffectSource> effects;
        for (const int depth : kDepths) {
            effects.push_back(nested(nest.open, nest.inner, depth));
        }
        const std::vector<Subject> subjects = make_subjects(effects);
        const std::vector<double> times = medians_of(subjects, scale.rounds * 5);
        std::vector<Cell> row = {nest.name};
        for (const double time : times) {
            row.emplace_back(time, 1);
        }
        row.emplace_back(ns_per_byte(times.back(), subjects.back()) /
                             ns_per_byte(times.front(), subjects.front()),
                         2);
        section.rows.push_back(std::move(row));
    }
    return section;
}

Section measure_macros(const Scale& scale) {
    constexpr int kCounts[] = {1, 10, 50, 100, 200};
    Section section;
    section.title = "macros: #define lines above 10 KB";
    section.columns = {"lines", "bytes", "us", "us per line", "memchr us"};
    std::vector<EffectSource> effects;
    for (const int count : kCounts) {
        effects.push_back(with_macros(count));
    }
    const std::vector<Subject> subjects = make_subjects(effects);
    const std::vector<double> times = medians_of(subjects, scale.rounds);
    for (size_t i = 0; i < subjects.size(); ++i) {
        const double more = i == 0 ? 0.0 : times[i] - times[0];
        const double lines = kCounts[i] - kCounts[0];
        section.rows.push_back({std::to_string(kCounts[i]),
                                {static_cast<double>(subjects[i].assembled_bytes()), 0},
                                {times[i], 1},
                                {i == 0 ? 0.0 : more / lines, 2},
                                {memchr_us(subjects[i].assembled().fragment, scale.rounds), 2}});
    }
    return section;
}

}  // namespace bench
