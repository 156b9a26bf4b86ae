#pragma once

/// What a check for traps looks at, and where it tells what it found.

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/effect_facts.h"
#include "diagnostics/finding.h"
#include "diagnostics/stage_reading.h"
#include "diagnostics/traps/expression_types.h"
#include "diagnostics/traps/trap_table.h"

namespace diagnostics {

/// Collects the warnings of one stage. A place in text that no author wrote is passed over, as is a
/// warning that was given for the same place already.
class TrapReport {
public:
    /// Warnings of one stage beyond this number are dropped.
    static constexpr size_t kMostFindings = 50;

    explicit TrapReport(const StageReading& reading) : reading_(reading) {}

    /// At the token in front of `offset` of the reading's text.
    void at_offset(Trap trap, size_t offset);
    /// At a node's own position.
    void at(Trap trap, const glsl::astNode& node);
    /// At the name of a variable or of a function.
    void at_name(Trap trap, const glsl::astVariable& variable);
    void at_name(Trap trap, const glsl::astFunction& function);

    std::vector<Finding> take() { return std::move(findings_); }

private:
    size_t name_in_front(std::string_view name, size_t offset) const;

    const StageReading& reading_;
    std::vector<Finding> findings_;
    std::set<std::string> places_;
    size_t tries_ = 0;
};

/// A parsed stage, as a check sees it. What is referred to outlives the check.
struct TrapScene {
    const glsl::astTU& unit;
    const StageReading& reading;
    const ExpressionTypes& types;
    const EffectFacts& facts;
    bool is_vertex;
    bool has_vertex;  // the effect brings a vertex source
    TrapReport& report;
};

}  // namespace diagnostics
