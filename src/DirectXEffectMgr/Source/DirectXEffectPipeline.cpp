// The fixed-function state of a draw, and the input layout.

#include <d3d11.h>
#include <d3d11shader.h>
#include <d3dcompiler.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "DirectXEffectMgr/Source/DirectXEffect.h"
#include "DirectXEffectMgr/Source/device_util.h"
#include "DirectXEffectMgr/Source/logging/logging.h"
#include "DirectXEffectMgr/Source/pipeline_states.h"
#include "glsl/hlsl/naming.h"

namespace {

// Of the current Direct3D compiler; older versions had other interfaces under this name.
constexpr GUID kReflectionId = {
    0x8d536ca1, 0x0cca, 0x4956, {0xa8, 0x37, 0x78, 0x69, 0x63, 0x75, 0x55, 0x84}};

constexpr float kNoBlendFactor[4] = {0, 0, 0, 0};
constexpr UINT kAllSamples = 0xFFFFFFFF;

struct BlendRow {
    int32_t mode;
    D3D11_BLEND source, dest, source_alpha, dest_alpha;
};
// On purpose: there is no mode 2. Hosts use it for drawing without a blend state.
constexpr BlendRow kBlendRows[] = {
    {1, D3D11_BLEND_SRC_ALPHA, D3D11_BLEND_INV_SRC_ALPHA, D3D11_BLEND_SRC_ALPHA,
     D3D11_BLEND_INV_SRC_ALPHA},
    {3, D3D11_BLEND_ONE, D3D11_BLEND_ONE, D3D11_BLEND_ONE, D3D11_BLEND_ONE},
    {4, D3D11_BLEND_ONE, D3D11_BLEND_INV_SRC_ALPHA, D3D11_BLEND_ONE, D3D11_BLEND_INV_SRC_ALPHA},
    {5, D3D11_BLEND_INV_DEST_COLOR, D3D11_BLEND_ONE, D3D11_BLEND_ONE, D3D11_BLEND_INV_SRC_ALPHA},
};

// By primitive mode. On purpose: the last two are the same, hosts use both.
constexpr D3D11_PRIMITIVE_TOPOLOGY kTopologies[] = {
    D3D11_PRIMITIVE_TOPOLOGY_TRIANGLESTRIP,
    D3D11_PRIMITIVE_TOPOLOGY_TRIANGLELIST,
    D3D11_PRIMITIVE_TOPOLOGY_LINELIST,
    D3D11_PRIMITIVE_TOPOLOGY_LINELIST,
};

D3D11_DEPTH_STENCIL_DESC depth_description(D3D11_DEPTH_WRITE_MASK write_mask) {
    D3D11_DEPTH_STENCIL_DESC description{};
    description.DepthEnable = TRUE;
    description.DepthWriteMask = write_mask;
    description.DepthFunc = D3D11_COMPARISON_LESS_EQUAL;
    description.StencilReadMask = 0xFF;
    description.StencilWriteMask = 0xFF;
    description.FrontFace.StencilFunc = D3D11_COMPARISON_ALWAYS;
    description.BackFace.StencilFunc = D3D11_COMPARISON_ALWAYS;
    return description;
}

D3D11_BLEND_DESC blend_description(const BlendRow& row) {
    D3D11_BLEND_DESC description{};
    D3D11_RENDER_TARGET_BLEND_DESC& target = description.RenderTarget[0];
    target.BlendEnable = TRUE;
    target.SrcBlend = row.source;
    target.DestBlend = row.dest;
    target.BlendOp = D3D11_BLEND_OP_ADD;
    target.SrcBlendAlpha = row.source_alpha;
    target.DestBlendAlpha = row.dest_alpha;
    target.BlendOpAlpha = D3D11_BLEND_OP_ADD;
    target.RenderTargetWriteMask = D3D11_COLOR_WRITE_ENABLE_ALL;
    return description;
}

// Compares by the rule by which the shader's semantics were written: a name that ends in a digit
// has "_" behind it there.
bool matches_semantic(std::string_view name, std::string_view semantic) {
    if (!glsl::needsSemanticMark(name)) {
        return semantic == name;
    }
    return semantic.size() == name.size() + 1 && semantic.back() == '_' &&
           semantic.substr(0, name.size()) == name;
}

// Number of the shader's inputs; 0 without a reflection.
UINT input_count_of(ID3D11ShaderReflection* reflection) {
    D3D11_SHADER_DESC description{};
    if (reflection == nullptr || FAILED(reflection->GetDesc(&description))) {
        return 0;
    }
    return description.InputParameters;
}

// Semantic of one of the shader's inputs; lives as long as the reflection.
const char* semantic_of(ID3D11ShaderReflection& reflection, UINT position) {
    D3D11_SIGNATURE_PARAMETER_DESC description{};
    const HRESULT result = reflection.GetInputParameterDesc(position, &description);
    return FAILED(result) || description.SemanticName == nullptr ? "" : description.SemanticName;
}

D3D11_INPUT_ELEMENT_DESC element(const char* semantic, DXGI_FORMAT format, UINT position) {
    return {semantic, 0, format, position, 0, D3D11_INPUT_PER_VERTEX_DATA, 0};
}

// Format of an attribute's values; an odd number of components keeps the format so far.
DXGI_FORMAT format_of(uint32_t components, DXGI_FORMAT so_far) {
    constexpr DXGI_FORMAT kFormats[] = {DXGI_FORMAT_R32_FLOAT, DXGI_FORMAT_R32G32_FLOAT,
                                        DXGI_FORMAT_R32G32B32_FLOAT,
                                        DXGI_FORMAT_R32G32B32A32_FLOAT};
    if (components < 1 || components > std::size(kFormats)) {
        log_error("inputElementDesc length is not supported!");
        return so_far;
    }
    return kFormats[components - 1];
}

using Elements = std::vector<D3D11_INPUT_ELEMENT_DESC>;

// Appends an element for each attribute that feeds an input of the shader, and one of unknown
// format where none does.
void append_elements(const CDirectXEffect::AttributeMap& attributes, const char* semantic,
                     UINT position, Elements& elements) {
    DXGI_FORMAT format = DXGI_FORMAT_UNKNOWN;
    for (const auto& [key, slots] : attributes) {
        if (slots.empty() || !matches_semantic(slots.front().attribute.name, semantic)) {
            continue;
        }
        format = format_of(slots.front().attribute.components, format);
        if (format != DXGI_FORMAT_UNKNOWN) {
            elements.push_back(element(semantic, format, position));
        }
    }
    if (format == DXGI_FORMAT_UNKNOWN) {
        elements.push_back(element(semantic, format, position));
    }
}

}  // namespace

