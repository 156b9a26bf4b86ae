#include "diagnostics/traps/checks.h"
#include "diagnostics/words.h"

// Directives that go to the HLSL compiler as they stand, and conditions that are not worked out.

namespace diagnostics {

namespace {

constexpr std::string_view kIf = "#if";
constexpr size_t kNone = std::string_view::npos;

std::string_view without_blanks(std::string_view text) {
    const size_t first = text.find_first_not_of(" \t\r");
    if (first == kNone) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// A name alone, or a name, a comparison and one word; a comment behind it does not count.
bool is_worked_out(std::string_view condition) {
    condition = without_blanks(condition.substr(0, condition.find("//")));
    const bool begins_name = !condition.empty() && is_word(condition.front()) &&
                             (condition.front() < '0' || condition.front() > '9');
    if (!begins_name) {
        return false;
    }
    std::string_view rest = without_blanks(condition.substr(token_at(condition, 0).size()));
    if (rest.empty()) {
        return token_at(condition, 0) != "defined";
    }
    if (rest.substr(0, 2) != "==" && rest.substr(0, 2) != "!=") {
        return false;
    }
    rest = without_blanks(rest.substr(2));
    return !rest.empty() && token_at(rest, 0).size() == rest.size();
}

}  // namespace

void check_directives(const TrapScene& scene) {
    if (scene.unit.versionDirective != nullptr) {
        scene.report.at(Trap::kVersion, *scene.unit.versionDirective);
    }
    for (const auto& extension : scene.unit.extensionDirectives) {
        if (extension != nullptr) {
            scene.report.at(Trap::kExtension, *extension);
        }
    }
    const std::string_view text = scene.reading.text();
    for (size_t at = text.find(kIf); at != kNone; at = text.find(kIf, at + 1)) {
        const size_t begin = at + kIf.size();
        const bool is_if = begin < text.size() && !is_word(text[begin]);
        const size_t line = at == 0 ? kNone : text.rfind('\n', at - 1);
        const std::string_view before =
            text.substr(line == kNone ? 0 : line + 1, at - (line == kNone ? 0 : line + 1));
        if (is_if && without_blanks(before).empty() &&
            !is_worked_out(text.substr(begin, text.find('\n', begin) - begin))) {
            scene.report.at_offset(Trap::kIfDirective, begin);
        }
    }
}

}  // namespace diagnostics
