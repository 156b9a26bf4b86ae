#pragma once

/// The effects that are measured, and the complete shaders that stand for them on the other side.

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// One registered parameter of an effect.
struct Parameter {
    std::string type;  // as in an effect.json: "float", "vec3", "mat4", "float[]", "instance-vec4"
    std::string name;
    int count = 1;  // elements of an array or values of an instance parameter
};

/// An effect with everything that its translation reads, includes and segments already in the text.
struct EffectSource {
    std::string name;
    std::string fragment;
    std::string vertex;  // empty: the effect brings none
    std::vector<Parameter> parameters;
    std::vector<std::pair<std::string, std::string>> defines;
    int32_t input_count = 1;
    int32_t audio_count = 0;

    size_t bytes() const { return fragment.size() + vertex.size(); }
};

/// Effects of about one kilobyte, both stages of their own, put together from a stock of helper
/// functions. The same `count` always gives the same texts, and no two of them are alike.
std::vector<EffectSource> make_effects(int count);

/// One fragment stage of at least `bytes` bytes, of the same mix, with five macros. Another `seed`
/// gives another text.
EffectSource make_large_effect(size_t bytes, uint32_t seed = 0);

/// The sample effects below `folder`, each program of each effect as an entry of its own.
/// Chains have no text of their own and are left out.
std::vector<EffectSource> load_samples(const std::string& folder);

/// An effect as two complete shaders in desktop GLSL 3.30.
struct CompleteShaders {
    std::string fragment;
    std::string vertex;  // empty as in the effect
};

/// Wraps `effect` in what the library brings along: the three helper functions of the prelude, the
/// inputs as functions, the parameters as uniforms, and a main function that does what the
/// generated wrapper does.
CompleteShaders complete_shaders(const EffectSource& effect);

}  // namespace bench
