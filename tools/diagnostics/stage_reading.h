#pragma once

/// A stage that is parsed once more, with the way back from its tree to the author's files.

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "DirectXEffectMgr/Source/core/program_source.h"
#include "DirectXEffectMgr/Source/core/rewrite_alignment.h"
#include "glsl/ast.h"

namespace diagnostics {

/// The tree of an assembled text. Says nothing to the log.
class StageReading {
public:
    /// @param assembled, map  outlive the reading
    StageReading(ShaderStage stage, const std::string& assembled, const SourceMap& map);

    ShaderStage stage() const { return stage_; }
    /// The tree; null if the parser refused the text.
    glsl::astTU* unit() const { return unit_.get(); }
    /// The text as the parser read it, in which the nodes' positions count.
    const std::string& text() const { return text_; }

    /// Offset in text() of a node's position: just behind the token that was current when the node
    /// was made.
    size_t offset_of(const glsl::astNode& node) const;
    /// Offset in text() of the first position below a node, its own included.
    size_t first_offset_of(const glsl::astNode& node) const;

    /// The author's place of the token that stands in front of `offset` of text(); nothing if the
    /// map is empty.
    std::optional<SourceLocation> locate(size_t offset) const;

private:
    ShaderStage stage_;
    const std::string& assembled_;
    const SourceMap& map_;
    std::string text_;
    std::vector<size_t> line_starts_;  // of text_
    glsl::ptr<glsl::astTU> unit_;
    mutable std::unique_ptr<RewriteAlignment> alignment_;  // made when first asked for
};

}  // namespace diagnostics
