#pragma once

/// Finding the author's words in a text that the parser rewrote: it puts parentheses around
/// ternaries, replaces macros and blanks branches out, and its positions are those of the result.

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

/// Two texts, of which the parser made the second from the first. For tools, after an error. The
/// texts outlive it.
class RewriteAlignment {
public:
    RewriteAlignment(std::string_view original, std::string_view rewritten);

    /// The place in the original of the token that stands in front of a place of the rewritten
    /// text. Where the token came out of a macro, that is the macro's use; where it was put in, the
    /// token behind it. Takes time about linear in the texts, but quadratic in a short stretch of
    /// lines that all changed.
    ///
    /// @param offset  in the rewritten text, as the parser reports it: just behind a token
    /// @returns offset of the token's first byte in the original; its size if there is no such
    ///          token
    size_t original_offset(size_t offset) const;

private:
    std::string_view original_;
    std::string_view rewritten_;
    std::vector<std::string_view> from_lines_;
    std::vector<std::string_view> to_lines_;
    std::vector<std::pair<size_t, size_t>> anchors_;  // lines that are the same in both
};
