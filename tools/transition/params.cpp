#include "transition/params.h"

#include <algorithm>
#include <string_view>

#include "transition/names.h"

namespace transition {

namespace {

// A declared name and the token from which on it hides the global.
struct Declared {
    std::string_view name;
    size_t from;
};

class Replacer {
public:
    Replacer(const std::vector<Token>& tokens,
             const std::map<std::string, std::string, std::less<>>& words, Edits& edits)
        : tokens_(tokens), words_(words), edits_(edits) {}

    void run() {
        scopes_.emplace_back();
        for (size_t i = 0; i < tokens_.size(); ++i) {
            if (tokens_[i].text == "{") {
                scopes_.push_back(std::move(parameters_));
                parameters_.clear();
            } else if (tokens_[i].text == "}" && scopes_.size() > 1) {
                scopes_.pop_back();
            } else if (tokens_[i].text == ";" && scopes_.size() == 1) {
                parameters_.clear();
            } else if (tokens_[i].kind == TokenKind::word) {
                word(i);
            }
        }
    }

private:
    void word(size_t i) {
        const auto found = words_.find(tokens_[i].text);
        if (found == words_.end() || (i > 0 && tokens_[i - 1].text == ".")) {
            return;
        }
        if (is_declared(i) && !is_function(i)) {
            declare(i);
        } else if (!is_hidden(i)) {
            edits_.replace(tokens_[i].begin, tokens_[i].end, found->second);
        }
    }

    bool is_declared(size_t i) const { return i > 0 && is_type_word(tokens_[i - 1].text); }
    bool is_function(size_t i) const {
        return i + 1 < tokens_.size() && tokens_[i + 1].text == "(";
    }

    void declare(size_t i) {
        if (scopes_.size() == 1) {
            parameters_.push_back({tokens_[i].text, 0});
            return;
        }
        size_t end = i + 1;
        while (end < tokens_.size() && tokens_[end].text != "," && tokens_[end].text != ";") {
            end = opens(tokens_[end].text) ? std::min(closing(tokens_, end), tokens_.size() - 1) + 1
                                           : end + 1;
        }
        scopes_.back().push_back({tokens_[i].text, end});
    }

    bool is_hidden(size_t i) const {
        for (const auto& scope : scopes_) {
            for (const Declared& declared : scope) {
                if (declared.name == tokens_[i].text && i >= declared.from) {
                    return true;
                }
            }
        }
        return false;
    }

    const std::vector<Token>& tokens_;
    const std::map<std::string, std::string, std::less<>>& words_;
    Edits& edits_;
    std::vector<std::vector<Declared>> scopes_;
    std::vector<Declared> parameters_;  // of the function whose head was read last
};

}  // namespace

void replace_globals(const std::vector<Token>& tokens,
                     const std::map<std::string, std::string, std::less<>>& words, Edits& edits) {
    Replacer(tokens, words, edits).run();
}

}  // namespace transition
