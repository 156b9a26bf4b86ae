#include "DirectXEffectMgr/Source/device_util.h"

#include <d3d11.h>

#include "DirectXEffectMgr/Source/logging/logging.h"

void check_device(ID3D11Device* device, const char* source, int32_t line) {
    if (device == nullptr) {
        return;
    }
    const HRESULT reason = device->GetDeviceRemovedReason();
    if (FAILED(reason)) {
        log_error("DX error 0x%x %s at %s:%d\n", static_cast<uint32_t>(reason),
                  dx_error_name(static_cast<int32_t>(reason)), source, line);
    }
}

bool failed(int32_t result, const char* message) {
    if (result >= 0) {
        return false;
    }
    log_error(message);  // NOLINT(clang-diagnostic-format-security): fixed texts without fields
    return true;
}
