#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace transition {

enum class TokenKind { word, number, symbol, directive };

/// One token of a GLSL text; blanks and comments lie between tokens.
struct Token {
    TokenKind kind = TokenKind::symbol;
    size_t begin = 0;  // byte offsets in the text
    size_t end = 0;
    std::string_view text;  // into the text that was scanned
};

/// Splits a text. A directive is one token, from its '#' to the end of its line; of a `#define` it
/// ends behind the name (and its parameter list), the value's tokens follow, and an empty directive
/// token closes the line. Never fails: a byte that starts nothing is a symbol of its own.
std::vector<Token> scan(std::string_view text);

/// Position of the token that closes the bracket at `open`, or `tokens.size()` if none does.
size_t closing(const std::vector<Token>& tokens, size_t open);

/// True for "(", "[" and "{".
bool opens(std::string_view symbol);

/// True for ")", "]" and "}".
bool closes(std::string_view symbol);

}  // namespace transition
