#pragma once

/// The checks for traps, one function for each idea. All of them only look and report.

#include "diagnostics/traps/trap_report.h"

namespace diagnostics {

void check_ternaries(const TrapScene& scene);
void check_matrices(const TrapScene& scene);
void check_constructors(const TrapScene& scene);
void check_operators(const TrapScene& scene);
void check_numbers(const TrapScene& scene);
void check_calls(const TrapScene& scene);
void check_functions(const TrapScene& scene);
void check_locals(const TrapScene& scene);
void check_types(const TrapScene& scene);
void check_names(const TrapScene& scene);
void check_constants(const TrapScene& scene);
void check_globals(const TrapScene& scene);
void check_statements(const TrapScene& scene);
void check_parameters(const TrapScene& scene);
void check_directives(const TrapScene& scene);

}  // namespace diagnostics
