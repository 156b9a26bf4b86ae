#include "DirectXEffectMgr/Source/core/param_layout.h"

#include <algorithm>
#include <cstring>

#include "DirectXEffectMgr/Source/core/param_copy.h"

namespace {

using movit::ParamType;

struct LayoutRule {
    int32_t bytes;      // of one element
    int32_t stride;     // from element to element
    int32_t alignment;  // of the first
};

// By ParamType. On purpose: elements of int and float arrays lie 4 bytes apart, and mat2 and mat3
// are 4 and 9 floats without gaps, other than shaders lay them out; hosts know these places.
constexpr LayoutRule kRules[] = {
    {4, 4, 4},     // int
    {4, 4, 4},     // float
    {8, 16, 16},   // vec2
    {12, 16, 16},  // vec3
    {16, 16, 16},  // vec4
    {16, 16, 16},  // mat2
    {36, 48, 16},  // mat3
    {64, 64, 16},  // mat4
};
static_assert(std::size(kRules) == std::size(movit::kParamTypeWords), "a rule for each type");

constexpr LayoutRule kUnknownRule = {0, 0, 4};

constexpr const LayoutRule& rule_of(ParamType type) {
    return kRules[static_cast<size_t>(type)];
}

// Bytes from the first element's begin to the last one's end.
constexpr int64_t run_bytes(const LayoutRule& rule, int64_t count) {
    return count < 1 ? 0 : rule.stride * (count - 1) + rule.bytes;
}

int32_t padded_by_rule(const LayoutRule& rule, int32_t count, int32_t offset, int32_t& padding) {
    padding = -offset & (rule.alignment - 1);  // alignments are powers of two
    const int64_t size = padding + run_bytes(rule, count);
    if (count < 1 || offset + size > kMaxParamBytes) {
        padding = 0;
        return 0;
    }
    return static_cast<int32_t>(size);
}

// Adds up what a registry takes.
struct SizeSum {
    int32_t offset = 0;

    template <class Passes>
    void value(ParamType type, const std::string& /*name*/, const Passes& /*passes*/) {
        add(type, 1);
    }
    void defines(const std::map<std::string, std::string>& /*table*/) {}
    void array(ParamType type, const std::string& /*name*/, const std::vector<ParamArray>& passes) {
        add(type, movit::array_count(passes));
    }
    void instance(ParamType type, const std::string& /*name*/,
                  const std::vector<ParamArray>& /*passes*/) {
        add(type, 1);
    }

private:
    void add(ParamType type, int32_t count) {
        int32_t padding = 0;
        offset += padded_by_rule(rule_of(type), count, offset, padding);
    }
};

// Steps through the layout and copies values to their places.
class ShadowWriter {
public:
    ShadowWriter(std::vector<uint8_t>& shadow, int32_t pass, int32_t instance,
                 const PassLayout& before)
        : shadow_(shadow), pass_(pass), instance_(instance), layout_(before) {}

    const PassLayout& layout() const { return layout_; }

    template <class Scalar>
    void value(ParamType type, const std::string& /*name*/, const std::vector<Scalar*>& passes) {
        uint8_t* const place = step(type, 1, 1);
        Scalar* const* const picked = movit::Effect::for_pass(passes, pass_);
        if (place == nullptr || picked == nullptr || *picked == nullptr) {
            return;
        }
        const int32_t order = matrix_order(type);
        if (order == 1) {
            copy_value(place, *picked, rule_of(type).bytes);
        } else {
            copy_transposed(place, *picked, order);
        }
    }

    void defines(const std::map<std::string, std::string>& /*table*/) {}

    void array(ParamType type, const std::string& /*name*/, const std::vector<ParamArray>& passes) {
        const ParamArray* const picked = movit::Effect::for_pass(passes, pass_);
        const int32_t laid_out = std::max(movit::array_count(passes), 0);
        // The first pass's count is the layout's; a pass that has fewer elements brings only those.
        const uint64_t own = picked == nullptr ? 0 : picked->count;
        const int32_t count =
            static_cast<int32_t>(std::min<uint64_t>(own, static_cast<uint64_t>(laid_out)));
        uint8_t* const place = step(type, laid_out, count);
        if (place != nullptr && picked->data != nullptr) {
            copy_elements(rule_of(type), place, picked->data, count);
        }
    }

