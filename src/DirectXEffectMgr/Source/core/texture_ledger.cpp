#include "DirectXEffectMgr/Source/core/texture_ledger.h"

#include <algorithm>
#include <functional>
#include <iterator>

namespace {

struct FormatBytes {
    uint32_t internal_format;
    int32_t bytes_per_pixel;
};

// What OpenGL takes per pixel; any other code counts one byte.
constexpr FormatBytes kFormatBytes[] = {
    {6409, 1},    // GL_LUMINANCE
    {32849, 3},   // GL_RGB8
    {32856, 4},   // GL_RGBA8
    {33189, 2},   // GL_DEPTH_COMPONENT16
    {33321, 1},   // GL_R8
    {33323, 2},   // GL_RG8
    {33325, 2},   // GL_R16F
    {33326, 4},   // GL_R32F
    {33327, 4},   // GL_RG16F
    {33328, 8},   // GL_RG32F
    {34836, 16},  // GL_RGBA32F
    {34837, 12},  // GL_RGB32F
    {34842, 8},   // GL_RGBA16F
    {34843, 6},   // GL_RGB16F
    {35905, 3},   // GL_SRGB8
    {35907, 4},   // GL_SRGB8_ALPHA8
    {36012, 4},   // GL_DEPTH_COMPONENT32F
    {36194, 2},   // GL_RGB565
};

int32_t bytes_per_pixel(uint32_t internal_format) {
    const auto* const row = std::find_if(
        std::begin(kFormatBytes), std::end(kFormatBytes),
        [internal_format](const FormatBytes& f) { return f.internal_format == internal_format; });
    return row == std::end(kFormatBytes) ? 1 : row->bytes_per_pixel;
}

bool same_format(const TextureFormat& a, const TextureFormat& b) {
    return a.internal_format == b.internal_format && a.width == b.width && a.height == b.height;
}

}  // namespace

size_t size_of_format(const TextureFormat& format) {
    const auto pixels = static_cast<int32_t>(format.width * format.height);
    return static_cast<size_t>(static_cast<int64_t>(pixels) *
                               bytes_per_pixel(format.internal_format));
}

bool TextureLedger::KeyLess::operator()(const Key& a, const Key& b) const {
    if (a.first != b.first) {
        return std::less<>()(a.first, b.first);
    }
    return std::less<>()(a.second, b.second);
}

bool TextureLedger::reuse(const TextureFormat& wanted, GpuData& out) noexcept {
    const auto entry = std::find_if(
        free_.begin(), free_.end(),
        [&wanted](const FreeTexture& candidate) { return same_format(candidate.format, wanted); });
    if (entry == free_.end()) {
        return false;
    }
    out = entry->data;
    free_bytes_ -= size_of_format(entry->format);
    nodes_.splice(nodes_.begin(), free_, entry);
    return true;
}

void TextureLedger::add(const GpuData& texture, const TextureFormat& format) {
    FreeList node(1);
    formats_.insert_or_assign(Key(texture.texture, texture.srv), format);
    nodes_.splice(nodes_.begin(), node);
}

bool TextureLedger::give_back(const GpuData& texture) noexcept {
    const auto known = formats_.find(Key(texture.texture, texture.srv));
    if (known == formats_.end() || nodes_.empty()) {
        return false;
    }
    nodes_.front() = FreeTexture{texture, known->second};
    free_.splice(free_.begin(), nodes_, nodes_.begin());
    free_bytes_ += size_of_format(known->second);
    return true;
}

bool TextureLedger::take_over_budget(GpuData& evicted) {
    if (free_bytes_ <= max_free_bytes_ || free_.empty()) {
        return false;
    }
    forget(std::prev(free_.end()), evicted);
    return true;
}

bool TextureLedger::take_free(GpuData& out) {
    if (free_.empty()) {
        return false;
    }
    forget(free_.begin(), out);
    return true;
}

void TextureLedger::forget(FreeList::iterator entry, GpuData& out) {
    out = entry->data;
    free_bytes_ -= size_of_format(entry->format);
    formats_.erase(Key(out.texture, out.srv));
    free_.erase(entry);
}
