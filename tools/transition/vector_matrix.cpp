#include "transition/vector_matrix.h"

#include <algorithm>
#include <map>

#include "transition/edits.h"
#include "transition/names.h"
#include "transition/tokens.h"

namespace transition {

namespace {

enum class Shape { other, vector, matrix };

Shape shape_of_type(std::string_view type) {
    const std::string_view family = type.substr(0, 3);
    return family == "vec" ? Shape::vector : family == "mat" ? Shape::matrix : Shape::other;
}

bool is_swizzle(std::string_view word) {
    return word.size() > 1 && word.size() < 5 &&
           (word.find_first_not_of("xyzw") == std::string_view::npos ||
            word.find_first_not_of("rgba") == std::string_view::npos);
}

// Tokens `begin` up to `end`.
struct Operand {
    size_t begin = 0;
    size_t end = 0;
};

class Pass {
public:
    explicit Pass(const std::vector<Token>& tokens, std::string_view text)
        : tokens_(tokens), text_(text) {
        for (size_t i = 0; i + 1 < tokens.size(); ++i) {
            if (is_type_word(tokens[i].text) && tokens[i + 1].kind == TokenKind::word) {
                note_name(tokens[i + 1].text, shape_of_type(tokens[i].text));
            }
        }
    }

    Edits run() {
        for (size_t i = 1; i + 1 < tokens_.size(); ++i) {
            if (tokens_[i].text == "*") {
                product(i);
            } else if (tokens_[i].text == "*=") {
                assignment(i);
            }
        }
        return std::move(edits_);
    }

private:
    // A name that means different things in different places tells nothing.
    void note_name(std::string_view name, Shape shape) {
        const auto [known, is_new] = names_.emplace(name, shape);
        if (!is_new && known->second != shape) {
            known->second = Shape::other;
        }
    }

    Shape shape_of_word(std::string_view word) const {
        if (is_type_word(word)) {
            return shape_of_type(word);
        }
        const auto known = names_.find(word);
        return known == names_.end() ? Shape::other : known->second;
    }

    // The operand that begins behind an operator, if it is a word or a call and nothing is taken
    // out of it; empty otherwise.
    Operand right_of(size_t operation) const {
        const size_t begin = operation + 1;
        size_t end = begin + 1;
        if (end < tokens_.size() && tokens_[end].text == "(") {
            end = closing(tokens_, end) + 1;
        }
        const bool ends = end < tokens_.size() && tokens_[end].text != "." &&
                          tokens_[end].text != "[" && tokens_[begin].kind == TokenKind::word;
        return ends ? Operand{begin, end} : Operand{};
    }

    size_t opening(size_t close) const {
        for (size_t i = close; i-- > 0;) {
            if (opens(tokens_[i].text) && closing(tokens_, i) == close) {
                return i;
            }
        }
        return close;
    }

    // The operand that ends in front of an operator and is a vector; empty otherwise.
    Operand vector_left_of(size_t operation) const {
        size_t begin = operation - 1;
        Shape shape = shape_of_word(tokens_[begin].text);
        if (begin >= 2 && tokens_[begin - 1].text == "." && is_swizzle(tokens_[begin].text)) {
            shape = tokens_[begin - 2].kind == TokenKind::word ? Shape::vector : Shape::other;
            begin -= 2;
        } else if (tokens_[begin].text == ")") {
            begin = opening(begin);
            if (begin > 0 && tokens_[begin - 1].kind == TokenKind::word) {
                --begin;
                shape = shape_of_word(tokens_[begin].text);
            }
        }
        return shape == Shape::vector ? Operand{begin, operation} : Operand{};
    }

    std::string text_of(Operand operand) const {
        const size_t begin = tokens_[operand.begin].begin;
        return std::string(text_.substr(begin, tokens_[operand.end - 1].end - begin));
    }

    bool is_matrix(Operand operand) const {
        return operand.end > operand.begin &&
               shape_of_word(tokens_[operand.begin].text) == Shape::matrix;
    }

    void product(size_t star) {
        const Operand matrix = right_of(star);
        const Operand vector = vector_left_of(star);
        if (!is_matrix(matrix) || vector.end == vector.begin) {
            return;
        }
        const std::string_view before =
            vector.begin > 0 ? tokens_[vector.begin - 1].text : std::string_view();
        if (before == "*" || before == "/" || before == ".") {
            return;  // belongs to a longer product: the order would change
        }
        edits_.replace(tokens_[vector.begin].begin, tokens_[matrix.end - 1].end,
                       "(transpose(" + text_of(matrix) + ") * " + text_of(vector) + ")");
    }

    void assignment(size_t operation) {
        const Operand matrix = right_of(operation);
        if (!is_matrix(matrix) || tokens_[matrix.end].text != ";" ||
            shape_of_word(tokens_[operation - 1].text) != Shape::vector ||
            (operation > 1 && tokens_[operation - 2].text == ".")) {
            return;
        }
        const std::string vector(tokens_[operation - 1].text);
        edits_.replace(tokens_[operation].begin, tokens_[matrix.end - 1].end,
                       "= transpose(" + text_of(matrix) + ") * " + vector);
    }

    const std::vector<Token>& tokens_;
    std::string_view text_;
    std::map<std::string_view, Shape> names_;
    Edits edits_;
};

}  // namespace

std::string transpose_right_matrices(std::string_view text, std::vector<std::string>& notes) {
    const std::vector<Token> tokens = scan(text);
    const Edits edits = Pass(tokens, text).run();
    if (!edits.empty()) {
        notes.emplace_back("a vector times a matrix written as transpose(matrix) times the vector");
    }
    return edits.apply(text);
}

}  // namespace transition
