#pragma once

/// Sources that fall into each trap, and sources that come near and do not.

#include <cstddef>
#include <ostream>

#include "diagnostics/effect_facts.h"
#include "diagnostics/traps/trap_table.h"

namespace diagnostics {

/// What becomes of the source with the trap in it.
enum class TrapFate { kRefused, kDrawnOtherwise };

/// Where the sources of a case stand: as they are, in a body of FUNCNAME, or as a vertex source.
enum class TrapPlace { kFile, kBody, kVertex };

struct TrapCase {
    Trap trap;
    TrapFate fate;
    TrapPlace place;
    const char* trapped;  // a single warning, that of the trap
    const char* sound;    // none
};

/// All cases, at least one for each trap.
const TrapCase* trap_cases(size_t& count);

/// A case's source as a file of the effect: FUNCNAME is there. A vertex source is whole.
std::string source_of(const TrapCase& row, const char* text);

/// The effect that the cases belong to: two image inputs, one audio input, parameters `int n`,
/// `float k`, `vec4 q`, `mat2 m2`, `mat3 m3`, `mat4 m4`, `float[] w` and `vec4[] c`. The files are
/// left to the caller.
EffectFacts facts_of_cases();

inline void PrintTo(const TrapCase& row, std::ostream* out) {
    *out << trap_table()[static_cast<size_t>(row.trap)].name << ": " << row.trapped;
}

}  // namespace diagnostics
