#include "DirectXEffectMgr/Source/resource_pool_dx.h"

#include <d3d11.h>
#include <d3dcompiler.h>
#include <wrl/client.h>

#include <utility>

#include "DirectXEffectMgr/Source/core/numbered_lines.h"
#include "DirectXEffectMgr/Source/device_objects.h"
#include "DirectXEffectMgr/Source/device_util.h"
#include "DirectXEffectMgr/Source/logging/logging.h"

namespace {

using Microsoft::WRL::ComPtr;

constexpr uint32_t kGlLuminance = 6409;
constexpr uint32_t kGlR32F = 33326;

// What differs between the two stages of a program.
struct Stage {
    const char* entry_point;
    const char* target;
    bool fragment;
};
constexpr Stage kFragmentStage = {"mainPS", "ps_5_0", true};
constexpr Stage kVertexStage = {"mainVS", "vs_5_0", false};

// Only warns: a text that lacks the usual marks goes to the compiler all the same.
void warn_about_texts(const std::string& vertex_text, const std::string& fragment_text) {
    if (vertex_text.find(" main(") == std::string::npos) {
        log_numbered_lines(vertex_text);
        log_warning("vertex_shader maybe wrong\n");
    }
    if (fragment_text.find("FUNCNAME") == std::string::npos) {
        log_numbered_lines(fragment_text);
        log_warning("fragment_shader maybe wrong\n");
    }
}

void report_compile_error(const Stage& stage) {
    if (stage.fragment) {
        log_error("Failed to compile frag shader");
    } else {
        log_error("Failed to compile vertex shader");
    }
}

void report_compile_error(const Stage& stage, ID3DBlob& errors) {
    // The compiler ends its text with a zero; the copy makes sure of it.
    const std::string text(static_cast<const char*>(errors.GetBufferPointer()),
                           errors.GetBufferSize());
    if (stage.fragment) {
        log_error("Failed to compile frag shader: %s", text.c_str());
    } else {
        log_error("Failed to compile vertex shader: %s", text.c_str());
    }
}

ComPtr<ID3DBlob> compile_stage(const Stage& stage, const std::string& text) {
    ComPtr<ID3DBlob> code;
    ComPtr<ID3DBlob> errors;
    const HRESULT result = D3DCompile(text.data(), text.size(), nullptr, nullptr, nullptr,
                                      stage.entry_point, stage.target, 0, 0, &code, &errors);
    if (FAILED(result) || code == nullptr) {
        log_numbered_lines(text);
        if (errors != nullptr) {
            report_compile_error(stage, *errors.Get());
        } else {
            report_compile_error(stage);
        }
        return nullptr;
    }
    return code;
}

void release_objects(ProgramRecord& program) {
    release(program.ps_blob);
    release(program.vs_blob);
    release(program.vertex_shader);
    release(program.pixel_shader);
}

// Releases what was made of a program, unless it is taken out.
struct UnfinishedProgram {
    ProgramRecord program{};

    UnfinishedProgram() = default;
    UnfinishedProgram(const UnfinishedProgram&) = delete;
    UnfinishedProgram& operator=(const UnfinishedProgram&) = delete;
    ~UnfinishedProgram() { release_objects(program); }
};

DXGI_FORMAT device_format(uint32_t internal_format) {
    switch (internal_format) {
        case kGlLuminance:
            return DXGI_FORMAT_R8_UNORM;
        case kGlR32F:
            return DXGI_FORMAT_R32_FLOAT;
        default:
            return DXGI_FORMAT_B8G8R8A8_UNORM;
    }
}

}  // namespace

ResourcePoolDX::ResourcePoolDX(ID3D11Device** device, ID3D11DeviceContext** /*context*/,
                               size_t program_freelist_max, size_t texture_freelist_max_bytes,
                               size_t /*reserved_limit*/)
    : device_slot_(device),
      last_device_(device == nullptr ? nullptr : *device),
      programs_(program_freelist_max),
      textures_(texture_freelist_max_bytes) {}

