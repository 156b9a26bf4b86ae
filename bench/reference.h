#pragma once

/// The other translator: glslang (desktop 3.30 to SPIR-V) and SPIRV-Cross (to HLSL, shader model
/// 5.0), used as their own tools use them.

#include <string>

#include "effect_source.h"

namespace bench {

/// Keeps glslang's process-wide tables for its life; one instance at a time.
class ReferenceTranslator {
public:
    ReferenceTranslator();
    ~ReferenceTranslator();
    ReferenceTranslator(const ReferenceTranslator&) = delete;
    ReferenceTranslator& operator=(const ReferenceTranslator&) = delete;

    /// Translates the stages that there are, linked as one program, and replaces `hlsl` by both
    /// texts, the vertex stage first.
    ///
    /// @returns false if a stage was refused; `error` then says why
    bool translate(const CompleteShaders& shaders, std::string& hlsl, std::string& error) const;
};

}  // namespace bench
