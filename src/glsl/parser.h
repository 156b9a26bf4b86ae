#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "glsl/ast.h"

namespace glsl {

/// Levels that a tree may have below one another, left operands, operands of postfix forms and
/// elements of lists not counted. A deeper source is refused with "nesting too deep", long before a
/// stack of 1 MiB is in danger, be it in the parser or in a printer that walks the tree by
/// recursion. A level in the source (a parenthesis, a call, a statement in a statement) takes
/// one of them, two behind an operator, four for a ternary in a ternary.
inline constexpr std::uint32_t kMaxNesting = 520;

/// Where a parse failed, for tools that lead an author there.
struct FailurePlace {
    /// The text as the lexer had rewritten it by then. In front of `offset` remains of branches
    /// that were cut may stand, so lines are not to be counted here.
    std::string source;
    /// Just behind the token that was current at the first message, or where reading stopped if
    /// there is none.
    std::size_t offset = 0;
};

/// Reads one shader source and builds its tree, one object per source. Stops at the first error.
class parser {
public:
    /// @param source    text up to its first zero byte, copied; null reads as empty
    /// @param fileName  name at the head of each message
    parser(const char* source, const char* fileName);
    ~parser();
    parser(const parser&) = delete;
    parser& operator=(const parser&) = delete;

    /// Parses the whole source; to be called once. The tree does not need the parser any more.
    ///
    /// @param shaderType  1 vertex, 2 and 3 tessellation control and evaluation, 5 fragment
    /// @param place       if not null, receives where it failed, if it does
    /// @param read        if not null, receives the text as it was read: rewritten, and without the
    ///                    branches that were cut. Lines and columns of the nodes count in it.
    /// @returns the tree, or null after a failure. A null result may come without a message.
    ptr<astTU> parse(std::uint32_t shaderType, FailurePlace* place = nullptr,
                     std::string* read = nullptr);

    /// Every message so far, each as "name:line:column:error:message\r\n"; null if there is none.
    /// Valid until the next call of parse and as long as the parser. A source can fail without a
    /// message, and a message can stand although a tree was returned.
    const char* error() const;

    /// Position of the first message, 1-based; 0 if there is none.
    std::uint64_t errorLine() const;
    std::uint64_t errorColumn() const;

private:
    class impl;
    std::unique_ptr<impl> impl_;  // null if there was no memory for it
};

}  // namespace glsl
