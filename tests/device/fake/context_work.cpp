#include <algorithm>
#include <cstring>

#include "fake/context.h"
#include "fake/describe.h"

namespace fake {
namespace {

uint8_t channelByte(float value) {
    return static_cast<uint8_t>(std::min(std::max(value, 0.0f), 1.0f) * 255.0f + 0.5f);
}

// The colour as a B8G8R8A8 texture keeps it.
void paint(Texture& texture, const float (&rgba)[4]) {
    const uint8_t pixel[4] = {channelByte(rgba[2]), channelByte(rgba[1]), channelByte(rgba[0]),
                              channelByte(rgba[3])};
    std::vector<uint8_t>& bytes = texture.store().bytes();
    for (size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = pixel[i % 4];
    }
}

// As on a real device: nothing happens between resources of different shapes.
void copyStore(Store& to, Store& from) {
    if (to.rowBytes() == from.rowBytes() && to.rows() == from.rows()) {
        to.bytes() = from.bytes();
    }
}

std::string number(UINT value) {
    return std::to_string(value);
}

}  // namespace

void Context::carryOut(std::function<void()> command) {
    if (kind() == Kind::deferred) {
        commands_.push_back(std::move(command));
    } else {
        command();
    }
}

D3D11_DEVICE_CONTEXT_TYPE Context::GetType() {
    return kind() == Kind::deferred ? D3D11_DEVICE_CONTEXT_DEFERRED
                                    : D3D11_DEVICE_CONTEXT_IMMEDIATE;
}

void Context::Draw(UINT count, UINT start) {
    if (!quiet()) {
        log("Draw", number(count) + ", " + number(start));
    }
}

void Context::DrawIndexed(UINT count, UINT start, INT base) {
    if (!quiet()) {
        log("DrawIndexed", number(count) + ", " + number(start) + ", " + std::to_string(base));
    }
}

HRESULT Context::quietMap(ID3D11Resource* resource, D3D11_MAPPED_SUBRESOURCE* out) {
    const HRESULT code = world().enter("Map");
    if (FAILED(code)) {
        return code;
    }
    Store* store = storeOf(resource);
    out->pData = store->bytes().data();
    out->RowPitch = static_cast<UINT>(store->rowBytes());
    out->DepthPitch = 0;
    return S_OK;
}

void Context::fillMapped(ID3D11Resource* resource, D3D11_MAP kind, D3D11_MAPPED_SUBRESOURCE* out) {
    Store* store = storeOf(resource);
    const size_t padding = asTexture(resource) != nullptr ? world().rowPadding() : 0;
    const size_t pitch = store->rowBytes() + padding;
    out->pData = store->beginMap(pitch, kind != D3D11_MAP_WRITE_DISCARD);
    out->RowPitch = static_cast<UINT>(pitch);
    out->DepthPitch = static_cast<UINT>(pitch * store->rows());
}

HRESULT Context::Map(ID3D11Resource* resource, UINT subresource, D3D11_MAP map_kind, UINT flags,
                     D3D11_MAPPED_SUBRESOURCE* out) {
    if (quiet()) {
        return quietMap(resource, out);
    }
    const std::lock_guard<std::recursive_mutex> lock(world().mutex());
    HRESULT code = world().enter("Map");
    if (SUCCEEDED(code) && (flags & D3D11_MAP_FLAG_DO_NOT_WAIT) != 0 &&
        world().takeStillDrawing()) {
        code = DXGI_ERROR_WAS_STILL_DRAWING;
    }
    const std::string resource_name = world().nameOf(resource);
    if (SUCCEEDED(code) && (storeOf(resource) == nullptr || storeOf(resource)->mapped())) {
        world().misuse("Map of " + resource_name + ", null or mapped already");
        code = E_INVALIDARG;
    }
    if (SUCCEEDED(code) && world().mapGivesNull()) {
        *out = {};
    } else if (SUCCEEDED(code)) {
        fillMapped(resource, map_kind, out);
    }
    world().record({name(),
                    "Map",
                    resource_name + ", " + number(subresource) + ", " + mapName(map_kind) + ", " +
                        number(flags),
                    FAILED(code) ? hexCode(code) : "",
                    {},
                    nullptr});
    return code;
}

void Context::Unmap(ID3D11Resource* resource, UINT subresource) {
    if (quiet()) {
        return;
    }
    const std::lock_guard<std::recursive_mutex> lock(world().mutex());
    Store* store = storeOf(resource);
    Call call{name(), "Unmap", world().nameOf(resource) + ", " + number(subresource),
              "",     {},      nullptr};
    if (store == nullptr || !store->mapped()) {
        call.outcome = "was not mapped";
    } else {
        call.bytes = store->endMap();
    }
    Buffer* buffer = asBuffer(resource);
    if (buffer != nullptr && !call.bytes.empty()) {
        carryOut([hold = Hold<Buffer>(buffer), bytes = call.bytes] {
            hold->store().fill(bytes.data(), 0);
        });
    }
    world().record(std::move(call));
}

void Context::CopyResource(ID3D11Resource* to, ID3D11Resource* from) {
    if (quiet()) {
        return;
    }
    const std::lock_guard<std::recursive_mutex> lock(world().mutex());
    log("CopyResource", world().nameOf(to) + ", " + world().nameOf(from));
    Texture* target = asTexture(to);
    Texture* source = asTexture(from);
    if (target == nullptr || source == nullptr) {
        world().misuse("CopyResource with null");
        return;
    }
    carryOut([target = Hold<Texture>(target), source = Hold<Texture>(source)] {
        copyStore(target->store(), source->store());
    });
}

void Context::UpdateSubresource(ID3D11Resource* to, UINT subresource, const D3D11_BOX* box,
                                const void* data, UINT row_pitch, UINT depth_pitch) {
    if (quiet()) {
        return;
    }
    const std::lock_guard<std::recursive_mutex> lock(world().mutex());
    Call call{name(),
              "UpdateSubresource",
              world().nameOf(to) + ", " + number(subresource) + ", " + (box ? "box" : "all") +
                  ", pitch " + number(row_pitch) + ", " + number(depth_pitch),
              "",
              {},
              data};
    Texture* texture = asTexture(to);
    if (texture == nullptr || data == nullptr) {
        world().misuse("UpdateSubresource with null");
    } else {
        Store copy(texture->store().rowBytes(), texture->store().rows());
        copy.fill(data, row_pitch);
        call.bytes = copy.bytes();
        carryOut(
            [hold = Hold<Texture>(texture), bytes = call.bytes] { hold->store().bytes() = bytes; });
    }
    world().record(std::move(call));
}

void Context::ResolveSubresource(ID3D11Resource* to, UINT to_index, ID3D11Resource* from,
                                 UINT from_index, DXGI_FORMAT format) {
    if (quiet()) {
        return;
    }
    const std::lock_guard<std::recursive_mutex> lock(world().mutex());
    log("ResolveSubresource", world().nameOf(to) + ", " + number(to_index) + ", " +
                                  world().nameOf(from) + ", " + number(from_index) + ", " +
                                  formatName(format));
    Texture* target = asTexture(to);
    Texture* source = asTexture(from);
    if (target == nullptr || source == nullptr) {
        world().misuse("ResolveSubresource with null");
        return;
    }
    carryOut([target = Hold<Texture>(target), source = Hold<Texture>(source)] {
        copyStore(target->store(), source->store());
    });
}

void Context::ClearRenderTargetView(ID3D11RenderTargetView* view, const FLOAT* rgba) {
    if (quiet()) {
        return;
    }
    const std::lock_guard<std::recursive_mutex> lock(world().mutex());
    std::string text = world().nameOf(view);
    for (int i = 0; i < 4; ++i) {
        text += (i == 0 ? ", " : "/") + floatText(rgba[i]);
    }
    log("ClearRenderTargetView", std::move(text));
    if (view == nullptr) {
        world().misuse("ClearRenderTargetView with null");
        return;
    }
    Texture* texture = static_cast<TargetView*>(view)->texture();
    carryOut([hold = Hold<Texture>(texture), r = rgba[0], g = rgba[1], b = rgba[2], a = rgba[3]] {
        paint(*hold.get(), {r, g, b, a});
    });
}

void Context::ClearDepthStencilView(ID3D11DepthStencilView* view, UINT flags, FLOAT depth,
                                    UINT8 stencil) {
    if (quiet()) {
        return;
    }
    log("ClearDepthStencilView", world().nameOf(view) + ", " + number(flags) + ", " +
                                     floatText(depth) + ", " + number(stencil));
    if (view == nullptr) {
        world().misuse("ClearDepthStencilView with null");
    }
}

HRESULT Context::FinishCommandList(BOOL restore, ID3D11CommandList** out) {
    if (quiet()) {
        const HRESULT told = world().enter("FinishCommandList");
        if (SUCCEEDED(told)) {
            publish(world(), std::make_unique<CommandList>(world(), Commands()), out);
        }
        return told;
    }
    const std::lock_guard<std::recursive_mutex> lock(world().mutex());
    HRESULT code = world().enter("FinishCommandList");
    if (SUCCEEDED(code) && kind() != Kind::deferred) {
        code = DXGI_ERROR_INVALID_CALL;
    }
    Call call{name(), "FinishCommandList", std::to_string(restore), hexCode(code), {}, nullptr};
    if (SUCCEEDED(code)) {
        auto list = std::make_unique<CommandList>(world(), std::move(commands_));
        commands_.clear();
        call.outcome = publish(world(), std::move(list), out)->name();
    }
    world().record(std::move(call));
    return code;
}

void Context::ExecuteCommandList(ID3D11CommandList* list, BOOL restore) {
    if (quiet()) {
        return;
    }
    const std::lock_guard<std::recursive_mutex> lock(world().mutex());
    log("ExecuteCommandList", world().nameOf(list) + ", " + std::to_string(restore));
    if (list == nullptr) {
        world().misuse("ExecuteCommandList with null");
        return;
    }
    for (const std::function<void()>& command : static_cast<CommandList*>(list)->commands()) {
        command();
    }
}

void Context::ClearState() {
    if (!quiet()) {
        log("ClearState", "");
    }
}

void Context::Flush() {
    if (!quiet()) {
        log("Flush", "");
    }
}

}  // namespace fake
