#include "transition/fixups.h"

#include <algorithm>

#include "transition/edits.h"
#include "transition/names.h"
#include "transition/tokens.h"

namespace transition {

namespace {

size_t find_symbol(const std::vector<Token>& tokens, size_t from, std::string_view symbol) {
    for (size_t i = from; i < tokens.size(); ++i) {
        if (tokens[i].text == symbol) {
            return i;
        }
        if (opens(tokens[i].text)) {
            i = std::min(closing(tokens, i), tokens.size() - 1);
        }
    }
    return tokens.size();
}

// True if the library folds the initialiser: literals, signs and operators between them, or one
// constructor.
bool is_folded(const std::vector<Token>& tokens, size_t begin, size_t end, bool constructor) {
    for (size_t i = begin; i < end; ++i) {
        const Token& token = tokens[i];
        const bool operation =
            token.text == "+" || token.text == "-" || token.text == "*" || token.text == "/";
        if (token.kind != TokenKind::number && !operation && token.text != "true" &&
            token.text != "false" && token.text != "(" && token.text != ")" &&
            !(constructor && (token.text == "," || is_type_word(token.text)))) {
            return false;
        }
    }
    return true;
}

std::string joined(std::string_view text, const std::vector<Token>& tokens, size_t begin,
                   size_t end) {
    std::string result;
    for (size_t i = begin; i < end; ++i) {
        if (i > begin && tokens[i].begin > tokens[i - 1].end) {
            result += ' ';
        }
        result += text.substr(tokens[i].begin, tokens[i].end - tokens[i].begin);
    }
    return result;
}

}  // namespace

std::string remove_precision(std::string_view text, std::vector<std::string>& notes) {
    const std::vector<Token> tokens = scan(text);
    Edits edits;
    for (size_t i = 0; i < tokens.size(); ++i) {
        if (tokens[i].text == "precision") {
            const size_t end = std::min(find_symbol(tokens, i, ";"), tokens.size() - 1);
            edits.replace(tokens[i].begin, tokens[end].end, "");
        } else if (tokens[i].text.substr(0, 8) == "#version") {
            edits.replace(tokens[i].begin, tokens[i].end, "");
        }
    }
    if (!edits.empty()) {
        notes.emplace_back("a `precision` statement or `#version` line removed");
    }
    return edits.apply(text);
}

std::string initialize_bools(std::string_view text, std::vector<std::string>& notes) {
    const std::vector<Token> tokens = scan(text);
    Edits edits;
    size_t parentheses = 0;
    for (size_t i = 0; i + 2 < tokens.size(); ++i) {
        parentheses += tokens[i].text == "(" ? 1u : 0u;
        parentheses -= tokens[i].text == ")" && parentheses > 0 ? 1u : 0u;
        if (tokens[i].text != "bool" || parentheses > 0) {
            continue;
        }
        for (size_t name = i + 1; name + 1 < tokens.size() && tokens[name].kind == TokenKind::word;
             name += 2) {
            const std::string_view next = tokens[name + 1].text;
            if (next == "," || next == ";") {
                edits.insert(tokens[name].end, " = false");
            }
            if (next != ",") {
                break;
            }
        }
    }
    if (!edits.empty()) {
        notes.emplace_back("a `bool` without a value set to false");
    }
    return edits.apply(text);
}

std::string globals_to_macros(std::string_view text, std::vector<std::string>& notes) {
    const std::vector<Token> tokens = scan(text);
    Edits edits;
    for (size_t i = 0; i + 3 < tokens.size(); ++i) {
        if (opens(tokens[i].text)) {
            i = std::min(closing(tokens, i), tokens.size() - 1);
            continue;
        }
        const size_t type = tokens[i].text == "const" ? i + 1 : i;
        if (!is_type_word(tokens[type].text) || tokens[type + 1].kind != TokenKind::word ||
            type + 2 >= tokens.size() || tokens[type + 2].text != "=") {
            continue;
        }
        const size_t end = find_symbol(tokens, type + 3, ";");
        const bool constructor = type != i;
        if (end < tokens.size() && find_symbol(tokens, type + 3, ",") > end &&
            !is_folded(tokens, type + 3, end, constructor)) {
            const std::string name(tokens[type + 1].text);
            edits.replace(tokens[i].begin, tokens[end].end,
                          "#define " + name + " (" + joined(text, tokens, type + 3, end) + ")");
            notes.push_back("global '" + name + "' turned into a macro: its value is not constant");
        }
        i = std::min(end, tokens.size() - 1);
    }
    return edits.apply(text);
}

std::string write_out_mod(std::string_view text, std::vector<std::string>& notes) {
    std::string result(text);
    bool changed = false;
    // The innermost calls last in the text come first, so that an argument is final when copied.
    for (bool again = true; again;) {
        again = false;
        const std::vector<Token> tokens = scan(result);
        for (size_t i = tokens.size(); i-- > 0;) {
            if (tokens[i].text != "mod" || i + 1 >= tokens.size() || tokens[i + 1].text != "(") {
                continue;
            }
            const size_t close = closing(tokens, i + 1);
            const size_t comma = find_symbol(tokens, i + 2, ",");
            if (close >= tokens.size() || comma >= close) {
                continue;
            }
            const std::string x = joined(result, tokens, i + 2, comma);
            const std::string y = joined(result, tokens, comma + 1, close);
            Edits edits;
            std::string written = "((";
            written.append(x).append(") - (").append(y).append(") * floor((");
            written.append(x).append(") / (").append(y).append(")))");
            edits.replace(tokens[i].begin, tokens[close].end, std::move(written));
            result = edits.apply(result);
            again = changed = true;
            break;
        }
    }
    if (changed) {
        notes.emplace_back("`mod` written out: the library's rounds the other way below zero");
    }
    return result;
}

std::string split_for_headers(std::string_view text, std::vector<std::string>& notes) {
    const std::vector<Token> tokens = scan(text);
    Edits edits;
    for (size_t i = 0; i + 4 < tokens.size(); ++i) {
        if (tokens[i].text != "for" || tokens[i + 1].text != "(" ||
            !is_type_word(tokens[i + 2].text)) {
            continue;
        }
        const size_t comma = find_symbol(tokens, i + 2, ",");
        const size_t end = find_symbol(tokens, i + 2, ";");
        if (comma < end) {
            edits.insert(tokens[i].begin, joined(text, tokens, i + 2, end) + "; ");
            edits.replace(tokens[i + 2].begin, tokens[end].begin, "");
        }
    }
    if (!edits.empty()) {
        notes.emplace_back("declarations taken out of a `for` header");
    }
    return edits.apply(text);
}

}  // namespace transition
