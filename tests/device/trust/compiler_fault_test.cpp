// The HLSL compiler fails, in each way in which it can: the compile is refused with its message,
// nothing is left behind, and the same effect compiles once the compiler works again.

#include <windows.h>

#include <d3dcompiler.h>
#include <gtest/gtest.h>

#include "host/fake_host.h"
#include "start/import_patch.h"

namespace {

using host::Effect;
using host::FakeHost;
using host::Library;
using host::Lines;
using host::Mode;

constexpr char kCompilerFile[] = "d3dcompiler_47.dll";
constexpr char kGreen[] = "vec4 FUNCNAME(vec2 tc) { return vec4(0.0, 1.0, 0.0, 1.0); }\n";

/// How a call ends that is told to fail.
enum class Ending { kFails, kFailsWithText, kGivesNothing };

/// What stands in front of the compiler. The calls count from 1; those that are not told to fail go
/// on to it.
struct Fault {
    int strikes_at = 0;  // 0: none
    Ending ending = Ending::kFails;
    int calls = 0;

    bool strikes() { return ++calls == strikes_at; }
};
Fault fault;

template <class Function>
Function realFunction(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(kCompilerFile), name)));
}

HRESULT WINAPI compile(LPCVOID data, SIZE_T size, LPCSTR name, const D3D_SHADER_MACRO* defines,
                       ID3DInclude* include, LPCSTR entry, LPCSTR target, UINT flags,
                       UINT effect_flags, ID3DBlob** code, ID3DBlob** errors) {
    static const auto real = realFunction<decltype(&D3DCompile)>("D3DCompile");
    if (!fault.strikes()) {
        return real(data, size, name, defines, include, entry, target, flags, effect_flags, code,
                    errors);
    }
    switch (fault.ending) {
        case Ending::kFails:
            return E_OUTOFMEMORY;
        case Ending::kFailsWithText:
            return real("?", 1, name, defines, include, entry, target, flags, effect_flags, code,
                        errors);
        case Ending::kGivesNothing:
            break;
    }
    return S_OK;
}

HRESULT WINAPI reflect(LPCVOID data, SIZE_T size, REFIID id, void** made) {
    static const auto real = realFunction<decltype(&D3DReflect)>("D3DReflect");
    if (!fault.strikes()) {
        return real(data, size, id, made);
    }
    return fault.ending == Ending::kGivesNothing ? S_OK : E_OUTOFMEMORY;
}

class CompilerFaultTest : public FakeHost, public testing::WithParamInterface<Mode> {
protected:
    void SetUp() override {
        FakeHost::SetUp();
        fault = Fault();
        start(GetParam());
    }
    void expectDraws(const Effect& effect) {
        std::vector<uint8_t> buffer(67 * 41 * 4);
        DrawParams params;
        params.readback_buffer = buffer.data();
        host::log::clear();
        EXPECT_EQ(0, draw(effect, params)) << host::log::all();
        EXPECT_EQ(Lines(), host::log::errors());
    }
    void expectNothingLeft() {
        stop();
        start(Mode::inlined);  // replaces the pool of an inline engine that ended
        stop();
        EXPECT_EQ(Lines(), world.live());
    }
};

/// The message with which a compile is refused; the fragment stage is compiled first.
std::string messageOf(int call, Ending ending, const Lines& errors) {
    const std::string message =
        call == 1 ? "Failed to compile frag shader" : "Failed to compile vertex shader";
    const std::string last = errors.empty() ? std::string() : errors.back();
    const bool with_text = ending == Ending::kFailsWithText && last.find("X3000") != last.npos;
    return with_text ? message + ": " + last.substr(message.size() + 2) : message;
}

TEST_P(CompilerFaultTest, EachStageIsRefusedWithItsMessageAndCompilesLater) {
    start::ImportPatch patch(Library::get().module, kCompilerFile, "D3DCompile",
                             reinterpret_cast<void*>(&compile));
    ASSERT_TRUE(patch.active());
    for (const Ending ending : {Ending::kFails, Ending::kFailsWithText, Ending::kGivesNothing}) {
        for (const int call : {1, 2}) {
            const Effect effect = makeEffectOf(host::kPass);
            effect->AddFlatInput(8, 8, 32, false);
            effect->RegisterParamFloat(
                ("a" + std::to_string(static_cast<int>(ending) * 2 + call)).c_str(),
                1);  // no two share a program
            fault = {call, ending, 0};
            host::log::clear();
            EXPECT_NE(0, init(effect));
            EXPECT_EQ(call, fault.calls) << "what follows is not tried";
            const Lines errors = host::log::errors();
            EXPECT_EQ(Lines{messageOf(call, ending, errors)}, errors);
            EXPECT_NE(0, draw(effect)) << "there is nothing to draw with";
            fault = Fault();
            EXPECT_EQ(0, init(effect)) << host::log::all();
            EXPECT_EQ(2, fault.calls);
            expectDraws(effect);
        }
    }
    expectNothingLeft();
}

TEST_P(CompilerFaultTest, AnAddedProgramIsRefusedAndAddedLater) {
    start::ImportPatch patch(Library::get().module, kCompilerFile, "D3DCompile",
                             reinterpret_cast<void*>(&compile));
    ASSERT_TRUE(patch.active());
    {
        const Effect effect = readyEffect();
        int32_t number = 0;
        fault = {2, Ending::kFails, 0};
        effect->AddProgram(&number, kGreen, nullptr);
        EXPECT_EQ((Lines{"Failed to compile vertex shader"}), host::log::errors());
        expectDraws(effect);
        const int32_t refused = number;
        EXPECT_TRUE(effect->AddProgram(&number, kGreen, nullptr));
        EXPECT_EQ(refused, number) << "the same place";
        expectDraws(effect);
    }
    expectNothingLeft();
}

TEST_P(CompilerFaultTest, WithoutReflectionTheDrawGoesOnAndTheNextOneAsksAgain) {
    start::ImportPatch patch(Library::get().module, kCompilerFile, "D3DReflect",
                             reinterpret_cast<void*>(&reflect));
    ASSERT_TRUE(patch.active());
    for (const Ending ending : {Ending::kFails, Ending::kGivesNothing}) {
        const Effect effect = readyEffect();
        fault = {1, ending, 0};
        draw(effect);
        EXPECT_EQ(1, fault.calls);
        expectDraws(effect);
        EXPECT_EQ(2, fault.calls);
        expectDraws(effect);
        EXPECT_EQ(2, fault.calls) << "kept for good";
    }
    expectNothingLeft();
}

INSTANTIATE_TEST_SUITE_P(Modes, CompilerFaultTest, testing::Values(Mode::inlined, Mode::threaded),
                         host::modeParamName);

}  // namespace
