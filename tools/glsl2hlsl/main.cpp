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
#include "diagnostics/compiler_errors.h"
#include "diagnostics/declarations.h"
#include "diagnostics/source_errors.h"
#include "diagnostics/traps/stage_warnings.h"
#include "facts.h"
#include "options.h"

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

void say(const std::string& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
}

int fail(const std::string& line) {
    say(line);
    return kExitFailed;
}

// Both texts, byte for byte, with the dividing line between them.
int print(const std::string& vertex, const std::string& fragment) {
    const std::string text = vertex + "\n=====\n" + fragment;
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    return written && std::fflush(stdout) == 0 ? kExitOk
                                               : fail("error: the result cannot be written");
}

// Each finding where its author wrote it, with the line and a caret, and behind that the plain line
// that scripts look for.
int fail(const std::vector<diagnostics::Finding>& findings) {
    for (const diagnostics::Finding& finding : findings) {
        if (finding.line != 0) {
            say(diagnostics::full_text(finding));
        }
        say(diagnostics::error_line(finding));
    }
    return kExitFailed;
}

// What the HLSL compiler said about the result, at the author's lines.
int explain(const Options& options, const AssembledProgram& program, const ProgramMaps& maps) {
    ReadStatus status = ReadStatus::kRead;
    const std::string log = ReadShaderFile(options.hlsl_log, false, disk_files(), &status);
    if (status != ReadStatus::kRead) {
        return fail("error: " + options.hlsl_log + ": cannot be read");
    }
    set_log_callback(nullptr);  // the stages are printed once more
    const std::vector<diagnostics::Finding> findings = diagnostics::compiler_errors(
        program, maps, options.inputs, options.audio, diagnostics::read_compiler_log(log));
    set_log_callback(log_to_stderr);
    return findings.empty() ? fail("error: " + options.hlsl_log +
                                   ": no error of the HLSL compiler about this effect")
                            : fail(findings);
}

int translate(const Options& options) {
    AssembledProgram program;
    ProgramMaps maps;
    const bool complete = AssembleProgram(
        sources_of(options), diagnostics::declarations(facts_of(options)), program, &maps);
    const std::vector<diagnostics::Finding> problems = diagnostics::file_errors(maps);
    if (!complete || !problems.empty()) {
        return fail(problems);
    }
    if (options.emit == Emit::kGlsl) {
        return print(program.vertex, program.fragment);
    }
    ProgramText text;
    ParseFailure failure;
    if (!TranslateAssembled(program, options.inputs, options.audio, text, &failure)) {
        const bool is_vertex = failure.stage == ShaderStage::kVertex;
        return fail(std::vector<diagnostics::Finding>{diagnostics::parser_error(
            failure, program, maps, is_vertex ? options.vertex : options.fragment)});
    }
    if (options.warnings) {
        for (const diagnostics::Finding& finding :
             diagnostics::program_warnings(program, maps, facts_of(options))) {
            say(diagnostics::full_text(finding));
        }
    }
    if (!options.hlsl_log.empty()) {
        return explain(options, program, maps);
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
