#include "diagnostics/compiler_errors.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

#include "DirectXEffectMgr/Source/core/fixed_texts.h"
#include "diagnostics/source_errors.h"
#include "diagnostics/stage_reading.h"
#include "diagnostics/words.h"
#include "glsl/hlsl/environment.h"
#include "glsl/hlsl/prelude.h"
#include "glsl/hlsl/print_tu.h"

namespace diagnostics {

namespace {

constexpr size_t kNone = std::string_view::npos;

// HLSL words and what the author wrote for them.
struct WordPair {
    std::string_view hlsl;
    std::string_view glsl;
};

constexpr WordPair kWords[] = {
    {"float2", "vec2"},   {"float3", "vec3"},       {"float4", "vec4"},   {"int2", "ivec2"},
    {"int3", "ivec3"},    {"int4", "ivec4"},        {"float2x2", "mat2"}, {"float3x3", "mat3"},
    {"float4x4", "mat4"}, {"rsqrt", "inversesqrt"}, {"ddx", "dFdx"},      {"ddy", "dFdy"},
    {"fmod", "mod"},      {"lerp", "mix"},          {"frac", "fract"},    {"atan2", "atan"},
};
constexpr std::string_view kAvoided = "AVOID_KEYWORD_CONFLICTS_";

std::string_view author_word(std::string_view word) {
    if (word.substr(0, kAvoided.size()) == kAvoided) {
        return word.substr(kAvoided.size());
    }
    const auto* const row =
        std::find_if(std::begin(kWords), std::end(kWords),
                     [word](const WordPair& pair) { return pair.hlsl == word; });
    return row == std::end(kWords) ? word : row->glsl;
}

// The next whole `token` from `at` on.
size_t find_token(std::string_view text, std::string_view token, size_t at) {
    const bool word = !token.empty() && is_word(token.front());
    for (at = text.find(token, at); at != kNone && !token.empty(); at = text.find(token, at + 1)) {
        const size_t end = at + token.size();
        const bool before = at > 0 && is_word(text[at - 1]);
        const bool behind = end < text.size() && is_word(text[end]);
        if (!word || (!before && !behind)) {
            return at;
        }
    }
    return kNone;
}

size_t count_tokens(std::string_view text, std::string_view token) {
    size_t count = 0;
    for (size_t at = find_token(text, token, 0); at != kNone;
         at = find_token(text, token, at + token.size())) {
        ++count;
    }
    return count;
}

// Passes blanks, comments and lines of directives, up to `end` at most.
size_t skip_gap(std::string_view text, size_t at, size_t end) {
    while (at < end) {
        const std::string_view rest = text.substr(at, end - at);
        size_t length = rest.find_first_not_of(" \t\r\n");
        if (length == 0 && (rest.substr(0, 2) == "//" || rest.front() == '#')) {
            length = rest.find('\n');
        } else if (length == 0 && rest.substr(0, 2) == "/*") {
            length = rest.find("*/", 2);
            length += length == kNone ? 0 : 2;
        } else if (length == 0) {
            return at;
        }
        at += std::min(length, rest.size());
    }
    return end;
}

// A stage's HLSL beside its tree.
class PrintedStage {
public:
    PrintedStage(ShaderStage stage, const AssembledProgram& program, const ProgramMaps& maps)
        : reading_(stage, stage == ShaderStage::kVertex ? program.vertex : program.fragment,
                   stage == ShaderStage::kVertex ? maps.vertex : maps.fragment) {}

    bool parsed() const { return reading_.unit() != nullptr; }
    const std::string& hlsl() const { return hlsl_; }

    void print(uint32_t inputs, uint32_t audio, bool has_vertex, std::string& varying) {
        glsl::printTU(*reading_.unit(), inputs, audio, has_vertex, hlsl_, varying,
                      std::make_shared<glsl::Environment>(),
                      reading_.stage() == ShaderStage::kVertex, &marks_);
        for (const glsl::LineMark& mark : marks_) {
            begins_.push_back(begin_of(*mark.node));
        }
        sorted_begins_ = begins_;
        std::sort(sorted_begins_.begin(), sorted_begins_.end());
    }

    // The author's place of what the compiler refused.
    std::optional<SourceLocation> locate(const CompilerMessage& message) const {
        const std::string_view line = line_of(message.line);
        const size_t column = std::min(std::max<size_t>(message.column, 1) - 1, line.size());
        const size_t offset = static_cast<size_t>(line.data() - hlsl_.data()) + column;
        const auto mark = std::upper_bound(
            marks_.begin(), marks_.end(), offset,
            [](size_t value, const glsl::LineMark& candidate) { return value < candidate.offset; });
        if (mark == marks_.begin() || is_fixed(offset)) {
            return locate_constant(line);
        }
        const auto index = static_cast<size_t>(mark - marks_.begin()) - 1;
        return reading_.locate(place_in_source(index, offset));
    }

private:
    std::string_view line_of(size_t number) const {
        std::string_view rest = hlsl_;
        for (; number > 1 && !rest.empty(); --number) {
            const size_t newline = rest.find('\n');
            rest.remove_prefix(newline == kNone ? rest.size() : newline + 1);
        }
        return rest.substr(0, rest.find('\n'));
    }

    // Whether a byte belongs to the helpers or to the entry point around the author's functions.
    bool is_fixed(size_t offset) const {
        const size_t helpers = hlsl_.find(glsl::kPrelude);
        const bool in_helpers =
            helpers != kNone && offset >= helpers && offset < helpers + glsl::kPrelude.size();
        const bool is_vertex = reading_.stage() == ShaderStage::kVertex;
        const size_t entry = hlsl_.rfind(is_vertex ? "\nVertexOutput mainVS(" : "\nfloat4 mainPS(");
        return in_helpers || (entry != kNone && offset > entry);
    }

