#include "diagnostics/author_offset.h"

#include "diagnostics/words.h"

namespace diagnostics {

namespace {

constexpr size_t kNone = std::string_view::npos;
constexpr size_t kLongestUse = 4096;  // bytes between a macro's name and a place in its arguments

bool is_macro(std::string_view text, std::string_view name) {
    constexpr std::string_view kDefine = "#define";
    for (size_t at = text.find(kDefine); at != kNone; at = text.find(kDefine, at + 1)) {
        const size_t begin = text.find_first_not_of(" \t", at + kDefine.size());
        if (begin != kNone && text.compare(begin, name.size(), name) == 0 &&
            (begin + name.size() >= text.size() || !is_word(text[begin + name.size()]))) {
            return true;
        }
    }
    return false;
}

// The name of the macro whose parentheses `at` lies in, the outermost one; kNone if there is none.
size_t enclosing_use(std::string_view text, size_t at) {
    size_t found = kNone;
    int depth = 0;
    const size_t first = at > kLongestUse ? at - kLongestUse : 0;
    for (size_t i = at; i > first && text[i - 1] != ';' && text[i - 1] != '{'; --i) {
        const char c = text[i - 1];
        depth += c == ')' ? 1 : 0;
        if (c == '(' && depth-- == 0) {
            depth = 0;
            const size_t name = token_begin(text, i - 1);
            const std::string_view word = token_at(text, name);
            if (!word.empty() && is_word(word.front()) && is_macro(text, word)) {
                found = name;
            }
        }
    }
    return found;
}

}  // namespace

size_t author_offset(std::string_view assembled, std::string_view rewritten, size_t offset) {
    return author_offset(assembled, rewritten, RewriteAlignment(assembled, rewritten), offset);
}

size_t author_offset(std::string_view assembled, std::string_view rewritten,
                     const RewriteAlignment& alignment, size_t offset) {
    const size_t found = alignment.original_offset(offset);
    const std::string_view token = token_at(rewritten, token_begin(rewritten, offset));
    if (token == token_at(assembled, found)) {
        return found;
    }
    const size_t use = enclosing_use(assembled, found);
    return use == kNone ? found : use;
}

}  // namespace diagnostics
