#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>

#include "DirectXEffectMgr/Include/OpenGLEffectTypes.h"
#include "DirectXEffectMgr/Source/core/program_ledger.h"
#include "DirectXEffectMgr/Source/core/texture_ledger.h"

/// What all effects of the process share: compiled programs, and input textures that come and go
/// at the frame rate.
///
/// One mutex guards all of it and is held for a whole compile, so two effects never compile the
/// same texts at once. The log is called with the mutex held: a log function must not call back
/// into the pool.
class ResourcePoolDX {
public:
    /// @param device   the engine's own slot, read afresh at each use; outlives every call but the
    ///                 destructor's
    /// @param context  the engine's own slot; the pool makes no call on it
    /// @param program_freelist_max        the most programs that are kept while unused
    /// @param texture_freelist_max_bytes  budget of the free textures
    /// @param reserved_limit              not read
    ResourcePoolDX(ID3D11Device** device, ID3D11DeviceContext** context,
                   size_t program_freelist_max, size_t texture_freelist_max_bytes,
                   size_t reserved_limit);
    /// Destroys the unused programs, then the free textures. What is in use is not released: its
    /// owners have to have gone first.
    ~ResourcePoolDX();
    ResourcePoolDX(const ResourcePoolDX&) = delete;
    ResourcePoolDX& operator=(const ResourcePoolDX&) = delete;

    /// Gives the program of two HLSL texts (entry points mainVS and mainPS): a known one with one
    /// user more, otherwise compiled now, the fragment text first.
    ///
    /// A text that fails to compile is dumped with line numbers and reported; a shader that the
    /// device refuses gives false with nothing logged.
    ///
    /// @param out  receives the program; untouched on failure, and nothing stays made
    [[nodiscard]] bool compile_program(ProgramRecord& out, const std::string& vertex_text,
                                       const std::string& fragment_text);
    /// Gives one use of a program back; a program that isn't in use is left alone. The caller
    /// clears its own copy.
    void release_program(const ProgramRecord& program);

    /// Gives a texture with view and sampler: the free one of the same code and size that was
    /// released last, otherwise a new one.
    ///
    /// @param device           makes what has to be made; null gives nulls
    /// @param internal_format  OpenGL internal-format code; 6409 gives an 8-bit and 33326 a float
    ///                         texture of one channel, any other code B8G8R8A8
    /// @returns nulls if nothing could be made. Where only the view or the sampler failed, what was
    ///          made before it, owned by the caller: release_texture() doesn't know it
    [[nodiscard]] GpuData create_texture(ID3D11Device* device, uint32_t internal_format,
                                         uint32_t width, uint32_t height);
    /// Takes a texture back, clears the caller's value, and evicts the oldest free ones while the
    /// budget is exceeded. A texture that the pool doesn't know is left as it is.
    void release_texture(GpuData& texture);
    /// Evicts the oldest free textures while the budget is exceeded.
    void trim_textures();

private:
    ID3D11Device* device();
    void enter(GpuData& made, const TextureFormat& format);
    [[nodiscard]] bool build_program(ProgramRecord& out, const std::string& vertex_text,
                                     const std::string& fragment_text);

    std::mutex mutex_;  // guards everything below
    ID3D11Device** device_slot_;
    ID3D11Device* last_device_;  // as last read from the slot, which may be gone before the pool
    ProgramLedger programs_;
    TextureLedger textures_;
};
