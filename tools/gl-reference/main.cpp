// gl-reference JOB.json...
// gl-reference --effect FOLDER --out PICTURE%d.png --size WxH [--frames N]
//
// Draws what OpenGL draws from the shaders of transitions (a job file each) or of a sample effect.
// Exit status 0 if all were drawn, 1 if any failed (one line each on stderr), 2 for wrong usage.

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>

#include "DirectXEffectMgr/Source/logging/logging.h"
#include "effect_scene.h"
#include "gl_context.h"
#include "job.h"
#include "renderer.h"

namespace {

constexpr int kWrongUsage = 2;

struct Options {
    std::vector<std::string> jobs;
    reference::EffectJob effect;
    std::string size = "256x144";
};

bool parse(int argc, char** argv, Options& options, int& status) {
    CLI::App app("Draws what OpenGL draws from the same GLSL.", "gl-reference");
    app.add_option("JOB", options.jobs, "job files of transitions");
    CLI::Option* effect = app.add_option("--effect", options.effect.folder, "a sample effect");
    app.add_option("--out", options.effect.out, "the PNG pictures to write")->needs(effect);
    app.add_option("--size", options.size, "WxH in pixels")->needs(effect);
    app.add_option("--frames", options.effect.frames, "how many")->needs(effect);
    effect->excludes("JOB");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        status = app.exit(error) == 0 ? 0 : kWrongUsage;
        return false;
    }
    char end = 0;
    const bool sized = std::sscanf(options.size.c_str(), "%dx%d%c", &options.effect.width,
                                   &options.effect.height, &end) == 2;
    const bool whole = !options.effect.folder.empty() || !options.jobs.empty();
    if (!sized || !whole || options.effect.width < 1 || options.effect.height < 1) {
        std::fputs("error: a job, or --effect with a --size such as 256x144, is required\n",
                   stderr);
        status = kWrongUsage;
        return false;
    }
    return true;
}

template <typename Work>
bool succeeds(const std::string& name, Work work) {
    try {
        work();
        return true;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "error: %s: %s\n", name.c_str(), error.what());
        return false;
    }
}

int run(int argc, char** argv) {
    Options options;
    int status = 0;
    if (!parse(argc, argv, options, status)) {
        return status;
    }
    set_log_callback([](int32_t, const char*, va_list) {});
    const char* reason = nullptr;
    const auto context = reference::GlContext::create(reason);
    if (context == nullptr) {
        std::fprintf(stderr, "error: %s\n", reason);
        return 1;
    }
    if (!options.effect.folder.empty()) {
        const auto draw = [&options] { reference::render_effect(options.effect); };
        return succeeds(options.effect.folder, draw) ? 0 : 1;
    }
    for (const std::string& job : options.jobs) {
        const auto draw = [&job] { reference::render(reference::read_job(job)); };
        status = succeeds(job, draw) ? status : 1;
    }
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "error: %s\n", error.what());
        return 1;
    }
}
