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
#include "job.h"
#include "options.h"
#include "picture.h"
#include "reports.h"
#include "session.h"
#include "tool_error.h"

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

void RenderFrames(const Options& options, const Job& job, IOpenGLEffectEngine& engine) {
    std::vector<std::unique_ptr<Session>> sessions;
    for (const EffectDescription& effect : job.effects) {
        sessions.push_back(std::make_unique<Session>(engine, effect, job.width, job.height));
    }
    Picture picture;
    picture.width = job.width;
    picture.height = job.height;
    picture.pixels.resize(static_cast<size_t>(picture.RowPitch()) * picture.height);
    const int64_t total = int64_t{options.frames.last} - options.frames.first + 1;
    for (int64_t done = 0; done < total; ++done) {
        const auto frame = static_cast<int32_t>(options.frames.first + done);
        const std::optional<double> way = WayAt(frame, options.span);
        const TextureNum* previous = nullptr;
        for (const auto& session : sessions) {
            const bool is_last = session == sessions.back();
            session->DrawFrame(way, previous, is_last ? picture.pixels.data() : nullptr);
            previous = session->Output();
        }
        SavePicture(FramePath(options.output, frame), picture);
        ShowProgress(done + 1, total);
    }
}

ExitStatus Run(const std::vector<std::string>& arguments) {
    std::string help;
    const std::optional<Options> options = ParseOptions(arguments, help);
    if (!options) {
        std::fputs(help.c_str(), stdout);
        return ExitStatus::Success;
    }
    ShowWholeLog(options->log);
    const Job job = MakeJob(*options);
    if (options->log) {
        for (const std::string& note : job.effects.front().notes) {
            PrintLine("effect-render: note: " + options->transition + ": " + note);
        }
    }
    const Library library;
    const Engine engine(library, options->mode);
    try {
        RenderFrames(*options, job, engine.Get());
    } catch (const ToolError&) {
        ExplainFailure(job.effects, RecentLog());
        throw;
    }
    return ExitStatus::Success;
}

ExitStatus RunReportingErrors() {
    try {
        return Run(Arguments());
    } catch (const ToolError& error) {
        PrintLine(std::string("effect-render: error: ") + error.what());
        return error.Status();
    } catch (const std::exception& error) {
        PrintLine(std::string("effect-render: error: ") + error.what());
        return ExitStatus::Failure;
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
