#include "diagnostics/stage_reading.h"

#include <algorithm>

#include "diagnostics/author_offset.h"
#include "diagnostics/tree_walk.h"
#include "glsl/parser.h"

namespace diagnostics {

namespace {

// The earliest position of all nodes of a walk.
class FirstPosition : public TreeVisitor {
public:
    explicit FirstPosition(const StageReading& reading) : reading_(reading) {}

    void enter(const glsl::astExpression& expression) override { note(expression); }
    void enter(const glsl::astStatement& statement) override { note(statement); }
    void enter(const glsl::astVariable& variable) override { note(variable); }

    void note(const glsl::astNode& node) { first_ = std::min(first_, reading_.offset_of(node)); }
    size_t first() const { return first_; }

private:
    const StageReading& reading_;
    size_t first_ = std::string::npos;
};

}  // namespace

StageReading::StageReading(ShaderStage stage, const std::string& assembled, const SourceMap& map)
    : stage_(stage), assembled_(assembled), map_(map) {
    glsl::parser parser(assembled.c_str(), "");
    unit_ = parser.parse(static_cast<uint32_t>(stage), nullptr, &text_);
    line_starts_.push_back(0);
    for (size_t at = text_.find('\n'); at != std::string::npos; at = text_.find('\n', at + 1)) {
        line_starts_.push_back(at + 1);
    }
}

size_t StageReading::offset_of(const glsl::astNode& node) const {
    const size_t line = std::clamp<size_t>(node.line, 1, line_starts_.size());
    const size_t column = std::max<size_t>(node.column, 1);
    return std::min(line_starts_[line - 1] + column - 1, text_.size());
}

size_t StageReading::first_offset_of(const glsl::astNode& node) const {
    FirstPosition first(*this);
    first.note(node);
    if (dynamic_cast<const glsl::astFunction*>(&node) == nullptr) {
        walk(node, first);
    }
    return first.first();
}

std::optional<SourceLocation> StageReading::locate(size_t offset) const {
    if (alignment_ == nullptr) {
        alignment_ = std::make_unique<RewriteAlignment>(assembled_, text_);
    }
    return map_.locate_assembled(author_offset(assembled_, text_, *alignment_, offset));
}

}  // namespace diagnostics
