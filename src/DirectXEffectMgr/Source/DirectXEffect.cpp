#include "DirectXEffectMgr/Source/DirectXEffect.h"

#include <d3d11.h>
#include <d3d11shader.h>

#include <exception>
#include <utility>

#include "DirectXEffectMgr/Source/DirectXEffectEngine.h"
#include "DirectXEffectMgr/Source/device_util.h"
#include "DirectXEffectMgr/Source/dx_effect.h"
#include "DirectXEffectMgr/Source/logging/logging.h"
#include "DirectXEffectMgr/Source/resource_pool_dx.h"
#include "movit/input.h"

CDirectXEffect::CDirectXEffect(CDirectXEffectEngine* the_engine, uint32_t the_width,
                               uint32_t the_height, uint32_t the_pitch, bool has_depth,
                               std::string the_fragment_path, uint32_t encoding,
                               std::string the_vertex_path, SegmentList the_fragment_segments,
                               SegmentList the_vertex_segments)
    : width(the_width),
      height(the_height),
      pitch(the_pitch),
      engine(the_engine),
      with_depth(has_depth),
      fragment_path(std::move(the_fragment_path)),
      source_encoding(encoding),
      vertex_path(std::move(the_vertex_path)),
      fragment_segments(std::move(the_fragment_segments)),
      vertex_segments(std::move(the_vertex_segments)),
      engine_owner_(the_engine != nullptr ? the_engine->weak_from_this().lock() : nullptr) {
    auto node = std::make_unique<DXEffect>();
    CDirectXEffect::AddVertexAttribute("position", 2, quad_vertices.data(), false, false, 0);
    CDirectXEffect::AddVertexAttribute("texcoord", 2, quad_vertices.data(), false, false, 0);
    vertex_counts.push_back(4);
    instance_counts.push_back(0);
    depth_write_list.push_back(true);
    dx_effect = node.release();
}

CDirectXEffect::~CDirectXEffect() {
    if (engine != nullptr) {
        engine->ReleaseEffectOnEngine(this);
    } else {
        ReleaseEffectResources();
    }
}

void CDirectXEffect::SetDevice(ID3D11Device* new_device,
                               ID3D11DeviceContext* new_immediate_context) {
    device = new_device;
    if (device != nullptr && deferred_context == nullptr) {
        device->CreateDeferredContext(0, &deferred_context);
    }
    immediate_context = new_immediate_context;
}

bool CDirectXEffect::IsUsable() const {
    return true;
}

namespace {

template <class Record>
void free_records(std::vector<Record*>& records, void (*release_objects)(Record&)) {
    for (Record* const record : records) {
        if (record != nullptr) {
            release_objects(*record);
            delete record;
        }
    }
    records.clear();
}

template <class Record>
void free_record(Record*& record, void (*release_objects)(Record&)) {
    if (record != nullptr) {
        release_objects(*record);
        delete record;
        record = nullptr;
    }
}

}  // namespace

bool CDirectXEffect::ReleaseEffectResources() {
    for (const movit::Input* const input : inputs) {
        delete input;
    }
    inputs.clear();
    release(reflection);
    release(input_layout);
    ReleaseProgram(program);
    for (ProgramRecord& extra : extra_programs) {
        ReleaseProgram(extra);
    }
    extra_programs.clear();
    output = nullptr;
    free_record(target, ReleaseFboTexture);
    free_record(depth, ReleaseFboDepth);
    free_records(extra_targets, ReleaseFboTexture);
    free_records(extra_depths, ReleaseFboDepth);
    extra_count = 0;
    free_records(spare_targets, ReleaseFboTexture);
    free_records(spare_depths, ReleaseFboDepth);
    ReleaseAttributeBuffers(attributes);
    ReleaseAttributeBuffers(retired_attributes);
    release(staging_texture);
    leftovers_.clear();
    delete dx_effect;
    dx_effect = nullptr;
    release(deferred_context);
    pool = nullptr;
    pool_owner_.reset();
    return true;
}

int32_t CDirectXEffect::InitEffect(std::shared_ptr<IOpenGLEffect> self) {
    return engine != nullptr ? engine->InitEffectOnEngine(std::move(self)) : kResultFail;
}

int32_t CDirectXEffect::DrawEffect(const DrawParams& params, std::shared_ptr<IOpenGLEffect> self,
                                   int32_t new_pitch) {
    if (new_pitch > 0) {
        pitch = static_cast<uint32_t>(new_pitch);
    }
    draw_params = params;
    return engine != nullptr ? engine->DrawEffectOnEngine(std::move(self), use_render_thread)
                             : kResultFail;
}

int32_t CDirectXEffect::ResizeEffect(uint32_t new_width, uint32_t new_height, uint32_t new_pitch,
                                     std::shared_ptr<IOpenGLEffect> self) {
    width = new_width;
    height = new_height;
    pitch = new_pitch;
    return engine != nullptr ? engine->ResizeEffectOnEngine(std::move(self)) : kResultFail;
}

bool CDirectXEffect::DoTaskPost(std::function<bool()> task) {
    if (engine == nullptr) {
        return false;
    }
    try {
        return engine->PostTask(std::move(task), false).get();
    } catch (const std::exception& error) {
        log_error("DoTaskPost exception:%s", error.what());
        return false;
    }
}

std::future<bool> CDirectXEffect::PostTaskAsync(std::function<bool()> task, bool /*flag*/) {
    // On purpose: the flag does not count. Hosts pass either value and expect the queue.
    return engine != nullptr ? engine->PostTask(std::move(task), true) : std::future<bool>();
}

DevicePair* CDirectXEffect::GetEffectDevicePair() {
    return engine != nullptr ? engine->GetDevicePair() : nullptr;
}
