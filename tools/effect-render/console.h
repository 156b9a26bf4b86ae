#pragma once

#include <cstdarg>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

#include "tool_error.h"

namespace effect_render {

// What the user sees on standard error. Any thread may call; lines never mix, and a message moves
// the progress bar out of its way.

/// A line; a newline is added if it ends in none.
void PrintLine(std::string_view text);

/// Prints what ended the drawing, and gives the exit status that goes with it.
ExitStatus PrintError(const std::exception& error);

/// Shows how many of `total` frames are done, on a terminal only and only for several frames. The
/// last call leaves the bar and ends its line.
void ShowProgress(int64_t done, int64_t total);

/// Chooses what LogFromLibrary() shows: everything, or warnings and errors.
void ShowWholeLog(bool everything);

/// Receives the library's messages: its type is that of LogFunction.
void LogFromLibrary(int32_t level, const char* format, va_list args);

/// Errors that the library has logged so far.
int64_t CountLoggedErrors();

/// All that the library has logged since it last translated a program, one message per line.
std::string RecentLog();

/// Empties the above: for a drawing that has nothing to do with the one before.
void ForgetLog();

}  // namespace effect_render
