#pragma once

#include <d3d11.h>

#include <atomic>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "fake/world.h"

namespace fake {

/// What every double has: a name, a count of the references that callers hold, and a count of
/// the holds of the fake device itself (a view on its texture, a command list on what it uses).
class Object {
public:
    Object(World& world, Kind kind) : world_(world), kind_(kind) {
        number_ = world.nextNumber(kind);
    }
    virtual ~Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    // Straight from malloc: a replaced operator new in a test counts the library's own heap only.
    static void* operator new(size_t size) {
        void* memory = std::malloc(size);
        if (memory == nullptr) {
            throw std::bad_alloc();
        }
        return memory;
    }
    static void operator delete(void* memory) { std::free(memory); }

    World& world() const { return world_; }
    Kind kind() const { return kind_; }
    int references() const { return references_; }
    bool dead() const { return dead_; }

    /// "texture#3"; the device and its immediate context have no number.
    std::string name() const {
        if (kind_ == Kind::device || kind_ == Kind::immediate) {
            return kindName(kind_);
        }
        return std::string(kindName(kind_)) + "#" + std::to_string(number_);
    }

    ULONG addReference();
    ULONG releaseReference(const void* interface_pointer);

    /// Whether the world keeps the object; else it is freed with its last reference.
    bool adopted() const { return adopted_; }
    void setAdopted() { adopted_ = true; }

    void hold() { ++holds_; }
    void unhold(const void* interface_pointer);

    /// Called when nothing refers to the object any more: give storage back.
    virtual void die() {}

private:
    void dieIfUnused(const void* interface_pointer);

    World& world_;
    const Kind kind_;
    int number_ = 0;
    bool adopted_ = false;
    std::atomic<int> references_{1};
    std::atomic<int> holds_{0};
    std::atomic<bool> dead_{false};
};

#if defined(__GNUC__)
#pragma GCC diagnostic push
// COM interfaces have no virtual destructor; the doubles are freed through Object, which has one.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#endif

/// IUnknown over the counters of Object. `Interface` is the last interface of the chain.
template <class Interface>
class Unknown : public Interface, public Object {
public:
    Unknown(World& world, Kind kind) : Object(world, kind) {}
    ~Unknown() override = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override {
        if (out == nullptr) {
            return E_POINTER;
        }
        *out = nullptr;
        if (!answers(id)) {
            return E_NOINTERFACE;
        }
        addReference();
        *out = static_cast<Interface*>(this);
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return addReference(); }
    ULONG STDMETHODCALLTYPE Release() override {
        return releaseReference(static_cast<Interface*>(this));
    }

    /// The pointer by which callers know this object.
    const void* interfacePointer() const { return static_cast<const Interface*>(this); }

    /// Whether QueryInterface gives this object for the interface.
    virtual bool answers(REFIID id) const {
        return id == __uuidof(Interface) || id == __uuidof(IUnknown);
    }
};

#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

/// ID3D11DeviceChild: knows its device, keeps no private data.
template <class Interface>
class Child : public Unknown<Interface> {
public:
    using Unknown<Interface>::Unknown;

    bool answers(REFIID id) const override {
        return Unknown<Interface>::answers(id) || id == __uuidof(ID3D11DeviceChild);
    }
    void STDMETHODCALLTYPE GetDevice(ID3D11Device** out) override {
        *out = this->world().device();
        (*out)->AddRef();
    }
    HRESULT STDMETHODCALLTYPE GetPrivateData(REFGUID, UINT*, void*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetPrivateData(REFGUID, UINT, const void*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetPrivateDataInterface(REFGUID, const IUnknown*) override {
        return E_NOTIMPL;
    }
};

/// Keeps a double alive for the fake device itself, unseen by the callers' count.
template <class Double>
class Hold {
public:
    Hold() = default;
    explicit Hold(Double* object) : object_(object) {
        if (object_ != nullptr) {
            object_->hold();
        }
    }
    Hold(const Hold& other) : Hold(other.object_) {}
    Hold(Hold&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    Hold& operator=(Hold other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Hold() {
        if (object_ != nullptr) {
            object_->unhold(object_->interfacePointer());
        }
    }
    Double* get() const { return object_; }
    Double* operator->() const { return object_; }

private:
    Double* object_ = nullptr;
};

/// Hands a new double to the world and to the caller, who gets the one reference.
template <class Double, class Interface>
Double* publish(World& world, std::unique_ptr<Double> made, Interface** out) {
    Double* raw = made.get();
    Interface* face = raw;
    if (out != nullptr) {
        *out = face;
    }
    world.adopt(std::move(made), face);
    return raw;
}

}  // namespace fake
