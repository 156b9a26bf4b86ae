// The effect's plain state: sources, counts, flags. Nothing here touches the device.

#include <utility>

#include "DirectXEffectMgr/Source/DirectXEffect.h"

namespace {

int32_t set_text(std::string& member, const char* text) {
    member = text != nullptr ? text : "";
    return kResultOk;
}

}  // namespace

int32_t CDirectXEffect::SetFragmentShaderPath(const char* path) {
    return set_text(fragment_path, path);
}

int32_t CDirectXEffect::SetFragmentShaderText(const char* text) {
    return set_text(fragment_text, text);
}

int32_t CDirectXEffect::SetVertexShaderPath(const char* path) {
    return set_text(vertex_path, path);
}

int32_t CDirectXEffect::SetVertexShaderText(const char* text) {
    return set_text(vertex_text, text);
}

int32_t CDirectXEffect::SetInstanceCounts(const std::vector<int32_t>& counts) {
    instance_counts = counts;
    return kResultOk;
}

int32_t CDirectXEffect::SetInstanceCount(int32_t count) {
    instance_counts.assign(1, count);
    return kResultOk;
}

int32_t CDirectXEffect::SetVertexCounts(const std::vector<int32_t>& counts) {
    vertex_counts = counts;
    return kResultOk;
}

int32_t CDirectXEffect::SetVertexCount(int32_t count) {
    vertex_counts.assign(1, count);
    return kResultOk;
}

int32_t CDirectXEffect::SetBlendMode(int32_t mode) {
    blend_mode = mode;
    return kResultOk;
}

int32_t CDirectXEffect::SetDepthTest(bool enabled) {
    depth_test = enabled;
    return kResultOk;
}

int32_t CDirectXEffect::SetDepthWriteList(const std::vector<bool>& enabled) {
    depth_write_list = enabled;
    return kResultOk;
}

int32_t CDirectXEffect::SetCullBack(bool enabled) {
    cull_back = enabled;
    return kResultOk;
}

int32_t CDirectXEffect::SetMsaa(bool enabled) {
    msaa = enabled;
    return kResultOk;
}

int32_t CDirectXEffect::SetClearEnabled(bool enabled) {
    clear_enabled = enabled;
    return kResultOk;
}

int32_t CDirectXEffect::SetPrimitiveMode(int32_t mode) {
    primitive_mode = mode;
    return kResultOk;
}

int32_t CDirectXEffect::SetClearColor(float r, float g, float b, float a) {
    clear_color = {r, g, b, a};
    return kResultOk;
}

void CDirectXEffect::SetFragmentSegmentIndices(std::vector<int32_t> indices) {
    fragment_segment_indices = std::move(indices);
}

void CDirectXEffect::SetVertexSegmentIndices(std::vector<int32_t> indices) {
    vertex_segment_indices = std::move(indices);
}

void CDirectXEffect::SetPassPrograms(std::vector<int32_t> numbers) {
    pass_programs = std::move(numbers);
}

int32_t CDirectXEffect::SetUseRenderThread(bool enabled) {
    use_render_thread = enabled;
    return kResultOk;
}
