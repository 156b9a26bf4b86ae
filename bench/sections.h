#pragma once

/// The measurements, one function for each table.

#include <vector>

#include "effect_source.h"
#include "report.h"

namespace bench {

/// How much is measured.
struct Scale {
    int rounds = 21;           // timed runs of each thing
    bool with_largest = true;  // the source of a megabyte too
};

/// An effect that both sides take.
struct Pair {
    EffectSource effect;
    CompleteShaders complete;
};

/// Times of each translator over `pairs`, and how they stand to one another.
///
/// @param each  true: a row for each effect; false: one for the median and one for the slowest
Section measure_translation(const std::string& title, const std::vector<Pair>& pairs,
                            const Scale& scale, bool each);

/// Allocations and peak heap of one translation of each of `pairs`.
Section measure_memory(const std::string& title, const std::vector<Pair>& pairs);

/// Time per byte over sources of growing size.
Section measure_growth(const Scale& scale);

/// Time per byte over 1 to 64 nested calls and constructors.
Section measure_nesting(const Scale& scale);

/// Time over 1 to 200 macros above a source of 10 KB, beside a search for a byte in the same text.
Section measure_macros(const Scale& scale);

}  // namespace bench
