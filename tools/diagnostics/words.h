#pragma once

/// Words of a shader text, without a lexer.

#include <cstddef>
#include <string_view>

namespace diagnostics {

inline bool is_word(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// From a position just behind a word or a sign to its first byte.
inline size_t token_begin(std::string_view text, size_t position) {
    size_t at = position < text.size() ? position : text.size();
    at -= at > 0 ? 1 : 0;
    while (at > 0 && is_word(text[at]) && is_word(text[at - 1])) {
        --at;
    }
    return at;
}

/// The word that `at` lies in, or the single sign there; empty at the end.
inline std::string_view token_at(std::string_view text, size_t at) {
    if (at >= text.size()) {
        return {};
    }
    const size_t begin = token_begin(text, at + 1);
    size_t end = at + 1;
    while (is_word(text[at]) && end < text.size() && is_word(text[end])) {
        ++end;
    }
    return text.substr(begin, end - begin);
}

}  // namespace diagnostics
