#include "diagnostics/source_errors.h"

#include <string_view>

#include "diagnostics/author_offset.h"

namespace diagnostics {

namespace {

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

void add_problems(const SourceMap& map, std::vector<Finding>& findings) {
    for (const SourceProblem& problem : map.problems) {
        Finding finding;
        if (problem.place) {
            finding = finding_at(map.locate(*problem.place), Severity::kError);
        } else {
            finding.file = problem.path;
        }
        finding.message = what_is_wrong(problem);
        findings.push_back(std::move(finding));
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

Finding finding_at(const SourceLocation& location, Severity severity) {
    Finding finding;
    finding.severity = severity;
    finding.file = location.file;
    finding.line = location.line;
    finding.column = location.column;
    finding.source_line = location.line_text;
    return finding;
}

std::vector<Finding> file_errors(const ProgramMaps& maps) {
    std::vector<Finding> findings;
    add_problems(maps.fragment, findings);
    add_problems(maps.vertex, findings);
    return findings;
}

Finding parser_error(const ParseFailure& failure, const AssembledProgram& program,
                     const ProgramMaps& maps, const std::string& main_file) {
    const bool is_vertex = failure.stage == ShaderStage::kVertex;
    const std::string& assembled = is_vertex ? program.vertex : program.fragment;
    const SourceMap& map = is_vertex ? maps.vertex : maps.fragment;
    const size_t offset = author_offset(assembled, failure.source, failure.offset);
    const auto location = map.locate_assembled(offset);
    Finding finding;
    if (location) {
        finding = finding_at(*location, Severity::kError);
    } else {
        finding.file = main_file;
        finding.line = 1;
        finding.column = 1;
    }
    finding.message = message_of(failure);
    return finding;
}

}  // namespace diagnostics
