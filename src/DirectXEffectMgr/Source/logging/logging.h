#pragma once

/// The library's log: every message goes, with its level and arguments as they stand, through one
/// function pointer of the process. Formatting and destination are the receiver's.
///
/// All functions may be called from any thread, also while a lock is held.

#include <cstdarg>
#include <cstdint>

#include "DirectXEffectMgr/Source/logging/portability.h"

/// Receives a message: level 2 information, 3 warning, 4 error. The text ends in a newline only if
/// the format does. Must be thread-safe, and must not call back into the library.
using LogFunction = void (*)(int32_t level, const char* format, va_list args);

/// Levels as the receiver sees them; no other values occur.
constexpr int32_t kLogInfo = 2;
constexpr int32_t kLogWarning = 3;
constexpr int32_t kLogError = 4;

/// Sends all later messages to `callback`; null silences the log. Until the first call messages go
/// to print_to_stderr. A call that is under way on another thread may still reach the old receiver.
void set_log_callback(LogFunction callback);

/// Progress: compile results, the adapter's report, shader dumps.
void log_info(const char* format, ...) ORVANE_PRINTF(1, 2);
/// Suspicious input; the work goes on.
void log_warning(const char* format, ...) ORVANE_PRINTF(1, 2);
/// An operation failed.
void log_error(const char* format, ...) ORVANE_PRINTF(1, 2);

/// The first receiver: prints the text to the standard error stream. Ignores the level and adds
/// nothing, no newline either.
void print_to_stderr(int32_t level, const char* format, va_list args) ORVANE_PRINTF(2, 0);

/// The name of a device failure code, such as "DXGI_ERROR_DEVICE_REMOVED" for 0x887A0005;
/// "SOMETHING_WRONG" for a code without one. The text is static.
const char* dx_error_name(int32_t code);
