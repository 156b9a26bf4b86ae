#include "diagnostics/compiler_log.h"

#include <charconv>
#include <optional>

namespace diagnostics {

namespace {

constexpr std::string_view kVertexMark = "Failed to compile vertex shader";
constexpr std::string_view kFragmentMark = "Failed to compile frag shader";
constexpr std::string_view kErrorMark = "): error ";
constexpr size_t kNone = std::string_view::npos;

// Reads a number at the beginning of `text` and takes it away.
std::optional<size_t> take_number(std::string_view& text) {
    size_t number = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc()) {
        return std::nullopt;
    }
    text.remove_prefix(static_cast<size_t>(result.ptr - text.data()));
    return number;
}

bool take(std::string_view& text, char c) {
    const bool found = !text.empty() && text.front() == c;
    text.remove_prefix(found ? 1 : 0);
    return found;
}

// A line with an error in it: the numbers stand in the last parentheses in front of the mark.
std::optional<CompilerMessage> message_of(std::string_view line) {
    const size_t mark = line.find(kErrorMark);
    const size_t open = mark == kNone ? kNone : line.rfind('(', mark);
    if (open == kNone) {
        return std::nullopt;
    }
    std::string_view place = line.substr(open + 1, mark - open - 1);
    const std::optional<size_t> number = take_number(place);
    if (!number || *number == 0) {
        return std::nullopt;
    }
    CompilerMessage message;
    message.line = *number;
    message.column = take(place, ',') ? take_number(place).value_or(0) : 0;
    const std::string_view rest = line.substr(mark + kErrorMark.size());
    const size_t colon = rest.find(": ");
    message.code = rest.substr(0, colon == kNone ? 0 : colon);
    message.text = rest.substr(colon == kNone ? 0 : colon + 2);
    return message;
}

// "%4d:%s": a line of a dump.
void note_dump(std::string_view line, std::map<size_t, std::string>& dump) {
    std::string_view rest = line;
    while (take(rest, ' ')) {
    }
    const std::optional<size_t> number = take_number(rest);
    if (!number || !take(rest, ':')) {
        return;
    }
    if (*number == 1) {
        dump.clear();  // a further text
    }
    dump[*number] = rest;
}

}  // namespace

CompilerLog read_compiler_log(std::string_view log) {
    CompilerLog result;
    ShaderStage stage = ShaderStage::kFragment;
    while (!log.empty()) {
        const size_t newline = log.find('\n');
        std::string_view line = log.substr(0, newline);
        log.remove_prefix(newline == kNone ? log.size() : newline + 1);
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        if (line.find(kVertexMark) != kNone) {
            stage = ShaderStage::kVertex;
        } else if (line.find(kFragmentMark) != kNone) {
            stage = ShaderStage::kFragment;
        }
        if (std::optional<CompilerMessage> message = message_of(line)) {
            message->stage = stage;
            result.errors.push_back(std::move(*message));
        } else {
            note_dump(line, result.dump);
        }
    }
    return result;
}

}  // namespace diagnostics
