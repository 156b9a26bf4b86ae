#include "transition/tokens.h"

#include <cctype>

namespace transition {

namespace {

bool is_word_byte(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

size_t end_of_line(std::string_view text, size_t from) {
    const size_t end = text.find('\n', from);
    return end == std::string_view::npos ? text.size() : end;
}

size_t skip_comment(std::string_view text, size_t from) {
    if (text[from + 1] == '/') {
        return end_of_line(text, from);
    }
    const size_t end = text.find("*/", from + 2);
    return end == std::string_view::npos ? text.size() : end + 2;
}

bool starts_comment(std::string_view text, size_t at) {
    return text[at] == '/' && at + 1 < text.size() && (text[at + 1] == '/' || text[at + 1] == '*');
}

size_t end_of_number(std::string_view text, size_t at) {
    while (at < text.size() && (is_word_byte(text[at]) || text[at] == '.')) {
        const bool exponent = text[at] == 'e' || text[at] == 'E';
        ++at;
        if (exponent && at < text.size() && (text[at] == '+' || text[at] == '-')) {
            ++at;
        }
    }
    return at;
}

constexpr std::string_view kLongSymbols[] = {
    "<<=", ">>=", "++", "--", "<<", ">>", "<=", ">=", "==", "!=", "&&",
    "||",  "^^",  "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^="};

size_t end_of_symbol(std::string_view text, size_t at) {
    for (const std::string_view symbol : kLongSymbols) {
        if (text.substr(at, symbol.size()) == symbol) {
            return at + symbol.size();
        }
    }
    return at + 1;
}

// Behind the name of a `#define`, and behind the parameter list that follows it at once.
size_t end_of_define_head(std::string_view text, size_t at) {
    const size_t line_end = end_of_line(text, at);
    while (at < line_end && (text[at] == ' ' || text[at] == '\t')) {
        ++at;
    }
    while (at < line_end && is_word_byte(text[at])) {
        ++at;
    }
    if (at < line_end && text[at] == '(') {
        const size_t close = text.find(')', at);
        at = close < line_end ? close + 1 : line_end;
    }
    return at;
}

constexpr std::string_view kDefine = "#define";

Token token_at(std::string_view text, size_t at) {
    Token token;
    token.begin = at;
    if (text[at] == '#') {
        token.kind = TokenKind::directive;
        token.end = text.substr(at, kDefine.size()) == kDefine
                        ? end_of_define_head(text, at + kDefine.size())
                        : end_of_line(text, at);
    } else if (is_digit(text[at]) ||
               (text[at] == '.' && at + 1 < text.size() && is_digit(text[at + 1]))) {
        token.kind = TokenKind::number;
        token.end = end_of_number(text, at);
    } else if (is_word_byte(text[at])) {
        token.kind = TokenKind::word;
        token.end = at;
        while (token.end < text.size() && is_word_byte(text[token.end])) {
            ++token.end;
        }
    } else {
        token.end = end_of_symbol(text, at);
    }
    token.text = text.substr(at, token.end - at);
    return token;
}

}  // namespace

std::vector<Token> scan(std::string_view text) {
    std::vector<Token> tokens;
    size_t define_end = std::string_view::npos;  // of the `#define` line that is being read
    size_t at = 0;
    while (at < text.size()) {
        if (at >= define_end) {
            tokens.push_back({TokenKind::directive, define_end, define_end, {}});
            define_end = std::string_view::npos;
        }
        if (std::isspace(static_cast<unsigned char>(text[at])) != 0) {
            ++at;
        } else if (starts_comment(text, at)) {
            at = skip_comment(text, at);
        } else {
            tokens.push_back(token_at(text, at));
            if (tokens.back().text.substr(0, kDefine.size()) == kDefine) {
                define_end = end_of_line(text, at);
            }
            at = tokens.back().end;
        }
    }
    return tokens;
}

bool opens(std::string_view symbol) {
    return symbol == "(" || symbol == "[" || symbol == "{";
}

bool closes(std::string_view symbol) {
    return symbol == ")" || symbol == "]" || symbol == "}";
}

size_t closing(const std::vector<Token>& tokens, size_t open) {
    size_t depth = 0;
    for (size_t i = open; i < tokens.size(); ++i) {
        if (opens(tokens[i].text)) {
            ++depth;
        } else if (closes(tokens[i].text) && --depth == 0) {
            return i;
        }
    }
    return tokens.size();
}

}  // namespace transition
