#pragma once

#include <d3d11.h>

#include <cstdint>

// Source names of the device reports; the line beside such a name is the line of the call.
constexpr const char* kEffectSource = "src/DirectXEffectMgr/Source/DirectXEffect";
constexpr const char* kFlatInputSource = "src/DirectXEffectMgr/Source/flat_input_dx";
constexpr const char* kResourcePoolSource = "src/DirectXEffectMgr/Source/resource_pool_dx";

/// Releases a COM object that a raw field owns, and clears the field. A null field is left alone.
template <typename T>
void release(T*& field) {
    if (field != nullptr) {
        T* const object = field;
        field = nullptr;
        object->Release();
    }
}

/// Logs why a device is gone; see check_device().
void report_removed(int32_t reason, const char* source, int32_t line);

/// Asks the device whether it is still there and logs a failing answer; only reports, nothing
/// stops or recovers.
///
/// @param device  may be null: nothing is asked then
/// @param source  one of the source names above
/// @param line    line of the call, `__LINE__`
inline void check_device(ID3D11Device* device, const char* source, int32_t line) {
    const HRESULT reason = device != nullptr ? device->GetDeviceRemovedReason() : S_OK;
    if (FAILED(reason)) {
        report_removed(reason, source, line);
    }
}

/// Tells whether a device call failed, and logs it if so.
///
/// @param result   what the call returned
/// @param message  fixed text without format fields
[[nodiscard]] bool failed(int32_t result, const char* message);
