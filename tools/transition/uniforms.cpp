#include "transition/uniforms.h"

#include <algorithm>
#include <cstdlib>

namespace transition {

namespace {

struct TypeRow {
    std::string_view type;
    std::string_view registered;
    size_t elements;
};

// What the library registers for each type that a transition may use.
constexpr TypeRow kTypes[] = {
    {"float", "float", 1}, {"int", "int", 1},    {"bool", "int", 1},   {"vec2", "vec2", 2},
    {"vec3", "vec3", 3},   {"vec4", "vec4", 4},  {"ivec2", "vec2", 2}, {"ivec3", "vec3", 3},
    {"ivec4", "vec4", 4},  {"bvec2", "vec2", 2}, {"mat2", "mat2", 4},  {"mat3", "mat3", 9},
    {"mat4", "mat4", 16},
};

const TypeRow* find_type(std::string_view type) {
    const auto* row = std::find_if(std::begin(kTypes), std::end(kTypes),
                                   [&](const TypeRow& r) { return r.type == type; });
    return row == std::end(kTypes) ? nullptr : row;
}

// The text behind the '=' of "// = 0.2" or "/* = 0.2 */" on the declaration's line.
std::string_view comment_default(std::string_view text, size_t begin) {
    size_t line_end = text.find('\n', begin);
    line_end = line_end == std::string_view::npos ? text.size() : line_end;
    const std::string_view line = text.substr(begin, line_end - begin);
    size_t comment = line.find("//");
    comment = std::min(comment, line.find("/*"));
    const size_t equals = line.find('=', comment == std::string_view::npos ? 0 : comment);
    if (equals == std::string_view::npos) {
        return {};
    }
    std::string_view value = line.substr(equals + 1);
    value = value.substr(0, value.find("*/"));
    value = value.substr(0, value.find(';'));
    return value.substr(0, value.find("//"));
}

float sum_of_products(const std::vector<Token>& tokens, size_t& at) {
    float value = 0.0f;
    char operation = ' ';
    for (; at < tokens.size(); ++at) {
        const Token& token = tokens[at];
        if (token.kind == TokenKind::number || token.text == "true" || token.text == "false") {
            const float number = token.kind == TokenKind::number
                                     ? std::strtof(std::string(token.text).c_str(), nullptr)
                                     : (token.text == "true" ? 1.0f : 0.0f);
            value = operation == '-'   ? value - number
                    : operation == '+' ? value + number
                    : operation == '*' ? value * number
                    : operation == '/' ? value / number
                                       : number;
        } else if (token.text.size() == 1 &&
                   std::string_view("+-*/").find(token.text[0]) != std::string_view::npos) {
            operation = token.text[0];
        } else {
            break;
        }
    }
    return value;
}

}  // namespace

std::vector<float> default_values(std::string_view text, size_t elements) {
    const std::vector<Token> tokens = scan(text);
    std::vector<float> values;
    for (size_t at = 0; at < tokens.size();) {
        const std::string_view word = tokens[at].text;
        if (tokens[at].kind == TokenKind::number || word == "true" || word == "false" ||
            word == "-" || word == "+") {
            values.push_back(sum_of_products(tokens, at));
        } else {
            ++at;
        }
    }
    if (values.size() == 1) {
        values.resize(elements, values.front());
    }
    values.resize(elements, 0.0f);
    return values;
}

Uniforms take_uniforms(std::string_view text, const std::vector<Token>& tokens, Edits& edits) {
    Uniforms result;
    for (size_t i = 0; i + 2 < tokens.size(); ++i) {
        if (tokens[i].text != "uniform") {
            continue;
        }
        size_t type = i + 1;
        while (type + 1 < tokens.size() &&
               (tokens[type].text == "lowp" || tokens[type].text == "mediump" ||
                tokens[type].text == "highp")) {
            ++type;
        }
        size_t end = type + 1;
        while (end < tokens.size() && tokens[end].text != ";") {
            ++end;
        }
        if (end == tokens.size()) {
            break;
        }
        const TypeRow* row = find_type(tokens[type].text);
        for (size_t name = type + 1; name < end; ++name) {
            if (tokens[name].kind != TokenKind::word ||
                (tokens[name - 1].text != "," && name != type + 1)) {
                continue;
            }
            if (row != nullptr) {
                result.params.push_back(
                    {std::string(tokens[name].text), std::string(row->type),
                     std::string(row->registered),
                     default_values(comment_default(text, tokens[name].end), row->elements)});
            } else if (tokens[type].text == "sampler2D") {
                result.samplers.emplace_back(tokens[name].text);
            }
        }
        edits.replace(tokens[i].begin, tokens[end].end, "");
        i = end;
    }
    return result;
}

}  // namespace transition
