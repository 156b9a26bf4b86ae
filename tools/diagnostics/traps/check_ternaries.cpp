#include "diagnostics/traps/checks.h"

// Ternaries whose parts are not what their author meant. The parser gets them with parentheses put
// in by a scan over the text, so the tree shows what came of that.

namespace diagnostics {

namespace {

using namespace glsl;

class Ternaries : public TreeVisitor {
public:
    explicit Ternaries(const TrapScene& scene)
        : text_(scene.reading.text()), reading_(scene.reading), report_(scene.report) {}

    void enter(const astExpression& node) override {
        if (node.kind != ExpressionKind::ternary) {
            return;
        }
        const astExpression* const condition = as<astTernaryExpression>(&node)->condition;
        const bool is_chain = condition != nullptr && condition->kind == ExpressionKind::ternary &&
                              !is_bare(*condition);
        if (is_bare(node) || is_chain) {
            report_.at(Trap::kChainedTernary, node);
        } else if (condition != nullptr && condition->kind == ExpressionKind::sequence) {
            report_.at(Trap::kTernaryArgument, node);
        }
    }

private:
    // The scan puts ")?(" where it has worked; elsewhere the `?` takes one operand alone.
    bool is_bare(const astExpression& node) const {
        const size_t mark = text_.rfind('?', reading_.offset_of(node));
        return mark != std::string_view::npos && mark > 0 && text_.substr(mark - 1, 3) != ")?(";
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
