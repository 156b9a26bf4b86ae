#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "DirectXEffectMgr/Source/core/param_layout.h"

/// The places of a registry's plain values, worked out once: what a pass copies in each frame is
/// then a walk over a row, not over eight tables.
///
/// Holds addresses of the registry's entries, which stay where they are and are never taken away,
/// so it must not outlive the registry, and serves only one. Not thread-safe.
class ParamPlan {
public:
    /// Works the places out anew if names were added since the last time; only then it allocates.
    void refresh(const movit::Effect& registry);

    /// As fill_pass(), after a refresh().
    PassLayout fill(const movit::Effect& registry, int32_t pass, std::vector<uint8_t>& shadow);

private:
    struct Builder;

    template <class Scalar>
    struct Value {
        const std::vector<Scalar*>* passes;  // the registry's entry
        size_t place;                        // in bytes
        int32_t bytes;
        int32_t order;  // rows of a matrix; 1 for all else
    };

    template <class Scalar>
    static void copy(const std::vector<Value<Scalar>>& values, int32_t pass,
                     std::vector<uint8_t>& shadow);

    std::vector<Value<int32_t>> ints_;
    std::vector<Value<float>> floats_;
    PassLayout after_values_;
    bool has_arrays_ = false;
    size_t names_ = SIZE_MAX;  // of how many names this is the plan; at first of none that can be
};
