#include "fake/resources.h"

#include <algorithm>
#include <cstring>

#include "fake/describe.h"

namespace fake {
namespace {

constexpr uint8_t kRubbish = 0xCD;

}  // namespace

std::vector<uint8_t>& Store::bytes() {
    if (bytes_.empty()) {
        bytes_.resize(row_bytes_ * rows_);
    }
    return bytes_;
}

void Store::fill(const void* source, size_t pitch) {
    const auto* from = static_cast<const uint8_t*>(source);
    uint8_t* to = bytes().data();
    for (size_t row = 0; row < rows_; ++row) {
        std::memcpy(to + row * row_bytes_, from + row * pitch, row_bytes_);
    }
}

uint8_t* Store::beginMap(size_t pitch, bool keep) {
    window_.assign(std::max<size_t>(pitch * rows_, 1), kRubbish);
    if (keep) {
        const std::vector<uint8_t>& now = bytes();
        for (size_t row = 0; row < rows_; ++row) {
            std::memcpy(window_.data() + row * pitch, now.data() + row * row_bytes_, row_bytes_);
        }
    }
    return window_.data();
}

std::vector<uint8_t> Store::endMap() {
    std::vector<uint8_t> left = std::move(window_);
    window_.clear();
    return left;
}

Texture::Texture(World& world, const D3D11_TEXTURE2D_DESC& desc)
    : Resource(world, Kind::texture, size_t{desc.Width} * pixelBytes(desc.Format), desc.Height),
      desc_(desc) {}

Texture* asTexture(ID3D11Resource* resource) {
    if (resource == nullptr) {
        return nullptr;
    }
    D3D11_RESOURCE_DIMENSION dimension = D3D11_RESOURCE_DIMENSION_UNKNOWN;
    resource->GetType(&dimension);
    if (dimension != D3D11_RESOURCE_DIMENSION_TEXTURE2D) {
        return nullptr;
    }
    return static_cast<Texture*>(static_cast<ID3D11Texture2D*>(resource));
}

Buffer* asBuffer(ID3D11Resource* resource) {
    if (resource == nullptr) {
        return nullptr;
    }
    D3D11_RESOURCE_DIMENSION dimension = D3D11_RESOURCE_DIMENSION_UNKNOWN;
    resource->GetType(&dimension);
    if (dimension != D3D11_RESOURCE_DIMENSION_BUFFER) {
        return nullptr;
    }
    return static_cast<Buffer*>(static_cast<ID3D11Buffer*>(resource));
}

Store* storeOf(ID3D11Resource* resource) {
    if (Texture* texture = asTexture(resource)) {
        return &texture->store();
    }
    if (Buffer* buffer = asBuffer(resource)) {
        return &buffer->store();
    }
    return nullptr;
}

}  // namespace fake
