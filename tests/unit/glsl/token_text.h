#pragma once

#include <ostream>
#include <string>

#include "glsl/arena.h"
#include "glsl/lexer.h"

namespace glsl::test {

/// A lexer with the memory that it needs.
class Reader {
public:
    explicit Reader(const std::string& source);
    ~Reader();
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    lexer& operator*() { return *lexer_; }
    lexer* operator->() { return lexer_; }

private:
    arena* texts_;
    arena* scratch_;
    lexer* lexer_;
};

/// One token as text: `end`, `keyword:float`, `id:foo`, `string:abc`, `int:4`, `uint:4`,
/// `float:1.5`, `double:1.5`, the operator's spelling, `;`, `{`, `}`, `version:330:0`,
/// `extension:foo:0`, `define:NAME=value`.
std::string describe(const token& what);

/// All tokens of a source up to its end, a blank between two. An error ends the list and stands
/// behind it as `!line:column:message`.
std::string tokensOf(const std::string& source);

/// The same, each token with `@line:column` of the reader behind it.
std::string placedTokensOf(const std::string& source);

/// A source and the tokens, as tokensOf() writes them, that it reads as.
struct TokensCase {
    const char* source;
    const char* tokens;
};
void PrintTo(const TokensCase& c, std::ostream* out);

}  // namespace glsl::test
