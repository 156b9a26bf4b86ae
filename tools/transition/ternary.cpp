#include "transition/ternary.h"

#include <algorithm>

#include "transition/edits.h"
#include "transition/tokens.h"

namespace transition {

namespace {

class Pass {
public:
    explicit Pass(const std::vector<Token>& tokens) : tokens_(tokens) {}

    // Tokens from `begin` up to `end`; `in_call` inside a pair of parentheses.
    void group(size_t begin, size_t end, bool in_call) {
        if (depth_ == kDepthLimit) {
            return;
        }
        ++depth_;
        scan_group(begin, end, in_call);
        --depth_;
    }

    const Edits& edits() const { return edits_; }

private:
    // What is nested deeper stays as it stands: the front end refuses it anyhow.
    static constexpr size_t kDepthLimit = 256;

    void scan_group(size_t begin, size_t end, bool in_call) {
        size_t start = begin;
        for (size_t i = begin; i < end; ++i) {
            const Token& token = tokens_[i];
            if (opens(token.text)) {
                const size_t close = std::min(closing(tokens_, i), end);
                group(i + 1, close, token.text == "(");
                if (token.text == "{") {
                    start = close + 1;
                }
                i = close;
            } else if (token.text == ";" || token.text == "," ||
                       token.kind == TokenKind::directive) {
                segment(start, i, in_call && start != begin);
                start = i + 1;
            }
        }
        segment(start, end, in_call && start != begin);
    }

    bool at_top(size_t begin, size_t end, std::string_view symbol, size_t& where) const {
        for (size_t i = begin; i < end; ++i) {
            if (opens(tokens_[i].text)) {
                i = std::min(closing(tokens_, i), end);
            } else if (tokens_[i].text == symbol) {
                where = i;
                return true;
            }
        }
        return false;
    }

    // An expression without top-level commas.
    void segment(size_t begin, size_t end, bool wrap) {
        size_t question = 0;
        if (!at_top(begin, end, "?", question)) {
            return;
        }
        size_t start = begin;
        for (size_t i = begin; i < question; ++i) {
            if (opens(tokens_[i].text)) {
                i = std::min(closing(tokens_, i), question);
            } else if (is_assignment(tokens_[i].text) || tokens_[i].text == "return") {
                start = i + 1;
            }
        }
        ternary(start, question, end, wrap);
    }

    void ternary(size_t begin, size_t question, size_t end, bool wrap) {
        const size_t colon = matching_colon(question, end);
        if (colon >= end) {
            return;
        }
        if (wrap) {
            enclose(begin, end);
        }
        operand(begin, question);
        part(question + 1, colon);
        part(colon + 1, end);
    }

    void part(size_t begin, size_t end) {
        size_t question = 0;
        if (!at_top(begin, end, "?", question)) {
            operand(begin, end);
        } else if (depth_ < kDepthLimit) {
            ++depth_;
            ternary(begin, question, end, true);
            --depth_;
        }
    }

    // The dialect ends a condition at the `=` of `!=` and such, and what stands behind it then
    // falls apart: only an operand of several tokens in parentheses of its own is safe.
    void operand(size_t begin, size_t end) {
        const bool single = end < begin + 2;
        if (!single && (!opens(tokens_[begin].text) || closing(tokens_, begin) != end - 1)) {
            enclose(begin, end);
        }
    }

    size_t matching_colon(size_t question, size_t end) const {
        size_t open = 1;
        for (size_t i = question + 1; i < end; ++i) {
            if (opens(tokens_[i].text)) {
                i = std::min(closing(tokens_, i), end);
            } else if (tokens_[i].text == "?") {
                ++open;
            } else if (tokens_[i].text == ":" && --open == 0) {
                return i;
            }
        }
        return end;
    }

    void enclose(size_t begin, size_t end) {
        if (begin < end) {
            edits_.insert(tokens_[begin].begin, "(");
            edits_.insert(tokens_[end - 1].end, ")");
        }
    }

    static bool is_assignment(std::string_view symbol) {
        return !symbol.empty() && symbol.back() == '=' && symbol != "==" && symbol != "!=" &&
               symbol != "<=" && symbol != ">=";
    }

    const std::vector<Token>& tokens_;
    Edits edits_;
    size_t depth_ = 0;
};

}  // namespace

std::string parenthesize_ternaries(std::string_view text, std::vector<std::string>& notes) {
    const std::vector<Token> tokens = scan(text);
    Pass pass(tokens);
    pass.group(0, tokens.size(), false);
    if (!pass.edits().empty()) {
        notes.emplace_back("parentheses put around conditional expressions");
    }
    return pass.edits().apply(text);
}

}  // namespace transition