ResourcePoolDX::~ResourcePoolDX() {
    ProgramRecord program{};
    while (programs_.take_unused(program)) {
        release_objects(program);
    }
    GpuData texture{};
    while (textures_.take_free(texture)) {
        release_objects(texture);
        // The engine, and with it the slot, may be gone by now; the device stays.
        check_device(last_device_, kResourcePoolSource, __LINE__);
    }
}

bool ResourcePoolDX::compile_program(ProgramRecord& out, const std::string& vertex_text,
                                     const std::string& fragment_text) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (programs_.acquire(vertex_text, fragment_text, out)) {
        return true;
    }
    warn_about_texts(vertex_text, fragment_text);
    UnfinishedProgram made;
    if (!build_program(made.program, vertex_text, fragment_text)) {
        return false;
    }
    programs_.add(vertex_text, fragment_text, made.program);
    out = std::exchange(made.program, {});
    return true;
}

// Leaves in `out` what it made before it failed.
bool ResourcePoolDX::build_program(ProgramRecord& out, const std::string& vertex_text,
                                   const std::string& fragment_text) {
    ID3D11Device* const maker = device();
    if (maker == nullptr) {
        return false;
    }
    out.ps_blob = compile_stage(kFragmentStage, fragment_text).Detach();
    if (out.ps_blob == nullptr || FAILED(maker->CreatePixelShader(out.ps_blob->GetBufferPointer(),
                                                                  out.ps_blob->GetBufferSize(),
                                                                  nullptr, &out.pixel_shader))) {
        return false;
    }
    out.vs_blob = compile_stage(kVertexStage, vertex_text).Detach();
    return out.vs_blob != nullptr &&
           SUCCEEDED(maker->CreateVertexShader(out.vs_blob->GetBufferPointer(),
                                               out.vs_blob->GetBufferSize(), nullptr,
                                               &out.vertex_shader));
}

void ResourcePoolDX::release_program(const ProgramRecord& program) {
    const std::lock_guard<std::mutex> lock(mutex_);
    ProgramRecord evicted{};
    if (programs_.release(program, evicted)) {
        release_objects(evicted);
    }
}

GpuData ResourcePoolDX::create_texture(ID3D11Device* device, uint32_t internal_format,
                                       uint32_t width, uint32_t height) {
    const std::lock_guard<std::mutex> lock(mutex_);
    const TextureFormat wanted = {internal_format, width, height};
    GpuData made{};
    if (textures_.reuse(wanted, made) || device == nullptr) {
        return made;
    }
    const DXGI_FORMAT format = device_format(internal_format);
    const D3D11_TEXTURE2D_DESC description =
        texture_description(width, height, format, D3D11_BIND_SHADER_RESOURCE);
    if (FAILED(device->CreateTexture2D(&description, nullptr, &made.texture))) {
        log_error("CreateTexture2D failed!");
    } else if (FAILED(create_view(device, made.texture, format, made.srv))) {
        log_error("CreateShaderResourceView failed!");
    } else if (FAILED(create_colour_sampler(device, made.sampler))) {
        log_error("CreateSamplerState failed!");
    } else {
        enter(made, wanted);
    }
    return made;
}

void ResourcePoolDX::enter(GpuData& made, const TextureFormat& format) {
    try {
        textures_.add(made, format);
    } catch (...) {
        release_objects(made);
        throw;
    }
}

void ResourcePoolDX::release_texture(GpuData& texture) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!textures_.give_back(texture)) {
        return;
    }
    texture = GpuData{};
    GpuData evicted{};
    while (textures_.take_over_budget(evicted)) {
        release_objects(evicted);
        check_device(device(), kResourcePoolSource, __LINE__);
    }
}

void ResourcePoolDX::trim_textures() {
    const std::lock_guard<std::mutex> lock(mutex_);
    GpuData evicted{};
    while (textures_.take_over_budget(evicted)) {
        release_objects(evicted);
    }
}

ID3D11Device* ResourcePoolDX::device() {
    if (device_slot_ != nullptr) {
        last_device_ = *device_slot_;
    }
    return last_device_;
}
