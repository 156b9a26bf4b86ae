#include "fake/world.h"

#include <algorithm>

#include "fake/context.h"
#include "fake/describe.h"
#include "fake/device.h"
#include "fake/object.h"

namespace fake {
namespace {

constexpr const char* kKindNames[] = {
    "device",      "immediate",     "deferred",     "command_list", "buffer",      "texture",
    "srv",         "rtv",           "dsv",          "sampler",      "depth_state", "raster_state",
    "blend_state", "vertex_shader", "pixel_shader", "layout",       "dxgi_device", "adapter",
};
static_assert(std::size(kKindNames) == static_cast<size_t>(Kind::count), "a name for each kind");

using Lock = std::lock_guard<std::recursive_mutex>;

}  // namespace

const char* kindName(Kind kind) {
    return kKindNames[static_cast<size_t>(kind)];
}

std::string Call::text() const {
    std::string line = object + "." + method + "(" + arguments + ")";
    if (!outcome.empty()) {
        line += " -> " + outcome;
    }
    return line;
}

// References.

ULONG Object::addReference() {
    if (dead_) {
        world_.misuse("AddRef of dead " + name());
    }
    return static_cast<ULONG>(++references_);
}

ULONG Object::releaseReference(const void* interface_pointer) {
    const int left = --references_;
    if (left < 0) {
        world_.misuse("Release of " + name() + " once too often");
        references_ = 0;
        return 0;
    }
    if (left == 0) {
        dieIfUnused(interface_pointer);
    }
    return static_cast<ULONG>(left);
}

void Object::unhold(const void* interface_pointer) {
    if (--holds_ == 0 && references_ == 0) {
        dieIfUnused(interface_pointer);
    }
}

void Object::dieIfUnused(const void* interface_pointer) {
    if (references_ > 0 || holds_ > 0 || dead_.exchange(true)) {
        return;
    }
    die();
    if (!adopted_) {
        delete this;
        return;
    }
    world_.forget(this, interface_pointer);
}

// The world.

World::World() : device_(new Device(*this)), immediate_(new Context(*this, Kind::immediate)) {
    device_->setAdopted();
    immediate_->setAdopted();
    by_pointer_[device_->interfacePointer()] = device_.get();
    by_pointer_[immediate_->interfacePointer()] = immediate_.get();
}

World::~World() {
    recording_ = false;
    // Commands and views hold other objects: let go of them before any object is freed.
    for (const std::unique_ptr<Object>& object : objects_) {
        object->die();
    }
}

ID3D11Device* World::device() const {
    return device_.get();
}

ID3D11DeviceContext* World::immediate() const {
    return immediate_.get();
}

void World::adopt(std::unique_ptr<Object> object, const void* interface_pointer) {
    if (!recording()) {
        // Freed with its last reference; see Object::dieIfUnused.
        static_cast<void>(object.release());
        return;
    }
    const Lock lock(mutex_);
    object->setAdopted();
    by_pointer_[interface_pointer] = object.get();
    objects_.push_back(std::move(object));
}

void World::forget(Object*, const void*) {
    // Dead objects stay in the tables, so that a later use is told by name.
}

std::vector<Call> World::calls() const {
    const Lock lock(mutex_);
    return calls_;
}

void World::clearCalls() {
    const Lock lock(mutex_);
    calls_.clear();
    counts_.clear();
}

std::vector<std::string> World::texts() const {
    const Lock lock(mutex_);
    std::vector<std::string> lines;
    lines.reserve(calls_.size());
    for (const Call& call : calls_) {
        lines.push_back(call.text());
    }
    return lines;
}

std::vector<Call> World::callsOf(std::string_view method) const {
    const Lock lock(mutex_);
    std::vector<Call> found;
    std::copy_if(calls_.begin(), calls_.end(), std::back_inserter(found),
                 [method](const Call& call) { return call.method == method; });
    return found;
}

std::vector<std::string> World::textsOf(std::string_view method) const {
    std::vector<std::string> lines;
    for (const Call& call : callsOf(method)) {
        lines.push_back(call.text());
    }
    return lines;
}

std::map<std::string, int> World::counts() const {
    const Lock lock(mutex_);
    return counts_;
}

void World::record(Call call) {
    if (!recording()) {
        return;
    }
    const Lock lock(mutex_);
    // A call that can fail was counted when it began: see enter().
    calls_.push_back(std::move(call));
}

// Faults.

void World::failNth(const std::string& method, int nth, HRESULT code) {
    const Lock lock(mutex_);
    faults_[method] = {nth, code, false};
    struck_ = false;
    any_fault_ = true;
}

void World::failAll(const std::string& method, HRESULT code) {
    const Lock lock(mutex_);
    faults_[method] = {0, code, true};
    any_fault_ = true;
}

bool World::faultStruck() const {
    const Lock lock(mutex_);
    return struck_;
}

void World::clearFaults() {
    const Lock lock(mutex_);
    faults_.clear();
    calls_to_loss_ = 0;
    any_fault_ = false;
}

void World::remove(HRESULT code) {
    removed_reason_ = code;
    lost_ = code;
}

void World::removeAt(int nth, HRESULT code) {
    const Lock lock(mutex_);
    calls_to_loss_ = nth;
    loss_code_ = code;
    any_fault_ = nth > 0;
}

bool World::takeStillDrawing() {
    int left = still_drawing_;
    while (left > 0) {
        if (still_drawing_.compare_exchange_weak(left, left - 1)) {
            return true;
        }
    }
    return false;
}

HRESULT World::strike(const std::string& method) {
    const auto found = faults_.find(method);
    if (found == faults_.end()) {
        return S_OK;
    }
    Fault& fault = found->second;
    if (fault.always || (fault.remaining > 0 && --fault.remaining == 0)) {
        struck_ = true;
        return fault.code;
    }
    return S_OK;
}

HRESULT World::enter(const char* method) {
    const HRESULT lost = lost_;
    const bool reason = std::string_view(method) == "GetDeviceRemovedReason";
    if (FAILED(lost) && !reason) {
        return lost;
    }
    if (!recording() && !any_fault_) {
        return S_OK;
    }
    const Lock lock(mutex_);
    ++counts_[method];
    if (!reason && calls_to_loss_ > 0 && --calls_to_loss_ == 0) {
        struck_ = true;
        remove(loss_code_);
        return loss_code_;
    }
    return any_fault_ ? strike(method) : S_OK;
}

// Objects.

std::vector<std::string> World::live() const {
    const Lock lock(mutex_);
    std::vector<std::string> names;
    for (const std::unique_ptr<Object>& object : objects_) {
        if (object->references() > 0) {
            names.push_back(object->name() + ": " + std::to_string(object->references()));
        }
    }
    return names;
}

int World::references(const void* object) const {
    const Lock lock(mutex_);
    const auto found = by_pointer_.find(object);
    return found == by_pointer_.end() ? -1 : found->second->references();
}

int World::created(Kind kind) const {
    return created_[static_cast<size_t>(kind)];
}

int World::createdInAll() const {
    int sum = 0;
    for (const std::atomic<int>& count : created_) {
        sum += count;
    }
    return sum;
}

std::vector<std::string> World::errors() const {
    const Lock lock(mutex_);
    return errors_;
}

void World::misuse(std::string text) {
    const Lock lock(mutex_);
    errors_.push_back(std::move(text));
}

std::string World::nameOf(const void* object) const {
    if (object == nullptr) {
        return "null";
    }
    const Lock lock(mutex_);
    const auto found = by_pointer_.find(object);
    if (found == by_pointer_.end()) {
        const_cast<World*>(this)->misuse("a stranger among the arguments");
        return "stranger";
    }
    if (found->second->dead()) {
        const_cast<World*>(this)->misuse("use of dead " + found->second->name());
    }
    return found->second->name();
}

std::vector<uint8_t> World::bytesOf(const void* resource) const {
    const Lock lock(mutex_);
    const auto found = by_pointer_.find(resource);
    if (found == by_pointer_.end()) {
        return {};
    }
    if (auto* texture = dynamic_cast<Texture*>(found->second)) {
        return texture->store().bytes();
    }
    if (auto* buffer = dynamic_cast<Buffer*>(found->second)) {
        return buffer->store().bytes();
    }
    return {};
}

std::vector<uint8_t> World::bytesOfName(std::string_view name) const {
    const Lock lock(mutex_);
    for (const auto& [pointer, object] : by_pointer_) {
        if (object->name() == name) {
            return bytesOf(pointer);
        }
    }
    return {};
}

}  // namespace fake
