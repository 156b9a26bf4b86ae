#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <string>
#include <vector>

#include "movit/effect.h"

namespace fuzz {

/// A registry whose parameters the fuzzer chooses: any of the tables, names of many kinds, pointers
/// that are null now and then, arrays of every count. What a pointer leads to is as long as its
/// count says and lives as long as the object.
class RandomRegistry : public movit::Effect {
public:
    std::string type_name() const override { return "fuzzed"; }

    /// No odd names and no defines: every line of the declarations has its known form.
    bool plain_names = false;

    /// Registers or sets one parameter, or adds a define.
    void step(FuzzedDataProvider& choices);

private:
    static constexpr uint64_t kMaxElements = 300;

    std::string name(FuzzedDataProvider& choices) const;
    float* values(FuzzedDataProvider& choices);
    ParamArray array(FuzzedDataProvider& choices);
    void registerValue(FuzzedDataProvider& choices, const std::string& name);
    void registerArray(FuzzedDataProvider& choices, const std::string& name);
    void setValue(FuzzedDataProvider& choices, const std::string& name);
    void setArray(FuzzedDataProvider& choices, const std::string& name);

    int32_t int_ = 7;
    std::vector<float> floats_ = std::vector<float>(4 * kMaxElements, 0.5f);
    std::vector<float> written_ = std::vector<float>(4 * kMaxElements, 0.25f);
};

}  // namespace fuzz
