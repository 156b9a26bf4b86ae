// Vertex data: what the host gives per pass, and the buffers made from it.

#include <d3d11.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "DirectXEffectMgr/Source/DirectXEffect.h"
#include "DirectXEffectMgr/Source/device_util.h"
#include "DirectXEffectMgr/Source/logging/logging.h"

namespace {

// The name that every list of indices goes under.
constexpr std::string_view kElementName = "element";

void set_name(VertexAttribute& attribute, std::string_view name) {
    const size_t length = std::min(name.size(), kVertexAttributeNameBytes - 1);
    std::memcpy(attribute.name, name.data(), length);
    attribute.name[length] = '\0';
}

// Eight bytes at once; a name's field is longer than that.
bool is_element_name(const VertexAttribute& attribute) {
    static constexpr char kWithEnd[] = "element";
    static_assert(kElementName == kWithEnd && sizeof kWithEnd == 8);
    return std::memcmp(attribute.name, kWithEnd, sizeof kWithEnd) == 0;
}

// A host's record, its name ended for sure.
VertexAttributeSlot slot_of(const VertexAttribute& attribute) {
    VertexAttributeSlot slot;
    slot.attribute = attribute;
    slot.attribute.name[kVertexAttributeNameBytes - 1] = '\0';
    return slot;
}

// Makes a buffer that holds `bytes`, if their number is one that the device can take.
HRESULT create_buffer(ID3D11Device* device, const void* bytes, uint64_t byte_width,
                      D3D11_BIND_FLAG bind_flag, ID3D11Buffer*& buffer) {
    if (byte_width > std::numeric_limits<UINT>::max()) {
        return E_INVALIDARG;
    }
    D3D11_BUFFER_DESC description{};
    description.ByteWidth = static_cast<UINT>(byte_width);
    description.Usage = D3D11_USAGE_DEFAULT;
    description.BindFlags = bind_flag;
    D3D11_SUBRESOURCE_DATA data{};
    data.pSysMem = bytes;
    return device->CreateBuffer(&description, &data, &buffer);
}

void release_if_dirty(VertexAttributeSlot& slot) {
    if (slot.attribute.dirty) {
        release(slot.buffer);
    }
}

// The slot of a pass, or the first if there are fewer slots than passes.
VertexAttributeSlot& slot_of_pass(std::vector<VertexAttributeSlot>& slots, size_t pass) {
    return slots[pass < slots.size() ? pass : 0];
}

}  // namespace

VertexAttribute CDirectXEffect::MakeVertexAttribute(const char* name, uint32_t components,
                                                    const void* data, bool dirty, bool is_element,
                                                    uint32_t count) {
    VertexAttribute attribute;
    const std::string_view given = name != nullptr ? name : "";
    set_name(attribute, is_element ? kElementName : given);
    attribute.components = components;
    attribute.data = data;
    attribute.is_element = is_element;
    attribute.dirty = dirty;
    attribute.count = static_cast<int32_t>(count);
    return attribute;
}

int32_t CDirectXEffect::AddVertexAttribute(const char* name, uint32_t components, const void* data,
                                           bool dirty, bool is_element, uint32_t count) {
    if (name == nullptr && !is_element) {
        return kResultPointer;
    }
    const VertexAttributeSlot added =
        slot_of(MakeVertexAttribute(name, components, data, dirty, is_element, count));
    std::vector<VertexAttributeSlot>& slots = attributes[added.attribute.name];
    if (slots.empty()) {
        slots.push_back(added);
        return kResultOk;
    }
    VertexAttribute& first = slots.front().attribute;
    first.components = components;
    first.data = data;
    first.is_element = is_element;
    first.dirty = dirty;
    first.count = added.attribute.count;
    return kResultOk;
}

