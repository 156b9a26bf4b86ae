// The engine's device: making it, letting go of a failed one, and the report on its adapter.

#include <d3d11.h>
#include <objbase.h>
#include <wrl/client.h>

#include <array>
#include <cwchar>

#include "DirectXEffectMgr/Source/DirectXEffectEngine.h"
#include "DirectXEffectMgr/Source/device_util.h"
#include "DirectXEffectMgr/Source/logging/logging.h"

using Microsoft::WRL::ComPtr;

namespace {

// Three bytes at most for each unit of UTF-16, and the terminating zero.
using AdapterName = std::array<char, 3 * 128 + 1>;

AdapterName utf8_of(const WCHAR (&text)[128]) {
    AdapterName name = {};
    const int length = static_cast<int>(wcsnlen(text, ARRAYSIZE(text)));
    WideCharToMultiByte(CP_UTF8, 0, text, length, name.data(), static_cast<int>(name.size()) - 1,
                        nullptr, nullptr);
    return name;
}

int32_t megabytes(SIZE_T bytes) {
    return static_cast<int32_t>(bytes >> 20);
}

}  // namespace

int32_t CDirectXEffectEngine::InitDevice(ID3D11Device* given) {
    if (device.device == nullptr) {
        if (given != nullptr) {
            device.device = given;
            given->AddRef();
            given->GetImmediateContext(&device.immediate_context);
        } else {
            // The device itself tells whether this worked.
            D3D_FEATURE_LEVEL level = {};
            D3D11CreateDevice(nullptr, D3D_DRIVER_TYPE_HARDWARE, nullptr, 0, nullptr, 0,
                              D3D11_SDK_VERSION, &device.device, &level, &device.immediate_context);
            feature_level = static_cast<uint32_t>(level);
        }
    }
    if (device.device == nullptr) {
        return kInitNoDevice;
    }
    if (FAILED(CoInitialize(nullptr))) {
        log_error("Failed to initialize COM library");
        return kInitNoCom;
    }
    com_initialized_ = true;
    ReportAdapter();
    return kInitReady;
}

void CDirectXEffectEngine::ReleaseDevice() {
    release(device.immediate_context);
    release(device.device);
    // Only what InitDevice began is ended: the host's own COM stays as it is.
    if (com_initialized_) {
        com_initialized_ = false;
        CoUninitialize();
    }
}

void CDirectXEffectEngine::ReportAdapter() const {
    ComPtr<IDXGIDevice> dxgi_device;
    if (FAILED(device.device->QueryInterface(IID_PPV_ARGS(&dxgi_device))) || !dxgi_device) {
        return;
    }
    ComPtr<IDXGIAdapter> adapter;
    if (FAILED(dxgi_device->GetAdapter(&adapter)) || !adapter) {
        return;
    }
    DXGI_ADAPTER_DESC description = {};
    if (FAILED(adapter->GetDesc(&description))) {
        return;
    }
    log_info("Device Information : ");
    log_info("  Description: %s", utf8_of(description.Description).data());
    log_info("  Vendor ID: %d", static_cast<int32_t>(description.VendorId));
    log_info("  Device ID: %d", static_cast<int32_t>(description.DeviceId));
    log_info("  Dedicated Video Memory: %d MB", megabytes(description.DedicatedVideoMemory));
    log_info("  Dedicated System Memory: %d MB", megabytes(description.DedicatedSystemMemory));
    log_info("  Shared System Memory: %d MB", megabytes(description.SharedSystemMemory));
}
