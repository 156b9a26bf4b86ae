#include "diagnostics/traps/stage_warnings.h"

#include <algorithm>
#include <tuple>

#include "diagnostics/traps/checks.h"

namespace diagnostics {

namespace {

using Check = void (*)(const TrapScene& scene);

constexpr Check kChecks[] = {
    check_directives, check_globals,      check_constants,  check_names,     check_types,
    check_functions,  check_locals,       check_statements, check_ternaries, check_matrices,
    check_operators,  check_constructors, check_numbers,    check_calls,     check_parameters,
};

}  // namespace

std::vector<Finding> stage_warnings(const StageReading& reading, const EffectFacts& facts,
                                    bool has_vertex) {
    if (reading.unit() == nullptr) {
        return {};
    }
    const bool is_vertex = reading.stage() == ShaderStage::kVertex;
    const ExpressionTypes types(*reading.unit(), is_vertex);
    TrapReport report(reading);
    const TrapScene scene{*reading.unit(), reading, types, facts, is_vertex, has_vertex, report};
    for (const Check check : kChecks) {
        check(scene);
    }
    std::vector<Finding> findings = report.take();
    std::stable_sort(findings.begin(), findings.end(), [](const Finding& a, const Finding& b) {
        return std::tie(a.file, a.line, a.column) < std::tie(b.file, b.line, b.column);
    });
    return findings;
}

std::vector<Finding> program_warnings(const AssembledProgram& program, const ProgramMaps& maps,
                                      const EffectFacts& facts) {
    std::vector<Finding> findings;
    if (program.has_vertex) {
        const StageReading vertex(ShaderStage::kVertex, program.vertex, maps.vertex);
        findings = stage_warnings(vertex, facts, true);
    }
    const StageReading fragment(ShaderStage::kFragment, program.fragment, maps.fragment);
    for (Finding& finding : stage_warnings(fragment, facts, program.has_vertex)) {
        findings.push_back(std::move(finding));
    }
    return findings;
}

}  // namespace diagnostics
