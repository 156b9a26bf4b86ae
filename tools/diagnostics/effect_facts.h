#pragma once

/// An effect as far as its shader texts depend on it. Plain types only, so that a program that
/// loads the library by name can fill it in.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace diagnostics {

/// How often a parameter's value is given.
enum class ParamShape { kValue, kArray, kInstance };

/// A registered parameter.
struct Param {
    std::string type;  // "int", "float", "vec2" ... "mat4"; any other word is passed over
    std::string name;
    ParamShape shape = ParamShape::kValue;
    uint64_t count = 1;  // elements of an array; 1 otherwise
};

/// The sources of one stage. Paths are UTF-8.
struct StageFacts {
    std::string path;   // the file; empty: none. Includes are looked for beside it.
    std::string text;   // what is used in the file's place if it is not empty ...
    std::string named;  // ... and its name for messages
    std::vector<std::vector<std::string>> segments;  // by segment, the paths of its variants
    std::vector<int32_t> variants;                   // by segment, the variant in use
};

/// Everything that the translation of an effect depends on.
struct EffectFacts {
    StageFacts fragment;
    StageFacts vertex;
    bool base64 = false;  // files are base64 text
    std::vector<Param> params;
    std::vector<std::pair<std::string, std::string>> defines;
    int32_t inputs = 0;
    int32_t audio = 0;
};

}  // namespace diagnostics
