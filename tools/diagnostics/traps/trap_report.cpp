#include "diagnostics/traps/trap_report.h"

#include "diagnostics/source_errors.h"
#include "diagnostics/words.h"

namespace diagnostics {

namespace {

constexpr size_t kNone = std::string_view::npos;

}  // namespace

void TrapReport::at_offset(Trap trap, size_t offset) {
    constexpr size_t kMostTries = 4 * kMostFindings;  // a place takes time
    if (findings_.size() == kMostFindings || ++tries_ > kMostTries) {
        return;
    }
    const auto location = reading_.locate(offset);
    if (!location || location->generated) {
        return;
    }
    Finding finding = finding_at(*location, Severity::kWarning);
    const TrapRow& row = trap_table()[static_cast<size_t>(trap)];
    finding.message = row.sentence;
    finding.trap = row.name;
    if (places_.insert(place_text(finding) + finding.trap).second) {
        findings_.push_back(std::move(finding));
    }
}

void TrapReport::at(Trap trap, const glsl::astNode& node) {
    at_offset(trap, reading_.offset_of(node));
}

// A variable's node is made behind its name, a parameter's at its first word.
void TrapReport::at_name(Trap trap, const glsl::astVariable& variable) {
    const size_t first = reading_.first_offset_of(variable);
    if (variable.variableType != glsl::VariableKind::parameter) {
        return at_offset(trap, name_in_front(variable.name, first));
    }
    const std::string_view text = reading_.text();
    const size_t end = text.find_first_of(",){", first);
    const size_t name = name_in_front(variable.name, end == kNone ? text.size() : end);
    at_offset(trap, name > first ? name : first);
}

void TrapReport::at_name(Trap trap, const glsl::astFunction& function) {
    at_offset(trap, name_in_front(function.name, reading_.offset_of(function)));
}

// Just behind the last word `name` in front of `offset`; `offset` itself if there is none.
size_t TrapReport::name_in_front(std::string_view name, size_t offset) const {
    const std::string_view text = std::string_view(reading_.text()).substr(0, offset);
    for (size_t at = name.empty() ? kNone : text.rfind(name); at != kNone;
         at = at == 0 ? kNone : text.rfind(name, at - 1)) {
        if (token_at(text, at) == name) {
            return at + name.size();
        }
    }
    return offset;
}

}  // namespace diagnostics
