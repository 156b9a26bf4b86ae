// What the warnings say about the HLSL compiler is so: the real one refuses the sources that are
// said to be refused, and takes the others.

#include <d3dcompiler.h>
#include <gtest/gtest.h>
#include <wrl/client.h>

#include <string>

#include "DirectXEffectMgr/Source/core/program_source.h"
#include "DirectXEffectMgr/Source/logging/logging.h"
#include "diagnostics/declarations.h"
#include "trap_cases.h"

namespace diagnostics {
namespace {

constexpr const char* kPlainFragment = "vec4 FUNCNAME(vec2 tc) { return INPUT1(tc); }\n";

// The compiler's message; empty if it takes the text.
std::string refusal_of(const std::string& hlsl, const char* entry, const char* target) {
    Microsoft::WRL::ComPtr<ID3DBlob> code;
    Microsoft::WRL::ComPtr<ID3DBlob> errors;
    const HRESULT result = D3DCompile(hlsl.data(), hlsl.size(), nullptr, nullptr, nullptr, entry,
                                      target, 0, 0, code.GetAddressOf(), errors.GetAddressOf());
    if (result == S_OK) {
        return {};
    }
    return errors == nullptr ? "refused" : static_cast<const char*>(errors->GetBufferPointer());
}

std::string refusal_of(const TrapCase& row, const char* text) {
    set_log_callback(nullptr);
    const EffectFacts facts = facts_of_cases();
    const bool is_vertex = row.place == TrapPlace::kVertex;
    ProgramSources sources;
    sources.use_given = true;
    sources.fragment.given = is_vertex ? kPlainFragment : source_of(row, text);
    sources.vertex.given = is_vertex ? source_of(row, text) : "";
    ProgramText out;
    if (!TranslateProgram(sources, declarations(facts), facts.inputs, facts.audio, out)) {
        ADD_FAILURE() << "the parser refuses " << text;
        return {};
    }
    return refusal_of(out.vertex_hlsl, "mainVS", "vs_5_0") +
           refusal_of(out.fragment_hlsl, "mainPS", "ps_5_0");
}

class TrapCompileTest : public testing::TestWithParam<size_t> {
protected:
    static const TrapCase& row() {
        size_t count = 0;
        return trap_cases(count)[GetParam()];
    }
};

TEST_P(TrapCompileTest, TheTrapEndsAsTheWarningSays) {
    const std::string refusal = refusal_of(row(), row().trapped);
    EXPECT_EQ(refusal.empty(), row().fate == TrapFate::kDrawnOtherwise)
        << testing::PrintToString(row()) << "\n"
        << refusal;
}

TEST_P(TrapCompileTest, WhatComesNearIsTaken) {
    EXPECT_EQ(refusal_of(row(), row().sound), "") << testing::PrintToString(row());
}

size_t case_count() {
    size_t count = 0;
    trap_cases(count);
    return count;
}

INSTANTIATE_TEST_SUITE_P(All, TrapCompileTest, testing::Range(size_t{0}, case_count()));

}  // namespace
}  // namespace diagnostics
