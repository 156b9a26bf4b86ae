// effect-render: draws an effect over pictures as a video editor would, and writes pictures.

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <shellapi.h>

#include <cstdio>
#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "console.h"
#include "host.h"
#include "interrupt.h"
#include "job.h"
#include "options.h"
#include "render.h"
#include "reports.h"
#include "tool_error.h"
#include "watch.h"

namespace effect_render {
namespace {

std::string ToUtf8(const wchar_t* text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<size_t>(size > 0 ? size : 1), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, utf8.data(), size, nullptr, nullptr);
    utf8.pop_back();
    return utf8;
}

// The arguments behind the program's name, whatever the machine's own code page is.
std::vector<std::string> Arguments() {
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&LocalFree)> words(
        CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
    std::vector<std::string> arguments;
    for (int i = 1; words && i < count; ++i) {
        arguments.push_back(ToUtf8(words.get()[i]));
    }
    return arguments;
}

Job MakeJobTelling(const Options& options) {
    Job job = MakeJob(options);
    if (options.warnings) {
        PrintWarnings(job.effects);
    }
    if (options.log) {
        for (const std::string& note : job.effects.front().notes) {
            PrintLine("effect-render: note: " + options.transition + ": " + note);
        }
    }
    return job;
}

int64_t DrawExplaining(const Options& options, const Job& job, IOpenGLEffectEngine& engine) {
    ForgetLog();
    try {
        return DrawFrames(options, job, engine);
    } catch (const ToolError&) {
        ExplainFailure(job.effects, RecentLog());
        throw;
    }
}

std::string DrawOnce(const Options& options, IOpenGLEffectEngine& engine) {
    const int64_t frames = DrawExplaining(options, MakeJobTelling(options), engine);
    return "drew " + std::to_string(frames) + (frames == 1 ? " frame" : " frames");
}

ExitStatus Draw(const Options& options) {
    // What is wrong with the job is told before a device is asked for.
    const Job job = MakeJobTelling(options);
    const Library library;
    const Engine engine(library, options.mode);
    DrawExplaining(options, job, engine.Get());
    return ExitStatus::Success;
}

ExitStatus DrawWatching(const Options& options) {
    CatchInterrupt();
    const Library library;
    const Engine engine(library, options.mode);
    const auto draw = [&options, &engine] { return DrawOnce(options, engine.Get()); };
    return DrawAndWatch(options.watch_count, draw, WasInterrupted);
}

ExitStatus Run(const std::vector<std::string>& arguments) {
    std::string help;
    const std::optional<Options> options = ParseOptions(arguments, help);
    if (!options) {
        std::fputs(help.c_str(), stdout);
        return ExitStatus::Success;
    }
    ShowWholeLog(options->log);
    return options->watch ? DrawWatching(*options) : Draw(*options);
}

ExitStatus RunReportingErrors() {
    try {
        return Run(Arguments());
    } catch (const std::exception& error) {
        return PrintError(error);
    }
}

}  // namespace
}  // namespace effect_render

int main() {
    SetConsoleOutputCP(CP_UTF8);
    const auto status = static_cast<int>(effect_render::RunReportingErrors());
    // The library's device lives until the process ends, and its driver's threads may still run:
    // nothing is gained by taking the process down step by step around them.
    std::fflush(nullptr);
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(status));
    return status;
}