    void instance(ParamType type, const std::string& /*name*/,
                  const std::vector<ParamArray>& passes) {
        uint8_t* const place = step(type, 1, 1);
        const ParamArray* const picked = movit::Effect::for_pass(passes, pass_);
        if (place == nullptr || picked == nullptr || picked->data == nullptr || instance_ < 0 ||
            static_cast<uint64_t>(instance_) >= picked->count) {
            return;
        }
        const size_t bytes = static_cast<size_t>(rule_of(type).bytes);
        const uint8_t* const elements = static_cast<const uint8_t*>(picked->data);
        copy_value(place, elements + static_cast<size_t>(instance_) * bytes, rule_of(type).bytes);
    }

private:
    // Goes behind a parameter of `count` elements. Returns its place, or null if the first `copied`
    // of them are none or are not all in the shadow.
    uint8_t* step(ParamType type, int32_t count, int32_t copied) {
        int32_t& end = layout_.instance_base;
        int32_t& padding = layout_.last_padding;
        const int32_t begin = end;
        layout_.last_padded_size = padded_by_rule(rule_of(type), count, begin, padding);
        end += layout_.last_padded_size;
        const int64_t place = begin + padding;
        const int64_t needed = run_bytes(rule_of(type), copied);
        const bool taken = layout_.last_padded_size > 0 && needed > 0;
        return taken && place + needed <= static_cast<int64_t>(shadow_.size())
                   ? shadow_.data() + place
                   : nullptr;
    }

    static void copy_elements(const LayoutRule& rule, uint8_t* place, const void* source,
                              int32_t count) {
        const uint8_t* elements = static_cast<const uint8_t*>(source);
        if (rule.bytes == rule.stride) {
            std::memcpy(place, elements, static_cast<size_t>(run_bytes(rule, count)));
            return;
        }
        for (int32_t i = 0; i < count; ++i, place += rule.stride, elements += rule.bytes) {
            std::memcpy(place, elements, static_cast<size_t>(rule.bytes));
        }
    }

    std::vector<uint8_t>& shadow_;
    const int32_t pass_;
    const int32_t instance_;
    PassLayout layout_;  // instance_base: the end so far
};

}  // namespace

int32_t matrix_order(ParamType type) {
    switch (type) {
        case ParamType::kMat2:
            return 2;
        case ParamType::kMat3:
            return 3;
        case ParamType::kMat4:
            return 4;
        case ParamType::kInt:
        case ParamType::kFloat:
        case ParamType::kVec2:
        case ParamType::kVec3:
        case ParamType::kVec4:
            break;
    }
    return 1;
}

int32_t padded_size(std::string_view type, int32_t count, int32_t offset, int32_t& padding) {
    const auto word =
        std::find(std::begin(movit::kParamTypeWords), std::end(movit::kParamTypeWords), type);
    const bool known = word != std::end(movit::kParamTypeWords);
    const LayoutRule& rule =
        known ? kRules[word - std::begin(movit::kParamTypeWords)] : kUnknownRule;
    return padded_by_rule(rule, count, offset, padding);
}

int32_t padded_size(ParamType type, int32_t count, int32_t offset, int32_t& padding) {
    return padded_by_rule(rule_of(type), count, offset, padding);
}

int32_t param_buffer_size(const movit::Effect& registry) {
    SizeSum sum;
    movit::walk_parameters(registry, sum);
    movit::walk_instance_parameters(registry, sum);
    return (sum.offset + 15) / 16 * 16;
}

PassLayout fill_pass(const movit::Effect& registry, int32_t pass, std::vector<uint8_t>& shadow) {
    ShadowWriter writer(shadow, pass, 0, {});
    movit::walk_parameters(registry, writer);
    return writer.layout();
}

PassLayout fill_arrays(const movit::Effect& registry, int32_t pass, const PassLayout& after_values,
                       std::vector<uint8_t>& shadow) {
    ShadowWriter writer(shadow, pass, 0, after_values);
    movit::walk_arrays(registry, writer);
    return writer.layout();
}

void fill_instance(const movit::Effect& registry, int32_t instance, int32_t pass,
                   int32_t instance_base, std::vector<uint8_t>& shadow) {
    PassLayout before;
    before.instance_base = instance_base;
    ShadowWriter writer(shadow, pass, instance, before);
    movit::walk_instance_parameters(registry, writer);
}
