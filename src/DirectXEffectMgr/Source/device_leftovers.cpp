#include "DirectXEffectMgr/Source/device_leftovers.h"

#include <unknwn.h>

#include <new>

void DeviceLeftovers::keep(IUnknown* object) {
    if (object == nullptr) {
        return;
    }
    try {
        objects_.push_back(object);
    } catch (const std::bad_alloc&) {
        object->Release();  // earlier than wanted, but not lost
    }
}

void DeviceLeftovers::clear() noexcept {
    for (IUnknown* const object : objects_) {
        object->Release();
    }
    objects_.clear();
}
