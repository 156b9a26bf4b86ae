// Any registry: its declarations, the buffer's size, and the upload into the shadow. The declared
// members, laid out by the documented table, need no gap and end where the values end.

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "DirectXEffectMgr/Source/core/param_layout.h"
#include "DirectXEffectMgr/Source/core/uniform_text.h"
#include "DirectXEffectMgr/Source/logging/logging.h"
#include "budget.h"
#include "random_registry.h"

namespace {

constexpr size_t kGuard = 64;  // bytes behind the shadow's size that stay as they are
constexpr uint8_t kUntouched = 0xA5;

struct Rule {
    const char* word;
    int64_t bytes, stride, alignment;
};
constexpr Rule kRules[] = {{"int", 4, 4, 4},     {"float", 4, 4, 4},   {"vec2", 8, 16, 16},
                           {"vec3", 12, 16, 16}, {"vec4", 16, 16, 16}, {"mat2", 16, 16, 16},
                           {"mat3", 36, 48, 16}, {"mat4", 64, 64, 16}};

// Goes behind one declared member; one that does not fit takes no bytes.
int64_t behind(const Rule& rule, int64_t count, int64_t offset) {
    const int64_t beyond = offset % rule.alignment;
    const int64_t begin = beyond == 0 ? offset : offset + rule.alignment - beyond;
    const int64_t end = begin + rule.stride * (count - 1) + rule.bytes;
    if (count < 1 || end > kMaxParamBytes) {
        return offset;
    }
    fuzz::require(beyond == 0, "fillers close every gap");
    return end;
}

// Reads "uniform TYPE NAME;" lines, arrays with "[COUNT]" behind the name.
int64_t end_of_declared(const std::string& text) {
    int64_t offset = 0;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string uniform;
        std::string type;
        words >> uniform >> type;
        const size_t bracket = line.find('[');
        const int64_t count =
            bracket == std::string::npos ? 1 : std::stoll(line.substr(bracket + 1));
        for (const Rule& rule : kRules) {
            if (uniform == "uniform" && type == rule.word) {
                offset = behind(rule, count, offset);
            }
        }
    }
    return offset;
}

void upload(const movit::Effect& registry, FuzzedDataProvider& choices, int32_t size) {
    std::vector<uint8_t> shadow(static_cast<size_t>(size), kUntouched);
    const int32_t pass = choices.ConsumeIntegralInRange<int32_t>(-1, 4);
    const int32_t instance = choices.ConsumeIntegralInRange<int32_t>(-2, 400);
    const PassLayout layout = fill_pass(registry, pass, shadow);
    fuzz::require(layout.instance_base >= 0 && layout.instance_base <= size,
                  "the values end in the buffer");
    fill_instance(registry, instance, pass, layout.instance_base, shadow);
    fill_instance(registry, instance, pass, choices.ConsumeIntegralInRange<int32_t>(0, size + 32),
                  shadow);
    // A buffer that was made for fewer parameters: what does not fit is left out.
    const size_t shorter = choices.ConsumeIntegralInRange<size_t>(0, shadow.size());
    std::vector<uint8_t> small(shorter);
    small.reserve(shorter + kGuard);
    fill_pass(registry, pass, small);
    fill_instance(registry, instance, pass, layout.instance_base, small);
    fuzz::require(small.size() == shorter, "a shadow keeps its size");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    set_log_callback(nullptr);
    FuzzedDataProvider choices(data, size);
    fuzz::RandomRegistry registry;
    registry.plain_names = choices.ConsumeBool();
    while (choices.remaining_bytes() > 0) {
        for (int i = choices.ConsumeIntegralInRange<int>(1, 12); i > 0; --i) {
            registry.step(choices);
        }
        const int32_t buffer_size = param_buffer_size(registry);
        fuzz::require(
            buffer_size >= 0 && buffer_size % 16 == 0 && buffer_size <= kMaxParamBytes + 16,
            "a buffer has a size that a device takes");
        std::string text;
        output_uniform_declarations(registry, text);
        if (registry.plain_names) {
            const int64_t end = end_of_declared(text);
            fuzz::require((end + 15) / 16 * 16 == buffer_size, "declarations and bytes agree");
        }
        std::string for_stage;
        registry.movit::Effect::output_uniform_declarations(for_stage, choices.ConsumeBool());
        if (buffer_size < (1 << 20) || choices.ConsumeIntegralInRange<int>(0, 20) == 20) {
            upload(registry, choices, buffer_size);
        }
    }
    return 0;
}
