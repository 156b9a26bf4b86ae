#include "diagnostics/second_look.h"

#include <set>
#include <string>

#include "DirectXEffectMgr/Source/core/program_source.h"
#include "DirectXEffectMgr/Source/logging/logging.h"
#include "diagnostics/compiler_errors.h"
#include "diagnostics/declarations.h"
#include "diagnostics/source_errors.h"
#include "diagnostics/traps/stage_warnings.h"

namespace diagnostics {

namespace {

// A program as it goes to the parser, with its maps.
struct Assembly {
    AssembledProgram program;
    ProgramMaps maps;
    bool complete = false;
};

StageSources sources_of(const StageFacts& facts) {
    StageSources sources;
    sources.path = facts.path;
    sources.given = facts.text;
    sources.segments = facts.segments;
    sources.segment_indices = facts.variants;
    return sources;
}

// Where a text stood in for a file, the map knows no name.
void name_texts(const StageFacts& facts, SourceMap& map) {
    for (SourceFile& file : map.files) {
        if (!facts.text.empty() && file.name == "<text>") {
            file.name = facts.named;
        }
    }
}

Assembly assemble(const EffectFacts& facts) {
    ProgramSources sources;
    sources.fragment = sources_of(facts.fragment);
    sources.vertex = sources_of(facts.vertex);
    sources.use_given = true;
    sources.base64 = facts.base64;
    Assembly assembly;
    assembly.complete =
        AssembleProgram(sources, declarations(facts), assembly.program, &assembly.maps);
    name_texts(facts.fragment, assembly.maps.fragment);
    name_texts(facts.vertex, assembly.maps.vertex);
    return assembly;
}

// What is wrong before the HLSL compiler has its turn.
std::vector<Finding> errors_of_ours(const EffectFacts& facts, const Assembly& assembly) {
    std::vector<Finding> findings = file_errors(assembly.maps);
    if (!assembly.complete || !findings.empty()) {
        return findings;
    }
    ProgramText text;
    ParseFailure failure;
    if (!TranslateAssembled(assembly.program, facts.inputs, facts.audio, text, &failure)) {
        const bool is_vertex = failure.stage == ShaderStage::kVertex;
        findings.push_back(parser_error(failure, assembly.program, assembly.maps,
                                        (is_vertex ? facts.vertex : facts.fragment).path));
    }
    return findings;
}

}  // namespace

std::vector<Finding> find_warnings(const std::vector<EffectFacts>& programs) {
    set_log_callback(nullptr);
    std::vector<Finding> findings;
    std::set<std::string> seen;
    for (const EffectFacts& facts : programs) {
        const Assembly assembly = assemble(facts);
        if (!assembly.complete) {
            continue;
        }
        for (Finding& finding : program_warnings(assembly.program, assembly.maps, facts)) {
            if (seen.insert(place_text(finding) + finding.trap).second) {
                findings.push_back(std::move(finding));
            }
        }
    }
    return findings;
}

std::vector<Finding> explain_failure(const std::vector<EffectFacts>& programs,
                                     std::string_view log) {
    set_log_callback(nullptr);
    const CompilerLog compiler = read_compiler_log(log);
    std::vector<Finding> findings;
    for (const EffectFacts& facts : programs) {
        const Assembly assembly = assemble(facts);
        findings = errors_of_ours(facts, assembly);
        if (findings.empty() && !compiler.errors.empty()) {
            findings = compiler_errors(assembly.program, assembly.maps, facts.inputs, facts.audio,
                                       compiler);
        }
        if (!findings.empty()) {
            break;
        }
    }
    return findings;
}

}  // namespace diagnostics
