#include "host/log_capture.h"

#include <algorithm>
#include <cstdio>
#include <mutex>

namespace host::log {
namespace {

std::mutex mutex;
std::vector<LogLine> received;  // guarded by mutex

std::string formatted(const char* format, va_list args) {
    va_list copy;
    va_copy(copy, args);
    const int length = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    if (length < 0) {
        return "(bad format)";
    }
    std::string text(static_cast<size_t>(length) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, args);
    text.pop_back();
    return text;
}

}  // namespace

void receive(int32_t level, const char* format, va_list args) {
    LogLine line{level, format, formatted(format, args)};
    const std::lock_guard<std::mutex> lock(mutex);
    received.push_back(std::move(line));
}

void clear() {
    const std::lock_guard<std::mutex> lock(mutex);
    received.clear();
}

std::vector<LogLine> lines() {
    const std::lock_guard<std::mutex> lock(mutex);
    return received;
}

std::vector<std::string> texts(int32_t level) {
    std::vector<std::string> found;
    for (const LogLine& line : lines()) {
        if (line.level == level) {
            found.push_back(line.text);
        }
    }
    return found;
}

std::string all() {
    std::string joined;
    for (const LogLine& line : lines()) {
        joined += std::to_string(line.level) + " " + line.text + "\n";
    }
    return joined;
}

bool holds(int32_t level, const std::string& text) {
    const std::vector<std::string> found = texts(level);
    return std::any_of(found.begin(), found.end(), [&text](const std::string& line) {
        return line.find(text) != std::string::npos;
    });
}

}  // namespace host::log
