/// glsl2hlsl: an effect's GLSL in, the HLSL that the library makes of it or a clear error out.

#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>

#include <filesystem>
#endif

#include "DirectXEffectMgr/Source/core/program_source.h"
#include "DirectXEffectMgr/Source/logging/logging.h"
#include "options.h"
#include "registry.h"
#include "report.h"

namespace {

using namespace glsl2hlsl;

// The library's messages, each on lines of its own.
void log_to_stderr(int32_t /*level*/, const char* format, va_list args) {
    va_list again;
    va_copy(again, args);
    const int length = std::vsnprintf(nullptr, 0, format, args);
    std::string text(length < 0 ? 1 : static_cast<size_t>(length) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, again);
    va_end(again);
    text.back() = '\n';
    const bool has_newline = text.size() > 1 && text[text.size() - 2] == '\n';
    std::fwrite(text.data(), 1, text.size() - (has_newline ? 1 : 0), stderr);
}

ProgramSources sources_of(const Options& options) {
    ProgramSources sources;
    sources.fragment.path = options.fragment;
    sources.vertex.path = options.vertex;
    sources.base64 = options.base64;
    return sources;
}

int fail(const std::string& line) {
    std::fprintf(stderr, "%s\n", line.c_str());
    return kExitFailed;
}

// Both texts, byte for byte, with the dividing line between them.
int print(const std::string& vertex, const std::string& fragment) {
    const std::string text = vertex + "\n=====\n" + fragment;
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    return written && std::fflush(stdout) == 0 ? kExitOk
                                               : fail("error: the result cannot be written");
}

int translate(const Options& options) {
    AssembledProgram program;
    ProgramMaps maps;
    const bool complete =
        AssembleProgram(sources_of(options), declarations(options), program, &maps);
    const std::vector<std::string> problems = problem_lines(maps);
    for (const std::string& line : problems) {
        fail(line);
    }
    if (!complete || !problems.empty()) {
        return kExitFailed;
    }
    if (options.emit == Emit::kGlsl) {
        return print(program.vertex, program.fragment);
    }
    ProgramText text;
    ParseFailure failure;
    if (!TranslateAssembled(program, options.inputs, options.audio, text, &failure)) {
        const bool is_vertex = failure.stage == ShaderStage::kVertex;
        return fail(
            failure_line(failure, program, maps, is_vertex ? options.vertex : options.fragment));
    }
    return print(text.vertex_hlsl, text.fragment_hlsl);
}

int run(const std::vector<std::string>& arguments) {
    set_log_callback(log_to_stderr);
    try {
        Options options;
        const std::optional<int> status = parse_options(arguments, options);
        return status ? *status : translate(options);
    } catch (const std::exception& error) {
        return fail("error: " + std::string(error.what()));
    }
}

}  // namespace

#ifdef _WIN32
// Wide, so that names in any language arrive; binary, so that the texts leave as they are.
int wmain(int count, wchar_t** words) {
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(std::filesystem::path(words[i]).u8string());
    }
    return run(arguments);
}
#else
int main(int count, char** words) {
    return run(std::vector<std::string>(words + (count > 0 ? 1 : 0), words + count));
}
#endif
