#include <algorithm>

#include "diagnostics/traps/checks.h"

// Ternaries whose parts are not what their author meant. The parser gets them with parentheses put
// in by a scan over the text, so the tree shows what came of that.

namespace diagnostics {

namespace {

using namespace glsl;

constexpr size_t kNone = std::string_view::npos;
constexpr std::string_view kSigns = "+-*/%<>&|^!";

// A sign that is part of a number such as 1e-5.
bool is_exponent(std::string_view text, size_t at) {
    const bool is_sign = text[at] == '-' || text[at] == '+';
    return is_sign && at >= 2 && (text[at - 1] == 'e' || text[at - 1] == 'E') &&
           ((text[at - 2] >= '0' && text[at - 2] <= '9') || text[at - 2] == '.');
}

// Whether an operator stands between the beginning of the expression in front of `mark` and it.
bool has_operator_before(std::string_view text, size_t mark) {
    int depth = 0;
    for (size_t i = mark; i > 0; --i) {
        const char c = text[i - 1];
        if (c == ')' || c == ']') {
            ++depth;
        } else if (c == '(' || c == '[') {
            if (depth-- == 0) {
                return false;
            }
        } else if (depth > 0) {
            continue;
        } else if (c == '=') {
            const char before = i > 1 ? text[i - 2] : ' ';
            return before == '=' || before == '!' || before == '<' || before == '>';
        } else if (std::string_view(";,{}:?").find(c) != kNone) {
            return false;
        } else if (kSigns.find(c) != kNone && !is_exponent(text, i - 1)) {
            return true;
        }
    }
    return false;
}

// Where the third part of a ternary begins whose second part begins at `at`.
size_t third_part(std::string_view text, size_t at) {
    int depth = 0;
    for (size_t i = at; i < text.size(); ++i) {
        const char c = text[i];
        depth += c == '(' || c == '[' || c == '?' ? 1 : 0;
        depth -= c == ')' || c == ']' ? 1 : 0;
        if (c == ':' && depth-- == 0) {
            return i + 1;
        }
        if (depth < 0 || c == ';') {
            break;
        }
    }
    return text.size();
}

// Whether the expression at `at` has an operator behind its first operand; `end` receives where it
// ends.
bool has_operator_behind(std::string_view text, size_t at, size_t& end) {
    int depth = 0;
    bool found = false;
    size_t i = std::min(text.find_first_not_of(" \t\r\n+-!~", at), text.size());
    for (; i < text.size(); ++i) {
        const char c = text[i];
        depth += c == '(' || c == '[' ? 1 : 0;
        depth -= c == ')' || c == ']' ? 1 : 0;
        if (depth < 0 || (depth == 0 && (c == ';' || c == ','))) {
            break;
        }
        found = found || (depth == 0 && !is_exponent(text, i) &&
                          (kSigns.find(c) != kNone || c == '?' || c == '='));
    }
    end = i;
    return found;
}

class Ternaries : public TreeVisitor {
public:
    explicit Ternaries(const TrapScene& scene)
        : text_(scene.reading.text()), reading_(scene.reading), report_(scene.report) {}

    void enter(const astExpression& node) override {
        if (node.kind != ExpressionKind::ternary) {
            return;
        }
        const astExpression* const condition = as<astTernaryExpression>(&node)->condition;
        const size_t mark = text_.rfind('?', reading_.offset_of(node));
        if (condition == nullptr || mark == kNone || mark == 0) {
            return;
        }
        if (condition->kind == ExpressionKind::ternary) {
            report_.at(Trap::kChainedTernary, node);
        } else if (condition->kind == ExpressionKind::sequence) {
            report_.at(Trap::kTernaryArgument, node);
        } else if (text_.substr(mark - 1, 3) != ")?(") {
            look_at_bare(node, mark);
        } else if (begins_behind_not_equal(mark)) {
            report_.at(Trap::kNotEqualTernary, node);
        }
    }

private:
    // The scan puts ")?(" where it has worked; elsewhere the `?` takes single operands.
    void look_at_bare(const astExpression& node, size_t mark) {
        size_t end = 0;
        const bool behind = has_operator_behind(text_, third_part(text_, mark + 1), end);
        if (behind || has_operator_before(text_, mark)) {
            const bool is_inner = text_.substr(end, 3) == ")?(";
            report_.at(is_inner ? Trap::kChainedTernary : Trap::kNotEqualTernary, node);
        }
    }

    // The scan takes the `=` of `!=` for an assignment and begins the condition behind it.
    bool begins_behind_not_equal(size_t mark) const {
        int depth = 0;
        for (size_t i = mark; i > 0; --i) {
            depth += text_[i - 1] == ')' ? 1 : 0;
            depth -= text_[i - 1] == '(' ? 1 : 0;
            if (depth == 0) {
                return i > 2 && text_.substr(i - 3, 2) == "!=";
            }
        }
        return false;
    }

    const std::string_view text_;
    const StageReading& reading_;
    TrapReport& report_;
};

}  // namespace

void check_ternaries(const TrapScene& scene) {
    Ternaries ternaries(scene);
    walk(scene.unit, ternaries);
}

}  // namespace diagnostics
