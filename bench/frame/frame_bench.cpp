/// Measures compiles and frames of the library on Windows, loaded as an editor loads it.

#include <windows.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iostream>

#include "DirectXEffectMgr/Source/logging/logging.h"
#include "frame/frame_sections.h"
#include "frame/heap_hook.h"
#include "frame/host_library.h"

namespace {

struct Part {
    const char* name;
    bench::Section (*measure)(const bench::FrameScale& scale);
};

// In the order in which they are measured and shown.
constexpr Part kParts[] = {
    {"compile", bench::measure_compile},   {"steady", bench::measure_steady_frame},
    {"threads", bench::measure_threads},   {"slopes", bench::measure_slopes},
    {"live", bench::measure_live_effects}, {"real", bench::measure_real_frames},
};

struct Options {
    std::string json;
    std::string only;  // name of a part; empty: all
    bench::FrameScale scale;
    bool quick = false;
};

int run(const Options& options) {
    (void)bench::HostLibrary::get();
    if (bench::hook_heap_of({kOpenGLEffectMgrFileName, "libstdc++-6.dll"}) == 0) {
        throw std::runtime_error("the library's heap cannot be watched");
    }
    bench::Report report(options.scale.rounds);
    for (const Part& part : kParts) {
        if (options.only.empty() || options.only == part.name) {
            report.add(part.measure(options.scale));
        }
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

int measure(int argc, char** argv) {
    Options options;
    CLI::App app("Measures compiles and frames of the library.");
    app.add_option("--json", options.json, "write the tables to this file too");
    app.add_option("--only", options.only,
                   "one part: compile, steady, threads, slopes, live, real");
    app.add_option("--rounds", options.scale.rounds, "timed blocks of each kind")
        ->check(CLI::Range(1, 1000))
        ->capture_default_str();
    app.add_flag("--quick", options.quick, "three short rounds");
    CLI11_PARSE(app, argc, argv);
    if (options.quick) {
        options.scale = {3, 20, 10};
    }
    set_log_callback(nullptr);
    try {
        return run(options);
    } catch (const std::exception& error) {
        std::cerr << "error: " << error.what() << '\n';
        return 1;
    }
}

}  // namespace

int main(int argc, char** argv) {
    const int status = measure(argc, argv);
    // Not by return: Wine's own threads sometimes hang or crash while a process that drew ends.
    std::cout.flush();
    std::fflush(nullptr);
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(status));
}
