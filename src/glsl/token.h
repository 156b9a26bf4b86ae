#pragma once

#include <cstdint>

#include "glsl/ast.h"

namespace glsl {

struct symbol;

enum class TokenKind : std::uint32_t {
    end = 0,
    whitespace = 1,
    comment = 2,
    keyword = 3,
    identifier = 4,
    string = 5,
    intConstant = 6,
    uintConstant = 7,
    floatConstant = 8,
    doubleConstant = 9,
    operator_ = 10,
    semicolon = 11,
    scopeBegin = 12,
    scopeEnd = 13,
    directive = 14,
};

enum class DirectiveKind : std::uint32_t {
    version = 0,
    extension = 1,
    define = 2,
};

/// One token. After a lexical error it keeps the kind it had before, with empty texts.
struct token {
    TokenKind type = TokenKind::whitespace;
    /// Keyword or operator id, integer value, bits of a float, low bits of a double, directive
    /// kind; 0 for a kind that has no number.
    std::uint32_t value = 0;
    // Of the following, what the kind does not name is left over from an earlier token.
    double doubleValue = 0.0;  // of a doubleConstant
    std::int32_t number = 0;   // #version
    std::int32_t choice = 0;   // #version's profile, #extension's behavior
    symbol* name = nullptr;    // of an identifier or a #define
    glsl::text text;           // string; digits of a float or double; name of an #extension
    glsl::text replacement;    // of a #define

    bool isDirective(DirectiveKind kind) const {
        return type == TokenKind::directive && value == static_cast<std::uint32_t>(kind);
    }
};

}  // namespace glsl
