/// Measures the translation and prints one table; `--json FILE` writes it as well.

#include <CLI/CLI.hpp>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "DirectXEffectMgr/Source/logging/logging.h"
#include "ours.h"
#include "reference.h"
#include "sections.h"

namespace {

struct Options {
    std::string json;
    std::string samples = ORVANE_SAMPLES;
    std::string only;  // name of a part; empty: all
    bench::Scale scale;
    bool quick = false;
    bool strict = false;
};

// The effects that both translators take; the others are named on standard error with the reason.
std::vector<bench::Pair> pairs_of(std::vector<bench::EffectSource> effects, bool strict) {
    const bench::ReferenceTranslator reference;
    std::vector<bench::Pair> pairs;
    for (bench::EffectSource& effect : effects) {
        bench::CompleteShaders complete = bench::complete_shaders(effect);
        std::string hlsl;
        std::string error = bench::Subject(effect).failure();
        if (error.empty()) {
            (void)reference.translate(complete, hlsl, error);
        }
        if (error.empty()) {
            pairs.push_back({std::move(effect), std::move(complete)});
        } else {
            std::cerr << "left out: " << effect.name << ": " << error << '\n';
            if (strict) {
                throw std::runtime_error("an effect is not taken by both translators");
            }
        }
    }
    return pairs;
}

int run(const Options& options) {
    bench::Report report(options.scale.rounds);
    const std::vector<bench::Pair> made = pairs_of(bench::make_effects(120), options.strict);
    const std::vector<bench::Pair> samples =
        pairs_of(bench::load_samples(options.samples), options.strict);
    const bench::Scale& scale = options.scale;
    const auto wanted = [&options](const char* part) {
        return options.only.empty() || options.only == part;
    };
    if (wanted("translation")) {
        report.add(bench::measure_translation("translation, both stages", made, scale, false));
        report.add(bench::measure_translation("translation, sample effects, the stages they bring",
                                              samples, scale, true));
    }
    if (wanted("growth")) {
        report.add(bench::measure_growth(scale));
        report.add(bench::measure_nesting(scale));
        report.add(bench::measure_macros(scale));
    }
    if (wanted("memory")) {
        report.add(bench::measure_memory("memory of a translation", made));
        report.add(bench::measure_memory("memory of a translation, sample effects", samples));
    }
    if (!options.json.empty()) {
        std::ofstream file(options.json);
        file << report.to_json().dump(2) << '\n';
        if (!file.flush()) {
            std::cerr << "error: cannot write " << options.json << '\n';
            return 1;
        }
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    CLI::App app("Measures the translation of effects, beside glslang with SPIRV-Cross.");
    app.add_option("--json", options.json, "write the tables to this file too");
    app.add_option("--samples", options.samples, "folder of the sample effects");
    app.add_option("--only", options.only, "one part: translation, growth, memory");
    app.add_option("--rounds", options.scale.rounds, "timed runs of each thing")
        ->check(CLI::Range(1, 100000))
        ->capture_default_str();
    app.add_flag("--quick", options.quick, "three rounds, and no source of a megabyte");
    app.add_flag("--strict", options.strict, "fail if one of the translators refuses an effect");
    CLI11_PARSE(app, argc, argv);
    if (options.quick) {
        options.scale = {3, false};
    }
    set_log_callback(nullptr);
    try {
        return run(options);
    } catch (const std::exception& error) {
        std::cerr << "error: " << error.what() << '\n';
        return 1;
    }
}
