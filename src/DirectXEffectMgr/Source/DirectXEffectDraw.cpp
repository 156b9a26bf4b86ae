// One draw of an effect, from its settings to the finished picture.

#include <d3d11.h>

#include <cstring>

#include "DirectXEffectMgr/Source/DirectXEffect.h"
#include "DirectXEffectMgr/Source/device_util.h"
#include "DirectXEffectMgr/Source/dx_effect.h"
#include "DirectXEffectMgr/Source/flat_input_dx.h"
#include "DirectXEffectMgr/Source/logging/logging.h"
#include "DirectXEffectMgr/Source/pipeline_states.h"

namespace {

constexpr int32_t kIndexedMode = 2;  // primitive mode that draws by indices even without a list
constexpr int32_t kFirstExtraProgram = 2;  // 0 and 1 stand for the main program

// The prefix that uploads take and don't read; kept, so that a draw allocates nothing.
const std::string kNoPrefix;

// What a per-pass list says of a pass: its own entry, or the first, or nothing.
template <class Value>
Value value_of_pass(const std::vector<Value>& values, size_t pass, Value if_empty) {
    if (values.empty()) {
        return if_empty;
    }
    return values[pass < values.size() ? pass : 0];
}

bool is_complete(const ProgramRecord& program) {
    return program.vertex_shader != nullptr && program.pixel_shader != nullptr;
}

}  // namespace

bool CDirectXEffect::RenderPass() {
    if (!is_complete(program) || device == nullptr || deferred_context == nullptr) {
        return false;
    }
    leftovers_.clear();
    for (movit::Input* const input : inputs) {
        if (!input->is_audio_input()) {
            static_cast<FlatInputDX*>(input)->release_frame_textures();
        }
    }
    if (!RecompileIfVariantsChanged()) {
        return false;
    }
    const DrawSettings settings = CurrentSettings();
    PrepareTargets(settings);
    PipelineStates states;
    if (!SetPipeline(settings, states)) {
        // What is bound stays bound, so the states made so far stay alive behind it.
        leftovers_.keep(states.write_state.Detach());
        leftovers_.keep(states.no_write_state.Detach());
        return false;
    }
    SetSizeParameters(settings);
    if (vertex_counts.size() > 1) {
        ReleaseAttributeBuffers(retired_attributes);
    }
    if (input_layout == nullptr) {
        BuildInputLayout();
    }
    deferred_context->IASetInputLayout(input_layout);
    for (size_t pass = 0; pass < vertex_counts.size() && states.has_topology; ++pass) {
        DrawPass(pass, settings, states);
    }
    ResetPipeline(states);
    return DeliverPicture(settings);
}

// As SetParamVec2 would, without its search.
void CDirectXEffect::SetSizeParameters(const DrawSettings& settings) {
    const float size[2] = {static_cast<float>(settings.width), static_cast<float>(settings.height)};
    for (const std::vector<float*>* const passes : size_parameters_) {
        float* const first = passes == nullptr || passes->empty() ? nullptr : passes->front();
        if (first != nullptr) {
            std::memcpy(first, size, sizeof size);
        }
    }
}

DrawSettings CDirectXEffect::CurrentSettings() const {
    DrawSettings settings{};
    settings.width = width;
    settings.height = height;
    settings.depth_test = depth_test;
    settings.has_depth = settings.depth_test || with_depth;
    settings.extra_depths = settings.depth_test && with_depth;
    settings.msaa = msaa;
    settings.primitive_mode = primitive_mode;
    return settings;
}

void CDirectXEffect::DrawPass(size_t pass, const DrawSettings& settings,
                              const PipelineStates& states) {
    const ProgramRecord* const active = ProgramOfPass(pass);
    const int32_t vertices = vertex_counts[pass];
    if (active == nullptr) {
        return;
    }
    if (vertices < 0) {
        if (refusals_.is_first(Refusal::kVertexCount, vertices)) {
            log_error("a pass of %d vertices is left out", vertices);
        }
        return;
    }
    if (settings.depth_test) {
        const bool write = value_of_pass(depth_write_list, pass, true);
        deferred_context->OMSetDepthStencilState(
            write ? states.write_state.Get() : states.no_write_state.Get(), 0);
    }
    deferred_context->VSSetShader(active->vertex_shader, nullptr, 0);
    deferred_context->PSSetShader(active->pixel_shader, nullptr, 0);
    PassDraw draw{};
    draw.indexed = settings.primitive_mode == kIndexedMode;
    draw.vertices = static_cast<uint32_t>(vertices);
    BindAttributes(pass, draw);
    const auto number = static_cast<int32_t>(pass);
    UploadInputs(number);
    check_device(device, kEffectSource, __LINE__);
    dx_effect->upload_parameters(0, kNoPrefix, nullptr, number);
    check_device(device, kEffectSource, __LINE__);
    DrawInstances(pass, draw);
    check_device(device, kEffectSource, __LINE__);
}

const ProgramRecord* CDirectXEffect::ProgramOfPass(size_t pass) {
    const int32_t number = pass < pass_programs.size() ? pass_programs[pass] : 0;
    if (number < kFirstExtraProgram) {
        return &program;
    }
    const auto position = static_cast<size_t>(number - kFirstExtraProgram);
    if (position < extra_programs.size() && is_complete(extra_programs[position])) {
        return &extra_programs[position];
    }
    if (refusals_.is_first(Refusal::kProgram, number)) {
        log_error("there is no program %d: its passes are left out", number);
    }
    return nullptr;
}

void CDirectXEffect::UploadInputs(int32_t pass) {
    for (size_t position = 0; position < inputs.size(); ++position) {
        auto slot_number = static_cast<int32_t>(position);
        inputs[position]->upload_parameters(0, kNoPrefix, &slot_number, pass);
    }
}

void CDirectXEffect::DrawInstances(size_t pass, const PassDraw& draw) {
    const auto draw_once = [this, &draw] {
        if (draw.indexed) {
            deferred_context->DrawIndexed(draw.index_count, 0, 0);
        } else {
            deferred_context->Draw(draw.vertices, 0);
        }
    };
    const int32_t instances = value_of_pass(instance_counts, pass, 0);
    if (instances < 1) {
        draw_once();
        return;
    }
    for (int32_t instance = 0; instance < instances; ++instance) {
        dx_effect->upload_instance_parameters(0, kNoPrefix, nullptr, instance,
                                              static_cast<int32_t>(pass));
        draw_once();
    }
}

bool CDirectXEffect::DeliverPicture(const DrawSettings& settings) {
    ID3D11Texture2D* const picture = target->colour.texture;
    if (settings.msaa && picture != nullptr && target->msaa_texture != nullptr) {
        deferred_context->ResolveSubresource(picture, 0, target->msaa_texture, 0,
                                             DXGI_FORMAT_B8G8R8A8_UNORM);
    }
    if (settings.has_depth) {
        target->depth_gpu_data = settings.msaa ? &depth->msaa_depth : &depth->depth;
    }
    output = target;
    if (draw_params.readback_buffer != nullptr) {
        return ReadImageFromTex(*target, settings.width, settings.height, pitch,
                                draw_params.readback_buffer);
    }
    const GpuData* const copy = draw_params.dest_texture;
    if (copy != nullptr && copy->texture != nullptr && picture != nullptr) {
        deferred_context->CopyResource(copy->texture, picture);
    }
    Recording recording;
    return ExecuteRecorded(recording);
}