    // Just behind the token of the statement that the compiler pointed at: the one that stands as
    // many of its kind behind the statement's beginning as in the HLSL; failing that the first, and
    // where the author wrote no such token, the statement's first.
    size_t place_in_source(size_t mark, size_t offset) const {
        const std::string_view text = reading_.text();
        const size_t begin = begins_[mark];
        const auto next = std::upper_bound(sorted_begins_.begin(), sorted_begins_.end(), begin);
        const size_t end = next == sorted_begins_.end() ? text.size() : *next;
        const std::string_view statement = text.substr(begin, end - begin);
        const std::string_view token = token_at(hlsl_, offset);
        const std::string_view wanted = author_word(token);
        const auto token_offset = static_cast<size_t>(token.data() - hlsl_.data());
        const size_t mark_begin = std::min(marks_[mark].offset, token_offset);
        size_t passed = count_tokens(
            std::string_view(hlsl_).substr(mark_begin, token_offset - mark_begin), token);
        passed = passed < count_tokens(statement, wanted) ? passed : 0;
        size_t found = find_token(statement, wanted, 0);
        for (; passed > 0 && found != kNone; --passed) {
            found = find_token(statement, wanted, found + wanted.size());
        }
        return found == kNone ? begin + token_at(text, begin).size()
                              : begin + found + wanted.size();
    }

    // Offset in the text read of the first token of what a mark stands for. Nodes of declarations
    // are made when their name or their end is read, so their beginning is looked for in front.
    size_t begin_of(const glsl::astNode& node) const {
        const std::string_view text = reading_.text();
        const size_t first = reading_.first_offset_of(node);
        size_t at = token_begin(text, first);
        const char* ends = nullptr;
        if (dynamic_cast<const glsl::astDeclarationStatement*>(&node) != nullptr) {
            ends = ";{}()";
        } else if (dynamic_cast<const glsl::astStatement*>(&node) == nullptr) {
            ends = ";}";
        }
        if (ends == nullptr) {
            return at;
        }
        const size_t before = at == 0 ? kNone : text.find_last_of(ends, at - 1);
        return skip_gap(text, before == kNone ? 0 : before + 1, at);
    }

    // A constant is a macro in front of everything, so it can break a text that no author wrote.
    std::optional<SourceLocation> locate_constant(std::string_view line) const {
        for (const auto& global : reading_.unit()->globals) {
            if (global == nullptr || global->storage != glsl::kStorageConst ||
                find_token(line, global->name, 0) == kNone) {
                continue;
            }
            const std::string_view text = reading_.text();
            const size_t begin = begin_of(*global);
            const size_t name = find_token(text, global->name, begin);
            return reading_.locate(name == kNone ? begin + 1 : name + global->name.size());
        }
        return std::nullopt;
    }

    StageReading reading_;
    std::string hlsl_;
    std::vector<glsl::LineMark> marks_;
    std::vector<size_t> begins_;  // in the text read, of what each mark stands for
    std::vector<size_t> sorted_begins_;
};

// Whether the lines that the messages are about read in `hlsl` as in the dump.
bool is_dump_of(const CompilerLog& log, const std::string& hlsl) {
    if (log.dump.empty()) {
        return true;
    }
    size_t number = 1;
    for (std::string_view rest = hlsl; !rest.empty(); ++number) {
        const size_t newline = rest.find('\n');
        const auto logged = log.dump.find(number);
        if (logged != log.dump.end() && logged->second != rest.substr(0, newline)) {
            return false;
        }
        rest.remove_prefix(newline == kNone ? rest.size() : newline + 1);
    }
    return log.dump.rbegin()->first < number;
}

Finding first_line_of(const SourceMap& map) {
    for (size_t i = 0; i < map.files.size(); ++i) {
        if (!map.files[i].generated) {
            return finding_at(map.locate(SourcePosition{static_cast<uint32_t>(i), 0}),
                              Severity::kError);
        }
    }
    return {};
}

uint32_t count_or_zero(int32_t count) {
    return count < 0 ? 0 : static_cast<uint32_t>(count);
}

}  // namespace

std::vector<Finding> compiler_errors(const AssembledProgram& program, const ProgramMaps& maps,
                                     int32_t inputs, int32_t audio, const CompilerLog& log) {
    PrintedStage vertex(ShaderStage::kVertex, program, maps);
    PrintedStage fragment(ShaderStage::kFragment, program, maps);
    if ((program.has_vertex && !vertex.parsed()) || !fragment.parsed()) {
        return {};
    }
    std::string varying;
    if (program.has_vertex) {
        vertex.print(count_or_zero(inputs), count_or_zero(audio), true, varying);
    }
    fragment.print(count_or_zero(inputs), count_or_zero(audio), program.has_vertex, varying);
    std::vector<Finding> findings;
    for (const CompilerMessage& message : log.errors) {
        const bool is_vertex = message.stage == ShaderStage::kVertex;
        const PrintedStage& stage = is_vertex ? vertex : fragment;
        const std::string hlsl =
            is_vertex && !program.has_vertex ? std::string(kFixedVertexShader) : stage.hlsl();
        if (!is_dump_of(log, hlsl)) {
            return {};
        }
        const auto location = stage.locate(message);
        Finding finding =
            location ? finding_at(*location, Severity::kError)
                     : first_line_of(is_vertex && program.has_vertex ? maps.vertex : maps.fragment);
        finding.message = message.code.empty() ? message.text : message.code + ": " + message.text;
        findings.push_back(std::move(finding));
    }
    return findings;
}

}  // namespace diagnostics
