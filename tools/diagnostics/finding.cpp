#include "diagnostics/finding.h"

#include <algorithm>
#include <string_view>

namespace diagnostics {

namespace {

constexpr std::string_view kIndent = "    ";
constexpr size_t kShownBytes = 160;  // of a source line

bool continues_character(char c) {
    return (static_cast<unsigned char>(c) & 0xC0u) == 0x80u;
}

// Nothing that moves a terminal's cursor.
char shown(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return c == '\t' || (byte >= 32 && byte != 127) ? c : ' ';
}

// The line and the caret below it. A tab stands above a tab, so both are as wide.
std::string snippet(const Finding& finding) {
    const std::string& line = finding.source_line;
    const size_t caret = std::min(finding.column - 1, line.size());
    size_t first =
        caret > kShownBytes / 2 && line.size() > kShownBytes ? caret - kShownBytes / 2 : 0;
    while (first > 0 && continues_character(line[first])) {
        --first;
    }
    size_t last = std::min(line.size(), first + kShownBytes);
    while (last < line.size() && continues_character(line[last])) {
        ++last;
    }
    std::string text(kIndent);
    std::string below(kIndent);
    for (size_t i = first; i < last; ++i) {
        text += shown(line[i]);
        if (i < caret && !continues_character(line[i])) {
            below += line[i] == '\t' ? '\t' : ' ';
        }
    }
    return text + '\n' + below + '^';
}

}  // namespace

std::string place_text(const Finding& finding) {
    if (finding.line == 0) {
        return finding.file;
    }
    return finding.file + ':' + std::to_string(finding.line) + ':' + std::to_string(finding.column);
}

std::string full_text(const Finding& finding) {
    std::string text = place_text(finding);
    text += finding.severity == Severity::kError ? ": error: " : ": warning: ";
    text += finding.message;
    if (!finding.trap.empty()) {
        text += " [" + finding.trap + "]";
    }
    if (finding.line != 0) {
        text += '\n' + snippet(finding);
    }
    return text;
}

std::string error_line(const Finding& finding) {
    return "error: " + place_text(finding) + ": " + finding.message;
}

}  // namespace diagnostics
