#include "transition/names.h"

#include <algorithm>
#include <set>

namespace transition {

namespace {

// Words that the HLSL compiler keeps for itself and that the library prints as they stand.
constexpr std::string_view kReserved[] = {
    "register",        "packoffset",    "cbuffer",      "tbuffer",     "technique",
    "compile",         "sampler",       "lineadj",      "triangleadj", "groupshared",
    "nointerpolation", "export",        "unorm",        "snorm",       "column_major",
    "row_major",       "stateblock",    "BlendState",   "Texture2D",   "SamplerState",
    "PixelShader",     "fxgroup",       "NULL",         "auto",        "signed",
    "operator",        "private",       "protected",    "virtual",     "try",
    "throw",           "catch",         "delete",       "friend",      "mutable",
    "const_cast",      "static_cast",   "explicit",     "typename",    "Buffer",
    "pixelshader",     "vertexshader",  "asm_fragment", "decl",        "compile_fragment",
    "GeometryShader",  "sampler_state", "technique10",  "technique11", "iResolution",
};

// Names that the text around an effect uses; a constant global of that name would replace them.
constexpr std::string_view kPreludeNames[] = {
    "a", "b", "value", "v0", "v1", "tc", "tex",  "sa",  "depthTex", "depthValue", "x",
    "y", "z", "w",     "r",  "g",  "xy", "zyxw", "_tc", "input",    "depth"};

constexpr std::string_view kTypeWords[] = {"float", "int",   "bool",  "uint",  "vec2", "vec3",
                                           "vec4",  "ivec2", "ivec3", "ivec4", "mat2", "mat3",
                                           "mat4",  "bvec2", "bvec3", "bvec4", "void"};

template <size_t count>
bool among(const std::string_view (&words)[count], std::string_view word) {
    return std::find(std::begin(words), std::end(words), word) != std::end(words);
}

// Names that more than one declaration of the text introduces.
std::set<std::string_view> names_declared_twice(const std::vector<Token>& tokens) {
    std::set<std::string_view> once;
    std::set<std::string_view> twice;
    for (size_t i = 1; i < tokens.size(); ++i) {
        if (tokens[i].kind == TokenKind::word && is_type_word(tokens[i - 1].text) &&
            !once.insert(tokens[i].text).second) {
            twice.insert(tokens[i].text);
        }
    }
    return twice;
}

}  // namespace

bool is_type_word(std::string_view word) {
    return among(kTypeWords, word);
}

void replace_words(const std::vector<Token>& tokens,
                   const std::map<std::string, std::string, std::less<>>& words, Edits& edits) {
    for (size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].kind != TokenKind::word || (i > 0 && tokens[i - 1].text == ".")) {
            continue;
        }
        const auto found = words.find(tokens[i].text);
        if (found != words.end()) {
            edits.replace(tokens[i].begin, tokens[i].end, found->second);
        }
    }
}

std::string rename_reserved(std::string_view text, std::vector<std::string>& notes) {
    const std::vector<Token> tokens = scan(text);
    const std::set<std::string_view> twice = names_declared_twice(tokens);
    std::map<std::string, std::string, std::less<>> words;
    size_t depth = 0;
    for (size_t i = 0; i < tokens.size(); ++i) {
        depth += tokens[i].text == "{" ? 1u : 0u;
        depth -= tokens[i].text == "}" && depth > 0 ? 1u : 0u;
        if (tokens[i].kind == TokenKind::word && among(kReserved, tokens[i].text)) {
            words.emplace(tokens[i].text, std::string(tokens[i].text) + "_name");
        }
        const bool constant = depth == 0 && tokens[i].text == "const" && i + 2 < tokens.size();
        if (constant && among(kPreludeNames, tokens[i + 2].text) &&
            twice.count(tokens[i + 2].text) == 0) {
            words.emplace(tokens[i + 2].text, std::string(tokens[i + 2].text) + "_constant");
        }
    }
    for (const auto& [from, to] : words) {
        std::string note = "'";
        note.append(from).append("' renamed to '").append(to);
        notes.push_back(note.append("': the name is taken in HLSL"));
    }
    Edits edits;
    replace_words(tokens, words, edits);
    return edits.apply(text);
}

}  // namespace transition