int32_t CDirectXEffect::SetVertexAttributes(const std::vector<VertexAttribute>& list) {
    if (list.empty()) {
        return kResultRefused;
    }
    std::vector<VertexAttributeSlot> slots;
    slots.reserve(list.size());
    std::transform(list.begin(), list.end(), std::back_inserter(slots), slot_of);
    const std::string key = slots.front().attribute.name;
    const auto known = attributes.find(key);
    if (known == attributes.end()) {
        attributes.emplace(key, std::move(slots));
        return kResultOk;
    }
    std::vector<VertexAttributeSlot>& former = known->second;
    std::vector<VertexAttributeSlot>& retired = retired_attributes[key];
    OrphanBuffers(retired);
    retired.clear();
    const size_t shared = std::min(slots.size(), former.size());
    retired.reserve(former.size() - shared);
    for (size_t i = 0; i < shared; ++i) {
        slots[i].buffer = former[i].buffer;
    }
    retired.assign(former.begin() + static_cast<std::ptrdiff_t>(shared), former.end());
    former = std::move(slots);
    return kResultOk;
}

void CDirectXEffect::OrphanBuffers(std::vector<VertexAttributeSlot>& slots) {
    for (VertexAttributeSlot& slot : slots) {
        leftovers_.keep(std::exchange(slot.buffer, nullptr));
    }
}

void CDirectXEffect::ReleaseAttributeBuffers(AttributeMap& map) {
    for (auto& [name, slots] : map) {
        for (VertexAttributeSlot& slot : slots) {
            release(slot.buffer);
        }
    }
}

void CDirectXEffect::fill_vertex_attribute(VertexAttributeSlot& slot, uint64_t byte_width) {
    release_if_dirty(slot);
    const void* data = slot.attribute.data;
    if (data == nullptr) {
        return;
    }
    if (slot.buffer == nullptr) {
        // The unit quad has four vertices. More are asked for only where another attribute feeds
        // the shader; they are zero then.
        std::vector<uint8_t> longer_quad;
        if (data == quad_vertices.data() && byte_width > sizeof(quad_vertices) &&
            byte_width <= std::numeric_limits<UINT>::max()) {
            longer_quad.resize(static_cast<size_t>(byte_width));
            std::memcpy(longer_quad.data(), data, sizeof(quad_vertices));
            data = longer_quad.data();
        }
        if (failed(create_buffer(device, data, byte_width, D3D11_BIND_VERTEX_BUFFER, slot.buffer),
                   "fill_vertex_attribute CreateBuffer failed")) {
            return;
        }
    }
    slot.attribute.dirty = false;
    const bool known = slot.vertex_input != kVertexInputUnknown;
    const int32_t position = known ? slot.vertex_input : FindVertexInput(slot);
    if (position >= 0) {
        const UINT stride = slot.attribute.components * 4;
        const UINT offset = 0;
        deferred_context->IASetVertexBuffers(static_cast<UINT>(position), 1, &slot.buffer, &stride,
                                             &offset);
    }
}

void CDirectXEffect::fill_element_attribute(VertexAttributeSlot& slot, uint64_t index_count) {
    release_if_dirty(slot);
    if (slot.attribute.data == nullptr) {
        return;
    }
    if (slot.buffer == nullptr && failed(create_buffer(device, slot.attribute.data, index_count * 4,
                                                       D3D11_BIND_INDEX_BUFFER, slot.buffer),
                                         "fill_element_attribute CreateBuffer failed")) {
        return;
    }
    slot.attribute.dirty = false;
    deferred_context->IASetIndexBuffer(slot.buffer, DXGI_FORMAT_R32_UINT, 0);
}

void CDirectXEffect::BindAttributes(size_t pass, PassDraw& draw) {
    if (attribute_rows_.size() != attributes.size()) {
        attribute_rows_.clear();
        for (auto& [key, slots] : attributes) {
            attribute_rows_.push_back(&slots);
        }
    }
    for (std::vector<VertexAttributeSlot>* const slots : attribute_rows_) {
        if (slots->empty()) {
            continue;
        }
        VertexAttributeSlot& slot = slot_of_pass(*slots, pass);
        const VertexAttribute& attribute = slot.attribute;
        if (attribute.is_element) {
            const uint32_t units =
                attribute.count >= 1 ? static_cast<uint32_t>(attribute.count) : draw.vertices;
            const uint64_t index_count = uint64_t{attribute.components} * units;
            draw.indexed = true;
            draw.index_count = index_count <= std::numeric_limits<uint32_t>::max()
                                   ? static_cast<uint32_t>(index_count)
                                   : 0;
            fill_element_attribute(slot, index_count);
        } else if (!is_element_name(attribute)) {
            fill_vertex_attribute(slot, uint64_t{draw.vertices} * attribute.components * 4);
        }
    }
}
