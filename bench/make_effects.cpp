#include <array>
#include <cstdio>
#include <iterator>
#include <string_view>

#include "effect_source.h"
#include "snippets.h"

namespace bench {
namespace {

// A small generator of its own, so that the texts are the same with every standard library.
class Dice {
public:
    explicit Dice(uint32_t seed) : state_(seed * 2654435761u + 1u) {}

    uint32_t below(uint32_t limit) {
        state_ = state_ * 1664525u + 1013904223u;
        return (state_ >> 8) % limit;
    }

private:
    uint32_t state_;
};

// Appends `text` with its `@` and `$` filled in.
void append_filled(std::string& out, std::string_view text, Dice& dice, size_t number) {
    for (const char c : text) {
        if (c == '@') {
            std::array<char, 16> digits = {};
            std::snprintf(digits.data(), digits.size(), "%u.%03u", dice.below(4),
                          1u + dice.below(998));
            out += digits.data();
        } else if (c == '$') {
            out += std::to_string(number);
        } else {
            out += c;
        }
    }
}

std::vector<Parameter> usual_parameters() {
    return {{"float", "progress", 1}, {"float", "amount", 1}, {"vec3", "tint", 1}};
}

constexpr size_t kSnippetCount = std::size(kSnippets);

// A fragment source with the snippets first, first + stride, ... until it has `bytes` bytes.
std::string make_fragment(size_t bytes, size_t first, size_t stride, Dice& dice) {
    std::string functions = kFragmentHead;
    std::string statements = kFragmentEntry;
    for (size_t i = 0; functions.size() + statements.size() < bytes; ++i) {
        const Snippet& snippet = kSnippets[(first + i * stride) % kSnippetCount];
        append_filled(functions, snippet.function, dice, i);
        append_filled(statements, snippet.statements, dice, i);
    }
    return functions + "\n" + statements + kFragmentEnd;
}

}  // namespace

std::vector<EffectSource> make_effects(int count) {
    constexpr size_t kStrides[] = {1, 3, 7, 9};  // without a common divisor with the stock
    std::vector<EffectSource> effects;
    for (int i = 0; i < count; ++i) {
        Dice dice(static_cast<uint32_t>(i));
        EffectSource effect;
        effect.name = "made-" + std::to_string(i);
        effect.fragment = make_fragment(800, static_cast<size_t>(i),
                                        kStrides[static_cast<size_t>(i) / kSnippetCount % 4], dice);
        append_filled(effect.vertex, kVertexText, dice, 0);
        effect.parameters = usual_parameters();
        effects.push_back(std::move(effect));
    }
    return effects;
}

EffectSource make_large_effect(size_t bytes, uint32_t seed) {
    Dice dice(static_cast<uint32_t>(bytes) + seed);
    EffectSource effect;
    effect.name = std::to_string(bytes) + " bytes";
    const std::string macros =
        "#define HALF 0.5\n#define KEEP_ALPHA 1\n#define WEIGHT(x) ((x) * 0.25)\n";
    effect.fragment = macros + make_fragment(bytes - macros.size(), seed, 1, dice);
    effect.parameters = usual_parameters();
    return effect;
}

}  // namespace bench
