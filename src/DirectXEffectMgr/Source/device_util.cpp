#include "DirectXEffectMgr/Source/device_util.h"

#include "DirectXEffectMgr/Source/logging/logging.h"

void report_removed(int32_t reason, const char* source, int32_t line) {
    log_error("DX error 0x%x %s at %s:%d\n", static_cast<uint32_t>(reason), dx_error_name(reason),
              source, line);
}

bool failed(int32_t result, const char* message) {
    if (result >= 0) {
        return false;
    }
    log_error(message);  // NOLINT(clang-diagnostic-format-security): fixed texts without fields
    return true;
}
