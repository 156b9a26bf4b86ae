#pragma once

#include <cstdarg>
#include <cstdint>
#include <string>
#include <vector>

namespace host {

/// One message as the host's log function received it.
struct LogLine {
    int32_t level = 0;
    std::string format;
    std::string text;  ///< format and arguments put together
};

/// The log function that the tests hand to the library, and what it received. One per process,
/// since the library keeps one pointer; safe from any thread.
namespace log {

void receive(int32_t level, const char* format, va_list args);
void clear();
std::vector<LogLine> lines();

/// Texts of one level: 2 information, 3 warning, 4 error.
std::vector<std::string> texts(int32_t level);
inline std::vector<std::string> errors() {
    return texts(4);
}
inline std::vector<std::string> warnings() {
    return texts(3);
}

/// All lines joined, for messages of a failed test.
std::string all();

/// Whether a line of this level holds the text.
bool holds(int32_t level, const std::string& text);

}  // namespace log
}  // namespace host
