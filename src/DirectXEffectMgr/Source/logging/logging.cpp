#include "DirectXEffectMgr/Source/logging/logging.h"

#include <atomic>
#include <cstdio>

namespace {

// In a record, since some compilers warn of a bare function type with a va_list as an argument of a
// template.
struct Receiver {
    LogFunction function;
};

// Initialised statically, so that messages are visible before any engine exists. Read with no
// lock by every call; relaxed, since the pointer carries no other data with it.
std::atomic<Receiver> log_callback{Receiver{print_to_stderr}};
static_assert(std::atomic<Receiver>::is_always_lock_free);

void forward(int32_t level, const char* format, va_list args) {
    if (const LogFunction callback = log_callback.load(std::memory_order_relaxed).function) {
        callback(level, format, args);
    }
}

struct ErrorName {
    uint32_t code;
    const char* name;
};

constexpr ErrorName kErrorNames[] = {
    {0x887A0001u, "DXGI_ERROR_INVALID_CALL"},          {0x887A0005u, "DXGI_ERROR_DEVICE_REMOVED"},
    {0x887A0006u, "DXGI_ERROR_DEVICE_HUNG"},           {0x887A0007u, "DXGI_ERROR_DEVICE_RESET"},
    {0x887A0020u, "DXGI_ERROR_DRIVER_INTERNAL_ERROR"},
};

}  // namespace

void set_log_callback(LogFunction callback) {
    log_callback.store(Receiver{callback}, std::memory_order_relaxed);
}

void log_info(const char* format, ...) {
    va_list args;
    va_start(args, format);
    forward(kLogInfo, format, args);
    va_end(args);
}

void log_warning(const char* format, ...) {
    va_list args;
    va_start(args, format);
    forward(kLogWarning, format, args);
    va_end(args);
}

void log_error(const char* format, ...) {
    va_list args;
    va_start(args, format);
    forward(kLogError, format, args);
    va_end(args);
}

void print_to_stderr(int32_t /*level*/, const char* format, va_list args) {
    std::vfprintf(stderr, format, args);
}

const char* dx_error_name(int32_t code) {
    for (const ErrorName& row : kErrorNames) {
        if (row.code == static_cast<uint32_t>(code)) {
            return row.name;
        }
    }
    return "SOMETHING_WRONG";
}
