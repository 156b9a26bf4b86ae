#pragma once

/// Finding the author's words in a text that the parser rewrote: it puts parentheses around
/// ternaries, replaces macros and blanks branches out, and its positions are those of the result.

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

/// The place in `original` of the token that stands in front of a place of `rewritten`. Where the
/// token came out of a macro, that is the macro's use; where it was put in, the token behind it.
/// For tools, after an error: takes time about linear in the texts, but quadratic in a stretch of
/// lines that all changed.
///
/// @param offset  in `rewritten`, as the parser reports it: just behind a token
/// @returns offset of the token's first byte in `original`; its size if there is no such token
size_t original_offset(std::string_view original, std::string_view rewritten, size_t offset);

/// The same for many places of one text. The texts outlive it.
class RewriteAlignment {
public:
    RewriteAlignment(std::string_view original, std::string_view rewritten);

    /// As original_offset().
    size_t original_offset(size_t offset) const;

private:
    std::string_view original_;
    std::string_view rewritten_;
    std::vector<std::string_view> from_lines_;
    std::vector<std::string_view> to_lines_;
    std::vector<std::pair<size_t, size_t>> anchors_;  // lines that are the same in both
};
