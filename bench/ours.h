#pragma once

/// This library's translation, set up so that one call does what one compile does.

#include <memory>
#include <string>

#include "DirectXEffectMgr/Source/core/program_source.h"
#include "effect_source.h"

namespace movit {
class Effect;
}

namespace bench {

/// An effect ready to be translated, again and again.
class Subject {
public:
    explicit Subject(const EffectSource& effect);
    ~Subject();
    Subject(Subject&&) noexcept;
    Subject& operator=(Subject&&) = delete;

    /// Parses and prints the stages, from the assembled GLSL to the HLSL.
    bool translate(ProgramText& out) const;

    /// Everything before the HLSL compiler: declarations, assembly, parsing and printing.
    bool translate_from_source(ProgramText& out) const;

    /// What the parser said about the effect; empty if it took it.
    std::string failure() const;

    const AssembledProgram& assembled() const { return assembled_; }
    size_t assembled_bytes() const { return assembled_.fragment.size() + assembled_.vertex.size(); }

private:
    std::unique_ptr<movit::Effect> registry_;
    ProgramSources sources_;
    AssembledProgram assembled_;
    int32_t input_count_;
    int32_t audio_count_;
};

}  // namespace bench
