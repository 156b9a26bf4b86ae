#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <map>
#include <utility>

#include "DirectXEffectMgr/Include/OpenGLEffectTypes.h"

/// What a pooled texture was made for; the key by which a free one is handed out again.
struct TextureFormat {
    uint32_t internal_format;  ///< OpenGL internal-format code, for example 32856 (GL_RGBA8)
    uint32_t width, height;    ///< in pixels
};

/// Bytes that a texture counts for in the budget of free textures: its pixels (a signed 32-bit
/// product) times the bytes per pixel that OpenGL would take for the code. An unknown code
/// counts one byte per pixel. The Direct3D texture behind it may take another size.
size_t size_of_format(const TextureFormat& format);

/// Bookkeeping of pooled textures: the format of each that exists, and the list of free ones
/// under a byte budget.
///
/// Knows no device: a texture is a triple of pointers that are compared and never followed.
/// Handing a texture out and taking it back again, over and over, allocates nothing. Not
/// synchronised: the pool's mutex guards it.
class TextureLedger {
public:
    /// @param max_free_bytes  budget of the free list; only going above it evicts
    explicit TextureLedger(size_t max_free_bytes) : max_free_bytes_(max_free_bytes) {}

    /// Hands out the free texture of exactly this format that was released last.
    ///
    /// @returns false, with `out` untouched, if no free texture fits
    [[nodiscard]] bool reuse(const TextureFormat& wanted, GpuData& out) noexcept;

    /// Enters a texture that was made just now and is in use.
    void add(const GpuData& texture, const TextureFormat& format);

    /// Puts a texture at the front of the free list. May leave the list above its budget: call
    /// take_over_budget() until it says no.
    ///
    /// @returns false, with nothing changed, if the texture is unknown
    [[nodiscard]] bool give_back(const GpuData& texture) noexcept;

    /// While the free list is above its budget, forgets the free texture released longest ago.
    ///
    /// @param evicted  receives it; the caller has to release its objects
    /// @returns false if the list keeps to its budget
    [[nodiscard]] bool take_over_budget(GpuData& evicted);

    /// Forgets the free texture that was released last, whatever the budget says.
    ///
    /// @returns false if none is free
    [[nodiscard]] bool take_free(GpuData& out);

    /// Sum of size_of_format() over the free textures.
    [[nodiscard]] size_t free_bytes() const { return free_bytes_; }
    /// Number of free textures.
    [[nodiscard]] size_t free_size() const { return free_.size(); }
    /// Number of textures that were added and not forgotten, in use or free.
    [[nodiscard]] size_t size() const { return formats_.size(); }

private:
    struct FreeTexture {
        GpuData data;
        TextureFormat format;
    };
    using FreeList = std::list<FreeTexture>;
    using Key = std::pair<ID3D11Texture2D*, ID3D11ShaderResourceView*>;
    struct KeyLess {
        bool operator()(const Key& a, const Key& b) const;
    };

    void forget(FreeList::iterator entry, GpuData& out);

    size_t max_free_bytes_;
    std::map<Key, TextureFormat, KeyLess> formats_;
    FreeList free_;   // the most recently released at the front
    FreeList nodes_;  // one for each texture in use, so that give_back() needs no heap
    size_t free_bytes_ = 0;
};
