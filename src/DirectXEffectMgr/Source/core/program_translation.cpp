#include <memory>

#include "DirectXEffectMgr/Source/core/fixed_texts.h"
#include "DirectXEffectMgr/Source/core/numbered_lines.h"
#include "DirectXEffectMgr/Source/core/program_source.h"
#include "DirectXEffectMgr/Source/logging/logging.h"
#include "glsl/hlsl/environment.h"
#include "glsl/hlsl/print_tu.h"
#include "glsl/parser.h"

namespace {

// What a stage's print needs beside the tree.
struct PrintInputs {
    uint32_t inputs;
    uint32_t audio_inputs;
    bool has_vertex;
};

// A count from the host; none is below zero.
uint32_t count_or_zero(int32_t count) {
    return count < 0 ? 0 : static_cast<uint32_t>(count);
}

bool translate_stage(ShaderStage stage, const std::string& source, const PrintInputs& inputs,
                     std::string& varying, std::string& hlsl, ParseFailure* failure) {
    glsl::parser parser(source.c_str(), "codeDX");
    glsl::FailurePlace place;
    const glsl::ptr<glsl::astTU> unit =
        parser.parse(static_cast<uint32_t>(stage), failure == nullptr ? nullptr : &place);
    if (!unit) {
        const char* const text = parser.error();
        log_numbered_lines(source);
        log_error("%s\n", text == nullptr ? "" : text);
        if (failure != nullptr) {
            *failure = ParseFailure{stage, text == nullptr ? "" : text, std::move(place.source),
                                    place.offset};
        }
        return false;
    }
    const auto environment = std::make_shared<glsl::Environment>();
    const bool is_vertex = stage == ShaderStage::kVertex;
    glsl::printTU(*unit, inputs.inputs, inputs.audio_inputs, inputs.has_vertex, hlsl, varying,
                  environment, is_vertex);
    log_info(is_vertex ? "the vertex shader compile to DX success!"
                       : "the frag shader compile to DX success!");
    return true;
}

}  // namespace

bool TranslateAssembled(const AssembledProgram& assembled, int32_t input_count, int32_t audio_count,
                        ProgramText& out, ParseFailure* failure) {
    const PrintInputs inputs{count_or_zero(input_count), count_or_zero(audio_count),
                             assembled.has_vertex};
    ProgramText text;
    std::string varying;
    if (!assembled.has_vertex) {
        text.vertex_hlsl = kFixedVertexShader;
    } else if (!translate_stage(ShaderStage::kVertex, assembled.vertex, inputs, varying,
                                text.vertex_hlsl, failure)) {
        return false;
    }
    if (!translate_stage(ShaderStage::kFragment, assembled.fragment, inputs, varying,
                         text.fragment_hlsl, failure)) {
        return false;
    }
    out = std::move(text);
    return true;
}

bool TranslateProgram(const ProgramSources& sources, const std::string& uniforms,
                      int32_t input_count, int32_t audio_count, ProgramText& out) {
    AssembledProgram assembled;
    return AssembleProgram(sources, uniforms, assembled) &&
           TranslateAssembled(assembled, input_count, audio_count, out);
}
