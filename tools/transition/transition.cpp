#include "transition/transition.h"

#include <map>

#include "transition/edits.h"
#include "transition/fixups.h"
#include "transition/macros.h"
#include "transition/names.h"
#include "transition/params.h"
#include "transition/ternary.h"
#include "transition/tokens.h"
#include "transition/uniforms.h"
#include "transition/vector_matrix.h"

namespace transition {

namespace {

using Pass = std::string (*)(std::string_view text, std::vector<std::string>& notes);

// In the order in which they are made.
constexpr Pass kPasses[] = {remove_precision,      inline_local_macros, expand_nested_macros,
                            rename_reserved,       initialize_bools,    split_for_headers,
                            globals_to_macros,     write_out_mod,       transpose_right_matrices,
                            parenthesize_ternaries};

// What a parameter's name becomes in the source.
std::string use_of(const Param& param) {
    const std::string name = "PREFIX(" + param.name + ")";
    if (param.type == "bool") {
        return "(" + name + " != 0)";
    }
    return param.type == param.registered ? name : param.type + "(" + name + ")";
}

bool declares_transition(const std::vector<Token>& tokens) {
    for (size_t i = 1; i + 1 < tokens.size(); ++i) {
        if (tokens[i].text == "transition" && tokens[i - 1].text == "vec4" &&
            tokens[i + 1].text == "(") {
            return true;
        }
    }
    return false;
}

// `texture2D(name, c)` and `texture(name, c)` of a sampler parameter become `INPUTn(c)`.
void replace_samplers(const std::vector<Token>& tokens, const std::vector<std::string>& samplers,
                      Edits& edits) {
    for (size_t i = 0; i + 3 < tokens.size(); ++i) {
        if ((tokens[i].text != "texture2D" && tokens[i].text != "texture") ||
            tokens[i + 3].text != ",") {
            continue;
        }
        for (size_t s = 0; s < samplers.size(); ++s) {
            if (tokens[i + 2].text == samplers[s]) {
                edits.replace(tokens[i].begin, tokens[i + 3].end,
                              "INPUT" + std::to_string(s + 3) + "(");
            }
        }
    }
}

}  // namespace

Effect adapt(std::string_view text, const Options& options) {
    Effect effect;
    std::string source(text);
    if (!declares_transition(scan(source))) {
        effect.error = "no `vec4 transition(vec2 ...)` in the text";
        return effect;
    }
    effect.params = {{"progress", "float", "float", {0.0f}}, {"ratio", "float", "float", {1.0f}}};
    Edits removals;
    Uniforms uniforms = take_uniforms(source, scan(source), removals);
    source = removals.apply(source);
    effect.samplers = std::move(uniforms.samplers);
    for (Param& param : uniforms.params) {
        if (param.name != "progress" && param.name != "ratio") {
            effect.params.push_back(std::move(param));
        }
    }
    if (options.rewrites) {
        for (const Pass pass : kPasses) {
            source = pass(source, effect.rewrites);
        }
    }
    std::map<std::string, std::string, std::less<>> words = {
        {"getFromColor", "INPUT1"}, {"getToColor", "INPUT2"}, {"transition", "FUNCNAME"}};
    for (const Param& param : effect.params) {
        words.emplace(param.name, use_of(param));
    }
    Edits edits;
    const std::vector<Token> tokens = scan(source);
    replace_samplers(tokens, effect.samplers, edits);
    replace_globals(tokens, words, edits);
    effect.glsl = edits.apply(source);
    return effect;
}

}  // namespace transition
