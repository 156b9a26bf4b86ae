// Any text as a shader of either stage: parsed, and printed if it parses. Twice, because a
// translation from scratch must give the same text again.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "DirectXEffectMgr/Source/logging/logging.h"
#include "glsl/hlsl/environment.h"
#include "glsl/hlsl/print_tu.h"
#include "glsl/parser.h"

namespace {

// The HLSL of one stage, or the parser's message.
std::string translated(const std::string& source, bool is_vertex) {
    glsl::parser parser(source.c_str(), "codeDX");
    const auto unit = parser.parse(is_vertex ? glsl::kShaderVertex : glsl::kShaderFragment);
    if (!unit) {
        const char* error = parser.error();
        return error == nullptr ? std::string() : std::string(error);
    }
    std::string hlsl;
    std::string varyings;
    glsl::printTU(*unit, 2, 1, is_vertex, hlsl, varyings,
                  std::make_shared<glsl::Environment>(nullptr), is_vertex);
    return hlsl;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    set_log_callback(nullptr);
    const bool is_vertex = size > 0 && (data[0] & 1) != 0;
    const std::string source(reinterpret_cast<const char*>(data), size);
    if (translated(source, is_vertex) != translated(source, is_vertex)) {
        std::abort();
    }
    return 0;
}
