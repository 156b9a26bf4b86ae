#pragma once

#include <string_view>

/// Dumps a text at the information level, a call of the log per line, as "%4d:%s" with the numbers
/// counting from 1, so that a compiler's message can be matched with its line. The empty rest
/// behind a newline at the end is no line.
void log_numbered_lines(std::string_view text);
