#include "directive_model.h"

#include <algorithm>
#include <cctype>

namespace glsl::test {

namespace {

bool isLetter(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) != 0;
}
bool isWord(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}
bool isBlank(char c) {
    return c == ' ' || (c >= 9 && c <= 13);
}

std::string withoutSpaces(std::string text) {
    text.erase(std::remove(text.begin(), text.end(), ' '), text.end());
    return text;
}

std::vector<std::string> split(const std::string& text) {
    std::vector<std::string> pieces;
    if (text.empty()) {
        return pieces;
    }
    pieces.emplace_back();
    for (const char c : text) {
        if (c == ',') {
            pieces.emplace_back();
        } else {
            pieces.back() += c;
        }
    }
    for (std::string& piece : pieces) {
        piece = withoutSpaces(piece);
    }
    return pieces;
}

void replaceWords(std::string& body, const std::string& word, const std::string& by) {
    for (std::size_t k = 0; !word.empty() && k < body.size();) {
        const bool before = k > 0 && isWord(body[k - 1]);
        const bool behind = k + word.size() < body.size() && isWord(body[k + word.size()]);
        if (body.compare(k, word.size(), word) == 0 && !before && !behind) {
            body.replace(k, word.size(), by);
            k += by.size();
        } else {
            ++k;
        }
    }
}

}  // namespace

void DirectiveModel::advance(std::size_t to) {
    for (; index_ < to; ++index_) {
        line_ += text_[index_] == '\n' ? 1 : 0;
    }
}

std::size_t DirectiveModel::behindComments(std::size_t k) const {
    while (at(k) == '/' && (at(k + 1) == '/' || at(k + 1) == '*')) {
        const std::size_t end = at(k + 1) == '/' ? text_.find('\n', k) : text_.find("*/", k + 2);
        if (end == kNone) {
            return text_.size();
        }
        k = end + (at(k + 1) == '/' ? 1 : 2);
    }
    return k;
}

std::string DirectiveModel::lettersAt(std::size_t k) const {
    std::string word;
    for (; isLetter(at(k)); ++k) {
        word += at(k);
    }
    return word;
}

std::string DirectiveModel::wordAt(std::size_t k) const {
    std::string word;
    for (; isWord(at(k)); ++k) {
        word += at(k);
    }
    return word;
}

bool DirectiveModel::read() {
    for (;;) {
        const std::size_t before = index_;
        while (isBlank(at(index_))) {
            advance(index_ + 1);
        }
        advance(behindComments(index_));
        if (at(index_) == '#') {
            const bool is_define = lettersAt(index_ + 1) == "define";
            directive();
            if (!error_.empty()) {
                return false;
            }
            if (is_define) {
                return true;
            }
        } else if (index_ == before) {
            break;
        }
    }
    if (index_ >= text_.size()) {
        return false;
    }
    const bool pair = (at(index_) == '=' || at(index_) == '!') && at(index_ + 1) == '=';
    index_ += isWord(at(index_)) ? wordAt(index_).size() : pair ? 2 : 1;
    return true;
}

void DirectiveModel::directive() {
    ++index_;
    const std::string word = lettersAt(index_);
    index_ += word.size();
    if (word.empty()) {
        error_ = "Expected directive";
    } else if (word == "define") {
        define();
    } else if (word == "ifdef" || word == "ifndef" || word == "elifdef" || word == "if" ||
               word == "elif" || word == "else") {
        conditional(word);
    } else {
        error_ = "Unsupported directive";
    }
}

void DirectiveModel::define() {
    while (at(index_) == ' ' || at(index_) == '\t') {
        ++index_;
    }
    const std::string name = wordAt(index_);
    if (name.empty() || (name[0] >= '0' && name[0] <= '9')) {
        error_ = "Expected define name in #define directive";
        return;
    }
    index_ += name.size();
    const char follower = at(index_);
    while (isBlank(at(index_)) && at(index_) != '\n') {
        ++index_;
    }
    std::string value;
    for (; index_ < text_.size() && at(index_) != '\n' && at(index_) != '\r' &&
           behindComments(index_) == index_;
         ++index_) {
        value += at(index_);
    }
    macros_[name] = value;
    expand(name, value, follower == '(');
}

void DirectiveModel::expand(const std::string& name, const std::string& value, bool function_like) {
    static const char* const kept[] = {"ifdef", "ifndef", "elifdef", "if", "elif", "else"};
    for (std::size_t k = index_ + 1; k < text_.size(); ++k) {
        k = behindComments(k);
        if (at(k) == '"') {
            k = text_.find('"', k + 1);
            k = k == kNone ? text_.size() : k + 1;
        }
        if (at(k) == '#' && std::count(std::begin(kept), std::end(kept), lettersAt(k + 1)) != 0) {
            k = std::min(text_.find('\n', k), text_.size());
        }
        if (k < text_.size() && text_.compare(k, name.size(), name) == 0 && !isWord(text_[k - 1]) &&
            !isWord(at(k + name.size()))) {
            k = expandAt(k, name, value, function_like);
        }
    }
}

