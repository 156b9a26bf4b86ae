// Any text as a stage that is printed inside scopes that somebody else filled: the same text with
// and without line marks, whatever the scopes hold.

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "DirectXEffectMgr/Source/logging/logging.h"
#include "budget.h"
#include "glsl/hlsl/environment.h"
#include "glsl/hlsl/print_tu.h"
#include "glsl/parser.h"

namespace {

using glsl::Environment;
using glsl::Object;
using Handle = std::shared_ptr<Object>;
using ClassTest = bool (*)(const Handle&);

constexpr size_t kChoices = 96;  // bytes at the end of an input

constexpr const char* kNames[] = {"a",
                                  "b",
                                  "tc",
                                  "f",
                                  "gl_Position",
                                  "HAVE_FUNC_f0",
                                  "f0_RETURN_TYPE",
                                  "f_RETURN_TYPE",
                                  "MyConstantBuffer_a",
                                  "VertexOutput_q",
                                  "env__________isTopForLevel",
                                  "env__________isDidMatArraySubScriptObject"};

constexpr ClassTest kTests[] = {
    glsl::isBoolean, glsl::isDouble, glsl::isFloat,        glsl::isInteger, glsl::isMat2,
    glsl::isMat3,    glsl::isMat4,   glsl::isString,       glsl::isUchar,   glsl::isVec2,
    glsl::isVec3,    glsl::isVec4,   glsl::isStructObject, glsl::isiVec2,   glsl::isiVec3,
    glsl::isiVec4,   glsl::isVoidPtr};

Handle object(FuzzedDataProvider& bytes) {
    switch (bytes.ConsumeIntegralInRange<int>(0, 19)) {
        case 0:
            return glsl::makeObject(0);
        case 1:
            return glsl::makeInteger(1);
        case 2:
            return glsl::makeBoolean(bytes.ConsumeBool());
        case 3:
            return glsl::makeFloat(1);
        case 4:
            return glsl::makeDouble(1);
        case 5:
            return glsl::makeUchar(1);
        case 6:
            return glsl::makeVec2({});
        case 7:
            return glsl::makeVec3({});
        case 8:
            return glsl::makeVec4({});
        case 9:
            return glsl::makeiVec2({});
        case 10:
            return glsl::makeiVec3({});
        case 11:
            return glsl::makeiVec4({});
        case 12:
            return glsl::makeMat2({});
        case 13:
            return glsl::makeMat3({});
        case 14:
            return glsl::makeMat4({});
        case 15:
            return glsl::makeString("abc");
        case 16:
            return glsl::makeStructObject({});
        case 17:
            return std::make_shared<glsl::ReturnValue>(nullptr);
        case 18:
            return std::make_shared<glsl::BreakValue>();
        default:
            return nullptr;
    }
}

std::string name(FuzzedDataProvider& bytes) {
    return kNames[bytes.ConsumeIntegralInRange<size_t>(0, std::size(kNames) - 1)];
}

// A copy is of the same class; what is of no class answers none of the tests.
void check_object(const Handle& made) {
    const auto is = [&made](ClassTest test) { return test(made); };
    const auto classes = std::count_if(std::begin(kTests), std::end(kTests), is);
    fuzz::require(classes <= 1, "an object is of one class");
    if (made != nullptr) {
        const Handle copy = made->copy(made);
        for (const ClassTest test : kTests) {
            fuzz::require(test(copy) == test(made), "a copy is of its class");
        }
        fuzz::require(made->isContainer() == 0 && made->size() > 0, "every object has a size");
    }
}

// Scopes in one another, in which entries were defined, written and removed.
std::shared_ptr<Environment> scopes(FuzzedDataProvider& bytes) {
    auto scope = std::make_shared<Environment>();
    for (int i = bytes.ConsumeIntegralInRange<int>(0, 12); i > 0; --i) {
        const std::string key = name(bytes);
        const Handle made = object(bytes);
        check_object(made);
        switch (bytes.ConsumeIntegralInRange<int>(0, 4)) {
            case 0:
                scope = std::make_shared<Environment>(scope);
                break;
            case 1:
                scope->remove(key);
                break;
            case 2:
                scope->set(key, made);
                fuzz::require(scope->get(key) == made, "what was written is read");
                break;
            default:
                scope->define(key, made);
                fuzz::require(scope->has(key) && scope->get(key) == made && !scope->empty(),
                              "what was defined is there");
        }
    }
    return scope;
}

// The HLSL of both stages, the text as each; the empty string where the parser refuses it.
std::string printed(const std::string& text, std::string_view choices, bool marked) {
    static constexpr uint32_t kStages[] = {glsl::kShaderFragment, glsl::kShaderFragment, 2, 3};
    FuzzedDataProvider bytes(reinterpret_cast<const uint8_t*>(choices.data()), choices.size());
    const uint32_t inputs = bytes.ConsumeIntegralInRange<uint32_t>(0, 4);
    const bool own_vertex = bytes.ConsumeBool();
    const uint32_t other = kStages[bytes.ConsumeIntegralInRange<size_t>(0, 3)];
    const std::shared_ptr<Environment> scope =
        bytes.ConsumeIntegralInRange<int>(0, 3) != 0 ? scopes(bytes) : nullptr;
    std::string hlsl;
    std::string varyings;
    for (const bool is_vertex : {true, false}) {
        glsl::parser parser(text.c_str(), "codeDX");
        const auto unit = parser.parse(is_vertex ? glsl::kShaderVertex : other);
        if (!unit) {
            continue;
        }
        std::vector<glsl::LineMark> marks;
        glsl::printTU(*unit, inputs, 1, own_vertex, hlsl, varyings, scope, is_vertex,
                      marked ? &marks : nullptr);
        size_t last = 0;
        for (const glsl::LineMark& mark : marks) {
            fuzz::require(mark.offset >= last && mark.offset <= hlsl.size(), "marks are in order");
            last = mark.offset;
        }
    }
    return hlsl + varyings;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    set_log_callback(nullptr);
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::string_view choices = std::string_view(text).substr(size - std::min(size, kChoices));
    std::string plain;
    {
        const fuzz::Budget budget(size);
        plain = printed(text, choices, false);
    }
    fuzz::require(plain == printed(text, choices, true), "line marks change no text");
    return 0;
}
