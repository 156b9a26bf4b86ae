#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace glsl::test {

/// The reading of directives in its plainest form: one string that is cut and put together at each
/// step, every search from the beginning, nothing remembered. The measure for the lexer, which has
/// to leave the same text.
class DirectiveModel {
public:
    explicit DirectiveModel(std::string source) : text_(std::move(source)) {}

    /// Reads one token of words, numbers, strings and other bytes one by one (`==` and `!=` whole),
    /// directives on the way worked. False at the end or after an error.
    bool read();
    std::string remaining() const { return text_.substr(index_); }
    std::size_t line() const { return line_; }
    const std::string& error() const { return error_; }

private:
    static constexpr std::size_t kNone = std::string::npos;

    char at(std::size_t k) const { return k < text_.size() ? text_[k] : '\0'; }
    void advance(std::size_t to);
    std::size_t behindComments(std::size_t k) const;
    std::string lettersAt(std::size_t k) const;
    std::string wordAt(std::size_t k) const;
    void directive();
    void define();
    void expand(const std::string& name, const std::string& value, bool function_like);
    std::size_t expandAt(std::size_t k, const std::string& name, const std::string& value,
                         bool function_like);
    void conditional(const std::string& word);
    bool condition(const std::string& word, const std::string& operand);
    void keep();
    void cut();
    std::size_t nextHash(std::size_t k) const;
    std::size_t nextEndif(std::size_t k) const;
    void replaceByNewlines(std::size_t from, std::size_t to);

    std::string text_;
    std::size_t index_ = 0;
    std::size_t line_ = 1;
    std::map<std::string, std::string> macros_;
    std::vector<bool> stack_;
    std::string error_;
};

}  // namespace glsl::test
