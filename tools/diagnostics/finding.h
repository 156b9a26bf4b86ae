#pragma once

/// What an author is told about a place of a shader, and how it is written down.

#include <cstddef>
#include <string>
#include <vector>

namespace diagnostics {

enum class Severity { kError, kWarning };

/// An error or a warning. All texts are the finding's own.
struct Finding {
    Severity severity = Severity::kError;
    std::string file;         // as it was opened; in angle brackets where it is no file
    size_t line = 0;          // from 1; 0 where only the file is known
    size_t column = 0;        // bytes, from 1
    std::string source_line;  // without its newline
    std::string message;
    std::string trap;  // name of the warning; empty for an error
};

/// "FILE:LINE:COLUMN", or "FILE" where no more is known.
std::string place_text(const Finding& finding);

/// "FILE:LINE:COLUMN: error: message", or with "warning" and " [trap]" behind the message; below it
/// the source line, and a caret under the column. Of a long line the part around the column is
/// shown. Lines end in "\n", the last one does not.
std::string full_text(const Finding& finding);

/// "error: FILE:LINE:COLUMN: message", a single line.
std::string error_line(const Finding& finding);

}  // namespace diagnostics