bool CDirectXEffect::SetPipeline(const DrawSettings& settings, PipelineStates& states) {
    if (!BindTargets(settings, states)) {
        return false;
    }
    const D3D11_VIEWPORT viewport = {
        0, 0, static_cast<float>(settings.width), static_cast<float>(settings.height), 0, 1};
    deferred_context->RSSetViewports(1, &viewport);
    ClearOrCopyTarget();
    if (!SetRasterizerState(states)) {
        return false;
    }
    SetBlendState(states);
    states.has_topology = SetTopology(settings.primitive_mode);
    return true;
}

bool CDirectXEffect::BindTargets(const DrawSettings& settings, PipelineStates& states) {
    if (!settings.has_depth) {
        deferred_context->OMSetRenderTargets(1, &target->render_target_view, nullptr);
        return true;
    }
    ID3D11DepthStencilView* const depth_view =
        settings.msaa ? depth->msaa_depth_view : depth->depth_view;
    deferred_context->OMSetRenderTargets(1, &target->render_target_view, depth_view);
    if (depth_view != nullptr) {
        deferred_context->ClearDepthStencilView(depth_view, D3D11_CLEAR_DEPTH, 1.0F, 0);
    }
    const D3D11_DEPTH_STENCIL_DESC write = depth_description(D3D11_DEPTH_WRITE_MASK_ALL);
    if (failed(device->CreateDepthStencilState(&write, &states.write_state),
               "CreateDepthStencilState depthStencilWriteMaskState failed")) {
        return false;
    }
    const D3D11_DEPTH_STENCIL_DESC no_write = depth_description(D3D11_DEPTH_WRITE_MASK_ZERO);
    if (failed(device->CreateDepthStencilState(&no_write, &states.no_write_state),
               "CreateDepthStencilState depthStencilNoWriteMaskState failed")) {
        return false;
    }
    deferred_context->OMSetDepthStencilState(states.write_state.Get(), 0);
    return true;
}

