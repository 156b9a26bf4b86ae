// Any two texts as the shaders of an effect with any parameters: assembled, parsed, printed. Once
// more from scratch gives the same; so does the source with branches in it that are cut.

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "DirectXEffectMgr/Source/core/program_source.h"
#include "DirectXEffectMgr/Source/core/rewrite_alignment.h"
#include "DirectXEffectMgr/Source/core/uniform_text.h"
#include "DirectXEffectMgr/Source/logging/logging.h"
#include "budget.h"
#include "random_registry.h"

namespace {

// Between the vertex and the fragment shader of an input.
constexpr char kSeparator[] = "\n=====\n";
constexpr int kTriedLines = 20;  // that are looked at for one that takes a branch

struct Choices {
    std::string uniforms;
    int32_t inputs = 1;
    int32_t audio_inputs = 0;
    bool text_is_vertex = false;
    uint32_t cut_at = 0;  // which line gets a branch in front
    int branch = 0;       // which of the forms it has
};

// The choices come from the last bytes of the input. The text ends at its first zero byte.
Choices choose(const uint8_t* data, size_t size) {
    const size_t tail = size < 64 ? size : 64;
    FuzzedDataProvider bytes(data + size - tail, tail);
    Choices chosen;
    chosen.text_is_vertex = bytes.ConsumeBool();
    chosen.inputs = bytes.ConsumeIntegralInRange<int32_t>(-1, 4);
    chosen.audio_inputs = bytes.ConsumeIntegralInRange<int32_t>(-1, 3);
    chosen.cut_at = bytes.ConsumeIntegral<uint16_t>();
    chosen.branch = bytes.ConsumeIntegralInRange<int>(0, 2);
    fuzz::RandomRegistry registry;
    for (int i = bytes.ConsumeIntegralInRange<int>(0, 6); i > 0; --i) {
        registry.step(bytes);
    }
    output_uniform_declarations(registry, chosen.uniforms);
    return chosen;
}

struct Sources {
    std::string vertex;
    std::string fragment;
};

Sources split(const std::string& text, bool is_vertex) {
    const size_t at = text.find(kSeparator);
    if (at != std::string::npos) {
        return {text.substr(0, at), text.substr(at + sizeof kSeparator - 1)};
    }
    if (is_vertex) {
        return {text, "vec4 FUNCNAME(vec2 tc) { return INPUT1(tc); }\n"};
    }
    return {std::string(), text};
}

// Both texts, or what the parser said.
std::string translated(const Sources& sources, const Choices& chosen, bool with_failure) {
    ProgramSources given;
    given.fragment.text = sources.fragment;
    given.vertex.text = sources.vertex;
    AssembledProgram assembled;
    if (!AssembleProgram(given, chosen.uniforms, assembled)) {
        return "not assembled";
    }
    ProgramText text;
    ParseFailure failure;
    if (TranslateAssembled(assembled, chosen.inputs, chosen.audio_inputs, text,
                           with_failure ? &failure : nullptr)) {
        return text.vertex_hlsl + "=====\n" + text.fragment_hlsl;
    }
    if (with_failure) {
        const bool is_vertex = failure.stage == ShaderStage::kVertex;
        const std::string& original = is_vertex ? assembled.vertex : assembled.fragment;
        const RewriteAlignment alignment(original, failure.source);
        fuzz::require(alignment.original_offset(failure.offset) <= original.size(),
                      "a failure has its place in the author's text");
    }
    return "refused";
}

// Whether a directive may stand in front of `at`, and another behind the line there: comments,
// strings, ternaries and directives of the text itself could reach over them.
bool takes_branch(const std::string& text, size_t at, size_t end) {
    static constexpr const char* kReachFar[] = {"#", "//", "/*", "\"", "\\", "\r", "include"};
    for (const char* word : kReachFar) {
        if (text.find(word) != std::string::npos) {
            return false;
        }
    }
    const auto ends_statement = [&text](size_t newline) {
        return newline > 0 && std::string(";{}").find(text[newline - 1]) != std::string::npos;
    };
    const size_t behind_next = std::min(text.find('\n', end + 1), text.size());
    return text.find('?', at) >= behind_next && ends_statement(at - 1) && ends_statement(end);
}

// The text with a branch that is cut, or one that is kept, around a line; empty where one would
// change more than the line.
std::string with_branch(const std::string& text, const Choices& chosen) {
    static constexpr struct {
        const char* open;
        const char* close;
    } kForms[] = {
        {"#ifdef NO_SUCH_MACRO\n } vec3 ( 1.0 struct ;\n\n", "#endif\n"},
        {"#ifndef NO_SUCH_MACRO\n", "#endif\n"},
        {"#ifdef NO_SUCH_MACRO\n ] == x;\n#else\n", "#endif\n"},
    };
    const auto& form = kForms[chosen.branch];
    size_t newline = text.find('\n', text.empty() ? 0 : chosen.cut_at % text.size());
    size_t end = newline == std::string::npos ? newline : text.find('\n', newline + 1);
    for (int i = 0; i < kTriedLines && end != std::string::npos; ++i) {
        if (takes_branch(text, newline + 1, end)) {
            break;
        }
        newline = end;
        end = text.find('\n', newline + 1);
    }
    if (end == std::string::npos || !takes_branch(text, newline + 1, end)) {
        return {};
    }
    const std::string line = text.substr(newline + 1, end - newline);
    const bool keeps = chosen.branch != 0;
    return text.substr(0, newline + 1) + form.open + (keeps ? line : "") + form.close +
           (keeps ? "" : line) + text.substr(end + 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    set_log_callback(nullptr);
    const Choices chosen = choose(data, size);
    const std::string text(reinterpret_cast<const char*>(data), size);
    const Sources sources = split(text.substr(0, text.find('\0')), chosen.text_is_vertex);
    std::string result;
    {
        const fuzz::Budget budget(size + chosen.uniforms.size());
        result = translated(sources, chosen, false);
    }
    fuzz::require(result == translated(sources, chosen, true),
                  "a translation from scratch is deterministic");
    Sources branched = sources;
    branched.fragment = with_branch(sources.fragment, chosen);
    if (!branched.fragment.empty() && result != "refused") {
        fuzz::require(result == translated(branched, chosen, false),
                      "branches that are cut change nothing");
    }
    return 0;
}
