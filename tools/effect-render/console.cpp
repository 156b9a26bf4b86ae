#include "console.h"

#include <atomic>
#include <cstdio>
#include <mutex>
#include <string>

#include "files_read.h"

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace effect_render {
namespace {

constexpr int32_t kWarningLevel = 3;
constexpr int32_t kErrorLevel = 4;
constexpr size_t kBarCells = 40;

std::mutex console_mutex;  // guards standard error and bar_length
size_t bar_length = 0;     // characters of the bar that stands on the line now

// The library's last message about a program's texts: from there on it is the compiler's turn.
constexpr std::string_view kTranslated = "the frag shader compile to DX success!";
constexpr size_t kMostRecentBytes = size_t{64} << 20;  // more than any dump of a text that compiles

std::mutex recent_mutex;  // guards recent_log
std::string recent_log;

std::atomic<bool> whole_log{false};
std::atomic<int64_t> logged_errors{0};

bool IsTerminal() {
#ifdef _WIN32
    return _isatty(_fileno(stderr)) != 0;
#else
    return isatty(fileno(stderr)) != 0;
#endif
}

// Holds console_mutex.
void RemoveBar() {
    if (bar_length > 0) {
        std::fprintf(stderr, "\r%*s\r", static_cast<int>(bar_length), "");
        bar_length = 0;
    }
}

std::string BarText(int64_t done, int64_t total) {
    const auto filled = static_cast<size_t>(done * static_cast<int64_t>(kBarCells) / total);
    std::string text = "[" + std::string(filled, '#') + std::string(kBarCells - filled, '.');
    return text + "] " + std::to_string(done) + "/" + std::to_string(total);
}

std::string Format(const char* format, va_list args) {
    va_list again;
    va_copy(again, args);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    if (length < 0) {
        return format;
    }
    std::string text(static_cast<size_t>(length) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, args);
    text.pop_back();
    return text;
}

void Remember(const std::string& message) {
    const std::lock_guard<std::mutex> lock(recent_mutex);
    if (message == kTranslated || recent_log.size() + message.size() > kMostRecentBytes) {
        recent_log.clear();
    }
    recent_log.append(message).push_back('\n');
}

}  // namespace

void PrintLine(std::string_view text) {
    const std::lock_guard<std::mutex> lock(console_mutex);
    RemoveBar();
    std::fwrite(text.data(), 1, text.size(), stderr);
    if (text.empty() || text.back() != '\n') {
        std::fputc('\n', stderr);
    }
    std::fflush(stderr);
}

ExitStatus PrintError(const std::exception& error) {
    PrintLine(std::string("effect-render: error: ") + error.what());
    const auto* known = dynamic_cast<const ToolError*>(&error);
    return known != nullptr ? known->Status() : ExitStatus::Failure;
}

void ShowProgress(int64_t done, int64_t total) {
    if (total < 2 || !IsTerminal()) {
        return;
    }
    const std::lock_guard<std::mutex> lock(console_mutex);
    const std::string text = BarText(done, total);
    std::fprintf(stderr, "\r%s%s", text.c_str(), done == total ? "\n" : "");
    std::fflush(stderr);
    bar_length = done == total ? 0 : text.size();
}

void ShowWholeLog(bool everything) {
    whole_log = everything;
}

void LogFromLibrary(int32_t level, const char* format, va_list args) {
    if (level >= kErrorLevel) {
        ++logged_errors;
    }
    const std::string message = Format(format, args);
    Remember(message);
    NoteLogMessage(message);
    if (level >= kWarningLevel || whole_log) {
        PrintLine(message);
    }
}

std::string RecentLog() {
    const std::lock_guard<std::mutex> lock(recent_mutex);
    return recent_log;
}

void ForgetLog() {
    const std::lock_guard<std::mutex> lock(recent_mutex);
    recent_log.clear();
}

int64_t CountLoggedErrors() {
    return logged_errors;
}

}  // namespace effect_render