// Replaces the use at `k` and returns the place behind what was put in.
std::size_t DirectiveModel::expandAt(std::size_t k, const std::string& name,
                                     const std::string& value, bool function_like) {
    const std::size_t behind = k + name.size();
    const std::size_t open = text_.find('(', behind);
    if (!function_like || open == kNone || text_.find('\n', behind) < open) {
        text_.replace(k, name.size(), value);
        return k + value.size();
    }
    std::size_t close = open;
    for (int depth = 0; close < text_.size(); ++close) {
        depth += at(close) == '(' ? 1 : at(close) == ')' ? -1 : 0;
        if (depth == 0) {
            break;
        }
    }
    const std::size_t p = value.find(')');
    std::string body;
    if (p != kNone) {
        const auto parameters = split(value.substr(1, p - 1));
        const auto arguments = split(text_.substr(open + 1, close - open - 1));
        body = p + 2 < value.size() ? value.substr(p + 2) : "";
        for (std::size_t i = 0; parameters.size() == arguments.size() && i < parameters.size();
             ++i) {
            replaceWords(body, parameters[i], arguments[i]);
        }
    }
    text_.replace(k, std::min(close + 1, text_.size()) - k, body);
    return k + body.size();
}

bool DirectiveModel::condition(const std::string& word, const std::string& operand) {
    const bool known = macros_.count(operand) != 0;
    if (word == "ifndef") {
        return !known;
    }
    if (word != "if" && word != "elif") {
        return known;
    }
    const std::size_t end = std::min(text_.find('\n', index_), text_.size());
    const std::string rest = withoutSpaces(text_.substr(index_, end - index_));
    index_ = end;
    if (rest.empty()) {
        return known && operand != "false" && operand != "0";
    }
    const std::string sign = rest.substr(0, 2);
    if (rest.size() < 3 || (sign != "==" && sign != "!=")) {
        return known;
    }
    const bool same = (known ? macros_[operand] : operand) == rest.substr(2);
    return sign == "==" ? same : !same;
}

void DirectiveModel::conditional(const std::string& word) {
    bool value = false;
    if (word == "else") {
        value = stack_.empty() || !stack_.back();
        if (!stack_.empty()) {
            stack_.back() = value;
        }
    } else {
        while (at(index_) == ' ' || at(index_) == '\t') {
            ++index_;
        }
        const std::string operand = wordAt(index_);
        index_ += operand.size();
        if (operand.empty()) {
            error_ = "Expected define name in #ifdef directive";
            return;
        }
        value = condition(word, operand);
        if (word[0] == 'i') {
            stack_.push_back(value);
        } else if (value && !stack_.empty()) {
            stack_.back() = true;
        }
    }
    if (text_.size() - index_ < 2) {
        return;
    }
    if (value) {
        keep();
    } else {
        cut();
    }
}

std::size_t DirectiveModel::nextHash(std::size_t k) const {
    for (; k < text_.size(); ++k) {
        k = behindComments(k);
        if (at(k) == '#') {
            return k;
        }
    }
    return kNone;
}

std::size_t DirectiveModel::nextEndif(std::size_t k) const {
    for (k = nextHash(k); k != kNone && lettersAt(k + 1) != "endif"; k = nextHash(k + 1)) {
    }
    return k;
}

void DirectiveModel::replaceByNewlines(std::size_t from, std::size_t to) {
    const auto lines = std::count(text_.begin() + static_cast<std::ptrdiff_t>(from),
                                  text_.begin() + static_cast<std::ptrdiff_t>(to), '\n');
    text_.replace(from, to - from, std::string(static_cast<std::size_t>(lines), '\n'));
}

void DirectiveModel::keep() {
    std::size_t k = nextHash(index_ + 1);
    while (k != kNone && lettersAt(k + 1) == "define") {
        k = nextHash(k + 1);
    }
    if (k == kNone) {
        return;
    }
    const std::string word = lettersAt(k + 1);
    if (word == "endif") {
        text_.erase(k, 6);
        if (!stack_.empty()) {
            stack_.pop_back();
        }
    } else if (word == "else" || word == "elifdef") {
        const std::size_t endif = nextEndif(k + 1);
        if (endif == kNone) {
            return;
        }
        if (!stack_.empty() && stack_.back()) {
            replaceByNewlines(k, endif + 6);
        }
        if (!stack_.empty()) {
            stack_.pop_back();
        }
    }
}

void DirectiveModel::cut() {
    const std::size_t k = nextHash(index_ + 1);
    if (k == kNone) {
        return;
    }
    const std::size_t before = text_.size();
    std::size_t stays = k - 1;
    if (lettersAt(k + 1) == "endif") {
        const bool taken = !stack_.empty() && stack_.back();
        if (!stack_.empty()) {
            stack_.pop_back();
        }
        if (taken) {
            return;
        }
        stays = k + 6;
    }
    replaceByNewlines(index_, stays);
    const std::size_t next = stays - (before - text_.size()) + 1;
    if (at(next) != '#' || lettersAt(next + 1) != "else" || stack_.empty() || stack_.back()) {
        return;
    }
    text_.erase(next, 5);
    const std::size_t endif = nextEndif(next);
    if (endif != kNone) {
        text_.erase(endif, 6);
        stack_.pop_back();
    }
}

}  // namespace glsl::test
