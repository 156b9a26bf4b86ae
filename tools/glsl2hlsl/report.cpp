#include "report.h"

#include <string_view>

#include "DirectXEffectMgr/Source/core/rewrite_alignment.h"

namespace glsl2hlsl {

namespace {

std::string place_text(const SourceLocation& location) {
    return std::string(location.file) + ':' + std::to_string(location.line) + ':' +
           std::to_string(location.column);
}

std::string what_is_wrong(const SourceProblem& problem) {
    switch (problem.status) {
        case ReadStatus::kEmptyPath:
            return "a file without a name";
        case ReadStatus::kUnreadable:
            return "\"" + problem.path + "\" cannot be read";
        case ReadStatus::kBadBase64:
            return "\"" + problem.path + "\" holds no base64 text";
        case ReadStatus::kTooMuch:
            return "\"" + problem.path + "\" is included too deep, too often, or brings too much";
        case ReadStatus::kRead:
            break;
    }
    return {};
}

void add_problems(const SourceMap& map, std::vector<std::string>& lines) {
    for (const SourceProblem& problem : map.problems) {
        const std::string where =
            problem.place ? place_text(map.locate(*problem.place)) : problem.path;
        lines.push_back("error: " + where + ": " + what_is_wrong(problem));
    }
}

// The first message of the parser, without its place.
std::string message_of(const ParseFailure& failure) {
    constexpr std::string_view kMark = ":error:";
    const std::string first = failure.text.substr(0, failure.text.find("\r\n"));
    const size_t mark = first.find(kMark);
    if (first.empty()) {
        return "the source ends too early or holds something that has no place there";
    }
    return mark == std::string::npos ? first : first.substr(mark + kMark.size());
}

}  // namespace

std::vector<std::string> problem_lines(const ProgramMaps& maps) {
    std::vector<std::string> lines;
    add_problems(maps.fragment, lines);
    add_problems(maps.vertex, lines);
    return lines;
}

std::string failure_line(const ParseFailure& failure, const AssembledProgram& program,
                         const ProgramMaps& maps, const std::string& main_file) {
    const bool is_vertex = failure.stage == ShaderStage::kVertex;
    const std::string& assembled = is_vertex ? program.vertex : program.fragment;
    const SourceMap& map = is_vertex ? maps.vertex : maps.fragment;
    const size_t offset = original_offset(assembled, failure.source, failure.offset);
    const auto location = map.locate_assembled(offset);
    std::string line = "error: " + (location ? place_text(*location) : main_file + ":1:1") + ": " +
                       message_of(failure);
    if (location && location->generated) {
        line += " (in: " + std::string(location->line_text) + ")";
    }
    return line;
}

}  // namespace glsl2hlsl
