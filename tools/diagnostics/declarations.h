#pragma once

/// The text that an effect's parameters put in front of its sources.

#include <string>

#include "diagnostics/effect_facts.h"

namespace diagnostics {

/// The declarations of all parameters and definitions, those that every effect has among them, as
/// the library makes them.
std::string declarations(const EffectFacts& facts);

}  // namespace diagnostics
