// From the effect's sources to compiled programs.

#include <utility>

#include "DirectXEffectMgr/Source/DirectXEffect.h"
#include "DirectXEffectMgr/Source/core/program_source.h"
#include "DirectXEffectMgr/Source/dx_effect.h"
#include "DirectXEffectMgr/Source/logging/logging.h"
#include "DirectXEffectMgr/Source/resource_pool_dx.h"

namespace {

constexpr uint32_t kBase64Encoding = 1;
constexpr int32_t kMainProgram = 1;  // as is 0, and every number below

// Where segments were given and no variant was picked, the first variant of each is.
void pick_first_variants(const SegmentList& segments, std::vector<int32_t>& indices) {
    // On purpose: a list that is merely too short stays, and leaves the segments behind it out.
    if (indices.empty()) {
        indices.assign(segments.size(), 0);
    }
}

}  // namespace

bool CDirectXEffect::InitProgram(std::shared_ptr<ResourcePoolDX> new_pool) {
    if (device == nullptr) {
        return false;
    }
    const std::shared_ptr<ResourcePoolDX> former_pool = std::move(pool_owner_);
    pool_owner_ = std::move(new_pool);
    pool = pool_owner_.get();
    pick_first_variants(fragment_segments, fragment_segment_indices);
    pick_first_variants(vertex_segments, vertex_segment_indices);
    constexpr float kSizeBeforeTheFirstDraw[2] = {16.0F, 16.0F};
    constexpr const char* kSizeNames[2] = {"iResolution", "iResolutionOrig"};
    for (size_t i = 0; i < size_parameters_.size(); ++i) {
        RegisterParamVec2(kSizeNames[i], kSizeBeforeTheFirstDraw);
        size_parameters_[i] = &dx_effect->params_vec2[kSizeNames[i]];
    }
    dx_effect->create_param_buffer(device, &deferred_context);
    const ProgramRecord former = program;
    if (!CompileProgram(program, {}, {}, false)) {
        return false;
    }
    if (former_pool != nullptr) {
        former_pool->release_program(former);
    }
    compiled_fragment_indices = fragment_segment_indices;
    compiled_vertex_indices = vertex_segment_indices;
    return true;
}

bool CDirectXEffect::CompileProgram(ProgramRecord& out, const std::string& fragment_given,
                                    const std::string& vertex_given, bool use_given) {
    ProgramSources sources;
    sources.fragment = {fragment_path, fragment_text, fragment_given, fragment_segments,
                        fragment_segment_indices};
    sources.vertex = {vertex_path, vertex_text, vertex_given, vertex_segments,
                      vertex_segment_indices};
    sources.use_given = use_given;
    sources.base64 = source_encoding == kBase64Encoding;
    std::string uniforms;
    dx_effect->output_uniform_declarations(uniforms, false);
    ProgramText text;
    if (!TranslateProgram(sources, uniforms, input_count, audio_count, text)) {
        return false;
    }
    if (pool == nullptr) {
        log_error("no resource pool to compile with");
        return false;
    }
    return pool->compile_program(out, text.vertex_hlsl, text.fragment_hlsl);
}

bool CDirectXEffect::RecompileIfVariantsChanged() {
    if (fragment_segment_indices == compiled_fragment_indices &&
        vertex_segment_indices == compiled_vertex_indices) {
        return true;
    }
    ReleaseProgram(program);
    const bool compiled = CompileProgram(program, {}, {}, false);
    // On purpose: copied after a failure too, so that the same sources are not tried in each draw.
    compiled_fragment_indices = fragment_segment_indices;
    compiled_vertex_indices = vertex_segment_indices;
    return compiled;
}

void CDirectXEffect::ReleaseProgram(ProgramRecord& record) {
    if (pool != nullptr) {
        pool->release_program(record);
    }
    record = {};
}

ProgramRecord* CDirectXEffect::ExtraProgram(int32_t number) {
    if (number <= kMainProgram) {
        return nullptr;
    }
    const auto position = static_cast<size_t>(number - kMainProgram - 1);
    return position < extra_programs.size() ? &extra_programs[position] : nullptr;
}

bool CDirectXEffect::AddProgram(int32_t* number, const char* given_fragment_text,
                                const char* given_vertex_text) {
    if (number == nullptr) {
        return false;
    }
    return DoTaskPost([this, number, given_fragment_text, given_vertex_text] {
        return AddProgramTask(*number, given_fragment_text != nullptr ? given_fragment_text : "",
                              given_vertex_text != nullptr ? given_vertex_text : "");
    });
}

bool CDirectXEffect::AddProgramTask(int32_t& number, const std::string& fragment_given,
                                    const std::string& vertex_given) {
    if (number == kMainProgram) {
        return false;
    }
    ProgramRecord* record = ExtraProgram(number);
    if (record != nullptr) {
        ReleaseProgram(*record);
    } else {
        extra_programs.push_back({});
        record = &extra_programs.back();
        number = static_cast<int32_t>(extra_programs.size()) + kMainProgram;
    }
    // On purpose: a failed compile is success too. It leaves an empty program under the number,
    // which the host may replace.
    static_cast<void>(CompileProgram(*record, fragment_given, vertex_given, true));
    return true;
}

bool CDirectXEffect::RemoveProgram(int32_t* number) {
    if (number == nullptr) {
        return false;
    }
    return DoTaskPost([this, number] { return RemoveProgramTask(*number); });
}

bool CDirectXEffect::RemoveProgramTask(int32_t& number) {
    if (number <= kMainProgram) {
        return false;
    }
    if (ProgramRecord* const record = ExtraProgram(number)) {
        ReleaseProgram(*record);
    }
    number = 0;
    return true;
}