void CDirectXEffect::ClearOrCopyTarget() {
    if (clear_enabled) {
        if (target->render_target_view != nullptr) {
            deferred_context->ClearRenderTargetView(target->render_target_view, clear_color.data());
        }
        return;
    }
    const GpuData* const picture = draw_params.dest_texture;
    const bool can_copy =
        picture != nullptr && picture->texture != nullptr && target->colour.texture != nullptr;
    if (extra_count == 0 && can_copy) {
        deferred_context->CopyResource(target->colour.texture, picture->texture);
    }
}

bool CDirectXEffect::SetRasterizerState(PipelineStates& states) {
    D3D11_RASTERIZER_DESC description{};
    description.FillMode = D3D11_FILL_SOLID;
    description.CullMode = cull_back ? D3D11_CULL_BACK : D3D11_CULL_NONE;
    if (failed(device->CreateRasterizerState(&description, &states.rasterizer),
               "CreateRasterizerState failed")) {
        return false;
    }
    deferred_context->RSSetState(states.rasterizer.Get());
    return true;
}

void CDirectXEffect::SetBlendState(PipelineStates& states) {
    const int32_t mode = blend_mode;
    for (const BlendRow& row : kBlendRows) {
        if (row.mode == mode) {
            const D3D11_BLEND_DESC description = blend_description(row);
            // A failure draws without blending.
            static_cast<void>(device->CreateBlendState(&description, &states.blend));
        }
    }
    deferred_context->OMSetBlendState(states.blend.Get(), kNoBlendFactor, kAllSamples);
}

bool CDirectXEffect::SetTopology(int32_t mode) {
    if (mode < 0 || static_cast<size_t>(mode) >= std::size(kTopologies)) {
        if (refusals_.is_first(Refusal::kPrimitiveMode, mode)) {
            log_error("no primitive mode has the number %d: nothing is drawn", mode);
        }
        return false;
    }
    deferred_context->IASetPrimitiveTopology(kTopologies[mode]);
    return true;
}

void CDirectXEffect::ResetPipeline(PipelineStates& states) {
    ID3D11RenderTargetView* const no_target_view = nullptr;
    deferred_context->OMSetRenderTargets(1, &no_target_view, nullptr);
    states.rasterizer.Reset();
    deferred_context->RSSetState(nullptr);
    states.blend.Reset();
    deferred_context->OMSetBlendState(nullptr, kNoBlendFactor, kAllSamples);
    states.write_state.Reset();
    states.no_write_state.Reset();
    deferred_context->OMSetDepthStencilState(nullptr, 0);
    ID3D11ShaderResourceView* const no_picture = nullptr;
    const size_t slots =
        std::min<size_t>(inputs.size(), D3D11_COMMONSHADER_INPUT_RESOURCE_SLOT_COUNT);
    for (size_t position = 0; position < slots; ++position) {
        deferred_context->PSSetShaderResources(static_cast<UINT>(position), 1, &no_picture);
    }
}

void CDirectXEffect::BuildInputLayout() {
    if (reflection == nullptr) {
        void* made = nullptr;
        const HRESULT result = D3DReflect(program.vs_blob->GetBufferPointer(),
                                          program.vs_blob->GetBufferSize(), kReflectionId, &made);
        if (FAILED(result) || made == nullptr) {
            return;
        }
        reflection = static_cast<ID3D11ShaderReflection*>(made);
    }
    Elements elements;
    const UINT count = input_count_of(reflection);
    for (UINT position = 0; position < count; ++position) {
        append_elements(attributes, semantic_of(*reflection, position), position, elements);
    }
    // Refused if an input has no attribute: the pipeline then draws without a layout.
    static_cast<void>(device->CreateInputLayout(elements.data(), static_cast<UINT>(elements.size()),
                                                program.vs_blob->GetBufferPointer(),
                                                program.vs_blob->GetBufferSize(), &input_layout));
}

int32_t CDirectXEffect::FindVertexInput(VertexAttributeSlot& slot) {
    if (slot.vertex_input != kVertexInputUnknown || reflection == nullptr) {
        return slot.vertex_input;
    }
    slot.vertex_input = kNoVertexInput;
    const UINT count = input_count_of(reflection);
    for (UINT position = 0; position < count; ++position) {
        if (matches_semantic(slot.attribute.name, semantic_of(*reflection, position))) {
            slot.vertex_input = static_cast<int32_t>(position);
            break;
        }
    }
    return slot.vertex_input;
}
