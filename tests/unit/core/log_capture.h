#pragma once

/// Catches the library's log for the life of one object; one at a time.

#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <string>
#include <vector>

#include "DirectXEffectMgr/Source/logging/logging.h"

class LogCapture {
public:
    LogCapture() {
        messages().clear();
        set_log_callback(collect);
    }
    ~LogCapture() { set_log_callback(print_to_stderr); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// All messages so far, each as its level, "|" and its text: "4|read file error".
    std::vector<std::string> take() {
        const std::lock_guard<std::mutex> lock(mutex());
        return std::move(messages());
    }

private:
    static std::vector<std::string>& messages() {
        static std::vector<std::string> all;
        return all;
    }
    static std::mutex& mutex() {
        static std::mutex one;
        return one;
    }
    static void collect(int32_t level, const char* format, va_list args) {
        va_list again;
        va_copy(again, args);
        const int length = std::vsnprintf(nullptr, 0, format, args);
        std::string text(static_cast<size_t>(length) + 1, '\0');
        std::vsnprintf(text.data(), text.size(), format, again);
        va_end(again);
        text.pop_back();
        const std::lock_guard<std::mutex> lock(mutex());
        messages().push_back(std::to_string(level) + "|" + text);
    }
};

using Lines = std::vector<std::string>;
