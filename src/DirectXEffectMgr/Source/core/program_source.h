#pragma once

/// From an effect's sources to the two HLSL texts that the compiler gets; no device is needed.
///
/// Everything here runs on the caller's thread, with no lock, within a stack of 1 MiB.

#include <cstdint>
#include <string>
#include <vector>

#include "DirectXEffectMgr/Source/core/source_assembly.h"

/// Stages as the parser numbers them.
enum class ShaderStage : uint32_t { kVertex = 1, kFragment = 5 };

/// The sources of one stage.
struct StageSources {
    std::string path;   // UTF-8; also names the folder for includes if a text is used instead
    std::string text;   // source set by the host in place of the file
    std::string given;  // source of an additional program
    std::vector<std::vector<std::string>> segments;  // by segment, the paths of its variants
    std::vector<int32_t> segment_indices;            // by segment, the variant in use
};

/// Everything that a compile reads.
///
/// Without `use_given` the texts count only if the fragment text is not empty: then both are used,
/// and an empty vertex text means the fixed vertex shader, whatever the path says. With it, each
/// stage takes its given text or, where that is empty, its file.
struct ProgramSources {
    StageSources fragment;
    StageSources vertex;
    bool use_given = false;
    bool base64 = false;                // files are base64 text; texts never are
    FileSource* files = &disk_files();  // never null
};

/// The GLSL of both stages as the parser gets it.
struct AssembledProgram {
    std::string fragment;
    std::string vertex;
    bool has_vertex = false;  // false: the fixed vertex shader is used and `vertex` is empty
};

/// Source maps of both stages.
struct ProgramMaps {
    SourceMap fragment;
    SourceMap vertex;
};

/// The HLSL of both stages as the compiler gets it.
struct ProgramText {
    std::string vertex_hlsl;
    std::string fragment_hlsl;
};

/// What the parser said about a stage that it refused.
struct ParseFailure {
    ShaderStage stage = ShaderStage::kFragment;
    std::string text;    // lines "codeDX:LINE:COLUMN:error:MESSAGE\r\n"; may be empty
    std::string source;  // the assembled text as the parser had rewritten it by then
    size_t offset = 0;   // where it stopped, in `source`; just behind a token
};

/// Picks, reads, expands and joins the sources. Files that cannot be read count as empty.
///
/// @param uniforms  declarations of the effect's parameters, PREFIX(...) not yet expanded
/// @param maps      if not null, receives where the texts came from
/// @returns false if a segment index is out of range or a limit on includes was passed, which is
///          logged
[[nodiscard]] bool AssembleProgram(const ProgramSources& sources, const std::string& uniforms,
                                   AssembledProgram& out, ProgramMaps* maps = nullptr);

/// Parses and prints both stages, the vertex stage first. A refused source is logged, as a numbered
/// dump and the parser's text.
///
/// @param failure  if not null, receives the parser's text of the stage that was refused
/// @returns false if a stage was refused; `out` is then unchanged
[[nodiscard]] bool TranslateAssembled(const AssembledProgram& assembled, int32_t input_count,
                                      int32_t audio_count, ProgramText& out,
                                      ParseFailure* failure = nullptr);

/// Both steps.
[[nodiscard]] bool TranslateProgram(const ProgramSources& sources, const std::string& uniforms,
                                    int32_t input_count, int32_t audio_count, ProgramText& out);
